// SPDX-License-Identifier: Apache-2.0

#include "output/print_json.h"

#include <iostream>

void print_json(const nlohmann::ordered_json& json) {
    std::cout << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}
