// What the Info panel shows, read from the running host for one point: the panel's
// description of itself (notation, text lines, minimum size, swatch colour, the palette's
// flag) and each control of its layout (class, bounds, visibility, text and its colour).
// It carries exactly what the host script's "snapshot" op reports, in plain fields, so that
// a run of many points can read the panel and print it without building a JSON document
// per point; its storage is reused from one point to the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "script/Json.h"

namespace qzhost::pixelview {

/// One value of the panel's description: what the panel gave for a key, if anything.
struct DescribedValue {
    enum class Kind { None, Integer, Number, Text, TextList };
    Kind kind = Kind::None;
    std::int64_t integer = 0;
    double number = 0;
    std::string text;
    std::vector<std::string> list;
    /// How many entries of `list` the panel gave (the rest are kept for their storage).
    std::size_t listSize = 0;

    bool Present() const noexcept { return kind != Kind::None; }
    /// The value as a number (integers widened); 0 for text.
    double AsNumber() const noexcept;
};

/// The colour of a text control: the theme's default, the alert colour, or another
/// theme colour by its number.
enum class TextColour { Default, Alert, Numbered };

struct ControlState {
    /// False when the layout has no control at this place ("class": null).
    bool exists = false;
    /// The control's class name ("UI_StaticText", "UI_SwatchRect"...).
    std::string_view className;
    /// Bounds in panel pixels: x, y, width, height.
    float rect[4] = {0, 0, 0, 0};
    bool visible = false;
    /// Text controls only: their text (UTF-8) and its colour.
    bool isText = false;
    std::string text;
    TextColour colour = TextColour::Default;
    std::size_t colourNumber = 0;
};

struct PanelState {
    /// False when the workspace has no Info panel; nothing else is then set.
    bool panel = false;
    /// The workspace shows the panel's tab.
    bool visible = false;
    /// The panel's bounds: width and height.
    float size[2] = {0, 0};
    DescribedValue mode;
    DescribedValue minWidth;
    DescribedValue minHeight;
    DescribedValue type;
    DescribedValue lines;
    DescribedValue flag;
    /// Red, green, blue, alpha of the swatch as the monitor shows it.
    DescribedValue swatch[4];
    /// One entry per control of the layout, by its id.
    std::vector<ControlState> controls;

    /// Whether the panel gave all four swatch channels.
    bool HasSwatch() const noexcept;
};

/// The panel state of a snapshot in the host script form (the "snapshot" op's output);
/// fields that the snapshot lacks stay unset. Control class names point into
/// `snapshot`, which must outlive the result.
PanelState PanelStateFromSnapshot(const script::Json& snapshot);

} // namespace qzhost::pixelview
