#include "pixelview/PanelText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

namespace qzhost::pixelview {

namespace {

/// Panel pixels per text column: about the advance of the panel's small font.
constexpr double kPixelsPerColumn = 5.5;
/// Controls whose tops lie closer than this (pixels) share a text row.
constexpr double kRowJoin = 7.0;
/// Controls whose left edges lie this close (pixels) share a column.
constexpr double kColumnJoin = 3.0;

enum class Kind { Text, Swatch, Image, HorizontalRule, VerticalRule };

/// The rows of a panel, as bits of a mask: a panel has fewer rows than controls, and far
/// fewer than 64.
using RowSet = std::uint64_t;
constexpr std::size_t kMaxRows = 64;

struct Item {
    Kind kind = Kind::Text;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    std::string_view text;   // what is printed
    std::string_view before; // terminal escape before the text
    std::string_view after;  // and after it
    RowSet rows = 0;
    std::size_t group = 0;
    std::size_t columns = 0; // the text's width in columns
};

struct Row {
    double top = 0;
    double bottom = 0;
};

constexpr std::string_view kReset = "\x1b[0m";
constexpr std::string_view kRed = "\x1b[31m";

std::size_t Columns(std::string_view text) {
    // One column per character: UTF-8 continuation bytes take none.
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

int Channel255(const DescribedValue& value) {
    double v = value.AsNumber();
    if (!(v > 0)) {
        v = 0;
    }
    v = std::min(v, 1.0);
    return static_cast<int>(std::floor(v * 255.0 + 0.5));
}

/// Sorts a short sequence by `less`, keeping equal elements in their order, without
/// the storage that std::stable_sort asks for: a panel has a couple of dozen controls.
template <typename T, typename Less>
void SortShort(std::vector<T>& values, Less less) {
    for (std::size_t i = 1; i < values.size(); ++i) {
        T value = values[i];
        std::size_t j = i;
        for (; j > 0 && less(value, values[j - 1]); --j) {
            values[j] = values[j - 1];
        }
        values[j] = value;
    }
}

bool Overlaps(double top, double bottom, const Row& row) {
    return top < row.bottom && row.top < bottom;
}

/// The swatch's texts, which the items point into.
struct SwatchTexts {
    char hex[8] = {};
    char escape[64] = {};
};

void WriteSwatchHex(const PanelState& state, char (&hex)[8]) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    hex[0] = '#';
    for (std::size_t c = 0; c < 3; ++c) {
        const int value = Channel255(state.swatch[c]);
        hex[1 + 2 * c] = kDigits[value >> 4];
        hex[2 + 2 * c] = kDigits[value & 0xF];
    }
    hex[7] = '\0';
}

void MakeItems(const PanelState& state, bool colour, SwatchTexts& swatch,
               std::vector<Item>& items) {
    items.clear();
    for (const ControlState& control : state.controls) {
        if (!control.exists || !control.visible) {
            continue;
        }
        Item item;
        item.x = control.rect[0];
        item.y = control.rect[1];
        item.width = control.rect[2];
        item.height = control.rect[3];
        const std::string_view cls = control.className;
        if (cls == "UI_StaticText") {
            item.text = control.isText ? std::string_view(control.text) : std::string_view();
            if (item.text.empty()) {
                continue;
            }
            if (colour && control.colour == TextColour::Alert) {
                item.before = kRed;
                item.after = kReset;
            }
        } else if (cls == "UI_SwatchRect") {
            item.kind = Kind::Swatch;
            if (!state.HasSwatch()) {
                continue;
            }
            WriteSwatchHex(state, swatch.hex);
            item.text = swatch.hex;
            if (colour) {
                const int r = Channel255(state.swatch[0]);
                const int g = Channel255(state.swatch[1]);
                const int b = Channel255(state.swatch[2]);
                const bool light = 0.299 * r + 0.587 * g + 0.114 * b > 127.5;
                std::snprintf(swatch.escape, sizeof swatch.escape, "\x1b[48;2;%d;%d;%dm\x1b[%dm", r,
                              g, b, light ? 30 : 97);
                item.before = swatch.escape;
                item.after = kReset;
            }
        } else if (cls == "UI_StaticImage") {
            item.kind = Kind::Image;
            item.text = "+";
        } else if (cls == "UI_Divider") {
            item.kind = item.width >= item.height ? Kind::HorizontalRule : Kind::VerticalRule;
            item.text = item.kind == Kind::VerticalRule ? "|" : "";
        } else {
            continue;
        }
        items.push_back(item);
    }
}

/// Text rows from the tops of the texts and horizontal rules; the other controls are
/// placed into the rows that they cover.
void MakeRows(const std::vector<Item>& items, std::vector<const Item*>& anchors,
              std::vector<Row>& rows) {
    anchors.clear();
    for (const Item& item : items) {
        if (item.kind == Kind::Text || item.kind == Kind::HorizontalRule) {
            anchors.push_back(&item);
        }
    }
    SortShort(anchors, [](const Item* a, const Item* b) { return a->y < b->y; });
    rows.clear();
    bool rule_row = false;
    for (const Item* item : anchors) {
        // A rule has a row of its own.
        const bool rule = item->kind == Kind::HorizontalRule;
        if (rows.empty() || rule || rule_row || item->y >= rows.back().top + kRowJoin) {
            rows.push_back({item->y, item->y + item->height});
            rule_row = rule;
        } else {
            rows.back().bottom = std::max(rows.back().bottom, item->y + item->height);
        }
    }
}

void AssignRows(std::vector<Item>& items, const std::vector<Row>& rows) {
    for (Item& item : items) {
        item.rows = 0;
        if (item.kind == Kind::VerticalRule) {
            for (std::size_t r = 0; r < rows.size(); ++r) {
                if (Overlaps(item.y, item.y + item.height, rows[r])) {
                    item.rows |= RowSet{1} << r;
                }
            }
            continue;
        }
        // Everything else takes one row: texts and rules the row that they started, the
        // swatch and the picture the last row that starts at or above their middle.
        std::size_t chosen = 0;
        if (item.kind == Kind::Swatch || item.kind == Kind::Image) {
            const double middle = item.y + item.height / 2;
            for (std::size_t r = 0; r < rows.size(); ++r) {
                if (rows[r].top <= middle) {
                    chosen = r;
                }
            }
        } else {
            for (std::size_t r = 0; r < rows.size(); ++r) {
                if (rows[r].top <= item.y) {
                    chosen = r;
                }
            }
        }
        if (!rows.empty()) {
            item.rows = RowSet{1} << chosen;
        }
    }
}

/// Columns: controls whose left edges lie together share one; a column starts where its
/// left edge puts it, or further right when a text of an earlier column in a shared row
/// would run into it.
void PlaceColumns(std::vector<Item>& items, std::vector<std::size_t>& order,
                  std::vector<std::size_t>& column, std::vector<RowSet>& group_rows,
                  std::vector<double>& group_left) {
    order.resize(items.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    SortShort(order, [&](std::size_t a, std::size_t b) { return items[a].x < items[b].x; });
    std::size_t groups = 0;
    double last_x = 0;
    for (std::size_t k = 0; k < order.size(); ++k) {
        Item& item = items[order[k]];
        if (k == 0 || item.x > last_x + kColumnJoin) {
            ++groups;
        }
        item.group = groups - 1;
        last_x = item.x;
    }
    // Each column's rows and left edge (the first item's, moved left by any item further
    // left, in the items' order).
    group_rows.assign(groups, 0);
    group_left.assign(groups, -1);
    for (Item& item : items) {
        item.columns = Columns(item.text);
        group_rows[item.group] |= item.rows;
        double& left = group_left[item.group];
        if (left < 0 || item.x < left) {
            left = item.x;
        }
    }
    column.assign(groups, 0);
    for (std::size_t g = 0; g < groups; ++g) {
        std::size_t start =
            static_cast<std::size_t>(std::lround(std::max(0.0, group_left[g]) / kPixelsPerColumn));
        for (const Item& earlier : items) {
            if (earlier.group < g && (earlier.rows & group_rows[g]) != 0) {
                start = std::max(start, column[earlier.group] + earlier.columns + 1);
            }
        }
        column[g] = start;
    }
}

/// The working storage of a layout, kept from one panel to the next.
struct Layout {
    std::vector<Item> items;
    std::vector<const Item*> anchors;
    std::vector<Row> rows;
    std::vector<std::size_t> order;
    std::vector<std::size_t> column;
    std::vector<RowSet> groupRows;
    std::vector<double> groupLeft;
    struct Piece {
        std::size_t column;
        const Item* item;
    };
    std::vector<Piece> row;
};

} // namespace

void AppendPanelText(const PanelState& state, bool colour, TextBuffer& out) {
    // The layout's storage is the thread's own, reused from one panel to the next.
    thread_local Layout layout;
    SwatchTexts swatch;
    MakeItems(state, colour, swatch, layout.items);
    MakeRows(layout.items, layout.anchors, layout.rows);
    // Rows past the last that a mask can name would be lost: the panel never has so many.
    if (layout.rows.size() > kMaxRows) {
        layout.rows.resize(kMaxRows);
    }
    AssignRows(layout.items, layout.rows);
    PlaceColumns(layout.items, layout.order, layout.column, layout.groupRows, layout.groupLeft);

    const std::size_t start = out.Size();
    std::size_t kept = start; // the end of the last line that is not empty
    for (std::size_t r = 0; r < layout.rows.size(); ++r) {
        // The row's pieces, left to right.
        layout.row.clear();
        for (const Item& item : layout.items) {
            if ((item.rows >> r) & 1) {
                layout.row.push_back({layout.column[item.group], &item});
            }
        }
        SortShort(layout.row, [](const Layout::Piece& a, const Layout::Piece& b) {
            return a.column < b.column;
        });
        const std::size_t line = out.Size();
        std::size_t used = 0; // columns taken so far
        for (const Layout::Piece& piece : layout.row) {
            const Item& item = *piece.item;
            std::size_t width = item.columns;
            std::size_t rule = 0;
            if (item.kind == Kind::HorizontalRule) {
                const double right = item.x + item.width;
                const auto end = static_cast<std::size_t>(std::lround(right / kPixelsPerColumn));
                rule = end > piece.column ? end - piece.column : 1;
                width = rule;
            }
            // A piece that its left neighbour would overlap starts one column after it.
            const std::size_t at =
                out.Size() == line ? piece.column : std::max(piece.column, used + 1);
            out.Fill(at - used, ' ');
            out.Append(item.before);
            if (item.kind == Kind::HorizontalRule) {
                out.Fill(rule, '-');
            } else {
                out.Append(item.text);
            }
            out.Append(item.after);
            used = at + width;
        }
        if (out.Size() > line) {
            kept = out.Size() + 1;
        }
        out.Append('\n');
    }
    // Empty lines at the end are dropped.
    out.Truncate(std::max(kept, start));
}

std::string PanelText(const PanelState& state, bool colour) {
    TextBuffer text;
    AppendPanelText(state, colour, text);
    return std::string(text.View());
}

std::string PanelText(const script::Json& snapshot, bool colour) {
    return PanelText(PanelStateFromSnapshot(snapshot), colour);
}

std::string SwatchHex(const PanelState& state) {
    if (!state.HasSwatch()) {
        return {};
    }
    char hex[8];
    WriteSwatchHex(state, hex);
    return hex;
}

std::string SwatchHex(const script::Json& snapshot) {
    return SwatchHex(PanelStateFromSnapshot(snapshot));
}

} // namespace qzhost::pixelview
