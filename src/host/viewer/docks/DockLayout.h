// The viewer's dock layout in the host's preference file: the main window's geometry and
// the state of its docks and toolbars as Qt saves them (which docks are open, where, their
// sizes, which float and where, which are tabbed together and which tab is raised), and
// whether the Info panel is open. The next start puts them back, creating the Info panel
// through its tab creator; floating docks are kept on a screen. The default layout (the
// Project and Layer Properties docks on the left, the Info dock on the right) is the first
// start's and Window > Reset Layout's.
#pragma once

class QDockWidget;
class QMainWindow;

namespace qzview {

class DockWorkspace;

namespace DockLayout {

/// The preference section that holds the layout.
inline constexpr const char* kSection = "Viewer Layout";

/// [ui-thread] Writes the layout; a preference file that cannot be written keeps its old
/// layout (the viewer goes on).
void Save(QMainWindow& window, DockWorkspace& docks);
/// [ui-thread] Puts the saved layout back and returns true; without one (or with one that
/// Qt cannot read) puts the default layout in place and returns false.
bool Restore(QMainWindow& window, DockWorkspace& docks, QDockWidget* project, QDockWidget* layers);
/// [ui-thread] The default layout's places, with the Info panel open; its sizes follow by
/// DefaultSizes once the window is laid out.
void ApplyDefault(QMainWindow& window, DockWorkspace& docks, QDockWidget* project,
                  QDockWidget* layers);
/// [ui-thread] The default layout's dock sizes, for a window that Qt has laid out.
void DefaultSizes(QMainWindow& window, QDockWidget* project, QDockWidget* layers);
/// [ui-thread] Moves every floating dock of `window` that lies off every screen back onto
/// the window's screen.
void KeepFloatingDocksOnScreen(QMainWindow& window);

} // namespace DockLayout

} // namespace qzview
