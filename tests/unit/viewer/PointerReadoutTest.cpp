// Moving the pointer over the composition: the Info panel shows the pixel under it, at
// every zoom, and that pixel is the one drawn under the pointer, also where the
// composition's pixels are drawn wider or taller than square.
#include <cmath>
#include <cstdio>

#include <QDoubleSpinBox>

#include <OpenImageIO/imageio.h>

#include "ReferenceComposite.h"
#include "ViewerHarness.h"
#include "canvas/DisplayImage.h"

namespace qzviewtest {
namespace {

class PointerReadoutTest : public ViewerHarness {};

/// The pixel of a sample as floats (alpha 1 when it has none), read with OpenImageIO's
/// image reader on its own.
std::array<float, 4> SamplePixel(const char* name, int x, int y) {
    auto input = OIIO::ImageInput::open(Sample(name));
    EXPECT_TRUE(input) << OIIO::geterror();
    const OIIO::ImageSpec header = input->spec_dimensions(0);
    const int channels = input->spec_dimensions(0).nchannels;
    std::vector<float> pixels(static_cast<std::size_t>(header.width) * header.height * channels);
    EXPECT_TRUE(input->read_image(0, 0, 0, channels, OIIO::TypeDesc::FLOAT, pixels.data()));
    std::array<float, 4> pixel{0, 0, 0, 1};
    const std::size_t at = (static_cast<std::size_t>(y) * header.width + x) * channels;
    for (int c = 0; c < std::min(4, channels); ++c) {
        pixel[static_cast<std::size_t>(c)] = pixels[at + static_cast<std::size_t>(c)];
    }
    return pixel;
}

/// The chart's pixel in 8-bit codes.
std::array<int, 4> ChartPixel(int x, int y) {
    const std::array<float, 4> values = SamplePixel("chart.png", x, y);
    std::array<int, 4> codes{};
    for (std::size_t c = 0; c < 4; ++c) {
        codes[c] = static_cast<int>(std::lround(values[c] * 255.0f));
    }
    return codes;
}

TEST_F(PointerReadoutTest, PanelShowsThePixelUnderThePointerAtEveryZoom) {
    Start();
    // No layer selected: nothing is drawn over the composition.
    Window().Editor().Select(0);
    for (double zoom : {0.5, 1.0, 2.0, 3.0, 8.0}) {
        Canvas().ZoomTo(zoom);
        ASSERT_TRUE(SettleExact());
        const int ox = Canvas().Mapping().OriginX();
        const int oy = Canvas().Mapping().OriginY();
        ASSERT_EQ(Canvas().Mapping().Zoom(), zoom);
        const QImage drawn = Canvas().grab().toImage();
        // Screen pixels spread over the canvas; those that show the composition count.
        const int w = Canvas().width();
        const int h = Canvas().height();
        int checked = 0;
        for (const auto& [sx, sy] : std::vector<std::pair<int, int>>{{w / 2, h / 2},
                                                                     {w / 3, h / 4},
                                                                     {w / 2 + 37, h / 2 - 29},
                                                                     {ox + 1, oy + 1},
                                                                     {w / 2 - 53, h / 2 + 41}}) {
            const int x = static_cast<int>(std::floor((sx - ox + 0.5) / zoom));
            const int y = static_cast<int>(std::floor((sy - oy + 0.5) / zoom));
            if (x < 0 || y < 0 || x >= 240 || y >= 160 || sx < 0 || sy < 0 || sx >= w || sy >= h) {
                continue;
            }
            ++checked;
            MoveTo(sx, sy);
            const auto snapshot = Snapshot();
            const std::array<int, 4> codes = ChartPixel(x, y);
            SCOPED_TRACE("zoom " + std::to_string(zoom) + " pixel " + std::to_string(x) + "," +
                         std::to_string(y));
            EXPECT_EQ(Text(snapshot, 7), std::to_string(codes[0]));
            EXPECT_EQ(Text(snapshot, 8), std::to_string(codes[1]));
            EXPECT_EQ(Text(snapshot, 9), std::to_string(codes[2]));
            EXPECT_EQ(Text(snapshot, 10), std::to_string(codes[3]));
            EXPECT_EQ(Text(snapshot, 15), std::to_string(x));
            EXPECT_EQ(Text(snapshot, 16), std::to_string(y));
            // The chart is opaque and 8-bit: the canvas shows its codes as they are.
            const QRgb shown = drawn.pixel(sx, sy);
            EXPECT_EQ(qRed(shown), codes[0]);
            EXPECT_EQ(qGreen(shown), codes[1]);
            EXPECT_EQ(qBlue(shown), codes[2]);
        }
        EXPECT_GE(checked, 3) << "zoom " << zoom;
    }
}

/// Writes a 128 x 64 half-float EXR of opaque 8 x 8 blocks, each of its own colour (red
/// the block's column / 16, green its row / 8, blue alternating), whose header says that
/// its pixels are `aspect` times as wide as tall. Returns its path.
std::string WriteBlocksExr(const std::filesystem::path& folder, float aspect) {
    const std::string path = (folder / ("blocks-" + std::to_string(aspect) + ".exr")).string();
    auto header = Rgba(128, 64);
    header.set_format(OIIO::TypeDesc::HALF);
    header.attribute("PixelAspectRatio", aspect);
    std::vector<float> pixels;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 128; ++x) {
            pixels.insert(pixels.end(), {(x / 8) / 16.0f, (y / 8) / 8.0f,
                                         (x / 8 + y / 8) % 2 == 0 ? 0.25f : 0.75f, 1.0f});
        }
    }
    auto output = OIIO::ImageOutput::create(path);
    EXPECT_TRUE(output) << OIIO::geterror();
    EXPECT_TRUE(output->open(path, header));
    EXPECT_TRUE(output->write_image(OIIO::TypeDesc::FLOAT, pixels.data()));
    EXPECT_TRUE(output->close());
    return path;
}

TEST_F(PointerReadoutTest, OnAnAnamorphicFileThePanelReadsThePixelDrawnUnderThePointer) {
    for (const float aspect : {2.0f, 0.5f}) {
        const std::string path = WriteBlocksExr(folder_.Path(), aspect);
        qzview::LayerImage image = qzview::ReadLayerImage(path);
        EXPECT_EQ(image.pixelAspect, aspect) << "the file's pixel aspect is read";
        StartWith({std::move(image)});
        ASSERT_EQ(Window().Comp().PixelAspect(), aspect);
        Window().Editor().Select(0);
        // Below zoom 1 a screen pixel shows the mean of the pixels it covers, all of one
        // block here.
        for (const double zoom : {0.25, 0.5, 1.0, 2.0, 3.0}) {
            Canvas().ZoomTo(zoom);
            ASSERT_TRUE(SettleExact());
            ASSERT_EQ(Canvas().Mapping().Zoom(), zoom);
            const int ox = Canvas().Mapping().OriginX();
            const int oy = Canvas().Mapping().OriginY();
            const QImage drawn = Canvas().grab().toImage();
            const qzview::DisplaySettings display = Canvas().Scene().display;
            const int w = Canvas().width();
            const int h = Canvas().height();
            int checked = 0;
            // Screen pixels spread over the canvas and near the composition's corner; those
            // that show the composition count.
            for (const auto& [sx, sy] : std::vector<std::pair<int, int>>{{ox + 1, oy + 1},
                                                                         {ox + 5, oy + 3},
                                                                         {ox + 9, oy + 10},
                                                                         {ox + 14, oy + 6},
                                                                         {ox + 22, oy + 13},
                                                                         {w / 2, h / 2},
                                                                         {w / 4, h / 2 + 7},
                                                                         {3 * w / 4, h / 2 - 11},
                                                                         {w / 3, h / 4},
                                                                         {w / 2 + 37, h / 2 - 29},
                                                                         {w / 2 - 53, h / 2 + 41},
                                                                         {2 * w / 3 + 11, h / 3}}) {
                // A composition pixel is aspect x zoom screen pixels wide, zoom tall.
                const int x = static_cast<int>(std::floor((sx - ox + 0.5) / (aspect * zoom)));
                const int y = static_cast<int>(std::floor((sy - oy + 0.5) / zoom));
                if (x < 0 || y < 0 || x >= 128 || y >= 64 || sx < 0 || sy < 0 || sx >= w ||
                    sy >= h) {
                    continue;
                }
                ++checked;
                SCOPED_TRACE("aspect " + std::to_string(aspect) + " zoom " + std::to_string(zoom) +
                             " pixel " + std::to_string(x) + "," + std::to_string(y));
                MoveTo(sx, sy);
                const auto snapshot = Snapshot();
                const std::array<float, 4> pixel{(x / 8) / 16.0f, (y / 8) / 8.0f,
                                                 (x / 8 + y / 8) % 2 == 0 ? 0.25f : 0.75f, 1.0f};
                EXPECT_EQ(Text(snapshot, 15), std::to_string(x));
                EXPECT_EQ(Text(snapshot, 16), std::to_string(y));
                EXPECT_EQ(Text(snapshot, 7), FourDecimals(pixel[0]));
                EXPECT_EQ(Text(snapshot, 8), FourDecimals(pixel[1]));
                EXPECT_EQ(Text(snapshot, 9), FourDecimals(pixel[2]));
                EXPECT_EQ(Text(snapshot, 10), FourDecimals(pixel[3]));
                const QRgb shown = drawn.pixel(sx, sy);
                EXPECT_EQ(qRed(shown), qzview::DisplayLevel(pixel[0], display));
                EXPECT_EQ(qGreen(shown), qzview::DisplayLevel(pixel[1], display));
                EXPECT_EQ(qBlue(shown), qzview::DisplayLevel(pixel[2], display));
            }
            EXPECT_GE(checked, 4) << "aspect " << aspect << " zoom " << zoom;
        }
    }
}

TEST_F(PointerReadoutTest, OriginGivesRelativePositions) {
    Start();
    Canvas().ZoomTo(1.0);
    Settle();
    const int ox = Canvas().Mapping().OriginX();
    const int oy = Canvas().Mapping().OriginY();
    Window().SetOrigin(qzview::CompositionPoint{10.5, 20.5});
    MoveTo(ox + 50, oy + 70);
    const auto snapshot = Snapshot();
    EXPECT_EQ(Text(snapshot, 15), "50");
    EXPECT_EQ(Text(snapshot, 16), "70");
    EXPECT_TRUE(Visible(snapshot, 17));
    EXPECT_EQ(Text(snapshot, 17), "40");
    EXPECT_EQ(Text(snapshot, 18), "50");
    Window().SetOrigin(std::nullopt);
    Settle();
    EXPECT_FALSE(Visible(Snapshot(), 17));
}

TEST_F(PointerReadoutTest, OutsideTheCompositionIsTransparentBlack) {
    Start();
    Canvas().ZoomTo(1.0);
    Settle();
    MoveTo(Canvas().Mapping().OriginX() - 5, Canvas().Mapping().OriginY() + 10);
    const auto snapshot = Snapshot();
    // A fully transparent pixel shows its alpha and no colour.
    EXPECT_EQ(Text(snapshot, 7), "");
    EXPECT_EQ(Text(snapshot, 9), "");
    EXPECT_EQ(Text(snapshot, 10), "0");
    EXPECT_EQ(Text(snapshot, 15), "-5");
    // Over no image the host writes only its tool hint: with the image selected, beside it
    // only its corners can be dragged.
    EXPECT_EQ(Text(snapshot, 20), "Drag a corner to scale");
    EXPECT_EQ(Text(snapshot, 21), "");
}

TEST_F(PointerReadoutTest, FloatProjectShowsWorkingValuesNotDisplayedOnes) {
    Start({"chart.exr"});
    EXPECT_EQ(Window().ProjectDepth(), 2);
    Canvas().ZoomTo(1.0);
    Settle();
    MoveTo(Canvas().Mapping().OriginX() + 5, Canvas().Mapping().OriginY() + 5);
    const auto before = Snapshot();
    // The exposure changes what the canvas shows, never what the panel reads.
    Window().findChild<QDoubleSpinBox*>("exposure")->setValue(3.0);
    MoveTo(Canvas().Mapping().OriginX() + 5, Canvas().Mapping().OriginY() + 5);
    const auto after = Snapshot();
    for (int id = 7; id <= 10; ++id) {
        EXPECT_EQ(Text(before, id), Text(after, id));
    }
    const std::array<float, 4> values = SamplePixel("chart.exr", 5, 5);
    // The float notation of the automatic mode shows the value with four decimals.
    char expected[32];
    std::snprintf(expected, sizeof expected, "%.4f", static_cast<double>(values[0]));
    EXPECT_EQ(Text(after, 7), expected);
}

TEST_F(PointerReadoutTest, ProjectMenuDepthDrivesTheAutomaticNotation) {
    Start();
    Canvas().ZoomTo(1.0);
    Settle();
    MoveTo(Canvas().Mapping().OriginX() + 5, Canvas().Mapping().OriginY() + 5);
    EXPECT_EQ(Text(Snapshot(), 7), "255");
    Window().SetProjectDepth(1);
    Settle();
    EXPECT_EQ(Text(Snapshot(), 7), "32768");
}

} // namespace
} // namespace qzviewtest
