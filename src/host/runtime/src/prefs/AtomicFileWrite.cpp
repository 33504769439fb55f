#include "AtomicFileWrite.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qzhost::prefs {

namespace {

// mkostemp replaces these six characters with letters and digits.
constexpr std::string_view kRandomPart = "XXXXXX";
// How many temporary files a write makes at most before it gives up; it makes another
// only when a store opening the same file removed the previous one at the moment it was
// made (see CreateLockedTemporaryFile).
constexpr int kCreateAttempts = 16;

std::string TemporaryPrefix(std::string_view file_name) {
    std::string prefix = ".";
    prefix += file_name;
    prefix += ".tmp-";
    return prefix;
}

bool IsLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Whether `name` leads, without following a symbolic link, to the file open as `fd`.
bool NameLeadsToOpenFile(const char* name, int fd) {
    struct stat named {};
    struct stat open {};
    return ::lstat(name, &named) == 0 && ::fstat(fd, &open) == 0 && named.st_dev == open.st_dev &&
           named.st_ino == open.st_ino;
}

int WriteAll(int fd, std::string_view content) {
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t n = ::write(fd, content.data() + done, content.size() - done);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        done += static_cast<std::size_t>(n);
    }
    return 0;
}

// Makes the rename itself durable; a failure here leaves a correct file in place, so it
// is not reported.
void SyncFolder(const std::filesystem::path& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        (void)::fsync(fd);
        ::close(fd);
    }
}

// Makes a new temporary file from `pattern` (which ends in kRandomPart) and takes the
// writer's lock on it. Returns its descriptor, with its name in `name`, or -1 with errno
// set.
//
// Between mkostemp and flock the new file is not yet locked, and a store opening the same
// preference file may take it for an abandoned one: that store then holds the lock for the
// moment it needs to remove the file, or has removed it already. Either way this file is
// given up to it and another one is made.
//
// flock rather than fcntl locks: an fcntl lock belongs to the process and is dropped when
// the process closes any descriptor of the file, so a store of the same process looking
// at the file would release the writer's lock.
int CreateLockedTemporaryFile(const std::string& pattern, std::vector<char>& name) {
    for (int attempt = 0; attempt < kCreateAttempts; ++attempt) {
        name.assign(pattern.begin(), pattern.end());
        name.push_back('\0');
        const int fd = ::mkostemp(name.data(), O_CLOEXEC);
        if (fd < 0) {
            return -1;
        }
        if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
            if (errno == EWOULDBLOCK) {
                ::close(fd); // a store removing abandoned files has it
                continue;
            }
            // A file system without locks: the write goes ahead unlocked, and a store
            // opening the file cannot lock the file either, so it never removes it.
            return fd;
        }
        if (NameLeadsToOpenFile(name.data(), fd)) {
            return fd;
        }
        ::close(fd); // removed by a store before the lock was taken
    }
    errno = EAGAIN;
    return -1;
}

} // namespace

bool IsTemporaryFileNameFor(std::string_view name, std::string_view file_name) {
    const std::string prefix = TemporaryPrefix(file_name);
    if (name.size() != prefix.size() + kRandomPart.size() || !name.starts_with(prefix)) {
        return false;
    }
    return std::all_of(name.begin() + static_cast<std::ptrdiff_t>(prefix.size()), name.end(),
                       IsLetterOrDigit);
}

int WriteFileAtomically(const std::filesystem::path& path, std::string_view content) {
    std::filesystem::path folder = path.parent_path();
    if (folder.empty()) {
        folder = ".";
    }
    // The temporary file lies in the same folder, so that the rename stays within one
    // file system and replaces the old file in one step.
    std::string leaf = TemporaryPrefix(path.filename().string());
    leaf += kRandomPart;
    const std::string pattern = (folder / leaf).string();
    std::vector<char> name;
    const int fd = CreateLockedTemporaryFile(pattern, name);
    if (fd < 0) {
        return errno;
    }
    int err = WriteAll(fd, content);
    if (err == 0 && ::fsync(fd) != 0) {
        err = errno;
    }
    // The file is renamed, or removed, while the writer still holds it open and locked,
    // so that no store opening the file takes it for an abandoned one meanwhile.
    if (err == 0 && ::rename(name.data(), path.c_str()) != 0) {
        err = errno;
    }
    if (err != 0) {
        ::unlink(name.data());
        ::close(fd);
        return err;
    }
    // The content is on the disk already (fsync above) and in place under its name; a
    // failing close cannot change either.
    ::close(fd);
    SyncFolder(folder);
    return 0;
}

std::size_t RemoveAbandonedTemporaryFiles(const std::filesystem::path& path) {
    std::filesystem::path folder = path.parent_path();
    if (folder.empty()) {
        folder = ".";
    }
    const std::string file_name = path.filename().string();
    std::vector<std::filesystem::path> candidates;
    std::error_code ec;
    for (std::filesystem::directory_iterator it(folder, ec);
         !ec && it != std::filesystem::directory_iterator(); it.increment(ec)) {
        if (IsTemporaryFileNameFor(it->path().filename().string(), file_name)) {
            candidates.push_back(it->path());
        }
    }
    std::size_t removed = 0;
    for (const std::filesystem::path& candidate : candidates) {
        // O_NOFOLLOW: a symbolic link is no writer's file (and its target is not to be
        // touched); O_NONBLOCK: a FIFO of that name does not hold up the opening.
        const int fd =
            ::open(candidate.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
        if (fd < 0) {
            continue;
        }
        struct stat st {};
        // The lock is free only when no living writer holds the file. The name is checked
        // again under the lock: it must still lead to the file that was locked.
        if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0 &&
            NameLeadsToOpenFile(candidate.c_str(), fd) && ::unlink(candidate.c_str()) == 0) {
            ++removed;
        }
        ::close(fd);
    }
    return removed;
}

} // namespace qzhost::prefs
