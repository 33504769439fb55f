#include "qzhost/WorkspaceModel.h"

#include "qzhost/HostControls.h"
#include "qzhost/PanelHandlerCall.h"

namespace qzhost {

using kitworkspace::workspace::FlyoutMenu;
using kitworkspace::workspace::TabCreator;
using kitworkspace::workspace::TabPanel;
using kitworkspace::workspace::TabPanelCreationArgs;

TabFrame::TabFrame() = default;
TabFrame::~TabFrame() = default;

bool TabFrame::UI_IsVisible() const {
    // The answers change on the main thread only, which is where nodes are drawn.
    return CountsAsVisible(shownAnswer, front, stacked) && UI_Node::UI_IsVisible();
}

WorkspaceModel& WorkspaceModel::Get() {
    static WorkspaceModel model;
    return model;
}

WorkspaceModel::WorkspaceModel() = default;

void WorkspaceModel::Reset() {
    // Panels first: a panel's teardown may still ask the workspace about its tab.
    for (;;) {
        std::string first;
        {
            std::lock_guard lock(mutex_);
            if (tabs_.empty()) {
                break;
            }
            first = tabs_.begin()->first;
        }
        Close(first);
    }
    creators_.clear();
    newBounds_ = {0, 0, 206, 114};
    windows_ = nullptr;
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
    std::lock_guard lock(mutex_);
    auto it = tabs_.find(tab_type);
    return it == tabs_.end() ? nullptr : it->second.frame;
}

TabPanel* WorkspaceModel::Panel(std::string_view tab_type) const {
    std::lock_guard lock(mutex_);
    auto it = tabs_.find(tab_type);
    return it == tabs_.end() ? nullptr : it->second.panel;
}

bool WorkspaceModel::IsVisible(const std::string& tab_type) const {
    return State(tab_type).Visible();
}

bool WorkspaceModel::WriteAnswers(const std::string& tab_type, bool shown, bool front,
                                  bool stacked) {
    std::lock_guard lock(mutex_);
    auto it = tabs_.find(tab_type);
    if (it == tabs_.end()) {
        return false;
    }
    it->second.frame->shownAnswer = shown;
    it->second.frame->front = front;
    it->second.frame->stacked = stacked;
    return true;
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
    {
        // The tab is open (with no panel yet) while its creator runs.
        std::lock_guard lock(mutex_);
        tabs_[tab_type] = Tab{frame_ptr, nullptr};
    }
    const auto forget = [&] {
        {
            std::lock_guard lock(mutex_);
            tabs_.erase(tab_type);
        }
        root_.UI_RemoveChild(frame_ptr);
    };

    TabPanel* panel = nullptr;
    const TabPanelCreationArgs args{};
    try {
        creator->second->CreateAndTag(&panel, frame_ptr, &args);
    } catch (...) {
        forget();
        throw;
    }
    if (panel == nullptr) {
        forget();
        return;
    }
    frame_ptr->UI_AddChild(std::unique_ptr<kitui::ui::UI_Node>(panel));
    {
        std::lock_guard lock(mutex_);
        tabs_[tab_type].panel = panel;
    }
    panel->UI_SetBounds(newBounds_);
    if (windows_ != nullptr) {
        windows_->TabOpened(tab_type, *frame_ptr);
    }
    NotifyIfBecameVisible(tab_type, false);
}

void WorkspaceModel::Open(const std::string& tab_type) {
    if (!TabIsShown(tab_type, nullptr)) {
        Toggle(tab_type);
    }
}

void WorkspaceModel::Close(const std::string& tab_type) {
    if (windows_ != nullptr && Frame(tab_type) != nullptr) {
        windows_->TabClosing(tab_type);
    }
    TabFrame* frame = nullptr;
    {
        std::lock_guard lock(mutex_);
        auto it = tabs_.find(tab_type);
        if (it == tabs_.end()) {
            return;
        }
        frame = it->second.frame;
        tabs_.erase(it);
    }
    // The panel's destructor runs here, outside the lock; it may call back into the
    // workspace, which no longer lists the tab.
    root_.UI_RemoveChild(frame);
}

void WorkspaceModel::Hide(const std::string& tab_type) {
    if (windows_ != nullptr) {
        if (Frame(tab_type) != nullptr) {
            windows_->ShowTab(tab_type, false);
        }
        return;
    }
    const TabState state = State(tab_type);
    WriteAnswers(tab_type, false, state.front, state.stacked);
}

void WorkspaceModel::Show(const std::string& tab_type) {
    if (windows_ != nullptr) {
        if (Frame(tab_type) != nullptr) {
            windows_->ShowTab(tab_type, true);
        }
        return;
    }
    const TabState state = State(tab_type);
    if (WriteAnswers(tab_type, true, true, state.stacked)) {
        NotifyIfBecameVisible(tab_type, state.Visible());
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
    const bool was = IsVisible(tab_type);
    if (WriteAnswers(tab_type, shown, front, stacked)) {
        NotifyIfBecameVisible(tab_type, was);
    }
}

TabState WorkspaceModel::State(const std::string& tab_type) const {
    std::lock_guard lock(mutex_);
    auto it = tabs_.find(tab_type);
    if (it == tabs_.end()) {
        return {};
    }
    const TabFrame& frame = *it->second.frame;
    return {it->second.panel != nullptr, frame.shownAnswer, frame.front, frame.stacked};
}

bool WorkspaceModel::TabIsShown(std::string_view tab_type, bool* front) const {
    std::lock_guard lock(mutex_);
    auto it = tabs_.find(tab_type);
    if (it == tabs_.end() || !it->second.frame->shownAnswer) {
        return false;
    }
    if (front != nullptr) {
        *front = it->second.frame->front;
    }
    return true;
}

bool WorkspaceModel::InStackedFrame(const TabPanel* panel) const {
    if (panel == nullptr) {
        return false;
    }
    std::lock_guard lock(mutex_);
    for (const auto& [type, tab] : tabs_) {
        if (tab.panel == panel) {
            return tab.frame->stacked;
        }
    }
    return false;
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

FlyoutMenuResult WorkspaceModel::PopulateFlyoutMenu(const std::string& tab_type) {
    RequireUIThread("WorkspaceModel::PopulateFlyoutMenu");
    FlyoutMenuResult result;
    TabPanel* panel = Panel(tab_type);
    if (panel == nullptr) {
        return result;
    }
    result.panel = true;
    FlyoutMenu menu;
    result.thrown = CallPanelHandler([&] { panel->PopulateFlyoutMenu(menu); });
    if (!result.thrown) {
        result.items = menu.GetItems();
    }
    return result;
}

FlyoutCommandResult WorkspaceModel::DoFlyoutMenuCommand(const std::string& tab_type,
                                                        std::int32_t command) {
    RequireUIThread("WorkspaceModel::DoFlyoutMenuCommand");
    FlyoutCommandResult result;
    TabPanel* panel = Panel(tab_type);
    if (panel == nullptr) {
        return result;
    }
    result.panel = true;
    bool handled = false;
    result.thrown = CallPanelHandler([&] { handled = panel->DoFlyoutMenuCommand(command); });
    result.handled = !result.thrown && handled;
    return result;
}

} // namespace qzhost
