// The rows of the Project dock, made from the composition's layers: one per layer, the
// top layer first (as the layers lie in the stack), with the layer's name and what it is
// (a camera, or its image's size, format and channel type), and whether it is shown.
#pragma once

#include <vector>

#include <QString>

#include "composition/Composition.h"

namespace qzview {

struct ProjectRow {
    /// The id of the layer that the row lists.
    int layer = 0;
    QString text;
    /// Whether the layer has pixels that can be hidden (a camera has none).
    bool hideable = false;
    bool visible = true;
};

/// The top layer's row first.
std::vector<ProjectRow> ProjectRows(const Composition& composition);

/// The row that lists layer `layer` in `rows`, or -1.
int RowOfLayer(const std::vector<ProjectRow>& rows, int layer);

} // namespace qzview
