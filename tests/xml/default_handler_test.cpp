// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <type_traits>

#include "support/vtable_slot.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;
using support::vtable_slot;

class Handler : public OXASAXDefaultHandler {};

TEST(DefaultHandler, TheVirtualOperationsHaveTheirSlots) {
    using H = OXASAXDefaultHandler;
    // Those of OXABaseUnknown come first.
    EXPECT_EQ(vtable_slot(static_cast<HRESULT (H::*)(const GUID&, void**)>(&H::QueryInterface)), 0U);
    EXPECT_EQ(vtable_slot(static_cast<OXABaseUnknown* (H::*)(const char*)>(&H::QueryInterface)), 7U);
    EXPECT_EQ(vtable_slot(&H::GetMetaObject), 10U);
    EXPECT_EQ(vtable_slot(&H::ChangeComponentState), 17U);
    EXPECT_EQ(vtable_slot(&H::StartDocument), 18U);
    EXPECT_EQ(vtable_slot(&H::EndDocument), 19U);
    EXPECT_EQ(vtable_slot(&H::StartElement), 20U);
    EXPECT_EQ(vtable_slot(&H::EndElement), 21U);
    EXPECT_EQ(vtable_slot(&H::Characters), 22U);
    EXPECT_EQ(vtable_slot(&H::IgnorableWhiteSpace), 23U);
    EXPECT_EQ(vtable_slot(&H::ProcessingInstruction), 24U);
    EXPECT_EQ(vtable_slot(&H::SetDocumentLocator), 25U);
    EXPECT_EQ(vtable_slot(&H::StartPrefixMapping), 26U);
    EXPECT_EQ(vtable_slot(&H::EndPrefixMapping), 27U);
    EXPECT_EQ(vtable_slot(&H::SkippedEntity), 28U);
    EXPECT_EQ(vtable_slot(&H::NotationDecl), 29U);
    EXPECT_EQ(vtable_slot(&H::UnparsedEntityDecl), 30U);
    EXPECT_EQ(vtable_slot(&H::ResolveEntity), 31U);
    EXPECT_EQ(vtable_slot(&H::Error), 32U);
    EXPECT_EQ(vtable_slot(&H::FatalError), 33U);
    EXPECT_EQ(vtable_slot(&H::Warning), 34U);
}

TEST(DefaultHandler, HasTheAddressOfItsOneBase) {
    const auto handler = OXAVar<Handler>::Adopt(new Handler);
    const OXABaseUnknown* base = handler.Get();
    EXPECT_EQ(static_cast<const void*>(base), static_cast<const void*>(handler.Get()));
    EXPECT_FALSE((std::is_base_of_v<OXAISAXContentHandler, OXASAXDefaultHandler>));
    EXPECT_FALSE((std::is_base_of_v<OXAISAXErrorHandler, OXASAXDefaultHandler>));
}

TEST(DefaultHandler, BothInterfacesAreGotByAQueryAndAreTheHandler) {
    auto* handler = new Handler;
    {
        const OXAISAXContentHandler_var content(handler);
        const OXAISAXErrorHandler_var errors(handler);
        ASSERT_FALSE(content.IsNull());
        ASSERT_FALSE(errors.IsNull());
        EXPECT_EQ(handler->AddRef(), 4U);
        EXPECT_EQ(content->Release(), 3U);
        EXPECT_EQ(content->IsEqual(handler), 1);
        EXPECT_EQ(handler->IsEqual(errors.Get()), 1);
        EXPECT_STREQ(content->IsA(), "OXASAXDefaultHandler");
        EXPECT_EQ(OXAISAXErrorHandler_var(content), errors);
        EXPECT_EQ(OXASAXDefaultHandler_var(errors).Get(), handler);
    }
    EXPECT_EQ(handler->Release(), 0U);
}

TEST(DefaultHandler, TheQueryByNameFindsThemToo) {
    const auto handler = OXAVar<Handler>::Adopt(new Handler);
    const OXAISAXContentHandler_var content(handler);
    const OXAISAXErrorHandler_var errors(handler);
    const auto found = [&](const char* name) {
        return OXAVar<OXABaseUnknown>::Adopt(handler->QueryInterface(name));
    };
    EXPECT_EQ(found("OXAISAXContentHandler"), content);
    EXPECT_EQ(found("OXAISAXErrorHandler"), errors);
    EXPECT_EQ(found("OXASAXDefaultHandler"), handler);
    EXPECT_EQ(found("OXABaseUnknown"), handler);
    EXPECT_TRUE(found("OXAIXMLSchemaLoader").IsNull());
    EXPECT_TRUE(found(nullptr).IsNull());
    EXPECT_EQ(handler->QueryInterface(OXAISAXContentHandler::ClassId(), nullptr), E_POINTER);
}

TEST(DefaultHandler, DoesNothingAndSucceeds) {
    const auto handler = OXAVar<Handler>::Adopt(new Handler);
    OXASAXParseException exception("message");
    OXAISAXInputSource_var source;
    EXPECT_EQ(handler->StartDocument(), S_OK);
    EXPECT_EQ(handler->EndDocument(), S_OK);
    EXPECT_EQ(handler->StartElement("", "a", "a", nullptr), S_OK);
    EXPECT_EQ(handler->EndElement("", "a", "a"), S_OK);
    EXPECT_EQ(handler->Characters("x"), S_OK);
    EXPECT_EQ(handler->IgnorableWhiteSpace(" "), S_OK);
    EXPECT_EQ(handler->ProcessingInstruction("t", "d"), S_OK);
    EXPECT_EQ(handler->SetDocumentLocator(nullptr), S_OK);
    EXPECT_EQ(handler->StartPrefixMapping("p", "u"), S_OK);
    EXPECT_EQ(handler->EndPrefixMapping("p"), S_OK);
    EXPECT_EQ(handler->SkippedEntity("e"), S_OK);
    EXPECT_EQ(handler->NotationDecl("n", "p", "s"), S_OK);
    EXPECT_EQ(handler->UnparsedEntityDecl("n", "p", "s", "o"), S_OK);
    EXPECT_EQ(handler->ResolveEntity("p", "s", source), S_OK);
    EXPECT_TRUE(source.IsNull());
    EXPECT_EQ(handler->Error(&exception), S_OK);
    EXPECT_EQ(handler->FatalError(&exception), S_OK);
    EXPECT_EQ(handler->Warning(&exception), S_OK);
}

TEST(DefaultHandler, AParseCallsEveryOperationThroughTheInterfaces) {
    Parser parser;
    EXPECT_EQ(parser.parse_text("<!DOCTYPE a [<!ELEMENT a (b*)><!ELEMENT b (#PCDATA)>"
                                "<!ATTLIST b xmlns:p CDATA #IMPLIED>"
                                "<!NOTATION n PUBLIC 'pn'><!ENTITY u SYSTEM 'su' NDATA n>]>"
                                "<a> <b xmlns:p='u'>x</b><?t d?></a>"),
              S_OK)
        << parser.said();
    const std::vector<std::string> expected = {
        "locator",      "start document", "notation n pn ",  "unparsed u  su n", "<a a>",
        "space 1",      "prefix p=u",     "<b b xmlns:p=u>", "text x",           "</b b>",
        "end prefix p", "<?t d?>",        "</a a>",          "end document"};
    EXPECT_EQ(parser.events(), expected);
}

TEST(ParseException, KeepsWhatItIsMadeFrom) {
    const OXASAXParseException exception("message", 3, 4, "public", "system");
    const OXASAXParseException copy(exception);
    EXPECT_EQ(text_of(copy.GetMessageW()), "message");
    EXPECT_EQ(copy.GetLineNumber(), 3);
    EXPECT_EQ(copy.GetColumnNumber(), 4);
    EXPECT_EQ(text_of(copy.GetPublicId()), "public");
    EXPECT_EQ(text_of(copy.GetSystemId()), "system");
    OXASAXParseException other("other");
    EXPECT_EQ(other.GetLineNumber(), 0);
    EXPECT_EQ(other.GetColumnNumber(), 0);
    other = exception;
    EXPECT_EQ(text_of(other.GetMessageW()), "message");
}

}  // namespace
