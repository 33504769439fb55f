// Keeps the docks of a main window at the widths a person gave them. When the window
// shrinks, Qt takes the room from the docks as well as from the middle; when it grows
// again, all of the new room goes to the middle and the docks stay narrow. The keeper
// remembers each docked dock's width as the person leaves it (when they let go of the
// separator between a dock and the middle, and when a layout is put in place), and after
// the window changes size it gives each dock that width back, as far as the window has
// room for it.
#pragma once

#include <QHash>
#include <QList>
#include <QObject>

class QDockWidget;
class QMainWindow;

namespace qzview {

class DockWidthKeeper : public QObject {
    Q_OBJECT
public:
    /// Keeps `docks` of `window` (the Info dock joins later, by Watch).
    DockWidthKeeper(QMainWindow& window, const QList<QDockWidget*>& docks);

    void Watch(QDockWidget* dock);
    /// Takes the docks' widths as they are now as the ones to keep.
    void Remember();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Gives the docks their kept widths back.
    void Restore();

    QMainWindow& window_;
    QList<QDockWidget*> docks_;
    QHash<const QDockWidget*, int> widths_;
    /// Set from a resize of the window until the docks have their widths back.
    bool restoreDue_ = false;
};

} // namespace qzview
