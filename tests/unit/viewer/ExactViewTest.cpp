// The canvas at rest shows the exact composite: at zoom 1 and above every screen pixel is
// the display colour of the composition pixel that the pointer reads there, over the
// checkerboard; below zoom 1 each screen pixel is the box filter of the composition pixels
// it covers. A composition of pixels wider or taller than square is drawn so, a pixel its
// aspect x zoom screen pixels wide and zoom tall, in the exact view and in the preview. A
// render that a newer change made out of date never reaches the canvas, and the status bar
// says "Preview" exactly while the canvas shows one.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <sstream>
#include <thread>

#include <QLabel>
#include <QSignalSpy>

#include "ReferenceComposite.h"
#include "ViewerHarness.h"
#include "canvas/Checkerboard.h"
#include "canvas/DisplayImage.h"
#include "canvas/ViewRefiner.h"

namespace qzviewtest {
namespace {

using qzview::Property;
using qzview::WorkingPixel;

/// The display colour 0xAARRGGBB of a working pixel: each colour channel at its display
/// level, alpha times 255 rounded to the nearest code.
std::uint32_t DisplayColour(const WorkingPixel& p, const qzview::DisplaySettings& settings) {
    const float alpha = std::isnan(p[3]) ? 0.0f : std::clamp(p[3], 0.0f, 1.0f);
    const auto a = static_cast<std::uint32_t>(std::lround(alpha * 255.0f));
    return a << 24 | std::uint32_t{qzview::DisplayLevel(p[0], settings)} << 16 |
           std::uint32_t{qzview::DisplayLevel(p[1], settings)} << 8 |
           qzview::DisplayLevel(p[2], settings);
}

std::string Hex(std::uint32_t colour) {
    std::ostringstream text;
    text << std::hex << colour;
    return text.str();
}

/// The screen pixels that a check looks at: a grid over the whole of a `width` x `height`
/// view, `step` apart, shifted on every row so that all columns' residues are covered.
template <typename Check>
void ForSpread(int width, int height, int step, const Check& check) {
    for (int y = 0; y < height; y += step) {
        for (int x = (y / step) % step; x < width; x += step) {
            check(x, y);
        }
    }
}

/// Compares `drawn` (a view of `composition` with its composition pixel 0,0 at screen
/// pixel `ox`, `oy`, each composition pixel `across` screen pixels wide and `down` tall,
/// both at least 1) with what the composite says it shows at a spread of screen pixels:
/// beyond the composition the dark grey, inside it the display colour of the pixel that
/// the composition computes for the screen pixel's centre, over the checkerboard. Returns
/// the pixels compared inside the composition.
int ExpectMagnifiedView(const QImage& drawn, const qzview::Composition& composition, int ox, int oy,
                        double across, double down, const qzview::DisplaySettings& settings,
                        int step, const std::string& what) {
    std::map<std::pair<int, int>, std::uint32_t> colours;
    int inside = 0;
    int wrong = 0;
    ForSpread(drawn.width(), drawn.height(), step, [&](int sx, int sy) {
        const int px = static_cast<int>(std::floor((sx - ox + 0.5) / across));
        const int py = static_cast<int>(std::floor((sy - oy + 0.5) / down));
        std::uint32_t want = qzview::kOutside;
        if (px >= 0 && py >= 0 && px < composition.Width() && py < composition.Height()) {
            ++inside;
            auto found = colours.find({px, py});
            if (found == colours.end()) {
                found = colours
                            .emplace(std::pair(px, py),
                                     DisplayColour(composition.PixelAt(px, py), settings))
                            .first;
            }
            want = qzview::OverBackground(found->second, qzview::Checker(sx, sy));
        }
        const std::uint32_t got = drawn.pixel(sx, sy);
        if (got != want && ++wrong <= 5) {
            ADD_FAILURE() << what << ": screen pixel " << sx << "," << sy << " (composition " << px
                          << "," << py << ") is " << Hex(got) << ", expected " << Hex(want);
        }
    });
    EXPECT_EQ(wrong, 0) << what;
    return inside;
}

class ExactViewTest : public ViewerHarness {
protected:
    /// The 8-bit chart at 72 % opacity, so that the checkerboard shows through, under a
    /// 150 x 90 float plate that is turned and placed off the pixel grid. No layer is
    /// selected, so that no outline is drawn over the composition.
    void StartTurnedOverChart() {
        Start({"chart.png"});
        ASSERT_EQ(Window().ProjectDepth(), 0);
        Window().AddImage(Plate("turned", 150, 90, 21));
        Settle();
        const int chart = Window().Comp().Layers().at(0).id;
        top_ = Window().Comp().Layers().at(1).id;
        Window().Editor().Type(chart, Property::Opacity, {72, 0, 0});
        Window().Editor().Type(top_, Property::Rotation, {33, 0, 0});
        Window().Editor().Type(top_, Property::Position, {131.25, 77.6, 0});
        Window().Editor().Select(0);
        Settle();
    }

    /// An 8-bit project shows the working values as they are.
    qzview::DisplaySettings EightBitDisplay() {
        const qzview::DisplaySettings settings{};
        EXPECT_FALSE(Canvas().Scene().display.linear);
        EXPECT_EQ(Canvas().Scene().display.exposure, 0.0);
        return settings;
    }

    /// The canvas at rest as a 32-bit image.
    QImage Grab() {
        QImage image = Canvas().grab().toImage().convertToFormat(QImage::Format_RGB32);
        EXPECT_EQ(image.size(), Canvas().size());
        return image;
    }

    int ExpectCanvasAtRest(const std::string& what, int step = 3) {
        const auto& mapping = Canvas().Mapping();
        return ExpectMagnifiedView(Grab(), Window().Comp(), mapping.OriginX(), mapping.OriginY(),
                                   mapping.Zoom(), mapping.Zoom(), EightBitDisplay(), step, what);
    }

    /// A 120 x 80 float plate of pixels `aspect` times as wide as tall (which the
    /// composition takes) under a 50 x 36 plate of square pixels that is turned and placed
    /// off the pixel grid. No layer is selected.
    void StartAnamorphic(double aspect) {
        qzview::LayerImage base = Plate("anamorphic", 120, 80, 51);
        base.pixelAspect = aspect;
        StartWith({base});
        ASSERT_EQ(Window().Comp().PixelAspect(), aspect);
        Window().AddImage(Plate("square", 50, 36, 52));
        Settle();
        top_ = Window().Comp().Layers().at(1).id;
        Window().Editor().Type(top_, Property::Rotation, {27, 0, 0});
        Window().Editor().Type(top_, Property::Position, {61.3, 38.6, 0});
        Window().Editor().Select(0);
        Settle();
    }

    /// Compares the canvas at rest (a float project's display) at every screen pixel of
    /// a spread with the composite, each composition pixel `aspect` x zoom screen pixels
    /// wide and zoom tall; returns the pixels compared inside the composition.
    int ExpectAnamorphicAtRest(double aspect, const std::string& what) {
        const auto& mapping = Canvas().Mapping();
        const double zoom = mapping.Zoom();
        return ExpectMagnifiedView(Grab(), Window().Comp(), mapping.OriginX(), mapping.OriginY(),
                                   aspect * zoom, zoom, Canvas().Scene().display, 2, what);
    }

    /// Checks that every screen pixel of the canvas at rest that lies over a whole block of
    /// `bw` x `bh` composition pixels (the composition is whole blocks, the first at the
    /// origin) is the mean of the block, and that the others are beyond the composition.
    /// Returns the blocks checked and how many of them were exactly equal.
    std::pair<int, int> ExpectBlockMeans(int bw, int bh, const qzview::DisplaySettings& display) {
        const QImage drawn = Grab();
        const int ox = Canvas().Mapping().OriginX();
        const int oy = Canvas().Mapping().OriginY();
        const qzview::Composition& composition = Window().Comp();
        EXPECT_EQ(composition.Width() % bw, 0);
        EXPECT_EQ(composition.Height() % bh, 0);
        const OIIO::ImageBuf premultiplied = Reference(composition, false);
        const float area = static_cast<float>(bw * bh);
        int blocks = 0;
        int off = 0;
        int exact = 0;
        for (int sy = 0; sy < drawn.height(); ++sy) {
            for (int sx = 0; sx < drawn.width(); ++sx) {
                const int bx = (sx - ox) * bw;
                const int by = (sy - oy) * bh;
                const std::uint32_t got = drawn.pixel(sx, sy);
                if (bx < 0 || by < 0 || bx >= composition.Width() || by >= composition.Height()) {
                    if (got != qzview::kOutside && ++off <= 5) {
                        ADD_FAILURE() << "screen pixel " << sx << "," << sy << " beyond the "
                                      << "composition is " << Hex(got);
                    }
                    continue;
                }
                ++blocks;
                // The block's mean in premultiplied values, divided by its mean alpha. The
                // viewer sums in doubles and these sums are floats, so a mean that lies
                // within a rounding error of the middle between two display levels (or
                // alpha codes) may round to the other one: a level either way is allowed.
                float sum[4] = {0, 0, 0, 0};
                for (int y = by; y < by + bh; ++y) {
                    for (int x = bx; x < bx + bw; ++x) {
                        float p[4];
                        premultiplied.getpixel(x, y, p, 4);
                        for (int c = 0; c < 4; ++c) {
                            sum[c] += p[c];
                        }
                    }
                }
                const float alpha = sum[3] / area;
                WorkingPixel mean{0, 0, 0, alpha};
                for (std::size_t c = 0; c < 3; ++c) {
                    mean[c] = alpha != 0.0f ? sum[c] / area / alpha : 0.0f;
                }
                const std::uint32_t want =
                    qzview::OverBackground(DisplayColour(mean, display), qzview::Checker(sx, sy));
                bool near = true;
                for (int shift = 0; shift <= 16; shift += 8) {
                    near = near && std::abs(static_cast<int>((got >> shift) & 0xFF) -
                                            static_cast<int>((want >> shift) & 0xFF)) <= 1;
                }
                exact += got == want ? 1 : 0;
                if (!near && ++off <= 5) {
                    ADD_FAILURE() << "screen pixel " << sx << "," << sy << " is " << Hex(got)
                                  << ", the mean of its block " << Hex(want);
                }
            }
        }
        EXPECT_EQ(off, 0);
        return {blocks, exact};
    }

    QLabel* PreviewWord() {
        auto* label = Window().findChild<QLabel*>(QStringLiteral("status.preview"));
        EXPECT_NE(label, nullptr);
        return label;
    }

    int top_ = 0;
};

TEST_F(ExactViewTest, AtRestEveryScreenPixelShowsThePixelThatIsRead) {
    StartTurnedOverChart();
    for (const double zoom : {1.0, 3.0, 8.0}) {
        Canvas().ZoomTo(zoom);
        ASSERT_TRUE(SettleExact()) << "zoom " << zoom;
        ASSERT_EQ(Canvas().Mapping().Zoom(), zoom);
        const int inside = ExpectCanvasAtRest("zoom " + std::to_string(zoom));
        EXPECT_GE(inside, 3000) << "zoom " << zoom << ": the composition fills much of the view";
    }
}

TEST_F(ExactViewTest, AtAQuarterEachScreenPixelIsTheMeanOfItsSixteenPixels) {
    StartTurnedOverChart();
    Canvas().ZoomTo(0.25);
    ASSERT_TRUE(SettleExact());
    ASSERT_EQ(Canvas().Mapping().Zoom(), 0.25);
    // The chart's 240 x 160 pixels are 60 x 40 whole blocks of 4 x 4.
    const auto [blocks, exact] = ExpectBlockMeans(4, 4, EightBitDisplay());
    EXPECT_EQ(blocks, 60 * 40);
    // Means that close to the middle between two levels are rare.
    EXPECT_GE(exact, blocks * 9 / 10);
    RecordProperty("exactly_equal_blocks", exact);
}

TEST_F(ExactViewTest, AnAnamorphicCompositionIsDrawnItsAspectTimesAsWide) {
    // Aspect, then zooms at which a composition pixel is a screen pixel or more each way
    // (across: 2, 4, 6 and 1, 1.5, 2 screen pixels).
    const std::pair<double, std::vector<double>> cases[] = {{2.0, {1.0, 2.0, 3.0}},
                                                            {0.5, {2.0, 3.0, 4.0}}};
    for (const auto& [aspect, zooms] : cases) {
        StartAnamorphic(aspect);
        for (const double zoom : zooms) {
            const std::string what =
                "aspect " + std::to_string(aspect) + ", zoom " + std::to_string(zoom);
            Canvas().ZoomTo(zoom);
            ASSERT_TRUE(SettleExact()) << what;
            ASSERT_EQ(Canvas().Mapping().Zoom(), zoom);
            const int inside = ExpectAnamorphicAtRest(aspect, what);
            EXPECT_GE(inside, 3000) << what << ": the composition fills much of the view";
            // The composition is drawn 120 x aspect x zoom screen pixels wide and 80 x zoom
            // tall: along the row and the column through its middle, the screen pixels
            // that are not the dark grey beyond it.
            const QImage drawn = Grab();
            const auto& mapping = Canvas().Mapping();
            const QPoint middle(mapping.OriginX() + static_cast<int>(60 * aspect * zoom),
                                mapping.OriginY() + static_cast<int>(40 * zoom));
            ASSERT_TRUE(drawn.rect().contains(middle)) << what;
            int wide = 0;
            for (int x = 0; x < drawn.width(); ++x) {
                wide += drawn.pixel(x, middle.y()) != qzview::kOutside ? 1 : 0;
            }
            int tall = 0;
            for (int y = 0; y < drawn.height(); ++y) {
                tall += drawn.pixel(middle.x(), y) != qzview::kOutside ? 1 : 0;
            }
            EXPECT_EQ(wide, std::min(drawn.width(), static_cast<int>(120 * aspect * zoom))) << what;
            EXPECT_EQ(tall, std::min(drawn.height(), static_cast<int>(80 * zoom))) << what;
        }
    }
}

TEST_F(ExactViewTest, WherePixelsAreNarrowerThanTheScreensEachShowsTheMeanOfItsBlock) {
    // Aspect and zoom, and the composition pixels that a screen pixel covers: across
    // and down, across alone (the rows magnified once), down alone.
    const struct {
        double aspect;
        double zoom;
        int bw;
        int bh;
    } cases[] = {{2.0, 0.25, 2, 4}, {0.5, 1.0, 2, 1}, {2.0, 0.5, 1, 2}, {0.5, 0.5, 4, 2}};
    for (const auto& c : cases) {
        SCOPED_TRACE("aspect " + std::to_string(c.aspect) + ", zoom " + std::to_string(c.zoom));
        StartAnamorphic(c.aspect);
        Canvas().ZoomTo(c.zoom);
        ASSERT_TRUE(SettleExact());
        ASSERT_EQ(Canvas().Mapping().Zoom(), c.zoom);
        // 120 x 80 composition pixels are 120 / bw x 80 / bh whole blocks.
        const auto [blocks, exact] = ExpectBlockMeans(c.bw, c.bh, Canvas().Scene().display);
        EXPECT_EQ(blocks, (120 / c.bw) * (80 / c.bh));
        EXPECT_GE(exact, blocks * 9 / 10);
    }
}

TEST_F(ExactViewTest, ThePreviewDrawsAnAnamorphicCompositionWhereTheExactViewDoes) {
    // A lone opaque layer of wide pixels, so that the preview (the nearest pixel of its
    // display image while an edit holds the exact view back) and the exact view show the
    // same colours, but for how each rounds a display level.
    std::vector<float> rgba;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 60; ++x) {
            rgba.insert(rgba.end(), {(x % 2 == y % 2) ? 0.8f : 0.1f, x / 60.0f, y / 40.0f, 1.0f});
        }
    }
    for (const double aspect : {2.0, 0.5}) {
        qzview::LayerImage plate = qzview::FloatImage("alternating", 60, 40, rgba);
        plate.pixelAspect = aspect;
        StartWith({plate}, 4.0);
        Window().Editor().Select(0);
        ASSERT_TRUE(SettleExact());
        // Zoomed again while held: the preview is drawn, and then the exact view of the
        // same place.
        Canvas().SetHold(true);
        Canvas().ZoomTo(4.0);
        Settle();
        ASSERT_TRUE(Canvas().ShowingPreview());
        const QImage preview = Grab();
        Canvas().SetHold(false);
        ASSERT_TRUE(SettleExact());
        const QImage exact = Grab();
        const auto& mapping = Canvas().Mapping();
        ASSERT_EQ(mapping.Zoom(), 4.0);
        // At the centre of each composition pixel's block of screen pixels, and at the
        // screen pixels around the composition.
        int compared = 0;
        for (int py = -2; py < 42; ++py) {
            for (int px = -2; px < 62; ++px) {
                const QPoint at(mapping.OriginX() +
                                    static_cast<int>(std::floor((px + 0.5) * aspect * 4.0)),
                                mapping.OriginY() + py * 4 + 2);
                if (!exact.rect().contains(at)) {
                    continue;
                }
                ++compared;
                const QRgb e = exact.pixel(at);
                const QRgb p = preview.pixel(at);
                const bool inside = px >= 0 && py >= 0 && px < 60 && py < 40;
                ASSERT_EQ(e == qzview::kOutside, !inside)
                    << "aspect " << aspect << ", pixel " << px << "," << py;
                ASSERT_LE(std::abs(qRed(e) - qRed(p)), 1) << "aspect " << aspect << " " << px;
                ASSERT_LE(std::abs(qGreen(e) - qGreen(p)), 1) << "aspect " << aspect << " " << px;
                ASSERT_LE(std::abs(qBlue(e) - qBlue(p)), 1) << "aspect " << aspect << " " << px;
            }
        }
        EXPECT_GE(compared, 1500) << "aspect " << aspect;
    }
}

/// A 3840 x 2160 8-bit layer of ramps, turned, which takes a while to composite.
struct LargeTurnedLayer {
    LargeTurnedLayer() {
        qzview::LayerImage image;
        image.path = image.name = "large";
        image.format = "memory";
        image.channelType = "8-bit";
        image.width = 3840;
        image.height = 2160;
        image.depth = 0;
        image.samples = qzview::SampleKind::Code8;
        image.integerMax = 255;
        std::byte* p = image.NewPixels(static_cast<std::size_t>(image.width) * image.height * 4);
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x, p += 4) {
                p[0] = static_cast<std::byte>(x * 255 / image.width);
                p[1] = static_cast<std::byte>(y * 255 / image.height);
                p[2] = static_cast<std::byte>((x ^ y) & 0xFF);
                p[3] = static_cast<std::byte>(128 + ((x / 7 + y / 5) % 128));
            }
        }
        const int id = composition.AddImage(std::move(image));
        qzview::LayerValues turned = composition.Find(id)->values;
        turned.rotation = 11;
        composition.SetValues(id, turned);
        scene.width = composition.Width();
        scene.height = composition.Height();
        scene.snapshot = composition.Snapshot();
        whole.Fit(scene.width, scene.height, 960, 540);
        piece.SetOrigin(-1760, -990);
    }

    qzview::Composition composition;
    qzview::CanvasScene scene;
    /// The long request: the whole layer at a quarter, in a 960 x 540 view; every one of
    /// its pixels is composited.
    qzview::CanvasMapping whole;
    /// A short one: a 320 x 180 piece of its middle at zoom 1.
    qzview::CanvasMapping piece;
};

TEST(ViewRefinerTest, ANewRequestCancelsTheOneBeforeAndOnlyItIsDelivered) {
    const LargeTurnedLayer large;
    ASSERT_EQ(large.whole.Zoom(), 0.25);
    ASSERT_EQ(large.piece.Zoom(), 1.0);
    std::mutex mutex;
    std::condition_variable delivered;
    std::vector<std::pair<std::uint64_t, QImage>> views;
    auto refiner = std::make_unique<qzview::ViewRefiner>([&](std::uint64_t request, QImage view) {
        const std::lock_guard<std::mutex> lock(mutex);
        views.emplace_back(request, std::move(view));
        delivered.notify_all();
    });
    const auto wait_for = [&](std::size_t count) {
        std::unique_lock<std::mutex> lock(mutex);
        return delivered.wait_for(lock, std::chrono::seconds(20),
                                  [&] { return views.size() >= count; });
    };
    // The second request follows the first at once...
    refiner->Start(1, large.scene, large.whole, 960, 540);
    refiner->Start(2, large.scene, large.piece, 320, 180);
    ASSERT_TRUE(wait_for(1));
    // ... and the fourth the third once the worker has had time to begin it.
    refiner->Start(3, large.scene, large.whole, 960, 540);
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    refiner->Start(4, large.scene, large.piece, 320, 180);
    ASSERT_TRUE(wait_for(2));
    // Ending the refiner waits for its worker: nothing can be delivered after it.
    const int finished = refiner->FinishedRenders();
    const int cancelled = refiner->Cancelled();
    refiner.reset();
    ASSERT_EQ(views.size(), 2u) << "one delivery for each newest request";
    EXPECT_EQ(views[0].first, 2u);
    EXPECT_EQ(views[1].first, 4u);
    EXPECT_EQ(finished, 2);
    // A long request was cancelled under way or replaced before it began.
    EXPECT_LE(cancelled, 2);
    RecordProperty("long_requests_cancelled_under_way", cancelled);
    for (const auto& [request, view] : views) {
        ASSERT_EQ(view.size(), QSize(320, 180));
        const int inside = ExpectMagnifiedView(view, large.composition, -1760, -990, 1, 1, {}, 5,
                                               "request " + std::to_string(request));
        // Every pixel of the spread, 36 rows of 64, lies inside the composition.
        EXPECT_EQ(inside, 36 * 64);
    }
}

TEST(ViewRefinerTest, ACancelledRequestIsNeverDelivered) {
    const LargeTurnedLayer large;
    std::atomic<int> deliveries{0};
    auto refiner =
        std::make_unique<qzview::ViewRefiner>([&](std::uint64_t, QImage) { ++deliveries; });
    // A short request cancelled at once, given the time that it takes to render...
    refiner->Start(1, large.scene, large.piece, 320, 180);
    refiner->Cancel();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    // ... and a long one cancelled once the worker has had time to begin it.
    refiner->Start(2, large.scene, large.whole, 960, 540);
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    refiner->Cancel();
    // Ending the refiner waits for its worker.
    refiner.reset();
    EXPECT_EQ(deliveries.load(), 0);
}

TEST_F(ExactViewTest, AnEditBeforeTheExactViewArrivesLeavesTheNewestStateShown) {
    StartTurnedOverChart();
    Canvas().ZoomTo(1.0);
    ASSERT_TRUE(SettleExact());
    // A move of the turned layer: pressed on it, moved, released; the exact view of the
    // moved layer is being rendered.
    const QPointF from = Canvas().WidgetPointOf({131.5, 77.5});
    Mouse(Canvas(), QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    Mouse(Canvas(), QEvent::MouseMove, from + QPointF(9, -4), Qt::NoButton, Qt::LeftButton);
    Settle();
    Mouse(Canvas(), QEvent::MouseButtonRelease, from + QPointF(9, -4), Qt::LeftButton,
          Qt::NoButton);
    ASSERT_EQ(Window().Comp().Find(top_)->values.position[0], 140.25);
    // What the canvas shows at rest for the state at the release (zoom 1).
    const qzview::Composition& composition = Window().Comp();
    const int ox = Canvas().Mapping().OriginX();
    const int oy = Canvas().Mapping().OriginY();
    QImage released(Canvas().size(), QImage::Format_RGB32);
    released.fill(qzview::kOutside);
    for (int py = 0; py < composition.Height(); ++py) {
        for (int px = 0; px < composition.Width(); ++px) {
            const QPoint at(ox + px, oy + py);
            if (released.rect().contains(at)) {
                released.setPixel(
                    at, qzview::OverBackground(DisplayColour(composition.PixelAt(px, py), {}),
                                               qzview::Checker(at.x(), at.y())));
            }
        }
    }
    // Before any of it arrives, the layer is turned further, and the frame hands the
    // canvas the new state at once.
    Window().Editor().Type(top_, Property::Rotation, {58, 0, 0});
    Window().RunFrame();
    Window().Editor().Select(0);
    ASSERT_TRUE(SettleExact());
    ExpectCanvasAtRest("after the newer edit", 2);
    // The check tells the two states apart: much of what the release showed has changed.
    const QImage now = Grab();
    int changed = 0;
    for (int y = 0; y < now.height(); ++y) {
        for (int x = 0; x < now.width(); ++x) {
            changed += now.pixel(x, y) != released.pixel(x, y) ? 1 : 0;
        }
    }
    EXPECT_GE(changed, 2000);
}

TEST_F(ExactViewTest, ThePreviewWordShowsWhileADragIsUnderWay) {
    StartTurnedOverChart();
    Canvas().ZoomTo(1.0);
    ASSERT_TRUE(SettleExact());
    QLabel* word = PreviewWord();
    ASSERT_NE(word, nullptr);
    EXPECT_FALSE(Canvas().ShowingPreview());
    EXPECT_FALSE(word->isVisible());
    QSignalSpy changes(&Canvas(), &qzview::CanvasView::previewChanged);

    const QPointF from = Canvas().WidgetPointOf({131.5, 77.5});
    Mouse(Canvas(), QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (int i = 1; i <= 3; ++i) {
        Mouse(Canvas(), QEvent::MouseMove, from + QPointF(2 * i, i), Qt::NoButton, Qt::LeftButton);
        Settle();
        EXPECT_TRUE(Canvas().ShowingPreview()) << "move " << i;
        EXPECT_TRUE(word->isVisible()) << "move " << i;
    }
    // Holding still with the button down: the preview stays; no exact view is made.
    const int finished = Canvas().RefinementsFinished();
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(60);
    while (std::chrono::steady_clock::now() < until) {
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    EXPECT_TRUE(Canvas().ShowingPreview());
    EXPECT_TRUE(word->isVisible());
    EXPECT_EQ(Canvas().RefinementsFinished(), finished);

    Mouse(Canvas(), QEvent::MouseButtonRelease, from + QPointF(6, 3), Qt::LeftButton, Qt::NoButton);
    ASSERT_TRUE(SettleExact());
    EXPECT_FALSE(Canvas().ShowingPreview());
    EXPECT_FALSE(word->isVisible());
    ASSERT_EQ(changes.count(), 2);
    EXPECT_TRUE(changes.at(0).at(0).toBool());
    EXPECT_FALSE(changes.at(1).at(0).toBool());
    // And what it then shows is the exact view of the moved layer.
    Window().Editor().Select(0);
    ExpectCanvasAtRest("after the drag");
}

} // namespace
} // namespace qzviewtest
