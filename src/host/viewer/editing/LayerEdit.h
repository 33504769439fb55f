// One step of the viewer's undo history: a layer's values before and after an edit (a
// drag in the viewer, a scrub or a typed value in the Layer Properties dock, a reset, the
// 3-D switch, a new mask). Undoing and redoing put values back without any readout: the
// Info panel reports edits a person makes, not the history being walked.
#pragma once

#include <functional>

#include <QUndoCommand>

#include "composition/Layer.h"

namespace qzview {

class LayerEdit : public QUndoCommand {
public:
    /// Gives layer `id` the values `values`.
    using Apply = std::function<void(int id, const LayerValues& values)>;

    /// `gesture` > 0 merges this step with the step before it when both carry the same
    /// gesture and layer (the notches of one turn of the wheel).
    LayerEdit(const QString& text, int layer_id, LayerValues before, LayerValues after, Apply apply,
              int gesture = 0);

    void undo() override;
    void redo() override;
    int id() const override { return gesture_ > 0 ? 1 : -1; }
    bool mergeWith(const QUndoCommand* other) override;

private:
    int layerId_;
    LayerValues before_;
    LayerValues after_;
    Apply apply_;
    int gesture_;
};

} // namespace qzview
