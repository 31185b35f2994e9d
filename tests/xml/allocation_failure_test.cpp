// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>
#include <new>

#include "support/allocation.h"
#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

/// Runs `action` with each of its allocations failing in turn, until none is left to fail. Each failure must
/// end in std::bad_alloc, leave no memory behind, and leave `reader` able to read.
template <class Action>
void fail_each_allocation(OXAISAXXMLReader_var& reader, Action action) {
    OXAISAXInputSource_var simple;
    make_factory()->CreateInputSourceFromText("<a b='c'>text</a>", "", simple);
    action();
    for (std::size_t index = 0; index < 100000; ++index) {
        const std::ptrdiff_t before = support::live_blocks();
        bool thrown = false;
        bool fired = false;
        {
            const support::FailAllocation fail(index);
            try {
                action();
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
            fired = fail.fired();
        }
        ASSERT_EQ(thrown, fired) << index;
        ASSERT_LE(support::live_blocks(), before) << index;
        ASSERT_EQ(reader->Parse(simple), S_OK) << index;
        if (!fired) return;
    }
    FAIL() << "no end of allocations";
}

class LocatorKeeper final : public OXASAXDefaultHandler {
public:
    OXAISAXLocator_var locator;

    HRESULT SetDocumentLocator(const OXAISAXLocator_var& given) override {
        locator = given;
        return S_OK;
    }
    /// 0 without a locator.
    int line() const {
        int line = 0;
        if (!locator.IsNull()) locator->GetLineNumber(line);
        return line;
    }
};

TEST(XmlAllocationFailure, LeavesAParseAsBadAlloc) {
    const support::TemporaryFolder folder;
    folder.write("a.dtd", "<!ELEMENT a (b)><!ENTITY e 'x'>");
    const std::string path =
        folder.write("a.xml",
                     "<!DOCTYPE a SYSTEM 'a.dtd' [<!ELEMENT b (#PCDATA)><!ATTLIST b xmlns:p CDATA #IMPLIED "
                     "p:c CDATA 'd'>]><a><b xmlns:p='u' p:c='d'>&e;text</b></a>");
    OXAISAXXMLReader_var reader;
    OXAISAXInputSource_var source;
    const OXAIXMLSAX2Factory_var factory = make_factory();
    factory->CreateXMLReader(reader);
    reader->SetFeature(OXASAXXMLReaderOptions::ValidationFeature, true);
    factory->CreateInputSourceFromFile(path.c_str(), "", source);
    const auto handler = OXAVar<LocatorKeeper>::Adopt(new LocatorKeeper);
    reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    fail_each_allocation(reader, [&] {
        try {
            EXPECT_EQ(reader->Parse(source), S_OK);
        } catch (const std::bad_alloc&) {
            // The locator asks no parser any more: all is on one line, or the place is unknown.
            EXPECT_TRUE(handler->line() == 0 || handler->line() == 1) << handler->line();
            throw;
        }
    });
}

TEST(XmlAllocationFailure, LeavesTheLoadingOfASchemaAsBadAlloc) {
    OXAISAXXMLReader_var reader;
    OXAISAXInputSource_var source;
    const OXAIXMLSAX2Factory_var factory = make_factory();
    factory->CreateXMLReader(reader);
    factory->CreateInputSourceFromText(
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a' "
        "type='xs:int'/></xs:schema>",
        "", source);
    const OXAIXMLSchemaLoader_var loader(reader);
    fail_each_allocation(reader, [&] { EXPECT_EQ(loader->LoadGrammar("k", source), S_OK); });
}

}  // namespace
