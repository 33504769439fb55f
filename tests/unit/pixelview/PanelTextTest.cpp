// The panel as text, laid out from snapshots made here.
#include <gtest/gtest.h>

#include "pixelview/PanelText.h"

namespace qzhost::pixelview {
namespace {

using script::Json;

Json Text(int id, double x, double y, const std::string& text, bool visible = true,
          const char* color = "default") {
    return {{"id", id},
            {"class", "UI_StaticText"},
            {"rect", {x, y, 90, 14}},
            {"visible", visible},
            {"text", text},
            {"color", color}};
}

Json Control(int id, const char* cls, double x, double y, double w, double h) {
    return {{"id", id}, {"class", cls}, {"rect", {x, y, w, h}}, {"visible", true}};
}

/// Two rows of the pixel block, the rules, the picture, the swatch and one text line.
Json Snapshot() {
    Json controls = Json::array({
        Control(0, "UI_Divider", 5, 63, 193, 2),
        Control(1, "UI_Divider", 100, 7, 2, 50),
        Control(2, "UI_StaticImage", 108, 25, 17, 17),
        Text(3, 32, 4, "R :"),
        Text(4, 32, 17, "G :"),
        Text(7, 51, 4, "255"),
        Text(8, 51, 17, "128"),
        Text(11, 123, 4, "X :"),
        Text(12, 123, 17, "Y :"),
        Text(13, 123, 30, "X' :", false),
        Text(15, 139, 4, "15"),
        Text(16, 141, 17, "9"),
        Text(17, 142, 30, "", false),
        Control(19, "UI_SwatchRect", 7, 17, 20, 20),
        Text(20, 6, 68, "hello"),
        Text(21, 6, 82, ""),
    });
    return {{"op", "snapshot"}, {"controls", controls}, {"swatch", {1, 0.5, 0, 1}}};
}

TEST(PanelText, LaysTheControlsOutInRowsAndColumns) {
    EXPECT_EQ(PanelText(Snapshot()), "         R : 255  |   X : 15\n"
                                     " #FF8000 G : 128  | + Y : 9\n"
                                     " -----------------------------------\n"
                                     " hello\n");
}

TEST(PanelText, HiddenControlsAndEmptyTextsTakeNoPlace) {
    Json snapshot = Snapshot();
    for (Json& control : snapshot["controls"]) {
        if (control["id"] == 13) {
            control["visible"] = true;
            control["text"] = "X' :";
        }
        if (control["id"] == 17) {
            control["visible"] = true;
            control["text"] = "5";
        }
    }
    // The picture now lies in the X' row; the wider label moves every value of its column.
    EXPECT_EQ(PanelText(snapshot), "         R : 255  |   X :  15\n"
                                   " #FF8000 G : 128  |   Y :  9\n"
                                   "                  | + X' : 5\n"
                                   " -----------------------------------\n"
                                   " hello\n");
}

TEST(PanelText, ALongValuePushesTheColumnsToItsRightTogether) {
    Json snapshot = Snapshot();
    snapshot["controls"][5]["text"] = "-1234.5678";
    EXPECT_EQ(PanelText(snapshot), "         R : -1234.5678 |   X : 15\n"
                                   " #FF8000 G : 128        | + Y : 9\n"
                                   " -----------------------------------\n"
                                   " hello\n");
}

TEST(PanelText, SwatchHexClampsAndRoundsEachChannel) {
    EXPECT_EQ(SwatchHex({{"swatch", {2.0, -1.0, 0.25, 1}}}), "#FF0040");
    EXPECT_EQ(SwatchHex({{"swatch", {0.5, 1.0 / 255, 0.998, 1}}}), "#8001FE");
    EXPECT_EQ(SwatchHex(Json::object()), "");
}

TEST(PanelText, ColourPaintsTheSwatchAndAlertText) {
    Json snapshot = Snapshot();
    snapshot["controls"][14]["color"] = "alert";
    const std::string text = PanelText(snapshot, true);
    EXPECT_NE(text.find("\x1b[48;2;255;128;0m\x1b[30m#FF8000\x1b[0m"), std::string::npos);
    EXPECT_NE(text.find("\x1b[31mhello\x1b[0m"), std::string::npos);
    EXPECT_EQ(PanelText(snapshot, false).find('\x1b'), std::string::npos);
}

TEST(PanelText, ASnapshotWithoutControlsGivesNoText) {
    EXPECT_EQ(PanelText({{"op", "snapshot"}, {"panel", false}}), "");
}

} // namespace
} // namespace qzhost::pixelview
