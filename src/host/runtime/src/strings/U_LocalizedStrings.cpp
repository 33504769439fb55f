// The text of localised keys, in UTF-16 and in the host's code page.
#include "host/U_LocalizedStrings.h"

#include "HostCodePage.h"
#include "LocalizedKey.h"
#include "ResolvedKeyCache.h"

kitcore::utility::UTF16String U_ZStringToUTF16String(const char* zstring) {
    if (zstring == nullptr) {
        return qzhost::strings::ExpandEscapes(qzhost::strings::ResolveKeyText(zstring));
    }
    return qzhost::strings::ResolvedKeyText(zstring);
}

std::string U_ZStringToMBString(const char* zstring) {
    return qzhost::strings::ToHostCodePage(U_ZStringToUTF16String(zstring));
}
