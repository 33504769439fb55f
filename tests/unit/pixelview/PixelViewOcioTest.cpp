// `qzhost inspect` with an OpenColorIO config, run as the program: the numbers are the
// pixel's values in the config's working space, the swatch shows them through the chosen
// display's view (worked out here from the definitions of the project's test config,
// tests/ocio/config.ocio), and every refusal is one line with exit status 2. Without a
// config nothing of this applies.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include "BuildPaths.h"
#include "ExrTestFiles.h"
#include "PixelViewTestSupport.h"

namespace pixelviewtest {
namespace {

using nlohmann::json;

/// The project's test config.
std::string OcioTestConfig() {
    return std::string(QZ_SOURCE_DIR) + "/tests/ocio/config.ocio";
}

/// The test images: 3 x 2 pixels whose samples say where they lie (ExrTestFiles.h). At
/// 0,0 red, green, blue are 0, 0.25, 0.5 and alpha (with an A channel) 0.75.
const qztest::ExrPart kRgb = qztest::FilledPart({"R", "G", "B"}, 3, 2);
const qztest::ExrPart kRgba = qztest::FilledPart({"R", "G", "B", "A"}, 3, 2);

/// The stored sample of channel `name` at `x`, `y` of `part`.
double Stored(const qztest::ExrPart& part, const std::string& name, int x = 0, int y = 0) {
    return qztest::ExrSample(part, x, y, name);
}

class PixelViewOcio : public ::testing::Test {
protected:
    /// Writes the image `name` of `part` into the test's folder; its path.
    std::string Image(const std::string& name, const qztest::ExrPart& part = kRgb) {
        const std::string path = folder_.File(name);
        EXPECT_EQ(qztest::WriteExr(path, {part}), "");
        return path;
    }

    /// `inspect` on `image` with `options` and --json, the OCIO environment variable naming
    /// `ocio_variable` (unset when empty).
    ProgramRun Inspect(const std::string& image, const std::string& options,
                       const std::string& ocio_variable = "") {
        return Qzhost("inspect " + Quoted(image) + " --json --prefs " +
                          Quoted(folder_.File("prefs.txt")) + " " + options,
                      "", "", ocio_variable);
    }

    /// The one JSON panel of a run that succeeded.
    static json Panel(const ProgramRun& run) {
        EXPECT_EQ(run.status, 0) << run.err;
        const std::vector<json> panels = JsonLines(run.out);
        EXPECT_EQ(panels.size(), 1u) << run.out;
        return panels.empty() ? json::object() : panels[0];
    }

    /// Expects a refusal: exit status 2, nothing on standard output, one line on standard
    /// error that starts with "qzhost inspect: " and holds `words`.
    static void ExpectRefused(const ProgramRun& run, const std::string& words) {
        EXPECT_EQ(run.status, 2) << run.err;
        EXPECT_EQ(run.out, "");
        const std::vector<std::string> lines = Lines(run.err);
        ASSERT_EQ(lines.size(), 1u) << run.err;
        EXPECT_EQ(lines[0].rfind("qzhost inspect: ", 0), 0u) << lines[0];
        EXPECT_NE(lines[0].find(words), std::string::npos) << lines[0];
    }

    TempFolder folder_;
};

/// The swatch's red, green, blue, within `tolerance`, and its alpha 1.
void ExpectSwatch(const json& panel, const std::array<double, 3>& rgb, double tolerance = 1e-4) {
    const json& swatch = panel.at("swatch");
    for (std::size_t c = 0; c < 3; ++c) {
        EXPECT_NEAR(swatch.at(c).get<double>(), rgb[c], tolerance) << "channel " << c;
    }
    EXPECT_EQ(swatch.at(3), 1);
}

/// The delivered pixel (alpha, red, green, blue), exactly.
void ExpectDelivered(const json& panel, const std::array<double, 4>& argb) {
    for (std::size_t c = 0; c < 4; ++c) {
        EXPECT_EQ(panel.at("pixel").at(c).get<double>(), argb[c]) << "channel " << c;
    }
}

/// v^(1/2.2), negative values as 0: the "Gamma 2.2" view of "Test Monitor", as the
/// config defines it.
double Gamma22(double v) {
    return std::pow(std::max(v, 0.0), 1 / 2.2);
}

TEST_F(PixelViewOcio, TheSwapViewSwapsRedAndBlueInTheSwatchAndTheNumbersStayTheWorkingValues) {
    const std::string image = Image("plate.exr");
    const json panel = Panel(Inspect(image, "--at 0,0 --ocio " + Quoted(OcioTestConfig()) +
                                                " --display 'Test Monitor' --view Swap"));
    const double r = Stored(kRgb, "R");
    const double g = Stored(kRgb, "G");
    const double b = Stored(kRgb, "B");
    ASSERT_NE(r, b);
    ExpectSwatch(panel, {b, g, r});
    ExpectDelivered(panel, {1, r, g, b});
    EXPECT_EQ(ControlText(panel, 7), "0.0000");
    EXPECT_EQ(ControlText(panel, 8), "0.2500");
    EXPECT_EQ(ControlText(panel, 9), "0.5000");
}

TEST_F(PixelViewOcio, TheGammaViewShowsEachWorkingValueToThePowerOneOver2Point2) {
    const std::string image = Image("plate.exr");
    const std::array<double, 3> stored = {Stored(kRgb, "R"), Stored(kRgb, "G"), Stored(kRgb, "B")};
    const std::array<double, 3> shown = {Gamma22(stored[0]), Gamma22(stored[1]),
                                         Gamma22(stored[2])};
    const json chosen = Panel(Inspect(image, "--at 0,0 --ocio " + Quoted(OcioTestConfig()) +
                                                 " --display 'Test Monitor' --view 'Gamma 2.2'"));
    ExpectSwatch(chosen, shown);
    ExpectDelivered(chosen, {1, stored[0], stored[1], stored[2]});
    // It is the config's default display and view.
    const ProgramRun by_default = Inspect(image, "--at 0,0 --ocio " + Quoted(OcioTestConfig()));
    EXPECT_EQ(by_default.err, "");
    ExpectSwatch(Panel(by_default), shown);
}

TEST_F(PixelViewOcio, ADoubledFileReadsTwiceItsValuesAndColorspaceLinearOverridesIt) {
    const std::string image = Image("plate_doubled.exr", kRgba);
    const std::string options =
        "--at 0,0 --at 2,1 --ocio " + Quoted(OcioTestConfig()) + " --view Raw";
    const ProgramRun doubled = Inspect(image, options);
    ASSERT_EQ(doubled.status, 0) << doubled.err;
    const std::vector<json> panels = JsonLines(doubled.out);
    ASSERT_EQ(panels.size(), 2u);
    const std::array<std::array<int, 2>, 2> points = {{{0, 0}, {2, 1}}};
    for (std::size_t i = 0; i < 2; ++i) {
        const auto [x, y] = points[i];
        SCOPED_TRACE("at " + std::to_string(x) + "," + std::to_string(y));
        // Colours twice the file's; alpha the file's.
        ExpectDelivered(panels[i], {Stored(kRgba, "A", x, y), 2 * Stored(kRgba, "R", x, y),
                                    2 * Stored(kRgba, "G", x, y), 2 * Stored(kRgba, "B", x, y)});
    }
    // 0, 0.25, 0.5 read as 0, 0.5, 1, and the raw view shows that.
    EXPECT_EQ(ControlText(panels[0], 8), "0.5000");
    EXPECT_EQ(ControlText(panels[0], 9), "1.0000");
    EXPECT_EQ(ControlText(panels[0], 10), "0.7500");
    ExpectSwatch(panels[0], {0, 0.5, 1});

    const json linear = Panel(Inspect(image, "--at 0,0 --ocio " + Quoted(OcioTestConfig()) +
                                                 " --view Raw --colorspace linear"));
    ExpectDelivered(
        linear, {Stored(kRgba, "A"), Stored(kRgba, "R"), Stored(kRgba, "G"), Stored(kRgba, "B")});
    ExpectSwatch(linear, {0, 0.25, 0.5});
}

TEST_F(PixelViewOcio, ExposureScalesTheSwatchsWorkingColourBeforeTheViewAndLeavesTheNumbers) {
    const std::string image = Image("plate.exr");
    const double g = Stored(kRgb, "G");
    const double b = Stored(kRgb, "B");
    // One stop: twice the working value, then the view's curve (the curve first and then
    // twice would show green at 2 x 0.25^(1/2.2), above 1).
    const json brighter = Panel(Inspect(image, "--at 0,0 --ocio " + Quoted(OcioTestConfig()) +
                                                   " --view 'Gamma 2.2' --exposure 1"));
    ExpectSwatch(brighter, {0, Gamma22(2 * g), Gamma22(2 * b)});
    ExpectDelivered(brighter, {1, 0, g, b});
    EXPECT_EQ(ControlText(brighter, 8), "0.2500");
    // The gamma acts on the view's values: the raw view with gamma 2 shows square roots.
    const json gamma = Panel(
        Inspect(image, "--at 0,0 --ocio " + Quoted(OcioTestConfig()) + " --view Raw --gamma 2"));
    ExpectSwatch(gamma, {0, std::sqrt(g), std::sqrt(b)});
    ExpectDelivered(gamma, {1, 0, g, b});
}

TEST_F(PixelViewOcio, ASquaresMeanIsTakenOverTheWorkingValues) {
    const std::string image = Image("plate_doubled.exr", kRgba);
    const json panel =
        Panel(Inspect(image, "--at 1,0 --sample 3 --ocio " + Quoted(OcioTestConfig())));
    // The pixels of the square that lie in the image (its top row lies above it), each
    // turned into twice its colour and laid over transparent black by its alpha.
    std::array<double, 4> sums{};
    for (int y = 0; y <= 1; ++y) {
        for (int x = 0; x <= 2; ++x) {
            const float alpha = static_cast<float>(Stored(kRgba, "A", x, y));
            sums[0] += 2 * static_cast<float>(Stored(kRgba, "R", x, y)) * alpha;
            sums[1] += 2 * static_cast<float>(Stored(kRgba, "G", x, y)) * alpha;
            sums[2] += 2 * static_cast<float>(Stored(kRgba, "B", x, y)) * alpha;
            sums[3] += alpha;
        }
    }
    ExpectDelivered(panel,
                    {static_cast<float>(sums[3] / 9), static_cast<float>(sums[0] / sums[3]),
                     static_cast<float>(sums[1] / sums[3]), static_cast<float>(sums[2] / sums[3])});
}

TEST_F(PixelViewOcio, TheOcioVariableNamesTheConfigWhenOcioIsNotGiven) {
    const std::string image = Image("plate_doubled.exr");
    const json from_variable = Panel(Inspect(image, "--at 0,0 --view Swap", OcioTestConfig()));
    ExpectDelivered(from_variable, {1, 0, 0.5, 1});
    ExpectSwatch(from_variable, {1, 0.5, 0});
    // --ocio comes first: the variable's file is not even read.
    const json given =
        Panel(Inspect(image, "--at 0,0 --view Swap --ocio " + Quoted(OcioTestConfig()),
                      folder_.File("no-such.ocio")));
    ExpectDelivered(given, {1, 0, 0.5, 1});
}

TEST_F(PixelViewOcio, AConfigThatDoesNotLoadIsOneLineAndStatusTwo) {
    const std::string image = Image("plate.exr");
    const std::string broken = folder_.File("broken.ocio");
    std::ofstream(broken) << "ocio_profile_version: 2\nroles:\n  scene_linear: [\n";
    ExpectRefused(Inspect(image, "--at 0,0 --ocio " + Quoted(broken)),
                  "cannot use the OpenColorIO config " + broken + ": ");
    ExpectRefused(Inspect(image, "--at 0,0", broken),
                  "cannot use the OpenColorIO config " + broken + ": ");
}

TEST_F(PixelViewOcio, AViewTheDisplayLacksGivesWayToItsDefaultWithOneLine) {
    const std::string image = Image("plate.exr");
    const ProgramRun run =
        Inspect(image, "--at 0,0 --ocio " + Quoted(OcioTestConfig()) + " --view 'No Such View'");
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "qzhost: warning: the display 'Test Monitor' has no view 'No Such View'; "
                       "showing 'Gamma 2.2'\n");
    ExpectSwatch(Panel(run), {0, Gamma22(Stored(kRgb, "G")), Gamma22(Stored(kRgb, "B"))});
}

TEST_F(PixelViewOcio, TheRefusalsOfColourOptionsAreOneLineAndStatusTwo) {
    const std::string image = Image("plate.exr");
    const std::string config = " --ocio " + Quoted(OcioTestConfig());
    const std::string icc = folder_.File("monitor.icc");
    std::ofstream(icc) << "a monitor profile";
    ExpectRefused(Inspect(image, "--at 0,0 --monitor " + Quoted(icc) + config),
                  "--monitor cannot be used with an OpenColorIO config");
    ExpectRefused(Inspect(image, "--at 0,0 --colorspace nope" + config),
                  "no colour space 'nope'; its colour spaces: 'linear', 'raw', 'doubled'");
    ExpectRefused(Inspect(image, "--at 0,0 --gamma 12" + config),
                  "--gamma must be a number from 0.1 to 10, not 12");
    ExpectRefused(Inspect(image, "--at 0,0 --exposure inf" + config),
                  "--exposure must be a finite number of stops, not inf");
    // Without a config a colour option means nothing.
    ExpectRefused(Inspect(image, "--at 0,0 --view Swap"), "--view needs an OpenColorIO config");
}

TEST_F(PixelViewOcio, WithoutAConfigThePixelIsTheFilesAndTheSwatchShowsItAsItIs) {
    // No file rule applies: a "doubled" name reads as stored, shown through the identity.
    const std::string image = Image("plate_doubled.exr");
    const ProgramRun run = Inspect(image, "--at 0,0");
    EXPECT_EQ(run.err, "");
    const json panel = Panel(run);
    ExpectDelivered(panel, {1, 0, 0.25, 0.5});
    ExpectSwatch(panel, {0, 0.25, 0.5}, 0);
}

} // namespace
} // namespace pixelviewtest

#endif
