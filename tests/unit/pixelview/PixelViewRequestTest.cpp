// The checks of an `inspect` request made before the host starts.
#include <gtest/gtest.h>

#include <string>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewRequest.h"

namespace qzhost::pixelview {
namespace {

PixelViewOptions AtOnePoint() {
    PixelViewOptions options;
    options.at = {"3,4"};
    return options;
}

TEST(PixelViewRequest, ReadsThePointsTheOriginAndTheNotation) {
    PixelViewOptions options = AtOnePoint();
    options.at.push_back("-");
    options.origin = "1,2";
    options.mode = "HSB";
    options.locale = "sr_Latn_RS@calendar=gregorian";
    const PixelViewRequest request = CheckPixelViewOptions(options);
    ASSERT_EQ(request.sources.size(), 2u);
    EXPECT_FALSE(request.sources[0].fromInput);
    EXPECT_EQ(request.sources[0].at.y, 4);
    EXPECT_TRUE(request.sources[1].fromInput);
    ASSERT_TRUE(request.origin.has_value());
    EXPECT_EQ(request.origin->x, 1);
    ASSERT_NE(request.mode, nullptr);
    EXPECT_EQ(request.mode->name, "hsb");
}

TEST(PixelViewRequest, RefusesStandardInputTwiceAndNoPoint) {
    PixelViewOptions twice = AtOnePoint();
    twice.at = {"-", "-"};
    EXPECT_THROW(CheckPixelViewOptions(twice), BadRequest);
    PixelViewOptions none = AtOnePoint();
    none.at.clear();
    EXPECT_THROW(CheckPixelViewOptions(none), BadRequest);
}

TEST(PixelViewRequest, RefusesALocaleLongerThanALocaleIdCanBe) {
    PixelViewOptions options = AtOnePoint();
    // Long enough to overflow the stack of the pattern match, were it run on it.
    options.locale = "en_US@" + std::string(200000, 'a');
    try {
        CheckPixelViewOptions(options);
        FAIL() << "no refusal";
    } catch (const BadRequest& error) {
        EXPECT_NE(std::string(error.what()).find("at most 156 characters"), std::string::npos)
            << error.what();
    }
    options.locale = "en_US@" + std::string(150, 'a');
    EXPECT_NO_THROW(CheckPixelViewOptions(options));
}

} // namespace
} // namespace qzhost::pixelview
