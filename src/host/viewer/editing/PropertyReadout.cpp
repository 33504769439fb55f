#include "PropertyReadout.h"

#include <string>

#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "log/EventLog.h"
#include "qzgp/QZ_InfoPaletteSuite.h"

namespace qzview {

namespace {

float F(double value) {
    return static_cast<float>(value);
}

/// The path from the layer down to the property's stream: the transform group, or the
/// layer's mask group and its one mask.
KVB_StreamIDPath StreamPath(Property property) {
    std::vector<KVB_MatchName> names;
    if (IsMaskProperty(property)) {
        names.emplace_back("MASK_GROUP");
        names.emplace_back("MASK_1");
    } else {
        names.emplace_back("TRANSFORM_GROUP");
    }
    names.emplace_back(MatchName(property));
    return KVB_StreamIDPath(std::move(names), IsMaskProperty(property));
}

} // namespace

PropertyReadout::PropertyReadout(const QZ_InfoPaletteSuite2& suite, EventLog* log)
    : suite_(suite), log_(log) {}

PropertyReadout::~PropertyReadout() = default;

int PropertyReadout::Logged(int slot, int result) {
    ++calls_;
    if (log_ != nullptr) {
        log_->Event("readout",
                    ",\"slot\":" + std::to_string(slot) + ",\"result\":" + std::to_string(result));
    }
    return result;
}

int PropertyReadout::Drag(const Layer& layer, Property property, const PropertyValue& v,
                          const PropertyValue& d) {
    const char* name = layer.name.c_str();
    const bool three = Components(layer, property) == 3;
    switch (property) {
    case Property::Position:
        return three ? Logged(8, suite_.ShowPositionReadout3D(name, F(v[0]), F(v[1]), F(v[2]),
                                                              F(d[0]), F(d[1]), F(d[2])))
                     : Logged(7, suite_.ShowPositionReadout2D(name, F(v[0]), F(v[1]), F(d[0]),
                                                              F(d[1])));
    case Property::AnchorPoint:
        return three
                   ? Logged(10, suite_.ShowPointReadout3D(name, kAnchorPointLabel, F(v[0]), F(v[1]),
                                                          F(v[2]), F(d[0]), F(d[1]), F(d[2])))
                   : Logged(9, suite_.ShowPointReadout2D(name, kAnchorPointLabel, F(v[0]), F(v[1]),
                                                         F(d[0]), F(d[1])));
    case Property::Scale:
        return three ? Logged(12, suite_.ShowScaleReadout3D(name, F(v[0]), F(v[1]), F(v[2]),
                                                            F(d[0]), F(d[1]), F(d[2])))
                     : Logged(11,
                              suite_.ShowScaleReadout2D(name, F(v[0]), F(v[1]), F(d[0]), F(d[1])));
    case Property::Rotation:
        if (!layer.ThreeD()) {
            return Logged(5, suite_.ShowRotationReadout(name, F(v[0]), F(d[0])));
        }
        // On a 3-D layer the rotation tool turns the Z rotation of the three.
        return Logged(6,
                      suite_.ShowOrientationReadout(name, false, layer.values.rotationX,
                                                    layer.values.rotationY, v[0], 0.0, 0.0, d[0]));
    case Property::Orientation:
        return Logged(
            6, suite_.ShowOrientationReadout(name, true, v[0], v[1], v[2], d[0], d[1], d[2]));
    default:
        // The viewer's tools drag no other property; the dock's edits go through Stream().
        return Stream(layer, property, v, d);
    }
}

int PropertyReadout::Stream(const Layer& layer, Property property, const PropertyValue& v,
                            const PropertyValue& d) {
    const int components = Components(layer, property);
    const std::uint32_t kind = components == 3   ? kValueKindPoint3
                               : components == 2 ? kValueKindPoint2
                                                 : kValueKindNumber;
    const KVB_StreamIDPath path = StreamPath(property);
    const std::string label = PropertyName(layer, property) + ":";
    // The host's layer object: its kind and its 3-D switch.
    PXM_Layer host(static_cast<std::int32_t>(layer.kind), layer.values.threeD);
    return Logged(13,
                  suite_.ShowStreamReadout(&host, &path, layer.name.c_str(), label.c_str(), kind,
                                           F(v[0]), F(v[1]), F(v[2]), F(d[0]), F(d[1]), F(d[2])));
}

} // namespace qzview
