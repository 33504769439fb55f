// `qzhost inspect --sample N`: the panel shows the mean of the N x N square around each
// point, worked out here from the image's own values; a side that is not odd from 1 to
// 101 is refused with one line and exit status 2.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "PixelViewTestSupport.h"

namespace pixelviewtest {
namespace {

using nlohmann::json;

constexpr int kWidth = 9;
constexpr int kHeight = 7;

/// Red, green, blue, alpha of the test image's pixel: colours that vary over the image
/// (one over range, one negative) and an alpha that is 0 on some pixels.
std::array<float, 4> TestPixel(int x, int y) {
    const float alpha = static_cast<float>((x * 3 + y * 5) % 7) / 6.0f;
    return {0.1f * static_cast<float>(x) + 0.05f, 2.0f - 0.25f * static_cast<float>(y),
            -0.125f + 0.01f * static_cast<float>(x * y), alpha};
}

std::vector<double> TestValues() {
    std::vector<double> values;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            for (float v : TestPixel(x, y)) {
                values.push_back(v);
            }
        }
    }
    return values;
}

/// The mean of the square of side `n` around `x`, `y` as alpha, red, green, blue: the
/// colours times alpha (in float, as the image is laid over transparent black) summed in
/// double and divided by the alpha sum; the alpha sum divided by n x n, pixels beyond the
/// image counting as transparent.
std::array<float, 4> ReferenceMean(int x, int y, int n) {
    double sums[4] = {0, 0, 0, 0};
    for (int row = y - n / 2; row <= y + n / 2; ++row) {
        for (int column = x - n / 2; column <= x + n / 2; ++column) {
            if (column < 0 || row < 0 || column >= kWidth || row >= kHeight) {
                continue;
            }
            const std::array<float, 4> p = TestPixel(column, row);
            for (int c = 0; c < 3; ++c) {
                sums[c] += p[static_cast<std::size_t>(c)] * p[3];
            }
            sums[3] += p[3];
        }
    }
    if (sums[3] == 0) {
        return {0, 0, 0, 0};
    }
    return {static_cast<float>(sums[3] / (static_cast<double>(n) * n)),
            static_cast<float>(sums[0] / sums[3]), static_cast<float>(sums[1] / sums[3]),
            static_cast<float>(sums[2] / sums[3])};
}

std::string FourDecimals(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4f", static_cast<double>(value));
    return text;
}

class PixelViewSample : public ::testing::Test {
protected:
    void SetUp() override {
        image_ = folder_.File("sample.exr");
        WriteImage(image_, kWidth, kHeight, 4, "float", TestValues());
    }

    /// The JSON panels of `inspect` on the test image at `points` with `options`.
    std::vector<json> Panels(const std::string& points, const std::string& options) {
        const ProgramRun run = Qzhost("inspect " + Quoted(image_) + " " + points + " " + options +
                                      " --json --prefs " + Quoted(folder_.File("prefs.txt")));
        EXPECT_EQ(run.status, 0) << run.err;
        return JsonLines(run.out);
    }

    TempFolder folder_;
    std::string image_;
};

TEST_F(PixelViewSample, ThePanelShowsTheMeanOfTheSquare) {
    struct Run {
        int n;
        std::vector<std::array<int, 2>> points;
    };
    // Inside the image, at its corners (most of the square beyond it) and squares much
    // larger than the image.
    for (const Run& r : std::vector<Run>{{3, {{4, 3}, {0, 0}}},
                                         {5, {{4, 3}, {8, 6}}},
                                         {11, {{2, 5}}},
                                         {101, {{4, 3}, {8, 0}}}}) {
        std::string points;
        for (const auto& [x, y] : r.points) {
            points += " --at " + std::to_string(x) + ".5," + std::to_string(y) + ".25";
        }
        const auto panels = Panels(points, "--sample " + std::to_string(r.n));
        ASSERT_EQ(panels.size(), r.points.size());
        for (std::size_t i = 0; i < r.points.size(); ++i) {
            const auto [x, y] = r.points[i];
            SCOPED_TRACE(std::to_string(r.n) + " x " + std::to_string(r.n) + " at " +
                         std::to_string(x) + "," + std::to_string(y));
            const json& panel = panels[i];
            const std::array<float, 4> expected = ReferenceMean(x, y, r.n);
            for (std::size_t channel = 0; channel < 4; ++channel) {
                EXPECT_EQ(panel.at("pixel").at(channel).get<float>(), expected[channel]) << channel;
            }
            EXPECT_EQ(panel.at("sample"), r.n);
            // The panel shows the mean in the float notation (red, green, blue, alpha).
            EXPECT_EQ(ControlText(panel, 7), FourDecimals(expected[1]));
            EXPECT_EQ(ControlText(panel, 8), FourDecimals(expected[2]));
            EXPECT_EQ(ControlText(panel, 9), FourDecimals(expected[3]));
            EXPECT_EQ(ControlText(panel, 10), FourDecimals(expected[0]));
            // X, Y stay the point's.
            EXPECT_EQ(ControlText(panel, 15), std::to_string(x));
            EXPECT_EQ(ControlText(panel, 16), std::to_string(y));
            EXPECT_EQ(panel.at("lines").at(2), "32 bpc float, " + std::to_string(r.n) + " x " +
                                                   std::to_string(r.n) + " mean");
        }
    }
}

TEST_F(PixelViewSample, TransparentNeighboursDoNotDarkenTheColour) {
    // The 3 x 3 square around 1,1 holds pixels of alpha 0 (0,0 among them) to 1. The
    // colour is the alpha-weighted one of the pixels that show: the plain mean of the
    // square's colours times alpha would be darker.
    const auto panels = Panels("--at 1,1", "--sample 3");
    ASSERT_EQ(panels.size(), 1u);
    const float red = panels[0].at("pixel").at(1).get<float>();
    double weighted = 0;
    double alpha = 0;
    double darkened = 0;
    for (int y = 0; y <= 2; ++y) {
        for (int x = 0; x <= 2; ++x) {
            const auto p = TestPixel(x, y);
            weighted += static_cast<double>(p[0]) * p[3];
            alpha += p[3];
            darkened += static_cast<double>(p[0]) * p[3] / 9.0;
        }
    }
    ASSERT_LT(alpha, 9.0) << "the square must hold transparent pixels";
    EXPECT_FLOAT_EQ(red, static_cast<float>(weighted / alpha));
    EXPECT_GT(red, static_cast<float>(darkened) * 1.2f);
}

TEST_F(PixelViewSample, SizeOneIsThePoint) {
    const std::string points = "--at 4,3 --at 0,0 --at 8,6";
    const auto plain = Panels(points, "");
    const auto one = Panels(points, "--sample 1");
    ASSERT_EQ(plain.size(), 3u);
    ASSERT_EQ(one.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(one[i].at("pixel"), plain[i].at("pixel"));
        EXPECT_FALSE(one[i].contains("sample"));
        EXPECT_EQ(one[i].at("lines"), plain[i].at("lines"));
    }
    const std::array<float, 4> p = TestPixel(4, 3);
    EXPECT_EQ(one[0].at("pixel").at(1).get<float>(), p[0]);
    EXPECT_EQ(one[0].at("pixel").at(0).get<float>(), p[3]);
}

TEST_F(PixelViewSample, EveryPointOfAStreamIsSampled) {
    const ProgramRun run =
        Qzhost("inspect " + Quoted(image_) + " --at - --sample 5 --json --prefs " +
                   Quoted(folder_.File("prefs.txt")),
               "4,3\n0,6\n");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(panels[0].at("pixel").at(2).get<float>(), ReferenceMean(4, 3, 5)[2]);
    EXPECT_EQ(panels[1].at("pixel").at(0).get<float>(), ReferenceMean(0, 6, 5)[0]);
}

TEST_F(PixelViewSample, SidesThatAreNotOddFrom1To101AreRefused) {
    for (const char* size : {"0", "2", "4", "-3", "103", "1001", "five", "3.0"}) {
        SCOPED_TRACE(size);
        const ProgramRun run = Qzhost("inspect " + Quoted(image_) + " --at 1,1 --sample " + size +
                                      " --prefs " + Quoted(folder_.File("prefs.txt")));
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(Lines(run.err).size(), 1u) << run.err;
    }
}

} // namespace
} // namespace pixelviewtest

#endif
