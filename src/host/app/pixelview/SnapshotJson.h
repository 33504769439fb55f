// The panel state as the JSON object of the host script's "snapshot" op, written straight
// into a text buffer: the same members in the same order, numbers and strings spelled as
// the host's JSON library spells them, so that a line of `qzhost inspect --json` is the
// snapshot line that `qzhost script` prints for the same panel, plus the point's members.
#pragma once

#include <string_view>

#include "pixelview/PanelState.h"
#include "pixelview/TextBuffer.h"

namespace qzhost::pixelview {

/// `text` as a JSON string: quoted, with '"', '\\' and control characters escaped, other
/// characters as they are; bytes that are not UTF-8 become U+FFFD.
void AppendJsonString(std::string_view text, TextBuffer& out);

/// A double as a JSON number in the shortest form that reads back as the same double,
/// whole numbers with ".0" ("45.0"); NaN and infinities, which JSON cannot carry, as null.
void AppendJsonDouble(double value, TextBuffer& out);

/// A number as the host script prints its output numbers: whole numbers that a double
/// holds exactly as integers ("206"), "nan", "inf" and "-inf" as strings, others as
/// JSON numbers (-0 as -0.0).
void AppendNumberOut(double value, TextBuffer& out);

/// The members of the snapshot object of `state`, from "op" on, without the braces.
void AppendSnapshotMembers(const PanelState& state, TextBuffer& out);

} // namespace qzhost::pixelview
