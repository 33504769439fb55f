// The reference host's docking workspace: tab creators by tab type, and at most one open
// tab per type, each in a frame of its own with the three answers that the panel's
// visibility rests on.
//
// Threads: the visibility queries (TabIsShown, Panel, InStackedFrame, State, Frame) may be
// asked from any thread; they read the open tabs and their answers under the model's lock,
// never the node tree. Everything else is main-thread work, and the main thread is the
// only one that changes the tabs (always under the lock). Panels are created and destroyed
// outside the lock, so that a panel may ask the queries while it is built or torn down.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kitworkspace/workspace/FlyoutMenu.h"
#include "kitworkspace/workspace/Workspace.h"

namespace qzhost {

/// Whether a tab counts as visible from its three answers: its frame is shown, and the
/// frame holds a stack of tabs or the tab is its front tab.
inline bool CountsAsVisible(bool shown, bool front, bool stacked) {
    return shown && (stacked || front);
}

/// The frame that holds a tab. It owns the panel as its one child. Its three answers are
/// written by the workspace model only, under the model's lock.
class QZ_HOST_API TabFrame : public kitui::ui::UI_Node {
public:
    TabFrame();
    ~TabFrame() override;
    /// What TabIsShown answers: the frame is shown (not minimised).
    bool shownAnswer = true;
    /// What TabIsShown writes back: the tab is the front tab of its frame.
    bool front = true;
    /// What InStackedFrame answers.
    bool stacked = true;
    bool UI_IsVisible() const override;
};

struct TabState {
    bool panel = false;
    bool shown = false;
    bool front = false;
    bool stacked = false;
    bool Visible() const { return CountsAsVisible(shown, front, stacked); }
};

/// What the panel's flyout menu handler gave: `panel` false when there was no panel to
/// ask. `thrown` is set when the handler threw: the code that the host's wrapper returns
/// (an integer thrown is that code; a std::exception is reported through
/// U_TranslateAndReportException and gives its result; anything else QZ_Err_GENERIC).
struct FlyoutMenuResult {
    bool panel = false;
    /// The items as the panel left them; none when the handler threw.
    std::vector<kitworkspace::workspace::FlyoutMenu::Item> items;
    std::optional<QZ_Err> thrown;
};

struct FlyoutCommandResult {
    bool panel = false;
    /// The panel's answer; false when there was no panel or the handler threw.
    bool handled = false;
    std::optional<QZ_Err> thrown;
};

/// The windows of a workspace that has real ones (the viewer's docks). The model keeps the
/// tabs, panels and answers; the windows show them and write the answers back through
/// SetAnswers whenever what the user sees changes. Without windows (scripts) the model's
/// own actions set the answers.
class WorkspaceWindows {
public:
    virtual ~WorkspaceWindows() = default;
    /// [ui-thread] A tab has been created with its panel: put its frame in a window and
    /// show it.
    virtual void TabOpened(const std::string& tab_type, TabFrame& frame) = 0;
    /// [ui-thread] The tab is closing: its frame and panel are destroyed right after.
    virtual void TabClosing(const std::string& tab_type) = 0;
    /// [ui-thread] Show the open tab's window (restored, raised) or hide it (`shown`
    /// false), and write the answers that follow.
    virtual void ShowTab(const std::string& tab_type, bool shown) = 0;
};

class QZ_HOST_API WorkspaceModel : public kitworkspace::workspace::Workspace {
public:
    static WorkspaceModel& Get();

    /// Destroys every open panel and every creator.
    void Reset();

    void RegisterTabCreator(kitworkspace::workspace::TabCreator* creator) override;
    void UnregisterTabCreator(const char* tab_type) override;

    std::vector<std::string> CreatorTypes() const;
    bool HasCreator(const std::string& tab_type) const;

    /// Any thread. The open panel of the type, or null.
    kitworkspace::workspace::TabPanel* Panel(std::string_view tab_type) const;
    /// Any thread. The frame of the type's tab, or null.
    TabFrame* Frame(const std::string& tab_type) const;

    // What the user does (host script "workspace" actions).
    /// Toggles the tab when it is not shown (creating the panel when there is none).
    void Open(const std::string& tab_type);
    /// Destroys the panel.
    void Close(const std::string& tab_type);
    /// Minimises the frame: the panel stays but is not shown.
    void Hide(const std::string& tab_type);
    /// Shows a hidden frame again.
    void Show(const std::string& tab_type);
    /// Creates the panel if there is none, and shows it.
    void Restore(const std::string& tab_type);
    /// Sets the three answers of an existing tab.
    void SetAnswers(const std::string& tab_type, bool shown, bool front, bool stacked);

    /// Any thread.
    TabState State(const std::string& tab_type) const;

    // The answers behind WorkspaceUtils and TabPanel.
    /// Any thread. Whether the type's tab is open in a shown frame; `*front` (when not
    /// null) gets whether it is the front tab of its frame, and is left alone otherwise.
    bool TabIsShown(std::string_view tab_type, bool* front) const;
    /// Any thread. Whether `panel` is an open panel whose frame holds a stack of tabs.
    bool InStackedFrame(const kitworkspace::workspace::TabPanel* panel) const;
    void Toggle(const std::string& tab_type);

    // The menu behind the tab, as the user opens it and picks an item.
    /// Builds the flyout menu of the type's panel afresh: an empty menu that the panel
    /// populates.
    FlyoutMenuResult PopulateFlyoutMenu(const std::string& tab_type);
    /// Hands `command` to the panel's flyout command handler.
    FlyoutCommandResult DoFlyoutMenuCommand(const std::string& tab_type, std::int32_t command);

    /// [ui-thread] Makes `windows` show the tabs (null: none). The model does not own them.
    void SetWindows(WorkspaceWindows* windows) noexcept { windows_ = windows; }

    /// The default bounds of a new panel (0, 0, 206, 114 until a resize changes them).
    void SetNewPanelBounds(const kitui::ui::RectT<float>& bounds) { newBounds_ = bounds; }
    kitui::ui::RectT<float> NewPanelBounds() const noexcept { return newBounds_; }

private:
    // An open tab: its frame, and its panel once the creator has made it.
    struct Tab {
        TabFrame* frame = nullptr;
        kitworkspace::workspace::TabPanel* panel = nullptr;
    };

    WorkspaceModel();
    void Create(const std::string& tab_type);
    void NotifyIfBecameVisible(const std::string& tab_type, bool was_visible);
    bool IsVisible(const std::string& tab_type) const;
    // Sets the answers of an open tab under the lock; false when the tab is not open.
    bool WriteAnswers(const std::string& tab_type, bool shown, bool front, bool stacked);

    kitui::ui::UI_Node root_;
    std::map<std::string, std::unique_ptr<kitworkspace::workspace::TabCreator>> creators_;
    mutable std::mutex mutex_; // guards tabs_ and the answers of their frames
    // Looked up by a type given as a view, so that a query builds no std::string.
    std::map<std::string, Tab, std::less<>> tabs_;
    kitui::ui::RectT<float> newBounds_{0, 0, 206, 114};
    WorkspaceWindows* windows_ = nullptr;
};

} // namespace qzhost
