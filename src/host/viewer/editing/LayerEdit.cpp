#include "LayerEdit.h"

namespace qzview {

LayerEdit::LayerEdit(const QString& text, int layer_id, LayerValues before, LayerValues after,
                     Apply apply, int gesture)
    : QUndoCommand(text), layerId_(layer_id), before_(std::move(before)), after_(std::move(after)),
      apply_(std::move(apply)), gesture_(gesture) {}

void LayerEdit::undo() {
    apply_(layerId_, before_);
}

void LayerEdit::redo() {
    apply_(layerId_, after_);
}

bool LayerEdit::mergeWith(const QUndoCommand* other) {
    const auto* next = dynamic_cast<const LayerEdit*>(other);
    if (next == nullptr || next->gesture_ != gesture_ || next->layerId_ != layerId_) {
        return false;
    }
    after_ = next->after_;
    return true;
}

} // namespace qzview
