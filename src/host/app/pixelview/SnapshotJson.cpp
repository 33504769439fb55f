#include "pixelview/SnapshotJson.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include "script/Json.h"

namespace qzhost::pixelview {

namespace {

using script::Json;

/// Room for one number, whatever its form.
constexpr std::size_t kNumberRoom = 64;

/// Room for `text` as a JSON string: each byte gives at most six characters (a control
/// character as \u00XX; a byte that is not UTF-8 gives the three bytes of U+FFFD), and
/// the quotes.
constexpr std::size_t StringRoom(std::string_view text) {
    return text.size() * 6 + 2;
}

template <std::size_t N>
char* Put(char* at, const char (&literal)[N]) {
    std::memcpy(at, literal, N - 1);
    return at + N - 1;
}

char* Put(char* at, std::string_view text) {
    if (!text.empty()) { // an empty view may point nowhere
        std::memcpy(at, text.data(), text.size());
    }
    return at + text.size();
}

char* PutInteger(char* at, std::int64_t value) {
    return std::to_chars(at, at + 24, value).ptr;
}

/// The length of the UTF-8 sequence that starts `text` at `i`, or 0 when the bytes there
/// are not a well-formed sequence (overlong forms, surrogates and values beyond U+10FFFF
/// included).
std::size_t Utf8Sequence(std::string_view text, std::size_t i) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char lead = byte(i);
    std::size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 0;
    }
    if (i + length > text.size() || byte(i + 1) < low || byte(i + 1) > high) {
        return 0;
    }
    for (std::size_t k = 2; k < length; ++k) {
        if (byte(i + k) < 0x80 || byte(i + k) > 0xBF) {
            return 0;
        }
    }
    return length;
}

/// The bytes that a JSON string cannot take as they are: control characters, '"', '\\',
/// and the bytes of multi-byte UTF-8 sequences, which are checked.
constexpr std::array<bool, 256> SpecialBytes() {
    std::array<bool, 256> special{};
    for (std::size_t c = 0; c < 256; ++c) {
        special[c] = c < 0x20 || c >= 0x80 || c == '"' || c == '\\';
    }
    return special;
}
constexpr std::array<bool, 256> kSpecial = SpecialBytes();

/// Whether any of the eight bytes of `word` is special: below 0x20, from 0x80 on, '"' or
/// '\\'.
constexpr bool AnySpecial(std::uint64_t word) {
    constexpr std::uint64_t kOnes = 0x0101010101010101u;
    constexpr std::uint64_t kHigh = 0x8080808080808080u;
    const auto zero_byte = [](std::uint64_t v) { return (v - kOnes) & ~v & kHigh; };
    const std::uint64_t below_space = (word - kOnes * 0x20) & ~word & kHigh;
    return ((word & kHigh) | below_space | zero_byte(word ^ (kOnes * '"')) |
            zero_byte(word ^ (kOnes * '\\'))) != 0;
}

/// Writes `text` as a JSON string at `at`, which has StringRoom(text) characters.
char* PutString(char* at, std::string_view text) {
    static constexpr char kHex[] = "0123456789abcdef";
    char* const start = at;
    *at++ = '"';
    // Characters that need no escape are copied in runs, found eight at a time.
    std::size_t run = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (i + 8 <= text.size()) {
            std::uint64_t word = 0;
            std::memcpy(&word, text.data() + i, sizeof word);
            if (!AnySpecial(word)) {
                i += 8;
                continue;
            }
        }
        const auto c = static_cast<unsigned char>(text[i]);
        if (!kSpecial[c]) {
            ++i;
            continue;
        }
        if (c >= 0x80) {
            const std::size_t length = Utf8Sequence(text, i);
            if (length == 0) {
                // Text that is not UTF-8: the JSON library's own replacement decides.
                const std::string replaced =
                    Json(std::string(text)).dump(-1, ' ', false, Json::error_handler_t::replace);
                if (replaced.size() > StringRoom(text)) {
                    throw std::length_error("a replaced JSON string outgrew its room");
                }
                return Put(start, replaced);
            }
            i += length;
            continue;
        }
        at = Put(at, text.substr(run, i - run));
        switch (c) {
        case '"':
            at = Put(at, "\\\"");
            break;
        case '\\':
            at = Put(at, "\\\\");
            break;
        case '\b':
            at = Put(at, "\\b");
            break;
        case '\f':
            at = Put(at, "\\f");
            break;
        case '\n':
            at = Put(at, "\\n");
            break;
        case '\r':
            at = Put(at, "\\r");
            break;
        case '\t':
            at = Put(at, "\\t");
            break;
        default: {
            const char escape[] = {'\\', 'u', '0', '0', kHex[c >> 4], kHex[c & 0xF]};
            std::memcpy(at, escape, sizeof escape);
            at += sizeof escape;
        }
        }
        ++i;
        run = i;
    }
    at = Put(at, text.substr(run));
    *at++ = '"';
    return at;
}

/// Writes a double as the JSON library does (kNumberRoom characters of room).
char* PutDouble(char* at, double value) {
    if (!std::isfinite(value)) {
        return Put(at, "null");
    }
    // Whole numbers below 10^15 the library writes in full with ".0" ("45.0", "-0.0").
    if (std::fabs(value) < 1e15 && std::trunc(value) == value) {
        if (std::signbit(value)) {
            *at++ = '-';
        }
        at = std::to_chars(at, at + 24, static_cast<std::int64_t>(std::fabs(value))).ptr;
        return Put(at, ".0");
    }
    // The JSON library's own number writer, which its serializer uses: the same digits.
    return nlohmann::detail::to_chars(at, at + kNumberRoom, value);
}

/// Writes a number as AppendNumberOut does (kNumberRoom characters of room).
char* PutNumberOut(char* at, double value) {
    // Most numbers of a panel are small whole numbers (bounds in pixels).
    if (value >= 0 && value < 4294967296.0 && !std::signbit(value)) {
        const auto whole = static_cast<std::uint32_t>(value);
        if (static_cast<double>(whole) == value) {
            return std::to_chars(at, at + 16, whole).ptr;
        }
    }
    if (std::isnan(value)) {
        return Put(at, "\"nan\"");
    }
    if (std::isinf(value)) {
        return value > 0 ? Put(at, "\"inf\"") : Put(at, "\"-inf\"");
    }
    constexpr double kExact = 9007199254740992.0; // 2^53
    const bool negative_zero = value == 0.0 && std::signbit(value);
    if (value == std::trunc(value) && std::fabs(value) <= kExact && !negative_zero) {
        return PutInteger(at, static_cast<std::int64_t>(value));
    }
    return PutDouble(at, value);
}

/// Room for a described value.
std::size_t ValueRoom(const DescribedValue& value) {
    switch (value.kind) {
    case DescribedValue::Kind::Text:
        return StringRoom(value.text);
    case DescribedValue::Kind::TextList: {
        std::size_t room = 2;
        for (std::size_t i = 0; i < value.listSize; ++i) {
            room += StringRoom(value.list[i]) + 1;
        }
        return room;
    }
    default:
        return kNumberRoom;
    }
}

char* PutValue(char* at, const DescribedValue& value) {
    switch (value.kind) {
    case DescribedValue::Kind::Integer:
        return PutInteger(at, value.integer);
    case DescribedValue::Kind::Number:
        return PutNumberOut(at, value.number);
    case DescribedValue::Kind::Text:
        return PutString(at, value.text);
    case DescribedValue::Kind::TextList:
        *at++ = '[';
        for (std::size_t i = 0; i < value.listSize; ++i) {
            if (i > 0) {
                *at++ = ',';
            }
            at = PutString(at, value.list[i]);
        }
        *at++ = ']';
        return at;
    case DescribedValue::Kind::None:
        break;
    }
    return Put(at, "null");
}

void AppendValue(const DescribedValue& value, TextBuffer& out) {
    out.Commit(PutValue(out.Room(ValueRoom(value)), value));
}

/// The value compared with 0 as the JSON library compares a value with a number.
bool NonZero(const DescribedValue& value) {
    switch (value.kind) {
    case DescribedValue::Kind::Integer:
        return value.integer != 0;
    case DescribedValue::Kind::Number: {
        // Described numbers are kept as the host script prints them: NaN and the
        // infinities as strings, which differ from any number.
        const double v = value.number;
        return std::isnan(v) || v != 0;
    }
    default:
        return true;
    }
}

void AppendControl(std::size_t id, const ControlState& control, TextBuffer& out) {
    const std::size_t room =
        128 + StringRoom(control.className) + StringRoom(control.text) + 5 * kNumberRoom;
    char* at = out.Room(room);
    at = Put(at, "{\"id\":");
    at = PutInteger(at, static_cast<std::int64_t>(id));
    at = Put(at, ",\"class\":");
    if (!control.exists) {
        out.Commit(Put(at, "null}"));
        return;
    }
    at = PutString(at, control.className);
    at = Put(at, ",\"rect\":[");
    for (std::size_t i = 0; i < 4; ++i) {
        if (i > 0) {
            *at++ = ',';
        }
        at = PutNumberOut(at, control.rect[i]);
    }
    at = control.visible ? Put(at, "],\"visible\":true") : Put(at, "],\"visible\":false");
    if (control.isText) {
        at = Put(at, ",\"text\":");
        at = PutString(at, control.text);
        switch (control.colour) {
        case TextColour::Alert:
            at = Put(at, ",\"color\":\"alert\"");
            break;
        case TextColour::Default:
            at = Put(at, ",\"color\":\"default\"");
            break;
        case TextColour::Numbered:
            at = Put(at, ",\"color\":");
            at = std::to_chars(at, at + 24, control.colourNumber).ptr;
            break;
        }
    }
    *at++ = '}';
    out.Commit(at);
}

} // namespace

void AppendJsonString(std::string_view text, TextBuffer& out) {
    out.Commit(PutString(out.Room(StringRoom(text)), text));
}

void AppendJsonDouble(double value, TextBuffer& out) {
    out.Commit(PutDouble(out.Room(kNumberRoom), value));
}

void AppendNumberOut(double value, TextBuffer& out) {
    out.Commit(PutNumberOut(out.Room(kNumberRoom), value));
}

void AppendSnapshotMembers(const PanelState& state, TextBuffer& out) {
    out.Append("\"op\":\"snapshot\",\"panel\":");
    if (!state.panel) {
        out.Append("false");
        return;
    }
    out.Append(state.visible ? "true,\"visible\":true" : "true,\"visible\":false");
    if (state.mode.Present()) {
        out.Append(",\"mode\":");
        AppendValue(state.mode, out);
    }
    out.Append(",\"size\":[");
    AppendNumberOut(state.size[0], out);
    out.Append(',');
    AppendNumberOut(state.size[1], out);
    out.Append(']');
    if (state.minWidth.Present() && state.minHeight.Present()) {
        out.Append(",\"min_size\":[");
        AppendValue(state.minWidth, out);
        out.Append(',');
        AppendValue(state.minHeight, out);
        out.Append(']');
    }
    if (state.type.Present()) {
        out.Append(",\"type\":");
        AppendValue(state.type, out);
    }
    if (state.lines.Present()) {
        out.Append(",\"lines\":");
        AppendValue(state.lines, out);
    }
    if (state.flag.Present()) {
        out.Append(NonZero(state.flag) ? ",\"flag\":true" : ",\"flag\":false");
    }
    out.Append(",\"controls\":[");
    for (std::size_t id = 0; id < state.controls.size(); ++id) {
        if (id > 0) {
            out.Append(',');
        }
        AppendControl(id, state.controls[id], out);
    }
    out.Append(']');
    if (state.HasSwatch()) {
        out.Append(",\"swatch\":[");
        for (std::size_t c = 0; c < 4; ++c) {
            if (c > 0) {
                out.Append(',');
            }
            AppendValue(state.swatch[c], out);
        }
        out.Append(']');
    }
}

} // namespace qzhost::pixelview
