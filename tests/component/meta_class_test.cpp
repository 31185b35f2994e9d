// SPDX-License-Identifier: Apache-2.0

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "OXAMetaClass.h"
#include "component/counted_component.h"
#include "support/allocation.h"

namespace {

using namespace component_tests;

/// The identifier as its 16 bytes are written out.
std::string text_of(const GUID& id) {
    char text[40];
    std::snprintf(text, sizeof text, "%08x%04x%04x", static_cast<unsigned>(id.Data1),
                  static_cast<unsigned>(id.Data2), static_cast<unsigned>(id.Data3));
    std::string all(text);
    for (const std::uint8_t byte : id.Data4) {
        std::snprintf(text, sizeof text, "%02x", static_cast<unsigned>(byte));
        all += text;
    }
    return all;
}

TEST(MetaClass, KeepsWhatItIsMadeFrom) {
    std::string name = "Keeps";
    std::string framework = "ComponentTests";
    std::string version = "3.1";
    OXAMetaClass* meta =
        fct_RetrieveMetaObject(name.c_str(), 5, Shape::MetaObject(), version.c_str(), framework.c_str(), 72);
    name.assign(name.size(), 'x');
    framework.assign(framework.size(), 'x');
    version.assign(version.size(), 'x');
    EXPECT_STREQ(meta->ClassName(), "Keeps");
    EXPECT_EQ(meta->ClassKind(), 5);
    EXPECT_EQ(meta->Base(), Shape::MetaObject());
    EXPECT_STREQ(meta->Version(), "3.1");
    EXPECT_STREQ(meta->Framework(), "ComponentTests");
    EXPECT_EQ(meta->InstanceSize(), 72U);
}

TEST(MetaClass, ThereIsOneForEachNameAndFramework) {
    OXAMetaClass* first = fct_RetrieveMetaObject("One", 1, nullptr, "1", "ComponentTests", 8);
    EXPECT_EQ(fct_RetrieveMetaObject("One", 2, Shape::MetaObject(), "9", "ComponentTests", 99), first);
    EXPECT_EQ(first->ClassKind(), 1);
    EXPECT_EQ(first->Base(), nullptr);
    EXPECT_STREQ(first->Version(), "1");
    EXPECT_EQ(first->InstanceSize(), 8U);
    EXPECT_NE(fct_RetrieveMetaObject("One", 1, nullptr, "1", "Other", 8), first);
    EXPECT_NE(fct_RetrieveMetaObject("Two", 1, nullptr, "1", "ComponentTests", 8), first);
}

TEST(MetaClass, NullTextsReadAsEmptyOnes) {
    OXAMetaClass* meta = fct_RetrieveMetaObject(nullptr, 1, nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(meta, fct_RetrieveMetaObject("", 1, nullptr, "", "", 0));
    EXPECT_STREQ(meta->ClassName(), "");
    EXPECT_STREQ(meta->Version(), "");
    EXPECT_STREQ(meta->Framework(), "");
}

TEST(MetaClass, KnowsItsBasesByName) {
    OXAMetaClass* circle = Circle::MetaObject();
    EXPECT_EQ(circle->IsAKindOf("Circle"), 1);
    EXPECT_EQ(circle->IsAKindOf("Shape"), 1);
    EXPECT_EQ(circle->IsAKindOf("OXABaseUnknown"), 1);
    EXPECT_EQ(Shape::MetaObject()->IsAKindOf("Circle"), 0);
    EXPECT_EQ(circle->IsAKindOf("circle"), 0);
    EXPECT_EQ(circle->IsAKindOf("Circl"), 0);
    EXPECT_EQ(circle->IsAKindOf(""), 0);
    EXPECT_EQ(circle->IsAKindOf(nullptr), 0);
}

// The values were computed apart from this program.
TEST(MetaClass, TheClassIdentifierIsTheSameInEveryRun) {
    EXPECT_EQ(text_of(OXABaseUnknown::ClassId()), "7da1e05a4631043855500f653713bda3");
    OXAMetaClass* handler = fct_RetrieveMetaObject("vSAXDefaultHandler", 1, nullptr, "0", "Talvik", 1);
    EXPECT_EQ(text_of(handler->ClassId()), "55db36642cee6f5b694cd9174b926e9d");
}

TEST(MetaClass, TheClassIdentifierTellsNamesAndFrameworksApart) {
    const auto id = [](const char* name, const char* framework) {
        return text_of(fct_RetrieveMetaObject(name, 1, nullptr, "0", framework, 1)->ClassId());
    };
    const std::vector<std::string> ids = {id("ab", "c"), id("a", "bc"), id("c", "ab"), id("abc", ""),
                                          id("", "abc")};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) EXPECT_NE(ids[i], ids[j]) << i << ", " << j;
    }
}

TEST(MetaClass, ThreadsThatRaceGetTheSameOne) {
    std::array<OXAMetaClass*, 4> found = {};
    std::vector<std::thread> threads;
    for (OXAMetaClass*& place : found) {
        threads.emplace_back(
            [&place] { place = fct_RetrieveMetaObject("Raced", 1, nullptr, "0", "ComponentTests", 1); });
    }
    for (std::thread& thread : threads) thread.join();
    for (OXAMetaClass* meta : found) EXPECT_EQ(meta, found[0]);
}

TEST(MetaClass, AFailedRegistrationLeavesNothingBehind) {
    const char* name = "A class whose name is too long for a string without memory of its own";
    const std::ptrdiff_t before = support::live_blocks();
    for (std::size_t index = 0;; ++index) {
        const support::FailAllocation fail(index);
        try {
            OXAMetaClass* meta = fct_RetrieveMetaObject(name, 4, nullptr, "0", name, 1);
            EXPECT_EQ(meta->ClassKind(), 4);
            EXPECT_GT(index, 0U);
            return;
        } catch (const std::bad_alloc&) {
            // The container may keep room for more.
            EXPECT_LE(support::live_blocks(), before + 1) << index;
        }
    }
}

}  // namespace
