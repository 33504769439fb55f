// A path of the drawing library: figures made of straight segments and rectangles, in
// the user units of the surface that draws it.
#pragma once

#include "kitui/ui/Geometry.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

class QZ_HOST_API PathInterface {
public:
    virtual ~PathInterface();

    /// [ui-thread] Starts a new figure at `point`.
    virtual void MoveTo(const kitui::ui::PointT<float>& point) = 0;
    /// [ui-thread] A straight segment from the current point to `point` (a figure
    /// starts at `point` when there is no current point).
    virtual void LineTo(const kitui::ui::PointT<float>& point) = 0;
    /// [ui-thread] A closed rectangle as a figure of its own.
    virtual void AddRect(const kitui::ui::RectT<float>& rect) = 0;
    /// [ui-thread] Closes the current figure back to its first point.
    virtual void Close() = 0;
    /// [ui-thread] Whether the path has no figure.
    virtual bool IsEmpty() const = 0;

    /// [ui-thread] The rectangle at `origin` of size `size` (width x, height y).
    void AddRect(const kitui::ui::PointT<float>& origin, const kitui::ui::PointT<float>& size) {
        AddRect(kitui::ui::RectT<float>{origin.x, origin.y, size.x, size.y});
    }
};

} // namespace kitui::inkwell
