// The viewer with a colour config (the project's own, tests/ocio/config.ocio, whose views a
// test works out by hand): the canvas and the Info panel's swatch show the chosen view's
// colour while the panel's numbers stay the working values; a layer's input colour space
// turns its file values into working values; exposure and gamma; the displayed sample
// values follow the view; the display and view chosen are kept for each config file.
// Without a config, the swatch of a float project shows the canvas's sRGB colour.
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <QAction>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QImage>
#include <QKeySequence>

#include "BuildPaths.h"
#include "ViewerHarness.h"
#include "actions/DisplayChoices.h"
#include "actions/ViewActions.h"
#include "docks/LayerPropertiesPanel.h"

namespace qzviewtest {
namespace {

namespace fs = std::filesystem;
using Pixel = std::array<float, 4>;

/// The colour that every pixel of the test images holds.
constexpr Pixel kColour{0.18f, 0.5f, 0.9f, 1.0f};

fs::path ConfigFile() {
    return fs::path(QZ_SOURCE_DIR) / "tests/ocio/config.ocio";
}

/// A 48 x 32 float image named `name`, every pixel `colour`.
qzview::LayerImage Flat(const std::string& name, const Pixel& colour = kColour) {
    std::vector<float> rgba;
    for (int i = 0; i < 48 * 32; ++i) {
        rgba.insert(rgba.end(), colour.begin(), colour.end());
    }
    return qzview::FloatImage(name, 48, 32, rgba);
}

/// The display level of a display value: clamped to 0-1, to the nearest of 256.
int Level(double value) {
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255.0));
}

class ColourManagedViewTest : public ViewerHarness {
protected:
    /// Starts on `layers` with the config at `config` (none: without a config) and the
    /// display and view given, at zoom 4.
    void StartManaged(std::vector<qzview::LayerImage> layers,
                      const std::optional<fs::path>& config = ConfigFile(),
                      std::optional<std::string> display = std::nullopt,
                      std::optional<std::string> view = std::nullopt) {
        qzview::ViewerOptions options = TestOptions();
        if (config) {
            options.colour = qzhost::ColourConfig::Load(*config);
        }
        options.display = std::move(display);
        options.view = std::move(view);
        options.zoom = 4;
        for (const qzview::LayerImage& layer : layers) {
            options.images.push_back(layer.path);
        }
        Launch(options, std::move(layers));
        Window().Editor().Select(0);
    }

    qzview::DisplayChoices& Choices() {
        return Window().findChild<qzview::ViewActions*>()->Display();
    }

    QAction* Item(const QString& name) {
        auto* item = Window().findChild<QAction*>(name);
        EXPECT_NE(item, nullptr) << name.toStdString();
        return item;
    }

    /// The View menu's action kept under `name`.
    QAction* ViewAction(const char* name) {
        QAction* action =
            Window().findChild<qzview::ViewActions*>()->actions().value(QString::fromLatin1(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }

    /// The canvas's colour over composition pixel 20, 12, once the exact view is shown.
    QRgb CanvasColour() {
        EXPECT_TRUE(SettleExact());
        const QPointF at = Over(20.5, 12.5);
        return Canvas().grab().toImage().pixel(static_cast<int>(at.x()), static_cast<int>(at.y()));
    }

    /// Points at composition pixel 20, 12 and returns the panel's snapshot.
    qzhost::script::Json PointAtTheMiddle() {
        MoveOver(Over(20.5, 12.5));
        return Snapshot();
    }

    /// Expects the canvas and the swatch to show `shown` (display values) and the panel's
    /// numbers to be `numbers`.
    void ExpectShown(const std::array<double, 3>& shown, const Pixel& numbers) {
        const QRgb canvas = CanvasColour();
        EXPECT_EQ(qRed(canvas), Level(shown[0]));
        EXPECT_EQ(qGreen(canvas), Level(shown[1]));
        EXPECT_EQ(qBlue(canvas), Level(shown[2]));
        const auto snapshot = PointAtTheMiddle();
        const auto swatch = snapshot.at("swatch").get<std::vector<double>>();
        ASSERT_EQ(swatch.size(), 4u);
        for (std::size_t c = 0; c < 3; ++c) {
            EXPECT_NEAR(swatch[c], std::clamp(shown[c], 0.0, 1.0), 1e-5) << c;
        }
        EXPECT_EQ(swatch[3], 1.0);
        for (int c = 0; c < 4; ++c) {
            EXPECT_EQ(Text(snapshot, 7 + c), FourDecimals(numbers[static_cast<std::size_t>(c)]))
                << c;
        }
    }
};

TEST_F(ColourManagedViewTest, CanvasAndSwatchShowTheViewWhileThePanelReadsWorkingValues) {
    StartManaged({Flat("plate.exr")}, ConfigFile(), "Test Monitor", "Swap");
    // Swap: red and blue change places.
    ExpectShown({kColour[2], kColour[1], kColour[0]}, kColour);
    EXPECT_TRUE(Item("view.view.Swap")->isChecked());

    Item("view.view.Gamma 2.2")->trigger();
    Settle();
    EXPECT_EQ(Choices().ViewBox()->currentText(), "Gamma 2.2");
    ExpectShown({std::pow(kColour[0], 1 / 2.2), std::pow(kColour[1], 1 / 2.2),
                 std::pow(kColour[2], 1 / 2.2)},
                kColour);

    // Another display, through the toolbar's box: the view becomes that display's default.
    Choices().DisplayBox()->setCurrentText("Second Monitor");
    emit Choices().DisplayBox()->activated(Choices().DisplayBox()->currentIndex());
    Settle();
    EXPECT_EQ(Choices().Choice().view, "Raw");
    EXPECT_TRUE(Item("view.display.Second Monitor")->isChecked());
    ExpectShown({kColour[0], kColour[1], kColour[2]}, kColour);
}

TEST_F(ColourManagedViewTest, ExposureActsBeforeTheViewAndGammaAfterIt) {
    StartManaged({Flat("plate.exr")}, ConfigFile(), "Test Monitor", "Raw");
    auto* exposure = Window().findChild<QDoubleSpinBox*>("exposure");
    ASSERT_NE(exposure, nullptr);
    EXPECT_TRUE(exposure->isEnabled());
    exposure->setValue(1.0);
    Choices().GammaBox()->setValue(2.0);
    Settle();
    // Twice the working values, then the power 1/2; the numbers stay the working values.
    ExpectShown(
        {std::sqrt(2.0 * kColour[0]), std::sqrt(2.0 * kColour[1]), std::sqrt(2.0 * kColour[2])},
        kColour);
}

TEST_F(ColourManagedViewTest, TheViewMenuStepsTheExposureByHalfStopsAndPutsItBack) {
    StartManaged({Flat("plate.exr")}, ConfigFile(), "Test Monitor", "Raw");
    auto* exposure = Window().findChild<QDoubleSpinBox*>("exposure");
    ASSERT_NE(exposure, nullptr);
    EXPECT_EQ(ViewAction("ExposureUp")->shortcut(), QKeySequence(Qt::Key_BracketRight));
    ViewAction("ExposureUp")->trigger();
    ViewAction("ExposureUp")->trigger();
    Settle();
    EXPECT_EQ(exposure->value(), 1.0);
    ExpectShown({2.0 * kColour[0], 2.0 * kColour[1], 2.0 * kColour[2]}, kColour);
    ViewAction("ExposureDown")->trigger();
    EXPECT_EQ(exposure->value(), 0.5);
    Choices().GammaBox()->setValue(2.0);
    ViewAction("ResetExposure")->trigger();
    Settle();
    EXPECT_EQ(exposure->value(), 0.0);
    EXPECT_EQ(Choices().GammaBox()->value(), 1.0);
    ExpectShown({kColour[0], kColour[1], kColour[2]}, kColour);
}

TEST_F(ColourManagedViewTest, AnInputColourSpaceTurnsFileValuesIntoWorkingValues) {
    // The file rules put a file whose name holds "_doubled" in "doubled": working values
    // are twice the file's.
    StartManaged({Flat("shot_doubled.exr", {0.25f, 0.125f, 0.375f, 0.5f})}, ConfigFile(),
                 "Test Monitor", "Raw");
    Window().Editor().Select(Window().Comp().Layers().front().id);
    Settle();
    auto* box = Window().LayerPanel().findChild<QComboBox*>("colourSpace");
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isVisibleTo(&Window().LayerPanel()));
    EXPECT_EQ(box->currentText(), "doubled");
    // Over a transparent background: the canvas shows the colour times alpha.
    const Pixel working{0.5f, 0.25f, 0.75f, 0.5f};
    const auto snapshot = PointAtTheMiddle();
    for (int c = 0; c < 4; ++c) {
        EXPECT_EQ(Text(snapshot, 7 + c), FourDecimals(working[static_cast<std::size_t>(c)]));
    }
    // The hover lines name the colour space with the layer.
    EXPECT_EQ(Lines().at(1), "shot_doubled.exr (doubled)");

    // Read as the working space itself, the file's values are the working values; undo
    // puts the colour space back.
    box->setCurrentText("linear");
    emit box->activated(box->currentIndex());
    Settle();
    EXPECT_EQ(Window().Comp().Layers().front().image->colourSpace, "linear");
    EXPECT_EQ(Text(PointAtTheMiddle(), 7), FourDecimals(0.25f));
    MoveOver(Over(-10, -10));
    EXPECT_EQ(Text(PointAtTheMiddle(), 7), FourDecimals(0.25f));
    EXPECT_EQ(Lines().at(1), "shot_doubled.exr (linear)");
    Window().Editor().History().undo();
    Settle();
    EXPECT_EQ(box->currentText(), "doubled");
    EXPECT_EQ(Text(PointAtTheMiddle(), 7), FourDecimals(0.5f));
}

TEST_F(ColourManagedViewTest, TheDisplayedSampleValuesFollowTheView) {
    StartManaged({Flat("plate.exr")}, ConfigFile(), "Test Monitor", "Gamma 2.2");
    Item("view.sampleValues.displayed")->trigger();
    Settle();
    const std::array<double, 3> shown{std::pow(kColour[0], 1 / 2.2), std::pow(kColour[1], 1 / 2.2),
                                      std::pow(kColour[2], 1 / 2.2)};
    // The numbers are the view's values; the swatch shows them as they are, not through
    // the view a second time.
    ExpectShown(shown, {static_cast<float>(shown[0]), static_cast<float>(shown[1]),
                        static_cast<float>(shown[2]), 1.0f});
    Item("view.view.Swap")->trigger();
    Settle();
    ExpectShown({kColour[2], kColour[1], kColour[0]}, {kColour[2], kColour[1], kColour[0], 1.0f});
    Item("view.sampleValues.working")->trigger();
}

TEST_F(ColourManagedViewTest, TheChoiceIsKeptForEachConfigFile) {
    // A copy of the config elsewhere is another config file.
    const fs::path copy = folder_.Path() / "copy" / "config.ocio";
    fs::create_directories(copy.parent_path());
    fs::copy_file(ConfigFile(), copy);
    fs::copy_file(ConfigFile().parent_path() / "film.spi1d", copy.parent_path() / "film.spi1d");

    StartManaged({Flat("plate.exr")});
    EXPECT_EQ(Choices().Choice(), (qzhost::DisplayChoice{"Test Monitor", "Gamma 2.2"}));
    Item("view.display.Second Monitor")->trigger();
    Item("view.view.Film")->trigger();
    Stop();

    StartManaged({Flat("plate.exr")});
    EXPECT_EQ(Choices().Choice(), (qzhost::DisplayChoice{"Second Monitor", "Film"}));
    EXPECT_TRUE(Item("view.view.Film")->isChecked());
    EXPECT_EQ(Window().ColourNote(), "");
    Stop();

    StartManaged({Flat("plate.exr")}, copy);
    EXPECT_EQ(Choices().Choice(), (qzhost::DisplayChoice{"Test Monitor", "Gamma 2.2"}));
    Item("view.view.Swap")->trigger();
    Stop();
    // The command line comes before what was kept.
    StartManaged({Flat("plate.exr")}, ConfigFile(), "Test Monitor");
    EXPECT_EQ(Choices().Choice(), (qzhost::DisplayChoice{"Test Monitor", "Gamma 2.2"}));
    Stop();

    // The copy loses its view "Swap": the start falls back to the display's default view
    // and says so in one line.
    std::stringstream text;
    text << std::ifstream(copy).rdbuf();
    std::string edited = text.str();
    const std::string swap = "    - !<View> {name: Swap, colorspace: swapped}\n";
    ASSERT_NE(edited.find(swap), std::string::npos);
    edited.erase(edited.find(swap), swap.size());
    std::ofstream(copy) << edited;
    StartManaged({Flat("plate.exr")}, copy);
    EXPECT_EQ(Choices().Choice(), (qzhost::DisplayChoice{"Test Monitor", "Gamma 2.2"}));
    EXPECT_EQ(Window().ColourNote(),
              "the display 'Test Monitor' has no view 'Swap'; showing 'Gamma 2.2'");
}

TEST_F(ColourManagedViewTest, WithoutAConfigTheSwatchShowsTheCanvasColourOfAFloatProject) {
    StartManaged({Flat("plate.exr")}, std::nullopt);
    ASSERT_EQ(Window().ProjectDepth(), 2);
    const auto srgb = [](double v) {
        return v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1 / 2.4) - 0.055;
    };
    ExpectShown({srgb(kColour[0]), srgb(kColour[1]), srgb(kColour[2])}, kColour);
    auto* box = Window().LayerPanel().findChild<QComboBox*>("colourSpace");
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(box->isVisibleTo(&Window().LayerPanel()));
    EXPECT_FALSE(Choices().DisplayBox()->isVisibleTo(&Window()));
    EXPECT_EQ(Window().Comp().Layers().front().image->colourSpace, "");
}

} // namespace
} // namespace qzviewtest
