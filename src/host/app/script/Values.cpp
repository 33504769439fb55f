#include "script/Values.h"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "host/U_TextConversion.h"
#include "qzhost/UnicodeText.h"
#include "script/ScriptErrors.h"
#include "script/Shape.h"

namespace qzhost::script {

namespace {

// The value of one hexadecimal digit, or -1 for any other character.
int HexDigit(char c) {
    const auto lower = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const std::size_t at = std::string_view("0123456789abcdef").find(lower);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
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

float FloatArg(const Json& value, const std::string& what) {
    const double number = NumberArg(value, what);
    // Past the largest float a finite number has no float value to pass: say so rather
    // than let the conversion decide.
    if (std::isfinite(number) && std::fabs(number) > std::numeric_limits<float>::max()) {
        throw ArgumentError(what + " is beyond the range of a float: give \"inf\" or \"-inf\"");
    }
    return static_cast<float>(number);
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
    return strings::Utf16ToUtf8(text);
}

kitcore::utility::UTF16String UTF8ToUTF16(std::string_view text) {
    return strings::Utf8ToUtf16(text);
}

} // namespace qzhost::script
