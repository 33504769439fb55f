#include <gtest/gtest.h>

#include <sstream>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewPoint.h"

namespace qzhost::pixelview {
namespace {

TEST(PixelViewPoint, ParsesTwoNumbersSeparatedByAComma) {
    const Point point = ParsePoint("12,34", "--at");
    EXPECT_EQ(point.x, 12);
    EXPECT_EQ(point.y, 34);
    const Point spaced = ParsePoint(" 1.5 , -0.25 ", "--at");
    EXPECT_EQ(spaced.x, 1.5);
    EXPECT_EQ(spaced.y, -0.25);
    EXPECT_EQ(ParsePoint("+3,4e1", "--at").y, 40);
}

TEST(PixelViewPoint, RefusesAnythingButTwoFiniteNumbers) {
    for (const char* text :
         {"", "1", "1,", ",2", "1,2,3", "a,b", "1;2", "nan,1", "1,inf", "1 2,3", "0x10,1"}) {
        EXPECT_THROW(ParsePoint(text, "--at"), BadRequest) << text;
    }
}

TEST(PixelViewPoint, TheRefusalNamesTheOptionAndTheText) {
    try {
        ParsePoint("7", "--origin");
        FAIL() << "no refusal";
    } catch (const BadRequest& error) {
        EXPECT_EQ(error.ExitStatus(), 2);
        EXPECT_NE(std::string(error.what()).find("--origin"), std::string::npos);
        EXPECT_NE(std::string(error.what()).find("'7'"), std::string::npos);
    }
}

TEST(PixelViewPoint, ReadsOnePointPerLineSkippingBlankAndCommentLines) {
    std::istringstream in("1,2\n\n  # a comment\n3.5,4\r\n   \n5,6");
    const auto points = ReadPoints(in);
    ASSERT_EQ(points.size(), 3u);
    EXPECT_EQ(points[1].x, 3.5);
    EXPECT_EQ(points[1].y, 4);
    EXPECT_EQ(points[2].x, 5);
}

TEST(PixelViewPoint, TheReaderTakesNoMoreOfTheStreamThanTheLinesOfThePointsItGave) {
    std::istringstream in("1,2\n# note\n\n3,4\nnot a point\n");
    PointReader reader(in);
    Point point;
    ASSERT_TRUE(reader.Next(point));
    EXPECT_EQ(point.y, 2);
    EXPECT_EQ(in.tellg(), 4); // the first line, nothing of the next
    ASSERT_TRUE(reader.Next(point));
    EXPECT_EQ(point.x, 3);
    EXPECT_EQ(in.tellg(), 16); // the comment and the empty line, and the point's line
    try {
        reader.Next(point);
        FAIL() << "no refusal";
    } catch (const BadRequest& error) {
        EXPECT_NE(std::string(error.what()).find("standard input line 5"), std::string::npos)
            << error.what();
    }
}

TEST(PixelViewPoint, TheReaderSaysWhenTheStreamEnds) {
    std::istringstream in("5,6");
    PointReader reader(in);
    Point point;
    ASSERT_TRUE(reader.Next(point));
    EXPECT_EQ(point.x, 5);
    EXPECT_FALSE(reader.Next(point));
    EXPECT_FALSE(reader.Next(point));
}

TEST(PixelViewPoint, AMalformedLineIsRefusedWithItsNumber) {
    std::istringstream in("1,2\n\nthree\n");
    try {
        ReadPoints(in);
        FAIL() << "no refusal";
    } catch (const BadRequest& error) {
        EXPECT_NE(std::string(error.what()).find("line 3"), std::string::npos) << error.what();
    }
}

} // namespace
} // namespace qzhost::pixelview
