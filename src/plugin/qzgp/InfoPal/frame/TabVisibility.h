// Whether the panel of a tab type counts as shown in the docking workspace.
#pragma once

namespace infopal {

/// The tab type of the Info panel.
inline constexpr const char* kInfoTabType = "QZGP_Info";

/// [any-thread] A tab of the type must be open in a shown frame. Without the front test
/// that is enough; with it, the tab must also stand in a stacked frame or be the front
/// tab of its frame.
bool IsTabShown(const char* tab_type, bool front_test);

} // namespace infopal
