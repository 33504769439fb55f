// Labels are looked up by key on every pointer move; resolving one walks the locale's
// table and converts UTF-8 to UTF-16 each time. The texts are kept per thread (no lock),
// for one locale at a time: a locale change empties the memory.
#include "ResolvedKeyCache.h"

#include <cstring>
#include <functional>
#include <string>
#include <unordered_map>

#include "LocalizedKey.h"
#include "qzhost/HostControls.h"

namespace qzhost::strings {

namespace {

// Keys beyond this many are not expected from a plug-in; past it the memory starts over.
constexpr std::size_t kMaxRememberedKeys = 4096;

struct KeyHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const noexcept {
        return std::hash<std::string_view>{}(key);
    }
};

struct RememberedKeys {
    std::string locale;
    std::unordered_map<std::string, kitcore::utility::UTF16String, KeyHash, std::equal_to<>> texts;
};

} // namespace

const kitcore::utility::UTF16String& ResolvedKeyText(const char* key) {
    const HostControls& host = HostControls::Get();
    host.ThrowIfInjected(op::kStringLookup);
    thread_local RememberedKeys remembered;
    if (remembered.locale != host.Locale()) {
        remembered.texts.clear();
        remembered.locale = host.Locale();
    }
    const std::string_view whole(key, std::strlen(key));
    if (const auto it = remembered.texts.find(whole); it != remembered.texts.end()) {
        return it->second;
    }
    kitcore::utility::UTF16String text = ExpandEscapes(ResolveKeyText(key));
    if (remembered.texts.size() >= kMaxRememberedKeys) {
        remembered.texts.clear();
    }
    return remembered.texts.emplace(std::string(whole), std::move(text)).first->second;
}

} // namespace qzhost::strings
