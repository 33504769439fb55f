#include "DockLayout.h"

#include <string>

#include <QDockWidget>
#include <QMainWindow>

#include "DockWorkspace.h"
#include "host/PREF_Preferences.h"
#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"

namespace qzview::DockLayout {

namespace {

using qzhost::script::kInfoTabType;

void Put(const char* key, long value) {
    (void)PREF_SetTextPrefLong(PREF_GetPrefHandle(PREF_TYPE_TEXT), kSection, key, value);
}

long Get(const char* key, long fallback) {
    long value = fallback;
    if (PREF_GetTextPrefLong(PREF_GetPrefHandle(PREF_TYPE_TEXT), kSection, key, fallback, &value) !=
        0) {
        return fallback;
    }
    return value;
}

Qt::DockWidgetArea Area(long value, Qt::DockWidgetArea fallback) {
    switch (value) {
    case Qt::LeftDockWidgetArea:
    case Qt::RightDockWidgetArea:
    case Qt::TopDockWidgetArea:
    case Qt::BottomDockWidgetArea:
        return static_cast<Qt::DockWidgetArea>(value);
    default:
        return fallback;
    }
}

/// Whether a dock of the left side (the Project and Layer Properties docks) is open, its
/// area and whether it floats, under the keys `name`_open, `name`_area, `name`_floating.
void SaveDock(const QMainWindow& window, const std::string& name, QDockWidget* dock) {
    Put((name + "_open").c_str(), dock->isHidden() ? 0 : 1);
    Put((name + "_area").c_str(), window.dockWidgetArea(dock));
    Put((name + "_floating").c_str(), dock->isFloating() ? 1 : 0);
}

void RestoreDock(QMainWindow& window, const std::string& name, QDockWidget* dock) {
    window.addDockWidget(Area(Get((name + "_area").c_str(), 0), Qt::LeftDockWidgetArea), dock);
    dock->setFloating(Get((name + "_floating").c_str(), 0) == 1);
    dock->setVisible(Get((name + "_open").c_str(), 1) == 1);
}

} // namespace

void Save(QMainWindow& window, DockWorkspace& docks, QDockWidget* project, QDockWidget* layers) {
    const QRect geometry = window.normalGeometry();
    Put("window_x", geometry.x());
    Put("window_y", geometry.y());
    Put("window_width", geometry.width());
    Put("window_height", geometry.height());
    QDockWidget* info = docks.FindDock(kInfoTabType);
    const bool infoOpen =
        info != nullptr && docks.Panel(kInfoTabType) != nullptr && !info->isHidden();
    Put("info_open", infoOpen ? 1 : 0);
    if (info != nullptr) {
        Put("info_area", window.dockWidgetArea(info));
        Put("info_floating", info->isFloating() ? 1 : 0);
        const bool tabbed = window.tabifiedDockWidgets(info).contains(project);
        Put("info_tabbed", tabbed ? 1 : 0);
        Put("info_front", !tabbed || info->isVisible() ? 1 : 0);
        const bool withLayers = window.tabifiedDockWidgets(info).contains(layers);
        Put("layers_tabbed", withLayers ? 1 : 0);
        Put("layers_front", withLayers && !layers->visibleRegion().isEmpty() ? 1 : 0);
    }
    SaveDock(window, "project", project);
    SaveDock(window, "layers", layers);
    Put("saved", 1);
}

void Restore(QMainWindow& window, DockWorkspace& docks, QDockWidget* project, QDockWidget* layers) {
    const bool saved = Get("saved", 0) == 1;
    if (saved) {
        const long width = Get("window_width", 0);
        const long height = Get("window_height", 0);
        if (width > 100 && height > 100) {
            window.setGeometry(static_cast<int>(Get("window_x", 0)),
                               static_cast<int>(Get("window_y", 0)), static_cast<int>(width),
                               static_cast<int>(height));
        }
        RestoreDock(window, "project", project);
        RestoreDock(window, "layers", layers);
    }
    if (saved && Get("info_open", 1) != 1) {
        return;
    }
    // The Info dock comes back as the user opens it: through the plug-in's tab creator.
    qzhost::WorkspaceModel::Get().Open(kInfoTabType);
    QDockWidget* info = docks.FindDock(kInfoTabType);
    if (info == nullptr || !saved) {
        return;
    }
    window.addDockWidget(Area(Get("info_area", 0), Qt::RightDockWidgetArea), info);
    info->setFloating(Get("info_floating", 0) == 1);
    info->show();
    if (Get("info_tabbed", 0) == 1 && !project->isHidden()) {
        window.tabifyDockWidget(project, info);
        (Get("info_front", 1) == 1 ? info : project)->raise();
    } else if (Get("layers_tabbed", 0) == 1 && !layers->isHidden()) {
        window.tabifyDockWidget(info, layers);
        (Get("layers_front", 0) == 1 ? layers : info)->raise();
    }
}

} // namespace qzview::DockLayout
