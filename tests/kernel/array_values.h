// SPDX-License-Identifier: Apache-2.0
// Arrays as values, for the tests of vArray.
#ifndef TESTS_KERNEL_ARRAY_VALUES_H
#define TESTS_KERNEL_ARRAY_VALUES_H

#include <initializer_list>
#include <vector>

#include "vArray.h"

namespace kernel_tests {

template <class T>
std::vector<T> content(const vArray<T>& array) {
    return std::vector<T>(array.begin(), array.end());
}

template <class T>
vArray<T> array_of(std::initializer_list<T> elements) {
    vArray<T> array;
    for (const T& element : elements) array.Append(element);
    return array;
}

}  // namespace kernel_tests

#endif
