// Angle text with one decimal and whole revolutions from a full turn on.
#include "InfoPal/readout/AngleText.h"

#include <cstdint>
#include <utility>

#include "InfoPal/readout/NumberTextCalls.h"
#include "InfoPal/readout/ReadoutNumbers.h"
#include "host/U_LocalizedStrings.h"
#include "host/U_TextConversion.h"

namespace infopal {

namespace {

using kitcore::utility::ReplaceInString;
using kitcore::utility::UTF16String;

constexpr const char* kDegreeKey = "$$$/QZ/Plugin/InfoPal/Degree=^D";
constexpr float kDegreesPerTurn = 360.0F;

UTF16String TurnsText(float degrees) {
    const bool negative = degrees < 0.0F;
    const float magnitude = negative ? -degrees : degrees;
    const std::int16_t turns = LowSigned16(TruncateToInt32(magnitude / kDegreesPerTurn));
    // The whole turns in degrees, formed as an integer (at most 32768 * 360 in magnitude)
    // and subtracted as a float.
    const std::int32_t turn_degrees = static_cast<std::int32_t>(turns) * 360;
    const float remainder = magnitude - static_cast<float>(turn_degrees);
    return ReplaceInString(U_AsciiToUTF16String("@0@1x @2 @3"),
                           U_AsciiToUTF16String(negative ? "-" : ""), AtMostOneDecimalText(turns),
                           U_AsciiToUTF16String(negative ? "-" : "+"), OneDecimalText(remainder));
}

} // namespace

void FormatAngleText(float degrees, UTF16String& out) {
    // NaN fails both limits and takes the revolution form.
    const bool within_turn = degrees > -kDegreesPerTurn && degrees < kDegreesPerTurn;
    UTF16String text = within_turn
                           ? ReplaceInString(U_AsciiToUTF16String("@0"), OneDecimalText(degrees))
                           : TurnsText(degrees);
    text += U_ZStringToUTF16String(kDegreeKey);
    out = std::move(text);
}

} // namespace infopal
