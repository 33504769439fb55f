// The drawing library on Cairo image surfaces: fills, shaders, strokes, clip, brackets,
// transform and pictures, checked on the pixels.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "ToolkitTestSupport.h"
#include "kitui/inkwell/Drawing.h"
#include "kitui/inkwell/Inkwell.h"
#include "kitui/ui/UI_Node.h"
#include "qzhost/ImageCanvas.h"

namespace {

using kitui::inkwell::ColorRGBA;
using kitui::inkwell::Inkwell;
using qzhost::ImageCanvas;
using qzhost::Rgba8;
using qztest::Describe;
using qztest::Near;

constexpr ColorRGBA kRed{1.0f, 0.0f, 0.0f, 1.0f};
constexpr ColorRGBA kBlue{0.0f, 0.0f, 1.0f, 1.0f};
constexpr Rgba8 kRed8{255, 0, 0, 255};
constexpr Rgba8 kBlue8{0, 0, 255, 255};
constexpr Rgba8 kClear{0, 0, 0, 0};

class CairoInkwellTest : public qztest::ToolkitFixture {};

kitui::inkwell::PathRef RectPath(Inkwell& ink, float x, float y, float w, float h) {
    kitui::inkwell::PathRef path = ink.GetSupplier()->NewPath();
    path->AddRect(kitui::ui::RectT<float>{x, y, w, h});
    return path;
}

TEST_F(CairoInkwellTest, BrushFillColoursThePixelsInsideThePathOnly) {
    ImageCanvas canvas(20, 20, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    ink.GetSurface()->FillPath(RectPath(ink, 5, 5, 10, 10), ink.GetSupplier()->NewBrush(kRed),
                               kitui::inkwell::kFillRuleWinding);
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_EQ(image.At(5, 5), kRed8);
    EXPECT_EQ(image.At(14, 14), kRed8);
    EXPECT_EQ(image.At(4, 10), kClear);
    EXPECT_EQ(image.At(15, 10), kClear);
    EXPECT_EQ(image.At(10, 15), kClear);
}

TEST_F(CairoInkwellTest, EvenOddFillLeavesTheInnerFigureEmptyAndWindingFillsIt) {
    for (int rule : {kitui::inkwell::kFillRuleEvenOdd, kitui::inkwell::kFillRuleWinding}) {
        ImageCanvas canvas(20, 20, 1.0);
        Inkwell& ink = canvas.GetInkwell();
        kitui::inkwell::PathRef path = RectPath(ink, 0, 0, 20, 20);
        path->AddRect(kitui::ui::RectT<float>{5, 5, 10, 10});
        ink.GetSurface()->FillPath(path, ink.GetSupplier()->NewBrush(kBlue), rule);
        const qzhost::RenderedImage image = canvas.Snapshot();
        EXPECT_EQ(image.At(2, 2), kBlue8);
        EXPECT_EQ(image.At(10, 10), rule == kitui::inkwell::kFillRuleEvenOdd ? kClear : kBlue8);
    }
}

TEST_F(CairoInkwellTest, LinearShaderRunsFromStartColourToEndColour) {
    ImageCanvas canvas(100, 10, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    ink.GetSurface()->FillPath(RectPath(ink, 0, 0, 100, 10),
                               ink.GetSupplier()->NewLinearShader({0, 0}, {100, 0}, kRed, kBlue),
                               kitui::inkwell::kFillRuleWinding);
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_TRUE(Near(image.At(0, 5), kRed8, 4)) << Describe(image.At(0, 5));
    EXPECT_TRUE(Near(image.At(99, 5), kBlue8, 4)) << Describe(image.At(99, 5));
    const Rgba8 middle = image.At(50, 5);
    EXPECT_TRUE(Near(middle, Rgba8{127, 0, 127, 255}, 4)) << Describe(middle);
}

TEST_F(CairoInkwellTest, LinearShaderKeepsTheEndColoursBeyondItsEnds) {
    ImageCanvas canvas(30, 4, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    ink.GetSurface()->FillPath(RectPath(ink, 0, 0, 30, 4),
                               ink.GetSupplier()->NewLinearShader({10, 0}, {20, 0}, kRed, kBlue),
                               kitui::inkwell::kFillRuleWinding);
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_EQ(image.At(2, 1), kRed8);
    EXPECT_EQ(image.At(27, 1), kBlue8);
}

TEST_F(CairoInkwellTest, ShaderWithOneColourFillsSolid) {
    ImageCanvas canvas(20, 20, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    const ColorRGBA c{0.2f, 0.6f, 0.4f, 1.0f};
    ink.GetSurface()->FillPath(RectPath(ink, 0, 0, 20, 10),
                               ink.GetSupplier()->NewLinearShader({0, 0}, {0, 10}, c, c),
                               kitui::inkwell::kFillRuleWinding);
    const qzhost::RenderedImage image = canvas.Snapshot();
    for (int y : {0, 5, 9}) {
        EXPECT_TRUE(Near(image.At(10, y), qztest::ToRgba8(c), 1)) << Describe(image.At(10, y));
    }
    EXPECT_EQ(image.At(10, 10), kClear);
}

TEST_F(CairoInkwellTest, StrokeIsCentredOnThePathWithThePenWidth) {
    ImageCanvas canvas(20, 20, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    kitui::inkwell::PathRef line = ink.GetSupplier()->NewPath();
    line->MoveTo({2, 10});
    line->LineTo({18, 10});
    ink.GetSurface()->StrokePath(line, ink.GetSupplier()->NewPen(kRed, 2.0f));
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_EQ(image.At(10, 9), kRed8);
    EXPECT_EQ(image.At(10, 10), kRed8);
    EXPECT_EQ(image.At(10, 8), kClear);
    EXPECT_EQ(image.At(10, 11), kClear);
    EXPECT_EQ(image.At(1, 9), kClear);
    EXPECT_EQ(image.At(18, 9), kClear);
}

TEST_F(CairoInkwellTest, FrameRectStrokesInsideTheRectangle) {
    ImageCanvas canvas(20, 20, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    kitui::inkwell::FrameRect(ink, {2, 2, 10, 10}, kBlue, 2.0f);
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_EQ(image.At(2, 2), kBlue8);
    EXPECT_EQ(image.At(3, 7), kBlue8);
    EXPECT_EQ(image.At(11, 11), kBlue8);
    EXPECT_EQ(image.At(4, 4), kClear);
    EXPECT_EQ(image.At(1, 7), kClear);
    EXPECT_EQ(image.At(12, 7), kClear);
}

TEST_F(CairoInkwellTest, AntialiasingOffPutsEdgesOnWholePixels) {
    for (int on : {1, 0}) {
        ImageCanvas canvas(10, 10, 1.0);
        Inkwell& ink = canvas.GetInkwell();
        ink.GetSurface()->SetAntialiasing(on);
        EXPECT_EQ(ink.GetSurface()->GetAntialiasing(), on);
        ink.GetSurface()->FillPath(RectPath(ink, 2.5f, 2.5f, 5, 5),
                                   ink.GetSupplier()->NewBrush(kRed),
                                   kitui::inkwell::kFillRuleWinding);
        const qzhost::RenderedImage image = canvas.Snapshot();
        const std::uint8_t edge = image.At(2, 5).a;
        if (on != 0) {
            EXPECT_GT(edge, 0);
            EXPECT_LT(edge, 255);
        } else {
            EXPECT_TRUE(edge == 0 || edge == 255) << int(edge);
        }
    }
}

TEST_F(CairoInkwellTest, DrawingBracketRestoresTransformClipAndAntialiasing) {
    ImageCanvas canvas(20, 20, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    kitui::inkwell::SurfaceInterface& surface = *ink.GetSurface();
    const kitui::inkwell::Transform before = surface.GetTransform();
    surface.BeginDrawing();
    surface.Translate(5, 6);
    surface.SetAntialiasing(0);
    surface.ClipToRect({0, 0, 2, 2});
    EXPECT_EQ(surface.GetTransform().X0(), 5.0);
    EXPECT_EQ(surface.GetTransform().Y0(), 6.0);
    surface.EndDrawing();
    EXPECT_EQ(surface.GetTransform(), before);
    EXPECT_EQ(surface.GetAntialiasing(), 1);
    // The clip of the bracket is gone: a fill reaches the whole canvas again.
    kitui::inkwell::FillRect(ink, {0, 0, 20, 20}, kRed);
    EXPECT_EQ(canvas.Snapshot().At(15, 15), kRed8);
    // A close without an open changes nothing and breaks nothing.
    surface.EndDrawing();
    kitui::inkwell::FillRect(ink, {0, 0, 20, 20}, kBlue);
    EXPECT_EQ(canvas.Snapshot().At(15, 15), kBlue8);
}

TEST_F(CairoInkwellTest, ClipToRectLimitsWhatIsDrawn) {
    ImageCanvas canvas(20, 20, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    kitui::ui::UI_Node::UI_ClipToRect({4, 4, 6, 6}, &ink);
    kitui::inkwell::FillRect(ink, {0, 0, 20, 20}, kRed);
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_EQ(image.At(4, 4), kRed8);
    EXPECT_EQ(image.At(9, 9), kRed8);
    EXPECT_EQ(image.At(3, 4), kClear);
    EXPECT_EQ(image.At(10, 9), kClear);
}

TEST_F(CairoInkwellTest, TransformQueryReflectsTheScaleOfTheCanvas) {
    ImageCanvas one(10, 10, 1.0);
    EXPECT_EQ(one.GetInkwell().GetSurface()->GetTransform(), kitui::inkwell::Transform{});

    ImageCanvas two(20, 20, 2.0);
    kitui::inkwell::SurfaceInterface& surface = *two.GetInkwell().GetSurface();
    const kitui::inkwell::Transform t = surface.GetTransform();
    EXPECT_EQ(t[0], 2.0);
    EXPECT_EQ(t[1], 0.0);
    EXPECT_EQ(t[2], 0.0);
    EXPECT_EQ(t[3], 2.0);
    surface.Translate(3, 4);
    EXPECT_EQ(surface.GetTransform().X0(), 6.0);
    EXPECT_EQ(surface.GetTransform().Y0(), 8.0);
}

TEST_F(CairoInkwellTest, UserUnitsAreScaledToPixels) {
    ImageCanvas canvas(20, 20, 2.0);
    Inkwell& ink = canvas.GetInkwell();
    kitui::inkwell::FillRect(ink, {1, 1, 2, 2}, kRed);
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_EQ(image.At(2, 2), kRed8);
    EXPECT_EQ(image.At(5, 5), kRed8);
    EXPECT_EQ(image.At(1, 2), kClear);
    EXPECT_EQ(image.At(6, 5), kClear);
}

TEST_F(CairoInkwellTest, EmptyHandlesDrawNothing) {
    ImageCanvas canvas(10, 10, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    kitui::inkwell::SurfaceInterface& surface = *ink.GetSurface();
    surface.FillPath(RectPath(ink, 0, 0, 10, 10), kitui::inkwell::BrushRef(), 1);
    surface.FillPath(RectPath(ink, 0, 0, 10, 10), kitui::inkwell::ShaderRef(), 1);
    surface.StrokePath(RectPath(ink, 0, 0, 10, 10), kitui::inkwell::PenRef());
    surface.FillPath(kitui::inkwell::PathRef(), ink.GetSupplier()->NewBrush(kRed), 1);
    surface.DrawPicture(kitui::inkwell::PictureRef(), {0, 0});
    EXPECT_EQ(qztest::CountDrawn(canvas.Snapshot(), {0, 0, 10, 10}), 0);
}

TEST_F(CairoInkwellTest, CreatedObjectsKeepWhatTheyWereMadeWith) {
    ImageCanvas canvas(4, 4, 1.0);
    kitui::inkwell::SupplierInterface& supplier = *canvas.GetInkwell().GetSupplier();
    const kitui::inkwell::PenRef pen = supplier.NewPen(kRed, 2.5f);
    EXPECT_EQ(pen->GetColor(), kRed);
    EXPECT_EQ(pen->GetWidth(), 2.5f);
    EXPECT_EQ(supplier.NewBrush(kBlue)->GetColor(), kBlue);
    const kitui::inkwell::ShaderRef shader = supplier.NewLinearShader({1, 2}, {3, 4}, kRed, kBlue);
    EXPECT_EQ(shader->GetStart(), (kitui::ui::PointT<float>{1, 2}));
    EXPECT_EQ(shader->GetEnd(), (kitui::ui::PointT<float>{3, 4}));
    EXPECT_EQ(shader->GetStartColor(), kRed);
    EXPECT_EQ(shader->GetEndColor(), kBlue);
    const kitui::inkwell::PathRef path = supplier.NewPath();
    EXPECT_TRUE(path->IsEmpty());
    path->MoveTo({0, 0});
    EXPECT_FALSE(path->IsEmpty());
    // Handles are shared and counted: a copy keeps the object.
    kitui::inkwell::PenRef copy = pen;
    EXPECT_EQ(pen.use_count(), 2);
}

TEST_F(CairoInkwellTest, ShaderFillQueryFollowsTheToolkitSetting) {
    ImageCanvas canvas(4, 4, 1.0);
    kitui::inkwell::SupplierInterface& supplier = *canvas.GetInkwell().GetSupplier();
    EXPECT_FALSE(supplier.UseShadersForFills());
    qzhost::ToolkitSettings::Get().SetShaderFills(true);
    EXPECT_TRUE(supplier.UseShadersForFills());
    qzhost::ToolkitSettings::Get().Reset();
    EXPECT_FALSE(supplier.UseShadersForFills());
}

TEST_F(CairoInkwellTest, PictureIsDrawnAtItsPlaceAndItsUserSize) {
    // A 4 x 2 pixel picture for density 2 covers 2 x 1 user units.
    std::vector<std::uint32_t> pixels(8, 0xFF00FF00u);
    ImageCanvas canvas(10, 10, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    const kitui::inkwell::PictureRef picture =
        ink.GetSupplier()->NewPicture(4, 2, 2.0f, pixels.data(), 4);
    EXPECT_EQ(picture->GetWidth(), 2.0f);
    EXPECT_EQ(picture->GetHeight(), 1.0f);
    EXPECT_EQ(picture->GetPixel(3, 1), 0xFF00FF00u);
    ink.GetSurface()->DrawPicture(picture, {3, 4});
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_EQ(image.At(3, 4), (Rgba8{0, 255, 0, 255}));
    EXPECT_EQ(image.At(4, 4), (Rgba8{0, 255, 0, 255}));
    EXPECT_EQ(image.At(5, 4), kClear);
    EXPECT_EQ(image.At(3, 5), kClear);
}

TEST_F(CairoInkwellTest, PictureKeepsTranslucentPixels) {
    const std::uint32_t half = 0x80FF0000u; // red at alpha 128
    ImageCanvas canvas(2, 2, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    ink.GetSurface()->DrawPicture(ink.GetSupplier()->NewPicture(1, 1, 1.0f, &half, 1), {0, 0});
    const Rgba8 p = canvas.Snapshot().At(0, 0);
    EXPECT_TRUE(Near(p, Rgba8{255, 0, 0, 128}, 2)) << Describe(p);
}

TEST_F(CairoInkwellTest, TextIsSetInsideItsBoxInItsColour) {
    ImageCanvas canvas(100, 20, 1.0);
    Inkwell& ink = canvas.GetInkwell();
    ink.GetSurface()->DrawText(qztest::U16(u"Hello"), {10, 3, 80, 14}, kRed, {});
    const qzhost::RenderedImage image = canvas.Snapshot();
    EXPECT_GT(qztest::CountDrawn(image, {10, 3, 80, 14}), 20);
    EXPECT_EQ(qztest::CountDrawn(image, {10, 3, 80, 14}, false), 0);
    const Rgba8 ink8 = qztest::MostOpaque(image, {10, 3, 80, 14});
    EXPECT_GT(ink8.r, 200) << Describe(ink8);
    EXPECT_LT(ink8.g, 40) << Describe(ink8);
    EXPECT_GT(ink.GetSurface()->MeasureText(qztest::U16(u"Hello"), {}), 20.0f);
    EXPECT_EQ(ink.GetSurface()->MeasureText(qztest::U16(u""), {}), 0.0f);
}

TEST_F(CairoInkwellTest, ImageIsWrittenAsPng) {
    ImageCanvas canvas(8, 8, 1.0);
    kitui::inkwell::FillRect(canvas.GetInkwell(), {0, 0, 8, 8}, kRed);
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() /
        ("qz_toolkit_png_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
         "_" + std::to_string(reinterpret_cast<std::uintptr_t>(&canvas)) + ".png");
    canvas.Snapshot().WritePng(path.string());
    std::ifstream in(path, std::ios::binary);
    char signature[8] = {};
    in.read(signature, 8);
    EXPECT_EQ(std::string(signature + 1, 3), "PNG");
    in.close();
    std::filesystem::remove(path);
    EXPECT_THROW(canvas.Snapshot().WritePng("/nonexistent-dir/x/y.png"), std::runtime_error);
}

TEST_F(CairoInkwellTest, CanvasRefusesImpossibleSizes) {
    EXPECT_THROW(ImageCanvas(0, 10, 1.0), std::invalid_argument);
    EXPECT_THROW(ImageCanvas(10, 10, 0.0), std::invalid_argument);
}

} // namespace
