// The text of the colour value column of the pixel readout: one channel in the current
// notation, and the hue, saturation and brightness of the HSB notation.
#pragma once

#include "InfoPal/readout/PixelDisplayMode.h"
#include "host/PF_Pixel.h"
#include "kitcore/utility/UTF16String.h"

namespace infopal {

/// [ui-thread] Writes the text of the channel value `value` in `mode` into `out`. The open
/// project is queried on every call (a host error code is thrown as an integer); Auto
/// follows its depth, or the 8-bit scale without a project. For HSB, for a mode above 7
/// and for Auto with a depth it does not know, `out` is left as it is.
void FormatChannelValue(PixelDisplayMode mode, float value, kitcore::utility::UTF16String& out);

/// A colour as hue (degrees, 0 for grey and black), saturation and brightness (0 to 1,
/// brightness above 1 for over-range colours).
struct HueSaturationBrightness {
    double hue;
    double saturation;
    double brightness;
};
/// [any-thread] The hue, saturation and brightness of the pixel's red, green and blue.
HueSaturationBrightness ToHueSaturationBrightness(const PF_PixelFloat& pixel);
/// [ui-thread] The hue as a whole number of degrees.
void FormatHue(double hue, kitcore::utility::UTF16String& out);
/// [ui-thread] `value` (1 is 100%) as a whole percentage with the percent sign.
void FormatWholePercent(double value, kitcore::utility::UTF16String& out);

} // namespace infopal
