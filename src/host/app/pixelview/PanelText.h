// The Info panel as text for a terminal, laid out from what the panel shows: each shown
// control at the place that the panel gives it, one text row per row of controls, the
// swatch as its colour in hexadecimal, the rules as lines.
#pragma once

#include <string>

#include "pixelview/PanelState.h"
#include "pixelview/TextBuffer.h"
#include "script/Json.h"

namespace qzhost::pixelview {

/// The panel of `state` as lines of text, each ending in '\n', appended to `out`. Columns
/// follow the controls' x positions (one column per 5.5 pixels of the panel), pushed right
/// where a text would otherwise run into its left neighbour; rows follow their y
/// positions. The swatch shows "#RRGGBB"; with `colour`, also as a block in that colour
/// (terminal escape sequences), and alert text in red.
void AppendPanelText(const PanelState& state, bool colour, TextBuffer& out);

/// The same as a string.
std::string PanelText(const PanelState& state, bool colour = false);

/// The same for a snapshot of the panel in the host script form.
std::string PanelText(const script::Json& snapshot, bool colour = false);

/// The swatch colour as "#RRGGBB" (each channel clamped to 0-1 and scaled to 0-255,
/// halves rounded up), or empty when the panel gave no swatch colour.
std::string SwatchHex(const PanelState& state);

/// The same for a snapshot in the host script form.
std::string SwatchHex(const script::Json& snapshot);

} // namespace qzhost::pixelview
