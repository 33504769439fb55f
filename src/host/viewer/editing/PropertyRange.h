// The range of values that a property takes, as the layer model keeps it (SetProperty
// clamps to it): the opacities from 0 to 100, the mask's feather from 0; the other
// properties take any value (the orientation's angles go round rather than stop). The
// Layer Properties dock clamps what is typed to it and says so.
#pragma once

#include <optional>

#include "composition/Layer.h"

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
