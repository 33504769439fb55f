#include "ScrubNumber.h"

#include <cmath>

#include <QKeyEvent>
#include <QMouseEvent>

namespace qzview {

namespace {
/// Screen pixels that a press must travel before it counts as a scrub, not a click.
constexpr double kScrubThreshold = 3.0;
} // namespace

ScrubNumber::ScrubNumber(double step, QWidget* parent) : QLineEdit(parent), step_(step) {
    setAlignment(Qt::AlignRight);
    setCursor(Qt::SizeHorCursor);
    setFrame(false);
    setMaximumWidth(72);
    // A press must not give the field the focus before it is seen: the field takes it
    // itself when the press turns out to be a click, and a press on a focused field is
    // the person editing the text.
    setFocusPolicy(Qt::TabFocus);
    setToolTip(tr("Drag left or right to change (Shift: x10, Ctrl: x0.1); click to type"));
    connect(this, &QLineEdit::returnPressed, this, &ScrubNumber::Commit);
    ShowValue();
}

void ScrubNumber::ShowValue() {
    setText(QString::number(value_, 'f', 1));
}

void ScrubNumber::SetValue(double value) {
    value_ = value;
    if (!hasFocus()) {
        ShowValue();
    }
}

void ScrubNumber::Commit() {
    bool ok = false;
    const double typed = text().trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(typed)) {
        // Not a number: the field shows the value it had.
        ShowValue();
        return;
    }
    if (typed != value_) {
        value_ = typed;
        emit this->typed(typed);
    }
    ShowValue();
    selectAll();
}

void ScrubNumber::mousePressEvent(QMouseEvent* event) {
    if (hasFocus() || event->button() != Qt::LeftButton) {
        QLineEdit::mousePressEvent(event);
        return;
    }
    pressed_ = true;
    scrubbing_ = false;
    pressX_ = event->globalPosition().x();
    scrubFrom_ = value_;
    event->accept();
}

void ScrubNumber::mouseMoveEvent(QMouseEvent* event) {
    if (!pressed_) {
        QLineEdit::mouseMoveEvent(event);
        return;
    }
    const double moved = event->globalPosition().x() - pressX_;
    if (!scrubbing_ && std::abs(moved) < kScrubThreshold) {
        return;
    }
    if (!scrubbing_) {
        scrubbing_ = true;
        emit scrubStarted();
    }
    double factor = 1.0;
    if (event->modifiers() & Qt::ShiftModifier) {
        factor = 10.0;
    } else if (event->modifiers() & Qt::ControlModifier) {
        factor = 0.1;
    }
    const double value = scrubFrom_ + std::round(moved) * step_ * factor;
    if (value != value_) {
        value_ = value;
        ShowValue();
        emit scrubbed(value);
    }
}

void ScrubNumber::mouseReleaseEvent(QMouseEvent* event) {
    if (!pressed_) {
        QLineEdit::mouseReleaseEvent(event);
        return;
    }
    pressed_ = false;
    if (scrubbing_) {
        scrubbing_ = false;
        emit scrubFinished();
        return;
    }
    // A click: type a value.
    setFocus(Qt::MouseFocusReason);
    selectAll();
}

void ScrubNumber::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        ShowValue();
        clearFocus();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void ScrubNumber::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // Leaving the field without Enter drops what was typed.
    ShowValue();
}

} // namespace qzview
