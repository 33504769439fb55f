// The UI toolkit's node tree: every window, panel and control is a node. A node owns its
// children; bounds are in the parent's coordinates.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "kitui/ui/Geometry.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {
class Inkwell;
}

namespace kitui::ui {

/// What happened to a node, sent down the tree with UI_NodeChanged.
struct NodeChange {
    enum Kind : std::int32_t {
        kAdded = 1,
        kRemoved = 2,
        /// The node's window has become visible to the user.
        kBecameVisible = 3,
        kBoundsChanged = 4,
    };
    std::int32_t kind = 0;
};

class QZ_HOST_API UI_NodeBase {
public:
    virtual ~UI_NodeBase();
    /// [ui-thread] Called once by the creator of a node after its construction.
    virtual void UI_PostCreate();
    bool UI_IsPostCreated() const noexcept { return postCreated_; }

protected:
    bool postCreated_ = false;
};

class QZ_HOST_API UI_Node : public UI_NodeBase {
public:
    UI_Node();
    ~UI_Node() override;
    UI_Node(const UI_Node&) = delete;
    UI_Node& operator=(const UI_Node&) = delete;

    // Tree. [ui-thread] for all of them.
    UI_Node* UI_GetParent() const noexcept { return parent_; }
    std::size_t UI_GetChildCount() const noexcept { return children_.size(); }
    UI_Node* UI_GetChild(std::size_t index) const noexcept;
    /// Adds `child` as the last child and takes ownership of it.
    UI_Node* UI_AddChild(std::unique_ptr<UI_Node> child);
    /// Removes `child` and hands its ownership back (null when it is not a child).
    std::unique_ptr<UI_Node> UI_RemoveChild(UI_Node* child);
    /// A number that changes whenever a child is added or removed: a caller that keeps
    /// pointers to the children knows from it when to look them up again.
    std::uint64_t UI_GetChildListVersion() const noexcept { return childListVersion_; }

    // Geometry.
    RectT<float> UI_GetBounds() const noexcept { return bounds_; }
    /// Sets the bounds in the parent's coordinates; UI_LocalRectChanged follows when the
    /// size changed.
    void UI_SetBounds(const RectT<float>& bounds);
    /// The node's own rectangle: origin 0, 0 and the bounds' size.
    RectT<float> UI_GetLocalRectF() const noexcept { return {0, 0, bounds_.width, bounds_.height}; }
    /// A local point in the coordinates of the root of the tree.
    PointT<int> UI_LocalToGlobal(const PointT<int>& local) const;

    // Visibility.
    virtual void UI_Show(bool show);
    /// The node's own shown flag.
    bool UI_IsShown() const noexcept { return shown_; }
    /// Shown, and every ancestor shown.
    virtual bool UI_IsVisible() const;

    /// Tells the node and then its children what happened.
    virtual void UI_NodeChanged(const NodeChange& change);
    /// The node's size changed; `local` is its new local rectangle.
    virtual void UI_LocalRectChanged(const RectT<float>& local);

    /// Records that the node (or `rect` of it, in local coordinates) must be redrawn.
    /// The area is added to the invalid area of the tree when the node is visible; the
    /// count below grows in every case.
    void UI_Invalidate(const RectT<float>* rect = nullptr, std::uint32_t flags = 0);
    /// How many times the node was invalidated since it was made.
    std::uint64_t UI_InvalidationCount() const noexcept { return invalidations_; }

    // Invalid area of the tree that this node belongs to: the rectangles that must be
    // redrawn, in the local coordinates of the tree's root. Invalidation, showing and
    // hiding, and moving or resizing a visible node add to it; the host reads it before
    // it redraws and then clears it. [ui-thread] for all of them.
    std::vector<RectT<float>> UI_GetInvalidRects() const;
    /// The smallest rectangle holding every invalid rectangle (empty when none).
    RectT<float> UI_GetInvalidBounds() const;
    bool UI_HasInvalidArea() const;
    void UI_ClearInvalidArea();

    // Drawing. [ui-thread] for all of them.
    /// Draws the node in its local coordinates with the drawing context `ink`, then its
    /// shown children. The base has nothing of its own to draw: it draws the children.
    virtual void UI_Draw(kitui::inkwell::Inkwell* ink);
    /// Draws every shown child, in order, each translated to its bounds and clipped to
    /// its local rectangle.
    void UI_DrawChildren(kitui::inkwell::Inkwell* ink);
    /// Narrows the clip of `ink`'s surface to `rect`, in the surface's current units.
    static void UI_ClipToRect(const RectT<float>& rect, kitui::inkwell::Inkwell* ink);

protected:
    /// Adds the node's area (or `rect` of it, in local coordinates) to the tree's invalid
    /// area when the node is visible, without counting an invalidation: for changes that
    /// the toolkit itself makes to a node.
    void UI_MarkInvalid(const RectT<float>* rect = nullptr);

private:
    UI_Node* Root() noexcept;
    const UI_Node* Root() const noexcept;
    /// Adds `rect`, in this node's local coordinates, to the tree's invalid area.
    void RecordInvalid(const RectT<float>& rect);
    void AddInvalidToRoot(const RectT<float>& rect);

    UI_Node* parent_ = nullptr;
    std::vector<std::unique_ptr<UI_Node>> children_;
    RectT<float> bounds_{};
    bool shown_ = true;
    std::uint64_t invalidations_ = 0;
    std::uint64_t childListVersion_ = 0;
    // A node that recorded its whole local rectangle remembers when: while no node moved,
    // resized, showed, hid or changed parent since (the tree's geometry epoch) and its
    // root has not cleared its invalid area (the root's clear count), that rectangle is
    // still recorded, and marking the node again changes nothing.
    const UI_Node* markedRoot_ = nullptr;
    std::uint64_t markedEpoch_ = 0;
    std::uint64_t markedClears_ = 0;
    /// Held by the root of a tree only: how often its invalid area was cleared or handed on.
    std::uint64_t invalidClears_ = 0;
    /// Held by the root of a tree only.
    std::vector<RectT<float>> invalid_;
};

} // namespace kitui::ui
