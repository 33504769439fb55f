// The Edit menu: Undo and Redo, which walk the history of the layer edits.
#pragma once

#include "ActionSet.h"

class QUndoStack;

namespace qzview {

class EditActions : public ActionSet {
    Q_OBJECT
public:
    EditActions(QUndoStack& history, QWidget& window);
};

} // namespace qzview
