#include "pixelview/PanelText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

namespace qzhost::pixelview {

namespace {

using script::Json;

/// Panel pixels per text column: about the advance of the panel's small font.
constexpr double kPixelsPerColumn = 5.5;
/// Controls whose tops lie closer than this (pixels) share a text row.
constexpr double kRowJoin = 7.0;
/// Controls whose left edges lie this close (pixels) share a column.
constexpr double kColumnJoin = 3.0;

enum class Kind { Text, Swatch, Image, HorizontalRule, VerticalRule };

struct Item {
    Kind kind = Kind::Text;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    std::string text;   // what is printed
    std::string before; // terminal escape before the text
    std::string after;  // and after it
    std::vector<std::size_t> rows;
    std::size_t group = 0;
};

struct Row {
    double top = 0;
    double bottom = 0;
};

std::size_t Columns(const std::string& text) {
    // One column per character: UTF-8 continuation bytes take none.
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

int Channel255(const Json& value) {
    double v = value.is_number() ? value.get<double>() : 0.0;
    if (!(v > 0)) {
        v = 0;
    }
    v = std::min(v, 1.0);
    return static_cast<int>(std::floor(v * 255.0 + 0.5));
}

bool Overlaps(double top, double bottom, const Row& row) {
    return top < row.bottom && row.top < bottom;
}

std::vector<Item> Items(const Json& snapshot, bool colour) {
    std::vector<Item> items;
    const auto controls = snapshot.find("controls");
    if (controls == snapshot.end() || !controls->is_array()) {
        return items;
    }
    for (const Json& control : *controls) {
        const auto rect = control.find("rect");
        if (!control.value("visible", false) || rect == control.end() || !rect->is_array() ||
            rect->size() != 4) {
            continue;
        }
        Item item;
        item.x = (*rect)[0].get<double>();
        item.y = (*rect)[1].get<double>();
        item.width = (*rect)[2].get<double>();
        item.height = (*rect)[3].get<double>();
        const std::string cls = control.value("class", std::string());
        if (cls == "UI_StaticText") {
            item.text = control.value("text", std::string());
            if (item.text.empty()) {
                continue;
            }
            if (colour && control.value("color", Json("default")) == "alert") {
                item.before = "\x1b[31m";
                item.after = "\x1b[0m";
            }
        } else if (cls == "UI_SwatchRect") {
            item.kind = Kind::Swatch;
            item.text = SwatchHex(snapshot);
            if (item.text.empty()) {
                continue;
            }
            if (colour) {
                const Json& swatch = snapshot["swatch"];
                const int r = Channel255(swatch[0]);
                const int g = Channel255(swatch[1]);
                const int b = Channel255(swatch[2]);
                const bool light = 0.299 * r + 0.587 * g + 0.114 * b > 127.5;
                char escape[64];
                std::snprintf(escape, sizeof escape, "\x1b[48;2;%d;%d;%dm\x1b[%dm", r, g, b,
                              light ? 30 : 97);
                item.before = escape;
                item.after = "\x1b[0m";
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
        items.push_back(std::move(item));
    }
    return items;
}

/// Text rows from the tops of the texts and horizontal rules; the other controls are
/// placed into the rows that they cover.
std::vector<Row> MakeRows(const std::vector<Item>& items) {
    std::vector<const Item*> anchors;
    for (const Item& item : items) {
        if (item.kind == Kind::Text || item.kind == Kind::HorizontalRule) {
            anchors.push_back(&item);
        }
    }
    std::stable_sort(anchors.begin(), anchors.end(),
                     [](const Item* a, const Item* b) { return a->y < b->y; });
    std::vector<Row> rows;
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
    return rows;
}

void AssignRows(std::vector<Item>& items, const std::vector<Row>& rows) {
    for (Item& item : items) {
        if (item.kind == Kind::VerticalRule) {
            for (std::size_t r = 0; r < rows.size(); ++r) {
                if (Overlaps(item.y, item.y + item.height, rows[r])) {
                    item.rows.push_back(r);
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
            item.rows.push_back(chosen);
        }
    }
}

/// Columns: controls whose left edges lie together share one; a column starts where its
/// left edge puts it, or further right when a text of an earlier column in a shared row
/// would run into it.
std::vector<std::size_t> PlaceColumns(std::vector<Item>& items) {
    std::vector<std::size_t> order(items.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return items[a].x < items[b].x; });
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
    std::vector<std::size_t> column(groups, 0);
    for (std::size_t g = 0; g < groups; ++g) {
        double left = -1;
        for (const Item& item : items) {
            if (item.group == g && (left < 0 || item.x < left)) {
                left = item.x;
            }
        }
        std::size_t start =
            static_cast<std::size_t>(std::lround(std::max(0.0, left) / kPixelsPerColumn));
        for (const Item& earlier : items) {
            if (earlier.group >= g) {
                continue;
            }
            for (const Item& item : items) {
                if (item.group != g) {
                    continue;
                }
                const bool shared = std::any_of(item.rows.begin(), item.rows.end(), [&](auto r) {
                    return std::find(earlier.rows.begin(), earlier.rows.end(), r) !=
                           earlier.rows.end();
                });
                if (shared) {
                    start = std::max(start, column[earlier.group] + Columns(earlier.text) + 1);
                }
            }
        }
        column[g] = start;
    }
    return column;
}

} // namespace

std::string SwatchHex(const Json& snapshot) {
    const auto swatch = snapshot.find("swatch");
    if (swatch == snapshot.end() || !swatch->is_array() || swatch->size() != 4) {
        return {};
    }
    char hex[8];
    std::snprintf(hex, sizeof hex, "#%02X%02X%02X", Channel255((*swatch)[0]),
                  Channel255((*swatch)[1]), Channel255((*swatch)[2]));
    return hex;
}

std::string PanelText(const Json& snapshot, bool colour) {
    std::vector<Item> items = Items(snapshot, colour);
    const std::vector<Row> rows = MakeRows(items);
    AssignRows(items, rows);
    const std::vector<std::size_t> column = PlaceColumns(items);

    // Each row's pieces, left to right.
    struct Piece {
        std::size_t column;
        const Item* item;
    };
    std::vector<std::vector<Piece>> pieces(rows.size());
    for (const Item& item : items) {
        for (const std::size_t r : item.rows) {
            pieces[r].push_back({column[item.group], &item});
        }
    }
    std::vector<std::string> lines;
    for (auto& row : pieces) {
        std::stable_sort(row.begin(), row.end(),
                         [](const Piece& a, const Piece& b) { return a.column < b.column; });
        std::string line;
        std::size_t used = 0; // columns taken so far
        for (const Piece& piece : row) {
            const Item& item = *piece.item;
            std::string text = item.text;
            if (item.kind == Kind::HorizontalRule) {
                const double right = item.x + item.width;
                const auto end = static_cast<std::size_t>(std::lround(right / kPixelsPerColumn));
                text.assign(end > piece.column ? end - piece.column : 1, '-');
            }
            // A piece that its left neighbour would overlap starts one column after it.
            const std::size_t at = line.empty() ? piece.column : std::max(piece.column, used + 1);
            line.append(at - used, ' ');
            line += item.before + text + item.after;
            used = at + Columns(text);
        }
        lines.push_back(std::move(line));
    }
    while (!lines.empty() && lines.back().empty()) {
        lines.pop_back();
    }
    std::string text;
    for (const std::string& line : lines) {
        text += line + '\n';
    }
    return text;
}

} // namespace qzhost::pixelview
