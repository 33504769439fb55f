// The mean of a square of pixels: alpha-weighted colours, transparent pixels beyond the
// picture in the count, and the sizes that can be sampled.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "pixelview/AreaSample.h"

namespace qzhost::pixelview {
namespace {

TEST(AreaSample, TheOfferedSizesAreOddFromThePointTo101) {
    EXPECT_EQ(kSampleSizes.front(), 1);
    EXPECT_EQ(kSampleSizes.back(), kLargestSampleSize);
    for (int size : kSampleSizes) {
        EXPECT_TRUE(IsSampleSize(size)) << size;
    }
    for (int size : {0, -1, 2, 4, 100, 102, 103}) {
        EXPECT_FALSE(IsSampleSize(size)) << size;
    }
    EXPECT_TRUE(IsSampleSize(7));
    EXPECT_EQ(SampleSizeName(1), "Point");
    EXPECT_EQ(SampleSizeName(31), "31 x 31");
}

TEST(AreaSample, TheSquareIsCentredAndCutToTheBounds) {
    const SampleSquare bounds{0, 0, 240, 160};
    const SampleSquare middle = SquareInside(100, 50, 5, bounds);
    EXPECT_EQ(middle.x0, 98);
    EXPECT_EQ(middle.x1, 103);
    EXPECT_EQ(middle.y0, 48);
    EXPECT_EQ(middle.y1, 53);
    const SampleSquare corner = SquareInside(0, 159, 101, bounds);
    EXPECT_EQ(corner.x0, 0);
    EXPECT_EQ(corner.x1, 51);
    EXPECT_EQ(corner.y0, 109);
    EXPECT_EQ(corner.y1, 160);
    EXPECT_TRUE(SquareInside(-60, 10, 101, bounds).Empty());
    EXPECT_EQ(SquareInside(-50, 10, 101, bounds).Width(), 1);
    // Near the ends of int the square is cut, not wrapped.
    const SampleSquare far = SquareInside(std::numeric_limits<int>::max(), 0, 101, {0, 0, 10, 10});
    EXPECT_TRUE(far.Empty());
}

TEST(AreaSample, APointIsItsOwnMeanWhenOpaque) {
    AreaMean mean(1);
    mean.AddStraight({1.0f, 0.18f, -0.25f, 4.0f});
    const PixelARGB m = mean.Mean();
    EXPECT_EQ(m[0], 1.0f);
    EXPECT_EQ(m[1], 0.18f);
    EXPECT_EQ(m[2], -0.25f);
    EXPECT_EQ(m[3], 4.0f);
}

TEST(AreaSample, APointOfPartAlphaKeepsItsColourAndAlpha) {
    // Colours whose product with the alpha is exact come back exactly.
    AreaMean mean(1);
    mean.AddStraight({0.25f, 0.5f, 2.0f, 0.75f});
    const PixelARGB m = mean.Mean();
    EXPECT_EQ(m[0], 0.25f);
    EXPECT_EQ(m[1], 0.5f);
    EXPECT_EQ(m[2], 2.0f);
    EXPECT_EQ(m[3], 0.75f);
}

TEST(AreaSample, TransparentPixelsDoNotDarkenTheColour) {
    // A 3 x 3 square: one red pixel of alpha 1, one of alpha 0.5 and seven transparent
    // black ones. The colour is the alpha-weighted one of the two red pixels; the alpha is
    // the mean over all nine.
    AreaMean mean(3);
    mean.AddStraight({1.0f, 0.8f, 0.0f, 0.0f});
    mean.AddStraight({0.5f, 0.2f, 0.0f, 0.0f});
    for (int i = 0; i < 7; ++i) {
        mean.AddStraight({0.0f, 0.0f, 0.0f, 0.0f});
    }
    const PixelARGB m = mean.Mean();
    EXPECT_FLOAT_EQ(m[0], 1.5f / 9.0f);
    EXPECT_FLOAT_EQ(m[1], (0.8f + 0.5f * 0.2f) / 1.5f);
    EXPECT_EQ(m[2], 0.0f);
    // The colour of a transparent pixel is not seen, whatever it is.
    AreaMean hidden(3);
    hidden.AddStraight({1.0f, 0.8f, 0.0f, 0.0f});
    hidden.AddStraight({0.5f, 0.2f, 0.0f, 0.0f});
    for (int i = 0; i < 7; ++i) {
        hidden.AddStraight({0.0f, 9.0f, 9.0f, 9.0f});
    }
    EXPECT_EQ(hidden.Mean(), m);
}

TEST(AreaSample, PixelsNotAddedCountAsTransparent) {
    // A 5 x 5 square of which only 10 pixels lie in the picture: the same as those 10
    // with 15 transparent pixels added.
    std::vector<float> inside;
    for (int i = 0; i < 10; ++i) {
        const float alpha = 0.1f * static_cast<float>(i);
        inside.insert(inside.end(),
                      {0.3f * alpha, 0.02f * static_cast<float>(i) * alpha, 1.5f * alpha, alpha});
    }
    AreaMean cut(5);
    cut.AddPremultiplied(inside.data(), 10);
    AreaMean whole(5);
    whole.AddPremultiplied(inside.data(), 10);
    const std::vector<float> transparent(15 * 4, 0.0f);
    whole.AddPremultiplied(transparent.data(), 15);
    EXPECT_EQ(cut.Mean(), whole.Mean());
    double alpha = 0;
    double green = 0;
    for (int i = 0; i < 10; ++i) {
        alpha += inside[static_cast<std::size_t>(i) * 4 + 3];
        green += inside[static_cast<std::size_t>(i) * 4 + 1];
    }
    EXPECT_FLOAT_EQ(cut.Mean()[0], static_cast<float>(alpha / 25.0));
    EXPECT_FLOAT_EQ(cut.Mean()[1], 0.3f);
    EXPECT_FLOAT_EQ(cut.Mean()[2], static_cast<float>(green / alpha));
    EXPECT_FLOAT_EQ(cut.Mean()[3], 1.5f);
}

TEST(AreaSample, NoAlphaGivesNoColour) {
    AreaMean empty(11);
    EXPECT_EQ(empty.Mean(), (PixelARGB{0, 0, 0, 0}));
    AreaMean clear(3);
    clear.AddStraight({0.0f, 5.0f, 6.0f, 7.0f});
    EXPECT_EQ(clear.Mean(), (PixelARGB{0, 0, 0, 0}));
}

TEST(AreaSample, TheLargestSquareSumsWithoutDrift) {
    // 10,201 pixels of red 0.1 (in float) and alpha 0.5: in double every sum is exact, so
    // the mean is 0.1 and 0.5 again. A float sum would have drifted by then: adding 0.05
    // to a sum near 500 rounds it each time.
    AreaMean mean(101);
    const float pixel[4] = {0.1f * 0.5f, 0.0f, 1.0f, 0.5f};
    for (int i = 0; i < 101 * 101; ++i) {
        mean.AddPremultiplied(pixel, 1);
    }
    EXPECT_EQ(mean.Mean()[0], 0.5f);
    EXPECT_EQ(mean.Mean()[1], static_cast<float>(double{0.1f * 0.5f} / 0.5));
    EXPECT_EQ(mean.Mean()[3], 2.0f);
    float drifting = 0.0f;
    for (int i = 0; i < 101 * 101; ++i) {
        drifting += pixel[0];
    }
    EXPECT_NE(drifting / (101.0f * 101.0f) / 0.5f, mean.Mean()[1])
        << "a float sum would do as well: the case shows nothing";
}

} // namespace
} // namespace qzhost::pixelview
