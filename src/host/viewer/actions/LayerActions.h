// The Layer menu: New Camera, New Rectangle Mask, the 3-D switch, Reset Transform, and the
// selected layer's place in the stack: Bring Forward (Ctrl+]), Send Backward (Ctrl+[) and
// Delete (the Edit menu's action). As the menu opens, each is enabled (and the switch
// checked) for the selected layer; the actions with keys follow the selection at once, so
// that their keys work with the menu closed.
#pragma once

#include "ActionSet.h"

namespace qzview {

class LayerEditor;

class LayerActions : public ActionSet {
    Q_OBJECT
public:
    /// The actions edit through `editor`; `remove` is the Edit menu's Delete, listed here
    /// too.
    LayerActions(LayerEditor& editor, QWidget& window, QAction* remove);

private:
    /// Enables and checks the items for the selected layer.
    void FollowSelection();

    LayerEditor& editor_;
    QAction* mask_ = nullptr;
    QAction* threeD_ = nullptr;
    QAction* reset_ = nullptr;
    QAction* forward_ = nullptr;
    QAction* backward_ = nullptr;
};

} // namespace qzview
