// Edit > Copy Pixel Values: the Info panel's readout on the clipboard, in two forms. As
// text, a line per row that the panel shows: each channel's label and value, X and Y, and
// X' and Y' while the panel shows them, read back from the panel's controls so that they
// are exactly what the person sees ("R : 0.5249"). As JSON (application/json), what the
// panel was given: the working floats (and, with displayed values, the floats delivered),
// the pointer's position and pixel, the origin, the panel's notation and how the pixel was
// sampled.
#pragma once

#include <QByteArray>
#include <QString>

#include "InfoFeed.h"
#include "pixelview/PanelState.h"

namespace qzhost::pixelview {
class PixelViewHost;
}

namespace qzview {

/// The rows that `panel` shows, one line each (ending in '\n'): label, a space, value.
QString PixelValuesText(const qzhost::pixelview::PanelState& panel);

/// `delivered` with the notation of `panel`, as one JSON object: "red", "green", "blue",
/// "alpha" (the working floats, in the shortest form that reads back as the same float;
/// "nan", "inf" and "-inf" as strings), "displayed" (with displayed values: the floats
/// delivered, red, green, blue, alpha), "position" (the pointer's point), "pixel" (its
/// column and row), "origin" (when set), "mode" (the panel's notation number) and
/// "notation" (its name), "sample_size" and "values" ("working" or "displayed").
QByteArray PixelValuesJson(const qzhost::pixelview::PanelState& panel,
                           const InfoFeed::Delivery& delivered);

/// Puts both forms of the panel's readout of `delivered` on the clipboard. False, leaving
/// the clipboard alone, when the Info panel is closed.
bool CopyPixelValues(qzhost::pixelview::PixelViewHost& host, const InfoFeed::Delivery& delivered);

} // namespace qzview
