// `qzhost inspect` on images as compositors write them: pixels in a rectangle of their own
// inside (or around) the frame that the image is meant to be seen in, several channel sets
// in one file, and several parts.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <array>

#include "ExrTestFiles.h"
#include "PixelViewTestSupport.h"

namespace pixelviewtest {
namespace {

using nlohmann::json;

/// Alpha, red, green, blue as the JSON output gives the delivered pixel.
using Argb = std::array<float, 4>;

using qztest::ExrPart;
using qztest::ExrSample;

/// A part of `channels`, its pixels `width` x `height` at `x0`, `y0` in a frame of
/// `frame_width` x `frame_height` at 0,0.
ExrPart Part(std::vector<std::string> channels, int x0, int y0, int width, int height,
             int frame_width, int frame_height) {
    return {std::move(channels), x0, y0, width, height, 0, 0, frame_width, frame_height, {}};
}

/// The pixel x, y of part `index` of a file as written: alpha (1 when `a` is empty), red,
/// green, blue from the channels named.
Argb Written(const ExrPart& part, int x, int y, const std::string& a, const std::string& r,
             const std::string& g, const std::string& b, int index = 0) {
    return {a.empty() ? 1.0f : ExrSample(part, x, y, a, index), ExrSample(part, x, y, r, index),
            ExrSample(part, x, y, g, index), ExrSample(part, x, y, b, index)};
}

void Write(const std::string& path, const std::vector<ExrPart>& parts) {
    ASSERT_EQ(qztest::WriteExr(path, parts), "");
}

Argb Delivered(const json& panel) {
    Argb pixel{};
    for (std::size_t c = 0; c < 4; ++c) {
        pixel[c] = panel.at("pixel").at(c).get<float>();
    }
    return pixel;
}

class Inspect : public ::testing::Test {
protected:
    ProgramRun Run(const std::string& image, const std::string& arguments) {
        return Qzhost("inspect " + Quoted(folder_.File(image)) + " " + arguments + " --prefs " +
                      Quoted(folder_.File("prefs.txt")));
    }
    std::vector<json> Panels(const std::string& image, const std::string& arguments) {
        const ProgramRun run = Run(image, arguments + " --json");
        EXPECT_EQ(run.status, 0) << run.err;
        return JsonLines(run.out);
    }
    TempFolder folder_;
};

TEST_F(Inspect, APointOfTheFrameOutsideThePixelsIsTransparentBlack) {
    Write(folder_.File("framed.exr"), {Part({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80)});
    const auto panels = Panels("framed.exr", "--at 0,0 --at 99,79 --at 74,20");
    ASSERT_EQ(panels.size(), 3u);
    for (const json& panel : panels) {
        EXPECT_EQ(Delivered(panel), (Argb{0, 0, 0, 0})) << panel.at("at");
    }
}

TEST_F(Inspect, PointsAreCountedFromTheFramesCorner) {
    // The frame's own corner at 5,5 of the file's coordinates: point 0,0 is that pixel.
    ExrPart moved = Part({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80);
    moved.frameX = 5;
    moved.frameY = 5;
    Write(folder_.File("moved.exr"), {moved});
    const auto panels = Panels("moved.exr", "--at 5,15 --at 4,14");
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(Delivered(panels[0]), Written(moved, 10, 20, "A", "R", "G", "B"));
    EXPECT_EQ(Delivered(panels[1]), (Argb{0, 0, 0, 0}));
    // X, Y are the point's, in the frame.
    EXPECT_EQ(ControlText(panels[0], 15), "5");
    EXPECT_EQ(ControlText(panels[0], 16), "15");
}

TEST_F(Inspect, ThePixelsInsideTheFrameAreTheFilesOwn) {
    Write(folder_.File("framed.exr"), {Part({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80)});
    const auto panels = Panels("framed.exr", "--at 10,20 --at 73.5,67.9");
    ASSERT_EQ(panels.size(), 2u);
    const ExrPart framed = Part({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80);
    EXPECT_EQ(Delivered(panels[0]), Written(framed, 10, 20, "A", "R", "G", "B"));
    EXPECT_EQ(Delivered(panels[1]), Written(framed, 73, 67, "A", "R", "G", "B"));
    EXPECT_NE(Delivered(panels[0]), Delivered(panels[1]));
}

TEST_F(Inspect, PixelsBeyondTheFrameStayReadable) {
    // Overscan: the pixels reach 4 beyond the frame on every side.
    const ExrPart overscan = Part({"R", "G", "B"}, -4, -4, 40, 30, 32, 22);
    Write(folder_.File("overscan.exr"), {overscan});
    const auto panels = Panels("overscan.exr", "--at -4,-4 --at 35,25");
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(Delivered(panels[0]), Written(overscan, -4, -4, "", "R", "G", "B"));
    EXPECT_EQ(Delivered(panels[1]), Written(overscan, 35, 25, "", "R", "G", "B"));
}

TEST_F(Inspect, APointOutsideBothFrameAndPixelsIsRefusedNamingBoth) {
    Write(folder_.File("framed.exr"), {Part({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80)});
    const ProgramRun run = Run("framed.exr", "--at 100,0");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "qzhost inspect: point 100,0 lies outside the image (columns 0 to 99, "
                       "rows 0 to 79; its pixels: columns 10 to 73, rows 20 to 67)\n");
}

TEST_F(Inspect, TheTextLinesGiveTheFrameAndThePixels) {
    Write(folder_.File("framed.exr"), {Part({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80)});
    const ProgramRun run = Run("framed.exr", "--at 1,1");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = Lines(run.out);
    ASSERT_GE(lines.size(), 7u) << run.out;
    EXPECT_EQ(lines[6], " openexr, 100 x 80, pixels 64 x 48 at 10,20, R,G,B,A, half float");
}

TEST_F(Inspect, ChannelsChoosesAPrefixALoneChannelOrTheUnnamedSet) {
    const ExrPart aov =
        qztest::FilledPart({"R", "G", "B", "A", "diffuse.R", "diffuse.G", "diffuse.B", "Z"}, 8, 6);
    Write(folder_.File("aov.exr"), {aov});
    const auto value = [&](const std::string& name) { return ExrSample(aov, 3, 2, name); };
    const auto unnamed = Panels("aov.exr", "--at 3,2");
    const auto diffuse = Panels("aov.exr", "--at 3,2 --channels diffuse");
    const auto depth = Panels("aov.exr", "--at 3,2 --channels z");
    ASSERT_EQ(unnamed.size(), 1u);
    ASSERT_EQ(diffuse.size(), 1u);
    ASSERT_EQ(depth.size(), 1u);
    EXPECT_EQ(Delivered(unnamed[0]), (Argb{value("A"), value("R"), value("G"), value("B")}));
    // A prefix without alpha of its own takes the image's.
    EXPECT_EQ(Delivered(diffuse[0]),
              (Argb{value("A"), value("diffuse.R"), value("diffuse.G"), value("diffuse.B")}));
    // A lone channel is grey with alpha 1.
    EXPECT_EQ(Delivered(depth[0]), (Argb{1, value("Z"), value("Z"), value("Z")}));

    const ProgramRun text = Run("aov.exr", "--at 3,2 --channels diffuse");
    ASSERT_EQ(text.status, 0) << text.err;
    const auto lines = Lines(text.out);
    ASSERT_GE(lines.size(), 7u);
    EXPECT_EQ(lines[6], " openexr, 8 x 6, diffuse, half float");
}

TEST_F(Inspect, AnUnknownSetIsRefusedNamingTheSetsThatExist) {
    const ExrPart aov =
        qztest::FilledPart({"R", "G", "B", "A", "diffuse.R", "diffuse.G", "diffuse.B", "Z"}, 8, 6);
    Write(folder_.File("aov.exr"), {aov});
    const ProgramRun run = Run("aov.exr", "--at 1,1 --channels specular");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    const auto lines = Lines(run.err);
    ASSERT_EQ(lines.size(), 1u) << run.err;
    EXPECT_NE(lines[0].find("no channel set 'specular'"), std::string::npos) << lines[0];
    EXPECT_NE(lines[0].find("its sets: RGBA, diffuse, Z"), std::string::npos) << lines[0];
}

TEST_F(Inspect, EachPartOfAMultiPartFileIsASetWithItsOwnPixels) {
    ExrPart beauty = qztest::FilledPart({"R", "G", "B", "A"}, 8, 6);
    beauty.name = "beauty";
    ExrPart specular = Part({"R", "G", "B"}, 2, 1, 4, 3, 8, 6);
    specular.name = "specular";
    Write(folder_.File("parts.exr"), {beauty, specular});
    const auto panels = Panels("parts.exr", "--channels specular --at 2,1 --at 0,0");
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(Delivered(panels[0]), Written(specular, 2, 1, "", "R", "G", "B", 1));
    EXPECT_NE(Delivered(panels[0]), Written(beauty, 2, 1, "", "R", "G", "B", 0));
    EXPECT_EQ(Delivered(panels[1]), (Argb{0, 0, 0, 0}));
    const ProgramRun run = Run("parts.exr", "--at 1,1 --channels nothing");
    EXPECT_NE(run.err.find("its sets: beauty, specular"), std::string::npos) << run.err;
}

} // namespace
} // namespace pixelviewtest

#endif
