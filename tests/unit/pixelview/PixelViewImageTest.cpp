// Reading the images that the tests write: size, project depth, and the pixel as the
// host's viewer hands it over.
#include <gtest/gtest.h>

#include <fstream>

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imageio.h>

#include "PixelViewTestSupport.h"
#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewImage.h"

namespace qzhost::pixelview {
namespace {

using pixelviewtest::TempFolder;
using pixelviewtest::WriteImage;

/// Channel by channel, within four units in the last place: the file's integers are
/// scaled to 0-1 in single precision.
void ExpectPixel(const PixelARGB& actual, const PixelARGB& expected) {
    for (std::size_t c = 0; c < 4; ++c) {
        EXPECT_FLOAT_EQ(actual[c], expected[c]) << "channel " << c;
    }
}

std::string Message(const std::string& path) {
    try {
        PixelViewImage image(path);
    } catch (const BadRequest& error) {
        return error.what();
    }
    ADD_FAILURE() << "opened " << path;
    return {};
}

TEST(PixelViewImage, EightBitRgbScalesTo0To1WithAlphaOne) {
    TempFolder folder;
    const std::string path = folder.File("rgb8.png");
    WriteImage(path, 2, 1, 3, "uint8", {255, 128, 0, 10, 200, 77});
    const PixelViewImage image(path);
    EXPECT_EQ(image.Width(), 2);
    EXPECT_EQ(image.Height(), 1);
    EXPECT_EQ(image.ProjectDepth(), 0);
    EXPECT_FALSE(image.HasAlpha());
    const PixelARGB pixel = image.PixelAt(1, 0);
    EXPECT_FLOAT_EQ(pixel[0], 1.0f);
    EXPECT_FLOAT_EQ(pixel[1], 10 / 255.0f);
    EXPECT_FLOAT_EQ(pixel[2], 200 / 255.0f);
    EXPECT_FLOAT_EQ(pixel[3], 77 / 255.0f);
}

TEST(PixelViewImage, SixteenBitRgbaGivesDepthOneAndKeepsUnassociatedAlpha) {
    TempFolder folder;
    const std::string path = folder.File("rgba16.tif");
    WriteImage(path, 1, 2, 4, "uint16", {65535, 32768, 0, 65535, 40000, 1000, 20000, 32768});
    const PixelViewImage image(path);
    EXPECT_EQ(image.ProjectDepth(), 1);
    EXPECT_TRUE(image.HasAlpha());
    const PixelARGB pixel = image.PixelAt(0, 1);
    EXPECT_FLOAT_EQ(pixel[0], 32768 / 65535.0f);
    EXPECT_FLOAT_EQ(pixel[1], 40000 / 65535.0f);
    EXPECT_FLOAT_EQ(pixel[2], 1000 / 65535.0f);
    EXPECT_FLOAT_EQ(pixel[3], 20000 / 65535.0f);
}

TEST(PixelViewImage, FloatKeepsOverRangeAndNegativeValues) {
    TempFolder folder;
    const std::string path = folder.File("float.exr");
    WriteImage(path, 2, 1, 3, "float", {2.5, -0.25, 0.5, 16, 0, -1});
    const PixelViewImage image(path);
    EXPECT_EQ(image.ProjectDepth(), 2);
    EXPECT_EQ(image.ChannelType(), "float");
    const PixelARGB pixel = image.PixelAt(1, 0);
    EXPECT_EQ(pixel, (PixelARGB{1.0f, 16.0f, 0.0f, -1.0f}));
    EXPECT_EQ(image.PixelAt(0, 0), (PixelARGB{1.0f, 2.5f, -0.25f, 0.5f}));
}

TEST(PixelViewImage, HalfFloatGivesDepthTwo) {
    TempFolder folder;
    const std::string path = folder.File("half.exr");
    WriteImage(path, 1, 1, 4, "half", {0.5, 4, -2, 0.25});
    const PixelViewImage image(path);
    EXPECT_EQ(image.ProjectDepth(), 2);
    EXPECT_EQ(image.ChannelType(), "half float");
    EXPECT_EQ(image.PixelAt(0, 0), (PixelARGB{0.25f, 0.5f, 4.0f, -2.0f}));
}

TEST(PixelViewImage, GreyGivesTheSameValueToRedGreenAndBlue) {
    TempFolder folder;
    const std::string grey = folder.File("grey.png");
    WriteImage(grey, 1, 1, 1, "uint8", {51});
    ExpectPixel(PixelViewImage(grey).PixelAt(0, 0), {1.0f, 0.2f, 0.2f, 0.2f});
    const std::string grey_alpha = folder.File("grey-alpha.png");
    WriteImage(grey_alpha, 1, 1, 2, "uint8", {51, 102});
    ExpectPixel(PixelViewImage(grey_alpha).PixelAt(0, 0), {0.4f, 0.2f, 0.2f, 0.2f});
}

TEST(PixelViewImage, TheBundledChartIsHalfFloatWithOverRangeNegativeAndPartialAlpha) {
    const PixelViewImage chart(pixelviewtest::SampleFile("chart.exr"));
    EXPECT_EQ(chart.Width(), 240);
    EXPECT_EQ(chart.Height(), 160);
    EXPECT_EQ(chart.ProjectDepth(), 2);
    EXPECT_EQ(chart.PixelAt(45, 85), (PixelARGB{1, 4, 1, 0.25f}));
    EXPECT_EQ(chart.PixelAt(45, 125), (PixelARGB{1, -0.5f, -0.25f, -1}));
    EXPECT_EQ(chart.PixelAt(165, 125), (PixelARGB{0.25f, 2, 0, 0}));
    const PixelViewImage png(pixelviewtest::SampleFile("chart.png"));
    EXPECT_EQ(png.ProjectDepth(), 0);
    ExpectPixel(png.PixelAt(45, 85), {1, 1, 1, 64 / 255.0f});
}

TEST(PixelViewImage, ContainsOnlyThePixelsOfTheImage) {
    const PixelViewImage chart(pixelviewtest::SampleFile("chart.exr"));
    EXPECT_TRUE(chart.Contains(0, 0));
    EXPECT_TRUE(chart.Contains(239, 159));
    EXPECT_FALSE(chart.Contains(240, 0));
    EXPECT_FALSE(chart.Contains(0, 160));
    EXPECT_FALSE(chart.Contains(-1, 5));
}

TEST(PixelViewImage, AnImageThatNamesFewerChannelsThanItHasIsRead) {
    TempFolder folder;
    const std::string path = folder.File("three.fits");
    std::vector<double> values;
    for (int i = 0; i < 4 * 4 * 3; ++i) {
        values.push_back((i * 37) % 256);
    }
    WriteImage(path, 4, 4, 3, "uint8", values);
    // As OpenImageIO reads it: the FITS reader names one channel of three.
    OIIO::ImageBuf file(path);
    ASSERT_TRUE(file.read(0, 0, true, OIIO::TypeDesc::FLOAT)) << file.geterror();
    const OIIO::ImageSpec header = file.nativespec();
    ASSERT_EQ(header.nchannels, 3);
    ASSERT_LT(header.channelnames.size(), 3u);
    std::vector<float> stored(static_cast<std::size_t>(header.image_pixels()) * 3);
    ASSERT_TRUE(file.get_pixels(file.roi(), OIIO::TypeDesc::FLOAT, stored.data()));

    const PixelViewImage image(path);
    EXPECT_EQ(image.Width(), header.width);
    EXPECT_EQ(image.Height(), header.height);
    EXPECT_FALSE(image.HasAlpha());
    // The channels in their order are red, green and blue.
    for (int y = 0; y < header.height; ++y) {
        for (int x = 0; x < header.width; ++x) {
            const std::size_t at = static_cast<std::size_t>((y * header.width + x) * 3);
            ExpectPixel(image.PixelAt(header.x + x, header.y + y),
                        {1.0f, stored[at], stored[at + 1], stored[at + 2]});
        }
    }
}

TEST(PixelViewImage, AMissingFileIsRefused) {
    TempFolder folder;
    EXPECT_NE(Message(folder.File("none.exr")).find("no such file"), std::string::npos);
}

TEST(PixelViewImage, AFolderIsRefused) {
    TempFolder folder;
    EXPECT_NE(Message(folder.Path().string()).find("is a directory"), std::string::npos);
}

TEST(PixelViewImage, AFileThatNoReaderKnowsIsAnUnknownFormat) {
    TempFolder folder;
    const std::string path = folder.File("notes.txt");
    std::ofstream(path) << "not an image\n";
    EXPECT_NE(Message(path).find("unknown image format"), std::string::npos);
}

TEST(PixelViewImage, ABrokenFileOfAKnownFormatCannotBeRead) {
    TempFolder folder;
    const std::string path = folder.File("broken.png");
    std::ofstream(path) << "\x89PNG but not really";
    const std::string message = Message(path);
    EXPECT_NE(message.find("cannot read"), std::string::npos) << message;
    EXPECT_EQ(message.find('\n'), std::string::npos);
}

} // namespace
} // namespace qzhost::pixelview
