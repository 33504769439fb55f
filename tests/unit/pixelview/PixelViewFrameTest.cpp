// `qzhost inspect` on images as compositors write them: pixels in a rectangle of their own
// inside (or around) the frame that the image is meant to be seen in, several channel sets
// in one file, and several parts.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <array>

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imageio.h>

#include "PixelViewTestSupport.h"

namespace pixelviewtest {
namespace {

using nlohmann::json;

/// Alpha, red, green, blue as the JSON output gives the delivered pixel.
using Argb = std::array<float, 4>;

/// The value written to channel `c` of pixel `x`, `y` of the test images: a different
/// number at every pixel and channel.
float Value(int x, int y, int c) {
    return static_cast<float>(x + 10 * y + c * 0.25);
}

/// Channel `name` of pixel `x`, `y` of part `part` as stored, read back with OpenImageIO's
/// plain reader (the file keeps its channels in an order of its own).
float Stored(const std::string& path, int part, int x, int y, const std::string& name) {
    auto in = OIIO::ImageInput::open(path);
    EXPECT_TRUE(in) << OIIO::geterror();
    if (!in || !in->seek_subimage(part, 0)) {
        return -1;
    }
    const OIIO::ImageSpec& header = in->spec();
    const int c = header.channelindex(name);
    EXPECT_GE(c, 0) << name;
    std::vector<float> row(static_cast<std::size_t>(header.width * header.nchannels));
    EXPECT_TRUE(in->read_scanline(y, 0, OIIO::TypeDesc::FLOAT, row.data())) << in->geterror();
    return row[static_cast<std::size_t>((x - header.x) * header.nchannels + c)];
}

/// The stored pixel of channels alpha (1 when none is named), red, green, blue.
Argb StoredPixel(const std::string& path, int part, int x, int y, const std::string& a,
                 const std::string& r, const std::string& g, const std::string& b) {
    return {a.empty() ? 1.0f : Stored(path, part, x, y, a), Stored(path, part, x, y, r),
            Stored(path, part, x, y, g), Stored(path, part, x, y, b)};
}

/// Writes a half-float OpenEXR part with `channels`, its pixels at `x0`, `y0` of size
/// `width` x `height`, in a frame of `frame_width` x `frame_height` at 0,0.
OIIO::ImageSpec Header(const std::vector<std::string>& channels, int x0, int y0, int width,
                       int height, int frame_width, int frame_height) {
    OIIO::ImageSpec header(width, height, static_cast<int>(channels.size()), OIIO::TypeDesc::HALF);
    header.x = x0;
    header.y = y0;
    header.full_x = 0;
    header.full_y = 0;
    header.full_width = frame_width;
    header.full_height = frame_height;
    header.channelnames = channels;
    header.alpha_channel = -1;
    for (std::size_t c = 0; c < channels.size(); ++c) {
        if (channels[c] == "A") {
            header.alpha_channel = static_cast<int>(c);
        }
    }
    return header;
}

void WriteParts(const std::string& path, const std::vector<OIIO::ImageSpec>& parts) {
    auto out = OIIO::ImageOutput::create(path);
    ASSERT_TRUE(out) << OIIO::geterror();
    ASSERT_TRUE(out->open(path, static_cast<int>(parts.size()), parts.data())) << out->geterror();
    for (std::size_t p = 0; p < parts.size(); ++p) {
        const OIIO::ImageSpec& header = parts[p];
        if (p > 0) {
            ASSERT_TRUE(out->open(path, header, OIIO::ImageOutput::AppendSubimage))
                << out->geterror();
        }
        std::vector<float> values;
        for (int y = header.y; y < header.y + header.height; ++y) {
            for (int x = header.x; x < header.x + header.width; ++x) {
                for (int c = 0; c < header.nchannels; ++c) {
                    values.push_back(Value(x, y, c) + static_cast<float>(p));
                }
            }
        }
        ASSERT_TRUE(out->write_image(OIIO::TypeDesc::FLOAT, values.data())) << out->geterror();
    }
    ASSERT_TRUE(out->close());
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
    WriteParts(folder_.File("framed.exr"), {Header({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80)});
    const auto panels = Panels("framed.exr", "--at 0,0 --at 99,79 --at 74,20");
    ASSERT_EQ(panels.size(), 3u);
    for (const json& panel : panels) {
        EXPECT_EQ(Delivered(panel), (Argb{0, 0, 0, 0})) << panel.at("at");
    }
}

TEST_F(Inspect, PointsAreCountedFromTheFramesCorner) {
    // The frame's own corner at 5,5 of the file's coordinates: point 0,0 is that pixel.
    OIIO::ImageSpec header = Header({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80);
    header.full_x = 5;
    header.full_y = 5;
    WriteParts(folder_.File("moved.exr"), {header});
    const auto panels = Panels("moved.exr", "--at 5,15 --at 4,14");
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(Delivered(panels[0]),
              StoredPixel(folder_.File("moved.exr"), 0, 10, 20, "A", "R", "G", "B"));
    EXPECT_EQ(Delivered(panels[1]), (Argb{0, 0, 0, 0}));
    // X, Y are the point's, in the frame.
    EXPECT_EQ(ControlText(panels[0], 15), "5");
    EXPECT_EQ(ControlText(panels[0], 16), "15");
}

TEST_F(Inspect, ThePixelsInsideTheFrameAreTheFilesOwn) {
    WriteParts(folder_.File("framed.exr"), {Header({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80)});
    const auto panels = Panels("framed.exr", "--at 10,20 --at 73.5,67.9");
    ASSERT_EQ(panels.size(), 2u);
    const std::string file = folder_.File("framed.exr");
    EXPECT_EQ(Delivered(panels[0]), StoredPixel(file, 0, 10, 20, "A", "R", "G", "B"));
    EXPECT_EQ(Delivered(panels[1]), StoredPixel(file, 0, 73, 67, "A", "R", "G", "B"));
    EXPECT_NE(Delivered(panels[0]), Delivered(panels[1]));
}

TEST_F(Inspect, PixelsBeyondTheFrameStayReadable) {
    // Overscan: the pixels reach 4 beyond the frame on every side.
    WriteParts(folder_.File("overscan.exr"), {Header({"R", "G", "B"}, -4, -4, 40, 30, 32, 22)});
    const auto panels = Panels("overscan.exr", "--at -4,-4 --at 35,25");
    ASSERT_EQ(panels.size(), 2u);
    const std::string file = folder_.File("overscan.exr");
    EXPECT_EQ(Delivered(panels[0]), StoredPixel(file, 0, -4, -4, "", "R", "G", "B"));
    EXPECT_EQ(Delivered(panels[1]), StoredPixel(file, 0, 35, 25, "", "R", "G", "B"));
}

TEST_F(Inspect, APointOutsideBothFrameAndPixelsIsRefusedNamingBoth) {
    WriteParts(folder_.File("framed.exr"), {Header({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80)});
    const ProgramRun run = Run("framed.exr", "--at 100,0");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "qzhost inspect: point 100,0 lies outside the image (columns 0 to 99, "
                       "rows 0 to 79; its pixels: columns 10 to 73, rows 20 to 67)\n");
}

TEST_F(Inspect, TheTextLinesGiveTheFrameAndThePixels) {
    WriteParts(folder_.File("framed.exr"), {Header({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80)});
    const ProgramRun run = Run("framed.exr", "--at 1,1");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = Lines(run.out);
    ASSERT_GE(lines.size(), 7u) << run.out;
    EXPECT_EQ(lines[6], " openexr, 100 x 80, pixels 64 x 48 at 10,20, R,G,B,A, half float");
}

TEST_F(Inspect, ChannelsChoosesAPrefixALoneChannelOrTheUnnamedSet) {
    WriteParts(folder_.File("aov.exr"),
               {Header({"R", "G", "B", "A", "diffuse.R", "diffuse.G", "diffuse.B", "Z"}, 0, 0, 8, 6,
                       8, 6)});
    const std::string file = folder_.File("aov.exr");
    const auto value = [&](const std::string& name) { return Stored(file, 0, 3, 2, name); };
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
    WriteParts(folder_.File("aov.exr"),
               {Header({"R", "G", "B", "A", "diffuse.R", "diffuse.G", "diffuse.B", "Z"}, 0, 0, 8, 6,
                       8, 6)});
    const ProgramRun run = Run("aov.exr", "--at 1,1 --channels specular");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    const auto lines = Lines(run.err);
    ASSERT_EQ(lines.size(), 1u) << run.err;
    EXPECT_NE(lines[0].find("no channel set 'specular'"), std::string::npos) << lines[0];
    EXPECT_NE(lines[0].find("its sets: RGBA, diffuse, Z"), std::string::npos) << lines[0];
}

TEST_F(Inspect, EachPartOfAMultiPartFileIsASetWithItsOwnPixels) {
    OIIO::ImageSpec beauty = Header({"R", "G", "B", "A"}, 0, 0, 8, 6, 8, 6);
    beauty.attribute("oiio:subimagename", "beauty");
    OIIO::ImageSpec specular = Header({"R", "G", "B"}, 2, 1, 4, 3, 8, 6);
    specular.attribute("oiio:subimagename", "specular");
    WriteParts(folder_.File("parts.exr"), {beauty, specular});
    const auto panels = Panels("parts.exr", "--channels specular --at 2,1 --at 0,0");
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(Delivered(panels[0]),
              StoredPixel(folder_.File("parts.exr"), 1, 2, 1, "", "R", "G", "B"));
    EXPECT_NE(Delivered(panels[0]),
              StoredPixel(folder_.File("parts.exr"), 0, 2, 1, "", "R", "G", "B"));
    EXPECT_EQ(Delivered(panels[1]), (Argb{0, 0, 0, 0}));
    const ProgramRun run = Run("parts.exr", "--at 1,1 --channels nothing");
    EXPECT_NE(run.err.find("its sets: beauty, specular"), std::string::npos) << run.err;
}

} // namespace
} // namespace pixelviewtest

#endif
