#include "kitui/ui/UI_Node.h"

#include <algorithm>

#include "inkwell/CairoSurface.h"
#include "kitui/inkwell/Inkwell.h"

namespace kitui::ui {

namespace {

/// A tree keeps at most this many separate invalid rectangles; beyond it they merge into
/// their bounding rectangle.
constexpr std::size_t kMaxInvalidRects = 32;

bool IsEmpty(const RectT<float>& r) {
    return !(r.width > 0.0f) || !(r.height > 0.0f);
}

bool Contains(const RectT<float>& outer, const RectT<float>& inner) {
    return inner.x >= outer.x && inner.y >= outer.y &&
           inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

RectT<float> Union(const RectT<float>& a, const RectT<float>& b) {
    const float left = std::min(a.x, b.x);
    const float top = std::min(a.y, b.y);
    const float right = std::max(a.x + a.width, b.x + b.width);
    const float bottom = std::max(a.y + a.height, b.y + b.height);
    return {left, top, right - left, bottom - top};
}

RectT<float> Intersection(const RectT<float>& a, const RectT<float>& b) {
    const float left = std::max(a.x, b.x);
    const float top = std::max(a.y, b.y);
    const float right = std::min(a.x + a.width, b.x + b.width);
    const float bottom = std::min(a.y + a.height, b.y + b.height);
    if (right <= left || bottom <= top) {
        return {left, top, 0.0f, 0.0f};
    }
    return {left, top, right - left, bottom - top};
}

} // namespace

UI_NodeBase::~UI_NodeBase() = default;

void UI_NodeBase::UI_PostCreate() {
    postCreated_ = true;
}

namespace {
// The geometry epoch of every node tree: it moves on whenever a node moves, resizes, shows,
// hides, or is added to or removed from a parent. Node trees live on the UI thread only.
std::uint64_t gGeometryEpoch = 1;
} // namespace

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
    ++childListVersion_;
    ++gGeometryEpoch;
    // What the child's own tree still had to redraw now belongs to this tree.
    std::vector<RectT<float>> pending = std::move(child->invalid_);
    child->invalid_.clear();
    children_.push_back(std::move(child));
    UI_Node* added = children_.back().get();
    for (const RectT<float>& rect : pending) {
        added->RecordInvalid(rect);
    }
    added->UI_MarkInvalid();
    added->UI_NodeChanged(NodeChange{NodeChange::kAdded});
    return added;
}

std::unique_ptr<UI_Node> UI_Node::UI_RemoveChild(UI_Node* child) {
    auto it = std::find_if(children_.begin(), children_.end(),
                           [child](const std::unique_ptr<UI_Node>& c) { return c.get() == child; });
    if (it == children_.end()) {
        return nullptr;
    }
    if ((*it)->shown_ && UI_IsVisible()) {
        RecordInvalid((*it)->bounds_);
    }
    std::unique_ptr<UI_Node> removed = std::move(*it);
    children_.erase(it);
    ++childListVersion_;
    ++gGeometryEpoch;
    removed->parent_ = nullptr;
    return removed;
}

void UI_Node::UI_SetBounds(const RectT<float>& bounds) {
    const bool resized = bounds.width != bounds_.width || bounds.height != bounds_.height;
    const bool moved = bounds.x != bounds_.x || bounds.y != bounds_.y;
    if (resized || moved) {
        ++gGeometryEpoch;
    }
    if ((resized || moved) && parent_ != nullptr && UI_IsVisible()) {
        parent_->RecordInvalid(bounds_);
        parent_->RecordInvalid(bounds);
    }
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

void UI_Node::UI_Show(bool show) {
    if (show == shown_) {
        return;
    }
    ++gGeometryEpoch;
    // The area is dirty whether the node appears or disappears: record it while visible.
    if (!show) {
        UI_MarkInvalid();
    }
    shown_ = show;
    if (show) {
        UI_MarkInvalid();
    }
}

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

void UI_Node::UI_Invalidate(const RectT<float>* rect, std::uint32_t) {
    ++invalidations_;
    UI_MarkInvalid(rect);
}

void UI_Node::UI_MarkInvalid(const RectT<float>* rect) {
    if (rect == nullptr && markedRoot_ != nullptr && markedEpoch_ == gGeometryEpoch &&
        markedRoot_->invalidClears_ == markedClears_) {
        return; // its whole rectangle is recorded already
    }
    if (!UI_IsVisible()) {
        return;
    }
    const RectT<float> local = UI_GetLocalRectF();
    if (rect != nullptr) {
        RecordInvalid(Intersection(*rect, local));
        return;
    }
    RecordInvalid(local);
    const UI_Node* root = Root();
    markedRoot_ = root;
    markedEpoch_ = gGeometryEpoch;
    markedClears_ = root->invalidClears_;
}

UI_Node* UI_Node::Root() noexcept {
    UI_Node* node = this;
    while (node->parent_ != nullptr) {
        node = node->parent_;
    }
    return node;
}

const UI_Node* UI_Node::Root() const noexcept {
    const UI_Node* node = this;
    while (node->parent_ != nullptr) {
        node = node->parent_;
    }
    return node;
}

void UI_Node::RecordInvalid(const RectT<float>& rect) {
    if (IsEmpty(rect)) {
        return;
    }
    // Into the root's coordinates: every ancestor below the root adds its position. The
    // same walk up finds the root.
    RectT<float> inRoot = rect;
    UI_Node* node = this;
    for (; node->parent_ != nullptr; node = node->parent_) {
        inRoot.x += node->bounds_.x;
        inRoot.y += node->bounds_.y;
    }
    node->AddInvalidToRoot(inRoot);
}

void UI_Node::AddInvalidToRoot(const RectT<float>& rect) {
    for (const RectT<float>& held : invalid_) {
        if (Contains(held, rect)) {
            return;
        }
    }
    std::erase_if(invalid_, [&rect](const RectT<float>& held) { return Contains(rect, held); });
    invalid_.push_back(rect);
    if (invalid_.size() > kMaxInvalidRects) {
        RectT<float> all = invalid_.front();
        for (const RectT<float>& held : invalid_) {
            all = Union(all, held);
        }
        invalid_.assign(1, all);
    }
}

std::vector<RectT<float>> UI_Node::UI_GetInvalidRects() const {
    return Root()->invalid_;
}

RectT<float> UI_Node::UI_GetInvalidBounds() const {
    const std::vector<RectT<float>>& rects = Root()->invalid_;
    if (rects.empty()) {
        return {};
    }
    RectT<float> all = rects.front();
    for (const RectT<float>& held : rects) {
        all = Union(all, held);
    }
    return all;
}

bool UI_Node::UI_HasInvalidArea() const {
    return !Root()->invalid_.empty();
}

void UI_Node::UI_ClearInvalidArea() {
    UI_Node* root = Root();
    root->invalid_.clear();
    ++root->invalidClears_;
}

void UI_Node::UI_Draw(kitui::inkwell::Inkwell* ink) {
    UI_DrawChildren(ink);
}

void UI_Node::UI_DrawChildren(kitui::inkwell::Inkwell* ink) {
    if (ink == nullptr || ink->GetSurface() == nullptr) {
        return;
    }
    kitui::inkwell::SurfaceInterface& surface = *ink->GetSurface();
    // On the screen's drawing surface, a child outside the area being redrawn is left
    // out: drawing it (shaping its text) would change no pixel.
    const auto* cairo = dynamic_cast<const qzhost::inkwell::CairoSurface*>(&surface);
    const RectT<float> area = cairo != nullptr ? cairo->ClipExtents() : RectT<float>{};
    for (const auto& child : children_) {
        if (!child->shown_) {
            continue;
        }
        const RectT<float> bounds = child->bounds_;
        if (IsEmpty(bounds) || (cairo != nullptr && IsEmpty(Intersection(bounds, area)))) {
            continue;
        }
        surface.BeginDrawing();
        surface.Translate(bounds.x, bounds.y);
        UI_ClipToRect(child->UI_GetLocalRectF(), ink);
        child->UI_Draw(ink);
        surface.EndDrawing();
    }
}

void UI_Node::UI_ClipToRect(const RectT<float>& rect, kitui::inkwell::Inkwell* ink) {
    if (ink != nullptr && ink->GetSurface() != nullptr) {
        ink->GetSurface()->ClipToRect(rect);
    }
}

} // namespace kitui::ui
