// SPDX-License-Identifier: Apache-2.0
// Which outputs are refused, by every subcommand that writes one.
#include <cctype>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "pelto/output/folder_content.h"
#include "support/command.h"
#include "support/temporary_folder.h"

namespace {

using namespace support;
namespace fs = std::filesystem;

class OutputPath : public testing::Test {
protected:
    OutputPath() {
        fs::copy_file(PELTO_SAMPLES "/textures/bc4.dds", path("in.dds"));
        fs::copy_file(PELTO_SAMPLES "/textures/bc4.dds", path("in.png"));
        fs::copy_file(PELTO_BASIS_FIXTURES "/etc1s_different_sizes.basis", path("in.basis"));
        fs::copy_file(path("in.basis"), path("basis.dds"));
    }

    std::string path(const std::string& name) const { return folder_.path(name); }

    // With this sentence, nothing else, and nothing is touched.
    void expect_refused(const std::vector<std::string>& arguments, const std::string& sentence) const {
        const std::vector<std::string> names = names_in(path("."));
        std::vector<std::string> contents;
        for (const std::string& name : names) contents.push_back(bytes_of(path(name)));
        const CommandResult result = run_pelto(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err.substr(0, result.err.find('\n')),
                  "pelto " + arguments.front() + ": " + sentence);
        EXPECT_EQ(names_in(path(".")), names);
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_TRUE(bytes_of(path(names[i])) == contents[i]) << names[i];
        }
    }

    static std::string same(const std::string& output, const std::string& other = "") {
        return "the output " + output + " is also the input" + (other.empty() ? "" : " " + other) +
               ": give the output another name";
    }

    static std::string ending(const std::string& output, const std::string& end) {
        return "the output " + output + " does not end in " + end + ": name the file to write";
    }

    const TemporaryFolder folder_;
};

TEST_F(OutputPath, IsNoInputByItsName) {
    expect_refused({"sheet", path("in.dds"), path("in.png"), "-o", path("in.png")}, same(path("in.png")));
    expect_refused({"transcode", path("basis.dds"), "--usage", "bc1", "-o", path("basis.dds")},
                   same(path("basis.dds")));
}

TEST_F(OutputPath, IsNoInputByAnotherName) {
    fs::create_directory(path("sub"));
    const std::string dotted = path("sub/../in.png");
    expect_refused({"sheet", path("in.png"), "-o", dotted}, same(dotted, path("in.png")));
    fs::create_symlink("in.dds", path("link.png"));
    expect_refused({"sheet", path("in.dds"), "-o", path("link.png")}, same(path("link.png"), path("in.dds")));
    fs::create_hard_link(path("in.dds"), path("hard.png"));
    expect_refused({"sheet", path("in.dds"), "-o", path("hard.png")}, same(path("hard.png"), path("in.dds")));
    fs::create_directory_symlink(".", path("loop"));
    const std::string through = path("loop/in.png");
    expect_refused({"sheet", path("in.png"), "-o", through}, same(through, path("in.png")));
}

TEST_F(OutputPath, IsNotWhatAnInputLeadsTo) {
    fs::create_symlink("in.png", path("link.dds"));
    expect_refused({"sheet", path("link.dds"), "-o", path("in.png")}, same(path("in.png"), path("link.dds")));
}

TEST_F(OutputPath, IsRefusedBeforeInputsAreLookedAt) {
    expect_refused({"sheet", path("none.dds"), path("in.png"), "-o", path("in.png")}, same(path("in.png")));
    expect_refused({"library", path("none.xml"), "--sheet", path("out.jpg")},
                   ending(path("out.jpg"), ".png"));
}

TEST_F(OutputPath, IsNoInputInTheNameOfASlice) {
    fs::create_symlink("basis.dds", path("out.2.dds"));
    expect_refused(
        {"transcode", path("basis.dds"), "--usage", "bc1", "--slice", "all", "-o", path("out.dds")},
        same(path("out.2.dds"), path("basis.dds")));
}

TEST_F(OutputPath, MayLieWhereASliceWouldWereAllTaken) {
    fs::create_symlink("basis.dds", path("out.2.dds"));
    const CommandResult result =
        run_pelto({"transcode", path("basis.dds"), "--usage", "bc1", "-o", path("out.dds")});
    EXPECT_EQ(result.status, 0) << result.err;
}

TEST_F(OutputPath, OfALibraryIsNoneOfItsFiles) {
    const std::string document = folder_.write(
        "library.xml",
        "<library xmlns='urn:pelto:texture-library'><material name='m'><texture name='a'>"
        "<file>in.dds</file></texture><texture name='b'><file>in.png</file></texture></material></library>");
    fs::copy_file(PELTO_SCHEMAS "/texture-library.xsd", path("schema.xsd"));
    fs::create_symlink("library.xml", path("document.png"));
    fs::create_symlink("schema.xsd", path("schema.png"));
    expect_refused({"library", document, "--sheet", path("document.png")},
                   same(path("document.png"), document));
    expect_refused({"library", document, "--xsd", path("schema.xsd"), "--sheet", path("schema.png")},
                   same(path("schema.png"), path("schema.xsd")));
    expect_refused({"library", document, "--sheet", path("in.png")}, same(path("in.png")));
}

// What happens where the name of the output is forgotten.
TEST_F(OutputPath, EndsAsItsKindDoes) {
    expect_refused({"sheet", "-o", path("in.dds"), path("in.png")}, ending(path("in.dds"), ".png"));
    expect_refused({"transcode", path("in.basis"), "--usage", "bc1", "-o", path("out.png")},
                   ending(path("out.png"), ".dds"));
    expect_refused({"sheet", path("in.dds"), "-o", path("outpng")}, ending(path("outpng"), ".png"));
    expect_refused({"sheet", path("in.dds"), "-o", path("out.png.bak")}, ending(path("out.png.bak"), ".png"));
    expect_refused({"sheet", path("in.dds"), "-o", ""}, ending("", ".png"));
}

TEST_F(OutputPath, EndsInAnyCase) {
    for (const char* const end : {".png", ".PNG", ".pNg"}) {
        EXPECT_EQ(run_pelto({"sheet", path("in.dds"), "-o", path("out") + end}).status, 0) << end;
    }
    for (const char* const end : {".dds", ".DDS"}) {
        const CommandResult result =
            run_pelto({"transcode", path("in.basis"), "--usage", "bc1", "-o", path("out") + end});
        EXPECT_EQ(result.status, 0) << result.err;
    }
}

TEST_F(OutputPath, IsNotWhereJSONGoes) {
    const auto told = [](const std::string& output) {
        return "--json prints to standard output, where the output " + output +
               " goes too: name a file for it";
    };
    expect_refused({"sheet", path("in.dds"), "--json", "-o", "-"}, told("-"));
    expect_refused({"transcode", path("in.basis"), "--usage", "bc1", "--json", "-o", "-"}, told("-"));
    expect_refused({"library", PELTO_SAMPLES "/library/library.xml", "--json", "--sheet", "-"}, told("-"));
    expect_refused({"sheet", path("in.dds"), "--json", "-o", "/dev/stdout"}, told("/dev/stdout"));
}

TEST_F(OutputPath, IsNoStreamForSeveralSlices) {
    const auto told = [](const std::string& output) {
        return "--slice all makes 3 files, where " + output + " takes one: name a file, or choose a slice";
    };
    for (const char* const stream : {"-", "/dev/null"}) {
        expect_refused({"transcode", path("in.basis"), "--usage", "bc1", "--slice", "all", "-o", stream},
                       told(stream));
    }
}

}  // namespace
