// Labels are looked up by key on every pointer move; resolving one walks the locale's
// table and converts UTF-8 to UTF-16 each time. The texts are kept per thread (no lock),
// for one locale at a time: a locale change empties the memory.
//
// Keys mostly come from the same string literals again and again, so a small table by
// key address sits in front of the table by key contents. An address alone proves
// nothing (a buffer may hold another key by now): a hit still compares the contents.
#include "ResolvedKeyCache.h"

#include <array>
#include <cstdint>
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
// Slots of the table by key address (a power of two).
constexpr std::size_t kAddressSlots = 64;

struct KeyHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const noexcept {
        return std::hash<std::string_view>{}(key);
    }
};

using TextsByKey =
    std::unordered_map<std::string, kitcore::utility::UTF16String, KeyHash, std::equal_to<>>;

// A key address last seen with the entry of `texts` that holds its contents. Entries of
// an unordered_map keep their place until erased, which only Forget() does.
struct AddressSlot {
    const char* address = nullptr;
    const TextsByKey::value_type* entry = nullptr;
};

struct RememberedKeys {
    std::string locale;
    TextsByKey texts;
    std::array<AddressSlot, kAddressSlots> byAddress{};

    void Forget() {
        byAddress.fill(AddressSlot{});
        texts.clear();
    }
};

std::size_t SlotOf(const char* key) noexcept {
    const auto bits = reinterpret_cast<std::uintptr_t>(key);
    return static_cast<std::size_t>((bits >> 3) ^ (bits >> 9)) & (kAddressSlots - 1);
}

// Whether the NUL-terminated `key` reads exactly `contents`.
bool Reads(const char* key, const std::string& contents) noexcept {
    return std::strncmp(key, contents.c_str(), contents.size() + 1) == 0;
}

} // namespace

const kitcore::utility::UTF16String& ResolvedKeyText(const char* key) {
    const HostControls& host = HostControls::Get();
    host.ThrowIfInjected(op::kStringLookup);
    thread_local RememberedKeys remembered;
    if (remembered.locale != host.Locale()) {
        remembered.Forget();
        remembered.locale = host.Locale();
    }
    AddressSlot& slot = remembered.byAddress[SlotOf(key)];
    if (slot.address == key && Reads(key, slot.entry->first)) {
        return slot.entry->second;
    }
    const std::string_view whole(key, std::strlen(key));
    auto it = remembered.texts.find(whole);
    if (it == remembered.texts.end()) {
        kitcore::utility::UTF16String text = ExpandEscapes(ResolveKeyText(key));
        if (remembered.texts.size() >= kMaxRememberedKeys) {
            remembered.Forget();
        }
        it = remembered.texts.emplace(std::string(whole), std::move(text)).first;
    }
    slot = AddressSlot{key, &*it};
    return it->second;
}

} // namespace qzhost::strings
