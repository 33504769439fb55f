#include <gtest/gtest.h>

#include "pixelview/ProjectDepthRule.h"

namespace qzhost::pixelview {
namespace {

TEST(ProjectDepthRule, EightBitIntegersGiveDepthZero) {
    EXPECT_EQ(ProjectDepthFor(false, 8), 0);
    EXPECT_EQ(ProjectDepthFor(false, 1), 0);
}

TEST(ProjectDepthRule, IntegersUpToSixteenBitsGiveDepthOne) {
    EXPECT_EQ(ProjectDepthFor(false, 16), 1);
    EXPECT_EQ(ProjectDepthFor(false, 10), 1);
    EXPECT_EQ(ProjectDepthFor(false, 12), 1);
}

TEST(ProjectDepthRule, FloatsAndWiderIntegersGiveDepthTwo) {
    EXPECT_EQ(ProjectDepthFor(true, 16), 2);
    EXPECT_EQ(ProjectDepthFor(true, 32), 2);
    EXPECT_EQ(ProjectDepthFor(false, 32), 2);
}

} // namespace
} // namespace qzhost::pixelview
