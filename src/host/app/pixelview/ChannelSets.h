// An image's channels grouped into the sets that a person chooses between, by their
// names as multi-channel files name them: the unnamed set (R, G, B, A), one set per
// prefix ("diffuse.R", "diffuse.G", "diffuse.B" make "diffuse"), each lone channel ("Z"),
// and the sets of each part of a multi-part file, named after the part. A set is read as
// red, green, blue and alpha: a colour set with its own alpha, else the image's; a lone
// channel as grey with alpha 1.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qzhost::pixelview {

/// The channels of one part of an image file.
struct PartChannels {
    /// The part's name; empty when it has none.
    std::string name;
    /// The channel names in the part's order (empty for a channel that the file leaves
    /// unnamed).
    std::vector<std::string> channels;
    /// The channel that the reader takes for alpha, or -1.
    int alpha = -1;
};

/// One set: the channels of a part that give red, green, blue and alpha.
struct ChannelSet {
    /// The name by which a person chooses it ("RGBA", "diffuse", "Z", "beauty.diffuse").
    std::string name;
    int part = 0;
    /// Channels of the part; a colour of -1 reads as 0, an alpha of -1 as 1.
    int red = -1;
    int green = -1;
    int blue = -1;
    int alpha = -1;

    /// Whether one channel gives red, green and blue.
    bool Grey() const noexcept { return red >= 0 && red == green && green == blue; }
    bool operator==(const ChannelSet&) const = default;
};

/// The sets of an image of `parts`, the first part's unnamed set (or, without one, its
/// first set) first. Every image with a channel has at least one set.
std::vector<ChannelSet> GroupChannelSets(const std::vector<PartChannels>& parts);

/// The set named `name` (exactly, else without regard to case), or -1.
int FindChannelSet(const std::vector<ChannelSet>& sets, std::string_view name);

/// The names of `sets` separated by ", ".
std::string ChannelSetNames(const std::vector<ChannelSet>& sets);

} // namespace qzhost::pixelview
