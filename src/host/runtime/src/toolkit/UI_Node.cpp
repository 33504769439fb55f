#include "kitui/ui/UI_Node.h"

#include <algorithm>

namespace kitui::ui {

UI_NodeBase::~UI_NodeBase() = default;

void UI_NodeBase::UI_PostCreate() { postCreated_ = true; }

UI_Node::UI_Node() = default;

UI_Node::~UI_Node() {
    // Children go last-first, so that a child never outlives a sibling it was added after.
    while (!children_.empty()) {
        children_.pop_back();
    }
}

UI_Node* UI_Node::UI_GetChild(std::size_t index) const noexcept {
    return index < children_.size() ? children_[index].get() : nullptr;
}

UI_Node* UI_Node::UI_AddChild(std::unique_ptr<UI_Node> child) {
    if (!child) {
        return nullptr;
    }
    child->parent_ = this;
    children_.push_back(std::move(child));
    UI_Node* added = children_.back().get();
    added->UI_NodeChanged(NodeChange{NodeChange::kAdded});
    return added;
}

std::unique_ptr<UI_Node> UI_Node::UI_RemoveChild(UI_Node* child) {
    auto it = std::find_if(children_.begin(), children_.end(),
                           [child](const std::unique_ptr<UI_Node>& c) { return c.get() == child; });
    if (it == children_.end()) {
        return nullptr;
    }
    std::unique_ptr<UI_Node> removed = std::move(*it);
    children_.erase(it);
    removed->parent_ = nullptr;
    return removed;
}

void UI_Node::UI_SetBounds(const RectT<float>& bounds) {
    const bool resized = bounds.width != bounds_.width || bounds.height != bounds_.height;
    bounds_ = bounds;
    if (resized) {
        UI_LocalRectChanged(UI_GetLocalRectF());
    }
}

PointT<int> UI_Node::UI_LocalToGlobal(const PointT<int>& local) const {
    double x = local.x;
    double y = local.y;
    for (const UI_Node* node = this; node != nullptr; node = node->parent_) {
        x += node->bounds_.x;
        y += node->bounds_.y;
    }
    return {static_cast<int>(x), static_cast<int>(y)};
}

void UI_Node::UI_Show(bool show) { shown_ = show; }

bool UI_Node::UI_IsVisible() const {
    if (!shown_) {
        return false;
    }
    return parent_ == nullptr || parent_->UI_IsVisible();
}

void UI_Node::UI_NodeChanged(const NodeChange& change) {
    if (change.kind == NodeChange::kAdded || change.kind == NodeChange::kRemoved) {
        return; // concerns this node only
    }
    for (const auto& child : children_) {
        child->UI_NodeChanged(change);
    }
}

void UI_Node::UI_LocalRectChanged(const RectT<float>&) {}

void UI_Node::UI_Invalidate(const RectT<float>*, std::uint32_t) { ++invalidations_; }

} // namespace kitui::ui
