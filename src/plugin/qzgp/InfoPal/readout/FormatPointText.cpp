// Point text with one fraction digit per component.
#include "InfoPal/readout/FormatPointText.h"

#include "host/U_TextConversion.h"
#include "kitcore/utility/NumberText.h"

namespace infopal {

namespace {

using kitcore::utility::Flags;
using kitcore::utility::NumberToString;
using kitcore::utility::UTF16String;

UTF16String OneDecimal(float value) {
    return NumberToString(value, 1, 1, Flags<unsigned short>(), 31);
}

} // namespace

UTF16String FormatPointText(std::span<const float> components) {
    using kitcore::utility::ReplaceInString;
    if (components.size() == 2) {
        return ReplaceInString(U_AsciiToUTF16String("@0, @1"), OneDecimal(components[0]),
                               OneDecimal(components[1]));
    }
    if (components.size() == 3) {
        return ReplaceInString(U_AsciiToUTF16String("@0, @1, @2"), OneDecimal(components[0]),
                               OneDecimal(components[1]), OneDecimal(components[2]));
    }
    return {};
}

} // namespace infopal
