// The arrow keys nudge the selected layer: one composition pixel a press, ten with Shift.
// They do so when the key reaches the window unused, from the canvas or the window itself;
// a field being typed into, a list or a spin box keeps its own use of the arrows.
#pragma once

#include <QObject>

namespace qzview {

class LayerEditor;

class NudgeKeys : public QObject {
    Q_OBJECT
public:
    /// Watches the key presses that reach `window` and nudges through `editor`.
    NudgeKeys(LayerEditor& editor, QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    LayerEditor& editor_;
    QWidget& window_;
};

} // namespace qzview
