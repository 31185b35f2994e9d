#include "sheet/contact_sheet.h"

#include <stdexcept>
#include <utility>

#include "output/progress.h"
#include "sheet/caption_font.h"
#include "sheet/gl_context.h"
#include "sheet/sheet_layout.h"
#include "sheet/sheet_painter.h"

namespace {

std::vector<SheetFile> read_files(const std::vector<SheetEntry>& entries, int max_extent,
                                  SheetReport& report) {
    std::vector<SheetFile> files;
    Progress progress("reading", entries.size());
    for (const SheetEntry& entry : entries) {
        try {
            SheetFile file = read_sheet_file(entry.path, entry.choice, max_extent);
            file.title = entry.title;
            for (const std::string& warning : file.warnings) report.warnings.push_back({entry.path, warning});
            files.push_back(std::move(file));
        } catch (const std::runtime_error& error) {
            report.errors.push_back({entry.path, error.what()});
        }
        progress.step();
    }
    return files;
}

}  // namespace

SheetReport make_contact_sheet(const std::vector<SheetEntry>& entries, double exposure,
                               const std::string& output) {
    const GLContext context;
    SheetReport report;
    const std::vector<SheetFile> files = read_files(entries, context.max_texture_size(), report);
    if (files.empty()) return report;
    const CaptionFont font;
    const Sheet sheet = lay_out(files, font);
    paint_sheet(sheet, font, exposure, output);
    report.width = sheet.width;
    report.height = sheet.height;
    for (const SheetPicture& picture : sheet.pictures) {
        const SheetImage& image = *picture.image;
        report.images.push_back({picture.file->path, image.face, image.level, image.slice, picture.place});
    }
    return report;
}
