// The camera through which 3-D layers are seen. The top-most camera layer is the active
// one; without a camera 3-D layers are seen as LayerToComposition places them.
//
// The camera stands at its Position and looks at its Point of Interest (its anchor
// point), its y axis as near the composition's downward y as the view allows; its
// Orientation and X, Y and Z Rotation then turn it further about its own axes. A point of
// the composition's space at depth z in front of the camera (along its view axis) and at
// x, y from its view axis is seen at (Zoom x / z, Zoom y / z) from the composition's
// centre: a layer facing the camera at a depth of Zoom is shown at 100 %. A new camera
// stands Zoom in front of the composition's plane, looking at its centre, so that a 3-D
// layer in that plane looks as it did without one.
//
// The camera sees the composition's space as its pixels are meant to be seen: x in
// composition pixels times the composition's pixel aspect, y and z in pixels (heights of a
// pixel), so that a camera turned in a composition of wide pixels turns as it would in one
// of square pixels. Positions, points of interest and anchor points stay in composition
// pixels; what the camera sees is taken back to composition pixels (its x divided by the
// aspect) at the end.
#pragma once

#include <vector>

#include "Layer.h"
#include "Projective.h"

namespace qzview {

/// The active camera of `layers` (bottom first): the top-most camera, or null.
const Layer* ActiveCamera(const std::vector<Layer>& layers) noexcept;

/// The Zoom of a new camera in a composition `width` pixel heights wide (its pixels times
/// their aspect): a 50 mm lens on 36 mm film.
double NewCameraZoom(double width) noexcept;

/// The values of a new camera in a `width` x `height` composition whose pixels are
/// `aspect` times as wide as tall.
LayerValues NewCameraValues(int width, int height, double aspect = 1.0) noexcept;

/// Where the point (u, v) of a layer lies in the space that the camera sees, in a
/// composition whose pixels are `composition_aspect` times as wide as tall: the matrix's
/// columns are the space's steps for one pixel along u and along v, and the point of
/// pixel 0, 0.
Matrix3 LayerToSpace(const Layer& layer, double composition_aspect) noexcept;

/// The camera's axes in the space that it sees (the columns: right, down, forward).
Matrix3 CameraAxes(const Layer& camera, double composition_aspect) noexcept;

/// Where the pixels of `layer` go in a `width` x `height` composition of pixels
/// `composition_aspect` times as wide as tall, seen through `camera` (null for none). A
/// 2-D layer, or any layer without a camera, is placed by LayerToComposition; a 3-D layer
/// that the camera sees as it would be seen without one gets that very transform.
Projective LayerThroughCamera(const Layer& layer, const Layer* camera, int width, int height,
                              double composition_aspect) noexcept;

} // namespace qzview
