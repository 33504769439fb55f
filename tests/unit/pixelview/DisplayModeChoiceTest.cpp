#include <gtest/gtest.h>

#include "pixelview/DisplayModeChoice.h"
#include "pixelview/PixelViewError.h"

namespace qzhost::pixelview {
namespace {

TEST(DisplayModeChoice, EachNameStandsAtItsMenuPositionWithItsNotationNumber) {
    struct Expected {
        const char* name;
        std::size_t position;
        std::uint16_t mode;
    };
    const Expected expected[] = {{"auto", 0, 0},  {"percent", 1, 1}, {"web", 2, 2},
                                 {"hsb", 3, 7},   {"8bpc", 4, 3},    {"10bpc", 5, 6},
                                 {"16bpc", 6, 4}, {"decimal", 7, 5}};
    for (const Expected& e : expected) {
        const DisplayModeChoice& choice = FindDisplayMode(e.name);
        EXPECT_EQ(choice.menuPosition, e.position) << e.name;
        EXPECT_EQ(choice.mode, e.mode) << e.name;
    }
    EXPECT_EQ(DisplayModeChoices().size(), 8u);
}

TEST(DisplayModeChoice, NamesMatchWithoutRegardToCase) {
    EXPECT_EQ(FindDisplayMode("HSB").mode, 7);
    EXPECT_EQ(FindDisplayMode("Decimal").mode, 5);
}

TEST(DisplayModeChoice, AnUnknownNameIsRefusedWithTheKnownNames) {
    for (const char* name : {"", "hex", "8", "8-bpc", "autox"}) {
        try {
            FindDisplayMode(name);
            ADD_FAILURE() << "accepted " << name;
        } catch (const BadRequest& error) {
            EXPECT_NE(std::string(error.what()).find("10bpc"), std::string::npos);
        }
    }
}

} // namespace
} // namespace qzhost::pixelview
