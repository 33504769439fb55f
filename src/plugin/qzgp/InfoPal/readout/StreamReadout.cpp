// The stream readout: the host reports a layer property by its path, and the property's
// match name (and whether it lies in a mask, and how many components its value has)
// chooses the label and the readout.
#include <array>
#include <span>
#include <string>

#include "InfoPal/readout/PropertyReadouts.h"
#include "InfoPal/readout/ReadoutFormatters.h"
#include "InfoPal/readout/ReadoutLabels.h"
#include "host/KVB_MatchName.h"
#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "host/PXM_StreamNames.h"
#include "host/U_LocalizedStrings.h"
#include "host/U_TextConversion.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;

constexpr std::uint32_t kValueKindPoint2D = 6;
constexpr std::uint32_t kValueKindPoint3D = 18;

// A layer counts as three-dimensional when it is a visual layer with its 3-D switch on, a
// camera or a light. The flag word is read only for a visual layer.
bool LayerIsThreeD(const PXM_Layer& layer) {
    if (layer.IsOfKind(PXM_LayerKind_VISUAL) && (layer.GetFlags() & PXM_LayerFlag_THREE_D) != 0U) {
        return true;
    }
    return layer.IsOfKind(PXM_LayerKind_CAMERA) || layer.IsOfKind(PXM_LayerKind_LIGHT);
}

struct StreamValues {
    std::array<float, 3> values;
    std::array<float, 3> deltas;
};

// A point readout with two components on a flat layer, three on a 3-D one.
void ShowLayerPoint(TextLinesSink& panel, QZ_Narrow name, const UTF16String& label,
                    const PXM_Layer& layer, const StreamValues& v) {
    const std::size_t count = LayerIsThreeD(layer) ? 3 : 2;
    ShowPointLines(panel, name, label, std::span(v.values).first(count),
                   std::span(v.deltas).first(count));
}

void ShowSingle(TextLinesSink& panel, QZ_Narrow name, const char* label_key, const char* unit_key,
                float value) {
    const UTF16String label = U_ZStringToUTF16String(label_key);
    const std::string unit = unit_key != nullptr ? U_ZStringToMBString(unit_key) : std::string();
    ShowSingleValueLines(panel, name, label, unit, value);
}

} // namespace

// Without a layer or a path there is no property to show: the lines stay as they were.
void ShowStreamReadout(TextLinesSink& panel, PXM_Layer* layer, const KVB_StreamIDPath* path,
                       QZ_Narrow name, QZ_Narrow label, std::uint32_t value_kind, float x, float y,
                       float z, float dx, float dy, float dz) {
    if (layer == nullptr || path == nullptr) {
        return;
    }
    // The tail name is a reference of our own, released when it goes out of scope
    // whichever way this function leaves.
    const KVB_MatchName stream = PXM_Layer::GetMatchNameAtTail(*path);
    const bool in_mask = PXM_IsMaskSubtypeStreamPath(*path);
    const StreamValues v{{x, y, z}, {dx, dy, dz}};

    if (stream == *OM_StreamNamePtr_MASK_SHAPE || stream == PXM_StreamName_PAINT_SHAPE) {
        // Shapes have no readout.
        return;
    }
    if (stream == PXM_StreamName_MASK_OPACITY) {
        ShowSingle(panel, name, labels::kMaskOpacity, labels::kPercentUnit, x);
        return;
    }
    if (stream == PXM_StreamName_MASK_FEATHER) {
        ShowSingle(panel, name, labels::kFeather, labels::kPixelsUnit, x);
        return;
    }
    if (stream == PXM_StreamName_MASK_OFFSET) {
        ShowSingle(panel, name, labels::kMaskExpansion, labels::kPixelsUnit, x);
        return;
    }
    if (stream == PXM_StreamName_ANCHOR_POINT) {
        // A visual layer's anchor point; a camera's or a light's is its point of interest.
        const UTF16String anchor_label = U_ZStringToUTF16String(
            layer->IsOfKind(PXM_LayerKind_VISUAL) ? labels::kAnchorPoint
                                                  : labels::kPointOfInterest);
        ShowLayerPoint(panel, name, anchor_label, *layer, v);
        return;
    }
    if (stream == PXM_StreamName_POSITION) {
        ShowLayerPoint(panel, name, U_ZStringToUTF16String(labels::kPosition), *layer, v);
        return;
    }
    if (stream == PXM_StreamName_SCALE) {
        const std::size_t count = LayerIsThreeD(*layer) ? 3 : 2;
        ShowScaleLines(panel, name, std::span(v.values).first(count),
                       std::span(v.deltas).first(count));
        return;
    }
    if (stream == PXM_StreamName_ORIENTATION) {
        // Through this path the orientation shows as three plain numbers under
        // "Position:"; wrapped angles come only through the orientation readout.
        ShowPointLines(panel, name, U_ZStringToUTF16String(labels::kPosition), v.values, v.deltas);
        return;
    }
    if (stream == PXM_StreamName_ROTATE_X) {
        ShowRotationLines(panel, name, U_ZStringToUTF16String(labels::kRotationX), x, dx);
        return;
    }
    if (stream == PXM_StreamName_ROTATE_Y) {
        ShowRotationLines(panel, name, U_ZStringToUTF16String(labels::kRotationY), x, dx);
        return;
    }
    if (stream == PXM_StreamName_ROTATE_Z) {
        // On a flat layer the Z rotation is the layer's only rotation.
        const UTF16String rotation_label =
            U_ZStringToUTF16String(LayerIsThreeD(*layer) ? labels::kRotationZ : labels::kRotation);
        ShowRotationLines(panel, name, rotation_label, x, dx);
        return;
    }
    if (stream == PXM_StreamName_OPACITY || stream == PXM_StreamName_AUDIO_LEVELS) {
        // Audio levels share the opacity label.
        ShowSingle(panel, name, labels::kOpacity, labels::kPercentUnit, x);
        return;
    }
    if (in_mask) {
        ShowSingle(panel, name, labels::kValue, nullptr, x);
        return;
    }
    if (value_kind == kValueKindPoint2D) {
        ShowPointLines(panel, name, U_ZStringToUTF16String(labels::kPoint),
                       std::span(v.values).first(2), std::span(v.deltas).first(2));
        return;
    }
    if (value_kind == kValueKindPoint3D) {
        ShowPointLines(panel, name, U_ZStringToUTF16String(labels::kPoint), v.values, v.deltas);
        return;
    }
    ShowSingleValueLines(panel, name, U_MBToUTF16String(label), std::string(), x);
}

} // namespace infopal
