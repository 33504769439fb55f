#include "AtomicFileWrite.h"

#include <cerrno>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace qzhost::prefs {

namespace {

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

} // namespace

int WriteFileAtomically(const std::filesystem::path& path, std::string_view content) {
    std::filesystem::path folder = path.parent_path();
    if (folder.empty()) {
        folder = ".";
    }
    // The temporary file lies in the same folder, so that the rename stays within one
    // file system and replaces the old file in one step.
    std::string leaf = ".";
    leaf += path.filename().string();
    leaf += ".tmp-XXXXXX";
    const std::string pattern = (folder / leaf).string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    const int fd = ::mkostemp(name.data(), O_CLOEXEC);
    if (fd < 0) {
        return errno;
    }
    int err = WriteAll(fd, content);
    if (err == 0 && ::fsync(fd) != 0) {
        err = errno;
    }
    if (::close(fd) != 0 && err == 0) {
        err = errno;
    }
    if (err == 0 && ::rename(name.data(), path.c_str()) != 0) {
        err = errno;
    }
    if (err != 0) {
        ::unlink(name.data());
        return err;
    }
    SyncFolder(folder);
    return 0;
}

} // namespace qzhost::prefs
