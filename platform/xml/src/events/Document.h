// SPDX-License-Identifier: Apache-2.0
// What belongs to the reading of one document.
#ifndef DOCUMENT_H
#define DOCUMENT_H

#include <cstddef>
#include <string>

#include "events/ProblemReport.h"
#include "input/InputSource.h"
#include "input/ParserInputs.h"
#include "limits/DocumentCost.h"
#include "limits/ParseLocator.h"

namespace sax {

/// A document or a schema while the parser reads it: what it reads, where it is, what it costs and what it
/// reports. There is one for each parser, whose memory it holds.
class Document {
public:
    /// A content model may have `most_in_model` names and operators. Source and report outlive the document.
    /// Throws InputError when the source cannot be opened.
    Document(const InputSource& source, ProblemReport& report, std::size_t most_in_model);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    const std::string& path() const { return source_.path(); }  ///< empty for a text
    const xercesc::InputSource& input() const { return *input_; }

    ParserInputs& inputs() { return inputs_; }
    ParseLocator& locator() { return report_.locator(); }
    DocumentCost& cost() { return cost_; }
    ProblemReport& report() { return report_; }

    /// Throws Refusal when `exceeded`, which a count of the cost returned, names a limit; null does nothing.
    void charge(const char* exceeded) {
        if (exceeded) refuse(exceeded);
    }

    /// Throws Refusal at the locator's position.
    [[noreturn]] void refuse(std::string message);

    /// The bytes of a file beside the document. Throws InputError when it cannot be read, or when such files
    /// are too many or too large.
    std::string read_external_file(const std::string& path);

private:
    const InputSource& source_;
    ProblemReport& report_;
    DocumentCost cost_;
    ParserInputs inputs_;
    const xercesc::InputSource* input_;
};

}  // namespace sax

#endif
