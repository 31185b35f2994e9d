// SPDX-License-Identifier: Apache-2.0

#include "sheet/contact_sheet.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "output/Progress.h"
#include "sheet/CaptionFont.h"
#include "sheet/GLContext.h"
#include "sheet/sheet_layout.h"
#include "sheet/sheet_painter.h"

namespace {

std::vector<SheetFile> read_files(const std::vector<SheetEntry>& entries, int max_extent,
                                  SheetReport& report) {
    std::vector<SheetFile> files;
    Progress progress("reading", entries.size());
    for (const SheetEntry& entry : entries) {
        try {
            const auto opened = entry.file ? entry.file : std::make_shared<TextureFile>(entry.path);
            SheetFile file = read_sheet_file(*opened, entry.choice, max_extent);
            file.path = entry.path;
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
        report.images.push_back({picture.file->path, image.layer, image.face, image.level, image.slice,
                                 image.caption, picture.place});
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        const SheetFile& file = files[i];
        report.cards.push_back({file.path, file.description, file.reason, file.notes, sheet.cards[i]});
    }
    return report;
}
