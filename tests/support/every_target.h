// SPDX-License-Identifier: Apache-2.0
// Runs a test on every instruction set that the machine's processor and the compiler have in common.
#ifndef TESTS_SUPPORT_EVERY_TARGET_H
#define TESTS_SUPPORT_EVERY_TARGET_H

#include <cstdint>
#include <gtest/gtest.h>
#include <hwy/targets.h>

namespace support {

template <class Test>
void on_every_target(Test test) {
    std::int64_t targets = hwy::SupportedTargets();
    ASSERT_NE(targets, 0);
    while (targets != 0) {
        const std::int64_t target = targets & -targets;
        targets &= targets - 1;
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        test();
        hwy::SetSupportedTargetsForTest(0);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }
}

}  // namespace support

#endif
