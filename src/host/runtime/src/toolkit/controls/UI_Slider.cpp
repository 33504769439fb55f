#include "kitui/controls/UI_Slider.h"

#include <algorithm>
#include <cmath>

#include "ControlPainting.h"
#include "kitui/inkwell/Drawing.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

namespace {
/// The thumb: its length along the track and its breadth across it.
constexpr float kThumbLength = 6.0f;
constexpr float kThumbBreadth = 12.0f;
} // namespace

UI_Slider::UI_Slider(std::uint32_t creation_flags) : UI_ControlView(creation_flags) {}

UI_Slider::~UI_Slider() = default;

void UI_Slider::SetValue(double value) {
    const double clamped = std::isnan(value) ? minimum_ : std::clamp(value, minimum_, maximum_);
    if (clamped != value_) {
        value_ = clamped;
        UI_Refresh();
    }
}

void UI_Slider::SetRange(double minimum, double maximum) {
    if (minimum > maximum) {
        std::swap(minimum, maximum);
    }
    minimum_ = minimum;
    maximum_ = maximum;
    value_ = std::clamp(value_, minimum_, maximum_);
    UI_Refresh();
}

double UI_Slider::GetFraction() const {
    return maximum_ > minimum_ ? (value_ - minimum_) / (maximum_ - minimum_) : 0.0;
}

void UI_Slider::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    if (ink != nullptr) {
        const bool horizontal = local.width >= local.height;
        const float length = horizontal ? local.width : local.height;
        const float across = horizontal ? local.height : local.width;
        const float travel = std::max(0.0f, length - kThumbLength);
        const float at = static_cast<float>(GetFraction()) * travel;
        const float breadth = std::min(kThumbBreadth, across);
        const float trackAt = std::floor(across / 2.0f) - 1.0f;
        const float thumbAt = std::floor((across - breadth) / 2.0f);
        const kitui::ui::RectT<float> track =
            horizontal ? kitui::ui::RectT<float>{0.0f, trackAt, length, 2.0f}
                       : kitui::ui::RectT<float>{trackAt, 0.0f, 2.0f, length};
        // The thumb travels from the minimum at the left (or the bottom) to the maximum.
        const kitui::ui::RectT<float> thumb =
            horizontal ? kitui::ui::RectT<float>{at, thumbAt, kThumbLength, breadth}
                       : kitui::ui::RectT<float>{thumbAt, travel - at, breadth, kThumbLength};
        kitui::inkwell::FillRect(*ink, track,
                                 kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
        qzhost::controls::PaintBox(ink, thumb,
                                   kitui::ui::GetColor(kitui::ui::color_id::kControlMark),
                                   kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
    }
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
