// SPDX-License-Identifier: Apache-2.0

#include <gtest/gtest.h>

#include "sax/decimal_comma.h"
#include "sax/element_reader.h"
#include "support/log_capture.h"
#include "support/temporary_folder.h"
#include "vSAXReader.h"

namespace {

using namespace sax;

class SaxReaderLocale : public testing::Test {
protected:
    support::TemporaryFolder folder;
    support::LogCapture log;
    ElementReader_var handler = make_reader();
    vSAXReader reader;
    DecimalComma comma;
    std::string during;
    float array = 0;
    float single = 0;

    void SetUp() override {
        if (!comma.set()) GTEST_SKIP() << "the locale " << kDecimalComma << " is not on this machine";
        ASSERT_EQ(reader.SetDocumentHandler(handler.Get()), S_OK);
        handler->at_end = [this] {
            during = numeric_locale();
            handler->buffer->GetFloatArray(&array, 1);
            handler->buffer->GetFloat(single);
        };
    }
};

TEST_F(SaxReaderLocale, NumbersHaveADotWhileABufferIsRead) {
    EXPECT_EQ(reader.LoadBuffer("<a><b>1.5</b></a>"), S_OK);
    EXPECT_EQ(array, 1.5F);
    EXPECT_EQ(single, 1.5F);
    EXPECT_EQ(during, "C");
    EXPECT_EQ(numeric_locale(), kDecimalComma);
}

TEST_F(SaxReaderLocale, NumbersHaveADotWhileAFileIsRead) {
    EXPECT_EQ(reader.LoadFile(folder.write("a.xml", "<a><b>1.5</b></a>").c_str()), S_OK);
    EXPECT_EQ(array, 1.5F);
    EXPECT_EQ(during, "C");
    EXPECT_EQ(numeric_locale(), kDecimalComma);
}

TEST_F(SaxReaderLocale, IsBackAfterAFailure) {
    EXPECT_EQ(reader.LoadBuffer("<a><b>1.5</b>"), E_FAIL);
    EXPECT_EQ(during, "C");
    EXPECT_EQ(numeric_locale(), kDecimalComma);
    EXPECT_EQ(reader.LoadFile(folder.path("missing.xml").c_str()), E_FAIL);
    EXPECT_EQ(numeric_locale(), kDecimalComma);
}

TEST_F(SaxReaderLocale, IsBackAfterAnException) {
    EXPECT_THROW(reader.LoadBuffer("<a><b>word</b></a>"), std::invalid_argument);
    EXPECT_EQ(during, "C");
    EXPECT_EQ(numeric_locale(), kDecimalComma);
    EXPECT_THROW(reader.LoadFile(folder.write("a.xml", "<a><b>word</b></a>").c_str()), std::invalid_argument);
    EXPECT_EQ(numeric_locale(), kDecimalComma);
}

/// Writes down the locale in which it hears of an error.
class LocaleOfErrors : public ElementReader {
public:
    std::string during;
    HRESULT FatalError(OXASAXParseException* exception) override {
        during = numeric_locale();
        return ElementReader::FatalError(exception);
    }
    HRESULT Error(OXASAXParseException* exception) override {
        during = numeric_locale();
        return ElementReader::Error(exception);
    }
};

TEST_F(SaxReaderLocale, IsCWhileASchemaIsLoadedAndBackAfter) {
    const auto errors = OXAVar<LocaleOfErrors>::Adopt(new LocaleOfErrors);
    reader.SetDocumentHandler(errors.Get());
    EXPECT_LT(reader.SetXSDSchema(folder.write("a.xsd", "<xs:schema").c_str(), "k"), 0);
    EXPECT_EQ(errors->during, "C");
    EXPECT_EQ(numeric_locale(), kDecimalComma);
    EXPECT_LT(reader.SetXSDSchema(folder.path("missing.xsd").c_str(), "k"), 0);
    EXPECT_EQ(numeric_locale(), kDecimalComma);
}

TEST_F(SaxReaderLocale, AChangeDuringTheParseIsUndone) {
    handler->at_end = [] { std::setlocale(LC_NUMERIC, "POSIX"); };
    EXPECT_EQ(reader.LoadBuffer("<a><b/></a>"), S_OK);
    EXPECT_EQ(numeric_locale(), kDecimalComma);
}

TEST_F(SaxReaderLocale, WhenItIsCNothingIsRestored) {
    std::setlocale(LC_NUMERIC, "C");
    handler->at_end = [] { std::setlocale(LC_NUMERIC, kDecimalComma); };
    EXPECT_EQ(reader.LoadBuffer("<a><b/></a>"), S_OK);
    EXPECT_EQ(numeric_locale(), kDecimalComma);
}

TEST_F(SaxReaderLocale, OnlyTheNumericCategoryIsTouched) {
    const std::string before = std::setlocale(LC_CTYPE, nullptr);
    ASSERT_NE(std::setlocale(LC_CTYPE, kDecimalComma), nullptr);
    std::string seen;
    handler->at_end = [&] { seen = std::setlocale(LC_CTYPE, nullptr); };
    EXPECT_EQ(reader.LoadBuffer("<a><b/></a>"), S_OK);
    EXPECT_EQ(seen, kDecimalComma);
    std::setlocale(LC_CTYPE, before.c_str());
}

}  // namespace
