#include "LocalizedKey.h"

#include <cstring>

#include "StringTables.h"
#include "qzhost/HostControls.h"
#include "qzhost/UnicodeText.h"

namespace qzhost::strings {

std::string_view ResolveKeyText(const char* key) {
    const HostControls& host = HostControls::Get();
    host.ThrowIfInjected(op::kStringLookup);
    if (key == nullptr) {
        return {};
    }
    const std::string_view whole(key, std::strlen(key));
    const std::size_t equals = whole.find('=');
    const std::string_view path = whole.substr(0, equals);
    if (const auto text = TableText(host.Locale(), path)) {
        return *text;
    }
    return equals == std::string_view::npos ? std::string_view() : whole.substr(equals + 1);
}

kitcore::utility::UTF16String ExpandEscapes(std::string_view text, const EscapeValues& values) {
    const kitcore::utility::UTF16String wide = Utf8ToUtf16(text);
    if (wide.find(u'^') == kitcore::utility::UTF16String::npos) {
        return wide;
    }
    kitcore::utility::UTF16String out;
    out.reserve(wide.size());
    const std::size_t size = wide.size();
    for (std::size_t i = 0; i < size; ++i) {
        const char16_t unit = wide[i];
        if (unit != u'^' || i + 1 == size) {
            out += unit;
            continue;
        }
        const char16_t next = wide[i + 1];
        if (next == u'I') {
            out += u'\u0394';
        } else if (next == u'D') {
            out += u'\u00B0';
        } else if (next == u'^') {
            out += u'^';
        } else if (next >= u'0' && next <= u'3' && values[next - u'0'] != nullptr) {
            out += *values[next - u'0'];
        } else {
            out += unit; // not an escape: the caret stays, the next unit is read normally
            continue;
        }
        ++i;
    }
    return out;
}

} // namespace qzhost::strings
