// Restoring a control layout document into a controls container: placement by the number
// in each Control-<n> key, creation of missing controls, and the errors.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ToolkitTestSupport.h"
#include "kitcore/config/Error.h"
#include "kitui/controls/UI_ControlFactory.h"
#include "kitui/controls/UI_ControlsContainer.h"
#include "kitui/controls/UI_Divider.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/controls/UI_TextButton.h"

namespace {

using kitui::controls::UI_ControlsContainer;
using kitui::ui::RectT;

class LayoutRestoreTest : public qztest::ToolkitFixture {};

struct Entry {
    std::size_t number;
    std::string className; // bare
    RectT<float> rect;
};

std::string FloatArray(const std::vector<float>& values) {
    std::ostringstream out;
    out << "<array><array.type><float/></array.type>";
    for (float v : values) {
        out << "<float>" << v << "</float>";
    }
    out << "</array>";
    return out.str();
}

/// A layout document with the entries in the order given.
std::string Document(const std::vector<Entry>& entries, bool withSize = true,
                     const std::string& controlMax = "") {
    std::ostringstream out;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<prop.map version=\"4\"><prop.list>"
        << "<prop.pair><key>KIT_ControlsLayout</key><string>1.2</string></prop.pair>"
        << "<prop.pair><key>KIT_ControlsLayout Data</key><prop.list>"
        << "<prop.pair><key>ControlList</key><prop.list>";
    for (const Entry& e : entries) {
        out << "<prop.pair><key>Control-" << e.number << "</key><prop.list>"
            << "<prop.pair><key>ControlClassName</key><string>class kitui::controls::"
            << e.className << "</string></prop.pair>"
            << "<prop.pair><key>ControlRect</key>"
            << FloatArray({e.rect.x, e.rect.y, e.rect.width, e.rect.height})
            << "</prop.pair></prop.list></prop.pair>";
    }
    out << "</prop.list></prop.pair>"
        << "<prop.pair><key>ControlMax</key><int type=\"unsigned\" size=\"32\">"
        << (controlMax.empty() ? std::to_string(entries.size()) : controlMax)
        << "</int></prop.pair>"
        << "</prop.list></prop.pair>";
    if (withSize) {
        out << "<prop.pair><key>LayoutSize</key>" << FloatArray({150, 60}) << "</prop.pair>";
    }
    out << "<prop.pair><key>Scale</key><prop.list>"
        << "<prop.pair><key>X</key><float>1.5</float></prop.pair>"
        << "<prop.pair><key>Y</key><float>2</float></prop.pair>"
        << "</prop.list></prop.pair></prop.list></prop.map>\r\n";
    return out.str();
}

/// A document whose one value is `levels` lists, each inside the one before.
std::string DeeplyNested(std::size_t levels) {
    std::string document = "<prop.map version=\"4\"><prop.list>";
    for (std::size_t i = 0; i < levels; ++i) {
        document += "<prop.pair><key>k</key><prop.list>";
    }
    for (std::size_t i = 0; i < levels; ++i) {
        document += "</prop.list></prop.pair>";
    }
    return document + "</prop.list></prop.map>";
}

/// A document whose one value is `levels` arrays, each the element type and the one
/// element of the one before.
std::string DeeplyNestedArrays(std::size_t levels) {
    std::string document = "<prop.map version=\"4\"><prop.list><prop.pair><key>k</key>";
    for (std::size_t i = 0; i < levels; ++i) {
        document += "<array><array.type><array/></array.type>";
    }
    for (std::size_t i = 0; i < levels; ++i) {
        document += "</array>";
    }
    return document + "</prop.pair></prop.list></prop.map>";
}

/// Entries 0 to count-1 listed in the text order of their keys.
std::vector<Entry> TextOrdered(std::size_t count) {
    std::map<std::string, Entry> byKey;
    for (std::size_t n = 0; n < count; ++n) {
        const std::string className = n == 10 ? "UI_TextButton" : "UI_StaticText";
        byKey.emplace("Control-" + std::to_string(n),
                      Entry{n,
                            className,
                            {static_cast<float>(n), static_cast<float>(100 + n), 20.0f, 14.0f}});
    }
    std::vector<Entry> entries;
    for (auto& [key, entry] : byKey) {
        entries.push_back(entry);
    }
    return entries;
}

TEST_F(LayoutRestoreTest, EntriesAreListedInTextOrderOfTheirKeys) {
    const std::vector<Entry> entries = TextOrdered(12);
    std::vector<std::size_t> order;
    for (const Entry& e : entries) {
        order.push_back(e.number);
    }
    EXPECT_EQ(order, (std::vector<std::size_t>{0, 1, 10, 11, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(LayoutRestoreTest, ControlsArePlacedByTheNumberInTheKeyNotByListPosition) {
    UI_ControlsContainer container(1);
    const kitui::ui::PointT<float> size = container.RestoreLayout(Document(TextOrdered(12)));
    EXPECT_EQ(size, (kitui::ui::PointT<float>{150, 60}));
    ASSERT_EQ(container.UI_GetChildCount(), 12u);
    for (std::size_t n = 0; n < 12; ++n) {
        SCOPED_TRACE(n);
        const kitui::controls::UI_ControlView* control = container.GetControl(n);
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(control->UI_GetBounds(),
                  (RectT<float>{static_cast<float>(n), static_cast<float>(100 + n), 20, 14}));
        EXPECT_EQ(control->GetControlClassName(), n == 10 ? "UI_TextButton" : "UI_StaticText");
        // Created controls get the container's creation flags.
        EXPECT_EQ(control->GetCreationFlags(), 1u);
    }
    EXPECT_EQ(container.GetLayoutSize(), (kitui::ui::PointT<float>{150, 60}));
    EXPECT_EQ(container.GetLayoutScale(), (kitui::ui::PointT<float>{1.5f, 2.0f}));
}

TEST_F(LayoutRestoreTest, ExistingControlsOfTheNamedClassAreKeptAndPlaced) {
    UI_ControlsContainer container(1);
    auto* first = container.UI_AddChild(std::make_unique<kitui::controls::UI_Divider>(1));
    auto* second = container.UI_AddChild(std::make_unique<kitui::controls::UI_StaticText>(1));
    container.RestoreLayout(Document({{1, "UI_StaticText", {3, 4, 5, 6}},
                                      {0, "UI_Divider", {7, 8, 9, 2}},
                                      {2, "UI_TextButton", {1, 1, 1, 1}}}));
    ASSERT_EQ(container.UI_GetChildCount(), 3u);
    EXPECT_EQ(container.UI_GetChild(0), first);
    EXPECT_EQ(container.UI_GetChild(1), second);
    EXPECT_EQ(first->UI_GetBounds(), (RectT<float>{7, 8, 9, 2}));
    EXPECT_EQ(second->UI_GetBounds(), (RectT<float>{3, 4, 5, 6}));
    EXPECT_NE(dynamic_cast<kitui::controls::UI_TextButton*>(container.UI_GetChild(2)), nullptr);
}

TEST_F(LayoutRestoreTest, RestoringTwiceMovesTheSameControls) {
    UI_ControlsContainer container(1);
    container.RestoreLayout(Document({{0, "UI_StaticText", {1, 2, 3, 4}}}));
    auto* control = container.UI_GetChild(0);
    container.RestoreLayout(Document({{0, "UI_StaticText", {5, 6, 7, 8}}}));
    EXPECT_EQ(container.UI_GetChildCount(), 1u);
    EXPECT_EQ(container.UI_GetChild(0), control);
    EXPECT_EQ(control->UI_GetBounds(), (RectT<float>{5, 6, 7, 8}));
}

/// The message of the toolkit error that `restore` raises, or "no error".
template <class F>
std::string ErrorOf(F restore) {
    try {
        restore();
    } catch (const kitcore::config::Error& e) {
        EXPECT_EQ(e.Level(), 1);
        return e.what();
    }
    return "no error";
}

TEST_F(LayoutRestoreTest, UnknownClassIsAnErrorNamingTheClass) {
    UI_ControlsContainer container(1);
    const std::string message = ErrorOf([&] {
        container.RestoreLayout(
            Document({{0, "UI_StaticText", {0, 0, 1, 1}}, {1, "UI_Gizmo", {0, 0, 1, 1}}}));
    });
    EXPECT_NE(message.find("kitui::controls::UI_Gizmo"), std::string::npos) << message;
    // Nothing was created: the whole layout is checked first.
    EXPECT_EQ(container.UI_GetChildCount(), 0u);
}

TEST_F(LayoutRestoreTest, ExistingChildOfAnotherClassIsAnError) {
    UI_ControlsContainer container(1);
    auto* divider = container.UI_AddChild(std::make_unique<kitui::controls::UI_Divider>(1));
    divider->UI_SetBounds({1, 2, 3, 4});
    const std::string message = ErrorOf([&] {
        container.RestoreLayout(Document({{0, "UI_StaticText", {9, 9, 9, 9}}}));
    });
    EXPECT_NE(message.find("UI_Divider"), std::string::npos) << message;
    EXPECT_NE(message.find("UI_StaticText"), std::string::npos) << message;
    EXPECT_EQ(divider->UI_GetBounds(), (RectT<float>{1, 2, 3, 4}));
}

TEST_F(LayoutRestoreTest, MalformedDocumentsAreErrors) {
    const std::string good = Document({{0, "UI_StaticText", {0, 0, 1, 1}}});
    const std::vector<std::pair<std::string, std::string>> bad = {
        {"not XML", "<prop.map version=\"4\"><prop.list>"},
        {"another root", "<plist version=\"4\"><prop.list/></plist>"},
        {"another version", "<prop.map version=\"3\"><prop.list/></prop.map>"},
        {"no layout data", "<prop.map version=\"4\"><prop.list><prop.pair><key>LayoutSize</key>" +
                               FloatArray({1, 1}) + "</prop.pair></prop.list></prop.map>"},
        {"three numbers in a rectangle", Document({{0, "UI_StaticText", {0, 0, 1, 1}}})
                                             .replace(good.find("<float>1</float>"), 16, "")},
        {"a number that is not one",
         Document({{0, "UI_StaticText", {0, 0, 1, 1}}})
             .replace(good.find("<float>1</float>"), 16, "<float>one</float>")},
        {"a gap in the numbers",
         Document({{0, "UI_StaticText", {0, 0, 1, 1}}, {2, "UI_StaticText", {0, 0, 1, 1}}})},
        {"a number twice",
         Document({{0, "UI_StaticText", {0, 0, 1, 1}}, {0, "UI_StaticText", {0, 0, 1, 1}}})},
        {"a key that is not a control", Document({{0, "UI_StaticText", {0, 0, 1, 1}}})
                                            .replace(good.find("Control-0"), 9, "Widget-0")},
        {"a wrong control count", Document({{0, "UI_StaticText", {0, 0, 1, 1}}}, true, "5")},
        {"a coordinate beyond the layout range",
         Document({{0, "UI_StaticText", {0, 0, 1, 1}}})
             .replace(good.find("<float>1</float>"), 16, "<float>3e38</float>")},
        {"a layout size beyond the layout range",
         Document({{0, "UI_StaticText", {0, 0, 1, 1}}})
             .replace(good.find("<float>150</float>"), 18, "<float>1e7</float>")},
        {"a scale beyond the range of a float",
         Document({{0, "UI_StaticText", {0, 0, 1, 1}}})
             .replace(good.find("<float>1.5</float>"), 18, "<float>1e39</float>")},
        {"lists nested a hundred thousand levels deep", DeeplyNested(100000)},
        {"arrays nested a hundred thousand levels deep", DeeplyNestedArrays(100000)},
        {"an unknown value type",
         Document({{0, "UI_StaticText", {0, 0, 1, 1}}})
             .replace(good.find("<string>1.2</string>"), 20, "<blob>1.2</blob>")},
    };
    for (const auto& [what, document] : bad) {
        SCOPED_TRACE(what);
        UI_ControlsContainer container(1);
        const std::string message = ErrorOf([&] { container.RestoreLayout(document); });
        EXPECT_NE(message, "no error");
        EXPECT_NE(message.find("not valid"), std::string::npos) << message;
        EXPECT_EQ(container.UI_GetChildCount(), 0u);
    }
    UI_ControlsContainer container(1);
    EXPECT_EQ(ErrorOf([&] { container.RestoreLayout(good); }), "no error");
}

TEST_F(LayoutRestoreTest, MissingLayoutSizeIsAnError) {
    UI_ControlsContainer container(1);
    const std::string message = ErrorOf([&] {
        container.RestoreLayout(Document({{0, "UI_StaticText", {0, 0, 1, 1}}}, false));
    });
    EXPECT_NE(message.find("layout size"), std::string::npos) << message;
}

} // namespace
