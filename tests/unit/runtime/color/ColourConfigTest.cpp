// The host's OpenColorIO config: what it lists, what its file rules say, the transforms
// into the working space and through a display's view (worked out by hand from the
// config's own definitions), and the one-line refusals of files that are no config.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <stdlib.h>

#include "BuildPaths.h"
#include "TempFolder.h"
#include "qzhost/ColourConfig.h"

namespace {

namespace fs = std::filesystem;
using Pixel = std::array<float, 4>;

std::shared_ptr<const qzhost::ColourConfig> TestConfig() {
    return qzhost::ColourConfig::Load(fs::path(QZ_SOURCE_DIR) / "tests/ocio/config.ocio");
}

Pixel Through(const qzhost::ColourTransform& transform, Pixel pixel) {
    transform.Apply(pixel.data(), 1);
    return pixel;
}

/// The message of the error that loading `file` throws; empty when it loads.
std::string ConfigError(const fs::path& file) {
    try {
        qzhost::ColourConfig::Load(file);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

TEST(ColourConfig, ListsItsDisplaysViewsAndColourSpacesInItsOrder) {
    const auto config = TestConfig();
    EXPECT_EQ(config->Displays(), (std::vector<std::string>{"Test Monitor", "Second Monitor"}));
    EXPECT_EQ(config->DefaultDisplay(), "Test Monitor");
    EXPECT_EQ(config->Views("Test Monitor"),
              (std::vector<std::string>{"Gamma 2.2", "Swap", "Raw"}));
    EXPECT_EQ(config->DefaultView("Second Monitor"), "Raw");
    EXPECT_TRUE(config->Views("No Such Monitor").empty());
    EXPECT_EQ(config->ColourSpaces(), (std::vector<std::string>{"linear", "raw", "doubled",
                                                                "gamma 2.2", "swapped", "film"}));
    EXPECT_TRUE(config->HasColourSpace("doubled"));
    EXPECT_FALSE(config->HasColourSpace("Doubled "));
    EXPECT_EQ(config->WorkingSpace(), "linear");
}

TEST(ColourConfig, TheFileRulesGiveEachFileItsColourSpace) {
    const auto config = TestConfig();
    EXPECT_EQ(config->ColourSpaceOf("/plates/shot_doubled.exr"), "doubled");
    EXPECT_EQ(config->ColourSpaceOf("shot_doubled_v2.tif"), "doubled");
    // The default rule names the default role, whose colour space is given by its name.
    EXPECT_EQ(config->ColourSpaceOf("/plates/shot.exr"), "linear");
}

TEST(ColourConfig, AnInputColourSpaceTurnsFileValuesIntoWorkingValues) {
    const auto config = TestConfig();
    const Pixel doubled = Through(*config->ToWorking("doubled"), {0.25f, -0.5f, 3.0f, 0.5f});
    EXPECT_EQ(doubled, (Pixel{0.5f, -1.0f, 6.0f, 0.5f}));
    const auto working = config->ToWorking("linear");
    EXPECT_TRUE(working->Identity());
    EXPECT_EQ(Through(*working, {0.25f, 2.0f, -1.0f, 0.75f}), (Pixel{0.25f, 2.0f, -1.0f, 0.75f}));
    EXPECT_THROW(config->ToWorking("no such space"), std::runtime_error);
}

TEST(ColourConfig, AViewShowsWhatItsColourSpaceSays) {
    const auto config = TestConfig();
    const Pixel in{0.18f, 0.5f, 1.0f, 0.25f};
    const Pixel gamma = Through(*config->ToDisplay({"Test Monitor", "Gamma 2.2"}), in);
    for (std::size_t c = 0; c < 3; ++c) {
        EXPECT_NEAR(gamma[c], std::pow(in[c], 1.0 / 2.2), 1e-5) << c;
    }
    EXPECT_EQ(gamma[3], 0.25f);
    const Pixel swap = Through(*config->ToDisplay({"Test Monitor", "Swap"}), in);
    EXPECT_EQ(swap, (Pixel{1.0f, 0.5f, 0.18f, 0.25f}));
    const auto raw = config->ToDisplay({"Test Monitor", "Raw"});
    EXPECT_EQ(Through(*raw, {2.0f, -1.0f, 0.5f, 1.0f}), (Pixel{2.0f, -1.0f, 0.5f, 1.0f}));
    // Negative values have no power: the view shows them as 0.
    EXPECT_EQ(Through(*config->ToDisplay({"Test Monitor", "Gamma 2.2"}), {-0.5f, 0, 0, 1})[0],
              0.0f);
}

TEST(ColourConfig, ExposureActsBeforeTheViewAndGammaAfterIt) {
    const auto config = TestConfig();
    const Pixel in{0.125f, 0.5f, 0.25f, 1.0f};
    // Two stops up, then red and blue swapped, then the power 1/2.
    const Pixel shown = Through(*config->ToDisplay({"Test Monitor", "Swap", 2.0, 2.0}), in);
    EXPECT_NEAR(shown[0], std::sqrt(4 * 0.25), 1e-6);
    EXPECT_NEAR(shown[1], std::sqrt(4 * 0.5), 1e-6);
    EXPECT_NEAR(shown[2], std::sqrt(4 * 0.125), 1e-6);
    EXPECT_EQ(shown[3], 1.0f);
    const Pixel down = Through(*config->ToDisplay({"Test Monitor", "Raw", -1.0, 1.0}), in);
    EXPECT_EQ(down, (Pixel{0.0625f, 0.25f, 0.125f, 1.0f}));
}

TEST(ColourConfig, AViewOfAnotherDisplayIsRefused) {
    const auto config = TestConfig();
    EXPECT_THROW(config->ToDisplay({"Test Monitor", "Film"}), std::runtime_error);
    EXPECT_THROW(config->ToDisplay({"Monitor", "Raw"}), std::runtime_error);
}

TEST(ColourConfig, AMissingDisplayOrViewFallsBackToTheDefaultsWithOneLine) {
    const auto config = TestConfig();
    std::string note = "untouched";
    EXPECT_EQ(config->Resolve({"Second Monitor", "Film", 1.5, 2.0}, &note),
              (qzhost::DisplayChoice{"Second Monitor", "Film", 1.5, 2.0}));
    EXPECT_EQ(note, "untouched");

    EXPECT_EQ(config->Resolve({"Second Monitor", "Swap"}, &note),
              (qzhost::DisplayChoice{"Second Monitor", "Raw"}));
    EXPECT_EQ(note, "the display 'Second Monitor' has no view 'Swap'; showing 'Raw'");

    EXPECT_EQ(config->Resolve({"Projector", "Film"}, &note),
              (qzhost::DisplayChoice{"Test Monitor", "Gamma 2.2"}));
    EXPECT_EQ(note, "the config has no display 'Projector'; showing 'Test Monitor' with its view "
                    "'Gamma 2.2'");
    EXPECT_EQ(note.find('\n'), std::string::npos);

    // Nothing asked for: the config's defaults, without a word.
    note = "untouched";
    EXPECT_EQ(config->Resolve({}, &note), (qzhost::DisplayChoice{"Test Monitor", "Gamma 2.2"}));
    EXPECT_EQ(note, "untouched");
    EXPECT_EQ(config->Resolve({"Test Monitor", "Raw", 0, 100}).gamma, qzhost::kMaximumGamma);
}

TEST(ColourConfig, FilesThatAreNoConfigAreRefusedInOneLineNamingThem) {
    qztest::TempFolder temp{"colour-config-test"};
    const fs::path missing = temp.Path() / "missing.ocio";
    const fs::path text = temp.Path() / "text.ocio";
    std::ofstream(text) << "this is not a config\n";
    const fs::path broken = temp.Path() / "broken.ocio";
    std::ofstream(broken) << "ocio_profile_version: 2\nroles:\n  scene_linear: nowhere\n"
                             "displays:\n  D:\n    - !<View> {name: V, colorspace: nowhere}\n"
                             "colorspaces:\n  - !<ColorSpace> {name: a}\n";
    const fs::path no_working = temp.Path() / "no_working.ocio";
    std::ofstream(no_working) << "ocio_profile_version: 2\nroles:\n  default: a\n"
                                 "displays:\n  D:\n    - !<View> {name: V, colorspace: a}\n"
                                 "colorspaces:\n  - !<ColorSpace> {name: a}\n";
    for (const fs::path& file : {missing, text, broken, no_working, temp.Path()}) {
        const std::string error = ConfigError(file);
        EXPECT_NE(error.find("cannot use the OpenColorIO config " + file.string() + ": "),
                  std::string::npos)
            << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    }
    EXPECT_NE(ConfigError(missing).find("no such file"), std::string::npos);
    EXPECT_NE(ConfigError(no_working).find("no scene_linear role"), std::string::npos);
}

TEST(ColourConfig, TheEnvironmentNamesTheConfigWhenItIsSet) {
    const char* before = std::getenv("OCIO");
    const std::string kept = before != nullptr ? before : "";
    setenv("OCIO", "/somewhere/config.ocio", 1);
    EXPECT_EQ(qzhost::ColourConfig::FromEnvironment(), fs::path("/somewhere/config.ocio"));
    setenv("OCIO", "", 1);
    EXPECT_EQ(qzhost::ColourConfig::FromEnvironment(), std::nullopt);
    unsetenv("OCIO");
    EXPECT_EQ(qzhost::ColourConfig::FromEnvironment(), std::nullopt);
    if (before != nullptr) {
        setenv("OCIO", kept.c_str(), 1);
    }
}

} // namespace
