// The Tools menu: the Selection (V), Anchor Point (Y) and Rotation (W) tools, one of them
// checked, and whether the rotation tool turns a 3-D layer's Orientation.
#pragma once

#include <array>

#include "ActionSet.h"
#include "editing/LayerDrag.h"

namespace qzview {

class LayerEditor;

class ToolActions : public ActionSet {
    Q_OBJECT
public:
    /// The orientation switch is `editor`'s.
    ToolActions(LayerEditor& editor, QWidget& window);

    /// Checks the item of `tool`, whoever chose it.
    void ShowTool(Tool tool);
    /// The tools' items in the menu's order, for a toolbar.
    const std::array<QAction*, 3>& ToolList() const noexcept { return tools_; }

signals:
    /// The person chose `tool` in the menu or by its key.
    void toolChosen(qzview::Tool tool);

private:
    std::array<QAction*, 3> tools_{};
};

} // namespace qzview
