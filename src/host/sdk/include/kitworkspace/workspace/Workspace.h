// The host's docking workspace.
#pragma once

#include "kitworkspace/workspace/TabCreator.h"

namespace kitworkspace::workspace {

class QZ_HOST_API Workspace {
public:
    virtual ~Workspace();
    /// [ui-thread] Registers `creator` for its tab type; the workspace owns it from then
    /// on. A creator for a type that already has one replaces (and destroys) the old one.
    virtual void RegisterTabCreator(TabCreator* creator) = 0;
    /// [ui-thread] Destroys the creator of `tab_type`. Open panels of the type stay.
    virtual void UnregisterTabCreator(const char* tab_type) = 0;
};

class QZ_HOST_API WorkspaceUtils {
public:
    /// [any-thread] Whether a tab of the type is open in a frame that is shown;
    /// `*front` is set to whether it is the front tab of its frame.
    static bool TabIsShown(const char* tab_type, bool* front);
    /// [any-thread] The first open panel of the type, or null. `reserved` must be null.
    /// Off the UI thread only the pointer may be used (to ask InStackedFrame); the panel
    /// itself is UI-thread state.
    static TabPanel* FindFirstTabOfType(const char* tab_type, const void* reserved);
    /// [ui-thread] Closes a shown tab of the type; shows a hidden one; creates one
    /// through the type's creator when there is none. `options` must be 0.
    static void ToggleTabState(const char* tab_type, int options);
};

} // namespace kitworkspace::workspace

/// The application's access to its docking workspace.
class QZ_HOST_API QZWorkspace {
public:
    /// [ui-thread] Whether the application has a docking workspace.
    static bool Exists();
    /// [ui-thread] The workspace, or null when there is none.
    static kitworkspace::workspace::Workspace* Get();
};
