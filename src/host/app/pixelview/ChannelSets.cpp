#include "pixelview/ChannelSets.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace qzhost::pixelview {

namespace {

bool SameLetters(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

/// The part of a channel name before its last dot ("diffuse" of "diffuse.R"; "" of "R").
std::string_view Prefix(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(0, dot);
}

/// The part after the last dot ("R" of "diffuse.R").
std::string_view Suffix(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? name : name.substr(dot + 1);
}

/// The channels that share one prefix, in the part's order.
struct Group {
    std::string prefix;
    std::vector<int> channels;
};

std::vector<Group> GroupsOf(const PartChannels& part) {
    std::vector<Group> groups;
    for (int c = 0; c < static_cast<int>(part.channels.size()); ++c) {
        const std::string_view prefix = Prefix(part.channels[static_cast<std::size_t>(c)]);
        auto found = std::find_if(groups.begin(), groups.end(),
                                  [&](const Group& g) { return g.prefix == prefix; });
        if (found == groups.end()) {
            groups.push_back({std::string(prefix), {}});
            found = std::prev(groups.end());
        }
        found->channels.push_back(c);
    }
    // The unnamed set comes first.
    std::stable_partition(groups.begin(), groups.end(),
                          [](const Group& g) { return g.prefix.empty(); });
    return groups;
}

/// Picks a group's channels for one set and lists what is left over.
class GroupReader {
public:
    GroupReader(const PartChannels& part, const Group& group)
        : part_(part), left_(group.channels) {}

    /// Takes the channel whose last name part is one of `letters`, if there is one.
    int Take(std::initializer_list<std::string_view> letters) {
        for (auto it = left_.begin(); it != left_.end(); ++it) {
            const std::string_view suffix = Suffix(Name(*it));
            for (const std::string_view letter : letters) {
                if (SameLetters(suffix, letter)) {
                    const int channel = *it;
                    left_.erase(it);
                    return channel;
                }
            }
        }
        return -1;
    }
    /// Takes channel `channel` if it is still left.
    int TakeChannel(int channel) {
        const auto it = std::find(left_.begin(), left_.end(), channel);
        if (it == left_.end()) {
            return -1;
        }
        left_.erase(it);
        return channel;
    }
    const std::vector<int>& Left() const noexcept { return left_; }
    const std::string& Name(int channel) const {
        return part_.channels[static_cast<std::size_t>(channel)];
    }

private:
    const PartChannels& part_;
    std::vector<int> left_;
};

std::string Letters(const ChannelSet& set) {
    std::string letters;
    for (const auto& [channel, letter] :
         {std::pair{set.red, 'R'}, std::pair{set.green, 'G'}, std::pair{set.blue, 'B'}}) {
        if (channel >= 0 && !set.Grey()) {
            letters += letter;
        }
    }
    if (set.Grey()) {
        letters += 'Y';
    }
    if (set.alpha >= 0) {
        letters += 'A';
    }
    return letters;
}

/// The sets of one part, unnamed first; the unnamed set's name is left empty.
std::vector<ChannelSet> PartSets(const PartChannels& part, int index) {
    std::vector<ChannelSet> sets;
    std::vector<int> lone;
    const std::vector<Group> groups = GroupsOf(part);
    // The alpha of the unnamed set, which colour sets without their own share.
    int shared_alpha = -1;
    for (const Group& group : groups) {
        GroupReader reader(part, group);
        ChannelSet set;
        set.part = index;
        set.name = group.prefix;
        if (group.prefix.empty()) {
            set.alpha = part.alpha >= 0 && Prefix(reader.Name(part.alpha)).empty()
                            ? reader.TakeChannel(part.alpha)
                            : -1;
        }
        if (set.alpha < 0) {
            set.alpha = reader.Take({"A", "alpha"});
        }
        set.red = reader.Take({"R", "red"});
        set.green = reader.Take({"G", "green"});
        set.blue = reader.Take({"B", "blue"});
        bool colour = set.red >= 0 || set.green >= 0 || set.blue >= 0;
        const auto named = [&](std::string_view letter) {
            return std::any_of(group.channels.begin(), group.channels.end(),
                               [&](int c) { return SameLetters(Suffix(reader.Name(c)), letter); });
        };
        // Channels that the file leaves unnamed are read in their order with the others.
        const bool unnamed = named("");
        if (!colour && !unnamed && !named("X") && !named("Z")) {
            // Y is grey, unless it is the middle of X, Y, Z.
            const int grey = reader.Take({"Y"});
            if (grey >= 0) {
                set.red = set.green = set.blue = grey;
                colour = true;
            }
        }
        std::vector<int> rest;
        if (!colour) {
            // Channels without names (or a prefix whose channels are not named for
            // colours, such as N.X, N.Y, N.Z) are read in their order: the first three as
            // red, green and blue, or one as grey.
            if (!group.prefix.empty() || unnamed) {
                rest = reader.Left();
            }
            if (!group.prefix.empty() && rest.size() < 2) {
                rest.clear();
            }
            if (rest.size() == 1) {
                set.red = set.green = set.blue = rest[0];
            } else if (!rest.empty()) {
                set.red = rest[0];
                set.green = rest[1];
                set.blue = rest.size() > 2 ? rest[2] : -1;
            }
            for (const int channel : rest) {
                reader.TakeChannel(channel);
            }
            colour = !rest.empty();
        }
        if (group.prefix.empty() && set.alpha >= 0) {
            shared_alpha = set.alpha;
        }
        if (colour) {
            // The unnamed set's name is left empty here: it depends on the file's parts.
            sets.push_back(set);
        } else if (set.alpha >= 0) {
            // An alpha with no colour beside it is a channel of its own.
            lone.push_back(set.alpha);
            if (group.prefix.empty()) {
                shared_alpha = -1;
            }
        }
        for (const int channel : reader.Left()) {
            lone.push_back(channel);
        }
    }
    for (ChannelSet& set : sets) {
        if (set.alpha < 0) {
            set.alpha = shared_alpha;
        }
    }
    std::sort(lone.begin(), lone.end());
    for (const int channel : lone) {
        ChannelSet set;
        set.part = index;
        set.name = part.channels[static_cast<std::size_t>(channel)];
        if (set.name.empty()) {
            set.name = "channel " + std::to_string(channel + 1);
        }
        set.red = set.green = set.blue = channel;
        sets.push_back(set);
    }
    return sets;
}

} // namespace

std::vector<ChannelSet> GroupChannelSets(const std::vector<PartChannels>& parts) {
    std::vector<ChannelSet> sets;
    for (std::size_t p = 0; p < parts.size(); ++p) {
        std::vector<ChannelSet> part_sets = PartSets(parts[p], static_cast<int>(p));
        if (parts.size() > 1) {
            // The sets of a multi-part file carry the part's name (an unnamed one: "image"
            // and its place in the file, from 1); its unnamed set is the part itself.
            const std::string part =
                parts[p].name.empty() ? "image " + std::to_string(p + 1) : parts[p].name;
            for (ChannelSet& set : part_sets) {
                set.name = set.name.empty() ? part : part + "." + set.name;
            }
        }
        for (ChannelSet& set : part_sets) {
            if (set.name.empty()) {
                set.name = Letters(set);
            }
        }
        sets.insert(sets.end(), part_sets.begin(), part_sets.end());
    }
    return sets;
}

int FindChannelSet(const std::vector<ChannelSet>& sets, std::string_view name) {
    for (std::size_t s = 0; s < sets.size(); ++s) {
        if (sets[s].name == name) {
            return static_cast<int>(s);
        }
    }
    for (std::size_t s = 0; s < sets.size(); ++s) {
        if (SameLetters(sets[s].name, name)) {
            return static_cast<int>(s);
        }
    }
    return -1;
}

std::string ChannelSetNames(const std::vector<ChannelSet>& sets) {
    std::string names;
    for (const ChannelSet& set : sets) {
        if (!names.empty()) {
            names += ", ";
        }
        names += set.name;
    }
    return names;
}

} // namespace qzhost::pixelview
