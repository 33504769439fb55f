// `qzhost inspect` as a user runs it: on the bundled samples and on images made here,
// its values compared with the notation rules worked out in NotationRule.cpp.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imageio.h>

#include "BuildPaths.h"
#include "NotationRule.h"
#include "PixelViewTestSupport.h"

namespace pixelviewtest {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

struct Case {
    double x;
    double y;
    Pixel pixel;
};

/// The header of an image file as stored: its size, channels, format and metadata.
OIIO::ImageSpec HeaderOf(const std::string& path) {
    const OIIO::ImageBuf file(path);
    return file.nativespec();
}

/// The pixel of a file as stored, read here with OpenImageIO's plain reader: floats as
/// they are, unsigned integer codes k of n bits as k / (2^n - 1).
Pixel FilePixel(const std::string& path, int x, int y) {
    auto in = OIIO::ImageInput::open(path);
    EXPECT_TRUE(in) << OIIO::geterror();
    if (!in) {
        return {};
    }
    const OIIO::ImageSpec header = HeaderOf(path);
    const std::size_t count = static_cast<std::size_t>(header.image_pixels() * header.nchannels);
    std::vector<float> data(count);
    if (header.format == OIIO::TypeDesc::UINT8 || header.format == OIIO::TypeDesc::UINT16) {
        const int bits = header.format == OIIO::TypeDesc::UINT8
                             ? 8
                             : header.get_int_attribute("oiio:BitsPerSample", 16);
        const double max = static_cast<double>((1 << bits) - 1);
        std::vector<std::uint16_t> words(count);
        EXPECT_TRUE(
            in->read_image(0, 0, 0, header.nchannels, OIIO::TypeDesc::UINT16, words.data()));
        for (std::size_t i = 0; i < count; ++i) {
            // Read as 16-bit words, a code of n bits arrives scaled to 0-65535.
            const double k = std::round(words[i] * max / 65535.0);
            data[i] = static_cast<float>(k) / static_cast<float>(max);
        }
    } else {
        EXPECT_TRUE(in->read_image(0, 0, 0, header.nchannels, OIIO::TypeDesc::FLOAT, data.data()));
    }
    const std::size_t at = static_cast<std::size_t>((y * header.width + x) * header.nchannels);
    const float a = header.nchannels == 4 ? data[at + 3] : 1.0f;
    return {a, data[at], data[at + 1], data[at + 2]};
}

std::string AtArguments(const std::vector<Case>& cases) {
    std::string arguments;
    for (const Case& c : cases) {
        std::ostringstream point;
        point << c.x << ',' << c.y;
        arguments += " --at " + point.str();
    }
    return arguments;
}

std::string FloorText(double v) {
    return std::to_string(static_cast<long>(std::floor(v)));
}

/// Runs inspect with --json on `image` for the cases in `mode` ("" for the stored one)
/// and checks every value field, the position and the swatch against the rules.
void ExpectPanels(const std::string& image, const std::vector<Case>& cases, const char* mode,
                  Mode expected_mode, int depth) {
    TempFolder folder;
    std::string arguments = "inspect " + Quoted(image) + AtArguments(cases) + " --json --prefs " +
                            Quoted(folder.File("prefs.txt"));
    if (*mode != '\0') {
        arguments += std::string(" --mode ") + mode;
    }
    const ProgramRun run = Qzhost(arguments);
    ASSERT_EQ(run.status, 0) << run.err;
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const json& panel = panels[i];
        const Case& c = cases[i];
        SCOPED_TRACE(image + " at " + std::to_string(c.x) + "," + std::to_string(c.y) + " mode " +
                     mode);
        EXPECT_EQ(panel.at("mode"), static_cast<int>(expected_mode));
        EXPECT_EQ(panel.at("project_depth"), depth);
        for (std::size_t channel = 0; channel < 4; ++channel) {
            EXPECT_EQ(panel.at("pixel").at(channel).get<float>(), c.pixel[channel]) << channel;
        }
        const auto values = ExpectedValues(c.pixel, expected_mode, depth);
        const auto labels = ExpectedLabels(expected_mode);
        for (int field = 0; field < 4; ++field) {
            EXPECT_EQ(ControlText(panel, 7 + field), values[static_cast<std::size_t>(field)])
                << "value field " << 7 + field;
            EXPECT_EQ(ControlText(panel, 3 + field), labels[static_cast<std::size_t>(field)]);
        }
        EXPECT_EQ(ControlText(panel, 15), FloorText(c.x));
        EXPECT_EQ(ControlText(panel, 16), FloorText(c.y));
        // Identity monitor: the swatch is the pixel clamped to 0-1, always opaque.
        ASSERT_TRUE(panel.contains("swatch"));
        for (int channel = 0; channel < 3; ++channel) {
            const float v = c.pixel[static_cast<std::size_t>(channel + 1)];
            EXPECT_FLOAT_EQ(panel["swatch"][channel].get<float>(), std::clamp(v, 0.0f, 1.0f));
        }
        EXPECT_EQ(panel["swatch"][3], 1);
    }
}

const char* const kModes[] = {"auto", "percent", "web", "hsb", "8bpc", "10bpc", "16bpc", "decimal"};
const Mode kModeNumbers[] = {kAuto, kPercent, kWeb, kHsb, kBpc8, kBpc10, kBpc16, kDecimal};

std::vector<Case> ChartCases() {
    const std::string chart = SampleFile("chart.exr");
    std::vector<Case> cases;
    // One pixel of every patch row: primaries, greys, over-range, negatives and alpha.
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{{205, 5},
                                                               {45, 45},
                                                               {205, 45},
                                                               {45, 85},
                                                               {125, 85},
                                                               {5, 125},
                                                               {45, 125},
                                                               {85, 125},
                                                               {125, 125},
                                                               {165, 125},
                                                               {205, 125}}) {
        cases.push_back({static_cast<double>(x), static_cast<double>(y), FilePixel(chart, x, y)});
    }
    return cases;
}

TEST(PixelViewProgram, TheHdrChartShowsEveryNotationByItsRule) {
    const auto cases = ChartCases();
    for (std::size_t m = 0; m < 8; ++m) {
        ExpectPanels(SampleFile("chart.exr"), cases, kModes[m], kModeNumbers[m], 2);
    }
}

TEST(PixelViewProgram, TheEightBitChartShowsTheZeroTo255ScaleInAuto) {
    const std::string png = SampleFile("chart.png");
    std::vector<Case> cases;
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{{205, 45}, {45, 85}, {5, 125}}) {
        cases.push_back({static_cast<double>(x), static_cast<double>(y), FilePixel(png, x, y)});
    }
    ExpectPanels(png, cases, "", kAuto, 0);
    ExpectPanels(png, cases, "web", kWeb, 0);
}

TEST(PixelViewProgram, EightBitImagesShowTheirValues) {
    TempFolder folder;
    const std::string path = folder.File("rgb8.png");
    WriteImage(path, 3, 2, 3, "uint8",
               {255, 128, 0, 0, 0, 0, 10, 200, 77, 254, 1, 128, 51, 102, 153, 255, 255, 255});
    const auto v = [](int k) { return static_cast<float>(k) / 255.0f; };
    const std::vector<Case> cases = {{0, 0, {1, v(255), v(128), v(0)}},
                                     {1.5, 0.25, {1, v(0), v(0), v(0)}},
                                     {2, 0, {1, v(10), v(200), v(77)}},
                                     {0, 1, {1, v(254), v(1), v(128)}},
                                     {1.99, 1.99, {1, v(51), v(102), v(153)}}};
    for (std::size_t m = 0; m < 8; ++m) {
        ExpectPanels(path, cases, kModes[m], kModeNumbers[m], 0);
    }
}

TEST(PixelViewProgram, SixteenBitImagesShowTheZeroTo32768ScaleInAuto) {
    TempFolder folder;
    const std::string path = folder.File("rgba16.tif");
    WriteImage(path, 3, 1, 4, "uint16",
               {65535, 32768, 0, 65535, 1000, 40000, 65535, 32768, 12345, 0, 54321, 0});
    const auto v = [](int k) { return static_cast<float>(k) / 65535.0f; };
    const std::vector<Case> cases = {{0, 0, {v(65535), v(65535), v(32768), v(0)}},
                                     {1, 0, {v(32768), v(1000), v(40000), v(65535)}},
                                     {2, 0, {v(0), v(12345), v(0), v(54321)}}};
    ExpectPanels(path, cases, "", kAuto, 1);
    ExpectPanels(path, cases, "percent", kPercent, 1);
    ExpectPanels(path, cases, "hsb", kHsb, 1);
}

TEST(PixelViewProgram, FloatImagesShowFourDecimalsInAutoWithOverRangeAndNegatives) {
    TempFolder folder;
    const std::string path = folder.File("float.exr");
    WriteImage(path, 3, 1, 3, "float", {2.5, -0.25, 0.5, 1e-3, 0.18, 0.999, 16, 0, -1});
    const std::vector<Case> cases = {{0, 0, {1, 2.5f, -0.25f, 0.5f}},
                                     {1, 0, {1, 1e-3f, 0.18f, 0.999f}},
                                     {2, 0, {1, 16.0f, 0.0f, -1.0f}}};
    ExpectPanels(path, cases, "", kAuto, 2);
    ExpectPanels(path, cases, "8bpc", kBpc8, 2);
    ExpectPanels(path, cases, "web", kWeb, 2);
}

TEST(PixelViewProgram, ExactHalvesGoToTheEvenNeighbourInTheWholeNumberNotations) {
    TempFolder folder;
    const std::string path = folder.File("halves.exr");
    // Products that are exact halves: 1.5 × 255 = 382.5, -0.5 × 255 = -127.5,
    // (383.5 / 255) × 255 = 383.5, 1.5 × 1023 = 1534.5, (2.5 / 32768) × 32768 = 2.5.
    const float up = 383.5f / 255.0f;
    const float tiny = 2.5f / 32768.0f;
    WriteImage(path, 2, 1, 3, "float", {1.5, -0.5, up, tiny, 0.5, 1.5});
    const std::vector<Case> cases = {{0, 0, {1, 1.5f, -0.5f, up}}, {1, 0, {1, tiny, 0.5f, 1.5f}}};
    ExpectPanels(path, cases, "8bpc", kBpc8, 2);
    ExpectPanels(path, cases, "10bpc", kBpc10, 2);
    ExpectPanels(path, cases, "16bpc", kBpc16, 2);
    ExpectPanels(path, cases, "web", kWeb, 2);
    // The rule's answers, written out: 382 (not 383), -128, 384; 1534 (not 1535); 2.
    TempFolder prefs;
    const ProgramRun run =
        Qzhost("inspect " + Quoted(path) + " --at 0,0 --at 1,0 --mode 8bpc --json --prefs " +
               Quoted(prefs.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(ControlText(panels[0], 7), "382");
    EXPECT_EQ(ControlText(panels[0], 8), "-128");
    EXPECT_EQ(ControlText(panels[0], 9), "384");
    EXPECT_EQ(ControlText(panels[1], 9), "382");
}

TEST(PixelViewProgram, TenBitDpxShowsTheSixteenBitScaleInAuto) {
    TempFolder folder;
    const std::string path = folder.File("ten.dpx");
    WriteImage(path, 3, 1, 3, "uint10", {512, 256, 1023, 0, 100, 1000, 1, 1022, 700});
    std::vector<Case> cases;
    for (int x = 0; x < 3; ++x) {
        cases.push_back({static_cast<double>(x), 0, FilePixel(path, x, 0)});
    }
    EXPECT_FLOAT_EQ(cases[0].pixel[1], 512 / 1023.0f);
    ExpectPanels(path, cases, "", kAuto, 1);
    ExpectPanels(path, cases, "10bpc", kBpc10, 1);
}

TEST(PixelViewProgram, JpegShowsTheZeroTo255ScaleInAuto) {
    TempFolder folder;
    const std::string path = folder.File("photo.jpg");
    std::vector<double> values;
    for (int i = 0; i < 16 * 16; ++i) {
        values.insert(values.end(),
                      {static_cast<double>(i % 256), 128.0, static_cast<double>(255 - i % 256)});
    }
    WriteImage(path, 16, 16, 3, "uint8", values);
    std::vector<Case> cases;
    for (const auto& [x, y] : std::vector<std::pair<int, int>>{{0, 0}, {7, 9}, {15, 15}}) {
        cases.push_back({static_cast<double>(x), static_cast<double>(y), FilePixel(path, x, y)});
    }
    ExpectPanels(path, cases, "", kAuto, 0);
    ExpectPanels(path, cases, "percent", kPercent, 0);
}

TEST(PixelViewProgram, TheImageMayStandBetweenThePoints) {
    TempFolder folder;
    const ProgramRun run = Qzhost("inspect --at 45,85 " + Quoted(SampleFile("chart.png")) +
                                  " --at 5,5 --json --prefs " + Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(fs::path(panels[0].at("image").get<std::string>()).filename(), "chart.png");
    EXPECT_EQ(ControlText(panels[0], 9), "64");
    EXPECT_EQ(ControlText(panels[1], 7), "255");
}

TEST(PixelViewProgram, WithoutAnImageTheBundledChartIsShown) {
    TempFolder folder;
    const ProgramRun run =
        Qzhost("inspect --at 45,85 --json --prefs " + Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 1u);
    EXPECT_EQ(fs::path(panels[0].at("image").get<std::string>()).filename(), "chart.exr");
    const Pixel pixel = FilePixel(SampleFile("chart.exr"), 45, 85);
    EXPECT_EQ(ControlText(panels[0], 7), NumberText(pixel[1], 4, 4));
    EXPECT_EQ(ControlText(panels[0], 7), "4.0000");
}

TEST(PixelViewProgram, TheOriginAddsXPrimeAndYPrime) {
    TempFolder folder;
    const ProgramRun run = Qzhost("inspect --at 15.7,9.2 --origin 10,10 --json --prefs " +
                                  Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const json panel = JsonLines(run.out).at(0);
    EXPECT_EQ(ControlText(panel, 15), "15");
    EXPECT_EQ(ControlText(panel, 16), "9");
    EXPECT_EQ(ControlText(panel, 17), "5");
    EXPECT_EQ(ControlText(panel, 18), "-1");
    for (const auto& control : panel.at("controls")) {
        if (control.at("id") >= 13 && control.at("id") <= 18) {
            EXPECT_TRUE(control.at("visible").get<bool>()) << control.dump();
        }
    }
}

TEST(PixelViewProgram, WithoutAnOriginXPrimeAndYPrimeStayHidden) {
    TempFolder folder;
    const ProgramRun run =
        Qzhost("inspect --at 3,4 --json --prefs " + Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const json panel = JsonLines(run.out).at(0);
    for (const auto& control : panel.at("controls")) {
        const int id = control.at("id");
        if (id == 13 || id == 14 || id == 17 || id == 18) {
            EXPECT_FALSE(control.at("visible").get<bool>()) << control.dump();
        }
    }
}

TEST(PixelViewProgram, TheTextOutputLaysTheRowsOutWithTheirLabelsAndValues) {
    TempFolder folder;
    const ProgramRun run =
        Qzhost("inspect --at 45,85 --origin 40,80 --prefs " + Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = Lines(run.out);
    ASSERT_GE(lines.size(), 8u) << run.out;
    // Red 4, green 1, blue 0.25, alpha 1 at X 45, Y 85 (X' 5, Y' 5): each channel row with
    // its position row to its right, the swatch beside the second row.
    EXPECT_TRUE(std::regex_search(lines[0], std::regex("R : +4\\.0000 +\\| +X : +45$")))
        << lines[0];
    EXPECT_TRUE(std::regex_search(lines[1], std::regex("#FFFF40 +G : +1\\.0000 +\\| .*Y : +85$")))
        << lines[1];
    EXPECT_TRUE(std::regex_search(lines[2], std::regex("B : +0\\.2500 +\\| .*X' : +5$")))
        << lines[2];
    EXPECT_TRUE(std::regex_search(lines[3], std::regex("A : +1\\.0000 +\\| +Y' : +5$")))
        << lines[3];
    EXPECT_TRUE(std::regex_match(lines[4], std::regex(" -{20,}"))) << lines[4];
    EXPECT_EQ(lines[5], " chart.exr");
    EXPECT_EQ(lines[6], " openexr, 240 x 160, R,G,B,A, half float");
    EXPECT_EQ(lines[7], " Project: 32 bpc float");
}

TEST(PixelViewProgram, SeveralPointsPrintOnePanelEach) {
    TempFolder folder;
    const ProgramRun run =
        Qzhost("inspect --at 5,5 --at 45,5 --at 85,5 --prefs " + Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = Lines(run.out);
    std::vector<std::string> swatches;
    for (const std::string& line : lines) {
        std::smatch match;
        if (std::regex_search(line, match, std::regex("#[0-9A-F]{6}"))) {
            swatches.push_back(match.str());
        }
    }
    EXPECT_EQ(swatches, (std::vector<std::string>{"#FF0000", "#00FF00", "#0000FF"}));
}

TEST(PixelViewProgram, PointsComeFromStandardInputOnePerLine) {
    TempFolder folder;
    const ProgramRun run =
        Qzhost("inspect --at 5,5 --at - --json --prefs " + Quoted(folder.File("p.txt")),
               "45,85\n\n# the negative patch\n45,125\n");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 3u);
    EXPECT_EQ(panels[0].at("at"), json::array({5, 5}));
    EXPECT_EQ(panels[1].at("at"), json::array({45, 85}));
    EXPECT_EQ(panels[2].at("at"), json::array({45, 125}));
    EXPECT_EQ(ControlText(panels[2], 7), "-0.5000");
}

TEST(PixelViewProgram, TheChosenNotationIsStoredAndUsedByTheNextRun) {
    TempFolder folder;
    const std::string prefs = folder.File("prefs.txt");
    const ProgramRun first = Qzhost("inspect --at 5,5 --mode hsb --json --prefs " + Quoted(prefs));
    ASSERT_EQ(first.status, 0) << first.err;
    EXPECT_EQ(JsonLines(first.out).at(0).at("mode"), 7);
    const ProgramRun second = Qzhost("inspect --at 45,5 --json --prefs " + Quoted(prefs));
    ASSERT_EQ(second.status, 0) << second.err;
    const json panel = JsonLines(second.out).at(0);
    EXPECT_EQ(panel.at("mode"), 7);
    EXPECT_EQ(ControlText(panel, 3), "H :");
    EXPECT_EQ(ControlText(panel, 7), "120");
    std::ifstream file(prefs);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    EXPECT_NE(text.find("Info Palette Pixel Display"), std::string::npos) << text;
}

TEST(PixelViewProgram, TheDefaultPreferenceFileLiesInTheUsersConfigurationFolder) {
    TempFolder home;
    const std::string file = (home.Path() / "qzhost" / "preferences.txt").string();
    const ProgramRun chosen =
        Qzhost("inspect --at 5,5 --mode percent --json --prefs " + Quoted(file));
    ASSERT_EQ(chosen.status, 0) << chosen.err;
    // The same file, found without --prefs in the user's configuration folder.
    const ProgramRun later = Qzhost("inspect --at 5,5 --json", "", home.Path().string());
    ASSERT_EQ(later.status, 0) << later.err;
    EXPECT_EQ(JsonLines(later.out).at(0).at("mode"), 1);
    // Another configuration folder has its own preferences: the stored mode is not there.
    const ProgramRun elsewhere = Qzhost("inspect --at 5,5 --json");
    ASSERT_EQ(elsewhere.status, 0) << elsewhere.err;
    EXPECT_EQ(JsonLines(elsewhere.out).at(0).at("mode"), 0);
}

TEST(PixelViewProgram, TheLocaleChoosesTheDecimalSeparator) {
    TempFolder folder;
    const ProgramRun run =
        Qzhost("inspect --at 45,45 --locale de_DE --mode decimal --json --prefs " +
               Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const Pixel pixel = FilePixel(SampleFile("chart.exr"), 45, 45);
    EXPECT_EQ(ControlText(JsonLines(run.out).at(0), 7), NumberText(pixel[1], 4, 4, ','));
}

/// The colour of a pixel of a PNG file, and the number of distinct colours in a
/// rectangle of it.
struct Png {
    int width = 0;
    int height = 0;
    int channels = 0;
    std::vector<std::uint8_t> data;

    explicit Png(const std::string& path) {
        auto in = OIIO::ImageInput::open(path);
        EXPECT_TRUE(in) << OIIO::geterror();
        if (!in) {
            return;
        }
        const OIIO::ImageSpec header = HeaderOf(path);
        width = header.width;
        height = header.height;
        channels = header.nchannels;
        data.resize(static_cast<std::size_t>(width * height * channels));
        EXPECT_TRUE(in->read_image(0, 0, 0, channels, OIIO::TypeDesc::UINT8, data.data()));
    }
    std::vector<int> At(int x, int y) const {
        std::vector<int> pixel;
        for (int c = 0; c < channels; ++c) {
            pixel.push_back(data[static_cast<std::size_t>((y * width + x) * channels + c)]);
        }
        return pixel;
    }
    std::size_t Colours(int x0, int y0, int x1, int y1) const {
        std::set<std::vector<int>> colours;
        for (int y = y0; y < y1; ++y) {
            for (int x = x0; x < x1; ++x) {
                colours.insert(At(x, y));
            }
        }
        return colours.size();
    }
};

TEST(PixelViewProgram, ThePngShowsTheSwatchColourAndTheTextRows) {
    TempFolder folder;
    const std::string png = folder.File("panel.png");
    // Alpha 0 at 205,125: the colour rows stay empty, the alpha row is written.
    const ProgramRun run = Qzhost("inspect --at 45,85 --at 205,125 --png " + Quoted(png) +
                                  " --prefs " + Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const Png over(folder.File("panel-1.png"));
    ASSERT_EQ(over.width, 206);
    ASSERT_EQ(over.height, 114);
    // The swatch (7, 17, 20 by 20) at its middle: red 4, green 1, blue 0.25 clamped.
    const std::vector<int> swatch = over.At(17, 27);
    ASSERT_GE(swatch.size(), 3u);
    EXPECT_NEAR(swatch[0], 255, 1);
    EXPECT_NEAR(swatch[1], 255, 1);
    EXPECT_NEAR(swatch[2], 64, 1);
    // Value rows 7 to 10 (x 51 on, left of the rule at 100) hold drawn text.
    for (const int top : {4, 17, 30, 44}) {
        EXPECT_GT(over.Colours(51, top, 96, top + 14), 1u) << "row at " << top;
    }
    const Png clear(folder.File("panel-2.png"));
    ASSERT_EQ(clear.width, 206);
    const std::vector<int> grey = clear.At(17, 27);
    EXPECT_NEAR(grey[0], 128, 1);
    for (const int top : {4, 17, 30}) {
        EXPECT_EQ(clear.Colours(51, top, 96, top + 14), 1u) << "row at " << top;
    }
    EXPECT_GT(clear.Colours(51, 44, 96, 58), 1u);
    EXPECT_FALSE(fs::exists(png));
}

TEST(PixelViewProgram, TheScaleSizesThePng) {
    TempFolder folder;
    const std::string png = folder.File("panel.png");
    const ProgramRun run = Qzhost("inspect --at 5,5 --scale 2 --png " + Quoted(png) + " --prefs " +
                                  Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const Png panel(png);
    EXPECT_EQ(panel.width, 412);
    EXPECT_EQ(panel.height, 228);
    const std::vector<int> swatch = panel.At(34, 54);
    EXPECT_EQ(swatch[0], 255);
    EXPECT_EQ(swatch[1], 0);
    EXPECT_EQ(swatch[2], 0);
}

// Every refused request: exit status 2, one line on standard error saying what is wrong,
// nothing on standard output, no file written.
struct Refusal {
    std::string arguments;
    std::string message;
    std::string input;
};

class PixelViewRefusal : public ::testing::TestWithParam<Refusal> {};

TEST_P(PixelViewRefusal, ExitsWithStatusTwoOneLineAndNothingWritten) {
    TempFolder folder;
    std::ofstream(folder.File("notes.txt")) << "not an image\n";
    std::ofstream(folder.File("broken.png")) << "\x89PNG but not really";
    const Refusal& refusal = GetParam();
    std::string arguments =
        std::regex_replace(refusal.arguments, std::regex("DIR"), folder.Path().string());
    if (arguments.find("--png") == std::string::npos) {
        arguments += " --png " + Quoted(folder.File("panel.png"));
    }
    const ProgramRun run = Qzhost(
        "inspect " + arguments + " --prefs " + Quoted(folder.File("prefs.txt")), refusal.input);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    const auto lines = Lines(run.err);
    ASSERT_EQ(lines.size(), 1u) << run.err;
    EXPECT_NE(lines[0].find(refusal.message), std::string::npos) << lines[0];
    EXPECT_EQ(lines[0].rfind("qzhost", 0), 0u) << lines[0];
    EXPECT_FALSE(fs::exists(folder.File("panel.png")));
    EXPECT_FALSE(fs::exists(folder.File("panel-1.png")));
    EXPECT_FALSE(fs::exists(folder.File("prefs.txt")));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PixelViewRefusal,
    ::testing::Values(Refusal{"DIR/none.exr --at 1,1", "no such file", ""},
                      Refusal{"DIR/broken.png --at 1,1", "cannot read", ""},
                      Refusal{"DIR/notes.txt --at 1,1", "unknown image format", ""},
                      Refusal{"DIR --at 1,1", "is a directory", ""},
                      Refusal{"--at 240,0", "outside the image", ""},
                      Refusal{"--at 5,5 --at 0,160", "outside the image", ""},
                      Refusal{"--at=-0.5,3", "outside the image", ""},
                      Refusal{"--at -", "outside the image", "300,2\n1,1\n"},
                      Refusal{"--at -", "line 2", "\nnot a point\n1,1\n"},
                      Refusal{"--at -", "no point", "\n# nothing\n"}, Refusal{"--at 1", "X,Y", ""},
                      Refusal{"--at 1,2,3", "X,Y", ""},
                      Refusal{"--at 1,2 --origin here", "--origin", ""},
                      Refusal{"--at 1,2 --mode sepia", "--mode", ""},
                      Refusal{"--at 1,2 --scale 0", "--scale", ""},
                      Refusal{"--at 1,2 --scale much", "--scale", ""},
                      Refusal{"--at 1,2 --locale 'not a locale'", "--locale", ""},
                      Refusal{"--at 1,2 --monitor DIR/none.icc", "--monitor", ""},
                      Refusal{"--at 1,2 --monitor DIR/notes.txt", "--monitor", ""},
                      Refusal{"--at 1,2 --png DIR/missing/folder.png", "--png", ""},
                      Refusal{"", "--at", ""}, Refusal{"--at 1,2 --bogus", "bogus", ""}));

} // namespace
} // namespace pixelviewtest

#endif
