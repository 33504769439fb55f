// The monitor transform: colours pass through exactly without a monitor profile; with one,
// they are converted from sRGB as the profile's tone curves and primaries say, alpha
// untouched. A display transform set by the host program comes first.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include <lcms2.h>
#include <stdlib.h>

#include "TempFolder.h"
#include "host/MonitorTransform.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/MonitorProfile.h"

namespace {

namespace fs = std::filesystem;

// The sRGB primaries and white point, and its tone curve as a parametric curve.
const cmsCIExyY kD65{0.3127, 0.3290, 1.0};
const cmsCIExyYTRIPLE kSRGBPrimaries{{0.64, 0.33, 1.0}, {0.30, 0.60, 1.0}, {0.15, 0.06, 1.0}};
const cmsFloat64Number kSRGBCurve[5] = {2.4, 1.0 / 1.055, 0.055 / 1.055, 1.0 / 12.92, 0.04045};

// sRGB-encoded value to linear light, computed here from the sRGB definition.
double SRGBToLinear(double v) {
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

void SaveRGBProfile(const fs::path& path, const cmsCIExyYTRIPLE& primaries, bool linear) {
    cmsToneCurve* curve =
        linear ? cmsBuildGamma(nullptr, 1.0) : cmsBuildParametricToneCurve(nullptr, 4, kSRGBCurve);
    cmsToneCurve* curves[3] = {curve, curve, curve};
    cmsHPROFILE profile = cmsCreateRGBProfile(&kD65, &primaries, curves);
    ASSERT_NE(profile, nullptr);
    ASSERT_TRUE(cmsSaveProfileToFile(profile, path.c_str()));
    cmsCloseProfile(profile);
    cmsFreeToneCurve(curve);
}

bool SameBits(const PF_PixelFloat& a, const PF_PixelFloat& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

class MonitorTransform : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::MainLoop::Get().AdoptCurrentThread();
        qzhost::HostControls::Get().Reset();
    }
    void TearDown() override { qzhost::HostControls::Get().Reset(); }

    PF_PixelFloat Transform(PF_PixelFloat in) {
        PF_PixelFloat out{-9.0f, -9.0f, -9.0f, -9.0f};
        TransformPixelAtScreenLocation(in, 10, 20, &out);
        return out;
    }

    qztest::TempFolder temp_{"monitor-test"};
    fs::path folder_ = temp_.Path();
};

TEST_F(MonitorTransform, WithoutAProfileEveryValuePassesThroughExactly) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const std::vector<PF_PixelFloat> pixels = {
        {1.0f, 0.5f, 0.25f, 0.0f}, {0.25f, 2.0f, -0.5f, 1e-7f}, {0.0f, 0.123456f, 0.9f, 1.0f},
        {nan, nan, inf, -inf},     {-0.0f, -0.0f, 0.0f, 1.0f},
    };
    EXPECT_EQ(qzhost::MonitorProfile(), std::nullopt);
    for (const PF_PixelFloat& pixel : pixels) {
        EXPECT_TRUE(SameBits(Transform(pixel), pixel));
    }
}

TEST_F(MonitorTransform, ALinearMonitorShowsLinearLight) {
    const fs::path profile = folder_ / "linear.icc";
    SaveRGBProfile(profile, kSRGBPrimaries, true);
    qzhost::SetMonitorProfile(profile);
    EXPECT_EQ(qzhost::MonitorProfile(), fs::absolute(profile));

    for (const float v : {0.02f, 0.2f, 0.5f, 0.8f, 1.0f}) {
        const PF_PixelFloat out = Transform({1.0f, v, v, v});
        const double expected = SRGBToLinear(v);
        EXPECT_NEAR(out.red, expected, 2e-3) << v;
        EXPECT_NEAR(out.green, expected, 2e-3) << v;
        EXPECT_NEAR(out.blue, expected, 2e-3) << v;
    }
    // Same primaries: each channel on its own.
    const PF_PixelFloat out = Transform({1.0f, 0.2f, 0.5f, 0.8f});
    EXPECT_NEAR(out.red, SRGBToLinear(0.2), 2e-3);
    EXPECT_NEAR(out.green, SRGBToLinear(0.5), 2e-3);
    EXPECT_NEAR(out.blue, SRGBToLinear(0.8), 2e-3);
    EXPECT_GT(std::fabs(out.green - 0.5f), 0.2f); // the value did change
}

TEST_F(MonitorTransform, AMonitorWithRedAndGreenSwappedShowsRedAsGreen) {
    const cmsCIExyYTRIPLE swapped{kSRGBPrimaries.Green, kSRGBPrimaries.Red, kSRGBPrimaries.Blue};
    const fs::path profile = folder_ / "swapped.icc";
    SaveRGBProfile(profile, swapped, false);
    qzhost::SetMonitorProfile(profile);

    const PF_PixelFloat red = Transform({1.0f, 1.0f, 0.0f, 0.0f});
    EXPECT_NEAR(red.red, 0.0, 2e-3);
    EXPECT_NEAR(red.green, 1.0, 2e-3);
    EXPECT_NEAR(red.blue, 0.0, 2e-3);
    const PF_PixelFloat mixed = Transform({1.0f, 0.3f, 0.7f, 0.5f});
    EXPECT_NEAR(mixed.red, 0.7, 2e-3);
    EXPECT_NEAR(mixed.green, 0.3, 2e-3);
    EXPECT_NEAR(mixed.blue, 0.5, 2e-3);
}

TEST_F(MonitorTransform, AlphaIsNeverTouched) {
    const fs::path profile = folder_ / "linear.icc";
    SaveRGBProfile(profile, kSRGBPrimaries, true);
    qzhost::SetMonitorProfile(profile);
    for (const float alpha : {0.0f, 0.25f, 1.0f, 7.5f, -1.0f}) {
        const PF_PixelFloat out = Transform({alpha, 0.5f, 0.5f, 0.5f});
        EXPECT_EQ(std::memcmp(&out.alpha, &alpha, sizeof alpha), 0) << alpha;
    }
}

TEST_F(MonitorTransform, TheOutputMayBeTheInputAndANullOutputDoesNothing) {
    const fs::path profile = folder_ / "linear.icc";
    SaveRGBProfile(profile, kSRGBPrimaries, true);
    qzhost::SetMonitorProfile(profile);
    PF_PixelFloat pixel{0.5f, 0.5f, 0.5f, 0.5f};
    TransformPixelAtScreenLocation(pixel, 0, 0, &pixel);
    EXPECT_EQ(pixel.alpha, 0.5f);
    EXPECT_NEAR(pixel.red, SRGBToLinear(0.5), 2e-3);
    EXPECT_NEAR(pixel.blue, SRGBToLinear(0.5), 2e-3);
    TransformPixelAtScreenLocation(pixel, 0, 0, nullptr);
}

TEST_F(MonitorTransform, NoProfileAndAResetGoBackToTheIdentity) {
    const fs::path profile = folder_ / "linear.icc";
    SaveRGBProfile(profile, kSRGBPrimaries, true);
    const PF_PixelFloat pixel{1.0f, 0.5f, 0.5f, 0.5f};

    qzhost::SetMonitorProfile(profile);
    EXPECT_FALSE(SameBits(Transform(pixel), pixel));
    qzhost::SetMonitorProfile(std::nullopt);
    EXPECT_TRUE(SameBits(Transform(pixel), pixel));

    qzhost::SetMonitorProfile(profile);
    qzhost::HostControls::Get().Reset();
    EXPECT_EQ(qzhost::MonitorProfile(), std::nullopt);
    EXPECT_TRUE(SameBits(Transform(pixel), pixel));
}

TEST_F(MonitorTransform, AProfileFileThatChangesIsReadAgain) {
    const fs::path profile = folder_ / "monitor.icc";
    SaveRGBProfile(profile, kSRGBPrimaries, true);
    qzhost::SetMonitorProfile(profile);
    EXPECT_NEAR(Transform({1.0f, 0.5f, 0.0f, 0.0f}).red, SRGBToLinear(0.5), 2e-3);

    const cmsCIExyYTRIPLE swapped{kSRGBPrimaries.Green, kSRGBPrimaries.Red, kSRGBPrimaries.Blue};
    SaveRGBProfile(profile, swapped, false);
    fs::last_write_time(profile, fs::last_write_time(profile) + std::chrono::seconds(2));
    qzhost::SetMonitorProfile(profile);
    const PF_PixelFloat out = Transform({1.0f, 0.5f, 0.0f, 0.0f});
    EXPECT_NEAR(out.red, 0.0, 2e-3);
    EXPECT_NEAR(out.green, 0.5, 2e-3);
}

TEST_F(MonitorTransform, AFileThatIsNoProfileIsRefusedAndTheOldProfileStays) {
    const fs::path linear = folder_ / "linear.icc";
    SaveRGBProfile(linear, kSRGBPrimaries, true);
    qzhost::SetMonitorProfile(linear);

    const fs::path text = folder_ / "text.icc";
    std::ofstream(text) << "this is not an ICC profile\n";
    try {
        qzhost::SetMonitorProfile(text);
        ADD_FAILURE() << "a text file was taken for a profile";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find(text.string()), std::string::npos) << error.what();
    }
    EXPECT_EQ(qzhost::MonitorProfile(), fs::absolute(linear));
    EXPECT_NEAR(Transform({1.0f, 0.5f, 0.5f, 0.5f}).red, SRGBToLinear(0.5), 2e-3);
}

TEST_F(MonitorTransform, AMissingFileIsRefused) {
    const fs::path missing = folder_ / "missing.icc";
    try {
        qzhost::SetMonitorProfile(missing);
        ADD_FAILURE() << "a missing file was taken for a profile";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("missing.icc"), std::string::npos);
    }
    EXPECT_EQ(qzhost::MonitorProfile(), std::nullopt);
}

TEST_F(MonitorTransform, AGrayProfileIsNoMonitorProfile) {
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 2.2);
    cmsHPROFILE gray = cmsCreateGrayProfile(&kD65, curve);
    const fs::path path = folder_ / "gray.icc";
    ASSERT_TRUE(cmsSaveProfileToFile(gray, path.c_str()));
    cmsCloseProfile(gray);
    cmsFreeToneCurve(curve);
    try {
        qzhost::SetMonitorProfile(path);
        ADD_FAILURE() << "a gray profile was taken for a monitor profile";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("not an RGB profile"), std::string::npos)
            << error.what();
    }
    EXPECT_EQ(qzhost::MonitorProfile(), std::nullopt);
}

TEST_F(MonitorTransform, TheDisplayTransformComesBeforeTheProfile) {
    // A display transform that halves every colour.
    class Halve final : public qzhost::ColourTransform {
    public:
        void Apply(float* rgba, std::size_t count) const noexcept override {
            for (std::size_t i = 0; i < count; ++i) {
                for (std::size_t c = 0; c < 3; ++c) {
                    rgba[i * 4 + c] /= 2;
                }
            }
        }
    };
    qzhost::SetMonitorDisplay(std::make_shared<const Halve>());
    const PF_PixelFloat halved = Transform({0.25f, 1.0f, 0.5f, -2.0f});
    EXPECT_TRUE(SameBits(halved, PF_PixelFloat{0.25f, 0.5f, 0.25f, -1.0f}));

    const fs::path profile = folder_ / "linear.icc";
    SaveRGBProfile(profile, kSRGBPrimaries, true);
    qzhost::SetMonitorProfile(profile);
    const PF_PixelFloat shown = Transform({1.0f, 1.0f, 0.6f, 0.0f});
    EXPECT_NEAR(shown.red, SRGBToLinear(0.5), 2e-3);
    EXPECT_NEAR(shown.green, SRGBToLinear(0.3), 2e-3);

    qzhost::HostControls::Get().Reset();
    EXPECT_EQ(qzhost::MonitorDisplay(), nullptr);
    const PF_PixelFloat pixel{1.0f, 0.5f, 0.5f, 0.5f};
    EXPECT_TRUE(SameBits(Transform(pixel), pixel));
}

} // namespace
