#include "validate/SlotArguments.h"

#include <array>
#include <cmath>
#include <string>

#include "qzgp/QZ_InfoPaletteSuite.h"

namespace qzhost::validate {

namespace {

// The parameter kinds of the list slots, in order; record slots (3, 4, 13, 18) have
// builders of their own.
enum class P { Narrow, Wide, Float, Double, Bool };

struct SlotRow {
    const char* name;
    bool anyThread;
    std::vector<P> params;
};

const std::array<SlotRow, kQZ_InfoPaletteSuiteSlotCount>& Rows() {
    using enum P;
    static const std::array<SlotRow, kQZ_InfoPaletteSuiteSlotCount> rows{{
        {"SetTextLines3", true, {Narrow, Narrow, Narrow}},
        {"SetTextLines5", true, {Narrow, Narrow, Narrow, Narrow, Narrow}},
        {"SetFirstLineSuffix", false, {Narrow}},
        {"GetPixel", false, {}},
        {"SetPixelInfo", true, {}},
        {"ShowRotationReadout", false, {Narrow, Float, Float}},
        {"ShowOrientationReadout",
         false,
         {Narrow, Bool, Double, Double, Double, Double, Double, Double}},
        {"ShowPositionReadout2D", false, {Narrow, Float, Float, Float, Float}},
        {"ShowPositionReadout3D", false, {Narrow, Float, Float, Float, Float, Float, Float}},
        {"ShowPointReadout2D", false, {Narrow, Narrow, Float, Float, Float, Float}},
        {"ShowPointReadout3D", false, {Narrow, Narrow, Float, Float, Float, Float, Float, Float}},
        {"ShowScaleReadout2D", false, {Narrow, Float, Float, Float, Float}},
        {"ShowScaleReadout3D", false, {Narrow, Float, Float, Float, Float, Float, Float}},
        {"ShowStreamReadout", false, {}},
        {"IsPanelVisible", false, {}},
        {"SetPanelVisible", false, {Bool}},
        {"ShowPanel", false, {}},
        {"SetFlag", false, {Bool}},
        {"GetFlag", false, {}},
        {"Reserved19", true, {}},
        {"Reserved20", true, {}},
        {"UpdatePanelTab", false, {}},
        {"SetTextLines3W", true, {Wide, Wide, Wide}},
        {"SetTextLines5W", true, {Wide, Wide, Wide, Wide, Wide}},
    }};
    return rows;
}

// Boundary values by kind. Float parameters take no finite value beyond the float range
// (the host refuses those), so their huge values are the largest floats.
std::vector<Json> NarrowBoundaries() {
    return {nullptr,
            "",
            LongText(20000),
            Json{{"hex", "c3"}},               // a lead byte without its continuation
            Json{{"hex", "fffe80c0af"}},       // bytes that are never UTF-8
            Json{{"hex", "eda080"}},           // an encoded lone surrogate
            Json{{"hex", "f4908080"}},         // beyond U+10FFFF
            "\t%s%n%d\x01\x7f ^I ^D ^F1@1.1@", // format and lookup markers
            std::string(1023, 'w')};
}

std::vector<Json> WideBoundaries() {
    return {nullptr,
            "",
            Json{{"utf16", {0xD800}}},
            Json{{"utf16", {0xDFFF, 0x41}}},
            Json{{"utf16", {0x41, 0xD83D}}},
            Json{{"utf16", {0xFFFF, 0xFFFE, 0xFEFF}}},
            Json{{"utf16", std::vector<int>(10000, 0x263A)}}};
}

std::vector<Json> FloatBoundaries() {
    return {"nan",
            "inf",
            "-inf",
            "-0",
            3.4028234663852886e38,
            -3.4028234663852886e38,
            1.401298464324817e-45,
            16777217.0,
            -2147483648.0,
            2147483648.0};
}

std::vector<Json> DoubleBoundaries() {
    return {"nan",
            "inf",
            "-inf",
            "-0",
            1.7976931348623157e308,
            -1.7976931348623157e308,
            4.9406564584124654e-324,
            9.2233720368547758e18,
            -2147483649.0,
            1e300};
}

/// The boundary values of a kind, made once.
const std::vector<Json>& Boundaries(P kind) {
    static const std::vector<Json> narrow = NarrowBoundaries();
    static const std::vector<Json> wide = WideBoundaries();
    static const std::vector<Json> floats = FloatBoundaries();
    static const std::vector<Json> doubles = DoubleBoundaries();
    static const std::vector<Json> bools = {true, false};
    switch (kind) {
    case P::Narrow:
        return narrow;
    case P::Wide:
        return wide;
    case P::Float:
        return floats;
    case P::Double:
        return doubles;
    case P::Bool:
        break;
    }
    return bools;
}

Json Plain(P kind, int tag, std::size_t index) {
    const std::string text = "validate " + std::to_string(tag) + "." + std::to_string(index);
    switch (kind) {
    case P::Narrow:
    case P::Wide:
        return text;
    case P::Float:
    case P::Double:
        return 1.5 + static_cast<double>(index);
    case P::Bool:
        return true;
    }
    return nullptr;
}

std::uint64_t Below(std::mt19937_64& random, std::uint64_t bound) {
    return random() % bound;
}

double RandomNumber(std::mt19937_64& random, bool is_float) {
    // Exponents across the whole range of the type, both signs.
    const double mantissa = static_cast<double>(random() >> 11) * 0x1.0p-53;
    const int max_exponent = is_float ? 127 : 1023;
    const int exponent = static_cast<int>(Below(random, 2 * max_exponent + 1)) - max_exponent;
    double value = std::ldexp(mantissa, exponent);
    if (is_float && value > 3.4028234663852886e38) {
        value = 3.4028234663852886e38;
    }
    return (random() & 1) ? -value : value;
}

Json RandomText(std::mt19937_64& random, bool wide) {
    const std::size_t length = Below(random, 48);
    if (wide) {
        std::vector<int> units;
        for (std::size_t i = 0; i < length; ++i) {
            units.push_back(static_cast<int>(Below(random, 0x10000)));
        }
        return Json{{"utf16", units}};
    }
    static const char* const digits = "0123456789abcdef";
    std::string hex;
    for (std::size_t i = 0; i < length; ++i) {
        const auto byte = static_cast<unsigned>(1 + Below(random, 255)); // no zero inside
        hex += digits[byte >> 4];
        hex += digits[byte & 0xF];
    }
    return Json{{"hex", hex}};
}

Json RandomValue(P kind, std::mt19937_64& random) {
    // Half the time a boundary value, else a random one of the kind.
    if (random() & 1) {
        const std::vector<Json>& boundaries = Boundaries(kind);
        return boundaries[Below(random, boundaries.size())];
    }
    switch (kind) {
    case P::Narrow:
        return RandomText(random, false);
    case P::Wide:
        return RandomText(random, true);
    case P::Float:
        return RandomNumber(random, true);
    case P::Double:
        return RandomNumber(random, false);
    case P::Bool:
        return static_cast<bool>(random() & 1);
    }
    return nullptr;
}

const char* const kStreams[] = {"MASK_SHAPE",  "PAINT_SHAPE",  "MASK_OPACITY",   "MASK_FEATHER",
                                "MASK_OFFSET", "ANCHOR_POINT", "POSITION",       "SCALE",
                                "ORIENTATION", "ROTATE_X",     "ROTATE_Y",       "ROTATE_Z",
                                "OPACITY",     "AUDIO_LEVELS", "SOMETHING_ELSE", ""};

Json StreamArgs(const Json& name, const Json& label, const std::string& stream, int kind,
                bool three_d, bool mask, std::uint32_t value_kind, const Json& values) {
    return Json{{"layer", {{"kind", kind}, {"three_d", three_d}}},
                {"stream", stream},
                {"mask", mask},
                {"name", name},
                {"label", label},
                {"value_kind", value_kind},
                {"values", values}};
}

Json PixelArgs(const Json& pixel, const Json& position, const Json& origin) {
    return Json{{"pixel", pixel}, {"position", position}, {"origin", origin}};
}

} // namespace

const char* SlotName(int slot) {
    return Rows()[static_cast<std::size_t>(slot)].name;
}

bool IsAnyThreadSlot(int slot) {
    return Rows()[static_cast<std::size_t>(slot)].anyThread;
}

bool TakesStrings(int slot) {
    for (const P kind : Rows()[static_cast<std::size_t>(slot)].params) {
        if (kind == P::Narrow || kind == P::Wide) {
            return true;
        }
    }
    return slot == 13;
}

std::string LongText(std::size_t length) {
    std::string text(length, 'x');
    for (std::size_t i = 0; i < length; i += 61) {
        text[i] = static_cast<char>('A' + (i / 61) % 26);
    }
    return text;
}

Json PlainArgs(int slot, int tag) {
    switch (slot) {
    case 3:
    case 18:
        return Json::object();
    case 4:
        return PixelArgs({1, 0.5, 0.25, 0}, {15.7, 9.2}, {10, 10});
    case 13: {
        const std::string text = "validate " + std::to_string(tag);
        return StreamArgs(text + ".name", text + ".label", "POSITION", 0, false, false, 2,
                          {1, 2, 3, 0.5, 0.5, 0.5});
    }
    default:
        break;
    }
    Json args = Json::array();
    const auto& params = Rows()[static_cast<std::size_t>(slot)].params;
    for (std::size_t i = 0; i < params.size(); ++i) {
        args.push_back(Plain(params[i], tag, i));
    }
    return args;
}

std::vector<Json> BoundaryArgs(int slot) {
    std::vector<Json> calls;
    switch (slot) {
    case 3:
    case 18:
        return {Json{{"null", true}}, Json{{"null", false}}};
    case 4: {
        const Json plain = PlainArgs(4, 0);
        calls.push_back(PixelArgs(nullptr, nullptr, nullptr));
        for (const Json& value : Boundaries(P::Float)) {
            calls.push_back(PixelArgs({value, value, value, value}, plain["position"], nullptr));
        }
        for (const Json& value : Boundaries(P::Double)) {
            calls.push_back(PixelArgs(plain["pixel"], {value, value}, {value, -1}));
        }
        return calls;
    }
    case 13: {
        for (const Json& text : Boundaries(P::Narrow)) {
            calls.push_back(
                StreamArgs(text, text, "POSITION", 0, true, false, 2, {1, 2, 3, 4, 5, 6}));
        }
        for (const char* stream : kStreams) {
            for (const bool mask : {false, true}) {
                for (const int kind : {0, 1, 2, -1, 7}) {
                    calls.push_back(StreamArgs("n", "l", stream, kind, kind == 0, mask,
                                               static_cast<std::uint32_t>(kind & 7),
                                               {"nan", "inf", "-inf", "-0", 3e38, -3e38}));
                }
            }
        }
        for (const std::uint32_t value_kind : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 100u, 0xFFFFFFFFu}) {
            calls.push_back(
                StreamArgs("n", "l", "SCALE", 0, false, false, value_kind, {1, 2, 3, 4, 5, 6}));
        }
        return calls;
    }
    default:
        break;
    }
    const auto& params = Rows()[static_cast<std::size_t>(slot)].params;
    const Json plain = PlainArgs(slot, 0);
    if (params.empty()) {
        return {plain};
    }
    for (std::size_t i = 0; i < params.size(); ++i) {
        for (const Json& value : Boundaries(params[i])) {
            Json args = plain;
            args[i] = value;
            calls.push_back(std::move(args));
        }
    }
    // Every parameter at a boundary at once.
    Json all = Json::array();
    for (const P kind : params) {
        all.push_back(Boundaries(kind).front());
    }
    calls.push_back(std::move(all));
    return calls;
}

Json RandomArgs(int slot, std::mt19937_64& random) {
    switch (slot) {
    case 3:
    case 18:
        return Json{{"null", static_cast<bool>(random() & 1)}};
    case 4: {
        auto maybe = [&](int count, bool is_float) -> Json {
            if (Below(random, 5) == 0) {
                return nullptr;
            }
            Json list = Json::array();
            for (int i = 0; i < count; ++i) {
                list.push_back(RandomValue(is_float ? P::Float : P::Double, random));
            }
            return list;
        };
        return PixelArgs(maybe(4, true), maybe(2, false), maybe(2, false));
    }
    case 13: {
        Json values = Json::array();
        for (int i = 0; i < 6; ++i) {
            values.push_back(RandomValue(P::Float, random));
        }
        const int kind = static_cast<int>(Below(random, 5)) - 1;
        return StreamArgs(RandomValue(P::Narrow, random), RandomValue(P::Narrow, random),
                          kStreams[Below(random, std::size(kStreams))], kind,
                          static_cast<bool>(random() & 1), static_cast<bool>(random() & 1),
                          static_cast<std::uint32_t>(Below(random, 10)), values);
    }
    default:
        break;
    }
    Json args = Json::array();
    for (const P kind : Rows()[static_cast<std::size_t>(slot)].params) {
        args.push_back(RandomValue(kind, random));
    }
    return args;
}

} // namespace qzhost::validate
