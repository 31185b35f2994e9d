// SPDX-License-Identifier: Apache-2.0
// Turns what ends the reading of a document into a fatal error.
#ifndef REPORT_REFUSALS_H
#define REPORT_REFUSALS_H

#include <new>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "events/ProblemReport.h"
#include "input/InputError.h"
#include "input/InputSource.h"
#include "limits/Refusal.h"

namespace sax {

/// Runs `read`, which reads `source`. Passes on what handlers throw, and throws std::bad_alloc.
template <class Read>
void report_refusals(const InputSource& source, ProblemReport& report, Read read) {
    try {
        read();
    } catch (const Refusal& refusal) {
        report.refuse(refusal);
    } catch (const InputError& error) {
        const StreamName name = source.name();
        report.refuse({error.what(), {0, 0, name.public_id, name.system_id}});
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    }
}

}  // namespace sax

#endif
