// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "OXAVar.h"
#include "component/counted_component.h"

namespace {

using namespace component_tests;

TEST(Var, IsNullByDefault) {
    const OXAVar<Shape> var;
    EXPECT_TRUE(var.IsNull());
    EXPECT_FALSE(var);
    EXPECT_EQ(var.Get(), nullptr);
    EXPECT_TRUE(var == nullptr);
    EXPECT_FALSE(var != nullptr);
}

TEST(Var, APointerGetsAReferenceMore) {
    const FreshCounts fresh;
    auto* shape = new Shape;
    {
        const OXAVar<Shape> var(shape);
        EXPECT_EQ(references_of(*shape), 2U);
        EXPECT_EQ(var.Get(), shape);
        EXPECT_TRUE(var);
        EXPECT_FALSE(var.IsNull());
    }
    EXPECT_EQ(references_of(*shape), 1U);
    shape->Release();
    EXPECT_EQ(destructions, 1);
}

TEST(Var, AdoptTakesTheReferenceOver) {
    const FreshCounts fresh;
    {
        const auto var = OXAVar<Shape>::Adopt(new Shape);
        EXPECT_EQ(references_of(*var.Get()), 1U);
    }
    EXPECT_EQ(destructions, 1);
    EXPECT_TRUE(OXAVar<Shape>::Adopt(nullptr).IsNull());
    EXPECT_TRUE(OXAVar<Shape>(nullptr).IsNull());
}

TEST(Var, CopiesShareAndMovesHandOver) {
    const FreshCounts fresh;
    auto first = OXAVar<Shape>::Adopt(new Shape);
    Shape* shape = first.Get();
    OXAVar<Shape> second(first);
    EXPECT_EQ(references_of(*shape), 2U);
    OXAVar<Shape> third(std::move(first));
    EXPECT_TRUE(first.IsNull());  // NOLINT(bugprone-use-after-move): the state that a move promises
    EXPECT_EQ(references_of(*shape), 2U);
    first = second;
    EXPECT_EQ(references_of(*shape), 3U);
    second = std::move(third);
    EXPECT_EQ(references_of(*shape), 2U);
    first = OXAVar<Shape>::Adopt(new Shape);
    EXPECT_EQ(references_of(*shape), 1U);
    EXPECT_EQ(live_components, 2);
    second = nullptr;
    EXPECT_EQ(live_components, 1);
}

TEST(Var, SurvivesAssignmentToItself) {
    const FreshCounts fresh;
    auto var = OXAVar<Shape>::Adopt(new Shape);
    OXAVar<Shape>& same = var;
    var = same;
    EXPECT_EQ(references_of(*var.Get()), 1U);
    var = std::move(same);
    EXPECT_EQ(references_of(*var.Get()), 1U);
    EXPECT_EQ(destructions, 0);
}

TEST(Var, ResetReleasesOnce) {
    const FreshCounts fresh;
    auto var = OXAVar<Shape>::Adopt(new Shape);
    var.Reset();
    EXPECT_TRUE(var.IsNull());
    var.Reset();
    EXPECT_EQ(destructions, 1);
}

/// Looks, as it is destroyed, at the reference that it was held by.
class Witness final : public Shape {
public:
    Witness(OXAVar<Shape>& holder, bool& was_null) : holder_(holder), was_null_(was_null) {}

private:
    ~Witness() override { was_null_ = holder_.IsNull(); }

    OXAVar<Shape>& holder_;
    bool& was_null_;
};

TEST(Var, ResetIsNullBeforeTheComponentIsDestroyed) {
    bool was_null = false;
    OXAVar<Shape> var;
    var = OXAVar<Shape>::Adopt(new Witness(var, was_null));
    var.Reset();
    EXPECT_TRUE(was_null);
}

TEST(Var, TheArrowOfANullReferenceThrowsTheNullReferenceError) {
    const OXAVar<Shape> null;
    EXPECT_THROW(null->IsA(), OXANullVarError);
    EXPECT_THROW(ThrowErrorNullVar(), OXANullVarError);
    EXPECT_TRUE((std::is_base_of_v<std::logic_error, OXANullVarError>));
    const auto var = OXAVar<Shape>::Adopt(new Shape);
    EXPECT_STREQ(var->IsA(), "Shape");
}

TEST(Var, CastsToABaseClassByItself) {
    const auto circle = OXAVar<Circle>::Adopt(new Circle);
    const OXAVar<Shape> shape = circle;
    EXPECT_EQ(shape.Get(), circle.Get());
    EXPECT_EQ(references_of(*circle.Get()), 2U);
    EXPECT_TRUE(shape == circle);
    EXPECT_FALSE(shape != circle);
}

TEST(Var, CastsToOtherClassesByAQuery) {
    const OXAVar<Shape> shape = OXAVar<Circle>::Adopt(new Circle);
    const OXAVar<Circle> circle(shape);
    EXPECT_EQ(circle.Get(), shape.Get());
    EXPECT_EQ(references_of(*shape.Get()), 2U);
    const OXAVar<Circle> from_pointer(shape.Get());
    EXPECT_EQ(references_of(*shape.Get()), 3U);

    const auto plain = OXAVar<Shape>::Adopt(new Shape);
    EXPECT_TRUE(OXAVar<Circle>(plain).IsNull());
    EXPECT_TRUE(OXAVar<Circle>(plain.Get()).IsNull());
    EXPECT_EQ(references_of(*plain.Get()), 1U);
    EXPECT_TRUE(OXAVar<Circle>(OXAVar<Shape>()).IsNull());
    Shape* none = nullptr;
    EXPECT_TRUE(OXAVar<Circle>(none).IsNull());
}

TEST(Var, AQueryIsNeverImplicit) {
    EXPECT_TRUE((std::is_convertible_v<OXAVar<Circle>, OXAVar<Shape>>));
    EXPECT_FALSE((std::is_convertible_v<OXAVar<Shape>, OXAVar<Circle>>));
    EXPECT_FALSE((std::is_convertible_v<Shape*, OXAVar<Circle>>));
    EXPECT_TRUE((std::is_nothrow_move_constructible_v<OXAVar<Shape>>));
    EXPECT_TRUE((std::is_nothrow_move_assignable_v<OXAVar<Shape>>));
}

}  // namespace
