// The docking workspace of the viewer: each tab of the host's workspace model lives in a
// QDockWidget of the main window. The docks answer the visibility questions that the
// panels ask: a tab is shown while its dock is open and the window is not minimised, it is
// the front tab while its dock is the raised tab of its group (or alone), and its frame is
// stacked while the dock is tabbed together with another dock. The answers are written
// back to the model whenever Qt reports a change, so that a panel that becomes visible is
// told and runs its pending updates.
#pragma once

#include <map>
#include <string>

#include <QObject>

#include "qzhost/WorkspaceModel.h"

class QDockWidget;
class QMainWindow;

namespace qzview {

class DockTitleBar;
class PanelWidget;

class DockWorkspace : public QObject, public qzhost::WorkspaceWindows {
    Q_OBJECT
public:
    /// Docks go into `window`; panels are drawn at UI scale `scale`.
    DockWorkspace(QMainWindow& window, double scale);
    ~DockWorkspace() override;

    /// The dock of a tab type, made (empty and hidden) when there is none yet, so that a
    /// saved layout can place it before its panel exists.
    QDockWidget* Dock(const std::string& tab_type);
    /// The dock of a tab type, or null.
    QDockWidget* FindDock(const std::string& tab_type) const;
    /// The panel widget of an open tab, or null.
    PanelWidget* Panel(const std::string& tab_type) const;
    DockTitleBar* TitleBar(const std::string& tab_type) const;

    /// Reads every open tab's answers from its dock and writes them to the model.
    void UpdateAnswers();
    /// Draws what the panels marked invalid; returns whether any panel was drawn.
    bool FlushPanels();

    // WorkspaceWindows
    void TabOpened(const std::string& tab_type, qzhost::TabFrame& frame) override;
    void TabClosing(const std::string& tab_type) override;
    void ShowTab(const std::string& tab_type, bool shown) override;

signals:
    /// A panel may have changed: its drawing is due.
    void panelsTouched();
    /// A panel was created in its dock (at the first start, or again after it was closed).
    void panelOpened(const QString& tab_type);
    /// A panel was painted on the screen.
    void panelPainted(const QString& tab_type);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Tab {
        QDockWidget* dock = nullptr;
        DockTitleBar* titleBar = nullptr;
        PanelWidget* panel = nullptr;
    };
    void UpdateAnswers(const std::string& tab_type);

    QMainWindow& window_;
    double scale_;
    std::map<std::string, Tab> tabs_;
    /// Set while the model closes a tab, so that the dock's own close does not ask the
    /// model to close it again.
    bool closing_ = false;
};

} // namespace qzview
