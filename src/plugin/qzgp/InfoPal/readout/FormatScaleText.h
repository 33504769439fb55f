// Scale text: percentages, collapsed to one when the components agree once rounded.
#pragma once

#include "kitcore/utility/UTF16String.h"

namespace infopal {

/// [ui-thread] The text of a three-component scale. Each component is rounded for the
/// comparison only: 0.5 added in double precision, truncated toward zero to 32 bits (NaN,
/// infinities and values beyond the 32-bit range giving -2147483648) and cut to its low 16
/// bits as a signed number. When x agrees with y and with z so rounded, the text is x alone
/// ("100.2%"); otherwise all three ("100%, 100%, 101%"). The numbers show at most one
/// fraction digit.
kitcore::utility::UTF16String FormatScaleText(float x, float y, float z);

/// [ui-thread] The same for two components: x alone when x and y agree, else both.
kitcore::utility::UTF16String FormatScaleText(float x, float y);

} // namespace infopal
