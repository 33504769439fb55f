// How the Info panel samples the composite: View > Sample Size (the mean of a square around
// the pointer's pixel, held against a full composite made with OpenImageIO alone), View >
// Sample Values (the values as the canvas shows them), both remembered in the preference
// file and named in the hover lines; and Edit > Copy Pixel Values, which puts the panel's
// readout on the clipboard as text and JSON.
#include <array>
#include <cmath>
#include <fstream>
#include <vector>

#include <QAction>
#include <QClipboard>
#include <QDoubleSpinBox>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>

#include "ReferenceComposite.h"
#include "ViewerHarness.h"
#include "actions/ShortcutList.h"

namespace qzviewtest {
namespace {

using qzview::Property;

class SampleReadoutTest : public ViewerHarness {
protected:
    QAction* Item(const char* name) {
        auto* item = Window().findChild<QAction*>(QString::fromLatin1(name));
        EXPECT_NE(item, nullptr) << name;
        return item;
    }

    void ChooseSize(int size) {
        Item(("view.sampleSize." + std::to_string(size)).c_str())->trigger();
        Settle();
    }

    void ChooseDisplayed(bool displayed) {
        Item(displayed ? "view.sampleValues.displayed" : "view.sampleValues.working")->trigger();
        Settle();
    }

    /// Three float layers over a 120 x 80 composition: the bottom one covering it, a
    /// middle one at 60% opacity and a top one turned by 20 degrees off the pixel grid.
    void StartThreeLayers() {
        StartWith(
            {Plate("base", 120, 80, 61), Plate("middle", 70, 50, 62), Plate("top", 40, 30, 63)});
        const auto& layers = Window().Comp().Layers();
        Window().Editor().Type(layers.at(1).id, Property::Opacity, {60, 0, 0});
        Window().Editor().Type(layers.at(2).id, Property::Rotation, {20, 0, 0});
        Window().Editor().Type(layers.at(2).id, Property::Position, {70.3, 36.6, 0});
        // No layer selected: nothing is drawn over the composition.
        Window().Editor().Select(0);
        Canvas().ZoomTo(2.0);
        Settle();
    }

    /// The pixel the panel was last given (red, green, blue, alpha).
    std::array<float, 4> Delivered() {
        const auto& delivered = Window().Info().Delivered();
        EXPECT_TRUE(delivered.has_value());
        return delivered ? delivered->pixel : std::array<float, 4>{};
    }

    /// The pointer's pixel as delivered.
    std::pair<int, int> PointerPixel() {
        const auto& delivered = Window().Info().Delivered();
        EXPECT_TRUE(delivered.has_value());
        if (!delivered) {
            return {0, 0};
        }
        return {static_cast<int>(std::floor(delivered->position.x)),
                static_cast<int>(std::floor(delivered->position.y))};
    }

    /// The mean of the n x n square around `x`, `y` of `premultiplied` (the full composite),
    /// worked out here: colour sums over alpha sum, alpha sum over n x n, pixels outside
    /// the composition transparent.
    static std::array<float, 4> ReferenceMean(const OIIO::ImageBuf& premultiplied, int x, int y,
                                              int n) {
        const OIIO::ROI size = premultiplied.roi();
        double sums[4] = {0, 0, 0, 0};
        for (int row = y - n / 2; row <= y + n / 2; ++row) {
            for (int column = x - n / 2; column <= x + n / 2; ++column) {
                if (column < 0 || row < 0 || column >= size.xend || row >= size.yend) {
                    continue;
                }
                float p[4];
                premultiplied.getpixel(column, row, p, 4);
                for (int c = 0; c < 4; ++c) {
                    sums[c] += p[c];
                }
            }
        }
        if (sums[3] == 0) {
            return {0, 0, 0, 0};
        }
        return {static_cast<float>(sums[0] / sums[3]), static_cast<float>(sums[1] / sums[3]),
                static_cast<float>(sums[2] / sums[3]),
                static_cast<float>(sums[3] / (static_cast<double>(n) * n))};
    }

    /// A linear value through the exposure and the sRGB transfer, as a display shows it.
    static float Displayed(float value, double stops) {
        const double v = value * std::pow(2.0, stops);
        return static_cast<float>(v <= 0.0031308 ? 12.92 * v
                                                 : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055);
    }
};

TEST_F(SampleReadoutTest, ViewMenuOffersTheSizesAndTheValuesOneChecked) {
    Start();
    const std::vector<std::pair<int, QString>> sizes = {
        {1, "Point"},    {3, "3 x 3"},    {5, "5 x 5"},      {11, "11 x 11"},
        {31, "31 x 31"}, {51, "51 x 51"}, {101, "101 x 101"}};
    for (const auto& [size, text] : sizes) {
        QAction* item = Item(("view.sampleSize." + std::to_string(size)).c_str());
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->text(), text);
        EXPECT_TRUE(item->isCheckable());
        EXPECT_EQ(item->isChecked(), size == 1) << size;
    }
    EXPECT_TRUE(Item("view.sampleValues.working")->isChecked());
    EXPECT_FALSE(Item("view.sampleValues.displayed")->isChecked());
    // The submenus hang from the View menu.
    QMenu* view = nullptr;
    for (QAction* top : Window().menuBar()->actions()) {
        if (top->text().remove('&') == "View") {
            view = top->menu();
        }
    }
    ASSERT_NE(view, nullptr);
    QStringList submenus;
    for (QAction* action : view->actions()) {
        if (action->menu() != nullptr) {
            submenus << action->text().remove('&');
        }
    }
    EXPECT_TRUE(submenus.contains("Sample Size"));
    EXPECT_TRUE(submenus.contains("Sample Values"));
    // One size at a time, one kind of values at a time.
    ChooseSize(31);
    for (const auto& [size, text] : sizes) {
        EXPECT_EQ(Item(("view.sampleSize." + std::to_string(size)).c_str())->isChecked(),
                  size == 31)
            << size;
    }
    EXPECT_EQ(Window().Info().SampleSize(), 31);
    ChooseDisplayed(true);
    EXPECT_FALSE(Item("view.sampleValues.working")->isChecked());
    EXPECT_TRUE(Window().Info().DisplayedValues());
}

TEST_F(SampleReadoutTest, SquaresDeliverTheMeanOfTheFullComposite) {
    StartThreeLayers();
    const OIIO::ImageBuf reference = Reference(Window().Comp(), false);
    // In the middle (over the turned layer), at the composition's corner and beside it.
    const std::vector<std::pair<double, double>> points = {
        {70.5, 36.5}, {40.5, 30.5}, {0.5, 0.5}, {119.5, 79.5}, {-1.5, 20.5}};
    for (const int n : {3, 101}) {
        ChooseSize(n);
        for (const auto& [px, py] : points) {
            MoveOver(Over(px, py));
            const auto [x, y] = PointerPixel();
            SCOPED_TRACE(std::to_string(n) + " x " + std::to_string(n) + " at " +
                         std::to_string(x) + "," + std::to_string(y));
            EXPECT_EQ(x, static_cast<int>(std::floor(px)));
            EXPECT_EQ(y, static_cast<int>(std::floor(py)));
            const std::array<float, 4> want = ReferenceMean(reference, x, y, n);
            const std::array<float, 4> got = Delivered();
            for (std::size_t c = 0; c < 4; ++c) {
                EXPECT_EQ(got[c], want[c]) << "channel " << c;
            }
            // The panel shows it, X and Y staying the pointer's.
            const auto snapshot = Snapshot();
            EXPECT_EQ(Text(snapshot, 7), want[3] != 0.0f ? FourDecimals(want[0]) : "");
            EXPECT_EQ(Text(snapshot, 10), FourDecimals(want[3]));
            EXPECT_EQ(Text(snapshot, 15), std::to_string(x));
            EXPECT_EQ(Text(snapshot, 16), std::to_string(y));
        }
    }
    // The largest square reaches beyond the composition: its transparent part lowers the
    // alpha but not the colour.
    const std::array<float, 4> last = Delivered();
    EXPECT_LT(last[3], 0.5f);
    EXPECT_GT(last[0], 0.1f);
}

TEST_F(SampleReadoutTest, PointDeliversTheCompositePixelItself) {
    StartThreeLayers();
    ChooseSize(5);
    ChooseSize(1);
    for (const auto& [px, py] : std::vector<std::pair<double, double>>{{70.5, 36.5}, {3.5, 77.5}}) {
        MoveOver(Over(px, py));
        const auto [x, y] = PointerPixel();
        const qzview::WorkingPixel pixel = Window().Comp().PixelAt(x, y);
        const std::array<float, 4> got = Delivered();
        for (std::size_t c = 0; c < 4; ++c) {
            EXPECT_EQ(got[c], pixel[c]) << "channel " << c;
        }
    }
}

TEST_F(SampleReadoutTest, TheChoicesAreRememberedAcrossRuns) {
    Start();
    ChooseSize(11);
    ChooseDisplayed(true);
    Stop();
    Start();
    EXPECT_TRUE(Item("view.sampleSize.11")->isChecked());
    EXPECT_FALSE(Item("view.sampleSize.1")->isChecked());
    EXPECT_TRUE(Item("view.sampleValues.displayed")->isChecked());
    EXPECT_EQ(Window().Info().SampleSize(), 11);
    EXPECT_TRUE(Window().Info().DisplayedValues());
    ChooseSize(1);
    ChooseDisplayed(false);
    Stop();
    Start();
    EXPECT_TRUE(Item("view.sampleSize.1")->isChecked());
    EXPECT_TRUE(Item("view.sampleValues.working")->isChecked());
    EXPECT_EQ(Window().Info().SampleSize(), 1);
    EXPECT_FALSE(Window().Info().DisplayedValues());
}

TEST_F(SampleReadoutTest, StoredChoicesThatAreNotOfferedFallBackToPointAndWorking) {
    {
        std::ofstream prefs(PrefsPath());
        prefs << "# qzhost preferences\n[Viewer Sampling]\nSample Size = 7\nSample Values = "
                 "sideways\n";
    }
    Start();
    EXPECT_TRUE(Item("view.sampleSize.1")->isChecked());
    EXPECT_TRUE(Item("view.sampleValues.working")->isChecked());
    EXPECT_EQ(Window().Info().SampleSize(), 1);
    EXPECT_FALSE(Window().Info().DisplayedValues());
}

TEST_F(SampleReadoutTest, DisplayedValuesAreTheCanvasValuesBeforeTheyBecomeLevels) {
    Start({"chart.exr"});
    ASSERT_EQ(Window().ProjectDepth(), 2);
    Window().Editor().Select(0);
    Canvas().ZoomTo(1.0);
    Window().findChild<QDoubleSpinBox*>("exposure")->setValue(1.0);
    ChooseDisplayed(true);
    ASSERT_TRUE(SettleExact());
    const QImage drawn = Canvas().grab().toImage();
    // An opaque grey of 0.18 and an opaque orange (1, 0.5, 0): one stop up and through the
    // sRGB transfer, not clamped (the orange's red comes out above 1), alpha as it is.
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{{45, 45}, {205, 45}}) {
        SCOPED_TRACE(std::to_string(x) + "," + std::to_string(y));
        const QPointF at = Over(x + 0.5, y + 0.5);
        MoveOver(at);
        const qzview::WorkingPixel working = Window().Comp().PixelAt(x, y);
        const std::array<float, 4> got = Delivered();
        for (std::size_t c = 0; c < 3; ++c) {
            EXPECT_EQ(got[c], Displayed(working[c], 1.0)) << "channel " << c;
        }
        EXPECT_EQ(got[3], working[3]);
        // The canvas shows these values as 8-bit levels.
        const QRgb shown = drawn.pixel(at.toPoint());
        const int levels[3] = {qRed(shown), qGreen(shown), qBlue(shown)};
        for (std::size_t c = 0; c < 3; ++c) {
            EXPECT_EQ(levels[c], std::lround(std::clamp(got[c], 0.0f, 1.0f) * 255.0f))
                << "channel " << c;
        }
    }
    EXPECT_GT(Delivered()[0], 1.0f);
    // A new exposure is delivered at once under a still pointer.
    Window().findChild<QDoubleSpinBox*>("exposure")->setValue(-2.0);
    Settle();
    EXPECT_EQ(Delivered()[1], Displayed(0.5f, -2.0));
    // Working values again: the composite's own.
    ChooseDisplayed(false);
    EXPECT_EQ(Delivered()[0], 1.0f);
    EXPECT_EQ(Delivered()[1], 0.5f);
}

TEST_F(SampleReadoutTest, DisplayedValuesOfAnIntegerProjectAreTheValues) {
    Start();
    ASSERT_EQ(Window().ProjectDepth(), 0);
    Canvas().ZoomTo(1.0);
    ChooseDisplayed(true);
    MoveOver(Over(205.5, 45.5));
    const auto [x, y] = PointerPixel();
    const qzview::WorkingPixel working = Window().Comp().PixelAt(x, y);
    const std::array<float, 4> got = Delivered();
    for (std::size_t c = 0; c < 4; ++c) {
        EXPECT_EQ(got[c], working[c]);
    }
    EXPECT_TRUE(Window().Info().Delivered()->displayed);
}

TEST_F(SampleReadoutTest, HoverLinesNameTheSample) {
    Start();
    Canvas().ZoomTo(1.0);
    MoveOver(Over(50.5, 70.5));
    const std::string plain = Lines().at(2);
    EXPECT_EQ(plain, "png 8-bit, 240 x 160");
    ChooseSize(5);
    EXPECT_EQ(Lines().at(2), "png 8-bit, 240 x 160, 5 x 5 mean");
    ChooseDisplayed(true);
    // The panel is narrow: the format gives way to the note.
    EXPECT_EQ(Lines().at(2), "240 x 160, 5 x 5 mean, displayed");
    ChooseSize(1);
    EXPECT_EQ(Lines().at(2), "png 8-bit, 240 x 160, displayed");
    // Beside every layer the note stands alone.
    MoveOver(Over(-20.5, 10.5));
    EXPECT_EQ(Lines().at(2), "Displayed");
    ChooseSize(31);
    EXPECT_EQ(Lines().at(2), "31 x 31 mean, displayed");
    ChooseDisplayed(false);
    ChooseSize(1);
    EXPECT_EQ(Lines().at(2), "");
    MoveOver(Over(50.5, 70.5));
    EXPECT_EQ(Lines().at(2), plain);
}

TEST_F(SampleReadoutTest, HoverLinesStayShortForTheNarrowPanel) {
    Start({"chart.exr"});
    Canvas().ZoomTo(1.0);
    MoveOver(Over(50.5, 70.5));
    EXPECT_EQ(Lines().at(2), "openexr half float, 240 x 160");
    ChooseSize(101);
    EXPECT_EQ(Lines().at(2), "240 x 160, 101 x 101 mean");
    ChooseDisplayed(true);
    EXPECT_EQ(Lines().at(2), "101 x 101 mean, displayed");
    for (const int size : {3, 5, 11, 31, 51}) {
        ChooseSize(size);
        EXPECT_LE(Lines().at(2).size(), 33u) << Lines().at(2);
        EXPECT_NE(Lines().at(2).find(std::to_string(size) + " mean, displayed"), std::string::npos)
            << Lines().at(2);
    }
}

TEST_F(SampleReadoutTest, CopyPixelValuesPutsThePanelsTextAndTheDeliveredJson) {
    Start({"chart.exr"});
    QAction* copy = Item("edit.copyPixelValues");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    // Nothing delivered yet: nothing to copy.
    EXPECT_FALSE(copy->isEnabled());
    Canvas().ZoomTo(1.0);
    Window().SetOrigin(qzview::CompositionPoint{40, 80});
    ChooseSize(3);
    MoveOver(Over(165.5, 125.5));
    ASSERT_TRUE(copy->isEnabled());
    QGuiApplication::clipboard()->clear();
    copy->trigger();
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(copied, nullptr);
    // The text is the panel's rows as it shows them.
    const auto snapshot = Snapshot();
    QString want;
    for (const auto& [label, value] : std::vector<std::pair<int, int>>{
             {3, 7}, {4, 8}, {5, 9}, {6, 10}, {11, 15}, {12, 16}, {13, 17}, {14, 18}}) {
        want += QString::fromStdString(Text(snapshot, label) + " " + Text(snapshot, value)) + "\n";
    }
    EXPECT_EQ(copied->text(), want);
    EXPECT_TRUE(copied->text().startsWith("R : 2.0000\n")) << copied->text().toStdString();
    EXPECT_TRUE(copied->text().contains("X : 165\nY : 125\nX' : 125\nY' : 45\n"));
    // The JSON carries the delivered floats exactly, and how they were read.
    ASSERT_TRUE(copied->hasFormat("application/json"));
    const QJsonObject json = QJsonDocument::fromJson(copied->data("application/json")).object();
    const std::array<float, 4> delivered = Delivered();
    EXPECT_EQ(static_cast<float>(json["red"].toDouble()), delivered[0]);
    EXPECT_EQ(static_cast<float>(json["green"].toDouble()), delivered[1]);
    EXPECT_EQ(static_cast<float>(json["blue"].toDouble()), delivered[2]);
    EXPECT_EQ(static_cast<float>(json["alpha"].toDouble()), delivered[3]);
    EXPECT_EQ(json["alpha"].toDouble(), 0.25);
    EXPECT_EQ(json["pixel"].toArray(), (QJsonArray{165, 125}));
    EXPECT_EQ(json["position"].toArray(), (QJsonArray{165.5, 125.5}));
    EXPECT_EQ(json["origin"].toArray(), (QJsonArray{40, 80}));
    EXPECT_EQ(json["notation"].toString(), "auto");
    EXPECT_EQ(json["mode"].toInt(), 0);
    EXPECT_EQ(json["sample_size"].toInt(), 3);
    EXPECT_EQ(json["values"].toString(), "working");

    // Without an origin X' and Y' are not shown, nor copied; the working values stay, and
    // the displayed ones that the panel shows come beside them.
    Window().SetOrigin(std::nullopt);
    ChooseDisplayed(true);
    copy->trigger();
    const QMimeData* again = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(again, nullptr);
    EXPECT_FALSE(again->text().contains("X'"));
    EXPECT_TRUE(again->text().endsWith("X : 165\nY : 125\n")) << again->text().toStdString();
    const QJsonObject shown = QJsonDocument::fromJson(again->data("application/json")).object();
    EXPECT_EQ(shown["values"].toString(), "displayed");
    EXPECT_FALSE(shown.contains("origin"));
    EXPECT_EQ(static_cast<float>(shown["displayed"].toArray().at(0).toDouble()), Delivered()[0]);
    EXPECT_EQ(static_cast<float>(shown["red"].toDouble()), Window().Info().Delivered()->working[0]);
    EXPECT_EQ(shown["red"].toDouble(), json["red"].toDouble());
    EXPECT_NE(shown["red"].toDouble(), shown["displayed"].toArray().at(0).toDouble());

    // With the Info panel closed there is no readout to copy: the clipboard keeps what it
    // held, and the status bar says why.
    InfoDock()->close();
    Settle();
    QGuiApplication::clipboard()->setText("kept");
    copy->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "kept");
    EXPECT_TRUE(Window().statusBar()->currentMessage().contains("closed"));
}

TEST_F(SampleReadoutTest, KeyboardShortcutsListCopyPixelValues) {
    Start();
    bool found = false;
    for (const qzview::ShortcutRow& row : qzview::MenuShortcuts(*Window().menuBar())) {
        found = found || (row.keys == "Ctrl+Shift+C" && row.does == "Edit > Copy Pixel Values");
    }
    EXPECT_TRUE(found);
}

} // namespace
} // namespace qzviewtest
