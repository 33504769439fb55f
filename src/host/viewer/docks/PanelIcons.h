// The small icons that the docks draw for themselves: the eye that shows a layer is
// visible (closed when it is hidden) and the chain that links the components of a scale.
#pragma once

#include <QIcon>

namespace qzview {

/// An open eye (`open`) or a closed one.
QIcon EyeIcon(bool open);
/// A chain: joined links for the icon's On state, parted ones for its Off state.
QIcon LinkIcon();

} // namespace qzview
