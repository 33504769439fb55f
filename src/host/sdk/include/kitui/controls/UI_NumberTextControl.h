// The base of controls that show a number as text: the value, its range and the number
// of fraction digits; the text follows the value.
#pragma once

#include "kitui/controls/UI_TextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_NumberTextControl : public UI_TextControl {
public:
    explicit UI_NumberTextControl(std::uint32_t creation_flags = 0);
    ~UI_NumberTextControl() override;

    /// Sets the value, clamped to the range, and writes it into the text.
    void SetNumber(double value);
    double GetNumber() const noexcept { return value_; }
    /// The range of the value; `minimum` above `maximum` is taken the other way round.
    void SetRange(double minimum, double maximum);
    double GetMinimum() const noexcept { return minimum_; }
    double GetMaximum() const noexcept { return maximum_; }
    /// Fraction digits of the text, 0 to 10.
    void SetDigits(int digits);
    int GetDigits() const noexcept { return digits_; }

private:
    void WriteText();
    double value_ = 0.0;
    double minimum_;
    double maximum_;
    int digits_ = 0;
};

} // namespace kitui::controls
