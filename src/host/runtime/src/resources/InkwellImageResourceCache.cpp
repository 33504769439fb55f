#include "kitui/utility/InkwellImageResourceCache.h"

#include "qzhost/ImageResourceCacheEntries.h"

namespace kitui::utility {

InkwellImageResourceCache::InkwellImageResourceCache() : entries_(std::make_unique<Entries>()) {}

InkwellImageResourceCache::~InkwellImageResourceCache() = default;

std::size_t InkwellImageResourceCache::GetCount() const noexcept {
    return entries_->pictures.size();
}

void InkwellImageResourceCache::Purge() noexcept {
    entries_->pictures.clear();
}

} // namespace kitui::utility
