#include "ScrubNumber.h"

#include <cmath>

#include <QKeyEvent>
#include <QMouseEvent>

namespace qzview {

namespace {
/// Screen pixels that a press must travel before it counts as a scrub, not a click.
constexpr double kScrubThreshold = 3.0;

/// The field's colours for text that is not a number, and for a note.
const char* const kInvalidStyle = "QLineEdit { background-color: #f3b6b6; color: #7a0000; }";
const char* const kNotedStyle = "QLineEdit { background-color: #f7dc8f; }";

/// Numbers are written without group separators, and a separator typed is not a number
/// ("1.305" in German would otherwise read as 1305).
QLocale FieldLocale(QLocale locale) {
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    return locale;
}
} // namespace

ScrubNumber::ScrubNumber(double step, QWidget* parent)
    : QLineEdit(parent), step_(step), locale_(FieldLocale(QLocale::c())) {
    setAlignment(Qt::AlignRight);
    setCursor(Qt::SizeHorCursor);
    setFrame(false);
    setMaximumWidth(72);
    // A press must not give the field the focus before it is seen: the field takes it
    // itself when the press turns out to be a click, and a press on a focused field is
    // the person editing the text.
    setFocusPolicy(Qt::TabFocus);
    SetState(State::Plain);
    connect(this, &QLineEdit::returnPressed, this, [this] {
        if (Commit()) {
            selectAll();
        }
    });
    // Text put right clears the red at once; any edit ends a note.
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (state_ == State::Noted || (state_ == State::Invalid && Read(text))) {
            SetState(State::Plain);
        }
    });
    ShowValue();
}

void ScrubNumber::SetLocale(const QLocale& locale) {
    locale_ = FieldLocale(locale);
    if (!hasFocus() && state_ != State::Invalid) {
        ShowValue();
    }
}

QString ScrubNumber::Format(double value) const {
    return locale_.toString(value, 'f', 1);
}

std::optional<double> ScrubNumber::Read(const QString& text) const {
    QString number = text.trimmed();
    for (const QString& unit : {QStringLiteral("%"), QStringLiteral("°"), QStringLiteral("px")}) {
        if (number.endsWith(unit)) {
            number = number.chopped(unit.size()).trimmed();
            break;
        }
    }
    bool ok = false;
    const double value = locale_.toDouble(number, &ok);
    if (!ok || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

void ScrubNumber::ShowValue() {
    setText(Format(value_));
}

void ScrubNumber::SetValue(double value) {
    // A focused field whose text still shows its value (nothing typed since it was set)
    // follows the value too: an undo after Enter, say.
    const bool untouched = text() == Format(value_);
    value_ = value;
    if (state_ == State::Invalid || (hasFocus() && !untouched)) {
        return;
    }
    ShowValue();
    if (hasFocus()) {
        selectAll();
    }
}

void ScrubNumber::SetState(State state, const QString& tip) {
    state_ = state;
    switch (state) {
    case State::Plain:
        setStyleSheet(QString());
        setToolTip(tr("Drag left or right to change (Shift: x10, Ctrl: x0.1); click to type"));
        break;
    case State::Invalid:
        setStyleSheet(QString::fromLatin1(kInvalidStyle));
        setToolTip(tip);
        break;
    case State::Noted:
        setStyleSheet(QString::fromLatin1(kNotedStyle));
        setToolTip(tip);
        break;
    }
}

void ScrubNumber::ShowNote(const QString& note) {
    SetState(State::Noted, note);
}

bool ScrubNumber::Commit() {
    if (text() == Format(value_)) {
        // Nothing typed (or the value typed again).
        if (state_ == State::Invalid) {
            SetState(State::Plain);
        }
        return true;
    }
    const std::optional<double> number = Read(text());
    if (!number) {
        SetState(State::Invalid,
                 tr("\"%1\" is not a number: type one such as %2 (Escape puts back %3)")
                     .arg(text().trimmed(), locale_.toString(12.5, 'f', 1), Format(value_)));
        return false;
    }
    SetState(State::Plain);
    value_ = *number;
    emit typed(*number);
    // The value that the property took (brought into its range, say), as it came back.
    ShowValue();
    return true;
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
        // A scrub replaces whatever the field said.
        SetState(State::Plain);
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
        SetState(State::Plain);
        ShowValue();
        clearFocus();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void ScrubNumber::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // Leaving the field sets what was typed, as Enter does; a context menu opening over
    // the field is not leaving it.
    if (event->reason() != Qt::PopupFocusReason) {
        Commit();
    }
}

} // namespace qzview
