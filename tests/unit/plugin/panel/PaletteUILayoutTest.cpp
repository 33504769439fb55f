// The panel base's layout loading: the minimum size over several layouts, a panel without
// resources, and layouts that the toolkit refuses.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "../textlines/TextLinesFixture.h"
#include "kitui/controls/UI_ControlsContainer.h"
#include "kitui/controls/UI_StaticText.h"

namespace {

using kitcore::utility::UTF16String;
using kitui::controls::UI_ControlsContainer;
using qzhost::HostControls;
using qzhost::WorkspaceModel;
using namespace textlines_test;

/// Resources served from memory, by name, whatever the type asked for.
class MemoryResources : public kitui::utility::ResourceManager {
public:
    explicit MemoryResources(std::map<std::string, std::string> documents)
        : documents_(std::move(documents)) {}

    bool GetResourceBytes(const UTF16String& name, const UTF16String&,
                          std::vector<std::uint8_t>& bytes) const override {
        ++requests;
        const auto it = documents_.find(Utf8(name));
        if (it == documents_.end()) {
            bytes.clear();
            return false;
        }
        bytes.assign(it->second.begin(), it->second.end());
        return true;
    }

    mutable int requests = 0;

private:
    std::map<std::string, std::string> documents_;
};

/// The plug-in object's resource manager, which a test may swap for its own.
struct ResourceManagerOf : infopal::InfoPal {
    static kitcore::utility::ScopedPtr<kitui::utility::ResourceManager>& Of(infopal::InfoPal& p) {
        return p.*(&ResourceManagerOf::resourceManager_);
    }
};

/// A layout of controls of the given classes, each at 1, 2, 3, 4, with the given size.
std::string Layout(const std::vector<std::string>& classes, float width, float height) {
    std::map<std::string, std::size_t> by_key; // the keys in text order, as they are stored
    for (std::size_t n = 0; n < classes.size(); ++n) {
        by_key["Control-" + std::to_string(n)] = n;
    }
    std::ostringstream out;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<prop.map version=\"4\"><prop.list>"
        << "<prop.pair><key>KIT_ControlsLayout</key><string>1.2</string></prop.pair>"
        << "<prop.pair><key>KIT_ControlsLayout Data</key><prop.list>"
        << "<prop.pair><key>ControlList</key><prop.list>";
    for (const auto& [key, n] : by_key) {
        out << "<prop.pair><key>" << key << "</key><prop.list>"
            << "<prop.pair><key>ControlClassName</key><string>class kitui::controls::" << classes[n]
            << "</string></prop.pair><prop.pair><key>ControlRect</key>"
            << "<array><array.type><float/></array.type><float>1</float><float>2</float>"
            << "<float>3</float><float>4</float></array></prop.pair></prop.list></prop.pair>";
    }
    out << "</prop.list></prop.pair>"
        << "<prop.pair><key>ControlMax</key><int type=\"unsigned\" size=\"32\">" << classes.size()
        << "</int></prop.pair></prop.list></prop.pair>"
        << "<prop.pair><key>LayoutSize</key><array><array.type><float/></array.type><float>"
        << width << "</float><float>" << height << "</float></array></prop.pair>"
        << "<prop.pair><key>Scale</key><prop.list><prop.pair><key>X</key><float>1</float>"
        << "</prop.pair><prop.pair><key>Y</key><float>1</float></prop.pair></prop.list>"
        << "</prop.pair></prop.list></prop.map>\r\n";
    return out.str();
}

std::string OneControlLayout(float width, float height,
                             const std::string& class_name = "UI_StaticText") {
    return Layout({class_name}, width, height);
}

/// The Info panel's 23 control classes followed by one of `extra`.
std::string InfoLayoutWithOneMore(const std::string& extra) {
    std::vector<std::string> classes = {"UI_Divider", "UI_Divider", "UI_StaticImage"};
    classes.insert(classes.end(), 16, "UI_StaticText");
    classes.push_back("UI_SwatchRect");
    classes.insert(classes.end(), 3, "UI_StaticText");
    classes.push_back(extra);
    return Layout(classes, 206, 114);
}

class PaletteUILayoutTest : public TextLinesFixture {};

TEST_F(PaletteUILayoutTest, TheMinimumSizeTakesTheLargerWidthAndHeightOfEveryLayout) {
    auto& panel = OpenPanel();
    ASSERT_EQ(panel.GetMinimumLayoutSize().x, 206.0f);
    ASSERT_EQ(panel.GetMinimumLayoutSize().y, 114.0f);
    const MemoryResources resources(
        {{"wide", OneControlLayout(300, 50)}, {"tall", OneControlLayout(100, 200)}});
    UI_ControlsContainer first(0);
    UI_ControlsContainer second(0);

    auto size = panel.LoadLayout(&resources, u"wide", u"xml", &first);
    EXPECT_EQ(size.x, 300.0f);
    EXPECT_EQ(size.y, 50.0f);
    EXPECT_EQ(first.UI_GetBounds(), (kitui::ui::RectT<float>{0, 0, 300, 50}));
    EXPECT_EQ(panel.GetMinimumLayoutSize().x, 300.0f);
    EXPECT_EQ(panel.GetMinimumLayoutSize().y, 114.0f);

    size = panel.LoadLayout(&resources, u"tall", u"xml", &second);
    EXPECT_EQ(size.x, 100.0f);
    EXPECT_EQ(size.y, 200.0f);
    EXPECT_EQ(panel.GetMinimumLayoutSize().x, 300.0f); // from the first
    EXPECT_EQ(panel.GetMinimumLayoutSize().y, 200.0f); // from the second
    const auto minimum = panel.GetMinimumSize();
    ASSERT_TRUE(minimum.has_value());
    EXPECT_EQ(minimum->x, 300.0f);
    EXPECT_EQ(minimum->y, 200.0f);
    ASSERT_EQ(second.UI_GetChildCount(), 1U);
    EXPECT_EQ(second.UI_GetChild(0)->UI_GetBounds(), (kitui::ui::RectT<float>{1, 2, 3, 4}));
}

TEST_F(PaletteUILayoutTest, AMinimumSizeFollowsTheUIScaleRoundingHalvesUp) {
    auto& panel = OpenPanel();
    HostControls::Get().SetUIScale(1.5);
    const MemoryResources resources({{"odd", OneControlLayout(207, 115)}});
    UI_ControlsContainer container(0);
    panel.LoadLayout(&resources, u"odd", u"xml", &container);
    const auto minimum = panel.GetMinimumSize();
    ASSERT_TRUE(minimum.has_value());
    EXPECT_EQ(minimum->x, 311.0f); // 310.5 goes up
    EXPECT_EQ(minimum->y, 173.0f); // 172.5 goes up
}

TEST_F(PaletteUILayoutTest, WithoutAResourceManagerNothingIsLoadedAndTheMinimumSizeStays) {
    auto& panel = OpenPanel();
    auto* container = panel.GetControlsContainer(0);
    const auto bounds = container->UI_GetBounds();
    const auto size = panel.LoadLayout(nullptr, u"control_layout", u"xml", nullptr);
    EXPECT_EQ(size.x, 0.0f);
    EXPECT_EQ(size.y, 0.0f);
    EXPECT_EQ(panel.GetMinimumLayoutSize().x, 206.0f);
    EXPECT_EQ(panel.GetMinimumLayoutSize().y, 114.0f);
    EXPECT_EQ(container->UI_GetBounds(), bounds);
    EXPECT_EQ(container->UI_GetChildCount(), 23U);
}

TEST_F(PaletteUILayoutTest, WithoutTheContainerArgumentTheFirstContainerIsLaidOut) {
    auto& panel = OpenPanel();
    // Control 0 of the Info panel is a divider.
    const MemoryResources resources({{"small", OneControlLayout(50, 60, "UI_Divider")}});
    panel.LoadLayout(&resources, u"small", u"xml", nullptr);
    auto* container = panel.GetControlsContainer(0);
    EXPECT_EQ(container->UI_GetBounds(), (kitui::ui::RectT<float>{0, 0, 50, 60}));
    EXPECT_EQ(container->UI_GetChild(0)->UI_GetBounds(), (kitui::ui::RectT<float>{1, 2, 3, 4}));
    EXPECT_EQ(container->UI_GetChildCount(), 23U); // the other controls stay
}

TEST_F(PaletteUILayoutTest, AChildThatIsNoControlsContainerIsTheTypeConversionError) {
    auto& panel = OpenPanel();
    panel.UI_AddChild(std::make_unique<kitui::controls::UI_StaticText>());
    try {
        panel.GetControlsContainer(1);
        FAIL() << "no error";
    } catch (const kitcore::config::Error& error) {
        EXPECT_STREQ(error.what(), "Invalid type conversion.");
        EXPECT_EQ(error.Level(), 1);
    }
    EXPECT_THROW(panel.GetControl<kitui::controls::UI_StaticText>(0), kitcore::config::Error);
    EXPECT_THROW(panel.GetControl<kitui::controls::UI_StaticText>(23), kitcore::config::Error);
    EXPECT_NO_THROW(panel.GetControl<kitui::controls::UI_StaticText>(22));
}

class BrokenLayoutTest : public PaletteUILayoutTest,
                         public ::testing::WithParamInterface<std::pair<const char*, std::string>> {
};

TEST_P(BrokenLayoutTest, ARefusedLayoutFailsThePanelAndIsReportedAndTheHostGoesOn) {
    const auto& [what, document] = GetParam();
    infopal::InfoPal& plugin = *infopal::InfoPal::GetPlugin();
    auto& slot = ResourceManagerOf::Of(plugin);
    auto own = std::move(slot);
    auto broken = std::make_unique<MemoryResources>(
        std::map<std::string, std::string>{{"control_layout", document}});
    MemoryResources* served = broken.get();
    slot = std::move(broken);
    HostControls::Get().SetReportResult(17);

    EXPECT_EQ(Suite().ShowPanel(), 17);
    EXPECT_GE(served->requests, 1);
    ASSERT_EQ(HostControls::Get().Reported().size(), 1U);
    RecordProperty("reported", HostControls::Get().Reported()[0]);
    EXPECT_NE(HostControls::Get().Reported()[0].find(what), std::string::npos)
        << HostControls::Get().Reported()[0];
    EXPECT_EQ(WorkspaceModel::Get().Panel(kTab), nullptr);
    EXPECT_EQ(plugin.GetPanel(), nullptr);
    EXPECT_EQ(Suite().IsPanelVisible(), 0);

    // The menu command meets the same error and reports it too.
    bool handled = false;
    EXPECT_EQ(Command(2028, false, &handled), 17);
    EXPECT_EQ(HostControls::Get().Reported().size(), 2U);
    EXPECT_EQ(plugin.GetPanel(), nullptr);

    // With its own resources back the plug-in builds its panel as usual.
    slot = std::move(own);
    EXPECT_EQ(Suite().ShowPanel(), 0);
    ASSERT_NE(Panel(), nullptr);
    EXPECT_EQ(Suite().IsPanelVisible(), 1);
    EXPECT_EQ(Suite().SetTextLines3("after", nullptr, nullptr), 0);
    EXPECT_EQ(Rows(*Panel())[0], "after");
}

std::string LayoutName(const ::testing::TestParamInfo<BrokenLayoutTest::ParamType>& info) {
    static const char* const names[] = {"Unterminated", "NotXml", "Empty", "UnknownClass",
                                        "ControlOfAnotherClass"};
    return names[info.index];
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, BrokenLayoutTest,
    ::testing::Values(
        std::make_pair("not valid", std::string("<prop.map version=\"4\"><prop.list>")),
        std::make_pair("not valid", std::string("this is no layout")),
        std::make_pair("not valid", std::string()), // an empty document
        std::make_pair("kitui::controls::UI_Gizmo", InfoLayoutWithOneMore("UI_Gizmo")),
        std::make_pair("is a kitui::controls::UI_Divider", OneControlLayout(10, 10, "UI_Gizmo"))),
    LayoutName);

} // namespace
