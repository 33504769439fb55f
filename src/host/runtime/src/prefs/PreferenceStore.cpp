#include "PreferenceStore.h"

#include <cerrno>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <stdlib.h>

#include "AtomicFileWrite.h"
#include "qzhost/HostControls.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kPrivateFileName = "preferences.txt";

std::string ErrnoText(int err) {
    return std::error_code(err, std::generic_category()).message();
}

// Reads the whole file; nullopt with errno set when it cannot be read.
std::optional<std::string> ReadWholeFile(const fs::path& path, int& err) {
    std::error_code ec;
    if (fs::is_directory(path, ec)) {
        err = EISDIR;
        return std::nullopt;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        err = errno != 0 ? errno : EIO;
        return std::nullopt;
    }
    std::ostringstream text;
    text << in.rdbuf();
    if (in.bad()) {
        err = EIO;
        return std::nullopt;
    }
    return std::move(text).str();
}

// "<file>.corrupt", or "<file>.corrupt.N" when that exists already: an older corrupt file
// is never overwritten.
fs::path CorruptName(const fs::path& path) {
    fs::path candidate = path;
    candidate += ".corrupt";
    std::error_code ec;
    for (int n = 1; fs::exists(candidate, ec); ++n) {
        candidate = path;
        candidate += ".corrupt." + std::to_string(n);
    }
    return candidate;
}

} // namespace

PREF_Store& PREF_Store::Get() {
    static PREF_Store store;
    return store;
}

PREF_Store::PREF_Store() = default;

PREF_Store::~PREF_Store() {
    std::lock_guard lock(mutex_);
    RemovePrivateFileLocked();
}

void PREF_Store::Open(const fs::path& path) {
    if (path.empty()) {
        throw std::runtime_error("the preference file path is empty");
    }
    const fs::path file = fs::absolute(path);
    std::lock_guard lock(mutex_);
    // A writer killed while it wrote leaves its temporary file beside the file; those of
    // writers that are gone go now. A writer still at work, in another process, keeps its
    // file (it holds it locked).
    (void)qzhost::prefs::RemoveAbandonedTemporaryFiles(file);
    std::error_code ec;
    qzhost::prefs::PreferenceData data;
    std::string warning;
    if (!fs::exists(file, ec)) {
        fs::create_directories(file.parent_path(), ec);
        if (int err = qzhost::prefs::WriteFileAtomically(
                file, qzhost::prefs::FormatPreferenceText(data))) {
            throw std::runtime_error("cannot create the preference file " + file.string() + ": " +
                                     ErrnoText(err));
        }
    } else {
        int err = 0;
        std::optional<std::string> text = ReadWholeFile(file, err);
        if (!text) {
            throw std::runtime_error("cannot read the preference file " + file.string() + ": " +
                                     ErrnoText(err));
        }
        try {
            data = qzhost::prefs::ParsePreferenceText(*text);
        } catch (const qzhost::prefs::PreferenceFormatError& error) {
            // Set the unreadable file aside, so that the user can look at it, and start
            // afresh; the next change writes a new file in its place.
            const fs::path aside = CorruptName(file);
            fs::rename(file, aside, ec);
            warning =
                "the preference file " + file.string() + " cannot be read (" + error.what() + ")";
            if (ec) {
                warning += " and cannot be moved aside (" + ec.message() + ")";
            } else {
                warning += "; it was moved to " + aside.string();
                // Leave a readable file behind; if that fails the next change will
                // report its own write failure.
                (void)qzhost::prefs::WriteFileAtomically(file,
                                                         qzhost::prefs::FormatPreferenceText({}));
            }
            warning += "; starting with no preferences";
        }
    }
    RemovePrivateFileLocked();
    private_ = false;
    path_ = file;
    data_ = std::move(data);
    if (!warning.empty()) {
        qzhost::HostControls::Get().Warn(warning);
    }
}

void PREF_Store::UsePrivateFile() {
    std::lock_guard lock(mutex_);
    RemovePrivateFileLocked();
    private_ = true;
    path_.clear();
    data_.clear();
}

fs::path PREF_Store::Path() {
    std::lock_guard lock(mutex_);
    if (int err = EnsurePrivateFileLocked()) {
        throw std::runtime_error("cannot create a private preference file: " + ErrnoText(err));
    }
    return path_;
}

std::optional<std::string> PREF_Store::Find(const std::string& section,
                                            const std::string& key) const {
    std::lock_guard lock(mutex_);
    auto s = data_.find(section);
    if (s == data_.end()) {
        return std::nullopt;
    }
    auto k = s->second.find(key);
    if (k == s->second.end()) {
        return std::nullopt;
    }
    return k->second;
}

int PREF_Store::Set(const std::string& section, const std::string& key, const std::string& value) {
    std::lock_guard lock(mutex_);
    if (int err = EnsurePrivateFileLocked()) {
        return err;
    }
    qzhost::prefs::PreferenceData next = data_;
    next[section][key] = value;
    if (int err =
            qzhost::prefs::WriteFileAtomically(path_, qzhost::prefs::FormatPreferenceText(next))) {
        return err;
    }
    data_ = std::move(next);
    return 0;
}

int PREF_Store::EnsurePrivateFileLocked() {
    if (!private_ || !path_.empty()) {
        return 0;
    }
    std::error_code ec;
    fs::path base = fs::temp_directory_path(ec);
    if (ec) {
        base = "/tmp";
    }
    std::string pattern = (base / "qzhost-prefs-XXXXXX").string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    if (::mkdtemp(name.data()) == nullptr) {
        return errno;
    }
    const fs::path folder(name.data());
    const fs::path file = folder / kPrivateFileName;
    if (int err =
            qzhost::prefs::WriteFileAtomically(file, qzhost::prefs::FormatPreferenceText(data_))) {
        fs::remove(folder, ec);
        return err;
    }
    privateFolder_ = folder;
    path_ = file;
    return 0;
}

void PREF_Store::RemovePrivateFileLocked() {
    if (privateFolder_.empty()) {
        return;
    }
    std::error_code ec;
    fs::remove_all(privateFolder_, ec);
    privateFolder_.clear();
    if (private_) {
        path_.clear();
    }
}
