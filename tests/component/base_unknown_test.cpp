// SPDX-License-Identifier: Apache-2.0

#include <array>
#include <gtest/gtest.h>
#include <thread>
#include <type_traits>
#include <vector>

#include "OXABaseUnknown.h"
#include "component/counted_component.h"
#include "support/vtable_slot.h"

namespace {

using namespace component_tests;
using support::vtable_slot;

TEST(BaseUnknown, TheVirtualOperationsHaveTheirSlots) {
    using U = OXABaseUnknown;
    EXPECT_EQ(vtable_slot(static_cast<HRESULT (U::*)(const GUID&, void**)>(&U::QueryInterface)), 0U);
    EXPECT_EQ(vtable_slot(&U::AddRef), 1U);
    EXPECT_EQ(vtable_slot(&U::Release), 2U);
    EXPECT_EQ(vtable_slot(&U::GetTypeInfoCount), 3U);
    EXPECT_EQ(vtable_slot(&U::GetTypeInfo), 4U);
    EXPECT_EQ(vtable_slot(&U::GetIDsOfNames), 5U);
    EXPECT_EQ(vtable_slot(&U::Invoke), 6U);
    EXPECT_EQ(vtable_slot(static_cast<OXABaseUnknown* (U::*)(const char*)>(&U::QueryInterface)), 7U);
    // The destructor's two entries.
    EXPECT_EQ(vtable_slot(&U::GetMetaObject), 10U);
    EXPECT_EQ(vtable_slot(&U::IsA), 11U);
    EXPECT_EQ(vtable_slot(&U::IsAKindOf), 12U);
    EXPECT_EQ(vtable_slot(&U::GetImpl), 13U);
    EXPECT_EQ(vtable_slot(&U::SetImpl), 14U);
    EXPECT_EQ(vtable_slot(&U::IsNull), 15U);
    EXPECT_EQ(vtable_slot(&U::IsEqual), 16U);
    EXPECT_EQ(vtable_slot(&U::ChangeComponentState), 17U);
}

TEST(BaseUnknown, UsersCannotDeleteOrCopyAComponent) {
    EXPECT_FALSE(std::is_destructible_v<Shape>);
    EXPECT_TRUE(std::has_virtual_destructor_v<OXABaseUnknown>);
    EXPECT_FALSE(std::is_copy_constructible_v<OXABaseUnknown>);
    EXPECT_FALSE(std::is_copy_assignable_v<OXABaseUnknown>);
}

TEST(BaseUnknown, ANewObjectHasOneReferenceAndTheLastReleaseDeletes) {
    const FreshCounts fresh;
    auto* shape = new Shape;
    EXPECT_EQ(shape->AddRef(), 2U);
    EXPECT_EQ(shape->AddRef(), 3U);
    EXPECT_EQ(shape->Release(), 2U);
    EXPECT_EQ(shape->Release(), 1U);
    EXPECT_EQ(live_components, 1);
    EXPECT_EQ(shape->Release(), 0U);
    EXPECT_EQ(live_components, 0);
    EXPECT_EQ(destructions, 1);
}

TEST(BaseUnknown, AQueryFindsTheClassAndItsBasesAndAddsAReference) {
    auto* circle = new Circle;
    for (const GUID& id : {Circle::ClassId(), Shape::ClassId(), OXABaseUnknown::ClassId()}) {
        void* found = nullptr;
        EXPECT_EQ(circle->QueryInterface(id, &found), S_OK);
        EXPECT_EQ(found, circle);
        EXPECT_EQ(circle->Release(), 1U);
    }
    circle->Release();
}

TEST(BaseUnknown, AQueryForAnotherClassGivesNull) {
    auto* shape = new Shape;
    void* found = shape;
    EXPECT_EQ(shape->QueryInterface(Circle::ClassId(), &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(shape->QueryInterface(Shape::ClassId(), nullptr), E_POINTER);
    EXPECT_EQ(references_of(*shape), 1U);
    shape->Release();
}

TEST(BaseUnknown, AQueryByNameDoesTheSame) {
    auto* circle = new Circle;
    for (const char* name : {"Circle", "Shape", "OXABaseUnknown"}) {
        EXPECT_EQ(circle->QueryInterface(name), circle) << name;
        EXPECT_EQ(circle->Release(), 1U);
    }
    const char* none = nullptr;
    EXPECT_EQ(circle->QueryInterface("Square"), nullptr);
    EXPECT_EQ(circle->QueryInterface(""), nullptr);
    EXPECT_EQ(circle->QueryInterface(none), nullptr);
    EXPECT_EQ(circle->Release(), 0U);
}

TEST(BaseUnknown, NamesItsClass) {
    const auto circle = OXAVar<Circle>::Adopt(new Circle);
    EXPECT_EQ(circle->GetMetaObject(), Circle::MetaObject());
    EXPECT_STREQ(circle->IsA(), "Circle");
    EXPECT_EQ(circle->IsAKindOf("Circle"), 1);
    EXPECT_EQ(circle->IsAKindOf("Shape"), 1);
    EXPECT_EQ(circle->IsAKindOf("OXABaseUnknown"), 1);
    EXPECT_EQ(circle->IsAKindOf("Square"), 0);
    EXPECT_EQ(circle->IsAKindOf(nullptr), 0);
}

TEST(BaseUnknown, OffersNoTypeInformationAndNoCallsByName) {
    const auto shape = OXAVar<Shape>::Adopt(new Shape);
    unsigned int count = 7;
    EXPECT_EQ(shape->GetTypeInfoCount(&count), E_NOTIMPL);
    EXPECT_EQ(count, 0U);
    void* info = &count;
    EXPECT_EQ(shape->GetTypeInfo(0, 0, &info), E_NOTIMPL);
    EXPECT_EQ(info, nullptr);
    const std::array<const char*, 2> names = {"a", "b"};
    std::array<int, 3> ids = {1, 2, 3};
    EXPECT_EQ(shape->GetIDsOfNames(Shape::ClassId(), names.data(), 2, 0, ids.data()), E_NOTIMPL);
    EXPECT_EQ(ids, (std::array<int, 3>{0, 0, 3}));
    EXPECT_EQ(shape->Invoke(0, Shape::ClassId(), 0, 0, nullptr, nullptr), E_NOTIMPL);
    EXPECT_EQ(shape->GetTypeInfoCount(nullptr), E_NOTIMPL);
    EXPECT_EQ(shape->GetTypeInfo(0, 0, nullptr), E_NOTIMPL);
    EXPECT_EQ(shape->GetIDsOfNames(Shape::ClassId(), nullptr, 2, 0, nullptr), E_NOTIMPL);
}

TEST(BaseUnknown, IsItsOwnImplementationAndEqualToItselfAlone) {
    const auto one = OXAVar<Shape>::Adopt(new Shape);
    const auto two = OXAVar<Shape>::Adopt(new Shape);
    EXPECT_EQ(one->GetImpl(), one.Get());
    EXPECT_EQ(one->SetImpl(two.Get()), E_NOTIMPL);
    EXPECT_EQ(one->GetImpl(), one.Get());
    EXPECT_EQ(one->IsNull(), 0);
    EXPECT_EQ(one->IsEqual(one.Get()), 1);
    EXPECT_EQ(one->IsEqual(two.Get()), 0);
    EXPECT_EQ(one->IsEqual(nullptr), 0);
    EXPECT_EQ(one->ChangeComponentState(1), E_NOTIMPL);
}

TEST(BaseUnknown, CountsReferencesOfManyThreads) {
    const FreshCounts fresh;
    auto* shape = new Shape;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        shape->AddRef();
        threads.emplace_back([shape] {
            for (int i = 0; i < 20000; ++i) {
                shape->AddRef();
                shape->Release();
            }
            shape->Release();
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(live_components, 1);
    EXPECT_EQ(shape->Release(), 0U);
    EXPECT_EQ(destructions, 1);
}

}  // namespace
