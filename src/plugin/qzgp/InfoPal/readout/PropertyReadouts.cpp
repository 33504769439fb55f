// The property readouts that the host calls with the values themselves: rotation, the
// angle triple, positions, labelled points and scales.
#include "InfoPal/readout/PropertyReadouts.h"

#include <array>

#include "InfoPal/readout/AngleText.h"
#include "InfoPal/readout/ReadoutFormatters.h"
#include "InfoPal/readout/ReadoutLabels.h"
#include "InfoPal/readout/ReadoutNumbers.h"
#include "host/M_Math.h"
#include "host/U_LocalizedStrings.h"
#include "host/U_TextConversion.h"
#include "kitcore/utility/NumberText.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;

constexpr double kTurn = 360.0;
constexpr double kHalfTurn = 180.0;

// An orientation angle brought into [0, 360).
double WrapOrientation(double degrees) {
    double wrapped = M_fmod(degrees, kTurn);
    if (wrapped < 0.0) {
        wrapped += kTurn;
    }
    return wrapped;
}

// An orientation change brought into [-180, 180]; both ends stay as they are.
double WrapOrientationChange(double degrees) {
    double wrapped = M_fmod(degrees, kTurn);
    if (wrapped < -kHalfTurn) {
        wrapped += kTurn;
    } else if (wrapped > kHalfTurn) {
        wrapped -= kTurn;
    }
    return wrapped;
}

// Three angles as "a, b, c", each with its degree sign.
UTF16String AngleTripleText(const std::array<double, 3>& degrees) {
    std::array<UTF16String, 3> texts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        FormatAngleText(NarrowToFloat(degrees[i]), texts[i]);
    }
    return kitcore::utility::ReplaceInString(U_AsciiToUTF16String("@0, @1, @2"), texts[0], texts[1],
                                             texts[2]);
}

} // namespace

void ShowRotationReadout(TextLinesSink& panel, QZ_Narrow name, float value, float delta) {
    ShowRotationLines(panel, name, U_ZStringToUTF16String(labels::kRotation), value, delta);
}

void ShowOrientationReadout(TextLinesSink& panel, QZ_Narrow name, bool orientation, double x,
                            double y, double z, double dx, double dy, double dz) {
    const UTF16String heading = U_MBToUTF16String(name);
    const UTF16String label =
        U_ZStringToUTF16String(orientation ? labels::kOrientation : labels::kRotation);
    std::array<double, 3> values = {x, y, z};
    if (orientation) {
        for (double& value : values) {
            value = WrapOrientation(value);
        }
    }
    const UTF16String value_text = AngleTripleText(values);
    UTF16String delta_label;
    UTF16String delta_text;
    if (!(dx == 0.0 && dy == 0.0 && dz == 0.0)) {
        std::array<double, 3> deltas = {dx, dy, dz};
        if (orientation) {
            for (double& delta : deltas) {
                delta = WrapOrientationChange(delta);
            }
        }
        delta_label = DeltaLabel();
        delta_text = AngleTripleText(deltas);
    }
    panel.ShowTextLines(heading, label, value_text, delta_label, delta_text, TextLinesType::Five);
}

void ShowPositionReadout2D(TextLinesSink& panel, QZ_Narrow name, float x, float y, float dx,
                           float dy) {
    const std::array values = {x, y};
    const std::array deltas = {dx, dy};
    ShowPointLines(panel, name, U_ZStringToUTF16String(labels::kPosition), values, deltas);
}

void ShowPositionReadout3D(TextLinesSink& panel, QZ_Narrow name, float x, float y, float z,
                           float dx, float dy, float dz) {
    const std::array values = {x, y, z};
    const std::array deltas = {dx, dy, dz};
    ShowPointLines(panel, name, U_ZStringToUTF16String(labels::kPosition), values, deltas);
}

void ShowPointReadout2D(TextLinesSink& panel, QZ_Narrow name, QZ_Narrow label, float x, float y,
                        float dx, float dy) {
    const std::array values = {x, y};
    const std::array deltas = {dx, dy};
    ShowPointLines(panel, name, U_MBToUTF16String(label), values, deltas);
}

void ShowPointReadout3D(TextLinesSink& panel, QZ_Narrow name, QZ_Narrow label, float x, float y,
                        float z, float dx, float dy, float dz) {
    const std::array values = {x, y, z};
    const std::array deltas = {dx, dy, dz};
    ShowPointLines(panel, name, U_MBToUTF16String(label), values, deltas);
}

void ShowScaleReadout2D(TextLinesSink& panel, QZ_Narrow name, float x, float y, float dx,
                        float dy) {
    const std::array values = {x, y};
    const std::array deltas = {dx, dy};
    ShowScaleLines(panel, name, values, deltas);
}

void ShowScaleReadout3D(TextLinesSink& panel, QZ_Narrow name, float x, float y, float z, float dx,
                        float dy, float dz) {
    const std::array values = {x, y, z};
    const std::array deltas = {dx, dy, dz};
    ShowScaleLines(panel, name, values, deltas);
}

} // namespace infopal
