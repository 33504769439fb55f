// Localised key lookup of the host's utility services.
#include "HostCodePage.h"
#include "LocalizedKey.h"
#include "host/U_Utility.h"

kitcore::utility::UTF16String U_ZStringToUTF16String(const char* zstring) {
    return qzhost::strings::ExpandEscapes(qzhost::strings::ResolveKeyText(zstring));
}

std::string U_ZStringToMBString(const char* zstring) {
    return qzhost::strings::ToHostCodePage(U_ZStringToUTF16String(zstring));
}
