#include "script/Values.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "host/U_Utility.h"
#include "script/ScriptErrors.h"
#include "script/Shape.h"

namespace qzhost::script {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUTF8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

void AppendUTF16(kitcore::utility::UTF16String& out, char32_t c) {
    if (c < 0x10000) {
        out += static_cast<char16_t>(c);
    } else {
        c -= 0x10000;
        out += static_cast<char16_t>(0xD800 + (c >> 10));
        out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    }
}

bool IsHigh(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLow(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

/// The single member of an object form such as {"hex": ...}; throws when the object
/// has other members or lacks it.
const Json& OnlyMember(const Json& value, const char* name, const std::string& what) {
    if (value.size() != 1 || !value.contains(name)) {
        throw ArgumentError(what + " must be a string, null or {" + Quoted(name) + ": ...}");
    }
    return value.at(name);
}

} // namespace

std::optional<std::string> NarrowArg(const Json& value, const std::string& what) {
    if (value.is_null()) {
        return std::nullopt;
    }
    if (value.is_string()) {
        const kitcore::utility::UTF16String wide = UTF8ToUTF16(value.get_ref<const std::string&>());
        return U_UTF16ToMBString(wide.c_str());
    }
    if (!value.is_object()) {
        throw ArgumentError(what + " must be a string, null or {\"hex\": ...}");
    }
    const std::string& hex = AsString(OnlyMember(value, "hex", what), what + ".hex");
    if (hex.size() % 2 != 0) {
        throw ArgumentError(what + ".hex must have an even number of hex digits");
    }
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        const int high = HexDigit(hex[i]);
        const int low = HexDigit(hex[i + 1]);
        if (high < 0 || low < 0) {
            throw ArgumentError(what + ".hex must hold hex digits only");
        }
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

std::optional<kitcore::utility::UTF16String> UTF16Arg(const Json& value, const std::string& what) {
    if (value.is_null()) {
        return std::nullopt;
    }
    if (value.is_string()) {
        return UTF8ToUTF16(value.get_ref<const std::string&>());
    }
    if (!value.is_object()) {
        throw ArgumentError(what + " must be a string, null or {\"utf16\": [...]}");
    }
    const Json& units = AsArray(OnlyMember(value, "utf16", what), what + ".utf16");
    kitcore::utility::UTF16String text;
    for (const Json& unit : units) {
        text += static_cast<char16_t>(AsInteger(unit, what + ".utf16 entries", 0, 0xFFFF));
    }
    return text;
}

double NumberArg(const Json& value, const std::string& what) {
    if (value.is_number()) {
        return value.get<double>();
    }
    if (value.is_string()) {
        const std::string& text = value.get_ref<const std::string&>();
        if (text == "nan") {
            return std::numeric_limits<double>::quiet_NaN();
        }
        if (text == "inf") {
            return std::numeric_limits<double>::infinity();
        }
        if (text == "-inf") {
            return -std::numeric_limits<double>::infinity();
        }
        if (text == "-0") {
            return -0.0;
        }
    }
    throw ArgumentError(what + " must be a number, \"nan\", \"inf\", \"-inf\" or \"-0\"");
}

Json NumberOut(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value > 0 ? "inf" : "-inf";
    }
    // Whole numbers that a double holds exactly print without a fraction, so that a
    // size of 206 reads 206; -0 keeps its sign as -0.0.
    constexpr double kExact = 9007199254740992.0; // 2^53
    const bool negative_zero = value == 0.0 && std::signbit(value);
    if (value == std::trunc(value) && std::fabs(value) <= kExact && !negative_zero) {
        return static_cast<std::int64_t>(value);
    }
    return value;
}

std::string UTF16ToUTF8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (IsHigh(unit) && i + 1 < text.size() && IsLow(text[i + 1])) {
            const char32_t c =
                0x10000 + ((char32_t(unit) - 0xD800) << 10) + (char32_t(text[i + 1]) - 0xDC00);
            AppendUTF8(out, c);
            ++i;
        } else if (IsHigh(unit) || IsLow(unit)) {
            AppendUTF8(out, kReplacement);
        } else {
            AppendUTF8(out, unit);
        }
    }
    return out;
}

kitcore::utility::UTF16String UTF8ToUTF16(std::string_view text) {
    kitcore::utility::UTF16String out;
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        int length = 0;
        char32_t c = 0;
        char32_t min = 0;
        if (lead < 0x80) {
            length = 1;
            c = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            length = 2;
            c = lead & 0x1F;
            min = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3;
            c = lead & 0x0F;
            min = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4;
            c = lead & 0x07;
            min = 0x10000;
        } else {
            AppendUTF16(out, kReplacement);
            ++i;
            continue;
        }
        bool valid = i + length <= text.size();
        for (int k = 1; valid && k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80) {
                valid = false;
            } else {
                c = (c << 6) | (next & 0x3F);
            }
        }
        if (!valid || c < min || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
            AppendUTF16(out, kReplacement);
            ++i;
            continue;
        }
        AppendUTF16(out, c);
        i += length;
    }
    return out;
}

} // namespace qzhost::script
