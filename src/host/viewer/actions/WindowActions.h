// The Window menu: the plug-in's commands, listed again each time the menu is about to
// show after the plug-in's update-menu hook has enabled and checked them (the Info panel's
// command with Ctrl+8), then the switches of the viewer's own docks, and Reset Layout.
#pragma once

#include <QList>

#include "ActionSet.h"

class QDockWidget;

namespace qzhost::pixelview {
class PixelViewHost;
}

namespace qzview {

class DockWorkspace;

class WindowActions : public ActionSet {
    Q_OBJECT
public:
    /// The commands run in `host`'s plug-in; after one, `docks` tell the panels what they
    /// show. `ownDocks` are listed by their switches under the commands.
    WindowActions(qzhost::pixelview::PixelViewHost& host, DockWorkspace& docks,
                  QList<QDockWidget*> ownDocks, QWidget& window);

signals:
    /// A command of the plug-in ran: what it changed is due on the screen.
    void commandRun();
    /// Reset Layout: the docks are to go back to the default layout.
    void resetLayoutChosen();

private:
    /// Runs the update-menu hook and lists the plug-in's items as it left them.
    void Update();

    qzhost::pixelview::PixelViewHost& host_;
    DockWorkspace& docks_;
    QList<QDockWidget*> ownDocks_;
    /// Kept by the set: the menu is cleared and listed again each time it shows.
    QAction* resetLayout_ = nullptr;
};

} // namespace qzview
