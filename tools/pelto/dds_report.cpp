#include "dds_report.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <new>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vLogger.h>

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

// The start of a file, as far as it says what kind of file it is. Absent bytes are zero.
struct FileStart {
    std::size_t length = 0;
    std::array<char, 128> bytes{};

    std::string magic() const { return {bytes.data(), 4}; }
    std::string four_cc() const { return {bytes.data() + 84, 4}; }
    std::size_t header_size() const { return four_cc() == "DX10" ? 148 : 128; }
};

std::optional<FileStart> read_start(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    FileStart start;
    file.read(start.bytes.data(), static_cast<std::streamsize>(start.bytes.size()));
    start.length = static_cast<std::size_t>(file.gcount());
    return start;
}

// Bytes of a file in quotes. Those that are no ASCII characters are written as \xNN.
std::string in_quotes(std::string_view bytes) {
    std::ostringstream out;
    out << '"';
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            out << c;
        } else {
            out << "\\x" << std::hex << std::setw(2) << std::setfill('0') << unsigned{byte};
        }
    }
    out << '"';
    return out.str();
}

std::string reason_of_failure(const std::string& path, const std::string& logged) {
    if (!logged.empty()) return logged;
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status)) return "is a directory";
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return "is not a regular file: its length cannot be told";
    }
    errno = 0;
    const std::optional<FileStart> start = read_start(path);
    if (!start)
        return errno != 0 ? std::string("cannot be opened: ") + std::strerror(errno) : "cannot be opened";
    if (start->length == 0) return "is empty";
    if (start->magic() != "DDS ") {
        return "is not a DDS file: it starts with " + in_quotes(start->magic().substr(0, start->length)) +
               " instead of \"DDS \"";
    }
    return "the FourCC " + in_quotes(start->four_cc()) + " at byte 84 is not supported";
}

// Of a header-only image the headers alone are needed.
std::uint64_t bytes_missing(const std::string& path, const vDDSImage& image) {
    std::error_code error;
    const std::uintmax_t length = std::filesystem::file_size(path, error);
    const std::optional<FileStart> start = read_start(path);
    if (error || !start) return 0;
    const std::uintmax_t pixels = image.is_valid() ? image.compute_full_size(-1) : 0;
    const std::uintmax_t promised = start->header_size() + pixels;
    return promised > length ? promised - length : 0;
}

}  // namespace

DDSReport report_dds(const std::string& path, bool flip, bool header_only) {
    DDSReport report;
    report.path = path;
    const LogCollector log;
    try {
        if (!report.image.load(path, flip, header_only)) {
            report.error = reason_of_failure(path, log.text());
        } else {
            report.missing_bytes = bytes_missing(path, report.image);
        }
    } catch (const std::bad_alloc&) {
        report.image.clear();
        report.error = "its header promises more pixels than fit into memory";
    }
    return report;
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
