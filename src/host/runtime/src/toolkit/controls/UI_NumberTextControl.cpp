#include "kitui/controls/UI_NumberTextControl.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace kitui::controls {

UI_NumberTextControl::UI_NumberTextControl(std::uint32_t creation_flags)
    : UI_TextControl(creation_flags), minimum_(-std::numeric_limits<double>::max()),
      maximum_(std::numeric_limits<double>::max()) {
    WriteText();
}

UI_NumberTextControl::~UI_NumberTextControl() = default;

void UI_NumberTextControl::SetNumber(double value) {
    if (std::isnan(value)) {
        value = minimum_ > 0.0 ? minimum_ : std::min(0.0, maximum_);
    }
    value_ = std::clamp(value, minimum_, maximum_);
    WriteText();
}

void UI_NumberTextControl::SetRange(double minimum, double maximum) {
    if (minimum > maximum) {
        std::swap(minimum, maximum);
    }
    minimum_ = minimum;
    maximum_ = maximum;
    SetNumber(value_);
}

void UI_NumberTextControl::SetDigits(int digits) {
    digits_ = std::clamp(digits, 0, 10);
    WriteText();
}

void UI_NumberTextControl::WriteText() {
    char buffer[64];
    const int n = std::snprintf(buffer, sizeof buffer, "%.*f", digits_, value_);
    kitcore::utility::UTF16String text;
    for (int i = 0; i < n && i < static_cast<int>(sizeof buffer) - 1; ++i) {
        text.push_back(static_cast<char16_t>(static_cast<unsigned char>(buffer[i])));
    }
    SetValue(text);
}

} // namespace kitui::controls
