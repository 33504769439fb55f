#include "DockWorkspace.h"

#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <QMenu>

#include "DockTitleBar.h"
#include "PanelWidget.h"
#include "QtText.h"

namespace qzview {

DockWorkspace::DockWorkspace(QMainWindow& window, double scale)
    : QObject(&window), window_(window), scale_(scale) {
    window_.installEventFilter(this);
    connect(&window_, &QMainWindow::tabifiedDockWidgetActivated, this, [this] { UpdateAnswers(); });
    qzhost::WorkspaceModel::Get().SetWindows(this);
}

DockWorkspace::~DockWorkspace() {
    qzhost::WorkspaceModel::Get().SetWindows(nullptr);
}

QDockWidget* DockWorkspace::FindDock(const std::string& tab_type) const {
    auto it = tabs_.find(tab_type);
    return it == tabs_.end() ? nullptr : it->second.dock;
}

PanelWidget* DockWorkspace::Panel(const std::string& tab_type) const {
    auto it = tabs_.find(tab_type);
    return it == tabs_.end() ? nullptr : it->second.panel;
}

DockTitleBar* DockWorkspace::TitleBar(const std::string& tab_type) const {
    auto it = tabs_.find(tab_type);
    return it == tabs_.end() ? nullptr : it->second.titleBar;
}

QDockWidget* DockWorkspace::Dock(const std::string& tab_type) {
    Tab& tab = tabs_[tab_type];
    if (tab.dock != nullptr) {
        return tab.dock;
    }
    auto* dock = new QDockWidget(&window_);
    dock->setObjectName(QString::fromStdString("dock." + tab_type));
    dock->setAttribute(Qt::WA_DeleteOnClose, false);
    dock->hide();
    window_.addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->hide();
    tab.dock = dock;

    const auto follow = [this, tab_type] { UpdateAnswers(tab_type); };
    connect(dock, &QDockWidget::visibilityChanged, this, follow);
    connect(dock, &QDockWidget::topLevelChanged, this, follow);
    connect(dock, &QDockWidget::dockLocationChanged, this, [this] { UpdateAnswers(); });
    // The dock's close button closes the tab: the panel goes, as in the workspace.
    dock->installEventFilter(this);
    return dock;
}

void DockWorkspace::TabOpened(const std::string& tab_type, qzhost::TabFrame& frame) {
    QDockWidget* dock = Dock(tab_type);
    Tab& tab = tabs_[tab_type];
    QString title = QString::fromStdString(tab_type);
    if (frame.UI_GetChildCount() > 0) {
        if (const auto* panel =
                dynamic_cast<const kitworkspace::workspace::TabPanel*>(frame.UI_GetChild(0))) {
            title = ToQString(panel->GetTitle());
        }
    }
    dock->setWindowTitle(title);
    if (tab.titleBar == nullptr) {
        tab.titleBar = new DockTitleBar(*dock, tab_type, title);
        dock->setTitleBarWidget(tab.titleBar);
        connect(tab.titleBar, &DockTitleBar::flyoutChosen, this, &DockWorkspace::panelsTouched);
    }
    tab.panel = new PanelWidget(frame, scale_, dock);
    // A right-click on the panel opens its flyout menu, as the title bar's button does.
    tab.panel->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tab.panel, &QWidget::customContextMenuRequested, tab.titleBar,
            [bar = tab.titleBar, panel = tab.panel](const QPoint& at) {
                bar->FlyoutMenu()->popup(panel->mapToGlobal(at));
            });
    connect(tab.panel, &PanelWidget::painted, this,
            [this, tab_type] { emit panelPainted(QString::fromStdString(tab_type)); });
    dock->setWidget(tab.panel);
    dock->show();
    dock->raise();
    UpdateAnswers(tab_type);
    emit panelOpened(QString::fromStdString(tab_type));
    emit panelsTouched();
}

void DockWorkspace::TabClosing(const std::string& tab_type) {
    auto it = tabs_.find(tab_type);
    if (it == tabs_.end() || it->second.panel == nullptr) {
        return;
    }
    Tab& tab = it->second;
    closing_ = true;
    tab.dock->hide();
    closing_ = false;
    tab.dock->setWidget(nullptr);
    // The widget draws the frame that is destroyed right after: it goes first.
    delete tab.panel;
    tab.panel = nullptr;
}

void DockWorkspace::ShowTab(const std::string& tab_type, bool shown) {
    QDockWidget* dock = FindDock(tab_type);
    if (dock == nullptr) {
        return;
    }
    if (shown) {
        if (window_.isMinimized()) {
            window_.showNormal();
        }
        dock->show();
        dock->raise();
    } else {
        dock->hide();
    }
    UpdateAnswers(tab_type);
}

void DockWorkspace::UpdateAnswers() {
    for (const auto& [type, tab] : tabs_) {
        if (tab.panel != nullptr) {
            UpdateAnswers(type);
        }
    }
}

void DockWorkspace::UpdateAnswers(const std::string& tab_type) {
    auto it = tabs_.find(tab_type);
    if (it == tabs_.end() || it->second.panel == nullptr) {
        return;
    }
    QDockWidget* dock = it->second.dock;
    const bool open = !dock->isHidden() && !window_.isMinimized();
    const bool stacked = !dock->isFloating() && !window_.tabifiedDockWidgets(dock).isEmpty();
    // A dock behind another tab of its group is not visible on the screen; a dock alone
    // is the front tab of its frame.
    // (Qt keeps a tab behind others visible, with nothing of it on the screen.)
    const bool front = !stacked || !dock->visibleRegion().isEmpty();
    const qzhost::TabState before = qzhost::WorkspaceModel::Get().State(tab_type);
    qzhost::WorkspaceModel::Get().SetAnswers(tab_type, open, front, stacked);
    if (!before.Visible() && qzhost::WorkspaceModel::Get().State(tab_type).Visible()) {
        it->second.panel->RedrawAll();
    }
    emit panelsTouched();
}

bool DockWorkspace::FlushPanels() {
    bool any = false;
    for (const auto& [type, tab] : tabs_) {
        if (tab.panel != nullptr) {
            any = tab.panel->Flush() || any;
        }
    }
    return any;
}

bool DockWorkspace::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::WindowStateChange) {
        UpdateAnswers();
    } else if (event->type() == QEvent::Close && !closing_) {
        for (const auto& [type, tab] : tabs_) {
            if (tab.dock == watched && tab.panel != nullptr) {
                const std::string closed = type;
                // The model closes the tab; TabClosing hides the dock.
                qzhost::WorkspaceModel::Get().Close(closed);
                emit panelsTouched();
                break;
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace qzview
