// Toolkit errors: a localised message raised as a std::exception.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "kitcore/utility/UTF16String.h"

namespace kitcore::config {

/// The exception that ThrowError raises. what() is the resolved message in UTF-8.
class QZ_HOST_API Error : public std::runtime_error {
public:
    Error(int level, const std::string& message, std::int32_t major, std::int32_t minor);
    ~Error() override;
    int Level() const noexcept { return level_; }
    std::int32_t Major() const noexcept { return major_; }
    std::int32_t Minor() const noexcept { return minor_; }

private:
    int level_;
    std::int32_t major_;
    std::int32_t minor_;
};

/// [any-thread] Raises Error with the text of the localised key `key` (a
/// "$$$/...=default" string), its "^0" to "^3" replaced by the four values (which are
/// not scanned again) and "^I", "^D", "^^" expanded as U_ZStringToUTF16String does.
/// `flag` is accepted and changes nothing.
[[noreturn]] QZ_HOST_API void ThrowError(int level, const char* key, std::int32_t major,
                                         std::int32_t minor, bool flag,
                                         const kitcore::utility::UTF16String& r0 = {},
                                         const kitcore::utility::UTF16String& r1 = {},
                                         const kitcore::utility::UTF16String& r2 = {},
                                         const kitcore::utility::UTF16String& r3 = {});

} // namespace kitcore::config
