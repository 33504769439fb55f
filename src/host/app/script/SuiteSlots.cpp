// A call line's arguments, decoded from the parameter types of the suite's slots.
//
// Most slots take plain values (strings and numbers): their arguments are a JSON list,
// decoded entry by entry with the decoder of the parameter's type, read off the slot's
// function pointer type. Four slots take records through pointers, and their arguments
// are objects with a decoder of their own: 3 (the pixel that the call writes), 4 (the
// pixel, position and origin it reads), 13 (a layer and a property path) and 18 (the
// bool that the call writes).
#include "script/SuiteSlots.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "script/ScriptErrors.h"
#include "script/Shape.h"
#include "script/StringPlacement.h"
#include "script/Values.h"

namespace qzhost::script {

namespace {

using Suite = QZ_InfoPaletteSuite2;

template <typename>
inline constexpr bool kNoDecoder = false;

/// How a line gives an argument of parameter type T: `Held` is what the host keeps while
/// the call may read it, `Decode` reads it from its JSON value (`what` names the value in
/// messages), `Pass` makes the argument that the slot receives from the held value.
template <typename T>
struct Param {
    static_assert(kNoDecoder<T>, "a slot has a parameter type that a script cannot give");
};

template <>
struct Param<QZ_Narrow> {
    using Held = std::optional<std::string>;
    static Held Decode(const Json& value, const std::string& what) {
        return NarrowArg(value, what);
    }
    static QZ_Narrow Pass(const Held& text) {
        if (!text.has_value()) {
            return nullptr;
        }
        StringPlacement* placement = CurrentStringPlacement();
        return placement != nullptr ? placement->Place(*text) : text->c_str();
    }
};

template <>
struct Param<QZ_Wide> {
    using Held = std::optional<kitcore::utility::UTF16String>;
    static Held Decode(const Json& value, const std::string& what) { return UTF16Arg(value, what); }
    static QZ_Wide Pass(const Held& text) {
        if (!text.has_value()) {
            return nullptr;
        }
        StringPlacement* placement = CurrentStringPlacement();
        return placement != nullptr ? placement->Place(*text) : text->c_str();
    }
};

template <>
struct Param<float> {
    using Held = float;
    static Held Decode(const Json& value, const std::string& what) { return FloatArg(value, what); }
    static float Pass(Held number) { return number; }
};

template <>
struct Param<double> {
    using Held = double;
    static Held Decode(const Json& value, const std::string& what) {
        return NumberArg(value, what);
    }
    static double Pass(Held number) { return number; }
};

template <>
struct Param<bool> {
    using Held = bool;
    static Held Decode(const Json& value, const std::string& what) { return AsBool(value, what); }
    static bool Pass(Held flag) { return flag; }
};

template <>
struct Param<std::uint32_t> {
    using Held = std::uint32_t;
    static Held Decode(const Json& value, const std::string& what) {
        return static_cast<std::uint32_t>(AsInteger(value, what, 0, 0xFFFFFFFF));
    }
    static std::uint32_t Pass(Held number) { return number; }
};

std::string Entry(std::size_t index) {
    return "\"args\"[" + std::to_string(index) + "]";
}

/// The "args" list, which must have exactly `count` entries; a missing one counts as []
/// for a slot without parameters.
const Json& ArgList(const Json* args, std::size_t count) {
    static const Json empty = Json::array();
    if (args == nullptr) {
        if (count == 0) {
            return empty;
        }
        throw ArgumentError("missing field \"args\"");
    }
    AsArray(*args, "\"args\"");
    if (args->size() != count) {
        throw ArgumentError("\"args\" must have " + std::to_string(count) + " entries");
    }
    return *args;
}

/// The "args" object, which may have only `fields`; a missing one counts as {}.
const Json& ArgObject(const Json* args, std::initializer_list<const char*> fields) {
    static const Json empty = Json::object();
    if (args == nullptr) {
        return empty;
    }
    AsObject(*args, "\"args\"");
    for (const auto& member : args->items()) {
        bool known = false;
        for (const char* field : fields) {
            known = known || member.key() == field;
        }
        if (!known) {
            throw ArgumentError("unknown field " + Quoted(member.key()) + " in \"args\"");
        }
    }
    return *args;
}

const Json* Member(const Json& object, const char* name) {
    auto it = object.find(name);
    return it == object.end() ? nullptr : &*it;
}

// ---- Slots whose parameters are all plain values: "args" is a list, one entry per
// parameter, each decoded by the decoder of its parameter's type.

/// The row of a slot `Slot`, a member of the suite such as
/// &QZ_InfoPaletteSuite2::ShowRotationReadout: its parameters are read off its type.
template <typename SlotPointer>
struct ListSlot;

template <typename... Params>
struct ListSlot<QZ_Err (*Suite::*)(Params...)> {
    using Held = std::tuple<typename Param<Params>::Held...>;

    template <auto Slot>
    static SlotCall Make(const Json* args) {
        return Bind<Slot>(ArgList(args, sizeof...(Params)), std::index_sequence_for<Params...>{});
    }

    template <auto Slot, std::size_t... I>
    static SlotCall Bind([[maybe_unused]] const Json& list, std::index_sequence<I...>) {
        // A braced list is evaluated in order: the first bad entry is the one reported.
        auto held = std::make_shared<Held>(Held{Param<Params>::Decode(list.at(I), Entry(I))...});
        const std::tuple<Params...> arguments{Param<Params>::Pass(std::get<I>(*held))...};
        SlotCall made;
        made.values = std::move(held);
        made.call = [arguments](const Suite& suite) { return std::apply(suite.*Slot, arguments); };
        return made;
    }
};

template <auto Slot>
SlotCall ListCall(const Json* args) {
    return ListSlot<decltype(Slot)>::template Make<Slot>(args);
}

// ---- Slots with records.

/// {"null": B} of slots 3 and 18: whether the call gets a null pointer for what it writes.
bool NullArg(const Json* args) {
    const Json& object = ArgObject(args, {"null"});
    const Json* null_field = Member(object, "null");
    return null_field != nullptr && AsBool(*null_field, "\"args\".null");
}

/// Slot 3: the host fills the record with -1 before the call and reports it after.
SlotCall GetPixelCall(const Json* args) {
    const bool null_pointer = NullArg(args);
    auto pixel = std::make_shared<PF_PixelFloat>(PF_PixelFloat{-1.0f, -1.0f, -1.0f, -1.0f});
    PF_PixelFloat* record = null_pointer ? nullptr : pixel.get();
    SlotCall made;
    made.values = std::move(pixel);
    made.call = [record](const Suite& suite) { return suite.GetPixel(record); };
    if (record != nullptr) {
        made.report = [record](Json& out) {
            out["pixel"] = Json::array({NumberOut(record->alpha), NumberOut(record->red),
                                        NumberOut(record->green), NumberOut(record->blue)});
        };
    }
    return made;
}

/// Slot 18: the host sets the bool to the opposite of the plug-in object's bool (false
/// when there is none) before the call and reports it after.
SlotCall GetFlagCall(const Json* args) {
    const bool null_pointer = NullArg(args);
    auto flag = std::make_shared<bool>(false);
    bool* value = flag.get();
    SlotCall made;
    made.values = std::move(flag);
    made.prepare = [value](const Suite& suite) {
        // The plug-in object's bool, learned through two probes that start from opposite
        // values: a slot that writes nothing leaves both as they were.
        bool probe_false = false;
        bool probe_true = true;
        suite.GetFlag(&probe_false);
        suite.GetFlag(&probe_true);
        const bool written = probe_false || !probe_true;
        *value = written ? !probe_false : false;
    };
    bool* record = null_pointer ? nullptr : value;
    made.call = [record](const Suite& suite) { return suite.GetFlag(record); };
    if (record != nullptr) {
        made.report = [record](Json& out) { out["flag"] = *record; };
    }
    return made;
}

/// A list of `count` numbers, or null; `assign` receives the list.
template <typename Assign>
bool NumberListArg(const Json& value, const std::string& what, std::size_t count, Assign&& assign) {
    if (value.is_null()) {
        return false;
    }
    AsArray(value, what);
    if (value.size() != count) {
        throw ArgumentError(what + " must have " + std::to_string(count) + " entries");
    }
    std::vector<double> numbers;
    for (std::size_t i = 0; i < count; ++i) {
        numbers.push_back(NumberArg(value.at(i), what + "[" + std::to_string(i) + "]"));
    }
    assign(numbers);
    return true;
}

/// Slot 4: {"pixel": [a, r, g, b] or null, "position": [x, y] or null, "origin": ...}.
SlotCall SetPixelInfoCall(const Json* args) {
    struct Values {
        PF_PixelFloat pixel{};
        M_Vector2T<double> position{};
        M_Vector2T<double> origin{};
    };
    auto values = std::make_shared<Values>();
    Values& v = *values;
    const Json& object = ArgObject(args, {"pixel", "position", "origin"});
    static const Json null_value;
    auto field = [&](const char* name) -> const Json& {
        const Json* value = Member(object, name);
        return value == nullptr ? null_value : *value;
    };
    const Json& pixel_arg = field("pixel");
    const bool has_pixel = NumberListArg(pixel_arg, "\"args\".pixel", 4, [&](const auto&) {
        const auto channel = [&](std::size_t i) {
            return FloatArg(pixel_arg.at(i), "\"args\".pixel[" + std::to_string(i) + "]");
        };
        v.pixel = {channel(0), channel(1), channel(2), channel(3)};
    });
    const bool has_position =
        NumberListArg(field("position"), "\"args\".position", 2, [&](const auto& n) {
            v.position = {n[0], n[1]};
        });
    const bool has_origin =
        NumberListArg(field("origin"), "\"args\".origin", 2, [&](const auto& n) {
            v.origin = {n[0], n[1]};
        });
    const PF_PixelFloat* pixel = has_pixel ? &v.pixel : nullptr;
    const M_Vector2T<double>* position = has_position ? &v.position : nullptr;
    const M_Vector2T<double>* origin = has_origin ? &v.origin : nullptr;
    SlotCall made;
    made.values = std::move(values);
    made.call = [=](const Suite& suite) { return suite.SetPixelInfo(pixel, position, origin); };
    return made;
}

/// Slot 13: {"layer": {"kind": N, "three_d": B}, "stream": S, "mask": B, "name": ...,
/// "label": ..., "value_kind": N, "values": [x, y, z, dx, dy, dz]}.
SlotCall ShowStreamReadoutCall(const Json* args) {
    if (args == nullptr) {
        throw ArgumentError("missing field \"args\"");
    }
    const Json& object =
        ArgObject(args, {"layer", "stream", "mask", "name", "label", "value_kind", "values"});
    auto require = [&](const char* name) -> const Json& {
        const Json* value = Member(object, name);
        if (value == nullptr) {
            throw ArgumentError("missing field " + Quoted(name) + " in \"args\"");
        }
        return *value;
    };
    const Json& layer = AsObject(require("layer"), "\"args\".layer");
    for (const auto& member : layer.items()) {
        if (member.key() != "kind" && member.key() != "three_d") {
            throw ArgumentError("unknown field " + Quoted(member.key()) + " in \"args\".layer");
        }
    }
    const Json* kind = Member(layer, "kind");
    const Json* three_d = Member(layer, "three_d");
    if (kind == nullptr || three_d == nullptr) {
        throw ArgumentError("\"args\".layer needs \"kind\" and \"three_d\"");
    }
    struct Values {
        std::unique_ptr<PXM_Layer> layer;
        std::unique_ptr<KVB_StreamIDPath> path;
        Param<QZ_Narrow>::Held name;
        Param<QZ_Narrow>::Held label;
    };
    auto values = std::make_shared<Values>();
    Values& v = *values;
    v.layer = std::make_unique<PXM_Layer>(AsInt32(*kind, "\"args\".layer.kind"),
                                          AsBool(*three_d, "\"args\".layer.three_d"));
    const std::string& stream = AsString(require("stream"), "\"args\".stream");
    const bool mask = AsBool(require("mask"), "\"args\".mask");
    v.path = std::make_unique<KVB_StreamIDPath>(
        std::vector<KVB_MatchName>{KVB_MatchName(stream.c_str())}, mask);
    v.name = Param<QZ_Narrow>::Decode(require("name"), "\"args\".name");
    v.label = Param<QZ_Narrow>::Decode(require("label"), "\"args\".label");
    const std::uint32_t value_kind =
        Param<std::uint32_t>::Decode(require("value_kind"), "\"args\".value_kind");
    const Json& numbers = AsArray(require("values"), "\"args\".values");
    if (numbers.size() != 6) {
        throw ArgumentError("\"args\".values must have 6 entries");
    }
    std::array<float, 6> n{};
    for (std::size_t i = 0; i < n.size(); ++i) {
        n[i] = Param<float>::Decode(numbers.at(i), "\"args\".values[" + std::to_string(i) + "]");
    }
    PXM_Layer* layer_ptr = v.layer.get();
    const KVB_StreamIDPath* path = v.path.get();
    const QZ_Narrow name = Param<QZ_Narrow>::Pass(v.name);
    const QZ_Narrow label = Param<QZ_Narrow>::Pass(v.label);
    SlotCall made;
    made.values = std::move(values);
    made.call = [=](const Suite& suite) {
        return suite.ShowStreamReadout(layer_ptr, path, name, label, value_kind, n[0], n[1], n[2],
                                       n[3], n[4], n[5]);
    };
    return made;
}

// ---- The table: one row per slot, in the suite's order.

using MakeFunction = SlotCall (*)(const Json* args);

constexpr std::array<MakeFunction, kQZ_InfoPaletteSuiteSlotCount> kSlots{
    ListCall<&Suite::SetTextLines3>,          // 0
    ListCall<&Suite::SetTextLines5>,          // 1
    ListCall<&Suite::SetFirstLineSuffix>,     // 2
    GetPixelCall,                             // 3
    SetPixelInfoCall,                         // 4
    ListCall<&Suite::ShowRotationReadout>,    // 5
    ListCall<&Suite::ShowOrientationReadout>, // 6
    ListCall<&Suite::ShowPositionReadout2D>,  // 7
    ListCall<&Suite::ShowPositionReadout3D>,  // 8
    ListCall<&Suite::ShowPointReadout2D>,     // 9
    ListCall<&Suite::ShowPointReadout3D>,     // 10
    ListCall<&Suite::ShowScaleReadout2D>,     // 11
    ListCall<&Suite::ShowScaleReadout3D>,     // 12
    ShowStreamReadoutCall,                    // 13
    ListCall<&Suite::IsPanelVisible>,         // 14
    ListCall<&Suite::SetPanelVisible>,        // 15
    ListCall<&Suite::ShowPanel>,              // 16
    ListCall<&Suite::SetFlag>,                // 17
    GetFlagCall,                              // 18
    ListCall<&Suite::Reserved19>,             // 19
    ListCall<&Suite::Reserved20>,             // 20
    ListCall<&Suite::UpdatePanelTab>,         // 21
    ListCall<&Suite::SetTextLines3W>,         // 22
    ListCall<&Suite::SetTextLines5W>,         // 23
};

} // namespace

SlotCall MakeSlotCall(int slot, const Json* args) {
    if (slot < 0 || slot >= static_cast<int>(kSlots.size())) {
        throw ArgumentError("\"slot\" must be an integer from 0 to " +
                            std::to_string(kSlots.size() - 1));
    }
    return kSlots[static_cast<std::size_t>(slot)](args);
}

} // namespace qzhost::script
