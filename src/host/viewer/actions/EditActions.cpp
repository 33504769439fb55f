#include "EditActions.h"

#include <QUndoStack>

#include "editing/LayerEditor.h"

namespace qzview {

EditActions::EditActions(LayerEditor& editor, QWidget& window) : ActionSet(tr("&Edit"), window) {
    QUndoStack& history = editor.History();
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
    menu_->addSeparator();
    copyValues_ =
        Keep(QStringLiteral("CopyPixelValues"),
             menu_->addAction(tr("Copy &Pixel Values"), this, &EditActions::copyPixelValuesChosen));
    copyValues_->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    copyValues_->setObjectName(QStringLiteral("edit.copyPixelValues"));
    copyValues_->setToolTip(tr("Copies the Info panel's values and position as text and JSON"));
    copyValues_->setEnabled(false);
    menu_->addSeparator();
    // A field being typed into takes the Delete key for its text before the shortcut sees it.
    delete_ = Keep(QStringLiteral("Delete"),
                   menu_->addAction(tr("&Delete"), &editor, &LayerEditor::DeleteSelected));
    delete_->setShortcuts({QKeySequence(Qt::Key_Delete), QKeySequence(Qt::Key_Backspace)});
    delete_->setObjectName(QStringLiteral("edit.delete"));
    const auto follow = [this, &editor] { delete_->setEnabled(editor.SelectedLayer() != nullptr); };
    connect(&editor, &LayerEditor::selectionChanged, this, follow);
    connect(&editor, &LayerEditor::layersChanged, this, follow);
    follow();
}

} // namespace qzview
