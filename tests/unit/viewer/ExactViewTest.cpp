// The canvas at rest shows the exact composite: at zoom 1 and above every screen pixel is
// the display colour of the composition pixel that the pointer reads there, over the
// checkerboard; below zoom 1 each screen pixel is the box filter of the composition pixels
// it covers. A render that a newer change made out of date never reaches the canvas, and
// the status bar says "Preview" exactly while the canvas shows one.
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
/// pixel `ox`, `oy`, magnified `zoom` times) with what the composite says it shows at a
/// spread of screen pixels: beyond the composition the dark grey, inside it the display
/// colour of the pixel that the composition computes for the screen pixel's centre, over
/// the checkerboard. Returns the pixels compared inside the composition.
int ExpectMagnifiedView(const QImage& drawn, const qzview::Composition& composition, int ox, int oy,
                        int zoom, const qzview::DisplaySettings& settings, int step,
                        const std::string& what) {
    std::map<std::pair<int, int>, std::uint32_t> colours;
    int inside = 0;
    int wrong = 0;
    ForSpread(drawn.width(), drawn.height(), step, [&](int sx, int sy) {
        const int px = static_cast<int>(std::floor((sx - ox + 0.5) / zoom));
        const int py = static_cast<int>(std::floor((sy - oy + 0.5) / zoom));
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
                                   static_cast<int>(mapping.Zoom()), EightBitDisplay(), step, what);
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
    const QImage drawn = Grab();
    const int ox = Canvas().Mapping().OriginX();
    const int oy = Canvas().Mapping().OriginY();
    const qzview::DisplaySettings display = EightBitDisplay();
    const qzview::Composition& composition = Window().Comp();
    // The chart's 240 x 160 pixels are 60 x 40 whole blocks of 4 x 4.
    ASSERT_EQ(composition.Width() % 4, 0);
    ASSERT_EQ(composition.Height() % 4, 0);
    const OIIO::ImageBuf premultiplied = Reference(composition, false);
    int blocks = 0;
    int off = 0;
    int exact = 0;
    for (int sy = 0; sy < drawn.height(); ++sy) {
        for (int sx = 0; sx < drawn.width(); ++sx) {
            const int bx = (sx - ox) * 4;
            const int by = (sy - oy) * 4;
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
            // viewer sums in doubles and these sums are floats, so a mean that lies within
            // a rounding error of the middle between two display levels (or alpha codes)
            // may round to the other one: a level either way is allowed.
            float sum[4] = {0, 0, 0, 0};
            for (int y = by; y < by + 4; ++y) {
                for (int x = bx; x < bx + 4; ++x) {
                    float p[4];
                    premultiplied.getpixel(x, y, p, 4);
                    for (int c = 0; c < 4; ++c) {
                        sum[c] += p[c];
                    }
                }
            }
            const float alpha = sum[3] / 16.0f;
            WorkingPixel mean{0, 0, 0, alpha};
            for (std::size_t c = 0; c < 3; ++c) {
                mean[c] = alpha != 0.0f ? sum[c] / 16.0f / alpha : 0.0f;
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
    EXPECT_EQ(blocks, 60 * 40);
    // Means that close to the middle between two levels are rare.
    EXPECT_GE(exact, blocks * 9 / 10);
    RecordProperty("exactly_equal_blocks", exact);
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
        image.pixels.resize(static_cast<std::size_t>(image.width) * image.height * 4);
        std::byte* p = image.pixels.data();
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
        const int inside = ExpectMagnifiedView(view, large.composition, -1760, -990, 1, {}, 5,
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
