// The formatters shared by the property readouts: each builds the five lines of one kind
// of readout (heading, label, value, delta label, delta) and shows them as a five-line
// update. The delta lines are empty when every delta component is exactly zero.
#pragma once

#include <span>
#include <string>

#include "InfoPal/readout/TextLinesSink.h"
#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_InfoPaletteSuite.h"

namespace infopal {

/// [ui-thread] The delta label: the delta sign's text followed by the colon's.
kitcore::utility::UTF16String DeltaLabel();

/// [ui-thread] Whether every component is exactly zero (-0.0 included; NaN is not zero).
bool AllZero(std::span<const float> components);

/// [ui-thread] A point of two or three components and its change, under `label`.
void ShowPointLines(TextLinesSink& panel, QZ_Narrow name,
                    const kitcore::utility::UTF16String& label, std::span<const float> values,
                    std::span<const float> deltas);

/// [ui-thread] A scale of two or three components and its change, under "Scale:".
void ShowScaleLines(TextLinesSink& panel, QZ_Narrow name, std::span<const float> values,
                    std::span<const float> deltas);

/// [ui-thread] One angle and its change, under `label`.
void ShowRotationLines(TextLinesSink& panel, QZ_Narrow name,
                       const kitcore::utility::UTF16String& label, float value, float delta);

/// [ui-thread] One number with one fraction digit under `label`, without delta lines. The
/// property's `unit` is accepted but not shown: the line holds the number alone.
void ShowSingleValueLines(TextLinesSink& panel, QZ_Narrow name,
                          const kitcore::utility::UTF16String& label, const std::string& unit,
                          float value);

} // namespace infopal
