// A number that a person scrubs or types, as in a compositor's timeline: dragging it left
// or right changes it (one unit a screen pixel, ten with Shift, a tenth with Ctrl);
// clicking it without dragging starts typing, and Enter sets the typed value (Escape
// leaves it as it was).
#pragma once

#include <QLineEdit>

namespace qzview {

class ScrubNumber : public QLineEdit {
    Q_OBJECT
public:
    /// `step`: how much one screen pixel of dragging changes the value.
    explicit ScrubNumber(double step = 1.0, QWidget* parent = nullptr);

    /// Shows `value` (unless the person is typing into the field).
    void SetValue(double value);
    double Value() const noexcept { return value_; }

signals:
    /// A scrub began.
    void scrubStarted();
    /// The value changed by scrubbing to `value`.
    void scrubbed(double value);
    /// The scrub ended.
    void scrubFinished();
    /// The person typed `value` and pressed Enter.
    void typed(double value);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void ShowValue();
    void Commit();

    double step_;
    double value_ = 0;
    bool pressed_ = false;
    bool scrubbing_ = false;
    double pressX_ = 0;
    double scrubFrom_ = 0;
};

} // namespace qzview
