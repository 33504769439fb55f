// Match names: values compared by text, each a counted reference that is released when it
// goes; the host's stream-name constants.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "host/KVB_MatchName.h"
#include "host/PXM_StreamNames.h"
#include "qzhost/LiveMatchNames.h"

namespace {

TEST(MatchName, NamesWithTheSameTextAreEqual) {
    const KVB_MatchName a("POSITION");
    const KVB_MatchName b("POSITION");
    const KVB_MatchName c("SCALE");
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a == c);
    EXPECT_TRUE(a != c);
    EXPECT_STREQ(a.Text(), "POSITION");
}

TEST(MatchName, ComparisonIsByteForByte) {
    EXPECT_FALSE(KVB_MatchName("position") == KVB_MatchName("POSITION"));
    EXPECT_FALSE(KVB_MatchName("POSITION ") == KVB_MatchName("POSITION"));
}

TEST(MatchName, NullAndEmptyTextGiveTheEmptyName) {
    const KVB_MatchName none;
    const KVB_MatchName null_text(nullptr);
    const KVB_MatchName empty_text("");
    EXPECT_TRUE(none.Empty());
    EXPECT_TRUE(null_text.Empty());
    EXPECT_TRUE(empty_text.Empty());
    EXPECT_TRUE(none == null_text);
    EXPECT_TRUE(none == empty_text);
    EXPECT_STREQ(none.Text(), "");
    EXPECT_FALSE(none == KVB_MatchName("POSITION"));
    EXPECT_FALSE(KVB_MatchName("POSITION") == none);
}

TEST(MatchName, EachLiveNameCountsOnceAndIsReleasedWhenItGoes) {
    const std::int64_t before = qzhost::LiveMatchNameCount();
    {
        const KVB_MatchName a("ROTATE_X");
        EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 1);
        {
            const KVB_MatchName copy(a);
            EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 2);
            EXPECT_TRUE(copy == a);
        }
        EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 1);
    }
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before);
}

TEST(MatchName, EmptyNamesAreNotCounted) {
    const std::int64_t before = qzhost::LiveMatchNameCount();
    const KVB_MatchName none;
    const KVB_MatchName empty("");
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before);
}

TEST(MatchName, MovingTransfersTheReference) {
    const std::int64_t before = qzhost::LiveMatchNameCount();
    KVB_MatchName a("OPACITY");
    KVB_MatchName b(std::move(a));
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 1);
    EXPECT_TRUE(a.Empty()); // NOLINT(bugprone-use-after-move): moved-from is the empty name
    EXPECT_STREQ(b.Text(), "OPACITY");
    KVB_MatchName c;
    c = std::move(b);
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 1);
    EXPECT_STREQ(c.Text(), "OPACITY");
}

TEST(MatchName, AssignmentReleasesTheOldNameAndTakesTheNew) {
    const std::int64_t before = qzhost::LiveMatchNameCount();
    KVB_MatchName a("SCALE");
    const KVB_MatchName b("POSITION");
    a = b;
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 2);
    EXPECT_TRUE(a == b);
    const KVB_MatchName& same = a;
    a = same;
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 2);
    a = KVB_MatchName();
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 1);
    EXPECT_TRUE(a.Empty());
}

TEST(MatchName, CopiesOutliveTheOriginal) {
    std::vector<KVB_MatchName> copies;
    {
        const KVB_MatchName original("MASK_FEATHER");
        copies.assign(3, original);
    }
    for (const KVB_MatchName& copy : copies) {
        EXPECT_STREQ(copy.Text(), "MASK_FEATHER");
    }
}

TEST(MatchName, CopiesAreCountedCorrectlyAcrossThreads) {
    const KVB_MatchName shared("POSITION");
    const std::int64_t before = qzhost::LiveMatchNameCount();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&shared] {
            for (int i = 0; i < 1000; ++i) {
                const KVB_MatchName copy(shared);
                KVB_MatchName other;
                other = copy;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before);
    EXPECT_STREQ(shared.Text(), "POSITION");
}

TEST(StreamNames, ConstantsCarryTheirNamesAsText) {
    const std::vector<std::pair<const KVB_MatchName*, const char*>> names = {
        {OM_StreamNamePtr_MASK_SHAPE, "MASK_SHAPE"},
        {&PXM_StreamName_PAINT_SHAPE, "PAINT_SHAPE"},
        {&PXM_StreamName_MASK_OPACITY, "MASK_OPACITY"},
        {&PXM_StreamName_MASK_FEATHER, "MASK_FEATHER"},
        {&PXM_StreamName_MASK_OFFSET, "MASK_OFFSET"},
        {&PXM_StreamName_ANCHOR_POINT, "ANCHOR_POINT"},
        {&PXM_StreamName_POSITION, "POSITION"},
        {&PXM_StreamName_SCALE, "SCALE"},
        {&PXM_StreamName_ORIENTATION, "ORIENTATION"},
        {&PXM_StreamName_ROTATE_X, "ROTATE_X"},
        {&PXM_StreamName_ROTATE_Y, "ROTATE_Y"},
        {&PXM_StreamName_ROTATE_Z, "ROTATE_Z"},
        {&PXM_StreamName_OPACITY, "OPACITY"},
        {&PXM_StreamName_AUDIO_LEVELS, "AUDIO_LEVELS"},
    };
    for (const auto& [constant, text] : names) {
        ASSERT_NE(constant, nullptr);
        EXPECT_STREQ(constant->Text(), text);
        EXPECT_TRUE(*constant == KVB_MatchName(text)) << text;
    }
    // All different from each other.
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t j = i + 1; j < names.size(); ++j) {
            EXPECT_FALSE(*names[i].first == *names[j].first)
                << names[i].second << " and " << names[j].second;
        }
    }
}

} // namespace
