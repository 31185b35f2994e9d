// SPDX-License-Identifier: Apache-2.0
// Runs a part of a test where it can take no more memory than it may.
#ifndef TESTS_XML_IN_LIMITED_PROCESS_H
#define TESTS_XML_IN_LIMITED_PROCESS_H

#include <functional>
#include <string>

namespace xml_tests {

/// Runs `action` in a child process that may have `bytes` of address space more than now, and returns what
/// it returned; "" when it did not end by itself. Under a sanitizer, which reserves more than any limit, the
/// memory is not limited.
std::string in_limited_process(std::size_t bytes, const std::function<std::string()>& action);

}  // namespace xml_tests

#endif
