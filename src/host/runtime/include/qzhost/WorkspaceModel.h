// The reference host's docking workspace: tab creators by tab type, and at most one open
// tab per type, each in a frame of its own with the three answers that the panel's
// visibility rests on.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kitworkspace/workspace/Workspace.h"

namespace qzhost {

/// Whether a tab counts as visible from its three answers: its frame is shown, and the
/// frame holds a stack of tabs or the tab is its front tab.
inline bool CountsAsVisible(bool shown, bool front, bool stacked) {
    return shown && (stacked || front);
}

/// The frame that holds a tab. It owns the panel as its one child.
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

class QZ_HOST_API WorkspaceModel : public kitworkspace::workspace::Workspace {
public:
    static WorkspaceModel& Get();

    /// Destroys every open panel and every creator.
    void Reset();

    void RegisterTabCreator(kitworkspace::workspace::TabCreator* creator) override;
    void UnregisterTabCreator(const char* tab_type) override;

    std::vector<std::string> CreatorTypes() const;
    bool HasCreator(const std::string& tab_type) const;

    /// The open panel of the type, or null.
    kitworkspace::workspace::TabPanel* Panel(const std::string& tab_type) const;
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

    TabState State(const std::string& tab_type) const;

    // The answers behind WorkspaceUtils.
    bool TabIsShown(const std::string& tab_type, bool* front) const;
    void Toggle(const std::string& tab_type);

    /// The default bounds of a new panel (0, 0, 206, 114 until a resize changes them).
    void SetNewPanelBounds(const kitui::ui::RectT<float>& bounds) { newBounds_ = bounds; }
    kitui::ui::RectT<float> NewPanelBounds() const noexcept { return newBounds_; }

private:
    WorkspaceModel();
    void Create(const std::string& tab_type);
    void NotifyIfBecameVisible(const std::string& tab_type, bool was_visible);
    bool IsVisible(const std::string& tab_type) const;

    kitui::ui::UI_Node root_;
    std::map<std::string, std::unique_ptr<kitworkspace::workspace::TabCreator>> creators_;
    std::map<std::string, TabFrame*> frames_;
    kitui::ui::RectT<float> newBounds_{0, 0, 206, 114};
};

} // namespace qzhost
