// A cache of pictures decoded from a library's resources, keyed by picture name, state
// and UI scale, so that a control's picture is decoded once.
#pragma once

#include <cstddef>
#include <memory>

#include "qzgp/QZ_Basic.h"

namespace kitui::utility {

class QZ_HOST_API InkwellImageResourceCache {
public:
    InkwellImageResourceCache();
    ~InkwellImageResourceCache();
    InkwellImageResourceCache(const InkwellImageResourceCache&) = delete;
    InkwellImageResourceCache& operator=(const InkwellImageResourceCache&) = delete;

    /// [ui-thread] How many decoded pictures the cache holds.
    std::size_t GetCount() const noexcept;
    /// [ui-thread] Drops every decoded picture.
    void Purge() noexcept;

    struct Entries;
    Entries& GetEntries() noexcept { return *entries_; }

private:
    std::unique_ptr<Entries> entries_;
};

} // namespace kitui::utility
