#include "basis_report.h"

#include <algorithm>
#include <cstddef>
#include <new>

#include "file_start.h"

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

}  // namespace

void report_basis(const std::string& path, BasisReport& report) {
    report.path = path;
    report.error = why_unreadable(path);
    if (report.error) return;
    try {
        report.transcodable = report.image.load(path.c_str());
        if (!report.transcodable && !report.image.isValidHeader()) {
            report.error = reason_of_failure(path);
            return;
        }
        report.file = describe_basis(report.image.getBasisFileRawData(), report.image.getBasisFileSize());
    } catch (const std::bad_alloc&) {
        report.error = "does not fit into memory";
    }
}
