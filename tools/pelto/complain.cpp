#include "complain.h"

#include <iostream>

#include "printable.h"

void complain(const std::string& path, const std::string& what) {
    std::cerr << "pelto: " << printable(path) << ": " << printable(what) << '\n';
}
