#include "DockLayout.h"

#include <optional>
#include <string>

#include <QByteArray>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

#include "DockWorkspace.h"
#include "host/PREF_Preferences.h"
#include "qzhost/PreferenceFile.h"
#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"

namespace qzview::DockLayout {

namespace {

using qzhost::script::kInfoTabType;

/// The version that Qt stores with the docks' state: a state saved for another set of
/// docks is not put back.
constexpr int kStateVersion = 2;

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

void PutBytes(const char* key, const QByteArray& bytes) {
    (void)qzhost::SetHostTextPreference(kSection, key, bytes.toBase64().toStdString());
}

std::optional<QByteArray> GetBytes(const char* key) {
    const std::optional<std::string> text = qzhost::HostTextPreference(kSection, key);
    if (!text || text->empty()) {
        return std::nullopt;
    }
    const auto decoded = QByteArray::fromBase64Encoding(QByteArray::fromStdString(*text),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded) {
        return std::nullopt;
    }
    return *decoded;
}

/// Opens the Info panel through its tab creator, unless it is open.
void OpenInfo() {
    if (!qzhost::WorkspaceModel::Get().State(kInfoTabType).panel) {
        qzhost::WorkspaceModel::Get().Open(kInfoTabType);
    }
}

} // namespace

void Save(QMainWindow& window, DockWorkspace& docks) {
    QDockWidget* info = docks.FindDock(kInfoTabType);
    const bool infoOpen =
        info != nullptr && docks.Panel(kInfoTabType) != nullptr && !info->isHidden();
    Put("info_open", infoOpen ? 1 : 0);
    PutBytes("window_geometry", window.saveGeometry());
    PutBytes("window_state", window.saveState(kStateVersion));
}

bool Restore(QMainWindow& window, DockWorkspace& docks, QDockWidget* project, QDockWidget* layers) {
    const std::optional<QByteArray> state = GetBytes("window_state");
    if (const std::optional<QByteArray> geometry = GetBytes("window_geometry")) {
        window.restoreGeometry(*geometry);
    }
    // The Info dock is there (empty) for the state to place before its panel exists.
    docks.Dock(kInfoTabType);
    if (!state || !window.restoreState(*state, kStateVersion)) {
        ApplyDefault(window, docks, project, layers);
        return false;
    }
    if (Get("info_open", 1) == 1) {
        OpenInfo();
        // The tab creator raises the new dock; the saved state says which tab is in front.
        window.restoreState(*state, kStateVersion);
    }
    KeepFloatingDocksOnScreen(window);
    return true;
}

void ApplyDefault(QMainWindow& window, DockWorkspace& docks, QDockWidget* project,
                  QDockWidget* layers) {
    OpenInfo();
    QDockWidget* info = docks.Dock(kInfoTabType);
    for (QDockWidget* dock : {project, layers, info}) {
        dock->setFloating(false);
    }
    window.addDockWidget(Qt::LeftDockWidgetArea, project);
    window.splitDockWidget(project, layers, Qt::Vertical);
    window.addDockWidget(Qt::RightDockWidgetArea, info);
    for (QDockWidget* dock : {project, layers, info}) {
        dock->show();
    }
}

void DefaultSizes(QMainWindow& window, QDockWidget* project, QDockWidget* layers) {
    // Room for a row of three numbers; the Project list needs less height than the
    // properties.
    window.resizeDocks({layers}, {330}, Qt::Horizontal);
    window.resizeDocks({project, layers}, {140, 420}, Qt::Vertical);
}

void KeepFloatingDocksOnScreen(QMainWindow& window) {
    const QScreen* home =
        window.screen() != nullptr ? window.screen() : QGuiApplication::primaryScreen();
    if (home == nullptr) {
        return;
    }
    const QRect room = home->availableGeometry();
    for (QDockWidget* dock : window.findChildren<QDockWidget*>()) {
        if (!dock->isFloating()) {
            continue;
        }
        const QRect frame = dock->frameGeometry();
        // The title bar is what a person takes hold of: it must be on some screen.
        const QPoint grip(frame.center().x(), frame.top() + 8);
        if (QGuiApplication::screenAt(grip) != nullptr) {
            continue;
        }
        const QSize size = frame.size().boundedTo(room.size());
        QRect placed(QPoint(), size);
        placed.moveCenter(room.center());
        dock->setGeometry(placed);
    }
}

} // namespace qzview::DockLayout
