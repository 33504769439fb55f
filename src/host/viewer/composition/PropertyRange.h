// The range of values that a property takes: the opacities from 0 to 100, the mask's
// feather from 0; the other properties take any value (the orientation's angles go round
// rather than stop, a camera's Zoom keeps to its own least). SetProperty keeps a layer's
// values in it; the Layer Properties dock clamps what is typed to it and says so.
#pragma once

#include <optional>

#include "Layer.h"

namespace qzview {

struct PropertyRange {
    std::optional<double> minimum;
    std::optional<double> maximum;

    /// `value` brought into the range.
    double Clamp(double value) const noexcept;
    bool Contains(double value) const noexcept { return Clamp(value) == value; }
};

PropertyRange RangeOf(Property property) noexcept;

} // namespace qzview
