// The pixel readout: a delivery of the pixel under the pointer, its position and the
// origin, and the refresh of the pixel block from them (channel labels, swatch, values,
// X/Y and X'/Y').
#include "InfoPal/panel/InfoPal_UI.h"

#include <charconv>
#include <cmath>

#include <boost/bind/bind.hpp>

#include "InfoPal/controls/UI_SwatchRect.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/readout/ChannelValueText.h"
#include "InfoPal/readout/ReadoutNumbers.h"
#include "host/MonitorTransform.h"
#include "host/U_Threads.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;
using kitui::controls::UI_StaticText;

float SwatchChannel(float value) {
    if (!(value > 0.0f)) {
        return 0.0f;
    }
    return value < 1.0f ? value : 1.0f;
}

// "Not the same" for the change tests of the refresh: NaN is never the same.
bool Differs(const PF_PixelFloat& a, const PF_PixelFloat& b) {
    return a.alpha != b.alpha || a.red != b.red || a.green != b.green || a.blue != b.blue;
}
bool Differs(const M_Vector2T<double>& a, const M_Vector2T<double>& b) {
    return a.x != b.x || a.y != b.y;
}

} // namespace

void InfoPal_UI::UpdatePixelInfo(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                                 const M_Vector2T<double>* origin) {
    const PixelDelivery delivery = PixelDelivery::Copy(pixel, position, origin);
    if (!U_IsOnUIThread()) {
        // Only values travel: the caller's records and this panel may be gone by the time
        // the main thread runs the call, which then finds out whether the panel is still
        // the registered one.
        PostPixelDelivery(serial_, delivery);
        return;
    }
    UpdatePixelInfo(delivery);
}

void InfoPal_UI::UpdatePixelInfo(const PixelDelivery& delivery) {
    if (!InfoPal::PanelIsShown()) {
        // Only the latest delivery waits for the panel to be shown again.
        pendingPixel_ = boost::bind(&InfoPal_UI::ApplyPixelDelivery, this, delivery);
        return;
    }
    ApplyPixelDelivery(delivery);
}

void InfoPal_UI::ApplyPixelDelivery(const PixelDelivery& delivery) {
    if (delivery.hasPosition) {
        position_ = delivery.position;
    }
    origin_ = delivery.hasOrigin ? delivery.origin : M_Vector2T<double>{0, 0};
    if (delivery.hasPixel) {
        pixel_ = delivery.pixel;
    }
    displayState_ = DisplayState::PixelReadout;
    RefreshPixelReadout();
}

void InfoPal_UI::RefreshPixelReadout() {
    for (std::size_t number = control::kChannelLabel1; number < control::kChannelLabel1 + 4;
         ++number) {
        auto& label = TextControl(number);
        label.SetValue(ControlLabelText(number, UTF16String()));
        label.UI_Invalidate();
    }
    UpdateSwatch();
    // Host contract: required, though nothing here uses it.
    if (mode_ != previousMode_ || Differs(pixel_, previousPixel_)) {
        previousMode_ = mode_;
    }
    UpdateColorValues();
    previousPixel_ = pixel_;
    UpdatePositionValues();
    UpdateOriginValues();
    previousPosition_ = position_;
    previousOrigin_ = origin_;
}

void InfoPal_UI::SetValueField(std::size_t number, const UTF16String& text) {
    auto& field = TextControl(number);
    field.SetValue(text);
    field.UI_Invalidate();
}

void InfoPal_UI::UpdateColorValues() {
    // One buffer for the four channels: emptied first, then reused without being cleared,
    // so a notation without a rule leaves every field empty.
    UTF16String& text = channelText_;
    text.clear();
    const std::size_t first = control::kChannelValue1;
    if (pixel_.alpha == 0.0f) {
        // A fully transparent pixel shows only its alpha.
        static const UTF16String empty;
        for (std::size_t number = first; number < first + 3; ++number) {
            SetValueField(number, empty);
        }
    }
    if (mode_ == pixel_mode::kHSB) {
        if (pixel_.alpha != 0.0f) {
            const HueSaturationBrightness hsb = ToHueSaturationBrightness(pixel_);
            FormatHue(hsb.hue, text);
            SetValueField(first, text);
            FormatWholePercent(hsb.saturation, text);
            SetValueField(first + 1, text);
            FormatWholePercent(hsb.brightness, text);
            SetValueField(first + 2, text);
        }
        FormatWholePercent(pixel_.alpha, text);
        SetValueField(first + 3, text);
        return;
    }
    if (pixel_.alpha != 0.0f) {
        FormatChannelValue(mode_, pixel_.red, text);
        SetValueField(first, text);
        FormatChannelValue(mode_, pixel_.green, text);
        SetValueField(first + 1, text);
        FormatChannelValue(mode_, pixel_.blue, text);
        SetValueField(first + 2, text);
    }
    FormatChannelValue(mode_, pixel_.alpha, text);
    SetValueField(first + 3, text);
}

void InfoPal_UI::UpdateSwatch() {
    auto& swatch = *Controls().swatch;
    const kitui::ui::PointT<int> corner = swatch.UI_LocalToGlobal(kitui::ui::PointT<int>{0, 0});
    PF_PixelFloat shown = pixel_;
    TransformPixelAtScreenLocation(pixel_, corner.x, corner.y, &shown);
    // The swatch is opaque whatever the pixel's alpha, and shows the nearest colour that
    // it can for over-range and negative channels.
    swatch.color = kitui::inkwell::ColorRGBA{SwatchChannel(shown.red), SwatchChannel(shown.green),
                                             SwatchChannel(shown.blue), 1.0f};
    swatch.UI_Invalidate();
}

kitui::controls::UI_StaticText& InfoPal_UI::SetNumberField(std::size_t number, std::int32_t value) {
    // The decimal text of a 32-bit integer, as "%d" writes it.
    char digits[16];
    char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    numberText_.assign(static_cast<char*>(digits), end);
    auto& field = TextControl(number);
    field.SetValue(numberText_);
    field.UI_Invalidate();
    return field;
}

void InfoPal_UI::UpdatePositionValues() {
    SetNumberField(control::kXValue, TruncateToInt32(std::floor(position_.x)));
    SetNumberField(control::kYValue, TruncateToInt32(std::floor(position_.y)));
}

void InfoPal_UI::UpdateOriginValues() {
    const bool changed = Differs(origin_, previousOrigin_);
    if (changed) {
        for (std::size_t number : {control::kXPrimeValue, control::kYPrimeValue}) {
            auto& field = TextControl(number);
            field.SetValue(UTF16String());
            field.UI_Show(false);
            field.UI_Invalidate();
        }
    }
    const bool no_origin = origin_.x == 0.0 && origin_.y == 0.0;
    if (no_origin) {
        if (changed) {
            for (std::size_t number : {control::kXPrimeLabel, control::kYPrimeLabel}) {
                auto& label = TextControl(number);
                label.UI_Show(false);
                label.UI_Invalidate();
            }
        }
        return;
    }
    for (std::size_t number : {control::kXPrimeLabel, control::kYPrimeLabel}) {
        auto& label = TextControl(number);
        label.UI_Show(true);
        label.UI_Invalidate();
    }
    // The floor of the difference, not the difference of the floors.
    // The field found for its text is the one shown: one lookup each.
    SetNumberField(control::kXPrimeValue, TruncateToInt32(std::floor(position_.x - origin_.x)))
        .UI_Show(true);
    SetNumberField(control::kYPrimeValue, TruncateToInt32(std::floor(position_.y - origin_.y)))
        .UI_Show(true);
}

} // namespace infopal
