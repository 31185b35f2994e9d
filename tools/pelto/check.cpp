// SPDX-License-Identifier: Apache-2.0

#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <iostream>
#include <memory>
#include <mutex>
#include <new>
#include <nlohmann/json.hpp>
#include <string>
#include <system_error>
#include <thread>
#include <vTextureInfo.h>
#include <vector>

#include "arguments/argument_checks.h"
#include "output/Progress.h"
#include "output/print_json.h"
#include "output/printable.h"
#include "subcommands.h"
#include "texture/texture_json.h"
#include "texture/texture_words.h"

namespace {

struct Options {
    std::vector<std::string> files;
    vTextureLimits limits;
    unsigned int threads = 1;
    bool strict = false;
    bool json = false;
};

vTextureInfo checked(const std::string& path, const vTextureLimits& limits) {
    try {
        return vTextureInfo::CheckFile(path, limits);
    } catch (const std::bad_alloc&) {
        vTextureInfo info;
        info.check.status = vTextureCheck::eUnreadable;
        info.check.sentence = "does not fit into memory";
        return info;
    }
}

std::vector<vTextureInfo> check_all(const Options& options) {
    std::vector<vTextureInfo> results(options.files.size());
    Progress progress("checking", options.files.size());
    std::mutex progress_mutex;
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < results.size(); i = next++) {
            results[i] = checked(options.files[i], options.limits);
            const std::lock_guard lock(progress_mutex);
            progress.step();
        }
    };
    std::vector<std::jthread> others;
    try {
        const std::size_t threads = std::min<std::size_t>(options.threads, results.size());
        while (others.size() + 1 < threads) others.emplace_back(work);
    } catch (const std::system_error&) {
        // Those that the system lets run do the work.
    }
    work();
    others.clear();
    return results;
}

nlohmann::ordered_json json_of(const std::string& path, const vTextureInfo& info) {
    const vTextureCheck::Result& result = info.check;
    nlohmann::ordered_json object;
    add_path(object, path);
    object["status"] = status_name(result.status);
    if (result.totalBytes > 0) object["totalBytes"] = result.totalBytes;
    if (!result.ok()) {
        object["error"] = result.sentence;
        object["offset"] = result.offset;
        if (result.missingBytes > 0) object["missingBytes"] = result.missingBytes;
        if (result.level >= 0) {
            object["face"] = result.face;
            object["level"] = result.level;
        }
    }
    object["notes"] = json_of(info.notes);
    return object;
}

void print_lines(const std::string& path, const vTextureInfo& info) {
    const vTextureCheck::Result& result = info.check;
    const std::string said =
        result.ok() ? "ok, " + std::to_string(result.totalBytes) + " bytes" : result.sentence;
    std::cout << printable(path) << ": " << printable(said) << '\n';
    for (const vTextureNote& note : info.notes) {
        if (note.text == result.sentence) continue;
        std::cout << printable(path) << ": note: " << printable(note.text) << '\n';
    }
}

ExitStatus check(const Options& options) {
    const std::vector<vTextureInfo> results = check_all(options);
    ExitStatus status = kExitSuccess;
    nlohmann::ordered_json objects = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < results.size(); ++i) {
        const vTextureInfo& info = results[i];
        if (!info.check.ok() || (options.strict && !info.notes.empty())) status = kExitFailure;
        if (options.json) {
            objects.push_back(json_of(options.files[i], info));
        } else {
            print_lines(options.files[i], info);
        }
    }
    if (options.json) print_json(objects);
    return status;
}

}  // namespace

void add_check(CLI::App& app, ExitStatus& status) {
    constexpr unsigned int kMostThreads = 256;
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        app.add_subcommand("check", "Say in a line each whether DDS and .basis files are sound");
    command->add_option("FILE", options->files, "DDS and .basis files; none is loaded")
        ->required()
        ->option_text("...");
    command
        ->add_option("--max-bytes", options->limits.maxBytes,
                     "Refuse files whose levels take more bytes in memory (.basis: as BC3)")
        ->option_text("BYTES")
        ->transform(whole_number(0, UINT64_MAX));
    command
        ->add_option("--max-extent", options->limits.maxExtent,
                     "Refuse files that are wider, higher or deeper")
        ->option_text("PIXELS")
        ->transform(whole_number(0, UINT32_MAX));
    command
        ->add_option("--max-file-bytes", options->limits.maxFileBytes,
                     "Refuse longer files, whatever they hold: loading reads the whole file")
        ->option_text("BYTES")
        ->transform(whole_number(0, UINT64_MAX));
    command->add_option("-j,--jobs", options->threads, "Check N files at a time, 1 to 256; default: 1")
        ->option_text("N")
        ->transform(whole_number(1, kMostThreads));
    command->add_flag("--strict", options->strict, "Treat notes as faults: exit status 1");
    command->add_flag("--json", options->json, "Print a JSON array of objects, one for each file");
    command->footer("Exit status: 0 all files are sound, 1 one is not, 2 wrong usage.");
    command->callback([options, &status] { status = check(*options); });
}
