// The suites that the reference host itself offers in its basic suite table.
#pragma once

#include <cstdint>
#include <span>

namespace qzhost {

struct HostSuite {
    const char* name;
    std::int32_t version;
    const void* table;
};

/// Register 6, Command 1, Utility 7 and Utility 13.
std::span<const HostSuite> HostSuites();

} // namespace qzhost
