// The preference functions of the host SDK, on the host's one text preference store.
#include "host/PREF_Preferences.h"

#include <cerrno>
#include <charconv>
#include <string>
#include <system_error>

#include "PreferenceStore.h"
#include "qzhost/HostControls.h"

namespace {

// The store behind a handle; null for a handle that is not the host's.
PREF_Store* StoreOf(PREF_Handle handle) {
    return handle == &PREF_Store::Get() ? handle : nullptr;
}

// A whole number in decimal, with an optional sign, nothing else.
bool ParseLong(const std::string& text, long& value) {
    const char* first = text.data();
    const char* last = text.data() + text.size();
    if (first != last && *first == '+') {
        ++first;
        if (first != last && *first == '-') {
            return false;
        }
    }
    if (first == last) {
        return false;
    }
    long parsed = 0;
    const auto [end, ec] = std::from_chars(first, last, parsed, 10);
    if (ec != std::errc() || end != last) {
        return false;
    }
    value = parsed;
    return true;
}

} // namespace

PREF_Handle PREF_GetPrefHandle(std::int32_t type) {
    qzhost::RequireUIThread("PREF_GetPrefHandle");
    return type == PREF_TYPE_TEXT ? &PREF_Store::Get() : nullptr;
}

QZ_Err PREF_DoesKeyExist(PREF_Handle handle, const char* section, const char* key, bool* exists) {
    qzhost::RequireUIThread("PREF_DoesKeyExist");
    if (QZ_Err err = qzhost::HostControls::Get().InjectedError(qzhost::op::kPrefExists)) {
        return err;
    }
    if (handle == nullptr || section == nullptr || key == nullptr || exists == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    PREF_Store* store = StoreOf(handle);
    if (store == nullptr) {
        return QZ_Err_UNKNOWN;
    }
    *exists = store->Find(section, key).has_value();
    return QZ_Err_NONE;
}

QZ_Err PREF_GetTextPrefLong(PREF_Handle handle, const char* section, const char* key,
                            long default_value, long* value) {
    qzhost::RequireUIThread("PREF_GetTextPrefLong");
    if (QZ_Err err = qzhost::HostControls::Get().InjectedError(qzhost::op::kPrefRead)) {
        return err;
    }
    if (handle == nullptr || section == nullptr || key == nullptr || value == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    PREF_Store* store = StoreOf(handle);
    if (store == nullptr) {
        return QZ_Err_UNKNOWN;
    }
    const std::optional<std::string> text = store->Find(section, key);
    if (!text) {
        *value = default_value;
        return QZ_Err_NONE;
    }
    long parsed = 0;
    if (!ParseLong(*text, parsed)) {
        return PREF_Err_BAD_VALUE;
    }
    *value = parsed;
    return QZ_Err_NONE;
}

QZ_Err PREF_SetTextPrefLong(PREF_Handle handle, const char* section, const char* key, long value) {
    qzhost::RequireUIThread("PREF_SetTextPrefLong");
    if (QZ_Err err = qzhost::HostControls::Get().InjectedError(qzhost::op::kPrefWrite)) {
        return err;
    }
    if (handle == nullptr || section == nullptr || key == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    PREF_Store* store = StoreOf(handle);
    if (store == nullptr) {
        return QZ_Err_UNKNOWN;
    }
    if (store->Set(section, key, std::to_string(value)) != 0) {
        return PREF_Err_WRITE_FAILED;
    }
    return QZ_Err_NONE;
}
