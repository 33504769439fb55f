#include "qzhost/WorkspaceModel.h"

#include "qzhost/HostControls.h"

namespace qzhost {

using kitworkspace::workspace::TabCreator;
using kitworkspace::workspace::TabPanel;
using kitworkspace::workspace::TabPanelCreationArgs;

TabFrame::TabFrame() = default;
TabFrame::~TabFrame() = default;

bool TabFrame::UI_IsVisible() const {
    return CountsAsVisible(shownAnswer, front, stacked) && UI_Node::UI_IsVisible();
}

WorkspaceModel& WorkspaceModel::Get() {
    static WorkspaceModel model;
    return model;
}

WorkspaceModel::WorkspaceModel() = default;

void WorkspaceModel::Reset() {
    // Panels first: a panel's teardown may still ask the workspace about its tab.
    while (!frames_.empty()) {
        Close(frames_.begin()->first);
    }
    creators_.clear();
    newBounds_ = {0, 0, 206, 114};
}

void WorkspaceModel::RegisterTabCreator(TabCreator* creator) {
    RequireUIThread("Workspace::RegisterTabCreator");
    if (creator == nullptr) {
        HostControls::Get().RecordViolation("RegisterTabCreator called with a null creator");
        return;
    }
    creators_[creator->GetTabType()].reset(creator);
}

void WorkspaceModel::UnregisterTabCreator(const char* tab_type) {
    RequireUIThread("Workspace::UnregisterTabCreator");
    if (tab_type == nullptr || creators_.erase(tab_type) == 0) {
        HostControls::Get().RecordViolation(std::string("UnregisterTabCreator of a type without "
                                                        "a creator: ") +
                                            (tab_type != nullptr ? tab_type : "(null)"));
    }
}

std::vector<std::string> WorkspaceModel::CreatorTypes() const {
    std::vector<std::string> types;
    for (const auto& entry : creators_) {
        types.push_back(entry.first);
    }
    return types;
}

bool WorkspaceModel::HasCreator(const std::string& tab_type) const {
    return creators_.count(tab_type) != 0;
}

TabFrame* WorkspaceModel::Frame(const std::string& tab_type) const {
    auto it = frames_.find(tab_type);
    return it == frames_.end() ? nullptr : it->second;
}

TabPanel* WorkspaceModel::Panel(const std::string& tab_type) const {
    TabFrame* frame = Frame(tab_type);
    if (frame == nullptr || frame->UI_GetChildCount() == 0) {
        return nullptr;
    }
    return dynamic_cast<TabPanel*>(frame->UI_GetChild(0));
}

bool WorkspaceModel::IsVisible(const std::string& tab_type) const {
    TabFrame* frame = Frame(tab_type);
    return frame != nullptr && CountsAsVisible(frame->shownAnswer, frame->front, frame->stacked);
}

void WorkspaceModel::NotifyIfBecameVisible(const std::string& tab_type, bool was_visible) {
    if (was_visible || !IsVisible(tab_type)) {
        return;
    }
    if (TabPanel* panel = Panel(tab_type)) {
        panel->UI_NodeChanged(kitui::ui::NodeChange{kitui::ui::NodeChange::kBecameVisible});
    }
}

void WorkspaceModel::Create(const std::string& tab_type) {
    auto creator = creators_.find(tab_type);
    if (creator == creators_.end()) {
        return; // a type that nobody creates: the toggle does nothing
    }
    auto frame = std::make_unique<TabFrame>();
    TabFrame* frame_ptr = frame.get();
    frame->UI_SetBounds(newBounds_);
    root_.UI_AddChild(std::move(frame));
    frames_[tab_type] = frame_ptr;

    TabPanel* panel = nullptr;
    const TabPanelCreationArgs args{};
    try {
        creator->second->CreateAndTag(&panel, frame_ptr, &args);
    } catch (...) {
        frames_.erase(tab_type);
        root_.UI_RemoveChild(frame_ptr);
        throw;
    }
    if (panel == nullptr) {
        frames_.erase(tab_type);
        root_.UI_RemoveChild(frame_ptr);
        return;
    }
    frame_ptr->UI_AddChild(std::unique_ptr<kitui::ui::UI_Node>(panel));
    panel->UI_SetBounds(newBounds_);
    NotifyIfBecameVisible(tab_type, false);
}

void WorkspaceModel::Open(const std::string& tab_type) {
    if (!TabIsShown(tab_type, nullptr)) {
        Toggle(tab_type);
    }
}

void WorkspaceModel::Close(const std::string& tab_type) {
    TabFrame* frame = Frame(tab_type);
    if (frame == nullptr) {
        return;
    }
    frames_.erase(tab_type);
    // The panel's destructor runs here; it may call back into the workspace, which no
    // longer lists the tab.
    root_.UI_RemoveChild(frame);
}

void WorkspaceModel::Hide(const std::string& tab_type) {
    if (TabFrame* frame = Frame(tab_type)) {
        frame->shownAnswer = false;
    }
}

void WorkspaceModel::Show(const std::string& tab_type) {
    if (TabFrame* frame = Frame(tab_type)) {
        const bool was = IsVisible(tab_type);
        frame->shownAnswer = true;
        frame->front = true;
        NotifyIfBecameVisible(tab_type, was);
    }
}

void WorkspaceModel::Restore(const std::string& tab_type) {
    if (Frame(tab_type) == nullptr) {
        Create(tab_type);
    } else {
        Show(tab_type);
    }
}

void WorkspaceModel::SetAnswers(const std::string& tab_type, bool shown, bool front, bool stacked) {
    if (TabFrame* frame = Frame(tab_type)) {
        const bool was = IsVisible(tab_type);
        frame->shownAnswer = shown;
        frame->front = front;
        frame->stacked = stacked;
        NotifyIfBecameVisible(tab_type, was);
    }
}

TabState WorkspaceModel::State(const std::string& tab_type) const {
    TabFrame* frame = Frame(tab_type);
    if (frame == nullptr) {
        return {};
    }
    return {Panel(tab_type) != nullptr, frame->shownAnswer, frame->front, frame->stacked};
}

bool WorkspaceModel::TabIsShown(const std::string& tab_type, bool* front) const {
    TabFrame* frame = Frame(tab_type);
    if (frame == nullptr || !frame->shownAnswer) {
        return false;
    }
    if (front != nullptr) {
        *front = frame->front;
    }
    return true;
}

void WorkspaceModel::Toggle(const std::string& tab_type) {
    if (TabIsShown(tab_type, nullptr)) {
        Close(tab_type);
    } else if (Frame(tab_type) != nullptr) {
        Show(tab_type);
    } else {
        Create(tab_type);
    }
}

} // namespace qzhost
