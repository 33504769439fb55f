// String arguments in guarded pages. While set, every string argument of a suite call
// gets pages of its own, read-only, its terminating zero the last byte before an
// inaccessible guard page; when the call has returned the validator seals them
// (inaccessible). A plug-in that writes into a caller's string, reads past its zero, or
// reads it after the call returned (a kept pointer) faults at once, in every build, and
// the fault handler names the string and the call before the process dies.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "script/StringPlacement.h"

namespace qzhost::validate {

class GuardedStrings : public script::StringPlacement {
public:
    /// Becomes the script calls' string placement and installs the fault handler.
    GuardedStrings();
    /// Restores the default placement and the previous handlers, and unmaps every page.
    ~GuardedStrings() override;
    GuardedStrings(const GuardedStrings&) = delete;
    GuardedStrings& operator=(const GuardedStrings&) = delete;

    /// Names the call whose strings are placed next, for the fault message.
    void BeginCall(const std::string& call);
    /// Makes the strings of every call so far inaccessible.
    void Seal();
    std::size_t Placed() const noexcept { return regions_.size(); }

    const char* Place(std::string_view text) override;
    const kitcore::utility::UTF16Char*
    Place(std::basic_string_view<kitcore::utility::UTF16Char> text) override;

    /// Finds the guarded string that `address` falls in; writes the fault message to
    /// `fd`. Returns false when the address is none of ours. Async-signal-safe.
    bool ReportFault(const void* address, int fd) const noexcept;

private:
    struct Region {
        char* map = nullptr;       // first page
        std::size_t dataPages = 0; // pages that hold the string
        char* begin = nullptr;     // first byte of the string
        bool sealed = false;
        std::string label;
    };
    void* PlaceBytes(const void* bytes, std::size_t size);

    std::vector<Region> regions_;
    std::size_t sealedUpTo_ = 0;
    std::string call_;
    int argument_ = 0;
    std::size_t page_;
};

} // namespace qzhost::validate
