// The surface of a drawing context: it draws paths, text and pictures in user units. The
// current transform maps user units to device pixels; the clip limits what is drawn.
#pragma once

#include "kitcore/utility/UTF16String.h"
#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/inkwell/Handles.h"
#include "kitui/inkwell/TextStyle.h"
#include "kitui/inkwell/Transform.h"
#include "kitui/ui/Geometry.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

/// Fill rules for FillPath.
inline constexpr int kFillRuleEvenOdd = 0;
inline constexpr int kFillRuleWinding = 1;

class QZ_HOST_API SurfaceInterface {
public:
    virtual ~SurfaceInterface();

    /// [ui-thread] Opens a drawing bracket: the transform, the clip and the
    /// antialiasing setting in force now come back at the matching EndDrawing.
    virtual void BeginDrawing() = 0;
    /// [ui-thread] Closes the innermost bracket opened by BeginDrawing.
    virtual void EndDrawing() = 0;

    /// [ui-thread] Antialiasing of paths: 0 off (edges fall on whole pixels), anything
    /// else on. On by default.
    virtual void SetAntialiasing(int on) = 0;
    virtual int GetAntialiasing() const = 0;

    /// [ui-thread] The current transform from user units to device pixels.
    virtual Transform GetTransform() const = 0;
    /// [ui-thread] Moves the user-unit origin by dx, dy (in current user units).
    virtual void Translate(float dx, float dy) = 0;
    /// [ui-thread] Narrows the clip to `rect` (current user units).
    virtual void ClipToRect(const kitui::ui::RectT<float>& rect) = 0;

    /// [ui-thread] Fills `path` with `brush` by `fill_rule` (kFillRuleEvenOdd or
    /// kFillRuleWinding). An empty handle draws nothing.
    virtual void FillPath(const PathRef& path, const BrushRef& brush, int fill_rule) = 0;
    /// [ui-thread] Fills `path` with `shader`; as above.
    virtual void FillPath(const PathRef& path, const ShaderRef& shader, int fill_rule) = 0;
    /// [ui-thread] Strokes `path` with `pen`, the stroke centred on the path. An empty
    /// handle draws nothing.
    virtual void StrokePath(const PathRef& path, const PenRef& pen) = 0;

    /// [ui-thread] One line of text set in the host's user-interface font, vertically
    /// centred in `box` and aligned in it as `style` says.
    virtual void DrawText(const kitcore::utility::UTF16String& text,
                          const kitui::ui::RectT<float>& box, const ColorRGBA& color,
                          const TextStyle& style) = 0;
    /// [ui-thread] The width of `text` in user units as DrawText would set it.
    virtual float MeasureText(const kitcore::utility::UTF16String& text,
                              const TextStyle& style) = 0;
    /// [ui-thread] Draws `picture` with its top left corner at `origin`, at its size in
    /// user units. An empty handle draws nothing.
    virtual void DrawPicture(const PictureRef& picture, const kitui::ui::PointT<float>& origin) = 0;
};

} // namespace kitui::inkwell
