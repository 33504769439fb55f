#include <gtest/gtest.h>

#include <set>
#include <string>

#include "HostFixture.h"
#include "InfoPal/frame/HostSuiteCache.h"

namespace {

using infopal::GetHostSuiteCache;
using infopal::HostSuiteCache;
using infopal::SuiteSlot;
using qzhost::Acquirer;
using qzhost::SuiteRegistry;

class HostSuiteCacheTest : public qztest::HostFixture {
protected:
    QZ_BasicSuiteTable* basic = SuiteRegistry::Get().PluginTable();
};

TEST_F(HostSuiteCacheTest, HasOneSlotPerSuiteVersionOverSeventyNames) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < infopal::kSuiteSlotCount; ++i) {
        names.insert(infopal::SlotInfo(static_cast<SuiteSlot>(i)).name);
    }
    EXPECT_EQ(infopal::kSuiteSlotCount, 133u);
    EXPECT_EQ(names.size(), 70u);
    EXPECT_STREQ(infopal::SlotInfo(SuiteSlot::RenderAsycManager1).name,
                 "QZGP Render Asyc Manager Suite");
}

TEST_F(HostSuiteCacheTest, TwoVersionsOfOneSuiteAreAcquiredAndReleasedSeparately) {
    {
        HostSuiteCache cache(basic);
        const void* v7 = cache.Suite(SuiteSlot::Utility7);
        const void* v13 = cache.Suite(SuiteSlot::Utility13);
        EXPECT_NE(v7, v13);
        EXPECT_EQ(SuiteRegistry::Get().HeldCount(Acquirer::Plugin, "QZGP Utility Suite", 7), 1);
        EXPECT_EQ(SuiteRegistry::Get().HeldCount(Acquirer::Plugin, "QZGP Utility Suite", 13), 1);
        // A second use of a slot does not acquire again.
        EXPECT_EQ(cache.Suite(SuiteSlot::Utility7), v7);
        EXPECT_EQ(SuiteRegistry::Get().HeldCount(Acquirer::Plugin, "QZGP Utility Suite", 7), 1);
    }
    EXPECT_TRUE(Held().empty());
    EXPECT_EQ(SuiteRegistry::Get().UnmatchedReleases(Acquirer::Plugin), 0);
}

TEST_F(HostSuiteCacheTest, TwoSlotsOfTheSameVersionEachHoldTheirOwnAcquisition) {
    // A host component publishes a math suite; both of its slots acquire it.
    static const int math_table[4] = {};
    (void)SuiteRegistry::Get().Publish("QZGP Math Suite", 1, math_table);
    {
        HostSuiteCache cache(basic);
        EXPECT_EQ(cache.Suite(SuiteSlot::Math1a), math_table);
        EXPECT_FALSE(cache.IsAcquired(SuiteSlot::Math1b));
        EXPECT_EQ(cache.Suite(SuiteSlot::Math1b), math_table);
        EXPECT_EQ(SuiteRegistry::Get().HeldCount(Acquirer::Plugin, "QZGP Math Suite", 1), 2);
    }
    EXPECT_EQ(SuiteRegistry::Get().HeldCount(Acquirer::Plugin, "QZGP Math Suite", 1), 0);
    EXPECT_EQ(SuiteRegistry::Get().UnmatchedReleases(Acquirer::Plugin), 0);
}

TEST_F(HostSuiteCacheTest, ASuiteTheHostDoesNotHaveRaisesThirteen) {
    HostSuiteCache cache(basic);
    try {
        cache.Suite(SuiteSlot::Layer5);
        FAIL() << "no error raised";
    } catch (QZ_Err code) {
        EXPECT_EQ(code, 13);
    }
    EXPECT_FALSE(cache.IsAcquired(SuiteSlot::Layer5));
}

TEST_F(HostSuiteCacheTest, ANullBasicSuiteTableRaisesThirteen) {
    EXPECT_THROW(HostSuiteCache cache(nullptr), QZ_Err);
    try {
        infopal::SetUpHostSuiteCache(nullptr, 1);
    } catch (QZ_Err code) {
        EXPECT_EQ(code, 13);
    }
    EXPECT_EQ(GetHostSuiteCache(), nullptr);
}

TEST_F(HostSuiteCacheTest, ASecondSetUpReplacesTheFirstCacheAndReleasesItsSuites) {
    infopal::SetUpHostSuiteCache(basic, 7);
    HostSuiteCache* first = GetHostSuiteCache();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(Held(), std::vector<std::string>{"QZGP Utility Suite/13"});

    infopal::SetUpHostSuiteCache(basic, 8);
    EXPECT_NE(GetHostSuiteCache(), nullptr);
    EXPECT_EQ(infopal::GetPluginID(), 8);
    // The first cache's acquisition went before the new cache took its own.
    EXPECT_EQ(Held(), std::vector<std::string>{"QZGP Utility Suite/13"});

    infopal::TearDownHostSuiteCache();
    EXPECT_EQ(GetHostSuiteCache(), nullptr);
    EXPECT_EQ(infopal::GetBasicSuiteTable(), nullptr);
    EXPECT_TRUE(Held().empty());
}

TEST_F(HostSuiteCacheTest, ASlotNeverUsedIsNeverAcquiredNorReleased) {
    const int queries_before = qzhost::HostControls::Get().RunModeQueries();
    infopal::SetUpHostSuiteCache(basic, 1);
    for (std::size_t i = 0; i < infopal::kSuiteSlotCount; ++i) {
        const auto slot = static_cast<SuiteSlot>(i);
        EXPECT_EQ(GetHostSuiteCache()->IsAcquired(slot), slot == SuiteSlot::Utility13) << i;
    }
    infopal::TearDownHostSuiteCache();
    EXPECT_EQ(SuiteRegistry::Get().UnmatchedReleases(Acquirer::Plugin), 0);
    // Set-up and teardown each ask the run mode.
    EXPECT_EQ(qzhost::HostControls::Get().RunModeQueries(), queries_before + 2);
}

TEST_F(HostSuiteCacheTest, TheUISuppressedFlagIsTrueExactlyForTheByteOne) {
    for (int byte : {0, 1, 2, 255}) {
        qzhost::HostControls::Get().SetUISuppressed(static_cast<std::uint8_t>(byte));
        infopal::SetUpHostSuiteCache(basic, 1);
        EXPECT_EQ(infopal::GetUISuppressed(), byte == 1) << byte;
        infopal::TearDownHostSuiteCache();
    }
}

TEST_F(HostSuiteCacheTest, AFailingUISuppressedQueryRaisesTheHostCode) {
    qzhost::HostControls::Get().SetError(qzhost::op::kUISuppressedQuery, 77);
    try {
        infopal::SetUpHostSuiteCache(basic, 1);
        FAIL() << "no error raised";
    } catch (QZ_Err code) {
        EXPECT_EQ(code, 77);
    }
    infopal::TearDownHostSuiteCache();
}

} // namespace
