#include "texture/basis_report.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <new>

#include "texture/file_start.h"

namespace {

std::string reason_of_failure(const std::string& path) {
    const std::optional<FileStart> start = read_start(path);
    if (!start) return "cannot be opened";
    if (start->text(0, 2) != "sB") {
        return "is not a .basis file: it starts with " +
               in_quotes(start->text(0, std::min(start->length, std::size_t{2}))) + " instead of \"sB\"";
    }
    return "is damaged or cut short: its header promises what the file does not hold";
}

std::string contents_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void describe(const unsigned char* data, std::size_t size, BasisReport& report) {
    report.file = describe_basis(data, size);
    report.bytes = size;
}

// Of a file that a check refuses: its header and table, where its texture type is all that is wrong.
void describe_refused(const std::string& path, const vTextureCheck::Result& check, BasisReport& report) {
    if (check.status != vTextureCheck::eUnsupportedFormat || check.offset != kBasisTextureType) {
        report.error = check.sentence;
        return;
    }
    const std::string contents = contents_of(path);
    describe(reinterpret_cast<const unsigned char*>(contents.data()), contents.size(), report);
}

void load(const std::string& path, BasisReport& report) {
    report.transcodable = report.image.load(path.c_str());
    if (!report.transcodable && !report.image.isValidHeader()) {
        report.error = reason_of_failure(path);
        return;
    }
    describe(report.image.getBasisFileRawData(), report.image.getBasisFileSize(), report);
}

}  // namespace

void report_basis(const std::string& path, BasisReport& report, Trust trust) {
    report.path = path;
    report.error = why_unreadable(path);
    if (report.error) return;
    try {
        if (trust == Trust::kNo) {
            const vTextureCheck::Result check = vTextureCheck::CheckBasisFile(path);
            if (!check.ok()) {
                describe_refused(path, check, report);
                return;
            }
        }
        load(path, report);
    } catch (const std::bad_alloc&) {
        report.error = "does not fit into memory";
    }
}
