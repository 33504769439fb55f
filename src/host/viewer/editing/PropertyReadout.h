// The viewer's side of the Info palette's property readouts: while a person drags a layer
// in the viewer or scrubs a number in the Layer Properties dock, each step hands the
// property's heading (the layer's name), its value and its change since the edit began to
// the suite slot made for it. Direct manipulation in the viewer uses the dedicated slots
// (rotation, angles, position, point, scale); the dock uses the stream slot with the host's
// layer object and the property's stream path. Every call is logged as a readout event
// before the panel events that it causes.
#pragma once

#include <cstdint>

#include "composition/Layer.h"

struct QZ_InfoPaletteSuite2;

namespace qzview {

class EventLog;

/// The value kinds of the stream slot.
inline constexpr std::uint32_t kValueKindPoint2 = 6;
inline constexpr std::uint32_t kValueKindPoint3 = 18;
inline constexpr std::uint32_t kValueKindNumber = 1;

/// The label with which the viewer's anchor-point tool names what it moves.
inline constexpr const char* kAnchorPointLabel = "Anchor Point:";

class PropertyReadout {
public:
    /// `log` may be null.
    PropertyReadout(const QZ_InfoPaletteSuite2& suite, EventLog* log);
    ~PropertyReadout();
    PropertyReadout(const PropertyReadout&) = delete;
    PropertyReadout& operator=(const PropertyReadout&) = delete;

    /// [ui-thread] A drag in the viewer of `property` of `layer`: `value` now and `change`
    /// since the drag began. Position, Anchor Point and Scale go to the two- or
    /// three-component slot; Rotation to the rotation slot on a 2-D layer and to the angle
    /// slot on a 3-D one (as does Orientation, with its flag). Returns the slot's result.
    int Drag(const Layer& layer, Property property, const PropertyValue& value,
             const PropertyValue& change);
    /// [ui-thread] A scrub or a typed value in the dock: the stream slot with the layer's
    /// host object and the property's stream path. Returns the slot's result.
    int Stream(const Layer& layer, Property property, const PropertyValue& value,
               const PropertyValue& change);

    /// The number of readout calls made so far.
    int Calls() const noexcept { return calls_; }

private:
    int Logged(int slot, int result);

    const QZ_InfoPaletteSuite2& suite_;
    EventLog* log_;
    int calls_ = 0;
};

} // namespace qzview
