// The colours of an `inspect` run with an OpenColorIO config, in the test program's own
// process: the display choice and the input colour space that the project's test config
// (tests/ocio/config.ocio) gives, the refusals, and the pixels that the image then gives,
// turned into the working space one by one before a square's mean is taken.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include "BuildPaths.h"
#include "ExrTestFiles.h"
#include "PixelViewTestSupport.h"
#include "pixelview/AreaSample.h"
#include "pixelview/PixelViewColour.h"
#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewImage.h"

namespace qzhost::pixelview {
namespace {

using pixelviewtest::TempFolder;

/// The project's test config.
std::string ColourTestConfig() {
    return std::string(QZ_SOURCE_DIR) + "/tests/ocio/config.ocio";
}

/// The colours of a run of `options` on `image`, with the note that it left.
struct ColourRun {
    PixelViewColour colour;
    std::string note;
};

ColourRun ColourOf(const PixelViewOptions& options, const std::string& image,
                   const std::string& config = ColourTestConfig()) {
    ColourRun run;
    run.colour = SetUpColour(config, options, image, run.note);
    return run;
}

/// The message of the refusal of a run of `options` on `image`; empty when it is taken.
std::string SetUpRefusal(const PixelViewOptions& options, const std::string& image,
                         const std::string& config = ColourTestConfig()) {
    try {
        ColourOf(options, image, config);
    } catch (const BadRequest& error) {
        return error.what();
    }
    return {};
}

/// Red, green, blue, alpha through `transform`.
std::array<float, 4> Through(const ColourTransform& transform, std::array<float, 4> rgba) {
    transform.Apply(rgba.data(), 1);
    return rgba;
}

TEST(PixelViewColour, TheConfigsDefaultDisplayAndViewAreShownWithoutANote) {
    const ColourRun run = ColourOf({}, "/plates/shot.exr");
    EXPECT_EQ(run.colour.choice, (DisplayChoice{"Test Monitor", "Gamma 2.2", 0.0, 1.0}));
    EXPECT_EQ(run.note, "");
    ASSERT_TRUE(run.colour.display);
    // The view shows v^(1/2.2).
    const auto shown = Through(*run.colour.display, {0.25f, 0.5f, 1.0f, 0.5f});
    EXPECT_NEAR(shown[0], std::pow(0.25, 1 / 2.2), 1e-4);
    EXPECT_NEAR(shown[1], std::pow(0.5, 1 / 2.2), 1e-4);
    EXPECT_NEAR(shown[2], 1.0, 1e-4);
    EXPECT_EQ(shown[3], 0.5f);
}

TEST(PixelViewColour, TheChosenDisplayViewExposureAndGammaAreKept) {
    PixelViewOptions options;
    options.display = "Second Monitor";
    options.view = "Raw";
    options.exposure = 1.0;
    options.gamma = 2.0;
    const ColourRun run = ColourOf(options, "/plates/shot.exr");
    EXPECT_EQ(run.colour.choice, (DisplayChoice{"Second Monitor", "Raw", 1.0, 2.0}));
    EXPECT_EQ(run.note, "");
    // Twice the working value, then its square root.
    const auto shown = Through(*run.colour.display, {0.125f, 0.5f, 2.0f, 1.0f});
    EXPECT_NEAR(shown[0], 0.5, 1e-4);
    EXPECT_NEAR(shown[1], 1.0, 1e-4);
    EXPECT_NEAR(shown[2], 2.0, 1e-4);
}

TEST(PixelViewColour, AViewOrDisplayTheConfigLacksGivesWayToItsDefaultWithANote) {
    PixelViewOptions options;
    options.view = "Film";
    ColourRun run = ColourOf(options, "/plates/shot.exr");
    EXPECT_EQ(run.colour.choice.display, "Test Monitor");
    EXPECT_EQ(run.colour.choice.view, "Gamma 2.2");
    EXPECT_EQ(run.note, "the display 'Test Monitor' has no view 'Film'; showing 'Gamma 2.2'");
    options.display = "Third Monitor";
    options.view = "Swap";
    run = ColourOf(options, "/plates/shot.exr");
    EXPECT_EQ(run.colour.choice.display, "Test Monitor");
    EXPECT_NE(run.note.find("no display 'Third Monitor'"), std::string::npos) << run.note;
    EXPECT_EQ(run.note.find('\n'), std::string::npos) << run.note;
}

TEST(PixelViewColour, TheFileRulesGiveTheInputSpaceAndColorspaceOverridesThem) {
    const ColourRun doubled = ColourOf({}, "/plates/shot_doubled.exr");
    EXPECT_EQ(doubled.colour.inputSpace, "doubled");
    EXPECT_EQ(Through(*doubled.colour.toWorking, {0.25f, -0.5f, 3.0f, 0.75f}),
              (std::array<float, 4>{0.5f, -1.0f, 6.0f, 0.75f}));
    const ColourRun plain = ColourOf({}, "/plates/shot.exr");
    EXPECT_EQ(plain.colour.inputSpace, "linear");
    EXPECT_TRUE(plain.colour.toWorking->Identity());
    PixelViewOptions options;
    options.colorspace = "linear";
    const ColourRun overridden = ColourOf(options, "/plates/shot_doubled.exr");
    EXPECT_EQ(overridden.colour.inputSpace, "linear");
    EXPECT_TRUE(overridden.colour.toWorking->Identity());
}

TEST(PixelViewColour, AnUnknownColourSpaceIsRefusedWithTheConfigsList) {
    PixelViewOptions options;
    options.colorspace = "Doubled";
    const std::string refusal = SetUpRefusal(options, "/plates/shot.exr");
    EXPECT_EQ(refusal.rfind("--colorspace: the OpenColorIO config ", 0), 0u) << refusal;
    EXPECT_NE(refusal.find("no colour space 'Doubled'"), std::string::npos) << refusal;
    EXPECT_NE(refusal.find("its colour spaces: 'linear', 'raw', 'doubled', 'gamma 2.2', "
                           "'swapped', 'film'"),
              std::string::npos)
        << refusal;
}

TEST(PixelViewColour, AConfigThatDoesNotLoadIsRefusedWithItsOwnMessage) {
    TempFolder folder;
    const std::string broken = folder.File("broken.ocio");
    std::ofstream(broken) << "ocio_profile_version: 2\nroles: [\n";
    const std::string refusal = SetUpRefusal({}, "/plates/shot.exr", broken);
    EXPECT_EQ(refusal.rfind("cannot use the OpenColorIO config " + broken + ": ", 0), 0u)
        << refusal;
    EXPECT_EQ(refusal.find('\n'), std::string::npos) << refusal;
    const std::string missing = SetUpRefusal({}, "/plates/shot.exr", folder.File("none.ocio"));
    EXPECT_NE(missing.find("no such file"), std::string::npos) << missing;
}

TEST(PixelViewColour, TheImageGivesWorkingValuesAndKeepsItsAlpha) {
    TempFolder folder;
    const std::string path = folder.File("plate_doubled.exr");
    ASSERT_EQ(qztest::WriteExr(path, {qztest::FilledPart({"R", "G", "B", "A"}, 3, 2)}), "");
    PixelViewImage image(path);
    const PixelARGB stored = image.PixelAt(2, 1);
    image.SetColourTransform(ColourOf({}, path).colour.toWorking);
    const auto sample = [](const std::string& name) {
        const qztest::ExrPart part = qztest::FilledPart({"R", "G", "B", "A"}, 3, 2);
        return qztest::ExrSample(part, 2, 1, name);
    };
    EXPECT_EQ(stored, (PixelARGB{sample("A"), sample("R"), sample("G"), sample("B")}));
    EXPECT_EQ(image.PixelAt(2, 1),
              (PixelARGB{sample("A"), 2 * sample("R"), 2 * sample("G"), 2 * sample("B")}));
    std::vector<PixelARGB> row;
    image.PixelsAt(0, 3, 1, row);
    ASSERT_EQ(row.size(), 3u);
    EXPECT_EQ(row[2], image.PixelAt(2, 1));
    // Without a transform the file's values come back.
    image.SetColourTransform(nullptr);
    EXPECT_EQ(image.PixelAt(2, 1), stored);
}

TEST(PixelViewColour, ASquaresMeanIsTakenOverTheWorkingValues) {
    TempFolder folder;
    const std::string path = folder.File("plate.exr");
    const qztest::ExrPart part = qztest::FilledPart({"R", "G", "B"}, 3, 3);
    ASSERT_EQ(qztest::WriteExr(path, {part}), "");
    PixelViewOptions options;
    // Values v in the file are v^2.2 in the working space: a curve, so the mean of the
    // turned values is not the turned mean.
    options.colorspace = "gamma 2.2";
    const auto to_working = ColourOf(options, path).colour.toWorking;
    PixelViewImage image(path);
    image.SetColourTransform(to_working);
    std::array<double, 3> sums{};
    std::array<double, 3> stored_sums{};
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 3; ++x) {
            std::array<float, 4> rgba = {qztest::ExrSample(part, x, y, "R"),
                                         qztest::ExrSample(part, x, y, "G"),
                                         qztest::ExrSample(part, x, y, "B"), 1.0f};
            for (std::size_t c = 0; c < 3; ++c) {
                stored_sums[c] += rgba[c];
            }
            const auto working = Through(*to_working, rgba);
            for (std::size_t c = 0; c < 3; ++c) {
                // The transform is the curve that the config defines.
                EXPECT_NEAR(working[c], std::pow(rgba[c], 2.2), 1e-4 * std::pow(rgba[c], 2.2));
                sums[c] += working[c];
            }
        }
    }
    const PixelARGB mean = MeanAround(image, 1, 1, 3);
    EXPECT_EQ(mean[0], 1.0f);
    for (std::size_t c = 0; c < 3; ++c) {
        EXPECT_EQ(mean[c + 1], static_cast<float>(sums[c] / 9)) << c;
        // Averaging first and turning the mean would give less.
        EXPECT_GT(mean[c + 1], std::pow(stored_sums[c] / 9, 2.2) * 1.05) << c;
    }
}

} // namespace
} // namespace qzhost::pixelview
