// The selected layer as the canvas draws it over the composition: its outline with the
// corner handles and its anchor point; and whether a press takes hold of a corner handle
// (which makes the selection tool's drag a scale).
#pragma once

#include <optional>

#include "canvas/CanvasMapping.h"
#include "canvas/CanvasView.h"
#include "composition/Composition.h"

namespace qzview {

/// The outline of `layer` as it is seen (through the active camera for a 3-D layer); none
/// for no layer, one that draws nothing (a camera) or one with a corner at or behind the
/// camera.
std::optional<LayerOutline> LayerOutlineOf(const Composition& composition, const Layer* layer);

/// Whether `at` lies within reach of a corner handle of `layer` (which may be null) as
/// `canvas` shows it: a few screen pixels, whatever the zoom.
bool OnCornerHandle(const CanvasView& canvas, const Composition& composition, const Layer* layer,
                    CompositionPoint at);

} // namespace qzview
