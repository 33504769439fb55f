#include "PropertyRange.h"

#include <algorithm>

namespace qzview {

double PropertyRange::Clamp(double value) const noexcept {
    if (minimum) {
        value = std::max(value, *minimum);
    }
    if (maximum) {
        value = std::min(value, *maximum);
    }
    return value;
}

PropertyRange RangeOf(Property property) noexcept {
    switch (property) {
    case Property::Opacity:
    case Property::MaskOpacity:
        return {0.0, 100.0};
    case Property::MaskFeather:
        return {0.0, std::nullopt};
    default:
        return {};
    }
}

} // namespace qzview
