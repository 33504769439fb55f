// Whether a tab counts as visible: the workspace shows it, and it is in a stacked frame
// or is the front tab of its frame (the visibility test with the front test on).
#pragma once

#include "qzhost/WorkspaceModel.h"

namespace qzhost::script {

inline bool IsVisibleWithFrontTest(const TabState& state) {
    return state.shown && (state.stacked || state.front);
}

} // namespace qzhost::script
