// Drawing a node tree (a panel and its controls) into an image, as the toolkit draws it
// on screen: the root node at the origin, its size times the UI scale in pixels.
#pragma once

#include <string>

#include "kitui/ui/UI_Node.h"
#include "qzhost/RenderedImage.h"

namespace qzhost {

/// [ui-thread] Draws `root` (its UI_Draw, which draws its shown children) into a
/// transparent image of its local size times `scale`, rounded up to whole pixels (at
/// least 1 by 1), clipped to its local rectangle.
QZ_HOST_API RenderedImage RenderNode(kitui::ui::UI_Node& root, double scale);

/// [ui-thread] RenderNode, then writes the image to `png_path`; returns the image.
/// Throws std::runtime_error when the file cannot be written.
QZ_HOST_API RenderedImage RenderNodeToPng(kitui::ui::UI_Node& root, double scale,
                                          const std::string& png_path);

} // namespace qzhost
