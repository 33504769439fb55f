// The swatch on a monitor with a profile of its own: the swatch shows the pixel as that
// monitor needs it (from the sRGB working space, relative colorimetric), clamped to
// 0-1; the numbers stay the pixel's.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <lcms2.h>

#include "BuildPaths.h"
#include "PixelViewTestSupport.h"

namespace pixelviewtest {
namespace {

/// A monitor with wide primaries (red x 0.64 y 0.33, green x 0.21 y 0.71, blue x 0.15
/// y 0.06), the white point of a 6504 K daylight and gamma 2.2, written to `path`.
void WriteWideMonitorProfile(const std::string& path) {
    cmsCIExyY white;
    cmsWhitePointFromTemp(&white, 6504);
    const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1.0}, {0.21, 0.71, 1.0}, {0.15, 0.06, 1.0}};
    cmsToneCurve* gamma = cmsBuildGamma(nullptr, 2.2);
    cmsToneCurve* curves[3] = {gamma, gamma, gamma};
    cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    ASSERT_NE(profile, nullptr);
    ASSERT_TRUE(cmsSaveProfileToFile(profile, path.c_str()));
    cmsCloseProfile(profile);
    cmsFreeToneCurve(gamma);
}

/// What the monitor of `path` needs for the sRGB colour `rgb`.
std::array<float, 3> OnMonitor(const std::string& path, std::array<float, 3> rgb) {
    cmsHPROFILE srgb = cmsCreate_sRGBProfile();
    cmsHPROFILE monitor = cmsOpenProfileFromFile(path.c_str(), "r");
    cmsHTRANSFORM transform = cmsCreateTransform(srgb, TYPE_RGB_FLT, monitor, TYPE_RGB_FLT,
                                                 INTENT_RELATIVE_COLORIMETRIC, 0);
    std::array<float, 3> out{};
    cmsDoTransform(transform, rgb.data(), out.data(), 1);
    cmsDeleteTransform(transform);
    cmsCloseProfile(monitor);
    cmsCloseProfile(srgb);
    return out;
}

TEST(PixelViewMonitor, TheSwatchShowsThePixelForTheMonitorAndTheNumbersStayThePixels) {
    TempFolder folder;
    const std::string icc = folder.File("wide.icc");
    WriteWideMonitorProfile(icc);
    // The orange patch (1, 0.5, 0) and the over-range patch (1.25, 0.75, 0.5).
    const ProgramRun run = Qzhost("inspect --at 205,45 --at 205,85 --json --monitor " +
                                  Quoted(icc) + " --prefs " + Quoted(folder.File("p.txt")));
    ASSERT_EQ(run.status, 0) << run.err;
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 2u);
    const std::array<std::array<float, 3>, 2> pixels = {{{1, 0.5f, 0}, {1.25f, 0.75f, 0.5f}}};
    for (std::size_t i = 0; i < 2; ++i) {
        const auto shown = OnMonitor(icc, pixels[i]);
        const auto& swatch = panels[i].at("swatch");
        for (std::size_t c = 0; c < 3; ++c) {
            EXPECT_NEAR(swatch[c].get<double>(), std::clamp(shown[c], 0.0f, 1.0f), 1e-4)
                << "panel " << i << " channel " << c;
        }
        EXPECT_EQ(swatch[3], 1);
    }
    // The monitor changes the colour: the swatch is not the orange as sRGB shows it.
    const auto& orange = panels[0]["swatch"];
    const double moved =
        std::max({std::abs(orange[0].get<double>() - 1.0), std::abs(orange[1].get<double>() - 0.5),
                  std::abs(orange[2].get<double>() - 0.0)});
    EXPECT_GT(moved, 0.02) << orange.dump();
    EXPECT_EQ(ControlText(panels[0], 8), "0.5000");
    EXPECT_EQ(ControlText(panels[1], 7), "1.2500");
}

} // namespace
} // namespace pixelviewtest

#endif
