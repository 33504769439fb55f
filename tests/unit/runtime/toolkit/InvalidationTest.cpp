// What the toolkit records for redrawing: invalidation, showing and hiding, moving, and
// changes of a control's content.
#include <gtest/gtest.h>

#include <memory>

#include "ToolkitTestSupport.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/ui/UI_Node.h"

namespace {

using kitui::ui::RectT;
using kitui::ui::UI_Node;

class InvalidationTest : public qztest::ToolkitFixture {
protected:
    void SetUp() override {
        qztest::ToolkitFixture::SetUp();
        root_ = std::make_unique<UI_Node>();
        root_->UI_SetBounds({100, 100, 300, 200});
        panel_ = root_->UI_AddChild(std::make_unique<UI_Node>());
        panel_->UI_SetBounds({10, 20, 200, 100});
        text_ = static_cast<kitui::controls::UI_StaticText*>(
            panel_->UI_AddChild(std::make_unique<kitui::controls::UI_StaticText>(1)));
        text_->UI_SetBounds({5, 6, 90, 14});
        root_->UI_ClearInvalidArea();
    }
    std::unique_ptr<UI_Node> root_;
    UI_Node* panel_ = nullptr;
    kitui::controls::UI_StaticText* text_ = nullptr;
};

TEST_F(InvalidationTest, InvalidatedNodeIsRecordedInRootCoordinates) {
    EXPECT_FALSE(root_->UI_HasInvalidArea());
    text_->UI_Invalidate();
    EXPECT_EQ(text_->UI_InvalidationCount(), 1u);
    ASSERT_TRUE(root_->UI_HasInvalidArea());
    EXPECT_EQ(root_->UI_GetInvalidRects(), (std::vector<RectT<float>>{{15, 26, 90, 14}}));
    // Any node of the tree reads and clears the same area.
    EXPECT_EQ(text_->UI_GetInvalidBounds(), (RectT<float>{15, 26, 90, 14}));
    text_->UI_ClearInvalidArea();
    EXPECT_FALSE(root_->UI_HasInvalidArea());
}

TEST_F(InvalidationTest, PartOfANodeIsLimitedToTheNode) {
    const RectT<float> part{80, 2, 50, 5};
    text_->UI_Invalidate(&part);
    EXPECT_EQ(root_->UI_GetInvalidRects(), (std::vector<RectT<float>>{{95, 28, 10, 5}}));
}

TEST_F(InvalidationTest, SeveralAreasAreKeptAndTheirBoundsJoinThem) {
    text_->UI_Invalidate();
    panel_->UI_Invalidate();
    // The panel holds the text: one rectangle is left.
    EXPECT_EQ(root_->UI_GetInvalidRects(), (std::vector<RectT<float>>{{10, 20, 200, 100}}));
    root_->UI_ClearInvalidArea();
    const RectT<float> a{0, 0, 10, 10};
    const RectT<float> b{100, 50, 10, 10};
    panel_->UI_Invalidate(&a);
    panel_->UI_Invalidate(&b);
    EXPECT_EQ(root_->UI_GetInvalidRects().size(), 2u);
    EXPECT_EQ(root_->UI_GetInvalidBounds(), (RectT<float>{10, 20, 110, 60}));
}

TEST_F(InvalidationTest, HiddenNodeCountsButRecordsNothing) {
    panel_->UI_Show(false);
    root_->UI_ClearInvalidArea();
    text_->UI_Invalidate();
    EXPECT_EQ(text_->UI_InvalidationCount(), 1u);
    EXPECT_FALSE(root_->UI_HasInvalidArea());
}

TEST_F(InvalidationTest, ShowingAndHidingRecordTheNodesArea) {
    text_->UI_Show(false);
    EXPECT_EQ(root_->UI_GetInvalidRects(), (std::vector<RectT<float>>{{15, 26, 90, 14}}));
    root_->UI_ClearInvalidArea();
    text_->UI_Show(false);
    EXPECT_FALSE(root_->UI_HasInvalidArea());
    text_->UI_Show(true);
    EXPECT_EQ(root_->UI_GetInvalidRects(), (std::vector<RectT<float>>{{15, 26, 90, 14}}));
    EXPECT_EQ(text_->UI_InvalidationCount(), 0u);
}

TEST_F(InvalidationTest, MovingAVisibleNodeRecordsTheOldAndTheNewPlace) {
    text_->UI_SetBounds({5, 50, 90, 14});
    EXPECT_EQ(root_->UI_GetInvalidRects(),
              (std::vector<RectT<float>>{{15, 26, 90, 14}, {15, 70, 90, 14}}));
}

TEST_F(InvalidationTest, ChangedTextMarksTheControlWithoutCountingAnInvalidation) {
    text_->SetValue(u"X : 12");
    EXPECT_EQ(root_->UI_GetInvalidRects(), (std::vector<RectT<float>>{{15, 26, 90, 14}}));
    EXPECT_EQ(text_->UI_InvalidationCount(), 0u);
    root_->UI_ClearInvalidArea();
    text_->SetValue(u"X : 12");
    EXPECT_FALSE(root_->UI_HasInvalidArea());
    text_->SetTextColor(10076);
    EXPECT_TRUE(root_->UI_HasInvalidArea());
}

TEST_F(InvalidationTest, AddedSubtreeBringsItsPendingAreaAlong) {
    auto box = std::make_unique<UI_Node>();
    box->UI_SetBounds({0, 0, 40, 40});
    const RectT<float> part{1, 2, 3, 4};
    box->UI_Invalidate(&part);
    EXPECT_TRUE(box->UI_HasInvalidArea());
    UI_Node* added = panel_->UI_AddChild(std::move(box));
    added->UI_SetBounds({50, 50, 40, 40});
    // The new child's whole area (where it was added) holds the part; then it moved.
    const std::vector<RectT<float>> rects = root_->UI_GetInvalidRects();
    EXPECT_FALSE(added->UI_GetInvalidRects().empty());
    EXPECT_EQ(root_->UI_GetInvalidBounds(), (RectT<float>{10, 20, 90, 90}));
    EXPECT_EQ(rects.size(), 2u);
}

TEST_F(InvalidationTest, RemovedChildLeavesItsAreaToRedraw) {
    std::unique_ptr<UI_Node> removed = panel_->UI_RemoveChild(text_);
    ASSERT_TRUE(removed);
    EXPECT_EQ(root_->UI_GetInvalidRects(), (std::vector<RectT<float>>{{15, 26, 90, 14}}));
    EXPECT_FALSE(removed->UI_HasInvalidArea());
}

} // namespace
