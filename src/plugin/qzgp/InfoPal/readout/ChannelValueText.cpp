#include "InfoPal/readout/ChannelValueText.h"

#include <cstdio>
#include <cstring>

#include "InfoPal/panel/InfoPal_UI.h"
#include "InfoPal/readout/ReadoutNumbers.h"
#include "host/M_Math.h"
#include "host/PXM_Project.h"
#include "kitcore/utility/NumberText.h"
#include "kitui/controls/UI_StaticText.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;
using kitui::controls::UI_StaticText;
using NumberFlags = kitcore::utility::Flags<unsigned short>;

// The last argument of the number text: fractional and whole-number notations.
constexpr int kFractionalNumber = 8;
constexpr int kWholeNumber = 31;

// Project depths that the Auto notation follows.
constexpr int kDepth8 = 0;
constexpr int kDepth16 = 1;
constexpr int kDepthFloat = 2;

const UTF16String& PercentPattern() {
    static const UTF16String pattern(u"@0%");
    return pattern;
}

// The open project's depth; 0 (8 bits) when no project is open.
int ProjectDepth() {
    PXM_Project* project = nullptr;
    const QZ_Err err = PXM_QueryProject(&project);
    if (err != QZ_Err_NONE) {
        throw err;
    }
    return project != nullptr ? project->GetBitDepth() : kDepth8;
}

// `value` times `scale` in single precision, widened and rounded by the host.
std::int32_t Scaled(float value, float scale) {
    const float product = value * scale;
    return M_RoundDouble(static_cast<double>(product));
}

void WholeNumber(float value, float scale, UTF16String& out) {
    out = kitcore::utility::NumberToString(Scaled(value, scale), 1, 0, NumberFlags(), kWholeNumber);
}

void Hexadecimal(float value, UTF16String& out) {
    char digits[17] = {};
    const auto bits = static_cast<std::uint32_t>(Scaled(value, 255.0f));
    std::snprintf(digits, sizeof digits, "%X", static_cast<unsigned int>(bits));
    out = kitcore::utility::AsciiToUTF16(digits, std::strlen(digits));
}

void Percent(float value, UTF16String& out) {
    // The product is narrowed to a float before it is formatted: the float rounding is
    // part of the text (0.123456 gives 12.3).
    const float percent = NarrowToFloat(static_cast<double>(value) * 100.0);
    out = kitcore::utility::ReplaceInString(
        PercentPattern(),
        kitcore::utility::NumberToString(percent, 1, 1, NumberFlags(), kFractionalNumber));
}

void Decimal(float value, UTF16String& out) {
    out = kitcore::utility::NumberToString(value, 1, 4, NumberFlags(), kFractionalNumber);
}

void WholePercent(double value, UTF16String& out) {
    out = kitcore::utility::ReplaceInString(
        PercentPattern(),
        kitcore::utility::NumberToString(value * 100.0, 1, 0, NumberFlags(), kWholeNumber));
}

void SetField(InfoPal_UI& panel, std::size_t number, const UTF16String& text) {
    auto& field = panel.GetControl<UI_StaticText>(number);
    field.SetValue(text);
    field.UI_Invalidate();
}

void ClearColorFields(InfoPal_UI& panel) {
    static const UTF16String empty;
    for (std::size_t number = control::kChannelValue1; number < control::kChannelValue1 + 3;
         ++number) {
        SetField(panel, number, empty);
    }
}

void UpdateHSBValues(InfoPal_UI& panel, const PF_PixelFloat& pixel, UTF16String& text) {
    const double r = pixel.red;
    const double g = pixel.green;
    const double b = pixel.blue;
    // On a tie the later operand is taken; the value is the same.
    double max = r > g ? r : g;
    max = max > b ? max : b;
    double min = r < g ? r : g;
    min = min < b ? min : b;

    double saturation = 0.0;
    double hue = -1.0;
    if (max != 0.0) {
        const double d = max - min;
        saturation = d / max;
        if (saturation != 0.0) {
            double h = 0.0;
            if (r == max) {
                h = (g - b) / d;
            } else if (g == max) {
                h = (b - r) / d + 2.0;
            } else {
                h = (r - g) / d + 4.0;
            }
            hue = h * 60.0;
            if (hue < 0.0) {
                hue += 360.0;
            }
        }
    }
    // Grey and black have no hue: they show 0.
    const double shown_hue = hue > 0.0 ? hue : 0.0;

    if (pixel.alpha != 0.0f) {
        text = kitcore::utility::NumberToString(shown_hue, 1, 0, NumberFlags(), kWholeNumber);
        SetField(panel, control::kChannelValue1, text);
        WholePercent(saturation, text);
        SetField(panel, control::kChannelValue1 + 1, text);
        // Brightness is the largest channel as it is: over-range shows above 100%.
        WholePercent(max, text);
        SetField(panel, control::kChannelValue1 + 2, text);
    }
    WholePercent(pixel.alpha, text);
    SetField(panel, control::kChannelValue1 + 3, text);
}

} // namespace

void FormatChannelValue(PixelDisplayMode mode, float value, UTF16String& out) {
    const int depth = ProjectDepth();
    switch (mode) {
    case pixel_mode::kPercent:
        Percent(value, out);
        break;
    case pixel_mode::kWeb:
        Hexadecimal(value, out);
        break;
    case pixel_mode::kBpc8:
        WholeNumber(value, 255.0f, out);
        break;
    case pixel_mode::kBpc10:
        WholeNumber(value, 1023.0f, out);
        break;
    case pixel_mode::kBpc16:
        // The 16-bit scale tops out at 32768.
        WholeNumber(value, 32768.0f, out);
        break;
    case pixel_mode::kDecimal:
        Decimal(value, out);
        break;
    case pixel_mode::kAuto:
        if (depth == kDepth8) {
            WholeNumber(value, 255.0f, out);
        } else if (depth == kDepth16) {
            WholeNumber(value, 32768.0f, out);
        } else if (depth == kDepthFloat) {
            Decimal(value, out);
        }
        break;
    default:
        break; // HSB and unknown modes have no per-channel rule
    }
}

void UpdateColorValues(InfoPal_UI& panel, UTF16String& text) {
    text.clear();
    const PF_PixelFloat pixel = panel.GetPixel();
    const PixelDisplayMode mode = panel.GetPixelDisplayMode();
    if (pixel.alpha == 0.0f) {
        ClearColorFields(panel);
    }
    if (mode == pixel_mode::kHSB) {
        UpdateHSBValues(panel, pixel, text);
        return;
    }
    if (pixel.alpha != 0.0f) {
        FormatChannelValue(mode, pixel.red, text);
        SetField(panel, control::kChannelValue1, text);
        FormatChannelValue(mode, pixel.green, text);
        SetField(panel, control::kChannelValue1 + 1, text);
        FormatChannelValue(mode, pixel.blue, text);
        SetField(panel, control::kChannelValue1 + 2, text);
    }
    FormatChannelValue(mode, pixel.alpha, text);
    SetField(panel, control::kChannelValue1 + 3, text);
}

} // namespace infopal
