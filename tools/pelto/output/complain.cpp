// SPDX-License-Identifier: Apache-2.0

#include "output/complain.h"

#include <iostream>

#include "output/printable.h"

void complain(const std::string& path, const std::string& what) {
    std::cerr << "pelto: " << printable(path) << ": " << printable(what) << '\n';
}
