// Point text with one fraction digit per component.
#include "InfoPal/readout/FormatPointText.h"

#include "InfoPal/readout/NumberTextCalls.h"
#include "host/U_TextConversion.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;

} // namespace

UTF16String FormatPointText(std::span<const float> components) {
    using kitcore::utility::ReplaceInString;
    if (components.size() == 2) {
        return ReplaceInString(U_AsciiToUTF16String("@0, @1"), OneDecimalText(components[0]),
                               OneDecimalText(components[1]));
    }
    if (components.size() == 3) {
        return ReplaceInString(U_AsciiToUTF16String("@0, @1, @2"), OneDecimalText(components[0]),
                               OneDecimalText(components[1]), OneDecimalText(components[2]));
    }
    return {};
}

} // namespace infopal
