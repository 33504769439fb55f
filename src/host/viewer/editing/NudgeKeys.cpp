#include "NudgeKeys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include "LayerEditor.h"

namespace qzview {

namespace {

/// Whether `widget` takes typed text, whose arrow keys move its cursor.
bool TakesText(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(widget) != nullptr ||
           qobject_cast<const QTextEdit*>(widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

} // namespace

NudgeKeys::NudgeKeys(LayerEditor& editor, QWidget& window)
    : QObject(&window), editor_(editor), window_(window) {
    window_.installEventFilter(this);
}

bool NudgeKeys::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &window_ || event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto* key = static_cast<const QKeyEvent*>(event);
    double dx = 0;
    double dy = 0;
    switch (key->key()) {
    case Qt::Key_Left:
        dx = -1;
        break;
    case Qt::Key_Right:
        dx = 1;
        break;
    case Qt::Key_Up:
        dy = -1;
        break;
    case Qt::Key_Down:
        dy = 1;
        break;
    default:
        return false;
    }
    const Qt::KeyboardModifiers others =
        key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (others != Qt::NoModifier || TakesText(QApplication::focusWidget()) ||
        editor_.SelectedLayer() == nullptr || editor_.Dragging()) {
        return false;
    }
    const double step = (key->modifiers() & Qt::ShiftModifier) != 0 ? 10.0 : 1.0;
    editor_.Nudge(dx * step, dy * step);
    return true;
}

} // namespace qzview
