#include "qzhost/ProgramName.h"

#include <errno.h>

#include <mutex>

namespace qzhost {

namespace {

std::mutex& NameMutex() {
    static std::mutex mutex;
    return mutex;
}

std::string& GivenName() {
    static std::string name;
    return name;
}

} // namespace

std::string ProgramName() {
    {
        std::lock_guard lock(NameMutex());
        if (!GivenName().empty()) {
            return GivenName();
        }
    }
    // The C library keeps the last part of argv[0] from the program's start.
    return program_invocation_short_name != nullptr ? program_invocation_short_name : "";
}

void SetProgramName(const std::string& name) {
    std::lock_guard lock(NameMutex());
    GivenName() = name;
}

} // namespace qzhost
