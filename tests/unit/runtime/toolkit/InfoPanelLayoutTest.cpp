// The Info panel's seven layout documents restore its 23 controls at their places.
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <string>

#include "BuildPaths.h"
#include "ToolkitTestSupport.h"
#include "kitui/controls/UI_ControlFactory.h"
#include "kitui/controls/UI_ControlsContainer.h"

namespace {

using kitui::ui::RectT;

struct Placement {
    const char* className;
    RectT<float> rect;
};

// The Info panel's layout, by control number.
const std::array<Placement, 23> kDefaultLayout{{
    {"UI_Divider", {5, 63, 193, 2}},       {"UI_Divider", {100, 7, 2, 50}},
    {"UI_StaticImage", {108, 25, 17, 17}}, {"UI_StaticText", {32, 4, 19, 14}},
    {"UI_StaticText", {32, 17, 19, 14}},   {"UI_StaticText", {33, 30, 19, 14}},
    {"UI_StaticText", {32, 44, 19, 14}},   {"UI_StaticText", {51, 4, 90, 14}},
    {"UI_StaticText", {51, 17, 90, 14}},   {"UI_StaticText", {51, 30, 90, 14}},
    {"UI_StaticText", {52, 44, 90, 14}},   {"UI_StaticText", {123, 4, 19, 14}},
    {"UI_StaticText", {123, 17, 19, 14}},  {"UI_StaticText", {123, 30, 19, 14}},
    {"UI_StaticText", {123, 42, 19, 14}},  {"UI_StaticText", {139, 4, 90, 14}},
    {"UI_StaticText", {141, 17, 90, 14}},  {"UI_StaticText", {142, 30, 90, 14}},
    {"UI_StaticText", {143, 42, 90, 14}},  {"UI_SwatchRect", {7, 17, 20, 20}},
    {"UI_StaticText", {6, 68, 206, 14}},   {"UI_StaticText", {6, 82, 206, 14}},
    {"UI_StaticText", {6, 96, 206, 14}},
}};

/// The layout of a locale: the default, or the default with controls 6, 10 and 12 moved.
std::array<Placement, 23> LayoutFor(bool moved) {
    std::array<Placement, 23> layout = kDefaultLayout;
    if (moved) {
        layout[6].rect = {33, 44, 19, 14};
        layout[10].rect = {52, 43, 90, 14};
        layout[12].rect = {124, 17, 19, 14};
    }
    return layout;
}

/// Stands in for the plug-in's swatch control, which the toolkit does not know.
class SwatchStandIn : public kitui::controls::UI_ControlView {
public:
    SwatchStandIn() : UI_ControlView(1) {}
    std::string GetQualifiedClassName() const override { return "kitui::controls::UI_SwatchRect"; }
};

std::string ReadFile(const std::string& name) {
    const std::string path =
        std::string(QZ_SOURCE_DIR) + "/src/plugin/qzgp/InfoPal/resources/" + name;
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.good()) << path;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

struct Variant {
    const char* file;
    bool moved;
};

class InfoPanelLayoutTest : public qztest::ToolkitFixture,
                            public ::testing::WithParamInterface<Variant> {};

TEST_P(InfoPanelLayoutTest, PlacesAllTwentyThreeControlsAtTheirRectangles) {
    // The panel makes its controls first, as the Info panel does; the layout places them.
    kitui::controls::UI_ControlsContainer container(1);
    for (const Placement& p : kDefaultLayout) {
        if (std::string(p.className) == "UI_SwatchRect") {
            container.UI_AddChild(std::make_unique<SwatchStandIn>());
        } else {
            container.UI_AddChild(kitui::controls::UI_CreateControl(p.className, 1));
        }
    }
    const kitui::ui::PointT<float> size = container.RestoreLayout(ReadFile(GetParam().file));
    EXPECT_EQ(size, (kitui::ui::PointT<float>{206, 114}));
    EXPECT_EQ(container.GetLayoutScale(), (kitui::ui::PointT<float>{1, 1}));
    ASSERT_EQ(container.UI_GetChildCount(), 23u);
    const std::array<Placement, 23> expected = LayoutFor(GetParam().moved);
    for (std::size_t n = 0; n < expected.size(); ++n) {
        SCOPED_TRACE(n);
        const kitui::controls::UI_ControlView* control = container.GetControl(n);
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(control->GetControlClassName(), expected[n].className);
        EXPECT_EQ(control->UI_GetBounds(), expected[n].rect);
    }
}

TEST_P(InfoPanelLayoutTest, CreatesTheToolkitControlsWhenOnlyTheSwatchIsMissingItsCreator) {
    // Without the swatch, the toolkit creates controls 0 to 18 and then stops at the
    // swatch class, which it does not know.
    kitui::controls::UI_ControlsContainer container(1);
    try {
        container.RestoreLayout(ReadFile(GetParam().file));
        FAIL() << "the swatch class is not a toolkit class";
    } catch (const std::exception& e) {
        EXPECT_NE(std::string(e.what()).find("UI_SwatchRect"), std::string::npos) << e.what();
    }
}

TEST_P(InfoPanelLayoutTest, DocumentHasCrlfLineEndsAndKeysInTextOrder) {
    const std::string text = ReadFile(GetParam().file);
    ASSERT_FALSE(text.empty());
    std::size_t lines = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            ++lines;
            ASSERT_GT(i, 0u);
            EXPECT_EQ(text[i - 1], '\r') << "bare line feed at byte " << i;
        }
    }
    EXPECT_GT(lines, 100u);
    EXPECT_EQ(text.substr(text.size() - 2), "\r\n");

    std::vector<std::string> keys;
    const std::regex key("<key>(Control-[0-9]+)</key>");
    for (auto it = std::sregex_iterator(text.begin(), text.end(), key);
         it != std::sregex_iterator(); ++it) {
        keys.push_back((*it)[1]);
    }
    ASSERT_EQ(keys.size(), 23u);
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    EXPECT_EQ(keys[2], "Control-10");
    EXPECT_NE(text.find("<key>KIT_ControlsLayout</key>\r\n\t\t\t<string>1.2</string>"),
              std::string::npos);
    EXPECT_NE(text.find("<int type=\"unsigned\" size=\"32\">23</int>"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Locales, InfoPanelLayoutTest,
                         ::testing::Values(Variant{"control_layout.xml", false},
                                           Variant{"control_layout_de_de.xml", true},
                                           Variant{"control_layout_es_es.xml", true},
                                           Variant{"control_layout_fr_fr.xml", true},
                                           Variant{"control_layout_it_it.xml", true},
                                           Variant{"control_layout_ja_jp.xml", true},
                                           Variant{"control_layout_ko_kr.xml", false}),
                         [](const ::testing::TestParamInfo<Variant>& info) {
                             std::string name = info.param.file;
                             name = name.substr(0, name.find('.'));
                             return name;
                         });

TEST(InfoPanelLayoutFiles, KoreanLayoutEqualsTheDefault) {
    EXPECT_EQ(ReadFile("control_layout_ko_kr.xml"), ReadFile("control_layout.xml"));
}

} // namespace
