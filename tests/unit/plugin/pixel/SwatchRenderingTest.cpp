// The swatch as the panel draws it after a pixel readout: the fill colour inside, the
// theme's frame colour at the border, in every shape and fill path; what it asks the
// drawing library to draw (recorded), which tells the fill paths apart; and a monitor
// profile, which changes what the swatch shows but not the numbers.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include <lcms2.h>

#include "InfoPal/controls/UI_SwatchRect.h"
#include "PixelTestSupport.h"
#include "kitui/ui/Theme.h"
#include "qzhost/ImageCanvas.h"
#include "qzhost/MonitorProfile.h"
#include "qzhost/PanelRenderer.h"
#include "qzhost/RecordingInkwell.h"
#include "qzhost/ToolkitSettings.h"

namespace pixel_test {
namespace {

using qzhost::Rgba8;

Rgba8 ToRgba8(const kitui::inkwell::ColorRGBA& c) {
    auto channel = [](float v) { return static_cast<std::uint8_t>(v * 255.0f + 0.5f); };
    return {channel(c.r), channel(c.g), channel(c.b), channel(c.a)};
}

::testing::AssertionResult Near(const Rgba8& actual, const Rgba8& expected) {
    auto off = [](int a, int b) { return a > b + 1 || b > a + 1; };
    if (off(actual.r, expected.r) || off(actual.g, expected.g) || off(actual.b, expected.b) ||
        off(actual.a, expected.a)) {
        return ::testing::AssertionFailure()
               << "pixel " << int(actual.r) << "," << int(actual.g) << "," << int(actual.b) << ","
               << int(actual.a) << " expected " << int(expected.r) << "," << int(expected.g) << ","
               << int(expected.b) << "," << int(expected.a);
    }
    return ::testing::AssertionSuccess();
}

// 1, 0.6, 0.2 in 8 bits.
constexpr Rgba8 kOrange{255, 153, 51, 255};

using qzhost::DrawingCall;
using qzhost::RecordedPathElement;

std::string Text(const kitui::inkwell::ColorRGBA& c) {
    std::ostringstream out;
    out << "rgba(" << c.r << "," << c.g << "," << c.b << "," << c.a << ")";
    return out.str();
}

// One fill or stroke in a line: what it draws and with what, e.g.
// "fill rect 0,0 10x20 brush rgba(...)" or "stroke move 0.5,0 line 0.5,20 pen 1 rgba(...)".
std::string Describe(const DrawingCall& call) {
    std::ostringstream out;
    out << (call.kind == DrawingCall::Kind::kStroke ? "stroke" : "fill");
    if (!call.path_recorded) {
        out << " (a path not recorded)";
    }
    for (const RecordedPathElement& e : call.path) {
        switch (e.kind) {
        case RecordedPathElement::Kind::kMoveTo:
            out << " move " << e.point.x << "," << e.point.y;
            break;
        case RecordedPathElement::Kind::kLineTo:
            out << " line " << e.point.x << "," << e.point.y;
            break;
        case RecordedPathElement::Kind::kRect:
            out << " rect " << e.rect.x << "," << e.rect.y << " " << e.rect.width << "x"
                << e.rect.height;
            break;
        case RecordedPathElement::Kind::kClose:
            out << " close";
            break;
        }
    }
    if (!call.paint_given) {
        out << " nothing";
    } else if (call.kind == DrawingCall::Kind::kStroke) {
        out << " pen " << call.pen_width << " " << Text(call.color);
    } else if (call.kind == DrawingCall::Kind::kFillWithBrush) {
        out << " brush " << Text(call.color);
    } else {
        out << " shader " << call.shader_start.x << "," << call.shader_start.y << " "
            << Text(call.shader_start_color) << " to " << call.shader_end.x << ","
            << call.shader_end.y << " " << Text(call.shader_end_color);
    }
    if (call.kind != DrawingCall::Kind::kStroke &&
        call.fill_rule != kitui::inkwell::kFillRuleWinding) {
        out << " (fill rule " << call.fill_rule << ")";
    }
    return out.str();
}

std::vector<std::string> Describe(const std::vector<DrawingCall>& calls) {
    std::vector<std::string> lines;
    for (const DrawingCall& call : calls) {
        lines.push_back(Describe(call));
    }
    return lines;
}

// The colour the drawing tests give the swatch: exact in binary, so it prints exactly.
constexpr kitui::inkwell::ColorRGBA kSwatchColor{0.25f, 0.5f, 0.75f, 1.0f};
const std::string kBrush = " brush " + Text(kSwatchColor);
const std::string kPen1 = " pen 1 " + Text(kSwatchColor);
std::string FramePen() {
    return " pen 2 " + Text(kitui::ui::GetColor(20));
}
std::string Shader(const char* from, const char* to) {
    return std::string(" shader ") + from + " " + Text(kSwatchColor) + " to " + to + " " +
           Text(kSwatchColor);
}

class SwatchRendering : public PanelTest {
protected:
    void SetUp() override {
        PanelTest::SetUp();
        qzhost::ToolkitSettings::Get().Reset();
        Open();
    }
    void TearDown() override {
        qzhost::ToolkitSettings::Get().Reset();
        qzhost::SetMonitorProfile(std::nullopt);
        PanelTest::TearDown();
    }

    kitui::controls::UI_SwatchRect& Swatch() const {
        return Panel()->GetControl<kitui::controls::UI_SwatchRect>(19);
    }
    struct Box {
        double x, y, width, height;
    };
    // The swatch's bounds in the panel's coordinates.
    Box SwatchInPanel() const {
        const kitui::ui::RectT<float> bounds = Swatch().UI_GetBounds();
        Box box{bounds.x, bounds.y, bounds.width, bounds.height};
        for (const kitui::ui::UI_Node* node = Swatch().UI_GetParent(); node != Panel();
             node = node->UI_GetParent()) {
            box.x += node->UI_GetBounds().x;
            box.y += node->UI_GetBounds().y;
        }
        return box;
    }
    void SetSwatchSize(float width, float height) {
        kitui::ui::RectT<float> bounds = Swatch().UI_GetBounds();
        bounds.width = width;
        bounds.height = height;
        Swatch().UI_SetBounds(bounds);
    }
    qzhost::RenderedImage Render(double scale = 1.0) { return qzhost::RenderNode(*Panel(), scale); }
    // The drawn pixel at swatch-local unit (x, y), at `scale`.
    static Rgba8 At(const qzhost::RenderedImage& image, const Box& swatch, double x, double y,
                    double scale = 1.0) {
        return image.At(static_cast<int>((swatch.x + x) * scale),
                        static_cast<int>((swatch.y + y) * scale));
    }
    static Rgba8 Frame() { return ToRgba8(kitui::ui::GetColor(20)); }

    struct RecordedSwatch {
        std::vector<DrawingCall> fills_and_strokes;
        int shader_queries;
        std::vector<DrawingCall> calls;
        qzhost::RenderedImage image; // the canvas, which the recorder passed the drawing to
        Box box;                     // the swatch's place on it
    };
    // Draws the swatch alone, of `width` x `height` units and colour kSwatchColor, as the
    // toolkit draws a child of the panel: on a canvas of the panel's size at `scale`,
    // moved to the swatch's place and clipped to its bounds; through a recorder.
    RecordedSwatch DrawRecorded(float width, float height, double scale = 1.0) {
        SetSwatchSize(width, height);
        Swatch().color = kSwatchColor;
        const Box box = SwatchInPanel();
        const kitui::ui::RectT<float> panel = Panel()->UI_GetLocalRectF();
        qzhost::ImageCanvas canvas(static_cast<int>(std::ceil(panel.width * scale)),
                                   static_cast<int>(std::ceil(panel.height * scale)), scale);
        kitui::inkwell::SurfaceInterface& surface = *canvas.GetInkwell().GetSurface();
        surface.BeginDrawing();
        surface.Translate(static_cast<float>(box.x), static_cast<float>(box.y));
        surface.ClipToRect(Swatch().UI_GetLocalRectF());
        qzhost::RecordingInkwell recorder(canvas.GetInkwell());
        Swatch().UI_Draw(&recorder.GetInkwell());
        surface.EndDrawing();
        return {recorder.FillsAndStrokes(), recorder.ShaderQueries(), recorder.Calls(),
                canvas.Snapshot(), box};
    }
};

TEST_F(SwatchRendering, ASquareSwatchIsFilledWithThePixelAndFramed) {
    ASSERT_EQ(Deliver(Pixel(0.25f, 1.0f, 0.6f, 0.2f)), 0);
    const auto swatch = SwatchInPanel();
    ASSERT_EQ(swatch.width, swatch.height);
    const qzhost::RenderedImage image = Render();
    // Both halves (left and right of the middle) carry the colour, opaque.
    for (double x : {2.5, swatch.width / 2 - 1.5, swatch.width / 2 + 0.5, swatch.width - 2.5}) {
        for (double y : {2.5, swatch.height / 2, swatch.height - 2.5}) {
            EXPECT_TRUE(Near(At(image, swatch, x, y), kOrange)) << x << ", " << y;
        }
    }
    // The frame, 2 units wide centred on the edge, shows one unit inside every side.
    EXPECT_TRUE(Near(At(image, swatch, 0.5, swatch.height / 2), Frame()));
    EXPECT_TRUE(Near(At(image, swatch, swatch.width - 0.5, swatch.height / 2), Frame()));
    EXPECT_TRUE(Near(At(image, swatch, swatch.width / 2, 0.5), Frame()));
    EXPECT_TRUE(Near(At(image, swatch, swatch.width / 2, swatch.height - 0.5), Frame()));
}

TEST_F(SwatchRendering, AWideSwatchIsFilledEverywhereInside) {
    SetSwatchSize(40, 12);
    ASSERT_EQ(Deliver(Pixel(1, 1.0f, 0.6f, 0.2f)), 0);
    const auto swatch = SwatchInPanel();
    const qzhost::RenderedImage image = Render();
    for (double x : {1.5, 10.5, 20.5, 38.5}) {
        for (double y : {1.5, 5.5, 6.5, 10.5}) {
            EXPECT_TRUE(Near(At(image, swatch, x, y), kOrange)) << x << ", " << y;
        }
    }
    EXPECT_TRUE(Near(At(image, swatch, 0.5, 6.5), Frame()));
    EXPECT_TRUE(Near(At(image, swatch, 20.5, 11.5), Frame()));
}

TEST_F(SwatchRendering, TheShaderPathFillsTheSameColour) {
    qzhost::ToolkitSettings::Get().SetShaderFills(true);
    for (auto size : {std::pair{20.0f, 20.0f}, std::pair{40.0f, 12.0f}}) {
        SetSwatchSize(size.first, size.second);
        ASSERT_EQ(Deliver(Pixel(1, 1.0f, 0.6f, 0.2f)), 0);
        const auto swatch = SwatchInPanel();
        const qzhost::RenderedImage image = Render();
        for (double x : {1.5, swatch.width / 2 - 0.5, swatch.width / 2 + 0.5, swatch.width - 1.5}) {
            for (double y :
                 {1.5, swatch.height / 2 - 0.5, swatch.height / 2 + 0.5, swatch.height - 1.5}) {
                EXPECT_TRUE(Near(At(image, swatch, x, y), kOrange))
                    << size.first << "x" << size.second << " at " << x << ", " << y;
            }
        }
        EXPECT_TRUE(Near(At(image, swatch, 0.5, swatch.height / 2), Frame()));
    }
}

TEST_F(SwatchRendering, AThinSwatchStaysInsideItsBoundsAndIsFramed) {
    // Two units across: the two one-unit strokes lie under the frame, which is one unit
    // inside each side; nothing is drawn outside the bounds.
    SetSwatchSize(2, 20);
    ASSERT_EQ(Deliver(Pixel(1, 1.0f, 0.6f, 0.2f)), 0);
    const auto swatch = SwatchInPanel();
    const qzhost::RenderedImage image = Render();
    const Rgba8 outside = At(image, swatch, -0.5, 10.5);
    EXPECT_FALSE(Near(outside, kOrange));
    EXPECT_FALSE(Near(At(image, swatch, 2.5, 10.5), kOrange));
    for (double y : {0.5, 5.5, 10.5, 19.5}) {
        EXPECT_TRUE(Near(At(image, swatch, 0.5, y), Frame())) << y;
        EXPECT_TRUE(Near(At(image, swatch, 1.5, y), Frame())) << y;
    }
}

TEST_F(SwatchRendering, AnOverRangeTransparentPixelShowsOpaqueClampedColour) {
    ASSERT_EQ(Deliver(Pixel(0.25f, 2.0f, -0.5f, 0.6f)), 0);
    const auto swatch = SwatchInPanel();
    const qzhost::RenderedImage image = Render();
    EXPECT_TRUE(Near(At(image, swatch, 10.5, 10.5), Rgba8{255, 0, 153, 255}));
}

TEST_F(SwatchRendering, ASquareSwatchIsFilledInALeftAndARightHalf) {
    const RecordedSwatch drawn = DrawRecorded(20, 20);
    EXPECT_EQ(Describe(drawn.fills_and_strokes), (std::vector<std::string>{
                                                     "fill rect 0,0 10x20" + kBrush,
                                                     "fill rect 10,0 10x20" + kBrush,
                                                     "stroke rect 0,0 20x20" + FramePen(),
                                                 }));
    EXPECT_EQ(drawn.shader_queries, 1);
}

TEST_F(SwatchRendering, ATallSwatchIsFilledInALeftAndARightHalf) {
    const RecordedSwatch drawn = DrawRecorded(12, 40);
    EXPECT_EQ(Describe(drawn.fills_and_strokes), (std::vector<std::string>{
                                                     "fill rect 0,0 6x40" + kBrush,
                                                     "fill rect 6,0 6x40" + kBrush,
                                                     "stroke rect 0,0 12x40" + FramePen(),
                                                 }));
}

TEST_F(SwatchRendering, AWideSwatchIsFilledInATopAndABottomHalf) {
    const RecordedSwatch drawn = DrawRecorded(40, 12);
    EXPECT_EQ(Describe(drawn.fills_and_strokes), (std::vector<std::string>{
                                                     "fill rect 0,0 40x6" + kBrush,
                                                     "fill rect 0,6 40x6" + kBrush,
                                                     "stroke rect 0,0 40x12" + FramePen(),
                                                 }));
}

TEST_F(SwatchRendering, WhenTheSupplierAsksForShadersEachHalfIsFilledWithAShaderAcrossIt) {
    qzhost::ToolkitSettings::Get().SetShaderFills(true);
    // Each shader runs across its half, from its start to the middle and from the middle
    // to the far side; both ends have the swatch's colour.
    const RecordedSwatch square = DrawRecorded(20, 20);
    EXPECT_EQ(Describe(square.fills_and_strokes),
              (std::vector<std::string>{
                  "fill rect 0,0 10x20" + Shader("0,0", "10,0"),
                  "fill rect 10,0 10x20" + Shader("10,0", "20,0"),
                  "stroke rect 0,0 20x20" + FramePen(),
              }));
    EXPECT_EQ(square.shader_queries, 1);

    const RecordedSwatch wide = DrawRecorded(40, 12);
    EXPECT_EQ(Describe(wide.fills_and_strokes), (std::vector<std::string>{
                                                    "fill rect 0,0 40x6" + Shader("0,0", "0,6"),
                                                    "fill rect 0,6 40x6" + Shader("0,6", "0,12"),
                                                    "stroke rect 0,0 40x12" + FramePen(),
                                                }));
}

TEST_F(SwatchRendering, ATwoUnitSwatchOnAnUnmagnifiedSurfaceIsTwoOneUnitStrokes) {
    // Strokes along the long side, a quarter and three quarters of the way across.
    const RecordedSwatch tall = DrawRecorded(2, 20);
    EXPECT_EQ(Describe(tall.fills_and_strokes), (std::vector<std::string>{
                                                    "stroke move 0.5,0 line 0.5,20" + kPen1,
                                                    "stroke move 1.5,0 line 1.5,20" + kPen1,
                                                    "stroke rect 0,0 2x20" + FramePen(),
                                                }));
    // Drawn in its place in the panel: moved, not magnified.
    ASSERT_FALSE(tall.fills_and_strokes.empty());
    const kitui::inkwell::Transform moved = tall.fills_and_strokes[0].transform;
    EXPECT_EQ(moved.XX(), 1.0);
    EXPECT_EQ(moved.YY(), 1.0);
    EXPECT_NE(moved.X0(), 0.0);

    const RecordedSwatch wide = DrawRecorded(20, 2);
    EXPECT_EQ(Describe(wide.fills_and_strokes), (std::vector<std::string>{
                                                    "stroke move 0,0.5 line 20,0.5" + kPen1,
                                                    "stroke move 0,1.5 line 20,1.5" + kPen1,
                                                    "stroke rect 0,0 20x2" + FramePen(),
                                                }));

    const RecordedSwatch square = DrawRecorded(2, 2);
    EXPECT_EQ(Describe(square.fills_and_strokes), (std::vector<std::string>{
                                                      "stroke move 0.5,0 line 0.5,2" + kPen1,
                                                      "stroke move 1.5,0 line 1.5,2" + kPen1,
                                                      "stroke rect 0,0 2x2" + FramePen(),
                                                  }));
}

TEST_F(SwatchRendering, ATwoUnitSwatchOnAReducedSurfaceIsStillTwoStrokes) {
    const RecordedSwatch drawn = DrawRecorded(2, 20, 0.5);
    EXPECT_EQ(Describe(drawn.fills_and_strokes), (std::vector<std::string>{
                                                     "stroke move 0.5,0 line 0.5,20" + kPen1,
                                                     "stroke move 1.5,0 line 1.5,20" + kPen1,
                                                     "stroke rect 0,0 2x20" + FramePen(),
                                                 }));
}

TEST_F(SwatchRendering, ATwoUnitSwatchOnAMagnifiedSurfaceIsFilledInHalves) {
    const RecordedSwatch drawn = DrawRecorded(2, 20, 2.0);
    EXPECT_EQ(Describe(drawn.fills_and_strokes), (std::vector<std::string>{
                                                     "fill rect 0,0 1x20" + kBrush,
                                                     "fill rect 1,0 1x20" + kBrush,
                                                     "stroke rect 0,0 2x20" + FramePen(),
                                                 }));
    ASSERT_FALSE(drawn.fills_and_strokes.empty());
    EXPECT_EQ(drawn.fills_and_strokes[0].transform.XX(), 2.0);

    qzhost::ToolkitSettings::Get().SetShaderFills(true);
    const RecordedSwatch shaded = DrawRecorded(20, 2, 1.5);
    EXPECT_EQ(Describe(shaded.fills_and_strokes), (std::vector<std::string>{
                                                      "fill rect 0,0 20x1" + Shader("0,0", "0,1"),
                                                      "fill rect 0,1 20x1" + Shader("0,1", "0,2"),
                                                      "stroke rect 0,0 20x2" + FramePen(),
                                                  }));
}

TEST_F(SwatchRendering, ASwatchOfAnotherShortSideIsFilledInHalvesOnAnUnmagnifiedSurface) {
    const RecordedSwatch three = DrawRecorded(3, 20);
    EXPECT_EQ(Describe(three.fills_and_strokes), (std::vector<std::string>{
                                                     "fill rect 0,0 1.5x20" + kBrush,
                                                     "fill rect 1.5,0 1.5x20" + kBrush,
                                                     "stroke rect 0,0 3x20" + FramePen(),
                                                 }));
    const RecordedSwatch one = DrawRecorded(20, 1);
    EXPECT_EQ(Describe(one.fills_and_strokes), (std::vector<std::string>{
                                                   "fill rect 0,0 20x0.5" + kBrush,
                                                   "fill rect 0,0.5 20x0.5" + kBrush,
                                                   "stroke rect 0,0 20x1" + FramePen(),
                                               }));
}

TEST_F(SwatchRendering, TheFrameIsAlwaysTwoUnitsWideInThemeColour20AroundTheBounds) {
    // The frame's colour is the theme's, not the swatch's, nor another colour of the theme.
    ASSERT_NE(kitui::ui::GetColor(20), kSwatchColor);
    ASSERT_NE(kitui::ui::GetColor(20), kitui::ui::GetColor(19));
    ASSERT_NE(kitui::ui::GetColor(20), kitui::ui::GetColor(21));
    const std::pair<float, float> sizes[] = {{20, 20}, {40, 12}, {12, 40},
                                             {2, 20},  {20, 2},  {3, 3}};
    for (const bool shaders : {false, true}) {
        qzhost::ToolkitSettings::Get().SetShaderFills(shaders);
        for (const auto& [width, height] : sizes) {
            for (const double scale : {1.0, 2.0}) {
                const RecordedSwatch drawn = DrawRecorded(width, height, scale);
                ASSERT_EQ(drawn.fills_and_strokes.size(), 3u);
                const DrawingCall& frame = drawn.fills_and_strokes.back();
                EXPECT_EQ(frame.kind, DrawingCall::Kind::kStroke);
                EXPECT_EQ(frame.pen_width, 2.0f);
                EXPECT_EQ(frame.color, kitui::ui::GetColor(20));
                EXPECT_EQ(frame.path,
                          (std::vector<RecordedPathElement>{
                              {RecordedPathElement::Kind::kRect, {}, {0, 0, width, height}}}))
                    << width << "x" << height << " at " << scale
                    << (shaders ? " with shaders" : "");
            }
        }
    }
}

TEST_F(SwatchRendering, TheSwatchDrawsInABracketOfItsOwnClippedToItsBoundsWithoutAntialiasing) {
    const RecordedSwatch drawn = DrawRecorded(20, 12);
    std::vector<DrawingCall::Kind> kinds;
    for (const DrawingCall& call : drawn.calls) {
        kinds.push_back(call.kind);
    }
    using Kind = DrawingCall::Kind;
    EXPECT_EQ(kinds, (std::vector<Kind>{Kind::kBeginDrawing, Kind::kClipToRect,
                                        Kind::kSetAntialiasing, Kind::kFillWithBrush,
                                        Kind::kFillWithBrush, Kind::kStroke, Kind::kEndDrawing}));
    ASSERT_EQ(drawn.calls.size(), 7u);
    EXPECT_EQ(drawn.calls[1].rect, (kitui::ui::RectT<float>{0, 0, 20, 12}));
    EXPECT_EQ(drawn.calls[2].antialiasing, 0);
}

TEST_F(SwatchRendering, WhatTheRecorderRecordsIsDrawnOnTheCanvasToo) {
    const RecordedSwatch drawn = DrawRecorded(20, 20);
    const Rgba8 colour = ToRgba8(kSwatchColor);
    for (double x : {3.5, 9.5, 10.5, 16.5}) {
        EXPECT_TRUE(Near(At(drawn.image, drawn.box, x, 10.5), colour)) << x;
    }
    EXPECT_TRUE(Near(At(drawn.image, drawn.box, 0.5, 10.5), Frame()));
    EXPECT_TRUE(Near(At(drawn.image, drawn.box, 19.5, 10.5), Frame()));
    // Nothing outside the swatch.
    EXPECT_EQ(At(drawn.image, drawn.box, -0.5, 10.5).a, 0);
}

TEST_F(SwatchRendering, ThePanelDrawsTheSwatchInItsPlaceBesideTheValues) {
    Choose(kBpc8Command);
    ASSERT_EQ(Deliver(Pixel(1, 1.0f, 0.6f, 0.2f)), 0);
    const Box box = SwatchInPanel();
    const kitui::ui::RectT<float> local = Panel()->UI_GetLocalRectF();
    qzhost::ImageCanvas canvas(static_cast<int>(std::ceil(local.width)),
                               static_cast<int>(std::ceil(local.height)), 1.0);
    qzhost::RecordingInkwell recorder(canvas.GetInkwell());
    Panel()->UI_Draw(&recorder.GetInkwell());

    // The two halves in the swatch's colour, moved to where the swatch lies in the panel.
    int halves = 0;
    for (const DrawingCall& call : recorder.FillsAndStrokes()) {
        if (call.kind == DrawingCall::Kind::kFillWithBrush && call.color == Swatch().color) {
            ++halves;
            EXPECT_EQ(call.transform.X0(), box.x);
            EXPECT_EQ(call.transform.Y0(), box.y);
        }
    }
    EXPECT_EQ(halves, 2);
    // The values are drawn as text.
    std::vector<std::string> texts;
    for (const DrawingCall& call : recorder.Calls()) {
        if (call.kind == DrawingCall::Kind::kDrawText) {
            texts.push_back(call.text);
        }
    }
    EXPECT_EQ(Values(), (std::array<std::string, 4>{"255", "153", "51", "255"}));
    for (const std::string& value : Values()) {
        EXPECT_NE(std::find(texts.begin(), texts.end(), value), texts.end()) << value;
    }
    // Where the swatch lies, the canvas shows its colour.
    EXPECT_TRUE(Near(At(canvas.Snapshot(), box, box.width / 2, box.height / 2), kOrange));
}

// A monitor profile with the sRGB primaries and white point and a linear response: a
// middle grey of the working space shows darker on it.
std::filesystem::path WriteLinearMonitorProfile() {
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() /
        ("infopal-linear-monitor-" + std::to_string(::getpid()) + ".icc");
    cmsCIExyY white{0.3127, 0.3290, 1.0};
    cmsCIExyYTRIPLE primaries{{0.64, 0.33, 1.0}, {0.30, 0.60, 1.0}, {0.15, 0.06, 1.0}};
    cmsToneCurve* linear = cmsBuildGamma(nullptr, 1.0);
    cmsToneCurve* curves[3] = {linear, linear, linear};
    cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    cmsFreeToneCurve(linear);
    EXPECT_NE(profile, nullptr);
    EXPECT_TRUE(cmsSaveProfileToFile(profile, path.c_str()));
    cmsCloseProfile(profile);
    return path;
}

TEST_F(SwatchRendering, AMonitorProfileChangesTheSwatchButNotTheNumbers) {
    Choose(kBpc8Command);
    const PF_PixelFloat grey = Pixel(1, 0.5f, 0.5f, 0.5f);
    ASSERT_EQ(Deliver(grey), 0);
    const auto plain = Swatch().color;
    const std::array<std::string, 4> plain_values = Values();
    EXPECT_EQ(plain_values, (std::array<std::string, 4>{"128", "128", "128", "255"}));
    EXPECT_FLOAT_EQ(plain.r, 0.5f);

    const std::filesystem::path profile = WriteLinearMonitorProfile();
    qzhost::SetMonitorProfile(profile);
    ASSERT_EQ(Deliver(grey), 0);
    const auto shown = Swatch().color;
    // sRGB 0.5 is about 0.214 in linear light.
    EXPECT_NEAR(shown.r, 0.214f, 0.01f);
    EXPECT_NEAR(shown.g, 0.214f, 0.01f);
    EXPECT_NEAR(shown.b, 0.214f, 0.01f);
    EXPECT_EQ(shown.a, 1.0f);
    EXPECT_EQ(Values(), plain_values);
    PF_PixelFloat back{-1, -1, -1, -1};
    ASSERT_EQ(Suite().GetPixel(&back), 0);
    EXPECT_EQ(back.red, 0.5f); // slot 3 gives the untransformed pixel

    qzhost::SetMonitorProfile(std::nullopt);
    std::filesystem::remove(profile);
}

} // namespace
} // namespace pixel_test
