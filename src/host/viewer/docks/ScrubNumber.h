// A number that a person scrubs or types, as in a compositor's timeline: dragging it left
// or right changes it (one unit a screen pixel, ten with Shift, a tenth with Ctrl);
// clicking it without dragging starts typing. What is typed is set on Enter, on Tab and
// when the field loses the focus; Escape drops it and puts the value back. Numbers are
// shown and read in the host's locale ("130,5" in German). Text that is not a number
// stays in the field, which turns red and says in its tooltip what is wrong, until the
// text is a number again or Escape puts the value back. A field may be given a note (a
// typed value that had to be brought into the property's range): it turns amber and
// its tooltip says why, until it is edited again.
#pragma once

#include <optional>

#include <QLineEdit>
#include <QLocale>

namespace qzview {

class ScrubNumber : public QLineEdit {
    Q_OBJECT
public:
    /// `step`: how much one screen pixel of dragging changes the value.
    explicit ScrubNumber(double step = 1.0, QWidget* parent = nullptr);

    /// Shows `value` (unless the person is typing into the field, or its text is not a
    /// number and waits to be put right).
    void SetValue(double value);
    double Value() const noexcept { return value_; }

    /// The locale in which numbers are shown and read (shown again at once).
    void SetLocale(const QLocale& locale);
    /// `text` read as a number in the field's locale (a unit after it, "%", "°" or "px",
    /// is allowed); none when it is not one.
    std::optional<double> Read(const QString& text) const;
    /// The text that shows `value` in the field's locale.
    QString Format(double value) const;

    /// Whether the text is not a number: the field is red and its tooltip says why.
    bool Invalid() const noexcept { return state_ == State::Invalid; }
    /// Whether the field carries a note (amber, the note in its tooltip).
    bool Noted() const noexcept { return state_ == State::Noted; }
    /// Gives the field the note `note` until it is edited again.
    void ShowNote(const QString& note);

signals:
    /// A scrub began.
    void scrubStarted();
    /// The value changed by scrubbing to `value`.
    void scrubbed(double value);
    /// The scrub ended.
    void scrubFinished();
    /// The person typed `value` and pressed Enter or Tab, or left the field.
    void typed(double value);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    enum class State { Plain, Invalid, Noted };

    void ShowValue();
    /// Sets what was typed, if anything; returns false when it is not a number.
    bool Commit();
    void SetState(State state, const QString& tip = {});

    double step_;
    double value_ = 0;
    QLocale locale_;
    State state_ = State::Plain;
    bool pressed_ = false;
    bool scrubbing_ = false;
    double pressX_ = 0;
    double scrubFrom_ = 0;
};

} // namespace qzview
