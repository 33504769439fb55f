// Text never leaves the box that its control gives it: a string too long for its box is
// cut at the box's edges, by the surface that sets it and so for every kind of control
// that draws a string; a string that fits is drawn whole.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "ToolkitTestSupport.h"
#include "kitui/controls/UI_ControlFactory.h"
#include "kitui/controls/UI_ItemsControl.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/controls/UI_TextControl.h"
#include "kitui/inkwell/Inkwell.h"
#include "kitui/ui/UI_Node.h"
#include "qzhost/ImageCanvas.h"
#include "qzhost/RecordingInkwell.h"

namespace {

using kitui::inkwell::ColorRGBA;
using kitui::inkwell::TextStyle;
using kitui::ui::RectT;
using kitui::ui::UI_Node;
using qzhost::DrawingCall;
using qzhost::ImageCanvas;
using qzhost::RenderedImage;
using qztest::U16;

class TextClippingTest : public qztest::ToolkitFixture {};

constexpr ColorRGBA kWhite{1.0f, 1.0f, 1.0f, 1.0f};

// Far longer than any box of these tests: the channel values of a float image in the
// 16-bit notation and as decimals.
constexpr const char16_t* kLongText = u"2146435072 -32768000 123456.7031";

/// The pixel rectangle that covers `box` (user units) under `scale` and the translation
/// (x0, y0) in pixels.
RectT<int> PixelCover(const RectT<float>& box, double scale, double x0 = 0.0, double y0 = 0.0) {
    const int left = static_cast<int>(std::floor(box.x * scale + x0));
    const int top = static_cast<int>(std::floor(box.y * scale + y0));
    const int right = static_cast<int>(std::ceil((box.x + box.width) * scale + x0));
    const int bottom = static_cast<int>(std::ceil((box.y + box.height) * scale + y0));
    return {left, top, right - left, bottom - top};
}

bool Inside(const RectT<int>& r, int x, int y) {
    return x >= r.x && x < r.x + r.width && y >= r.y && y < r.y + r.height;
}

/// The pixels where two images of the same size differ.
std::vector<std::pair<int, int>> Differences(const RenderedImage& a, const RenderedImage& b) {
    std::vector<std::pair<int, int>> points;
    for (int y = 0; y < a.Height(); ++y) {
        for (int x = 0; x < a.Width(); ++x) {
            const qzhost::Rgba8 p = a.At(x, y);
            const qzhost::Rgba8 q = b.At(x, y);
            if (p.r != q.r || p.g != q.g || p.b != q.b || p.a != q.a) {
                points.emplace_back(x, y);
            }
        }
    }
    return points;
}

struct AlignmentCase {
    int alignment;
    const char* name;
};

TEST_F(TextClippingTest, TheSurfaceCutsTextTooLongForItsBoxAtTheBoxInEveryAlignment) {
    const AlignmentCase cases[] = {
        {TextStyle::kLeft, "left"}, {TextStyle::kCenter, "centre"}, {TextStyle::kRight, "right"}};
    for (const double scale : {1.0, 1.5, 2.0}) {
        for (const AlignmentCase& alignment : cases) {
            SCOPED_TRACE(std::string(alignment.name) + " at scale " + std::to_string(scale));
            // Straight onto the surface: no control and no clip of its parent around it.
            ImageCanvas canvas(static_cast<int>(200 * scale), static_cast<int>(30 * scale), scale);
            TextStyle style;
            style.size = 11.0f;
            style.alignment = alignment.alignment;
            const RectT<float> box{60, 8, 40, 14};
            kitui::inkwell::SurfaceInterface& surface = *canvas.GetInkwell().GetSurface();
            ASSERT_GT(surface.MeasureText(U16(kLongText), style), 3 * box.width);
            surface.DrawText(U16(kLongText), box, kWhite, style);
            const RenderedImage image = canvas.Snapshot();
            const RectT<int> cover = PixelCover(box, scale);
            EXPECT_GT(qztest::CountDrawn(image, cover), 20);
            EXPECT_EQ(qztest::CountDrawn(image, cover, false), 0);
        }
    }
}

TEST_F(TextClippingTest, TextThatFitsItsBoxIsDrawnWhole) {
    // The same short text in a box just wide enough and in a wide one: the same glyphs.
    TextStyle style;
    style.size = 11.0f;
    ImageCanvas measure(10, 10, 1.0);
    const float width = measure.GetInkwell().GetSurface()->MeasureText(U16(u"65504.0"), style);
    ASSERT_GT(width, 20.0f);
    ImageCanvas tight(120, 20, 1.0);
    ImageCanvas wide(120, 20, 1.0);
    tight.GetInkwell().GetSurface()->DrawText(U16(u"65504.0"), {10, 3, std::ceil(width) + 1, 14},
                                              kWhite, style);
    wide.GetInkwell().GetSurface()->DrawText(U16(u"65504.0"), {10, 3, 100, 14}, kWhite, style);
    const RenderedImage a = tight.Snapshot();
    const RenderedImage b = wide.Snapshot();
    EXPECT_GT(qztest::CountDrawn(a, {0, 0, 120, 20}), 20);
    EXPECT_TRUE(Differences(a, b).empty());
}

/// A control of `class_name` at {10, 10, 60, 20} in a 200 x 40 root, with `text` as its
/// value (an items control: as its one, chosen item), drawn at `scale` through a recording
/// inkwell.
struct DrawnControl {
    RenderedImage image;
    std::vector<DrawingCall> texts;
};

DrawnControl DrawControl(const std::string& class_name, const char16_t* text, double scale) {
    auto root = std::make_unique<UI_Node>();
    root->UI_SetBounds({0, 0, 200, 40});
    auto* control = static_cast<kitui::controls::UI_ControlView*>(
        root->UI_AddChild(kitui::controls::UI_CreateControl(class_name, 1)));
    control->UI_SetBounds({10, 10, 60, 20});
    if (auto* items = dynamic_cast<kitui::controls::UI_ItemsControl*>(control)) {
        items->AddItem(U16(text));
        items->SetSelection(0);
    } else if (auto* textControl = dynamic_cast<kitui::controls::UI_TextControl*>(control)) {
        textControl->SetValue(U16(text));
    }
    ImageCanvas canvas(static_cast<int>(200 * scale), static_cast<int>(40 * scale), scale);
    qzhost::RecordingInkwell recorder(canvas.GetInkwell());
    kitui::inkwell::Inkwell& ink = recorder.GetInkwell();
    ink.GetSurface()->BeginDrawing();
    UI_Node::UI_ClipToRect(root->UI_GetLocalRectF(), &ink);
    root->UI_Draw(&ink);
    ink.GetSurface()->EndDrawing();
    DrawnControl drawn{canvas.Snapshot(), {}};
    for (const DrawingCall& call : recorder.Calls()) {
        if (call.kind == DrawingCall::Kind::kDrawText) {
            drawn.texts.push_back(call);
        }
    }
    return drawn;
}

// Every toolkit control that draws a string.
const char* const kTextControlClasses[] = {
    "UI_Checkbox", "UI_HotText",      "UI_HotTextButton", "UI_HotTextNumber", "UI_NumberEdit",
    "UI_Popup",    "UI_PopupListBox", "UI_StaticText",    "UI_TextButton",    "UI_TextEdit",
};

TEST_F(TextClippingTest, EveryControlKindKeepsATooLongStringInsideTheBoxItGivesIt) {
    for (const double scale : {1.0, 2.0}) {
        for (const char* name : kTextControlClasses) {
            SCOPED_TRACE(std::string(name) + " at scale " + std::to_string(scale));
            const DrawnControl withText = DrawControl(name, kLongText, scale);
            const DrawnControl withoutText = DrawControl(name, u"", scale);
            ASSERT_EQ(withText.texts.size(), 1u);
            EXPECT_TRUE(withoutText.texts.empty());
            const DrawingCall& call = withText.texts.front();
            EXPECT_EQ(call.text, "2146435072 -32768000 123456.7031");
            // The box lies inside the control, and the text changes pixels inside the box
            // and nowhere else: not over the control's frame, arrow or check box, and not
            // outside the control.
            const RectT<int> control = PixelCover({10, 10, 60, 20}, scale);
            const RectT<int> box = PixelCover(call.rect, call.transform.XX(), call.transform.X0(),
                                              call.transform.Y0());
            EXPECT_GE(box.x, control.x);
            EXPECT_GE(box.y, control.y);
            EXPECT_LE(box.x + box.width, control.x + control.width);
            EXPECT_LE(box.y + box.height, control.y + control.height);
            const std::vector<std::pair<int, int>> changed =
                Differences(withText.image, withoutText.image);
            EXPECT_GT(changed.size(), 20u);
            int outside = 0;
            for (const auto& [x, y] : changed) {
                if (!Inside(box, x, y)) {
                    ++outside;
                }
            }
            EXPECT_EQ(outside, 0) << "box " << box.x << "," << box.y << " " << box.width << "x"
                                  << box.height;
        }
    }
}

TEST_F(TextClippingTest, AStaticTextTooLongForItsRectangleLeavesItsNeighboursAlone) {
    // A value beside a label, as the Info panel sets them: the value's text is cut at its
    // rectangle and the label's pixels are those it has on its own.
    auto root = std::make_unique<UI_Node>();
    root->UI_SetBounds({0, 0, 160, 20});
    auto* value = static_cast<kitui::controls::UI_StaticText*>(
        root->UI_AddChild(std::make_unique<kitui::controls::UI_StaticText>(1)));
    value->UI_SetBounds({10, 3, 50, 14});
    auto* label = static_cast<kitui::controls::UI_StaticText*>(
        root->UI_AddChild(std::make_unique<kitui::controls::UI_StaticText>(1)));
    label->UI_SetBounds({70, 3, 20, 14});
    label->SetValue(U16(u"X :"));
    const auto draw = [&root] {
        ImageCanvas canvas(320, 40, 2.0);
        root->UI_Draw(&canvas.GetInkwell());
        return canvas.Snapshot();
    };
    const RenderedImage labelAlone = draw();
    value->SetValue(U16(kLongText));
    const RenderedImage both = draw();
    const RectT<int> valueCover = PixelCover({10, 3, 50, 14}, 2.0);
    const std::vector<std::pair<int, int>> changed = Differences(both, labelAlone);
    EXPECT_GT(changed.size(), 20u);
    for (const auto& [x, y] : changed) {
        ASSERT_TRUE(Inside(valueCover, x, y)) << x << "," << y;
    }
}

} // namespace
