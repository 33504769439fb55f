// One step of the viewer's undo history that changes the list of layers rather than a
// layer's values: a layer deleted, moved up or down the stack, hidden or shown. The step
// holds what it does and what undoes it; pushing it onto the history does it.
#pragma once

#include <functional>

#include <QUndoCommand>

namespace qzview {

class LayerListEdit : public QUndoCommand {
public:
    using Action = std::function<void()>;

    LayerListEdit(const QString& text, Action redo, Action undo);

    void undo() override;
    void redo() override;

private:
    Action redo_;
    Action undo_;
};

} // namespace qzview
