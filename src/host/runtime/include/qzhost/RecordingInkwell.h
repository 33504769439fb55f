// A drawing context that writes down every call made to its surface, for tests of what a
// control draws: which paths it fills or strokes, with which pen width, colour or shader,
// under which transform. Each call is passed on to another drawing context (an
// ImageCanvas, say), so that the drawing still lands in pixels and the transform and the
// clip that the control sees are that context's own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/inkwell/Inkwell.h"
#include "kitui/inkwell/Transform.h"
#include "kitui/ui/Geometry.h"
#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// One call made to a path of the recording supplier, as it was made.
struct RecordedPathElement {
    enum class Kind { kMoveTo, kLineTo, kRect, kClose };
    Kind kind = Kind::kMoveTo;
    /// kMoveTo, kLineTo: the point.
    kitui::ui::PointT<float> point{};
    /// kRect: the rectangle.
    kitui::ui::RectT<float> rect{};
    friend bool operator==(const RecordedPathElement&, const RecordedPathElement&) = default;
};

/// One call made to the recording surface.
struct DrawingCall {
    enum class Kind {
        kBeginDrawing,
        kEndDrawing,
        kSetAntialiasing,
        kTranslate,
        kClipToRect,
        kFillWithBrush,
        kFillWithShader,
        kStroke,
        kDrawText,
        kDrawPicture,
    };
    Kind kind = Kind::kBeginDrawing;
    /// The surface's transform from user units to device pixels when the call was made.
    kitui::inkwell::Transform transform{};

    /// Fills and strokes: the elements of the path, when the recording supplier made it
    /// (path_recorded); a path from elsewhere, or an empty handle, records none.
    std::vector<RecordedPathElement> path;
    bool path_recorded = false;
    /// kFillWithBrush, kFillWithShader: the fill rule.
    int fill_rule = 0;
    /// Fills and strokes: false when the brush, shader or pen handle was empty (the
    /// surface draws nothing then, and the fields below keep their defaults).
    bool paint_given = false;
    /// kFillWithBrush: the brush's colour; kStroke: the pen's; kDrawText: the text's.
    kitui::inkwell::ColorRGBA color{};
    /// kStroke: the pen's width in user units.
    float pen_width = 0.0f;
    /// kFillWithShader: the shader's end points and colours.
    kitui::ui::PointT<float> shader_start{};
    kitui::ui::PointT<float> shader_end{};
    kitui::inkwell::ColorRGBA shader_start_color{};
    kitui::inkwell::ColorRGBA shader_end_color{};

    /// kClipToRect: the rectangle; kDrawText: the box.
    kitui::ui::RectT<float> rect{};
    /// kTranslate: dx, dy; kDrawPicture: the origin.
    kitui::ui::PointT<float> offset{};
    /// kSetAntialiasing: the value set.
    int antialiasing = 0;
    /// kDrawText: the text, as UTF-8.
    std::string text;

    /// Whether the call fills or strokes a path.
    bool IsFillOrStroke() const noexcept {
        return kind == Kind::kFillWithBrush || kind == Kind::kFillWithShader ||
               kind == Kind::kStroke;
    }
};

class QZ_HOST_API RecordingInkwell {
public:
    /// A drawing context whose surface records each call and then makes it on `target`'s
    /// surface, and whose supplier makes its objects with `target`'s supplier (paths are
    /// wrapped so that their figures can be recorded). The target's supplier and surface
    /// are shared, and stay alive as long as the recorder does; what they draw on (an
    /// ImageCanvas's image) must too.
    explicit RecordingInkwell(const kitui::inkwell::Inkwell& target);
    ~RecordingInkwell();
    RecordingInkwell(const RecordingInkwell&) = delete;
    RecordingInkwell& operator=(const RecordingInkwell&) = delete;

    /// [ui-thread] The drawing context to draw through.
    kitui::inkwell::Inkwell& GetInkwell() noexcept;

    /// The calls made to the surface so far, in order.
    const std::vector<DrawingCall>& Calls() const noexcept;
    /// Of those, the fills and strokes, in order.
    std::vector<DrawingCall> FillsAndStrokes() const;
    /// How many times the supplier was asked whether fills are made with shaders.
    int ShaderQueries() const noexcept;
    /// Forgets the calls and queries recorded so far.
    void Clear() noexcept;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace qzhost
