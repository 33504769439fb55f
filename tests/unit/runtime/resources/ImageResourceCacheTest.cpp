#include <gtest/gtest.h>

#include <memory>

#include "kitui/utility/InkwellImageResourceCache.h"
#include "qzhost/ImageResourceCacheEntries.h"

namespace {

using kitui::utility::InkwellImageResourceCache;

TEST(InkwellImageResourceCache, StartsEmpty) {
    const InkwellImageResourceCache cache;
    EXPECT_EQ(cache.GetCount(), 0u);
}

TEST(InkwellImageResourceCache, CountsItsPicturesByKey) {
    InkwellImageResourceCache cache;
    cache.GetEntries().pictures["InfoCrosshairs_Sm/normal/1"] = std::make_shared<int>(1);
    cache.GetEntries().pictures["InfoCrosshairs_Sm/selected/1"] = std::make_shared<int>(2);
    cache.GetEntries().pictures["InfoCrosshairs_Sm/normal/1"] = std::make_shared<int>(3);
    EXPECT_EQ(cache.GetCount(), 2u);
}

TEST(InkwellImageResourceCache, PurgeDropsAndReleasesEveryPicture) {
    InkwellImageResourceCache cache;
    auto picture = std::make_shared<int>(5);
    const std::weak_ptr<int> watch = picture;
    cache.GetEntries().pictures["a"] = std::move(picture);
    cache.GetEntries().pictures["b"] = std::make_shared<int>(6);
    cache.Purge();
    EXPECT_EQ(cache.GetCount(), 0u);
    EXPECT_TRUE(watch.expired());
}

TEST(InkwellImageResourceCache, DestructionReleasesThePictures) {
    std::weak_ptr<int> watch;
    {
        InkwellImageResourceCache cache;
        auto picture = std::make_shared<int>(5);
        watch = picture;
        cache.GetEntries().pictures["a"] = std::move(picture);
        EXPECT_FALSE(watch.expired());
    }
    EXPECT_TRUE(watch.expired());
}

} // namespace
