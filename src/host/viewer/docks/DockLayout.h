// The viewer's dock layout in the host's preference file: for the Info dock, the Project
// dock and the Layer Properties dock, whether each is open, its dock area, whether it
// floats and whether the Info dock is tabbed together with one of the others (and which is
// raised); and the window's geometry. The next start puts them back, creating the Info
// panel through its tab creator.
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
void Save(QMainWindow& window, DockWorkspace& docks, QDockWidget* project, QDockWidget* layers);
/// [ui-thread] Puts the saved layout back; without one the Info dock opens at the right.
void Restore(QMainWindow& window, DockWorkspace& docks, QDockWidget* project, QDockWidget* layers);

} // namespace DockLayout

} // namespace qzview
