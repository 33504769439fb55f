// How an image's channels are grouped into the sets that a person chooses between.
#include <gtest/gtest.h>

#include "pixelview/ChannelSets.h"

namespace qzhost::pixelview {
namespace {

std::vector<ChannelSet> SetsOf(std::vector<std::string> channels, int alpha = -1) {
    return GroupChannelSets({PartChannels{"", std::move(channels), alpha}});
}

ChannelSet Set(std::string name, int part, int red, int green, int blue, int alpha) {
    return ChannelSet{std::move(name), part, red, green, blue, alpha};
}

TEST(ChannelSets, TheUnnamedSetIsRedGreenBlueAndAlpha) {
    EXPECT_EQ(SetsOf({"R", "G", "B", "A"}, 3),
              (std::vector<ChannelSet>{Set("RGBA", 0, 0, 1, 2, 3)}));
    EXPECT_EQ(SetsOf({"B", "G", "R"}), (std::vector<ChannelSet>{Set("RGB", 0, 2, 1, 0, -1)}));
}

TEST(ChannelSets, APrefixMakesASetThatSharesTheImagesAlpha) {
    const auto sets = SetsOf({"R", "G", "B", "A", "diffuse.R", "diffuse.G", "diffuse.B", "Z"}, 3);
    EXPECT_EQ(sets,
              (std::vector<ChannelSet>{Set("RGBA", 0, 0, 1, 2, 3), Set("diffuse", 0, 4, 5, 6, 3),
                                       Set("Z", 0, 7, 7, 7, -1)}));
    EXPECT_TRUE(sets[2].Grey());
    EXPECT_FALSE(sets[1].Grey());
}

TEST(ChannelSets, APrefixWithItsOwnAlphaKeepsIt) {
    const auto sets = SetsOf({"A", "B", "G", "R", "fg.A", "fg.B", "fg.G", "fg.R"}, 0);
    EXPECT_EQ(sets[1], Set("fg", 0, 7, 6, 5, 4));
}

TEST(ChannelSets, ALoneChannelIsGreyWithAlphaOne) {
    EXPECT_EQ(SetsOf({"Z"}), (std::vector<ChannelSet>{Set("Z", 0, 0, 0, 0, -1)}));
    // A prefix with one channel is a lone channel too, named in full.
    EXPECT_EQ(SetsOf({"R", "G", "B", "depth.Z"})[1], Set("depth.Z", 0, 3, 3, 3, -1));
}

TEST(ChannelSets, GreyAndAlphaMakeOneSet) {
    EXPECT_EQ(SetsOf({"Y", "A"}, 1), (std::vector<ChannelSet>{Set("YA", 0, 0, 0, 0, 1)}));
}

TEST(ChannelSets, AVectorPrefixIsReadInItsOrder) {
    // N.X, N.Y, N.Z are no colours; Y here is not grey.
    EXPECT_EQ(SetsOf({"R", "G", "B", "N.X", "N.Y", "N.Z"})[1], Set("N", 0, 3, 4, 5, -1));
    // Two channels give red and green; blue reads as 0.
    EXPECT_EQ(SetsOf({"R", "G", "B", "uv.u", "uv.v"})[1], Set("uv", 0, 3, 4, -1, -1));
}

TEST(ChannelSets, UnnamedChannelsAreReadInTheirOrder) {
    EXPECT_EQ(SetsOf({"Y", "", ""}), (std::vector<ChannelSet>{Set("RGB", 0, 0, 1, 2, -1)}));
    EXPECT_EQ(SetsOf({"", "A"}, 1), (std::vector<ChannelSet>{Set("YA", 0, 0, 0, 0, 1)}));
}

TEST(ChannelSets, AnAlphaAloneIsAChannelOfItsOwn) {
    EXPECT_EQ(SetsOf({"A"}, 0), (std::vector<ChannelSet>{Set("A", 0, 0, 0, 0, -1)}));
}

TEST(ChannelSets, EachPartOfAMultiPartFileIsNamedAfterThePart) {
    const auto sets = GroupChannelSets(
        {PartChannels{"beauty", {"R", "G", "B", "A"}, 3},
         PartChannels{"", {"R", "G", "B", "specular.R", "specular.G", "specular.B", "Z"}, -1}});
    EXPECT_EQ(sets,
              (std::vector<ChannelSet>{Set("beauty", 0, 0, 1, 2, 3), Set("image 2", 1, 0, 1, 2, -1),
                                       Set("image 2.specular", 1, 3, 4, 5, -1),
                                       Set("image 2.Z", 1, 6, 6, 6, -1)}));
}

TEST(ChannelSets, NamesAreFoundExactlyThenWithoutRegardToCase) {
    const auto sets = SetsOf({"R", "G", "B", "diffuse.R", "diffuse.G", "diffuse.B", "Z"});
    EXPECT_EQ(FindChannelSet(sets, "diffuse"), 1);
    EXPECT_EQ(FindChannelSet(sets, "DIFFUSE"), 1);
    EXPECT_EQ(FindChannelSet(sets, "z"), 2);
    EXPECT_EQ(FindChannelSet(sets, "specular"), -1);
    EXPECT_EQ(ChannelSetNames(sets), "RGB, diffuse, Z");
}

} // namespace
} // namespace qzhost::pixelview
