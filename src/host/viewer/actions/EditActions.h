// The Edit menu: Undo and Redo, which walk the history of the layer edits, and Delete,
// which deletes the selected layer (the Delete key; the Layer menu lists it too).
#pragma once

#include "ActionSet.h"

namespace qzview {

class LayerEditor;

class EditActions : public ActionSet {
    Q_OBJECT
public:
    EditActions(LayerEditor& editor, QWidget& window);

    /// Delete, enabled while a layer is selected.
    QAction* DeleteAction() const noexcept { return delete_; }

private:
    QAction* delete_ = nullptr;
};

} // namespace qzview
