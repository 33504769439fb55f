// View > Sample Size and View > Sample Values: how the Info palette reads the composite
// under the pointer. The size is the pixel itself (Point) or the side of the square around
// it whose mean is read (3 x 3 to 101 x 101); the values are the working ones or the ones
// the display shows (after the exposure and the display transform). Each choice is
// exclusive, checked in its submenu and kept in the host's preference file, so that the
// next start takes it up.
#pragma once

#include <QList>
#include <QObject>

class QAction;
class QMenu;

namespace qzview {

class SampleChoices : public QObject {
    Q_OBJECT
public:
    /// Adds the two submenus to `menu`, checked as the preference file has them (Point and
    /// Working when it has nothing usable).
    SampleChoices(QMenu& menu, QObject* parent);

    /// The side of the square chosen (1: the point).
    int Size() const noexcept { return size_; }
    /// Whether the displayed values are chosen.
    bool Displayed() const noexcept { return displayed_; }

signals:
    void sizeChosen(int size);
    void valuesChosen(bool displayed);

private:
    void ChooseSize(int size);
    void ChooseValues(bool displayed);

    int size_ = 1;
    bool displayed_ = false;
};

} // namespace qzview
