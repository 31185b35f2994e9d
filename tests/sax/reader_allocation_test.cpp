// SPDX-License-Identifier: Apache-2.0
// A character callback takes no memory but for the growth of the buffer.
#include <cstddef>
#include <gtest/gtest.h>
#include <string>

#include "support/allocation.h"
#include "vSAXReader.h"

namespace {

class CountingHandler : public vSAXDefaultHandler {
public:
    CountingHandler() { buffer = new vSAXDefaultBuffer; }

    std::size_t callbacks = 0;
    std::string text;  // of the last element that ended

    HRESULT Characters(const OXAUnicodeString& chars) override {
        ++callbacks;
        return vSAXDefaultHandler::Characters(chars);
    }
    HRESULT OnStartElement(const OXAUnicodeString&, const OXAUnicodeString&,
                           const OXAISAXAttributes_var&) override {
        return S_OK;
    }
    HRESULT OnEndElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&) override {
        buffer->GetString(text);
        return S_OK;
    }
    void Reset() override {}
    HRESULT GetStatus() const override { return S_OK; }
};

constexpr std::size_t kFew = 500;
constexpr std::size_t kMany = 10 * kFew;
constexpr std::size_t kDoublings = 4;  // at most, of a text that becomes ten times as long

class SaxReaderAllocation : public testing::Test {
protected:
    vSAXReader reader;
    OXAVar<CountingHandler> handler;

    void SetUp() override { use_new_handler(); }

    void use_new_handler() {
        handler = OXAVar<CountingHandler>::Adopt(new CountingHandler);
        reader.SetDocumentHandler(handler.Get());
    }

    /// Blocks taken by a document with one text in `callbacks` pieces, which are too long for the memory
    /// within a string.
    std::size_t allocations(std::size_t callbacks) {
        std::string text;
        std::string xml = "<a><b>";
        for (std::size_t i = 0; i < callbacks; ++i) {
            const std::string piece(40, static_cast<char>('a' + i % 26));
            text.append(piece);
            xml.append(piece).append("<!---->");
        }
        xml.append("</b></a>");
        handler->callbacks = 0;
        handler->text.reserve(text.size());
        std::size_t taken = 0;
        {
            const support::AllocationRecorder recorder;
            EXPECT_EQ(reader.LoadBuffer(xml.c_str()), S_OK);
            taken = recorder.allocations();
        }
        EXPECT_EQ(handler->callbacks, callbacks);
        EXPECT_EQ(handler->text, text);
        return taken;
    }
};

TEST_F(SaxReaderAllocation, CharactersTakeMemoryOnlyAsTheBufferGrows) {
    const std::size_t few = allocations(kFew);
    use_new_handler();
    EXPECT_LE(allocations(kMany), few + kDoublings);
}

TEST_F(SaxReaderAllocation, CharactersTakeNoMemoryWhereTheBufferHasIt) {
    allocations(kMany);
    EXPECT_EQ(allocations(kMany), allocations(kFew));
}

}  // namespace
