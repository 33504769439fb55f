// The View menu: the zoom steps of the canvas, and the origin of X', Y' set at the pointer's
// last place on the canvas (disabled until the pointer has been there) or cleared; the channel
// sets of the selected layer's image, one of which it shows (Page Down and Page Up step
// through them); how the Info panel samples the composite (SampleChoices); the colour
// config's display and view (DisplayChoices); and the exposure box of the View toolbar,
// stepped by half stops from the menu (] and [), which also puts exposure and gamma back.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ActionSet.h"
#include "canvas/CanvasMapping.h"
#include "qzhost/ColourConfig.h"

class QActionGroup;
class QDoubleSpinBox;

namespace qzview {

class CanvasView;
class DisplayChoices;
class SampleChoices;

class ViewActions : public ActionSet {
    Q_OBJECT
public:
    /// The zoom actions drive `canvas`; the displays and views are `colour`'s (null: no
    /// config), starting with `display` and `view` when given.
    ViewActions(CanvasView& canvas, QWidget& window,
                std::shared_ptr<const qzhost::ColourConfig> colour = nullptr,
                const std::optional<std::string>& display = std::nullopt,
                const std::optional<std::string>& view = std::nullopt);

    /// The exposure in stops; the window enables it while it applies (a float project, or
    /// any with a colour config).
    QDoubleSpinBox* Exposure() const noexcept { return exposure_; }
    /// Sample Size and Sample Values.
    SampleChoices& Sampling() const noexcept { return *sampling_; }
    /// Display and Display View.
    DisplayChoices& Display() const noexcept { return *display_; }

    /// Whether the pointer has been on the canvas, so that Set Origin at Pointer has a
    /// place to take.
    void SetPointerKnown(bool known);

    /// The selected layer's channel sets and the one it shows (none: no layer with pixels
    /// is selected).
    void ShowChannelSets(const std::vector<std::string>& names, int shown);

signals:
    /// A channel set of the selected layer was chosen by its place in the list.
    void channelSetChosen(int set);
    /// Next Channels (1) or Previous Channels (-1).
    void channelSetStepped(int steps);
    /// Set Origin at Pointer: the origin is to be set at the pointer's last place on the
    /// canvas.
    void originAtPointer();
    /// Clear Origin.
    void originCleared();

private:
    /// Moves the exposure box `steps` of its steps (half stops), when it applies.
    void StepExposure(int steps);

    QDoubleSpinBox* exposure_ = nullptr;
    QAction* setOrigin_ = nullptr;
    QMenu* channels_ = nullptr;
    QActionGroup* channelSets_ = nullptr;
    QAction* nextChannels_ = nullptr;
    QAction* previousChannels_ = nullptr;
    SampleChoices* sampling_ = nullptr;
    DisplayChoices* display_ = nullptr;
};

} // namespace qzview
