// The canvas at rest: every screen pixel from the exact composite. Where a composition
// pixel covers a screen pixel or more across and down (zoom 1 and above, for square
// pixels), a screen pixel shows the display colour of exactly the composition pixel that
// the pointer reads there; elsewhere (below zoom 1, or across pixels drawn narrower than a
// screen pixel) it shows the box filter of the composition pixels it covers: their mean
// in premultiplied working values, divided by the mean alpha, then turned into its
// display colour. Only the visible region is
// composited, in bands shared out among threads, and a cancelled render stops at the
// next band.
#pragma once

#include <atomic>

#include <QImage>

#include "canvas/CanvasMapping.h"
#include "canvas/CanvasScene.h"

namespace qzview {

/// Renders `scene` into `view` (device pixels, Format_RGB32) as `mapping` places it, on
/// `threads` threads (the caller's among them). Returns false, leaving `view` partly
/// drawn, when `cancel` was set before it finished.
bool RenderExactView(const CanvasScene& scene, const CanvasMapping& mapping, QImage& view,
                     const std::atomic<bool>& cancel, int threads);

} // namespace qzview
