// A slider: a track along the control's long side and a thumb at the value's place.
#pragma once

#include "kitui/controls/UI_ControlView.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_Slider : public UI_ControlView {
public:
    explicit UI_Slider(std::uint32_t creation_flags = 0);
    ~UI_Slider() override;

    /// Sets the value, clamped to the range.
    void SetValue(double value);
    double GetValue() const noexcept { return value_; }
    /// The range of the value (0 to 1 at creation); `minimum` above `maximum` is taken the
    /// other way round. The value is clamped to the new range.
    void SetRange(double minimum, double maximum);
    double GetMinimum() const noexcept { return minimum_; }
    double GetMaximum() const noexcept { return maximum_; }
    /// Where the value lies in the range, 0 at the minimum, 1 at the maximum.
    double GetFraction() const;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;

private:
    double value_ = 0.0;
    double minimum_ = 0.0;
    double maximum_ = 1.0;
};

} // namespace kitui::controls
