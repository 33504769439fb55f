// The host's preference store: named sections of keys in the host's text preference
// file. Every operation returns 0 on success or a host error code.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

/// An open preference store; the host owns it.
struct PREF_Store;
using PREF_Handle = PREF_Store*;

/// The preference type of the host's text preference file.
inline constexpr std::int32_t PREF_TYPE_TEXT = 0;

/// The key is present but its text is not a whole number in the range of a long.
inline constexpr QZ_Err PREF_Err_BAD_VALUE = 30;
/// The preference file could not be written.
inline constexpr QZ_Err PREF_Err_WRITE_FAILED = 31;

/// [ui-thread] The store of preference type `type`, or null for a type the host does not
/// have.
QZ_HOST_API PREF_Handle PREF_GetPrefHandle(std::int32_t type);

/// [ui-thread] Whether `key` exists in `section`; writes the answer into `*exists`.
/// QZ_Err_NULL_ARGUMENT for a null handle, section, key or answer.
QZ_HOST_API QZ_Err PREF_DoesKeyExist(PREF_Handle handle, const char* section, const char* key,
                                     bool* exists);

/// [ui-thread] The whole number stored under `key` of `section`, or `default_value` when
/// the key is absent. A value that is not a whole number gives PREF_Err_BAD_VALUE and
/// leaves `*value` unchanged.
QZ_HOST_API QZ_Err PREF_GetTextPrefLong(PREF_Handle handle, const char* section, const char* key,
                                        long default_value, long* value);

/// [ui-thread] Stores `value` under `key` of `section` and writes the preference file at
/// once. A file that cannot be written gives PREF_Err_WRITE_FAILED; the file on disk then
/// keeps its previous content.
QZ_HOST_API QZ_Err PREF_SetTextPrefLong(PREF_Handle handle, const char* section, const char* key,
                                        long value);
