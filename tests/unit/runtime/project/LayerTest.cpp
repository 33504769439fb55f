// Layers: the kind test answers for the layer's own kind, the flag word carries the 3-D
// switch, and every question is recorded in order. Paths: the name at the tail and the mask
// membership.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "host/PXM_StreamNames.h"
#include "qzhost/HostControls.h"
#include "qzhost/LiveMatchNames.h"
#include "qzhost/MainLoop.h"

namespace {

using Query = PXM_LayerQuery;

class Layer : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::HostControls::Get().Reset();
        qzhost::MainLoop::Get().AdoptCurrentThread();
    }
    void TearDown() override { qzhost::HostControls::Get().Reset(); }
};

KVB_StreamIDPath Path(std::vector<const char*> texts, bool in_mask) {
    std::vector<KVB_MatchName> names;
    for (const char* text : texts) {
        names.emplace_back(text);
    }
    return KVB_StreamIDPath(std::move(names), in_mask);
}

TEST_F(Layer, KindTestHoldsForTheLayersOwnKindOnly) {
    for (const std::int32_t kind : {0, 1, 2}) {
        const PXM_Layer layer(kind, false);
        for (const std::int32_t asked : {0, 1, 2, 3, -1}) {
            EXPECT_EQ(layer.IsOfKind(asked), asked == kind) << kind << " asked " << asked;
        }
    }
}

TEST_F(Layer, ThreeDimensionalSwitchIsBit0x400OfTheFlagWord) {
    EXPECT_EQ(PXM_LayerFlag_THREE_D, 0x400U);
    EXPECT_EQ(PXM_Layer(0, true).GetFlags(), 0x400U);
    EXPECT_EQ(PXM_Layer(0, false).GetFlags(), 0U);
    EXPECT_EQ(PXM_Layer(1, true).GetFlags() & PXM_LayerFlag_THREE_D, 0x400U);
}

TEST_F(Layer, RecordsEveryQuestionInOrder) {
    PXM_Layer layer(2, true);
    EXPECT_TRUE(layer.Queries().empty());
    layer.IsOfKind(0);
    layer.GetFlags();
    layer.IsOfKind(2);
    layer.IsOfKind(2);
    const std::vector<Query> expected = {{Query::What::Kind, 0},
                                         {Query::What::Flags, 0},
                                         {Query::What::Kind, 2},
                                         {Query::What::Kind, 2}};
    EXPECT_EQ(layer.Queries(), expected);
    layer.ClearQueries();
    EXPECT_TRUE(layer.Queries().empty());
}

TEST_F(Layer, MatchNameAtTailIsThePropertysOwnName) {
    const KVB_StreamIDPath path = Path({"TRANSFORM_GROUP", "POSITION"}, false);
    const KVB_MatchName tail = PXM_Layer::GetMatchNameAtTail(path);
    EXPECT_TRUE(tail == PXM_StreamName_POSITION);
    EXPECT_FALSE(tail == KVB_MatchName("TRANSFORM_GROUP"));
}

TEST_F(Layer, MatchNameAtTailIsANewReferenceReleasedByTheCaller) {
    const KVB_StreamIDPath path = Path({"MASK_ATOM", "MASK_SHAPE"}, true);
    const std::int64_t before = qzhost::LiveMatchNameCount();
    {
        const KVB_MatchName tail = PXM_Layer::GetMatchNameAtTail(path);
        EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 1);
        EXPECT_TRUE(tail == *OM_StreamNamePtr_MASK_SHAPE);
    }
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before);
}

TEST_F(Layer, EmptyPathHasTheEmptyNameAtItsTail) {
    const KVB_StreamIDPath path;
    EXPECT_TRUE(PXM_Layer::GetMatchNameAtTail(path).Empty());
    EXPECT_FALSE(PXM_IsMaskSubtypeStreamPath(path));
}

TEST_F(Layer, PathKnowsWhetherItRunsThroughAMask) {
    EXPECT_TRUE(PXM_IsMaskSubtypeStreamPath(Path({"MASK_ATOM", "MASK_OPACITY"}, true)));
    EXPECT_FALSE(PXM_IsMaskSubtypeStreamPath(Path({"TRANSFORM_GROUP", "OPACITY"}, false)));
}

TEST_F(Layer, CopiedPathsShareTheirNames) {
    const std::int64_t before = qzhost::LiveMatchNameCount();
    {
        const KVB_StreamIDPath path = Path({"A", "B"}, true);
        const KVB_StreamIDPath copy = path;
        EXPECT_EQ(qzhost::LiveMatchNameCount(), before + 4);
        EXPECT_TRUE(copy.InsideMask());
        ASSERT_EQ(copy.Names().size(), 2U);
        EXPECT_STREQ(copy.Names()[1].Text(), "B");
    }
    EXPECT_EQ(qzhost::LiveMatchNameCount(), before);
}

TEST_F(Layer, QuestionsOnTheMainThreadBreachNoContract) {
    const PXM_Layer layer(0, false);
    layer.IsOfKind(0);
    layer.GetFlags();
    PXM_IsMaskSubtypeStreamPath(Path({"POSITION"}, false));
    EXPECT_TRUE(qzhost::HostControls::Get().Violations().empty());
}

TEST_F(Layer, QuestionsFromAnotherThreadAreRecordedAsBreaches) {
    const PXM_Layer layer(0, false);
    std::thread worker([&layer] { layer.IsOfKind(0); });
    worker.join();
    const auto violations = qzhost::HostControls::Get().Violations();
    ASSERT_EQ(violations.size(), 1U);
    EXPECT_NE(violations[0].find("PXM_Layer::IsOfKind"), std::string::npos);
}

} // namespace
