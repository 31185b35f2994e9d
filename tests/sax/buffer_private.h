// SPDX-License-Identifier: Apache-2.0
// The private members of the buffer, by name.
#ifndef TESTS_SAX_BUFFER_PRIVATE_H
#define TESTS_SAX_BUFFER_PRIVATE_H

#include "support/private_access.h"
#include "vSAXDefaultBuffer.h"

namespace buffer_private {

PELTO_PRIVATE_MEMBER(line, &vSAXDefaultBuffer::line, int vSAXDefaultBuffer::*)
PELTO_PRIVATE_MEMBER(buffer, &vSAXDefaultBuffer::buffer, OXAUnicodeString vSAXDefaultBuffer::*)
PELTO_PRIVATE_MEMBER(log, &vSAXDefaultBuffer::Log, void (vSAXDefaultBuffer::*)(const char*) const)
PELTO_PRIVATE_MEMBER(log_error, &vSAXDefaultBuffer::LogError,
                     void (vSAXDefaultBuffer::*)(const char*, const char*) const)

/// The private copy constructor, by its name in the library: no pointer to a constructor can be had.
void copy_construct(void* place, const vSAXDefaultBuffer& other) __asm__("_ZN17vSAXDefaultBufferC1ERKS_");

}  // namespace buffer_private

#endif
