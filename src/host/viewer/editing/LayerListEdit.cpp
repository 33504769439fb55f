#include "LayerListEdit.h"

namespace qzview {

LayerListEdit::LayerListEdit(const QString& text, Action redo, Action undo)
    : QUndoCommand(text), redo_(std::move(redo)), undo_(std::move(undo)) {}

void LayerListEdit::undo() {
    undo_();
}

void LayerListEdit::redo() {
    redo_();
}

} // namespace qzview
