#include "InfoPal/readout/ChannelValueText.h"

#include <cstdio>
#include <cstring>

#include "InfoPal/frame/HostCallGuard.h"
#include "InfoPal/readout/NumberTextCalls.h"
#include "InfoPal/readout/ReadoutNumbers.h"
#include "host/M_Math.h"
#include "host/PXM_Project.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;

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
    ThrowIfError(PXM_QueryProject(&project));
    return project != nullptr ? project->GetBitDepth() : kDepth8;
}

// `value` times `scale` in single precision, widened and rounded by the host.
std::int32_t Scaled(float value, float scale) {
    const float product = value * scale;
    return M_RoundDouble(static_cast<double>(product));
}

void WholeNumber(float value, float scale, UTF16String& out) {
    out = NumberText(Scaled(value, scale), 1, 0);
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
    out = kitcore::utility::ReplaceInString(PercentPattern(),
                                            NumberText(percent, 1, 1, kNumberTextFractional));
}

void Decimal(float value, UTF16String& out) {
    out = NumberText(value, 1, 4, kNumberTextFractional);
}

void WholePercent(double value, UTF16String& out) {
    out = kitcore::utility::ReplaceInString(PercentPattern(), NumberText(value * 100.0, 1, 0));
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

HueSaturationBrightness ToHueSaturationBrightness(const PF_PixelFloat& pixel) {
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
    // Grey and black have no hue: they show 0. Brightness is the largest channel as it
    // is: over-range shows above 100%.
    return {hue > 0.0 ? hue : 0.0, saturation, max};
}

void FormatHue(double hue, UTF16String& out) {
    out = NumberText(hue, 1, 0);
}

void FormatWholePercent(double value, UTF16String& out) {
    WholePercent(value, out);
}

} // namespace infopal
