// The colour value column of the pixel readout: one channel as text in the current
// notation, and the four value fields filled from the stored pixel.
#pragma once

#include "InfoPal/readout/PixelDisplayMode.h"
#include "host/PF_Pixel.h"
#include "kitcore/utility/UTF16String.h"

namespace infopal {

class InfoPal_UI;

/// [ui-thread] Writes the text of the channel value `value` in `mode` into `out`. The open
/// project is queried on every call (a host error code is thrown as an integer); Auto
/// follows its depth, or the 8-bit scale without a project. For HSB, for a mode above 7
/// and for Auto with a depth it does not know, `out` is left as it is.
void FormatChannelValue(PixelDisplayMode mode, float value, kitcore::utility::UTF16String& out);

/// [ui-thread] Fills the value fields 7 to 10 of `panel` from its stored pixel in its
/// current mode, invalidating each field it sets. `text` is the one buffer that the four
/// channels are formatted into: emptied first, then reused without being cleared, so a
/// mode without a rule leaves every field empty. A fully transparent pixel shows only its
/// alpha.
void UpdateColorValues(InfoPal_UI& panel, kitcore::utility::UTF16String& text);

} // namespace infopal
