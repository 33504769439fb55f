#include "EditActions.h"

#include <QUndoStack>

namespace qzview {

EditActions::EditActions(QUndoStack& history, QWidget& window) : ActionSet(tr("&Edit"), window) {
    // The history's own actions: their text names the step, and they are enabled while
    // there is one.
    QAction* undo = Keep(QStringLiteral("Undo"), history.createUndoAction(this, tr("&Undo")));
    undo->setShortcut(QKeySequence::Undo);
    undo->setObjectName(QStringLiteral("edit.undo"));
    menu_->addAction(undo);
    QAction* redo = Keep(QStringLiteral("Redo"), history.createRedoAction(this, tr("&Redo")));
    redo->setShortcuts({QKeySequence::Redo, QKeySequence(Qt::CTRL | Qt::Key_Y)});
    redo->setObjectName(QStringLiteral("edit.redo"));
    menu_->addAction(redo);
}

} // namespace qzview
