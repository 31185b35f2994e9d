// SPDX-License-Identifier: Apache-2.0
// Why a file is not read.
#ifndef INPUT_ERROR_H
#define INPUT_ERROR_H

#include <stdexcept>

namespace sax {

class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace sax

#endif
