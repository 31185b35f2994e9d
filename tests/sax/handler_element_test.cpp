// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "sax/element_reader.h"

namespace {

using namespace sax;
using Calls = std::vector<std::string>;

TEST(SaxHandlerElements, TheRootsParentIsUnknownAndItsEndIsNotReported) {
    const auto handler = make_reader();
    handler->end_result = E_FAIL;
    EXPECT_EQ(handler->StartElement("", "a", "p:a", nullptr), S_OK);
    EXPECT_EQ(handler->StartElement("", "b", "p:b", nullptr), S_OK);
    EXPECT_EQ(handler->EndElement("", "b", "p:b"), E_FAIL);
    EXPECT_EQ(handler->EndElement("", "a", "p:a"), S_OK);
    EXPECT_EQ(handler->calls, (Calls{"<a UNKNOWN", "<b a", ">b a p:b "}));
    EXPECT_TRUE(handler->elementStack.empty());
}

TEST(SaxHandlerElements, ASecondDocumentBeginsLikeTheFirst) {
    const auto handler = make_reader();
    for (int i = 0; i < 2; ++i) {
        handler->StartElement("", "a", "a", nullptr);
        handler->EndElement("", "a", "a");
    }
    EXPECT_EQ(handler->calls, (Calls{"<a UNKNOWN", "<a UNKNOWN"}));
}

TEST(SaxHandlerElements, AResultOfTheStartHookIsIgnored) {
    const auto handler = make_reader();
    handler->start_result = E_FAIL;
    EXPECT_EQ(handler->StartElement("", "a", "a", nullptr), S_OK);
    EXPECT_EQ(handler->elementStack.size(), 1U);
}

TEST(SaxHandlerElements, TheResultOfTheEndHookIsTheCallbacks) {
    const auto handler = make_reader();
    handler->StartElement("", "a", "a", nullptr);
    for (const HRESULT result : {S_OK, E_FAIL, E_NOTIMPL, HRESULT{1}}) {
        handler->end_result = result;
        handler->StartElement("", "b", "b", nullptr);
        EXPECT_EQ(handler->EndElement("", "b", "b"), result);
    }
}

TEST(SaxHandlerElements, TheEndedNameIsTheStackedOneAndTheQNameTheGivenOne) {
    const auto handler = make_reader();
    handler->StartElement("u", "a", "q:a", nullptr);
    handler->StartElement("u", "b", "q:b", nullptr);
    handler->EndElement("other", "other", "q:given");
    EXPECT_EQ(handler->calls.back(), ">b a q:given ");
}

TEST(SaxHandlerElements, TheInnermostNameIsTheStacksFront) {
    const auto handler = make_reader();
    for (const char* name : {"a", "b", "c"}) handler->StartElement("", name, name, nullptr);
    EXPECT_EQ(handler->elementStack, (std::list<OXAUnicodeString>{"c", "b", "a"}));
}

TEST(SaxHandlerElements, TheStartHookSeesTheStackAndTextOfBefore) {
    const auto handler = make_reader();
    handler->StartElement("", "a", "a", nullptr);
    handler->Characters("x");
    std::size_t depth = 0;
    std::string text;
    handler->at_start = [&] {
        depth = handler->elementStack.size();
        text = handler->watched->text();
    };
    handler->StartElement("", "b", "b", nullptr);
    EXPECT_EQ(depth, 1U);
    EXPECT_EQ(text, "x");
    EXPECT_EQ(handler->watched->text(), "");
}

TEST(SaxHandlerElements, ABufferThatTheStartHookInstallsIsEmptied) {
    const auto handler = ElementReader_var::Adopt(new ElementReader);
    handler->at_start = [&] {
        auto* buffer = new WatchedBuffer;
        buffer->SetBuffer("old");
        handler->buffer = handler->watched = buffer;
    };
    handler->StartElement("", "a", "a", nullptr);
    EXPECT_EQ(handler->watched->text(), "");
}

TEST(SaxHandlerElements, ThrowingStartHookLeavesTheStackAndText) {
    const auto handler = make_reader();
    handler->watched->SetBuffer("x");
    handler->at_start = [] { throw 7; };
    EXPECT_THROW(handler->StartElement("", "a", "a", nullptr), int);
    EXPECT_TRUE(handler->elementStack.empty());
    EXPECT_EQ(handler->watched->text(), "x");
}

TEST(SaxHandlerElements, WhatTheEndHookThrowsLeavesTheCallback) {
    const auto handler = make_reader();
    handler->StartElement("", "a", "a", nullptr);
    handler->StartElement("", "b", "b", nullptr);
    handler->Characters("word");
    handler->at_end = [&] {
        int value = 0;
        handler->buffer->GetIntArray(&value, 1);
    };
    EXPECT_THROW(handler->EndElement("", "b", "b"), std::invalid_argument);
    EXPECT_EQ(handler->elementStack.size(), 1U);
}

TEST(SaxHandlerElements, TextBehindTheLastChildIsWhatTheEndHookSees) {
    const auto handler = make_reader();
    handler->StartElement("", "a", "a", nullptr);
    handler->StartElement("", "c", "c", nullptr);
    handler->Characters("x");
    handler->StartElement("", "b", "b", nullptr);
    handler->EndElement("", "b", "b");
    handler->Characters("y");
    handler->EndElement("", "c", "c");
    EXPECT_EQ(handler->calls.back(), ">c a c y");
}

TEST(SaxHandlerElements, AnEndKeepsTheText) {
    const auto handler = make_reader();
    handler->StartElement("", "a", "a", nullptr);
    handler->StartElement("", "c", "c", nullptr);
    handler->StartElement("", "b", "b", nullptr);
    handler->Characters("x");
    handler->EndElement("", "b", "b");
    handler->Characters("y");
    handler->EndElement("", "c", "c");
    EXPECT_EQ(handler->calls.back(), ">c a c xy");
}

TEST(SaxHandlerElements, AnEndWithoutAStartCallsNothing) {
    const auto handler = make_reader();
    handler->end_result = E_FAIL;
    EXPECT_EQ(handler->EndElement("", "a", "a"), S_OK);
    EXPECT_TRUE(handler->calls.empty());
}

TEST(SaxHandlerElements, NeedNoBuffer) {
    const auto handler = ElementReader_var::Adopt(new ElementReader);
    EXPECT_EQ(handler->StartElement("", "a", "a", nullptr), S_OK);
    EXPECT_EQ(handler->EndElement("", "a", "a"), S_OK);
}

TEST(SaxHandlerCharacters, FailWithoutABuffer) {
    const auto handler = ElementReader_var::Adopt(new ElementReader);
    EXPECT_EQ(handler->Characters("x"), E_FAIL);
    const auto locator = make_locator(3, 4);
    handler->SetDocumentLocator(locator);
    EXPECT_EQ(handler->Characters("x"), E_FAIL);
    EXPECT_EQ(handler->watched, nullptr);
}

TEST(SaxHandlerCharacters, AreAppended) {
    const auto handler = make_reader();
    EXPECT_EQ(handler->Characters("x "), S_OK);
    EXPECT_EQ(handler->Characters("y"), S_OK);
    EXPECT_EQ(handler->watched->text(), "x y");
}

TEST(SaxHandlerCharacters, WriteTheLocatorsLineIntoTheBuffer) {
    const auto handler = make_reader();
    handler->watched->SetLine(9);
    handler->Characters("x");
    EXPECT_EQ(handler->watched->current_line(), 9);
    const auto locator = make_locator(31, 4);
    handler->SetDocumentLocator(locator);
    EXPECT_EQ(handler->watched->current_line(), 9);
    handler->Characters("x");
    EXPECT_EQ(handler->watched->current_line(), 31);
}

TEST(SaxHandlerLocator, NullFailsAndLeavesTheOneBefore) {
    const auto handler = make_reader();
    EXPECT_EQ(handler->SetDocumentLocator(nullptr), E_FAIL);
    EXPECT_TRUE(handler->locator.IsNull());
    const auto locator = make_locator(1, 2);
    EXPECT_EQ(handler->SetDocumentLocator(locator), S_OK);
    EXPECT_EQ(handler->SetDocumentLocator(nullptr), E_FAIL);
    EXPECT_EQ(handler->locator, locator);
}

TEST(SaxHandlerLocator, IsHeldUntilReplacedOrTheHandlerGoes) {
    const auto first = make_locator(1, 2);
    const auto second = make_locator(3, 4);
    auto handler = make_reader();
    handler->SetDocumentLocator(first);
    EXPECT_EQ(references_of(*first.Get()), 2U);
    handler->SetDocumentLocator(second);
    EXPECT_EQ(references_of(*first.Get()), 1U);
    EXPECT_EQ(references_of(*second.Get()), 2U);
    handler.Reset();
    EXPECT_EQ(references_of(*second.Get()), 1U);
}

}  // namespace
