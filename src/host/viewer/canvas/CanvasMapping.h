// Where the composition lies on the viewer's canvas: the screen position of the top-left
// corner of composition pixel 0,0 and the zoom (screen pixels per composition pixel
// down), and the one rule that maps screen pixels to composition positions. A composition
// pixel is drawn its pixel aspect times as wide as it is tall: aspect x zoom screen pixels
// across and zoom down. The canvas is drawn with that same rule, so the pixel that the
// pointer reads is always the pixel drawn under it.
#pragma once

#include <array>
#include <utility>

namespace qzview {

/// A position in composition pixels.
struct CompositionPoint {
    double x = 0;
    double y = 0;
};

class CanvasMapping {
public:
    /// The zoom levels that the viewer steps through: whole fractions below 1 and whole
    /// numbers above, so that a magnified composition pixel is always whole screen pixels
    /// tall (and, when its pixel aspect is a whole number, wide).
    static constexpr std::array<double, 19> kLevels = {
        1.0 / 16, 1.0 / 12, 1.0 / 8, 1.0 / 6, 1.0 / 4, 1.0 / 3, 1.0 / 2, 1.0,  2.0, 3.0,
        4.0,      6.0,      8.0,     12.0,    16.0,    24.0,    32.0,    48.0, 64.0};

    /// The level nearest to `zoom` (in ratio), for a zoom asked for on the command line.
    static double NearestLevel(double zoom);

    double Zoom() const noexcept { return zoom_; }
    int OriginX() const noexcept { return originX_; }
    int OriginY() const noexcept { return originY_; }
    /// How many times wider than tall a composition pixel is drawn.
    double Aspect() const noexcept { return aspect_; }
    /// Screen pixels per composition pixel across (the zoom times the aspect) and down
    /// (the zoom).
    double ScaleX() const noexcept { return zoom_ * aspect_; }
    double ScaleY() const noexcept { return zoom_; }

    /// Draws composition pixels `aspect` times as wide as tall (1: square), keeping the
    /// origin and the zoom.
    void SetAspect(double aspect) noexcept;

    /// The composition position of the centre of screen pixel `sx`, `sy` (canvas pixels).
    CompositionPoint ToComposition(int sx, int sy) const noexcept;
    /// The screen position (canvas pixels, continuous) where composition point `point` is
    /// drawn.
    std::array<double, 2> ToScreen(CompositionPoint point) const noexcept;
    /// The whole composition pixel drawn at screen pixel `sx`, `sy`: the floor of
    /// ToComposition.
    void PixelAt(int sx, int sy, int& px, int& py) const noexcept;
    /// The composition columns that screen column `sx` shows, first to last - 1: where a
    /// composition pixel is at least a screen pixel wide, the one of PixelAt; where it is
    /// narrower, every column whose centre lies within the screen column (so that the
    /// screen columns share out the composition's columns, and PixelAt's is among them).
    std::pair<int, int> ColumnsAt(int sx) const noexcept;
    /// The same for the composition rows that screen row `sy` shows.
    std::pair<int, int> RowsAt(int sy) const noexcept;

    void SetOrigin(int x, int y) noexcept {
        originX_ = x;
        originY_ = y;
        anchored_ = false;
    }
    /// Sets the zoom (one of kLevels) keeping the composition point under screen pixel
    /// `sx`, `sy` where it is, to the nearest whole screen pixel. Zooming again around the
    /// same screen pixel keeps the point of the first zoom, so that zooming out and back
    /// in returns to the same pixel.
    void ZoomAround(double zoom, int sx, int sy) noexcept;
    /// The next level in (`steps` > 0) or out (`steps` < 0), clamped to the levels.
    double Step(int steps) const noexcept;
    /// The largest level at which a composition of `width` x `height` pixels (drawn the
    /// aspect times as wide) fits into a canvas of `canvas_width` x `canvas_height`,
    /// centred.
    void Fit(int width, int height, int canvas_width, int canvas_height) noexcept;
    /// Zoom `zoom` (one of kLevels), the composition centred.
    void Centre(double zoom, int width, int height, int canvas_width, int canvas_height) noexcept;
    /// Keeps the point at the centre of a canvas of `old_width` x `old_height` at the
    /// centre of the canvas now `width` x `height`.
    void KeepCentre(int old_width, int old_height, int width, int height) noexcept;
    /// Zoom 1, the composition centred.
    void Actual(int width, int height, int canvas_width, int canvas_height) noexcept;

private:
    double zoom_ = 1.0;
    double aspect_ = 1.0;
    int originX_ = 0;
    int originY_ = 0;
    // The composition point that successive zooms around one screen pixel keep there.
    bool anchored_ = false;
    int anchorX_ = 0;
    int anchorY_ = 0;
    CompositionPoint anchor_;
};

} // namespace qzview
