// The Edit menu: Undo and Redo, which walk the history of the layer edits; Copy Pixel
// Values, which puts the Info panel's readout on the clipboard (enabled once the panel has
// been given a pixel); and Delete, which deletes the selected layer (the Delete key; the
// Layer menu lists it too).
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
    /// Copy Pixel Values, disabled until the window enables it.
    QAction* CopyPixelValuesAction() const noexcept { return copyValues_; }

signals:
    /// Copy Pixel Values was chosen.
    void copyPixelValuesChosen();

private:
    QAction* delete_ = nullptr;
    QAction* copyValues_ = nullptr;
};

} // namespace qzview
