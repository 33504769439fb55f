// A view that holds a panel's controls and places them by a layout document.
//
// A layout document is a property map in XML: the root element prop.map (version "4")
// holds a prop.list of prop.pair elements, each a key element and one value (string, int
// with its type and size attributes, float, array with its array.type first, or a nested
// prop.list). The layout keys: "KIT_ControlsLayout" (format version), "KIT_ControlsLayout
// Data" with "ControlList" (one "Control-<n>" entry per control, each with
// "ControlClassName", e.g. "class kitui::controls::UI_StaticText", and "ControlRect", four
// floats x, y, width, height) and "ControlMax" (the number of controls), "LayoutSize"
// (two floats) and "Scale" ("X" and "Y").
#pragma once

#include <string>

#include "kitui/controls/UI_ControlView.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_ControlsContainer : public UI_ControlView {
public:
    explicit UI_ControlsContainer(std::uint32_t creation_flags = 0);
    ~UI_ControlsContainer() override;

    /// Places the controls by `document`. Entry Control-<n> concerns the container's
    /// child n, whatever the entry's place in the list: an existing child n must be of the
    /// named class; when the container has no child n, a control of that class is created
    /// (with this container's creation flags) and added. Each gets its rectangle. Returns
    /// the layout size (x width, y height) and keeps it and the layout scale.
    ///
    /// Raises a toolkit error (kitcore::config::Error) for a document that is not a valid
    /// layout, an unknown control class, a child of another class than the one named, or
    /// a missing layout size; the container may then be partly laid out.
    kitui::ui::PointT<float> RestoreLayout(const std::string& document);

    /// The size and scale of the last restored layout (0 by 0 and 1 by 1 before any).
    kitui::ui::PointT<float> GetLayoutSize() const noexcept { return layoutSize_; }
    kitui::ui::PointT<float> GetLayoutScale() const noexcept { return layoutScale_; }

    /// Child `index` as a control view; null when there is none or it is not a control.
    UI_ControlView* GetControl(std::size_t index) const;

private:
    kitui::ui::PointT<float> layoutSize_{0.0f, 0.0f};
    kitui::ui::PointT<float> layoutScale_{1.0f, 1.0f};
};

} // namespace kitui::controls
