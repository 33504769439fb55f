// The application's workspace access (QZWorkspace) and the workspace utilities, answered
// by the reference host's workspace model. The two queries take the model's lock and may
// be asked from any thread.
#include "kitworkspace/workspace/Workspace.h"
#include "qzhost/HostControls.h"
#include "qzhost/WorkspaceModel.h"

namespace kitworkspace::workspace {

Workspace::~Workspace() = default;

bool WorkspaceUtils::TabIsShown(const char* tab_type, bool* front) {
    if (tab_type == nullptr) {
        return false;
    }
    return qzhost::WorkspaceModel::Get().TabIsShown(tab_type, front);
}

TabPanel* WorkspaceUtils::FindFirstTabOfType(const char* tab_type, const void*) {
    if (tab_type == nullptr) {
        return nullptr;
    }
    return qzhost::WorkspaceModel::Get().Panel(tab_type);
}

void WorkspaceUtils::ToggleTabState(const char* tab_type, int) {
    qzhost::RequireUIThread("WorkspaceUtils::ToggleTabState");
    qzhost::HostControls::Get().RecordTabToggle();
    if (tab_type != nullptr) {
        qzhost::WorkspaceModel::Get().Toggle(tab_type);
    }
}

} // namespace kitworkspace::workspace

bool QZWorkspace::Exists() {
    return qzhost::HostControls::Get().WorkspaceExists();
}

kitworkspace::workspace::Workspace* QZWorkspace::Get() {
    if (!Exists()) {
        return nullptr;
    }
    return &qzhost::WorkspaceModel::Get();
}
