// The View menu: the zoom steps of the canvas, and the origin of X', Y' set at the pointer's
// last place on the canvas (disabled until the pointer has been there) or cleared; how the
// Info panel samples the composite (SampleChoices); and the exposure box of the View
// toolbar, for float images on the display.
#pragma once

#include "ActionSet.h"
#include "canvas/CanvasMapping.h"

class QDoubleSpinBox;

namespace qzview {

class CanvasView;
class SampleChoices;

class ViewActions : public ActionSet {
    Q_OBJECT
public:
    /// The zoom actions drive `canvas`.
    ViewActions(CanvasView& canvas, QWidget& window);

    /// The exposure in stops; the window enables it while the project depth is float.
    QDoubleSpinBox* Exposure() const noexcept { return exposure_; }
    /// Sample Size and Sample Values.
    SampleChoices& Sampling() const noexcept { return *sampling_; }

    /// Whether the pointer has been on the canvas, so that Set Origin at Pointer has a
    /// place to take.
    void SetPointerKnown(bool known);

signals:
    /// Set Origin at Pointer: the origin is to be set at the pointer's last place on the
    /// canvas.
    void originAtPointer();
    /// Clear Origin.
    void originCleared();

private:
    QDoubleSpinBox* exposure_ = nullptr;
    QAction* setOrigin_ = nullptr;
    SampleChoices* sampling_ = nullptr;
};

} // namespace qzview
