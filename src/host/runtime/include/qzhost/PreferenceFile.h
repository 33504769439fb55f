// Which file the host's text preference store (PREF_GetPrefHandle(0)) reads and writes,
// and reading a preference back from that file. The file's format is described in the
// runtime's preference text reader (one "[section]" line per section, "key = value"
// lines below it).
//
// By default the store uses a new, empty file private to the process, in a folder of its
// own under the temporary folder; the file is made on first need and removed when the
// host is reset or the process ends.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// Makes `path` the preference file and reads it. A missing file is created, with its
/// folder. A file that cannot be parsed is renamed to "<file>.corrupt" (or
/// "<file>.corrupt.N"), the store starts empty and a host warning says so
/// (HostControls::Warnings). The temporary files of the file (".<name>.tmp-" and six
/// letters or digits, in its folder) that writers killed mid-write left behind are
/// removed; a writer still at work in another process keeps its own. Throws
/// std::runtime_error when the file can neither be read nor created; the store then keeps
/// its previous file.
QZ_HOST_API void SetPreferenceFile(const std::filesystem::path& path);

/// Back to a new, empty preference file private to this process.
QZ_HOST_API void UsePrivatePreferenceFile();

/// The preference file in use (the private file is made if it does not exist yet).
/// Throws std::runtime_error when the private file cannot be made.
QZ_HOST_API std::filesystem::path PreferenceFilePath();

/// The user's preference file: "$XDG_CONFIG_HOME/qzhost/preferences.txt", or
/// "$HOME/.config/qzhost/preferences.txt" when XDG_CONFIG_HOME is unset or not an
/// absolute path. Throws std::runtime_error when neither variable gives a folder.
QZ_HOST_API std::filesystem::path DefaultPreferenceFilePath();

/// The text stored under `key` of `section` in the preference file as it is on disk now,
/// or nullopt when the key is absent. Throws std::runtime_error when the file cannot be
/// read or parsed.
QZ_HOST_API std::optional<std::string> ReadStoredPreference(const std::string& section,
                                                            const std::string& key);

/// [ui-thread] The text stored under `key` of `section` in the host's text preference
/// store, as the run has it now (nullopt when the key is absent). For the host's own
/// settings that a number does not hold (the viewer's window layout).
QZ_HOST_API std::optional<std::string> HostTextPreference(const std::string& section,
                                                          const std::string& key);

/// [ui-thread] Stores `value` under `key` of `section` in the host's text preference store
/// and writes the file; returns 0, or the errno of a failed write (store and file then keep
/// what they had).
QZ_HOST_API int SetHostTextPreference(const std::string& section, const std::string& key,
                                      const std::string& value);

} // namespace qzhost
