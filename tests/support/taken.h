// SPDX-License-Identifier: Apache-2.0
// What an action took from and gave back to the global allocation functions, fixed when the action ends:
// what a test allocates to state its expectation does not count.
#ifndef TESTS_SUPPORT_TAKEN_H
#define TESTS_SUPPORT_TAKEN_H

#include <cstddef>
#include <vector>

#include "support/allocation.h"

namespace support {

struct Taken {
    std::vector<std::size_t> sizes;  // of the blocks, in order
    std::size_t releases;
};

template <class Action>
Taken taken_by(Action action) {
    const AllocationRecorder recorder;
    action();
    const std::size_t releases = recorder.releases();
    return {recorder.sizes(), releases};
}

}  // namespace support

#endif
