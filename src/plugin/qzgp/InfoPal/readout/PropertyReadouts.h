// Property readouts: a layer property's value and its change, turned into five text lines
// (heading, label, value, delta label, delta) and shown as a five-line update.
#pragma once

#include <cstdint>

#include "InfoPal/readout/TextLinesSink.h"
#include "qzgp/QZ_InfoPaletteSuite.h"

namespace infopal {

// Each [ui-thread] function formats and calls panel.ShowTextLines(..., TextLinesType::Five).
// `name` is the heading line; null names and labels are empty lines.

void ShowRotationReadout(TextLinesSink& panel, QZ_Narrow name, float value, float delta);
void ShowOrientationReadout(TextLinesSink& panel, QZ_Narrow name, bool orientation, double x,
                            double y, double z, double dx, double dy, double dz);
void ShowPositionReadout2D(TextLinesSink& panel, QZ_Narrow name, float x, float y, float dx,
                           float dy);
void ShowPositionReadout3D(TextLinesSink& panel, QZ_Narrow name, float x, float y, float z,
                           float dx, float dy, float dz);
void ShowPointReadout2D(TextLinesSink& panel, QZ_Narrow name, QZ_Narrow label, float x, float y,
                        float dx, float dy);
void ShowPointReadout3D(TextLinesSink& panel, QZ_Narrow name, QZ_Narrow label, float x, float y,
                        float z, float dx, float dy, float dz);
void ShowScaleReadout2D(TextLinesSink& panel, QZ_Narrow name, float x, float y, float dx, float dy);
void ShowScaleReadout3D(TextLinesSink& panel, QZ_Narrow name, float x, float y, float z, float dx,
                        float dy, float dz);
/// Chooses the readout by the property's match name, its mask membership and
/// `value_kind` (6 a two-component point, 18 a three-component point, else one number).
void ShowStreamReadout(TextLinesSink& panel, PXM_Layer* layer, const KVB_StreamIDPath* path,
                       QZ_Narrow name, QZ_Narrow label, std::uint32_t value_kind, float x, float y,
                       float z, float dx, float dy, float dz);

} // namespace infopal
