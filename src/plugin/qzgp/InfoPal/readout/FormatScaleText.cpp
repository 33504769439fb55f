// Scale text in percent. The components are compared on 16-bit rounded values, so that
// 65636 and 100 count as equal: the comparison only decides between one and all numbers.
#include "InfoPal/readout/FormatScaleText.h"

#include <cstdint>

#include "InfoPal/readout/NumberTextCalls.h"
#include "InfoPal/readout/ReadoutNumbers.h"
#include "host/U_LocalizedStrings.h"

namespace infopal {

namespace {

using kitcore::utility::ReplaceInString;
using kitcore::utility::UTF16String;

constexpr const char* kScaleFormat1 = "$$$/QZ/Plugin/InfoPal/ScaleFormat1=@0%";
constexpr const char* kScaleFormat2 = "$$$/QZ/Plugin/InfoPal/ScaleFormat2=@0%, @1%";
constexpr const char* kScaleFormat3 = "$$$/QZ/Plugin/InfoPal/ScaleFormat3=@0%, @1%, @2%";

std::int16_t RoundedForComparison(float value) {
    return LowSigned16(TruncateToInt32(static_cast<double>(value) + 0.5));
}

UTF16String Percent(float value) {
    return AtMostOneDecimalText(value);
}

} // namespace

UTF16String FormatScaleText(float x, float y, float z) {
    const std::int16_t rounded_x = RoundedForComparison(x);
    if (rounded_x == RoundedForComparison(y) && rounded_x == RoundedForComparison(z)) {
        return ReplaceInString(U_ZStringToUTF16String(kScaleFormat1), Percent(x));
    }
    return ReplaceInString(U_ZStringToUTF16String(kScaleFormat3), Percent(x), Percent(y),
                           Percent(z));
}

UTF16String FormatScaleText(float x, float y) {
    if (RoundedForComparison(x) == RoundedForComparison(y)) {
        return ReplaceInString(U_ZStringToUTF16String(kScaleFormat1), Percent(x));
    }
    return ReplaceInString(U_ZStringToUTF16String(kScaleFormat2), Percent(x), Percent(y));
}

} // namespace infopal
