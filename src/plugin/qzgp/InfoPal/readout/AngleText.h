// Angle text: degrees with one decimal within a turn, whole revolutions and the remaining
// degrees from a full turn on ("2x + 5.0"), the localised degree sign after either.
#pragma once

#include "kitcore/utility/UTF16String.h"

namespace infopal {

/// [ui-thread] Replaces `out` with the text of the angle `degrees`.
///
/// Above -360 and below 360 the text is the number with one fraction digit ("-90.0").
/// From 360 or -360 on it is "@0@1x @2 @3": the sign ("-" for negative angles, else
/// empty), the whole turns, the remainder's sign ("-" or "+") and the remaining degrees
/// with one fraction digit ("-1x - 40.0" for -400). The turns are the magnitude divided by
/// 360 in single precision, truncated toward zero to 32 bits (NaN, infinities and values
/// beyond the 32-bit range giving -2147483648) and kept as a signed 16-bit count: its low
/// 16 bits, so that 32768 turns read as -32768 and NaN or infinite angles as 0 turns.
void FormatAngleText(float degrees, kitcore::utility::UTF16String& out);

} // namespace infopal
