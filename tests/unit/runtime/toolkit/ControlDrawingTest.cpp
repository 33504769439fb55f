// The toolkit's controls drawn into images: static texts in their default and alert
// colours, dividers, the picture supply of static images, and every control class.
#include <gtest/gtest.h>

#include <boost/bind/bind.hpp>
#include <memory>

#include "ToolkitTestSupport.h"
#include "kitui/controls/UI_Checkbox.h"
#include "kitui/controls/UI_ControlFactory.h"
#include "kitui/controls/UI_Divider.h"
#include "kitui/controls/UI_ItemsControl.h"
#include "kitui/controls/UI_NumberTextControl.h"
#include "kitui/controls/UI_Slider.h"
#include "kitui/controls/UI_StaticImage.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/controls/UI_TextControl.h"
#include "kitui/inkwell/Drawing.h"
#include "kitui/skins/core/Utilities.h"
#include "kitui/ui/Theme.h"
#include "qzhost/PanelRenderer.h"

namespace {

using kitui::controls::UI_StaticText;
using kitui::ui::RectT;
using kitui::ui::UI_Node;
using qzhost::Rgba8;
using qztest::Describe;
using qztest::U16;

class ControlDrawingTest : public qztest::ToolkitFixture {};

/// A root node of the given size that paints the content background, as a panel does.
class Backdrop : public UI_Node {
public:
    void UI_Draw(kitui::inkwell::Inkwell* ink) override {
        kitui::inkwell::FillRect(
            *ink, UI_GetLocalRectF(),
            kitui::ui::GetColor(kitui::skins::core::utilities::GetContentBackgroundColorID()));
        UI_DrawChildren(ink);
    }
};

std::unique_ptr<UI_Node> Root(float w, float h, bool backdrop = false) {
    std::unique_ptr<UI_Node> root =
        backdrop ? std::make_unique<Backdrop>() : std::make_unique<UI_Node>();
    root->UI_SetBounds({0, 0, w, h});
    return root;
}

template <class Control>
Control* Add(UI_Node& parent, const RectT<float>& bounds) {
    auto* control = static_cast<Control*>(parent.UI_AddChild(std::make_unique<Control>(1)));
    control->UI_SetBounds(bounds);
    return control;
}

TEST_F(ControlDrawingTest, StaticTextDrawsInsideItsRectangleOnly) {
    auto root = Root(120, 30);
    Add<UI_StaticText>(*root, {10, 8, 90, 14})->SetValue(u"R : 255");
    const qzhost::RenderedImage image = qzhost::RenderNode(*root, 1.0);
    EXPECT_EQ(image.Width(), 120);
    EXPECT_EQ(image.Height(), 30);
    EXPECT_GT(qztest::CountDrawn(image, {10, 8, 90, 14}), 20);
    EXPECT_EQ(qztest::CountDrawn(image, {10, 8, 90, 14}, false), 0);
}

TEST_F(ControlDrawingTest, StaticTextIsClippedToItsBounds) {
    auto root = Root(100, 20);
    Add<UI_StaticText>(*root, {0, 3, 12, 14})->SetValue(u"MMMMMMMMMMMM");
    const qzhost::RenderedImage image = qzhost::RenderNode(*root, 1.0);
    EXPECT_GT(qztest::CountDrawn(image, {0, 3, 12, 14}), 0);
    EXPECT_EQ(qztest::CountDrawn(image, {0, 3, 12, 14}, false), 0);
}

TEST_F(ControlDrawingTest, EmptyOrHiddenStaticTextDrawsNothing) {
    auto root = Root(100, 20);
    Add<UI_StaticText>(*root, {0, 3, 90, 14});
    Add<UI_StaticText>(*root, {0, 3, 90, 14})->SetValue(u"Hidden");
    root->UI_GetChild(1)->UI_Show(false);
    EXPECT_EQ(qztest::CountDrawn(qzhost::RenderNode(*root, 1.0), {0, 0, 100, 20}), 0);
}

TEST_F(ControlDrawingTest, AlertColourAndDefaultColourShowInThePixels) {
    const Rgba8 defaultText =
        qztest::ToRgba8(kitui::ui::GetColor(kitui::ui::color_id::kDefaultText));
    const Rgba8 alert = qztest::ToRgba8(kitui::ui::GetColor(kitui::ui::color_id::kAlertText));

    auto root = Root(200, 40, true);
    UI_StaticText* plain = Add<UI_StaticText>(*root, {5, 4, 190, 14});
    UI_StaticText* warned = Add<UI_StaticText>(*root, {5, 20, 190, 14});
    plain->SetValue(u"Illegal move: Hill");
    warned->SetValue(u"Illegal move: Hill");
    warned->SetTextColor(10076);
    const qzhost::RenderedImage image = qzhost::RenderNode(*root, 1.0);

    const Rgba8 plainInk = qztest::MostOpaque(image, {5, 4, 190, 14});
    const Rgba8 bg = image.At(199, 39);
    EXPECT_EQ(bg, qztest::ToRgba8(kitui::ui::GetColor(kitui::ui::color_id::kContentBackground)));
    // The text's strongest pixel is (close to) the text colour; stems of "H", "l" and "I"
    // cover whole pixels.
    const auto strongest = [&image, &bg](const RectT<int>& r) {
        Rgba8 best = bg;
        int bestDistance = -1;
        for (int y = r.y; y < r.y + r.height; ++y) {
            for (int x = r.x; x < r.x + r.width; ++x) {
                const Rgba8 p = image.At(x, y);
                const int d = std::abs(p.r - bg.r) + std::abs(p.g - bg.g) + std::abs(p.b - bg.b);
                if (d > bestDistance) {
                    bestDistance = d;
                    best = p;
                }
            }
        }
        return best;
    };
    const Rgba8 plainStrongest = strongest({5, 4, 190, 14});
    const Rgba8 alertStrongest = strongest({5, 20, 190, 14});
    EXPECT_TRUE(qztest::Near(plainStrongest, defaultText, 12)) << Describe(plainStrongest);
    EXPECT_TRUE(qztest::Near(alertStrongest, alert, 12)) << Describe(alertStrongest);
    EXPECT_GT(alertStrongest.r - alertStrongest.g, 150) << Describe(alertStrongest);
    EXPECT_LT(std::abs(plainStrongest.r - plainStrongest.g), 10) << Describe(plainStrongest);
    EXPECT_EQ(plainInk.a, 255);

    // Back to the default colour: the second row now looks like the first.
    warned->ResetTextColor();
    const qzhost::RenderedImage again = qzhost::RenderNode(*root, 1.0);
    for (int y = 0; y < 14; ++y) {
        for (int x = 5; x < 195; ++x) {
            ASSERT_EQ(again.At(x, 4 + y), again.At(x, 20 + y)) << x << ", " << y;
        }
    }
}

TEST_F(ControlDrawingTest, TextColourIsQueryable) {
    UI_StaticText text(1);
    EXPECT_TRUE(text.HasDefaultTextColor());
    EXPECT_FALSE(text.GetTextColorID().has_value());
    EXPECT_EQ(text.GetEffectiveTextColor(), kitui::ui::GetColor(kitui::ui::color_id::kDefaultText));
    text.SetTextColor(10076);
    EXPECT_FALSE(text.HasDefaultTextColor());
    EXPECT_EQ(text.GetTextColorID(), std::optional<std::size_t>(10076));
    EXPECT_EQ(text.GetEffectiveTextColor(), kitui::ui::GetColor(10076));
    text.ResetTextColor();
    EXPECT_TRUE(text.HasDefaultTextColor());
}

TEST_F(ControlDrawingTest, StaticTextKeepsItsUtf16Value) {
    UI_StaticText text(1);
    text.SetValue(u"Y\u2032 : 12");
    EXPECT_EQ(text.GetValue(), U16(u"Y\u2032 : 12"));
    text.SetValue(static_cast<const char16_t*>(nullptr));
    EXPECT_TRUE(text.GetValue().empty());
}

TEST_F(ControlDrawingTest, HorizontalDividerIsATwoUnitLineInTheDividerColour) {
    const Rgba8 divider = qztest::ToRgba8(kitui::ui::GetColor(kitui::ui::color_id::kDivider));
    auto root = Root(60, 20);
    auto* rule = Add<kitui::controls::UI_Divider>(*root, {5, 10, 50, 2});
    EXPECT_EQ(rule->GetLineThickness(), 2.0f);
    const qzhost::RenderedImage image = qzhost::RenderNode(*root, 1.0);
    for (int x : {5, 30, 54}) {
        EXPECT_EQ(image.At(x, 10), divider);
        EXPECT_EQ(image.At(x, 11), divider);
        EXPECT_EQ(image.At(x, 9).a, 0);
        EXPECT_EQ(image.At(x, 12).a, 0);
    }
    EXPECT_EQ(image.At(4, 10).a, 0);
    EXPECT_EQ(image.At(55, 10).a, 0);
}

TEST_F(ControlDrawingTest, VerticalDividerRunsAlongItsHeight) {
    const Rgba8 divider = qztest::ToRgba8(kitui::ui::GetColor(kitui::ui::color_id::kDivider));
    auto root = Root(20, 60);
    Add<kitui::controls::UI_Divider>(*root, {10, 7, 2, 50});
    const qzhost::RenderedImage image = qzhost::RenderNode(*root, 1.0);
    EXPECT_EQ(image.At(10, 7), divider);
    EXPECT_EQ(image.At(11, 56), divider);
    EXPECT_EQ(image.At(10, 57).a, 0);
    EXPECT_EQ(image.At(12, 30).a, 0);
}

TEST_F(ControlDrawingTest, ThinOrWideDividerDrawsOneOrTwoUnits) {
    auto root = Root(40, 20);
    auto* thin = Add<kitui::controls::UI_Divider>(*root, {0, 2, 40, 1});
    auto* wide = Add<kitui::controls::UI_Divider>(*root, {0, 8, 40, 6});
    EXPECT_EQ(thin->GetLineThickness(), 1.0f);
    EXPECT_EQ(wide->GetLineThickness(), 2.0f);
    const qzhost::RenderedImage image = qzhost::RenderNode(*root, 1.0);
    EXPECT_NE(image.At(20, 2).a, 0);
    // The wide divider's line lies across the middle of its six units: rows 10 and 11.
    EXPECT_EQ(image.At(20, 9).a, 0);
    EXPECT_NE(image.At(20, 10).a, 0);
    EXPECT_NE(image.At(20, 11).a, 0);
    EXPECT_EQ(image.At(20, 12).a, 0);
}

TEST_F(ControlDrawingTest, DrawingAtUiScaleTwoDoublesThePixels) {
    auto root = Root(60, 20);
    Add<kitui::controls::UI_Divider>(*root, {5, 10, 50, 2});
    const qzhost::RenderedImage image = qzhost::RenderNode(*root, 2.0);
    EXPECT_EQ(image.Width(), 120);
    EXPECT_EQ(image.Height(), 40);
    for (int y : {20, 21, 22, 23}) {
        EXPECT_NE(image.At(60, y).a, 0) << y;
    }
    EXPECT_EQ(image.At(60, 19).a, 0);
    EXPECT_EQ(image.At(60, 24).a, 0);
    EXPECT_EQ(image.At(9, 21).a, 0);
    EXPECT_NE(image.At(10, 21).a, 0);
}

TEST_F(ControlDrawingTest, NestedChildrenAreTranslatedAndClippedToTheirParents) {
    auto root = Root(50, 50);
    auto* box = static_cast<UI_Node*>(root->UI_AddChild(std::make_unique<UI_Node>()));
    box->UI_SetBounds({10, 10, 20, 20});
    // The divider reaches beyond its parent: only the part inside the parent shows.
    Add<kitui::controls::UI_Divider>(*box, {5, 5, 40, 2});
    const qzhost::RenderedImage image = qzhost::RenderNode(*root, 1.0);
    EXPECT_NE(image.At(15, 15).a, 0);
    EXPECT_NE(image.At(29, 16).a, 0);
    EXPECT_EQ(image.At(30, 15).a, 0);
    EXPECT_EQ(image.At(14, 15).a, 0);
}

class CrosshairSupplier {
public:
    void Supply(kitui::controls::UI_PictureSupplyMessage& message) {
        ++calls;
        lastState = message.GetStateFlags();
        lastScale = message.GetScale();
        sawSupplier = message.GetDrawSupplier() != nullptr;
        lastControl = message.GetControl();
        const std::uint32_t colour = message.GetStateFlags() == 0 ? 0xFFFF0000u : 0xFF0000FFu;
        const int side = static_cast<int>(8 * message.GetScale());
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(side * side), colour);
        message.SetImage(message.GetDrawSupplier()->NewPicture(side, side, message.GetScale(),
                                                               pixels.data(), side));
    }
    int calls = 0;
    std::uint32_t lastState = 99;
    float lastScale = 0;
    bool sawSupplier = false;
    UI_Node* lastControl = nullptr;
};

TEST_F(ControlDrawingTest, StaticImageAsksItsOwnerForItsPictureAndDrawsIt) {
    auto root = Root(40, 40);
    auto* image = Add<kitui::controls::UI_StaticImage>(*root, {10, 10, 17, 17});
    CrosshairSupplier owner;
    image->SetPictureSupplyHandler(
        kitui::controls::UI_MakeMessageHandler<kitui::controls::UI_PictureSupplyMessage>(
            boost::bind(&CrosshairSupplier::Supply, &owner, boost::placeholders::_1)));
    const qzhost::RenderedImage first = qzhost::RenderNode(*root, 1.0);
    EXPECT_EQ(owner.calls, 1);
    EXPECT_EQ(owner.lastState, 0u);
    EXPECT_TRUE(owner.sawSupplier);
    EXPECT_EQ(owner.lastControl, image);
    EXPECT_EQ(owner.lastScale, 1.0f);
    ASSERT_TRUE(image->GetPicture());
    // An 8 x 8 picture centred in 17 x 17 at 10, 10 starts at 15 (rounded from 14.5).
    EXPECT_EQ(first.At(18, 18), (Rgba8{255, 0, 0, 255}));
    EXPECT_EQ(qztest::CountDrawn(first, {10, 10, 17, 17}), 64);

    // Drawn again with nothing changed, the kept picture serves.
    qzhost::RenderNode(*root, 1.0);
    EXPECT_EQ(owner.calls, 1);
    // Another state asks again.
    image->SetPictureState(kitui::controls::picture_state::kSelected);
    const qzhost::RenderedImage selected = qzhost::RenderNode(*root, 1.0);
    EXPECT_EQ(owner.calls, 2);
    EXPECT_EQ(owner.lastState, kitui::controls::picture_state::kSelected);
    EXPECT_EQ(selected.At(18, 18), (Rgba8{0, 0, 255, 255}));
    // Another pixel density asks again.
    qzhost::RenderNode(*root, 2.0);
    EXPECT_EQ(owner.calls, 3);
    EXPECT_EQ(owner.lastScale, 2.0f);
    // A flush asks again.
    image->UI_FlushPicture();
    EXPECT_FALSE(image->GetPicture());
    qzhost::RenderNode(*root, 2.0);
    EXPECT_EQ(owner.calls, 4);
}

TEST_F(ControlDrawingTest, StaticImageWithoutPictureSupplyDrawsNothing) {
    auto root = Root(40, 40);
    auto* image = Add<kitui::controls::UI_StaticImage>(*root, {10, 10, 17, 17});
    EXPECT_EQ(qztest::CountDrawn(qzhost::RenderNode(*root, 1.0), {0, 0, 40, 40}), 0);
    EXPECT_EQ(image->GetPictureRequestCount(), 1u);
    EXPECT_FALSE(image->GetPicture());
}

TEST_F(ControlDrawingTest, PictureRequestGoesToTheControlMessageHandlerWithoutASupplyHandler) {
    auto root = Root(40, 40);
    auto* image = Add<kitui::controls::UI_StaticImage>(*root, {0, 0, 17, 17});
    int kinds = 0;
    image->SetControlMessageHandler(
        kitui::controls::UI_MakeMessageHandler<kitui::controls::UI_ControlMessage>(
            [&kinds](kitui::controls::UI_ControlMessage& m) { kinds += m.GetKind(); }));
    qzhost::RenderNode(*root, 1.0);
    EXPECT_EQ(kinds, kitui::controls::UI_ControlMessage::kPictureSupply);
}

TEST_F(ControlDrawingTest, ControlMessageHandlerHearsClicksAndValueChanges) {
    kitui::controls::UI_Checkbox box(1);
    std::vector<std::int32_t> kinds;
    std::vector<kitui::ui::UI_Node*> senders;
    box.SetControlMessageHandler(
        kitui::controls::UI_MakeMessageHandler<kitui::controls::UI_ControlMessage>(
            [&kinds, &senders](kitui::controls::UI_ControlMessage& m) {
                senders.push_back(m.GetControl());
                kinds.push_back(m.GetKind());
            }));
    box.UI_Click();
    EXPECT_TRUE(box.IsChecked());
    auto button = kitui::controls::UI_CreateControl("UI_TextButton", 1);
    button->SetControlMessageHandler(box.GetControlMessageHandler());
    button->UI_Click();
    EXPECT_EQ(kinds, (std::vector<std::int32_t>{kitui::controls::UI_ControlMessage::kValueChanged,
                                                kitui::controls::UI_ControlMessage::kClicked}));
    EXPECT_EQ(senders, (std::vector<kitui::ui::UI_Node*>{&box, button.get()}));
    // Without a handler a message is not handled.
    kitui::controls::UI_ControlMessage message(button.get(), 2);
    button->SetControlMessageHandler({});
    EXPECT_FALSE(button->UI_SendControlMessage(message));
}

const char* const kToolkitClasses[] = {
    "UI_Checkbox",    "UI_Divider",       "UI_HotText",    "UI_HotTextButton", "UI_HotTextNumber",
    "UI_NumberEdit",  "UI_PictureButton", "UI_Popup",      "UI_PopupListBox",  "UI_Slider",
    "UI_StaticImage", "UI_StaticText",    "UI_TextButton", "UI_TextEdit",
};

TEST_F(ControlDrawingTest, EveryToolkitClassIsCreatedByNameWithItsFlagsAndNamesItself) {
    for (const char* name : kToolkitClasses) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(kitui::controls::UI_IsKnownControlClass(name));
        auto control =
            kitui::controls::UI_CreateControl(std::string("class kitui::controls::") + name, 1);
        ASSERT_TRUE(control);
        EXPECT_EQ(control->GetControlClassName(), name);
        EXPECT_EQ(control->GetQualifiedClassName(), std::string("kitui::controls::") + name);
        EXPECT_EQ(control->GetCreationFlags(), 1u);
        EXPECT_TRUE(control->UI_IsPostCreated());
    }
    EXPECT_FALSE(kitui::controls::UI_IsKnownControlClass("UI_NoSuchControl"));
    EXPECT_FALSE(kitui::controls::UI_CreateControl("UI_NoSuchControl", 1));
}

TEST_F(ControlDrawingTest, EveryToolkitClassDrawsSomethingInsideItsBoundsOnly) {
    for (const char* name : kToolkitClasses) {
        SCOPED_TRACE(name);
        auto root = Root(120, 40);
        auto* control = static_cast<kitui::controls::UI_ControlView*>(
            root->UI_AddChild(kitui::controls::UI_CreateControl(name, 1)));
        control->UI_SetBounds({10, 10, 100, 20});
        if (auto* text = dynamic_cast<kitui::controls::UI_TextControl*>(control)) {
            text->SetValue(u"Value");
        }
        if (auto* items = dynamic_cast<kitui::controls::UI_ItemsControl*>(control)) {
            items->AddItem(U16(u"First"));
            items->SetSelection(0);
            EXPECT_EQ(items->GetValue(), U16(u"First"));
        }
        CrosshairSupplier owner;
        if (auto* picture = dynamic_cast<kitui::controls::UI_PictureControl*>(control)) {
            picture->SetPictureSupplyHandler(
                kitui::controls::UI_MakeMessageHandler<kitui::controls::UI_PictureSupplyMessage>(
                    boost::bind(&CrosshairSupplier::Supply, &owner, boost::placeholders::_1)));
        }
        const qzhost::RenderedImage image = qzhost::RenderNode(*root, 1.0);
        EXPECT_GT(qztest::CountDrawn(image, {10, 10, 100, 20}), 20);
        EXPECT_EQ(qztest::CountDrawn(image, {10, 10, 100, 20}, false), 0);
    }
}

TEST_F(ControlDrawingTest, NumberControlsWriteTheirValueAsText) {
    auto control = kitui::controls::UI_CreateControl("UI_HotTextNumber", 1);
    auto* number = dynamic_cast<kitui::controls::UI_NumberTextControl*>(control.get());
    ASSERT_NE(number, nullptr);
    number->SetDigits(2);
    number->SetNumber(12.5);
    EXPECT_EQ(number->GetValue(), U16(u"12.50"));
    number->SetRange(0, 10);
    EXPECT_EQ(number->GetNumber(), 10.0);
    EXPECT_EQ(number->GetValue(), U16(u"10.00"));
}

TEST_F(ControlDrawingTest, SliderThumbFollowsItsValue) {
    auto root = Root(100, 20);
    auto* slider = Add<kitui::controls::UI_Slider>(*root, {0, 0, 100, 20});
    slider->SetRange(0, 10);
    slider->SetValue(0);
    const qzhost::RenderedImage low = qzhost::RenderNode(*root, 1.0);
    slider->SetValue(10);
    EXPECT_EQ(slider->GetFraction(), 1.0);
    const qzhost::RenderedImage high = qzhost::RenderNode(*root, 1.0);
    // The thumb sits at the left end at the minimum and at the right end at the maximum.
    EXPECT_NE(low.At(2, 5), high.At(2, 5));
    EXPECT_NE(low.At(97, 5), high.At(97, 5));
    slider->SetValue(99);
    EXPECT_EQ(slider->GetValue(), 10.0);
}

TEST_F(ControlDrawingTest, ControlViewScaleIsTheHostUiScale) {
    UI_StaticText text(1);
    EXPECT_EQ(text.UI_GetScale(), (kitui::ui::PointT<double>{1.0, 1.0}));
    qzhost::HostControls::Get().SetUIScale(1.5);
    EXPECT_EQ(text.UI_GetScale(), (kitui::ui::PointT<double>{1.5, 1.5}));
}

} // namespace
