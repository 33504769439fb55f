// The viewer's dock layout in the host's preference file: for the Info dock and the
// Project dock, whether each is open, its dock area, whether it floats and whether the two
// are tabbed together (and which is raised); and the window's geometry. The next start
// puts them back, creating the Info panel through its tab creator.
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
void Save(QMainWindow& window, DockWorkspace& docks, QDockWidget* project);
/// [ui-thread] Puts the saved layout back; without one the Info dock opens at the right.
void Restore(QMainWindow& window, DockWorkspace& docks, QDockWidget* project);

} // namespace DockLayout

} // namespace qzview
