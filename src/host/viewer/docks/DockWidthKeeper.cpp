#include "DockWidthKeeper.h"

#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <QTimer>

namespace qzview {

DockWidthKeeper::DockWidthKeeper(QMainWindow& window, const QList<QDockWidget*>& docks)
    : QObject(&window), window_(window) {
    window_.installEventFilter(this);
    for (QDockWidget* dock : docks) {
        Watch(dock);
    }
}

void DockWidthKeeper::Watch(QDockWidget* dock) {
    if (dock == nullptr || docks_.contains(dock)) {
        return;
    }
    docks_.append(dock);
    connect(dock, &QObject::destroyed, this, [this, dock] {
        docks_.removeAll(dock);
        widths_.remove(dock);
    });
}

void DockWidthKeeper::Remember() {
    for (QDockWidget* dock : docks_) {
        if (!dock->isFloating() && dock->isVisible()) {
            widths_.insert(dock, dock->width());
        }
    }
}

bool DockWidthKeeper::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &window_) {
        return QObject::eventFilter(watched, event);
    }
    if (event->type() == QEvent::Resize && !restoreDue_) {
        restoreDue_ = true;
        // After Qt's own layout of the new size.
        QTimer::singleShot(0, this, &DockWidthKeeper::Restore);
    } else if (event->type() == QEvent::MouseButtonRelease) {
        // The separators between the docks and the middle belong to the window: a person
        // let go of one.
        QTimer::singleShot(0, this, &DockWidthKeeper::Remember);
    }
    return QObject::eventFilter(watched, event);
}

void DockWidthKeeper::Restore() {
    QList<QDockWidget*> docks;
    QList<int> widths;
    for (QDockWidget* dock : docks_) {
        const int kept = widths_.value(dock, 0);
        const Qt::DockWidgetArea area = window_.dockWidgetArea(dock);
        const bool beside = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
        if (kept > 0 && beside && !dock->isFloating() && dock->isVisible() &&
            dock->width() != kept) {
            docks.append(dock);
            widths.append(kept);
        }
    }
    if (!docks.isEmpty()) {
        // Qt gives each as much of it as the window has room for.
        window_.resizeDocks(docks, widths, Qt::Horizontal);
    }
    restoreDue_ = false;
}

} // namespace qzview
