// SPDX-License-Identifier: Apache-2.0
// pelto sheet: where cards, texts and pictures lie on the drawn sheet.
#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "pelto/sheet_check.h"

namespace {

using namespace support;
using sheet::draw;
using sheet::Sheet;

using Colour = std::array<int, 3>;
constexpr Colour kGround = {24, 24, 27};
constexpr Colour kCard = {36, 36, 40};

struct Place {
    std::size_t x, y, width, height;
    bool has(std::size_t px, std::size_t py) const {
        return px >= x && px < x + width && py >= y && py < y + height;
    }
};

std::vector<Place> cards_of(const Sheet& sheet) {
    std::vector<Place> places;
    for (const auto& card : sheet.cards) {
        places.push_back({card["x"], card["y"], card["width"], card["height"]});
    }
    return places;
}

Colour at(const Sheet& sheet, std::size_t x, std::size_t y) {
    const std::uint8_t* const pixel = sheet.picture.at(x, y);
    return {pixel[0], pixel[1], pixel[2]};
}

Bytes cut_out(const Sheet& sheet, const Place& place) {
    Bytes pixels;
    for (std::size_t y = place.y; y < place.y + place.height; ++y) {
        pixels.insert(pixels.end(), sheet.picture.at(place.x, y),
                      sheet.picture.at(place.x, y) + 3 * place.width);
    }
    return pixels;
}

class SheetLayout : public testing::Test {
protected:
    std::string grey(const std::string& name, std::uint32_t width, std::uint32_t height) const {
        const Bytes file = dds_file(dxgi_header(61).sized(width, height), Bytes(width * height));
        return folder_.write(name, std::string(file.begin(), file.end()));
    }

    const TemporaryFolder folder_;
};

// Each has a frame of card ground as wide as its padding, and its title within.
TEST_F(SheetLayout, EveryTextLiesInItsCard) {
    std::vector<std::string> files;
    for (int i = 0; i < 9; ++i) files.push_back(grey(std::to_string(i) + ".dds", 300, 20));
    files.push_back(grey(std::string(200, 'w') + ".dds", 20, 20));
    files.push_back(PELTO_SAMPLES "/textures/bgra8_dx10.dds");
    const Sheet sheet = draw(files);
    const std::vector<Place> cards = cards_of(sheet);
    ASSERT_EQ(cards.size(), files.size()) << sheet.result.err;
    EXPECT_GT(cards.back().y, cards.front().y);
    for (std::size_t y = 0; y < sheet.height; ++y) {
        for (std::size_t x = 0; x < sheet.width; ++x) {
            const bool outside =
                std::none_of(cards.begin(), cards.end(), [&](const Place& card) { return card.has(x, y); });
            if (outside) {
                ASSERT_EQ(at(sheet, x, y), kGround) << x << ", " << y;
            }
        }
    }
    constexpr std::size_t kFrame = 14;
    for (const Place& card : cards) {
        bool has_title = false;
        for (std::size_t y = card.y; y < card.y + card.height; ++y) {
            for (std::size_t x = card.x; x < card.x + card.width; ++x) {
                const Place inner = {card.x + kFrame, card.y + kFrame, card.width - 2 * kFrame,
                                     card.height - 2 * kFrame};
                if (!inner.has(x, y)) {
                    ASSERT_EQ(at(sheet, x, y), kCard) << x << ", " << y;
                }
                has_title = has_title || (y < card.y + 34 && at(sheet, x, y)[0] > 200);
            }
        }
        EXPECT_TRUE(has_title);
    }
}

TEST_F(SheetLayout, ManyCardsAreLaidOnShelves) {
    std::vector<std::string> files(40, grey("a.dds", 100, 10));
    const Sheet sheet = draw(files);
    ASSERT_EQ(sheet.cards.size(), 40u) << sheet.result.err;
    EXPECT_LE(sheet.width, 1600u);
    EXPECT_GT(sheet.width, 1300u);
    const std::vector<Place> cards = cards_of(sheet);
    for (std::size_t i = 1; i < cards.size(); ++i) {
        const bool beside = cards[i].y == cards[i - 1].y && cards[i].x >= cards[i - 1].x + cards[i - 1].width;
        const bool below = cards[i].y >= cards[i - 1].y + cards[i - 1].height && cards[i].x == cards[0].x;
        EXPECT_TRUE(beside || below) << i;
    }
}

// Rows of text do not touch one another, or the picture.
TEST_F(SheetLayout, TitleDescriptionCaptionAndExtentLieBelowEachOther) {
    const Sheet sheet = draw({grey("a.dds", 40, 40)});
    ASSERT_EQ(sheet.cards.size(), 1u) << sheet.result.err;
    const Place card = cards_of(sheet)[0];
    const std::size_t bottom = card.y + card.height - 16 - 40 - 1;
    int rows_of_text = 0;
    bool in_text = false;
    for (std::size_t y = card.y; y < bottom; ++y) {
        bool text = false;
        for (std::size_t x = card.x; x < card.x + card.width; ++x) text |= at(sheet, x, y) != kCard;
        rows_of_text += text && !in_text;
        in_text = text;
    }
    EXPECT_EQ(rows_of_text, 4);
    EXPECT_FALSE(in_text);
}

// Where the drawing of a sheet in parts cuts through a card, nothing of it is lost.
TEST_F(SheetLayout, ACardLooksTheSameWhereverItLies) {
    const Sheet sheet = draw(std::vector<std::string>(70, grey("a.dds", 1500, 17)));
    const std::vector<Place> cards = cards_of(sheet);
    ASSERT_EQ(cards.size(), 70u) << sheet.result.err;
    const Bytes first = cut_out(sheet, cards[0]);
    for (std::size_t i = 1; i < cards.size(); ++i) {
        EXPECT_EQ(cards[i].x, cards[0].x);
        EXPECT_TRUE(cut_out(sheet, cards[i]) == first) << "card " << i << " at row " << cards[i].y;
    }
}

// "21 x 3" and "21 x 4" begin alike.
TEST_F(SheetLayout, CaptionsSayTheWidthFirst) {
    const auto first_digit = [&](std::uint32_t height) {
        const Sheet sheet = draw({grey("a.dds", 21, height)});
        const Place card = cards_of(sheet).at(0);
        return cut_out(sheet, {card.x + 16, card.y + 16 + 46 + 12, 7, 16});
    };
    EXPECT_TRUE(first_digit(3) == first_digit(4));
}

TEST_F(SheetLayout, RowsOfFacesLieBelowEachOtherAndLevelsBesideEachOther) {
    const Sheet sheet = draw({PELTO_SAMPLES "/textures/cube_bc1_mips.dds"});
    ASSERT_EQ(sheet.places.size(), 36u) << sheet.result.err;
    for (std::size_t i = 0; i < 36; ++i) {
        const auto& place = sheet.places[i];
        const std::size_t face = i / 6, level = i % 6;
        EXPECT_EQ(place.x, sheet.places[level].x);
        EXPECT_EQ(place.y, sheet.places[face * 6].y);
        if (level > 0) {
            EXPECT_GT(place.x, sheet.places[i - 1].x + sheet.images[i - 1].width);
        }
        if (face > 0) {
            EXPECT_GT(place.y, sheet.places[i - 6].y + 32);
        }
    }
}

}  // namespace
