// Pictures by name, state and UI scale: the PNG made for the scale, the selected pictures
// for the selected state, the SVG drawn at any other scale, and a tint that keeps alpha.
#include <gtest/gtest.h>

#include "ImageTestSupport.h"
#include "kitui/controls/UI_PictureSupplyMessage.h"
#include "kitui/utility/EDB_Image.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"

namespace imagetest {
namespace {

namespace file_type = kitui::utility::image_file_type;
namespace picture_state = kitui::controls::picture_state;

constexpr std::uint32_t kRed = 0xFFFF0000u;
constexpr std::uint32_t kGreen = 0xFF00FF00u;
constexpr std::uint32_t kBlue = 0xFF0000FFu;
constexpr std::uint32_t kYellow = 0xFFFFFF00u;
constexpr std::uint32_t kCyan = 0xFF00FFFFu;
constexpr std::uint32_t kWhite = 0xFFFFFFFFu;
constexpr std::uint32_t kHalfRed = 0x80FF0000u;

// The document is 34 x 34 (the 2x size of a 17 x 17 icon): magenta, with a transparent
// right half.
const char* const kSvg = R"(<svg xmlns="http://www.w3.org/2000/svg" width="34" height="34">
<rect x="0" y="0" width="17" height="34" fill="#ff00ff"/></svg>)";

class GetImage : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::MainLoop::Get().AdoptCurrentThread();
        qzhost::HostControls::Get().Reset();
        // Normal pictures: 1x red, 1.5x green, 2x blue. Selected: 1x yellow, 2x cyan. Each
        // with a half-transparent red top-left pixel.
        resources_.Add("SP_ICON_N_D", "PNG", MakePng(17, 17, kRed, kHalfRed));
        resources_.Add("SP_ICON_N_D_AT_3TO2X", "PNG", MakePng(26, 26, kGreen, kHalfRed));
        resources_.Add("SP_ICON_N_D_AT_2X", "PNG", MakePng(34, 34, kBlue, kHalfRed));
        resources_.Add("SP_ICON_S_D", "PNG", MakePng(17, 17, kYellow, kHalfRed));
        resources_.Add("SP_ICON_S_D_AT_2X", "PNG", MakePng(34, 34, kCyan, kHalfRed));
        resources_.Add("S_ICON_N_D_AT_2X", "SVG", Bytes(kSvg));
    }
    void TearDown() override { qzhost::HostControls::Get().Reset(); }

    kitui::inkwell::PictureRef Get(const char* name, std::uint32_t state, std::int32_t type,
                                   bool match_scale = true, bool fall_back = true,
                                   const kitui::inkwell::ColorRGBA* tint = nullptr) {
        return EDB_GetImage(&resources_, &supplier_, name, state, type, match_scale, fall_back,
                            tint);
    }

    void Scale(double scale) { qzhost::HostControls::Get().SetUIScale(scale); }

    TestResources resources_;
    TestSupplier supplier_;
};

TEST_F(GetImage, AtScaleOneThe1xPngOfTheNormalStateIsUsed) {
    const auto picture = Get("Icon", picture_state::kNormal, file_type::kPNGOrSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixelWidth(), 17);
    EXPECT_EQ(picture->GetPixelHeight(), 17);
    EXPECT_EQ(picture->GetScale(), 1.0f);
    EXPECT_EQ(picture->GetPixel(8, 8), kRed);
    EXPECT_EQ(picture->GetPixel(16, 16), kRed);
    EXPECT_EQ(resources_.asked.front(),
              (std::pair<std::string, std::string>{"SP_ICON_N_D", "PNG"}));
}

TEST_F(GetImage, HalfTransparentPixelsComeBackNotPremultiplied) {
    const auto picture = Get("Icon", picture_state::kNormal, file_type::kPNG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixel(0, 0), kHalfRed);
}

TEST_F(GetImage, NamesAreLookedUpInUpperCase) {
    const auto picture = Get("icon", picture_state::kNormal, file_type::kPNG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(resources_.asked.front().first, "SP_ICON_N_D");
}

TEST_F(GetImage, EachScaleWithAPngOfItsOwnUsesThatPng) {
    Scale(1.5);
    auto picture = Get("Icon", picture_state::kNormal, file_type::kPNGOrSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixelWidth(), 26);
    EXPECT_EQ(picture->GetScale(), 1.5f);
    EXPECT_EQ(picture->GetPixel(10, 10), kGreen);

    Scale(2.0);
    picture = Get("Icon", picture_state::kNormal, file_type::kPNGOrSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixelWidth(), 34);
    EXPECT_EQ(picture->GetScale(), 2.0f);
    EXPECT_EQ(picture->GetPixel(20, 20), kBlue);
    EXPECT_FLOAT_EQ(picture->GetWidth(), 17.0f);
}

TEST_F(GetImage, AnyOtherScaleDrawsTheSvgAtThatScale) {
    Scale(3.0);
    const auto picture = Get("Icon", picture_state::kNormal, file_type::kPNGOrSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixelWidth(), 51);
    EXPECT_EQ(picture->GetPixelHeight(), 51);
    EXPECT_EQ(picture->GetScale(), 3.0f);
    EXPECT_EQ(picture->GetPixel(10, 25), 0xFFFF00FFu); // magenta left half
    EXPECT_EQ(picture->GetPixel(40, 25) >> 24, 0u);    // transparent right half
    EXPECT_EQ(resources_.asked.back(),
              (std::pair<std::string, std::string>{"S_ICON_N_D_AT_2X", "SVG"}));
}

TEST_F(GetImage, TheSvgAloneIsDrawnAtTheScaleEvenWherePngsExist) {
    Scale(1.0);
    const auto picture = Get("Icon", picture_state::kNormal, file_type::kSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixelWidth(), 17);
    EXPECT_EQ(picture->GetScale(), 1.0f);
    EXPECT_EQ(picture->GetPixel(4, 8), 0xFFFF00FFu);
    for (const auto& asked : resources_.asked) {
        EXPECT_EQ(asked.second, "SVG");
    }
}

TEST_F(GetImage, PngsOnlyTakeTheNearestScale) {
    Scale(3.0);
    auto picture = Get("Icon", picture_state::kNormal, file_type::kPNG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetScale(), 2.0f);
    EXPECT_EQ(picture->GetPixel(20, 20), kBlue);
    Scale(1.2);
    picture = Get("Icon", picture_state::kNormal, file_type::kPNG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetScale(), 1.0f);
    EXPECT_EQ(picture->GetPixel(5, 5), kRed);
}

TEST_F(GetImage, WithoutMatchingTheScaleThe1xPictureIsUsed) {
    Scale(2.0);
    const auto picture = Get("Icon", picture_state::kNormal, file_type::kPNGOrSVG, false);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixelWidth(), 17);
    EXPECT_EQ(picture->GetPixel(5, 5), kRed);
}

TEST_F(GetImage, TheSelectedBitPicksTheSelectedPictures) {
    auto picture = Get("Icon", picture_state::kSelected, file_type::kPNGOrSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixel(5, 5), kYellow);
    Scale(2.0);
    picture =
        Get("Icon", picture_state::kSelected | picture_state::kRollover, file_type::kPNGOrSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixel(20, 20), kCyan);
    // Other state bits do not select.
    picture =
        Get("Icon", picture_state::kRollover | picture_state::kDisabled, file_type::kPNGOrSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixel(20, 20), kBlue);
}

TEST_F(GetImage, ASelectedStateWithoutItsOwnPictureFallsBackToNormalOnlyWhenAsked) {
    Scale(1.5); // no selected 1.5x picture, and no selected SVG
    auto picture = Get("Icon", picture_state::kSelected, file_type::kPNGOrSVG, true, true);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixel(10, 10), kGreen);
    picture = Get("Icon", picture_state::kSelected, file_type::kPNGOrSVG, true, false);
    EXPECT_FALSE(picture);
}

TEST_F(GetImage, AMissingPngForTheScaleFallsBackToTheSvg) {
    resources_ = TestResources();
    resources_.Add("S_ICON_N_D_AT_2X", "SVG", Bytes(kSvg));
    Scale(2.0);
    const auto picture = Get("Icon", picture_state::kNormal, file_type::kPNGOrSVG);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixelWidth(), 34);
    EXPECT_EQ(picture->GetPixel(5, 5), 0xFFFF00FFu);
}

TEST_F(GetImage, ATintReplacesTheColourAndKeepsAlpha) {
    const kitui::inkwell::ColorRGBA white{1.0f, 1.0f, 1.0f, 1.0f};
    const auto picture =
        Get("Icon", picture_state::kNormal, file_type::kPNGOrSVG, true, true, &white);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixel(5, 5), kWhite);
    EXPECT_EQ(picture->GetPixel(0, 0), 0x80FFFFFFu);
}

TEST_F(GetImage, NothingFitsGivesAnEmptyPicture) {
    EXPECT_FALSE(Get("Other", picture_state::kNormal, file_type::kPNGOrSVG));
    EXPECT_FALSE(Get("Icon", picture_state::kNormal, 7));
    EXPECT_FALSE(
        EDB_GetImage(nullptr, &supplier_, "Icon", 0, file_type::kPNG, true, true, nullptr));
    EXPECT_FALSE(
        EDB_GetImage(&resources_, nullptr, "Icon", 0, file_type::kPNG, true, true, nullptr));
    EXPECT_FALSE(
        EDB_GetImage(&resources_, &supplier_, nullptr, 0, file_type::kPNG, true, true, nullptr));
    EXPECT_EQ(supplier_.pictures, 0);
}

TEST_F(GetImage, AResourceThatCannotBeDecodedThrows) {
    resources_.Add("SP_BROKEN_N_D", "PNG", Bytes("not a png at all"));
    resources_.Add("S_BROKEN_N_D_AT_2X", "SVG", Bytes("<svg but not really"));
    EXPECT_THROW(Get("Broken", picture_state::kNormal, file_type::kPNG), std::runtime_error);
    EXPECT_THROW(Get("Broken", picture_state::kNormal, file_type::kSVG), std::runtime_error);
    EXPECT_EQ(supplier_.pictures, 0);
}

} // namespace
} // namespace imagetest
