// Text patterns with the placeholders "@0" to "@9".
#include "kitcore/utility/NumberText.h"

namespace kitcore::utility {

UTF16String ReplaceInString(const UTF16String& pattern, const UTF16String& a0,
                            const UTF16String& a1, const UTF16String& a2, const UTF16String& a3,
                            const UTF16String& a4, const UTF16String& a5, const UTF16String& a6,
                            const UTF16String& a7, const UTF16String& a8, const UTF16String& a9) {
    const UTF16String* const args[10] = {&a0, &a1, &a2, &a3, &a4, &a5, &a6, &a7, &a8, &a9};
    UTF16String out;
    out.reserve(pattern.size());
    const std::size_t size = pattern.size();
    for (std::size_t i = 0; i < size; ++i) {
        const UTF16Char unit = pattern[i];
        if (unit == u'@' && i + 1 < size && pattern[i + 1] >= u'0' && pattern[i + 1] <= u'9') {
            out += *args[pattern[i + 1] - u'0'];
            ++i; // the digit is consumed; the inserted text is not looked at again
        } else {
            out += unit;
        }
    }
    return out;
}

} // namespace kitcore::utility
