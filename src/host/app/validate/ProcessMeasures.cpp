#include "validate/ProcessMeasures.h"

#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#if defined(__SANITIZE_ADDRESS__)
#define QZ_VALIDATE_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QZ_VALIDATE_ASAN 1
#endif
#endif
#if defined(QZ_VALIDATE_ASAN)
#include <sanitizer/lsan_interface.h>
#endif

namespace qzhost::validate {

std::size_t OpenFileCount() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator("/proc/self/fd")) {
        ++count;
    }
    return count;
}

std::size_t ResidentBytes() {
    std::ifstream statm("/proc/self/statm");
    std::size_t size = 0;
    std::size_t resident = 0;
    statm >> size >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

std::size_t HeapBytesInUse() {
    const struct mallinfo2 info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

bool IsMapped(const std::string& path) {
    std::error_code error;
    const std::string canonical = std::filesystem::canonical(path, error).string();
    std::ifstream maps("/proc/self/maps");
    std::string line;
    while (std::getline(maps, line)) {
        const std::size_t slash = line.find('/');
        if (slash != std::string::npos && line.compare(slash, std::string::npos, canonical) == 0) {
            return true;
        }
    }
    return false;
}

bool UnderAddressSanitizer() {
#if defined(QZ_VALIDATE_ASAN)
    return true;
#else
    return false;
#endif
}

bool LeakCheckFoundLeaks() {
#if defined(QZ_VALIDATE_ASAN)
    return __lsan_do_recoverable_leak_check() != 0;
#else
    return false;
#endif
}

} // namespace qzhost::validate
