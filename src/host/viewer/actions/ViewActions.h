// The View menu: the zoom steps of the canvas, and the origin of X', Y' set at the pointer
// or cleared; and the exposure box of the View toolbar, for float images on the display.
#pragma once

#include "ActionSet.h"
#include "canvas/CanvasMapping.h"

class QDoubleSpinBox;

namespace qzview {

class CanvasView;

class ViewActions : public ActionSet {
    Q_OBJECT
public:
    /// The zoom actions drive `canvas`; the origin is taken under the pointer on it.
    ViewActions(CanvasView& canvas, QWidget& window);

    /// The exposure in stops; the window enables it while the project depth is float.
    QDoubleSpinBox* Exposure() const noexcept { return exposure_; }

signals:
    /// Set Origin at Pointer: the origin is to be `at`.
    void originSet(qzview::CompositionPoint at);
    /// Clear Origin.
    void originCleared();

private:
    QDoubleSpinBox* exposure_ = nullptr;
};

} // namespace qzview
