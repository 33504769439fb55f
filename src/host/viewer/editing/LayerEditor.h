// The edits a person makes to the composition's layers, and their history: the drags of
// the viewer's tools, the wheel with Alt (scale), the scrubs and typed values of the Layer
// Properties dock, the 3-D switch, Reset Transform, a new mask and a new camera, the arrow
// keys' nudges; and the changes to the list of layers: hiding and showing, deleting, and
// moving a layer up or down the stack. Each drag move, wheel notch, nudge, scrub step and
// typed value reports the property to the Info palette; each whole drag, scrub, wheel
// turn, run of nudges or menu command is one step of the undo history, and walking the
// history reports nothing.
#pragma once

#include <optional>

#include <QElapsedTimer>
#include <QObject>
#include <QUndoStack>

#include "LayerDrag.h"
#include "PropertyReadout.h"
#include "composition/Composition.h"

namespace qzview {

class LayerEditor : public QObject {
    Q_OBJECT
public:
    LayerEditor(Composition& composition, PropertyReadout& readout, QObject* parent = nullptr);

    QUndoStack& History() noexcept { return history_; }

    /// The selected layer's id, 0 for none.
    int Selected() const noexcept { return selected_; }
    const Layer* SelectedLayer() const noexcept { return composition_.Find(selected_); }
    void Select(int id);

    Tool CurrentTool() const noexcept { return tool_; }
    void SetTool(Tool tool) noexcept { tool_ = tool; }
    /// Whether the rotation tool turns a 3-D layer's Orientation (else its Z Rotation).
    bool RotationSetsOrientation() const noexcept { return setsOrientation_; }
    void SetRotationSetsOrientation(bool orientation) noexcept { setsOrientation_ = orientation; }

    /// The left button went down at `at`; `corner_handle` when it is on a corner handle
    /// of the selected layer. Picks the layer (and the property) that the drag changes.
    void Press(CompositionPoint at, bool corner_handle);
    /// The pointer moved to `at` during the drag; `shift` (Shift held) keeps a scale's
    /// proportions and makes the rotation tool turn a 3-D layer about Z (else about X with
    /// vertical and about Y with horizontal motion).
    void Drag(CompositionPoint at, bool shift);
    /// The drag ended: it becomes one step of the history.
    void Release();
    /// Whether a drag is changing a layer.
    bool Dragging() const noexcept { return drag_.has_value(); }

    /// The wheel with Alt: `steps` notches of 1 % (10 % when `coarse`) on the selected
    /// layer's scale, or the scale of the layer under `pointer` when none is selected.
    /// Notches in quick succession make one step of the history.
    void WheelScale(int steps, bool coarse, std::optional<CompositionPoint> pointer);

    /// A scrub in the dock began, moved, ended; a value was typed.
    void BeginEdit(int layer, Property property);
    void Edit(int layer, Property property, const PropertyValue& value);
    void EndEdit(int layer, Property property);
    void Type(int layer, Property property, const PropertyValue& value);

    /// Turns the 3-D switch of a visual layer.
    void SetThreeD(int layer, bool on);
    /// Puts the selected layer's transform and opacity back as they were made.
    void ResetTransform();
    /// Gives the selected layer a rectangular mask over its middle half.
    void AddMask();
    /// Adds a camera and selects it.
    void AddCamera();

    /// Shows channel set `set` (an index of its image's SetNames()) of layer `layer`, as one
    /// step of the history.
    void SetChannelSet(int layer, int set);
    /// Shows the selected layer's next (`steps` > 0) or previous channel set, going round.
    void StepChannelSet(int steps);
    /// Reads layer `layer`'s file values as being in the colour space `space`, which
    /// `to_working` turns into working values, as one step of the history.
    void SetColourSpace(int layer, const std::string& space,
                        std::shared_ptr<const qzhost::ColourTransform> to_working);

    /// Hides or shows layer `layer` ("Hide Layer", "Show Layer").
    void SetVisible(int layer, bool visible);
    /// Deletes the selected layer; undoing it puts the layer back in its place, with its id
    /// and values, and selects it.
    void DeleteSelected();
    /// Moves layer `layer` to `index` in the stack (0: the bottom).
    void MoveLayer(int layer, int index);
    /// Moves the selected layer one place towards the top, or towards the bottom.
    void BringForward();
    void SendBackward();
    /// Whether the selected layer can move towards the top (`up`) or the bottom.
    bool CanMove(bool up) const noexcept;

    /// An arrow key: moves the selected layer by `dx`, `dy` composition pixels and reports
    /// its Position as a drag does, with the change since the nudging began. Nudges in
    /// quick succession make one step of the history.
    void Nudge(double dx, double dy);

signals:
    /// A layer's values changed.
    void valuesChanged(int layer);
    /// Another layer (or none) is selected.
    void selectionChanged(int layer);
    /// A layer was added, deleted, put back, moved, hidden or shown.
    void layersChanged();
    /// Layer `layer` shows another channel set.
    void channelSetChanged(int layer);
    /// The Info palette was given a property readout.
    void readoutMade();

private:
    void Apply(int layer, const LayerValues& values);
    void Record(const QString& text, int layer, const LayerValues& before, const LayerValues& after,
                int gesture = 0);
    /// Gives `property` of layer `layer` (which exists) the value `value` and returns
    /// the layer.
    const Layer& ChangeProperty(int layer, Property property, const PropertyValue& value);
    /// The history's name for a change of `property`.
    static QString ChangeText(const Layer& layer, Property property);
    /// One step of the history that moves layer `layer` to `index`, named `text`.
    void MoveStep(const QString& text, int layer, int index);
    /// Forgets the gestures under way on layer `layer` (it is going away).
    void Forget(int layer);

    Composition& composition_;
    PropertyReadout& readout_;
    QUndoStack history_;
    int selected_ = 0;
    Tool tool_ = Tool::Selection;
    bool setsOrientation_ = true;
    std::optional<LayerDrag> drag_;

    struct Scrub {
        int layer = 0;
        Property property = Property::Position;
        LayerValues before;
        PropertyValue start{};
    };
    std::optional<Scrub> scrub_;

    /// Steps in quick succession on one layer that make one step of the history: the
    /// notches of a turn of the wheel, a run of nudges.
    struct TimedRun {
        int layer = 0;
        int gesture = 0;
        /// The property's value as the run began, and as its last step left it.
        PropertyValue start{};
        PropertyValue last{};
        QElapsedTimer clock;
    };
    /// Goes on with `run` for a step on `layer`, or begins another one from `start` (a new
    /// gesture) when the run was on another layer, is `broken`, or its last step is too long
    /// ago.
    void ContinueRun(std::optional<TimedRun>& run, int layer, const PropertyValue& start,
                     bool broken);
    std::optional<TimedRun> wheel_;
    std::optional<TimedRun> nudge_;
    int gestures_ = 0;
};

} // namespace qzview
