#include "LayerEditor.h"

#include <memory>

#include "LayerEdit.h"
#include "LayerListEdit.h"

namespace qzview {

namespace {
/// Wheel notches, or arrow-key nudges, closer together than this belong to one run.
constexpr qint64 kRunMs = 1000;

PropertyValue Difference(const PropertyValue& now, const PropertyValue& start) {
    return {now[0] - start[0], now[1] - start[1], now[2] - start[2]};
}
} // namespace

LayerEditor::LayerEditor(Composition& composition, PropertyReadout& readout, QObject* parent)
    : QObject(parent), composition_(composition), readout_(readout) {}

void LayerEditor::Select(int id) {
    if (composition_.Find(id) == nullptr) {
        id = 0;
    }
    if (id != selected_) {
        selected_ = id;
        emit selectionChanged(id);
    }
}

void LayerEditor::Apply(int layer, const LayerValues& values) {
    composition_.SetValues(layer, values);
    emit valuesChanged(layer);
}

void LayerEditor::Record(const QString& text, int layer, const LayerValues& before,
                         const LayerValues& after, int gesture) {
    if (before == after) {
        return;
    }
    // The edit is already applied; pushing it applies the same values again.
    history_.push(new LayerEdit(
        text, layer, before, after,
        [this](int id, const LayerValues& values) { Apply(id, values); }, gesture));
}

const Layer& LayerEditor::ChangeProperty(int layer, Property property, const PropertyValue& value) {
    const Layer& found = *composition_.Find(layer);
    LayerValues values = found.values;
    SetProperty(values, property, value);
    Apply(layer, values);
    return found;
}

QString LayerEditor::ChangeText(const Layer& layer, Property property) {
    return tr("Change %1").arg(QString::fromStdString(PropertyName(layer, property)));
}

void LayerEditor::Press(CompositionPoint at, bool corner_handle) {
    drag_.reset();
    wheel_.reset();
    const Layer* selected = SelectedLayer();
    const Layer* layer = nullptr;
    Property property = Property::Position;
    if (tool_ == Tool::Selection && corner_handle && selected != nullptr && selected->Drawn()) {
        layer = selected;
        property = Property::Scale;
    } else {
        layer = composition_.LayerAt(at.x, at.y);
        if (layer == nullptr && tool_ != Tool::Selection && selected != nullptr &&
            selected->Drawn()) {
            // The anchor-point and rotation tools go on with the selected layer.
            layer = selected;
        }
        Select(layer != nullptr ? layer->id : 0);
        if (tool_ == Tool::AnchorPoint) {
            property = Property::AnchorPoint;
        } else if (tool_ == Tool::Rotation) {
            property = layer != nullptr && layer->ThreeD() && setsOrientation_
                           ? Property::Orientation
                           : Property::Rotation;
        }
    }
    if (layer != nullptr) {
        drag_.emplace(*layer, property, at, composition_.Transform(layer->id),
                      composition_.PixelAspect());
    }
}

void LayerEditor::Drag(CompositionPoint at, bool shift) {
    if (!drag_) {
        return;
    }
    const LayerValues& values = drag_->Move(at, shift);
    Apply(drag_->LayerId(), values);
    const Layer* layer = composition_.Find(drag_->LayerId());
    if (layer != nullptr) {
        readout_.Drag(*layer, drag_->Dragged(), drag_->Value(), drag_->Change());
        emit readoutMade();
    }
}

void LayerEditor::Release() {
    if (!drag_) {
        return;
    }
    const LayerDrag done = std::move(*drag_);
    drag_.reset();
    if (const Layer* layer = composition_.Find(done.LayerId())) {
        Record(ChangeText(*layer, done.Dragged()), layer->id, done.Before(), layer->values);
    }
}

void LayerEditor::WheelScale(int steps, bool coarse, std::optional<CompositionPoint> pointer) {
    const Layer* layer = SelectedLayer();
    if ((layer == nullptr || !layer->Drawn()) && pointer) {
        layer = composition_.LayerAt(pointer->x, pointer->y);
    }
    if (layer == nullptr || !layer->Drawn() || steps == 0) {
        return;
    }
    Select(layer->id);
    ContinueRun(wheel_, layer->id, layer->values.scale, false);
    const LayerValues before = layer->values;
    const double step = steps * (coarse ? 10.0 : 1.0);
    PropertyValue scale = before.scale;
    for (int c = 0; c < Components(*layer, Property::Scale); ++c) {
        scale[static_cast<std::size_t>(c)] += step;
    }
    ChangeProperty(layer->id, Property::Scale, scale);
    readout_.Drag(*layer, Property::Scale, layer->values.scale,
                  Difference(layer->values.scale, wheel_->start));
    emit readoutMade();
    Record(tr("Scale"), layer->id, before, layer->values, wheel_->gesture);
}

void LayerEditor::BeginEdit(int layer, Property property) {
    const Layer* found = composition_.Find(layer);
    if (found == nullptr) {
        scrub_.reset();
        return;
    }
    scrub_ = Scrub{layer, property, found->values, GetProperty(found->values, property)};
}

void LayerEditor::Edit(int layer, Property property, const PropertyValue& value) {
    if (!scrub_ || scrub_->layer != layer || scrub_->property != property) {
        BeginEdit(layer, property);
    }
    if (!scrub_) {
        return; // no such layer
    }
    const Layer& changed = ChangeProperty(layer, property, value);
    const PropertyValue now = GetProperty(changed.values, property);
    readout_.Stream(changed, property, now, Difference(now, scrub_->start));
    emit readoutMade();
}

void LayerEditor::EndEdit(int layer, Property property) {
    if (!scrub_ || scrub_->layer != layer || scrub_->property != property) {
        return;
    }
    const Scrub done = std::move(*scrub_);
    scrub_.reset();
    if (const Layer* found = composition_.Find(layer)) {
        Record(ChangeText(*found, property), layer, done.before, found->values);
    }
}

void LayerEditor::Type(int layer, Property property, const PropertyValue& value) {
    const Layer* found = composition_.Find(layer);
    if (found == nullptr) {
        return;
    }
    const LayerValues before = found->values;
    const Layer& changed = ChangeProperty(layer, property, value);
    const PropertyValue now = GetProperty(changed.values, property);
    readout_.Stream(changed, property, now, Difference(now, GetProperty(before, property)));
    emit readoutMade();
    Record(ChangeText(changed, property), layer, before, changed.values);
}

void LayerEditor::SetThreeD(int layer, bool on) {
    const Layer* found = composition_.Find(layer);
    if (found == nullptr || found->kind != LayerKind::Visual || found->values.threeD == on) {
        return;
    }
    LayerValues values = found->values;
    values.threeD = on;
    const LayerValues before = found->values;
    Apply(layer, values);
    Record(on ? tr("3D Layer On") : tr("3D Layer Off"), layer, before, values);
}

void LayerEditor::ResetTransform() {
    const Layer* layer = SelectedLayer();
    if (layer == nullptr) {
        return;
    }
    const LayerValues before = layer->values;
    LayerValues values = before;
    const LayerValues& made = layer->defaults;
    values.anchor = made.anchor;
    values.position = made.position;
    values.scale = made.scale;
    values.orientation = made.orientation;
    values.rotationX = made.rotationX;
    values.rotationY = made.rotationY;
    values.rotation = made.rotation;
    values.opacity = made.opacity;
    values.zoom = made.zoom;
    const int id = layer->id;
    Apply(id, values);
    Record(tr("Reset Transform"), id, before, values);
}

void LayerEditor::AddMask() {
    const Layer* layer = SelectedLayer();
    if (layer == nullptr || !layer->HasPixels() || layer->values.mask) {
        return;
    }
    const LayerValues before = layer->values;
    LayerValues values = before;
    values.mask = RectMask{layer->Width() / 4.0, layer->Height() / 4.0, layer->Width() / 2.0,
                           layer->Height() / 2.0};
    const int id = layer->id;
    Apply(id, values);
    Record(tr("New Mask"), id, before, values);
}

void LayerEditor::AddCamera() {
    const int id = composition_.AddCamera();
    emit layersChanged();
    Select(id);
}

void LayerEditor::Forget(int layer) {
    if (scrub_ && scrub_->layer == layer) {
        scrub_.reset();
    }
    if (wheel_ && wheel_->layer == layer) {
        wheel_.reset();
    }
    if (nudge_ && nudge_->layer == layer) {
        nudge_.reset();
    }
}

void LayerEditor::SetChannelSet(int layer, int set) {
    const Layer* found = composition_.Find(layer);
    if (found == nullptr || !found->image || found->image->set == set) {
        return;
    }
    const std::vector<std::string> names = found->image->SetNames();
    if (set < 0 || set >= static_cast<int>(names.size())) {
        return;
    }
    const auto show = [this, layer](int shown) {
        composition_.SetChannelSet(layer, shown);
        emit layersChanged();
        emit channelSetChanged(layer);
    };
    const int before = found->image->set;
    history_.push(new LayerListEdit(
        tr("Channels: %1").arg(QString::fromStdString(names[static_cast<std::size_t>(set)])),
        [show, set] { show(set); }, [show, before] { show(before); }));
}

void LayerEditor::SetColourSpace(int layer, const std::string& space,
                                 std::shared_ptr<const qzhost::ColourTransform> to_working) {
    const Layer* found = composition_.Find(layer);
    if (found == nullptr || !found->image || found->image->colourSpace == space) {
        return;
    }
    const auto read = [this, layer](const std::string& name,
                                    const std::shared_ptr<const qzhost::ColourTransform>& into) {
        composition_.SetColourSpace(layer, name, into);
        emit layersChanged();
    };
    const std::string before = found->image->colourSpace;
    const std::shared_ptr<const qzhost::ColourTransform> undone = found->image->toWorking;
    history_.push(new LayerListEdit(
        tr("Input Colour Space: %1").arg(QString::fromStdString(space)),
        [read, space, to_working] { read(space, to_working); },
        [read, before, undone] { read(before, undone); }));
}

void LayerEditor::StepChannelSet(int steps) {
    const Layer* layer = SelectedLayer();
    if (layer == nullptr || !layer->image) {
        return;
    }
    const auto count = static_cast<int>(layer->image->SetNames().size());
    const int next = ((layer->image->set + steps) % count + count) % count;
    SetChannelSet(layer->id, next);
}

void LayerEditor::SetVisible(int layer, bool visible) {
    const Layer* found = composition_.Find(layer);
    if (found == nullptr || found->visible == visible) {
        return;
    }
    const auto show = [this, layer](bool on) {
        composition_.SetVisible(layer, on);
        emit layersChanged();
    };
    history_.push(new LayerListEdit(
        visible ? tr("Show Layer") : tr("Hide Layer"), [show, visible] { show(visible); },
        [show, visible] { show(!visible); }));
}

void LayerEditor::DeleteSelected() {
    const Layer* layer = SelectedLayer();
    if (layer == nullptr) {
        return;
    }
    const int id = layer->id;
    // What the deletion took out, kept for its undoing.
    auto taken = std::make_shared<std::optional<RemovedLayer>>();
    history_.push(new LayerListEdit(
        tr("Delete Layer"),
        [this, id, taken] {
            Forget(id);
            *taken = composition_.Remove(id);
            if (selected_ == id) {
                Select(0);
            }
            emit layersChanged();
        },
        [this, id, taken] {
            if (!*taken) {
                return;
            }
            composition_.Restore(**taken);
            taken->reset();
            emit layersChanged();
            Select(id);
        }));
}

void LayerEditor::MoveStep(const QString& text, int layer, int index) {
    const std::optional<std::size_t> from = composition_.IndexOf(layer);
    if (!from || index < 0 || composition_.Layers().empty()) {
        return;
    }
    const std::size_t to =
        std::min(static_cast<std::size_t>(index), composition_.Layers().size() - 1);
    if (to == *from) {
        return;
    }
    const auto move = [this, layer](std::size_t place) {
        composition_.Move(layer, place);
        emit layersChanged();
    };
    history_.push(new LayerListEdit(
        text, [move, to] { move(to); }, [move, from] { move(*from); }));
}

void LayerEditor::MoveLayer(int layer, int index) {
    MoveStep(tr("Move Layer"), layer, index);
}

bool LayerEditor::CanMove(bool up) const noexcept {
    const std::optional<std::size_t> index = composition_.IndexOf(selected_);
    if (!index) {
        return false;
    }
    return up ? *index + 1 < composition_.Layers().size() : *index > 0;
}

void LayerEditor::BringForward() {
    if (CanMove(true)) {
        MoveStep(tr("Bring Forward"), selected_,
                 static_cast<int>(*composition_.IndexOf(selected_)) + 1);
    }
}

void LayerEditor::SendBackward() {
    if (CanMove(false)) {
        MoveStep(tr("Send Backward"), selected_,
                 static_cast<int>(*composition_.IndexOf(selected_)) - 1);
    }
}

void LayerEditor::ContinueRun(std::optional<TimedRun>& run, int layer, const PropertyValue& start,
                              bool broken) {
    if (!run || run->layer != layer || broken || run->clock.elapsed() > kRunMs) {
        run.emplace();
        run->layer = layer;
        run->gesture = ++gestures_;
        run->start = start;
        run->last = start;
        run->clock.start();
    }
    run->clock.restart();
}

void LayerEditor::Nudge(double dx, double dy) {
    const Layer* layer = SelectedLayer();
    if (layer == nullptr || (dx == 0 && dy == 0)) {
        return;
    }
    const PropertyValue position = layer->values.position;
    ContinueRun(nudge_, layer->id, position, nudge_ && nudge_->last != position);
    const LayerValues before = layer->values;
    const PropertyValue moved{position[0] + dx, position[1] + dy, position[2]};
    const Layer& changed = ChangeProperty(layer->id, Property::Position, moved);
    nudge_->last = changed.values.position;
    readout_.Drag(changed, Property::Position, changed.values.position,
                  Difference(changed.values.position, nudge_->start));
    emit readoutMade();
    Record(tr("Nudge"), changed.id, before, changed.values, nudge_->gesture);
}

} // namespace qzview
