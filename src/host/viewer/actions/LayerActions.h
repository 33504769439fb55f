// The Layer menu: New Camera, New Rectangle Mask, the 3-D switch and Reset Transform. As
// the menu opens, each is enabled (and the switch checked) for the selected layer.
#pragma once

#include "ActionSet.h"

namespace qzview {

class LayerEditor;

class LayerActions : public ActionSet {
    Q_OBJECT
public:
    /// The actions edit through `editor`.
    LayerActions(LayerEditor& editor, QWidget& window);

private:
    /// Enables and checks the items for the selected layer.
    void FollowSelection();

    LayerEditor& editor_;
    QAction* mask_ = nullptr;
    QAction* threeD_ = nullptr;
    QAction* reset_ = nullptr;
};

} // namespace qzview
