// Text patterns with the placeholders "@0" to "@9". The result's length is counted first,
// so that it is built in one allocation (none when it fits the string's own buffer), and
// the pattern's text between placeholders is copied a run at a time.
#include "kitcore/utility/NumberText.h"

namespace kitcore::utility {

namespace {

bool IsPlaceholder(const UTF16String& pattern, std::size_t i) {
    return pattern[i] == u'@' && i + 1 < pattern.size() && pattern[i + 1] >= u'0' &&
           pattern[i + 1] <= u'9';
}

} // namespace

UTF16String ReplaceInString(const UTF16String& pattern, const UTF16String& a0,
                            const UTF16String& a1, const UTF16String& a2, const UTF16String& a3,
                            const UTF16String& a4, const UTF16String& a5, const UTF16String& a6,
                            const UTF16String& a7, const UTF16String& a8, const UTF16String& a9) {
    const UTF16String* const args[10] = {&a0, &a1, &a2, &a3, &a4, &a5, &a6, &a7, &a8, &a9};
    const std::size_t size = pattern.size();
    std::size_t length = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (IsPlaceholder(pattern, i)) {
            length += args[pattern[i + 1] - u'0']->size();
            ++i;
        } else {
            ++length;
        }
    }
    UTF16String out;
    out.reserve(length);
    std::size_t run = 0; // where the literal text not yet copied starts
    for (std::size_t i = 0; i < size; ++i) {
        if (IsPlaceholder(pattern, i)) {
            out.append(pattern, run, i - run);
            out += *args[pattern[i + 1] - u'0'];
            ++i; // the digit is consumed; the inserted text is not looked at again
            run = i + 1;
        }
    }
    out.append(pattern, run, size - run);
    return out;
}

} // namespace kitcore::utility
