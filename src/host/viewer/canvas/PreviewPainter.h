// The canvas while the person edits: each layer's display image at the level nearest the
// view's resolution, drawn through the layer's transform and the view's mapping with the
// layer's opacity, over the checkerboard. It costs what the window shows, whatever the
// plates' size; its colours are laid over one another in display values, so it is a
// preview until the exact view replaces it.
#pragma once

#include <QImage>

#include "canvas/CanvasMapping.h"
#include "canvas/CanvasScene.h"

namespace qzview {

/// Draws `scene` into `view` (device pixels) as `mapping` places it; `smooth` filters the
/// display images bilinearly (nearest pixel otherwise).
void PaintPreview(const CanvasScene& scene, const CanvasMapping& mapping, bool smooth,
                  QImage& view);

} // namespace qzview
