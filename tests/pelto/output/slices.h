// SPDX-License-Identifier: Apache-2.0
// A call with several outputs, each big enough to take several writes: `transcode --slice all`.
#ifndef TESTS_PELTO_OUTPUT_SLICES_H
#define TESTS_PELTO_OUTPUT_SLICES_H

#include <string>
#include <vector>

#include "pelto/output/folder_content.h"
#include "support/temporary_folder.h"

class Slices {
public:
    static constexpr const char* kInput = PELTO_BASIS_FIXTURES "/etc1s_different_sizes.basis";

    /// Each output has the content "before" where `there_before`, else there is none.
    explicit Slices(bool there_before) {
        if (!there_before) return;
        for (const std::string& name : names()) folder_.write(name, "before");
    }

    static std::vector<std::string> names() { return {"out.0.dds", "out.1.dds", "out.2.dds"}; }

    std::string folder() const { return folder_.path("."); }
    std::string path(const std::string& name) const { return folder_.path(name); }

    std::vector<std::string> arguments() const {
        return {"transcode", kInput, "--usage", "bc1", "--slice", "all", "-o", path("out.dds")};
    }

    /// What the outputs hold, nothing for one that is not there.
    std::vector<std::string> contents() const {
        std::vector<std::string> all;
        for (const std::string& name : names()) all.push_back(bytes_of(path(name)));
        return all;
    }

    /// The contents where nothing has been done, and where all has.
    static std::vector<std::string> contents_before(bool there_before) {
        return std::vector<std::string>(3, there_before ? "before" : "");
    }
    static std::vector<std::string> contents_after();

private:
    const support::TemporaryFolder folder_;
};

#endif
