// SPDX-License-Identifier: Apache-2.0
// How a document ends that cannot be read or breaks a rule.
#ifndef REFUSAL_H
#define REFUSAL_H

#include <string>

namespace sax {

/// A place in a document. Lines and columns count from 1; 0 where there is none.
struct Position {
    int line = 0;
    int column = 0;
    std::string public_id;
    std::string system_id;
};

/// Thrown through the parser, and reported as a fatal error. No class of the parser's own: that would catch
/// it, or not survive it.
struct Refusal {
    std::string message;
    Position position;
};

}  // namespace sax

#endif
