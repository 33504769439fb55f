// Toolkit errors raised with a localised message.
#include "kitcore/config/Error.h"

#include "LocalizedKey.h"
#include "qzhost/UnicodeText.h"

namespace kitcore::config {

Error::Error(int level, const std::string& message, std::int32_t major, std::int32_t minor)
    : std::runtime_error(message), level_(level), major_(major), minor_(minor) {}

Error::~Error() = default;

void ThrowError(int level, const char* key, std::int32_t major, std::int32_t minor, bool /*flag*/,
                const kitcore::utility::UTF16String& r0, const kitcore::utility::UTF16String& r1,
                const kitcore::utility::UTF16String& r2, const kitcore::utility::UTF16String& r3) {
    const kitcore::utility::UTF16String message =
        qzhost::strings::ExpandEscapes(qzhost::strings::ResolveKeyText(key), {&r0, &r1, &r2, &r3});
    throw Error(level, qzhost::strings::Utf16ToUtf8(message), major, minor);
}

} // namespace kitcore::config
