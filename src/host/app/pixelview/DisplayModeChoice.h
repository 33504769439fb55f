// The colour notations that `--mode` names, and where each stands in the panel's flyout
// menu: the command picks the menu item at that position, as a person would.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qzhost::pixelview {

struct DisplayModeChoice {
    /// The name on the command line: auto, percent, web, hsb, 8bpc, 10bpc, 16bpc, decimal.
    std::string_view name;
    /// The position of the notation's item in the panel's flyout menu (0 is the first).
    std::size_t menuPosition;
    /// The notation's number, as the panel reports it and the preference stores it.
    std::uint16_t mode;
};

/// Every notation, in the order of the flyout menu.
const std::vector<DisplayModeChoice>& DisplayModeChoices();

/// The notation named `name` (without regard to case); throws BadRequest for any other
/// name.
const DisplayModeChoice& FindDisplayMode(std::string_view name);

} // namespace qzhost::pixelview
