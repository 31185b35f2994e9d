// SPDX-License-Identifier: Apache-2.0

#include "sheet/sheet_layout.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "output/printable.h"

namespace {

// Pixels.
constexpr std::int64_t kMargin = 24;  // around the sheet
constexpr std::int64_t kBetweenCards = 16;
constexpr std::int64_t kPadding = 16;  // inside a card
constexpr std::int64_t kBetweenColumns = 16;
constexpr std::int64_t kBetweenRows = 16;
constexpr std::int64_t kUsualWidth = 1600;  // of a sheet whose cards are not wider
constexpr std::int64_t kLeastCardWidth = 220;
constexpr std::int64_t kLeastWidthOfNotes = 360;

constexpr int kTitleSize = 15;
constexpr int kTextSize = 11;
constexpr std::int64_t kTitleBaseline = 14;
constexpr std::int64_t kDescriptionBaseline = 31;
constexpr std::int64_t kHeadHeight = 46;
constexpr std::int64_t kNoteHeight = 15;
constexpr std::int64_t kCaptionBaseline = 9;
constexpr std::int64_t kExtentBaseline = 23;
constexpr std::int64_t kCaptionHeight = 32;

constexpr Colour kTitle = {236, 236, 240};
constexpr Colour kCaption = {200, 200, 206};
constexpr Colour kDimmed = {140, 140, 148};
constexpr Colour kReason = {200, 200, 206};
constexpr Colour kWarning = {240, 180, 70};

std::string extent_of(const SheetImage& image) {
    return std::to_string(image.pixels.width) + " \u00d7 " + std::to_string(image.pixels.height);
}

// The columns of a card by level: where each begins, and the width of all.
struct Columns {
    std::map<std::uint32_t, std::int64_t> left;
    std::int64_t width = 0;
};

Columns columns_of(const SheetFile& file, const CaptionFont& font) {
    std::map<std::uint32_t, std::int64_t> widths;
    for (const SheetImage& image : file.images) {
        std::int64_t& width = widths[image.level];
        width = std::max({width, std::int64_t{image.pixels.width}, font.width(image.caption, kTextSize),
                          font.width(extent_of(image), kTextSize)});
    }
    Columns columns;
    for (const auto& [level, width] : widths) {
        if (columns.width > 0) columns.width += kBetweenColumns;
        columns.left[level] = columns.width;
        columns.width += width;
    }
    return columns;
}

bool same_row(const SheetImage& a, const SheetImage& b) {
    return a.layer == b.layer && a.face == b.face && a.slice == b.slice;
}

// A card whose upper left corner is that of a sheet, on a sheet of its size.
Sheet card_of(const SheetFile& file, const CaptionFont& font) {
    const Columns columns = columns_of(file, font);
    const bool notes = !file.notes.empty() || !file.reason.empty();
    const std::int64_t width = std::max(columns.width, notes ? kLeastWidthOfNotes : kLeastCardWidth);
    Sheet card;
    const auto write = [&](std::int64_t x, std::int64_t baseline, const std::string& text, int size,
                           Colour colour) {
        card.texts.push_back({x, baseline, font.shortened(text, size, width), size, colour});
    };
    write(kPadding, kPadding + kTitleBaseline, printable(file.title), kTitleSize, kTitle);
    write(kPadding, kPadding + kDescriptionBaseline, file.description, kTextSize, kDimmed);
    std::int64_t y = kPadding + kHeadHeight;
    const auto write_lines = [&](const std::string& text, Colour colour) {
        for (const std::string& line : font.lines(printable(text), kTextSize, width)) {
            write(kPadding, y, line, kTextSize, colour);
            y += kNoteHeight;
        }
    };
    if (!file.reason.empty()) write_lines(file.reason, kReason);
    for (const vTextureNote& note : file.notes) write_lines(note.text, kWarning);
    card.width = kPadding + width + kPadding;
    if (file.images.empty()) {
        card.height = y + kPadding;
        card.cards.push_back({0, 0, card.width, card.height});
        return card;
    }
    std::int64_t row_height = 0;
    const SheetImage* previous = nullptr;
    for (const SheetImage& image : file.images) {
        if (previous && !same_row(*previous, image)) {
            y += kCaptionHeight + row_height + kBetweenRows;
            row_height = 0;
        }
        const std::int64_t x = kPadding + columns.left.at(image.level);
        write(x, y + kCaptionBaseline, image.caption, kTextSize, kCaption);
        write(x, y + kExtentBaseline, extent_of(image), kTextSize, kDimmed);
        card.pictures.push_back(
            {{x, y + kCaptionHeight, image.pixels.width, image.pixels.height}, &file, &image});
        row_height = std::max(row_height, std::int64_t{image.pixels.height});
        previous = &image;
    }
    card.height = y + kCaptionHeight + row_height + kPadding;
    card.cards.push_back({0, 0, card.width, card.height});
    return card;
}

void place(Sheet& sheet, Sheet card, std::int64_t x, std::int64_t y) {
    for (Rectangle& ground : card.cards) {
        ground.x += x;
        ground.y += y;
        sheet.cards.push_back(ground);
    }
    for (SheetText& text : card.texts) {
        text.x += x;
        text.baseline += y;
        sheet.texts.push_back(std::move(text));
    }
    for (SheetPicture& picture : card.pictures) {
        picture.place.x += x;
        picture.place.y += y;
        sheet.pictures.push_back(picture);
    }
}

// What libpng takes on either side, and what a person still waits for.
void check_size(const Sheet& sheet) {
    constexpr std::int64_t kMostExtent = 1'000'000;
    constexpr std::int64_t kMostPixels = std::int64_t{1} << 31;
    if (sheet.width <= kMostExtent && sheet.height <= kMostExtent &&
        sheet.width * sheet.height <= kMostPixels)
        return;
    throw std::runtime_error("the sheet would be " + std::to_string(sheet.width) + " x " +
                             std::to_string(sheet.height) +
                             " pixels, which is too large: take fewer files, or a level with --level");
}

}  // namespace

Sheet lay_out(const std::vector<SheetFile>& files, const CaptionFont& font) {
    std::vector<Sheet> cards;
    std::int64_t inner_width = kUsualWidth - 2 * kMargin;
    for (const SheetFile& file : files) {
        cards.push_back(card_of(file, font));
        inner_width = std::max(inner_width, cards.back().width);
    }
    Sheet sheet;
    std::int64_t x = kMargin;
    std::int64_t y = kMargin;
    std::int64_t shelf_height = 0;
    for (Sheet& card : cards) {
        if (x > kMargin && x + card.width > kMargin + inner_width) {
            x = kMargin;
            y += shelf_height + kBetweenCards;
            shelf_height = 0;
        }
        const std::int64_t width = card.width;
        shelf_height = std::max(shelf_height, card.height);
        sheet.width = std::max(sheet.width, x + width + kMargin);
        place(sheet, std::move(card), x, y);
        x += width + kBetweenCards;
    }
    sheet.height = y + shelf_height + kMargin;
    check_size(sheet);
    return sheet;
}
