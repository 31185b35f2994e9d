#include "texture/dds_report.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>
#include <vLogger.h>

#include "texture/file_start.h"

namespace {

// Collects the log while a file is loaded.
class LogCollector {
public:
    LogCollector() {
        previous_ = TOZ::vLogger::SetSink([this](const TOZ::vLogRecord& record) {
            if (!text_.empty()) text_ += "; ";
            text_ += record.text;
        });
    }
    ~LogCollector() { TOZ::vLogger::SetSink(std::move(previous_)); }
    LogCollector(const LogCollector&) = delete;
    LogCollector& operator=(const LogCollector&) = delete;

    const std::string& text() const { return text_; }

private:
    std::string text_;
    TOZ::vLogger::Sink previous_;
};

std::string_view four_cc(const FileStart& start) { return start.text(84, 4); }

std::size_t header_size(const FileStart& start) { return four_cc(start) == "DX10" ? 148 : 128; }

std::string reason_of_failure(const std::string& path, const std::string& logged) {
    if (!logged.empty()) return logged;
    if (const auto reason = why_unreadable(path)) return *reason;
    const std::optional<FileStart> start = read_start(path);
    if (!start) return "cannot be opened";
    if (start->text(0, 4) != "DDS ") {
        return "is not a DDS file: it starts with " +
               in_quotes(start->text(0, std::min(start->length, std::size_t{4}))) + " instead of \"DDS \"";
    }
    return "the FourCC " + in_quotes(four_cc(*start)) + " at byte 84 is not supported";
}

// Of a header-only image the headers alone are needed.
std::uint64_t bytes_missing(const std::string& path, const vDDSImage& image) {
    std::error_code error;
    const std::uintmax_t length = std::filesystem::file_size(path, error);
    const std::optional<FileStart> start = read_start(path);
    if (error || !start) return 0;
    const std::uintmax_t pixels = image.is_valid() ? image.compute_full_size(-1) : 0;
    const std::uintmax_t promised = header_size(*start) + pixels;
    return promised > length ? promised - length : 0;
}

}  // namespace

DDSReport report_dds(const std::string& path, bool flip, bool header_only, Trust trust) {
    DDSReport report;
    report.path = path;
    if (trust == Trust::kNo) {
        const vTextureCheck::Result check = vTextureCheck::CheckDDSFile(path);
        const bool headers_are_good = check.ok() || check.level >= 0;
        if (header_only ? !headers_are_good : !check.ok()) {
            report.error = check.sentence;
            return report;
        }
    }
    const LogCollector log;
    try {
        if (!report.image.load(path, flip, header_only)) {
            report.error = reason_of_failure(path, log.text());
        } else {
            report.missing_bytes = bytes_missing(path, report.image);
        }
    } catch (const std::bad_alloc&) {
        report.image.clear();
        report.error = "does not fit into memory";
    }
    return report;
}

std::string cut_short_text(std::uint64_t missing_bytes) {
    return "ends " + std::to_string(missing_bytes) +
           " bytes before what its header promises; they read as zero";
}

const char* format_name(TOZ::SUPPORTED_FORMAT::Type format) {
    switch (format) {
        case TOZ::SUPPORTED_FORMAT::LUMINANCE8:
            return "LUMINANCE8";
        case TOZ::SUPPORTED_FORMAT::RGB8:
            return "RGB8";
        case TOZ::SUPPORTED_FORMAT::RGBA8:
            return "RGBA8";
        case TOZ::SUPPORTED_FORMAT::BGRA8:
            return "BGRA8";
        case TOZ::SUPPORTED_FORMAT::RGBA16F:
            return "RGBA16F";
        case TOZ::SUPPORTED_FORMAT::R32F:
            return "R32F";
        case TOZ::SUPPORTED_FORMAT::RGB32F:
            return "RGB32F";
        case TOZ::SUPPORTED_FORMAT::RGBA32F:
            return "RGBA32F";
        case TOZ::SUPPORTED_FORMAT::DXT1:
            return "DXT1";
        case TOZ::SUPPORTED_FORMAT::DXT3:
            return "DXT3";
        case TOZ::SUPPORTED_FORMAT::DXT5:
            return "DXT5";
        case TOZ::SUPPORTED_FORMAT::BC4U:
            return "BC4U";
        case TOZ::SUPPORTED_FORMAT::BC4S:
            return "BC4S";
        case TOZ::SUPPORTED_FORMAT::BC5U:
            return "BC5U";
        case TOZ::SUPPORTED_FORMAT::BC5S:
            return "BC5S";
        case TOZ::SUPPORTED_FORMAT::BC6H_SF16:
            return "BC6H_SF16";
        case TOZ::SUPPORTED_FORMAT::BC6H_UF16:
            return "BC6H_UF16";
    }
    return "?";
}

int face_count(const vDDSImage& image) { return image.is_cubemap() ? 6 : 1; }
