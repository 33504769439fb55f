// Images cut short, as a copy that stopped half way leaves them: whatever the reader, the
// run is refused with one line on standard error that says why, in the reader's words
// too, and nothing is shown or written.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "BuildPaths.h"
#include "PixelViewTestSupport.h"

namespace pixelviewtest {
namespace {

namespace fs = std::filesystem;

struct CutFile {
    /// The file name; its extension chooses the format.
    std::string name;
    /// The channel type written ("uint8", "uint16", "half", "float").
    std::string type;
    /// How much of the file is kept: a fraction of it, or (above 1) a number of bytes.
    double keep;
};

void PrintTo(const CutFile& cut, std::ostream* out) {
    *out << cut.name;
}

/// Noise of three channels, which no format packs into a few bytes.
std::vector<double> Noise(const std::string& type, int width = 64, int height = 64) {
    std::vector<double> values;
    unsigned state = 12345;
    for (int i = 0; i < width * height * 3; ++i) {
        state = state * 1103515245u + 12345u;
        const double unit = static_cast<double>((state >> 8) & 0xFFFF) / 65535.0;
        values.push_back(type == "uint8"    ? std::round(unit * 255)
                         : type == "uint16" ? std::round(unit * 65535)
                                            : unit * 4 - 1);
    }
    return values;
}

void Cut(const std::string& path, double keep) {
    std::string bytes;
    {
        std::ifstream file(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(file), {});
    }
    const auto kept =
        static_cast<std::size_t>(keep > 1 ? keep : keep * static_cast<double>(bytes.size()));
    ASSERT_LT(kept, bytes.size());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes.substr(0, kept);
}

class PixelViewCutFile : public ::testing::TestWithParam<CutFile> {};

TEST_P(PixelViewCutFile, IsRefusedWithStatusTwoOneLineAndNothingWritten) {
    const CutFile& cut = GetParam();
    TempFolder folder;
    const std::string path = folder.File(cut.name);
    WriteImage(path, 64, 64, 3, cut.type, Noise(cut.type));
    Cut(path, cut.keep);
    // The last pixel lies in the part that is gone; the first point is shown only after
    // the second is checked, so nothing is shown at all.
    const ProgramRun run =
        Qzhost("inspect " + Quoted(path) + " --at 0,0 --at 63,63 --png " +
               Quoted(folder.File("panel.png")) + " --prefs " + Quoted(folder.File("prefs.txt")));
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    const auto lines = Lines(run.err);
    ASSERT_EQ(lines.size(), 1u) << run.err;
    EXPECT_EQ(lines[0].rfind("qzhost inspect: cannot read ", 0), 0u) << lines[0];
    EXPECT_NE(lines[0].find(cut.name), std::string::npos) << lines[0];
    EXPECT_FALSE(fs::exists(folder.File("panel-1.png")));
    EXPECT_FALSE(fs::exists(folder.File("panel-2.png")));
    EXPECT_FALSE(fs::exists(folder.File("prefs.txt")));
}

// JPEG and TIFF readers fill a cut image's missing part in without a word (grey, black):
// those files are cut inside their headers, where the reader notices.
INSTANTIATE_TEST_SUITE_P(
    Formats, PixelViewCutFile,
    ::testing::Values(CutFile{"cut.png", "uint8", 0.5}, CutFile{"cut16.png", "uint16", 0.8},
                      CutFile{"cut.exr", "half", 0.5}, CutFile{"cut.dpx", "uint16", 0.5},
                      CutFile{"cut.hdr", "float", 0.5}, CutFile{"cut.pnm", "uint8", 0.5},
                      CutFile{"cut.jpg", "uint8", 200}, CutFile{"cut.tif", "uint8", 200}),
    [](const auto& info) {
        std::string name = info.param.name;
        name.erase(name.find('.'), 1);
        return name;
    });

TEST(PixelViewCutFiles, ThePngReadersOwnWordsAreInTheOneLine) {
    TempFolder folder;
    const std::string path = folder.File("cut.png");
    WriteImage(path, 64, 64, 3, "uint8", Noise("uint8"));
    Cut(path, 0.5);
    const ProgramRun run =
        Qzhost("inspect " + Quoted(path) + " --at 63,63 --prefs " + Quoted(folder.File("p.txt")));
    EXPECT_EQ(run.status, 2);
    const auto lines = Lines(run.err);
    ASSERT_EQ(lines.size(), 1u) << run.err;
    // The PNG library names the chunk that ended early.
    EXPECT_NE(lines[0].find("IDAT"), std::string::npos) << lines[0];
}

TEST(PixelViewCutFiles, AFileCutWhileItsPointsArriveEndsTheRunAfterTheAnswersBeforeIt) {
    // A DPX file is read in bands of rows: the first band is whole, the last is gone.
    TempFolder folder;
    const std::string path = folder.File("tall.dpx");
    WriteImage(path, 64, 256, 3, "uint16", Noise("uint16", 64, 256));
    Cut(path, 0.5);
    const ProgramRun run =
        Qzhost("inspect " + Quoted(path) + " --at - --json --prefs " + Quoted(folder.File("p.txt")),
               "0,0\n63,255\n1,1\n");
    EXPECT_EQ(run.status, 2);
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 1u) << run.out;
    EXPECT_EQ(panels[0].at("at"), nlohmann::json::array({0, 0}));
    const auto lines = Lines(run.err);
    ASSERT_EQ(lines.size(), 1u) << run.err;
    EXPECT_NE(lines[0].find("cannot read the pixels of"), std::string::npos) << lines[0];
}

} // namespace
} // namespace pixelviewtest

#endif
