// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <type_traits>

#include "sax/element_reader.h"
#include "support/vtable_slot.h"

namespace {

using namespace sax;
using support::vtable_slot;

TEST(SaxHandlerObject, IsConstructedEmpty) {
    const auto handler = ElementReader_var::Adopt(new ElementReader);
    EXPECT_TRUE(handler->elementStack.empty());
    EXPECT_EQ(handler->buffer, nullptr);
    EXPECT_TRUE(handler->locator.IsNull());
    EXPECT_EQ(handler->GetNbErrors(), 0U);
    EXPECT_EQ(references_of(*handler.Get()), 1U);
}

TEST(SaxHandlerObject, DeletesItsBufferOnce) {
    int destroyed = 0;
    auto handler = ElementReader_var::Adopt(new ElementReader(new WatchedBuffer(&destroyed)));
    handler->AddRef();
    EXPECT_EQ(handler->Release(), 1U);
    EXPECT_EQ(destroyed, 0);
    handler.Reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(SaxHandlerObject, ItsFieldsAreInOrder) {
    const auto handler = ElementReader_var::Adopt(new ElementReader);
    const auto* start = reinterpret_cast<const char*>(static_cast<vSAXDefaultHandler*>(handler.Get()));
    const auto offset = [&](const auto& field) {
        return static_cast<std::size_t>(reinterpret_cast<const char*>(&field) - start);
    };
    EXPECT_EQ(offset(handler->elementStack), sizeof(OXASAXDefaultHandler));
    EXPECT_EQ(offset(handler->buffer), offset(handler->elementStack) + sizeof(std::list<OXAUnicodeString>));
    EXPECT_EQ(offset(handler->locator), offset(handler->buffer) + sizeof(void*));
    EXPECT_EQ(offset(handler->nbErrors), offset(handler->locator) + sizeof(void*));
    EXPECT_EQ(sizeof(vSAXDefaultHandler), offset(handler->nbErrors) + sizeof(void*));
}

TEST(SaxHandlerObject, ItsVirtualOperationsAreInOrder) {
    using H = vSAXDefaultHandler;
    EXPECT_EQ(vtable_slot(&H::GetMetaObject), 10U);
    EXPECT_EQ(vtable_slot(&H::IsA), 11U);
    EXPECT_EQ(vtable_slot(&H::IsAKindOf), 12U);
    EXPECT_EQ(vtable_slot(&H::StartElement), 20U);
    EXPECT_EQ(vtable_slot(&H::EndElement), 21U);
    EXPECT_EQ(vtable_slot(&H::Characters), 22U);
    EXPECT_EQ(vtable_slot(&H::SetDocumentLocator), 25U);
    EXPECT_EQ(vtable_slot(&H::Error), 32U);
    EXPECT_EQ(vtable_slot(&H::FatalError), 33U);
    EXPECT_EQ(vtable_slot(&H::Warning), 34U);
    EXPECT_EQ(vtable_slot(&H::Log), 35U);
    EXPECT_EQ(vtable_slot(&H::Reset), 36U);
    EXPECT_EQ(vtable_slot(&H::GetStatus), 37U);
    EXPECT_EQ(vtable_slot(&H::OnStartElement), 38U);
    EXPECT_EQ(vtable_slot(&H::OnEndElement), 39U);
}

TEST(SaxHandlerObject, IsAbstractAndNeverDeletedByUsers) {
    EXPECT_TRUE(std::is_abstract_v<vSAXDefaultHandler>);
    EXPECT_FALSE(std::is_destructible_v<vSAXDefaultHandler>);
    EXPECT_TRUE((std::is_base_of_v<OXASAXDefaultHandler, vSAXDefaultHandler>));
    EXPECT_EQ(vSAXDefaultHandler::CreateItself(), nullptr);
}

TEST(SaxHandlerObject, HasItsMetaClass) {
    OXAMetaClass* const meta = vSAXDefaultHandler::MetaObject();
    ASSERT_NE(meta, nullptr);
    EXPECT_STREQ(meta->ClassName(), "vSAXDefaultHandler");
    EXPECT_STREQ(meta->Framework(), "Talvik");
    EXPECT_EQ(meta->ClassKind(), 1);
    EXPECT_STREQ(meta->Version(), "0");
    EXPECT_EQ(meta->InstanceSize(), sizeof(vSAXDefaultHandler));
    EXPECT_EQ(meta->Base(), OXASAXDefaultHandler::MetaObject());
    EXPECT_EQ(vSAXDefaultHandler::MetaObject(), meta);
    EXPECT_EQ(fct_RetrieveMetaObject("vSAXDefaultHandler", 0, nullptr, "", "Talvik", 0), meta);
    EXPECT_EQ(&vSAXDefaultHandler::ClassId(), &meta->ClassId());
    EXPECT_STREQ(vSAXDefaultHandler::ClassName(), "vSAXDefaultHandler");
}

TEST(SaxHandlerObject, AnswersForItsClassAndBases) {
    const auto handler = make_reader();
    EXPECT_EQ(handler->GetMetaObject(), vSAXDefaultHandler::MetaObject());
    EXPECT_STREQ(handler->IsA(), "vSAXDefaultHandler");
    EXPECT_NE(handler->IsAKindOf("vSAXDefaultHandler"), 0);
    EXPECT_NE(handler->IsAKindOf("OXASAXDefaultHandler"), 0);
    EXPECT_NE(handler->IsAKindOf("OXABaseUnknown"), 0);
    EXPECT_EQ(handler->IsAKindOf("vSAXReader"), 0);
    EXPECT_EQ(handler->IsAKindOf(nullptr), 0);
}

}  // namespace
