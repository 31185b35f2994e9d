// SPDX-License-Identifier: Apache-2.0

#include <filesystem>
#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "xml/parser.h"

namespace {

using namespace xml_tests;

const char* const kDtd = "<!ELEMENT a (b)><!ELEMENT b EMPTY><!ATTLIST b c CDATA 'default'>";

class XmlExternalFiles : public testing::Test {
protected:
    XmlExternalFiles() { std::filesystem::create_directories(folder.path("inside/below")); }

    support::TemporaryFolder folder;
    Parser parser;

    HRESULT parse(const std::string& document) {
        return parser.parse_file(folder.write("inside/document.xml", document));
    }
};

TEST_F(XmlExternalFiles, ADtdOfTheFolderIsReadAndChecksTheDocument) {
    folder.write("inside/a.dtd", kDtd);
    folder.write("inside/below/a.dtd", kDtd);
    folder.write("inside/with space.dtd", kDtd);
    std::filesystem::create_symlink("below/a.dtd", folder.path("inside/link.dtd"));
    for (const std::string& id :
         {std::string("a.dtd"), std::string("./below/../a.dtd"), std::string("below/a.dtd"),
          std::string("link.dtd"), folder.path("inside/a.dtd"), "file://" + folder.path("inside/a.dtd"),
          "file://localhost" + folder.path("inside/a.dtd"), std::string("with%20space.dtd"),
          std::string("with space.dtd")}) {
        EXPECT_EQ(parse("<!DOCTYPE a SYSTEM '" + id + "'><a><b/></a>"), S_OK) << id << ": " << parser.said();
        EXPECT_TRUE(parser.problems().empty()) << id << ": " << parser.said();
        EXPECT_EQ(parser.events().at(3), "<b b c=default>") << id;
        EXPECT_EQ(parse("<!DOCTYPE a SYSTEM '" + id + "'><a/>"), S_OK) << id;
        EXPECT_EQ(parser.count("error"), 1) << id;
    }
}

TEST_F(XmlExternalFiles, OneLetterBeforeAColonIsADriveAndNoScheme) {
    folder.write("inside/C:\\a.dtd", kDtd);
    EXPECT_EQ(parse("<!DOCTYPE a SYSTEM 'C:\\a.dtd'><a><b/></a>"), S_OK) << parser.said();
    EXPECT_EQ(parser.events().at(3), "<b b c=default>");
    EXPECT_EQ(parse("<!DOCTYPE a SYSTEM 'CD:\\a.dtd'><a><b/></a>"), E_FAIL);
    EXPECT_NE(parser.fatal_error().message.find("only local files are read"), std::string::npos);
}

TEST_F(XmlExternalFiles, APercentSignWithoutTwoDigitsIsPartOfTheName) {
    for (const std::string name : {"%2g.dtd", "%g2.dtd", "dtd%2", "dtd%"}) {
        folder.write("inside/" + name, kDtd);
        EXPECT_EQ(parse("<!DOCTYPE a SYSTEM '" + name + "'><a><b/></a>"), S_OK) << parser.said();
        EXPECT_EQ(parser.events().at(3), "<b b c=default>") << name;
    }
}

TEST_F(XmlExternalFiles, ADocumentNamedByARelativePathFindsItsDtd) {
    folder.write("inside/a.dtd", kDtd);
    folder.write("inside/document.xml", "<!DOCTYPE a SYSTEM 'a.dtd'><a><b/></a>");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path("inside"));
    EXPECT_EQ(parser.parse_file("document.xml"), S_OK) << parser.said();
    std::filesystem::current_path(folder.path("."));
    EXPECT_EQ(parser.parse_file("inside/document.xml"), S_OK) << parser.said();
    std::filesystem::current_path(before);
    EXPECT_EQ(parser.events().at(3), "<b b c=default>");
}

TEST_F(XmlExternalFiles, ADtdIncludesFilesBesideItself) {
    folder.write("inside/below/a.dtd", "<!ENTITY % more SYSTEM 'more.dtd'>%more;<!ELEMENT a (b)>");
    folder.write("inside/below/more.dtd", "<!ELEMENT b EMPTY>");
    EXPECT_EQ(parse("<!DOCTYPE a SYSTEM 'below/a.dtd'><a><b/></a>"), S_OK) << parser.said();
    EXPECT_TRUE(parser.problems().empty()) << parser.said();
}

TEST_F(XmlExternalFiles, ADtdElsewhereIsRefused) {
    folder.write("a.dtd", kDtd);
    folder.write("inside/a.dtd", kDtd);
    std::filesystem::create_directory(folder.path("inside-not"));
    folder.write("inside-not/a.dtd", kDtd);
    std::filesystem::create_symlink(folder.path("a.dtd"), folder.path("inside/link.dtd"));
    std::filesystem::create_directory_symlink(folder.path("."), folder.path("inside/up"));
    for (const std::string& id :
         {std::string("../a.dtd"), folder.path("a.dtd"), "file://" + folder.path("a.dtd"),
          std::string("link.dtd"), std::string("up/a.dtd"), std::string("below/../../a.dtd"),
          std::string("..%2fa.dtd"), folder.path("inside-not/a.dtd"), std::string("absent.dtd"),
          std::string("below"), std::string("."), std::string("/dev/zero"),
          std::string("http://localhost:9/a.dtd"), std::string("HTTPS://localhost:9/a.dtd"),
          std::string("ftp://localhost/a.dtd"), std::string("//localhost/a.dtd"),
          "file://elsewhere" + folder.path("inside/a.dtd"), std::string("a.dtd%00"),
          std::string("data:,x")}) {
        EXPECT_EQ(parse("<!DOCTYPE a SYSTEM '" + id + "'>\n<a><b/></a>"), E_FAIL) << id;
        const Problem fatal = parser.fatal_error();
        EXPECT_NE(fatal.message.find(id), std::string::npos) << fatal.message;
        EXPECT_EQ(fatal.line, 1) << id;
        EXPECT_GT(fatal.column, 1) << id;
        EXPECT_EQ(parse("<a/>"), S_OK);
    }
}

TEST_F(XmlExternalFiles, ADtdCannotLeadOutOfTheFolderEither) {
    folder.write("secret.dtd", "<!ELEMENT b EMPTY>");
    folder.write("inside/below/a.dtd", "<!ENTITY % out SYSTEM '../../secret.dtd'>%out;<!ELEMENT a (b)>");
    EXPECT_EQ(parse("<!DOCTYPE a SYSTEM 'below/a.dtd'><a><b/></a>"), E_FAIL);
    EXPECT_NE(parser.fatal_error().message.find("secret.dtd"), std::string::npos);
    EXPECT_EQ(parse("<!DOCTYPE a [<!ENTITY % out SYSTEM '../secret.dtd'>%out;]><a><b/></a>"), E_FAIL);
    EXPECT_NE(parser.fatal_error().message.find("secret.dtd"), std::string::npos);
}

TEST_F(XmlExternalFiles, AnExternalGeneralEntityIsNotReadWhereverItIs) {
    folder.write("secret.txt", "secret");
    folder.write("inside/near.txt", "near");
    for (const std::string& id :
         {std::string("near.txt"), std::string("../secret.txt"), folder.path("secret.txt"),
          std::string("file:///etc/passwd"), std::string("http://localhost:9/x")}) {
        const std::string dtd = "<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY x SYSTEM '" + id + "'>]>";
        EXPECT_EQ(parse(dtd + "<a>&x;</a>"), E_FAIL) << id;
        EXPECT_NE(parser.fatal_error().message.find(id), std::string::npos) << parser.said();
        for (const std::string& event : parser.events()) {
            EXPECT_EQ(event.find("secret"), std::string::npos);
            EXPECT_EQ(event.find("near"), std::string::npos);
        }
        // In an attribute it is not well-formed; where it is not used, it does no harm.
        EXPECT_EQ(parse(dtd + "<a b='&x;'/>"), E_FAIL) << id;
        EXPECT_EQ(parse(dtd + "<a/>"), S_OK) << id;
    }
}

TEST_F(XmlExternalFiles, ATextInMemoryHasNoFolder) {
    folder.write("inside/a.dtd", kDtd);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path("inside"));
    for (const std::string& id : {std::string("a.dtd"), folder.path("inside/a.dtd")}) {
        EXPECT_EQ(parser.parse_text("<!DOCTYPE a SYSTEM '" + id + "'><a><b/></a>"), E_FAIL);
        parser.fatal_error();
    }
    std::filesystem::current_path(before);
}

TEST_F(XmlExternalFiles, ADtdIncludesAThousandFilesAtMost) {
    folder.write("inside/more.dtd", "<!-- more -->");
    const auto including = [](int files) {
        std::string dtd = "<!DOCTYPE a [<!ENTITY % more SYSTEM 'more.dtd'>";
        for (int i = 0; i < files; ++i) dtd += "%more;";
        return dtd + "]><a/>";
    };
    EXPECT_EQ(parse(including(1000)), S_OK) << parser.said();
    EXPECT_EQ(parse(including(1001)), E_FAIL);
    EXPECT_EQ(parser.fatal_error().message,
              "the external entity \"more.dtd\" is not read: more than 1000 external files are read");
    EXPECT_EQ(parse(including(1000)), S_OK) << parser.said();
}

TEST_F(XmlExternalFiles, ADtdAndItsFilesHave64MebibytesAtMost) {
    constexpr std::uintmax_t most = std::uintmax_t{64} << 20;
    const std::string dtd = "<!ENTITY % zeros SYSTEM 'zeros.dtd'>%zeros;";
    folder.write("inside/a.dtd", dtd);
    folder.write("inside/zeros.dtd", "");
    const auto message = [&](const char* file, std::uintmax_t size) {
        std::filesystem::resize_file(folder.path("inside/zeros.dtd"), size);
        EXPECT_EQ(parse(std::string("<!DOCTYPE a SYSTEM '") + file + "'><a/>"), E_FAIL);
        return parser.fatal_error().message;
    };
    // What was read is looked at: it begins with a zero byte.
    EXPECT_EQ(message("zeros.dtd", most), "a zero character is not allowed");
    EXPECT_EQ(message("a.dtd", most - dtd.size()), "a zero character is not allowed");
    EXPECT_EQ(message("a.dtd", most - dtd.size() + 1),
              "the external entity \"zeros.dtd\" is not read: the external files are larger than 64 MiB "
              "together");
    EXPECT_EQ(message("zeros.dtd", most + 1),
              "the external entity \"zeros.dtd\" is not read: cannot read \"" +
                  folder.path("inside/zeros.dtd") + "\": too large");
}

TEST_F(XmlExternalFiles, ADefectOfADtdIsFatalAndNamesItsFile) {
    const std::string path = folder.write("inside/a.dtd", "<!ELEMENT a\n (b)>\xff");
    EXPECT_EQ(parse("<!DOCTYPE a SYSTEM 'a.dtd'><a/>"), E_FAIL);
    const Problem fatal = parser.fatal_error();
    EXPECT_EQ(fatal.line, 2);
    EXPECT_EQ(fatal.column, 6);
    EXPECT_EQ(std::filesystem::path(fatal.system_id), std::filesystem::canonical(path));
}

/// Puts a text in the place of whatever the document asks for.
class ResolvingHandler final : public RecordingHandler {
public:
    OXAISAXInputSource_var replacement;
    std::vector<std::string> asked;

    HRESULT ResolveEntity(const OXAUnicodeString& publicId, const OXAUnicodeString& systemId,
                          OXAISAXInputSource_var& source) override {
        asked.push_back(text_of(publicId) + " " + text_of(systemId));
        EXPECT_TRUE(source.IsNull());
        source = replacement;
        return S_OK;
    }
};

TEST_F(XmlExternalFiles, AHandlerCanPutASourceInTheirPlace) {
    const auto handler = OXAVar<ResolvingHandler>::Adopt(new ResolvingHandler);
    const OXAIXMLSAX2Factory_var factory = make_factory();
    parser.reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    factory->CreateInputSourceFromText(kDtd, "", handler->replacement);
    EXPECT_EQ(parse("<!DOCTYPE a PUBLIC 'p' 'http://localhost:9/a.dtd'><a><b/></a>"), S_OK) << parser.said();
    EXPECT_EQ(handler->asked, std::vector<std::string>{"p http://localhost:9/a.dtd"});
    EXPECT_EQ(handler->events.at(3), "<b b c=default>");

    handler->events.clear();
    factory->CreateInputSourceFromText("\xc3\xa9", "", handler->replacement);
    EXPECT_EQ(parse("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY x SYSTEM 's'>]><a>&x;</a>"), S_OK)
        << parser.said();
    EXPECT_EQ(handler->events.at(3), "text \xc3\xa9");

    // A problem in a text is one of the identifiers that asked for it.
    factory->CreateInputSourceFromText("<!ELEMENT ?>", "", handler->replacement);
    EXPECT_EQ(parse("<!DOCTYPE a PUBLIC 'p' 's'><a/>"), E_FAIL);
    EXPECT_EQ(parser.fatal_error().system_id, "s");
    OXAUnicodeString public_id;
    EXPECT_EQ(handler->locator->GetPublicId(public_id), S_OK);
    EXPECT_EQ(text_of(public_id), "p");

    factory->CreateInputSourceFromFile(folder.path("absent").c_str(), "", handler->replacement);
    EXPECT_EQ(parse("<!DOCTYPE a SYSTEM 's'><a/>"), E_FAIL);
    EXPECT_NE(parser.fatal_error().message.find(folder.path("absent")), std::string::npos);
}

}  // namespace
