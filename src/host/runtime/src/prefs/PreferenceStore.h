// The host's one text preference store (preference type 0): the preferences of the run,
// kept in memory and written to the preference file on every change.
#pragma once

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

#include "PreferenceText.h"

struct PREF_Store {
public:
    /// The process's store.
    static PREF_Store& Get();

    /// Makes `path` the preference file and reads it; a missing file is created (with
    /// its folder). A file that cannot be parsed is renamed aside and the store starts
    /// empty, with one host warning. Temporary files of the file that writers killed
    /// mid-write left behind are removed first (those of living writers stay). Throws
    /// std::runtime_error when the file cannot be read or created; the store then keeps
    /// its previous file and preferences.
    void Open(const std::filesystem::path& path);
    /// Back to a new, empty file private to this process, made when first needed and
    /// removed when the store is reset or the process ends.
    void UsePrivateFile();
    /// The preference file, creating the private one when that is the one in use.
    /// Throws std::runtime_error when the private file cannot be made.
    std::filesystem::path Path();

    std::optional<std::string> Find(const std::string& section, const std::string& key) const;
    /// Stores `value` and writes the file; returns 0 or the errno of the failed write,
    /// in which case the store and the file both keep their previous content.
    int Set(const std::string& section, const std::string& key, const std::string& value);

    ~PREF_Store();
    PREF_Store(const PREF_Store&) = delete;
    PREF_Store& operator=(const PREF_Store&) = delete;

private:
    PREF_Store();
    // Creates the private folder and file when the private file is in use and not yet
    // made; returns 0 or an errno.
    int EnsurePrivateFileLocked();
    void RemovePrivateFileLocked();

    mutable std::mutex mutex_;
    qzhost::prefs::PreferenceData data_;
    std::filesystem::path path_;          // empty while the private file is not made
    std::filesystem::path privateFolder_; // the private file's folder, when made
    bool private_ = true;
};
