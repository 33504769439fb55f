// The "call" op: acquires the published Info palette suite through the host's basic
// suite table and calls one of its slots, on the main thread or from a worker thread.
#include <array>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/SuiteRegistry.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"
#include "script/Shape.h"
#include "script/Values.h"

namespace qzhost::script {

namespace {

using Suite = QZ_InfoPaletteSuite2;
using SlotCall = std::function<QZ_Err(const Suite&)>;

/// What a call's pointers point to. A call from a worker may queue a call that keeps
/// those pointers, so the session keeps this until the script ends.
struct CallStorage {
    std::vector<std::optional<std::string>> narrow;
    std::vector<std::optional<kitcore::utility::UTF16String>> wide;
    PF_PixelFloat pixel{};
    M_Vector2T<double> position{};
    M_Vector2T<double> origin{};
    std::unique_ptr<PXM_Layer> layer;
    std::unique_ptr<KVB_StreamIDPath> path;
    bool flag = false;
};

const char* Pointer(const std::optional<std::string>& text) {
    return text.has_value() ? text->c_str() : nullptr;
}

const kitcore::utility::UTF16Char*
Pointer(const std::optional<kitcore::utility::UTF16String>& text) {
    return text.has_value() ? text->c_str() : nullptr;
}

/// The "args" list, which must have exactly `count` entries.
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

/// The "args" object; a missing one counts as {}.
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

std::string Entry(std::size_t index) {
    return "\"args\"[" + std::to_string(index) + "]";
}

/// Narrow strings for entries [first, first + count) of `list`; returns the index of the
/// first one in `storage.narrow`.
std::size_t AddNarrow(CallStorage& storage, const Json& list, std::size_t first,
                      std::size_t count) {
    const std::size_t start = storage.narrow.size();
    for (std::size_t i = first; i < first + count; ++i) {
        storage.narrow.push_back(NarrowArg(list.at(i), Entry(i)));
    }
    return start;
}

void AddWide(CallStorage& storage, const Json& list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        storage.wide.push_back(UTF16Arg(list.at(i), Entry(i)));
    }
}

/// Numbers for entries [first, first + count) of `list`.
std::vector<double> Numbers(const Json& list, std::size_t first, std::size_t count) {
    std::vector<double> numbers;
    for (std::size_t i = first; i < first + count; ++i) {
        numbers.push_back(NumberArg(list.at(i), Entry(i)));
    }
    return numbers;
}

std::vector<float> Floats(const Json& list, std::size_t first, std::size_t count) {
    std::vector<float> floats;
    for (std::size_t i = first; i < first + count; ++i) {
        floats.push_back(FloatArg(list.at(i), Entry(i)));
    }
    return floats;
}

/// A [first, second] pair of numbers, or null.
template <typename Pair>
bool PairArg(const Json& value, const std::string& what, std::size_t count, Pair&& assign) {
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

const Json* Member(const Json& object, const char* name) {
    auto it = object.find(name);
    return it == object.end() ? nullptr : &*it;
}

SlotCall PixelInfoCall(CallStorage& s, const Json* args) {
    const Json& object = ArgObject(args, {"pixel", "position", "origin"});
    static const Json null_value;
    auto field = [&](const char* name) -> const Json& {
        const Json* value = Member(object, name);
        return value == nullptr ? null_value : *value;
    };
    const Json& pixel_arg = field("pixel");
    const bool has_pixel = PairArg(pixel_arg, "\"args\".pixel", 4, [&](const auto&) {
        const auto channel = [&](std::size_t i) {
            return FloatArg(pixel_arg.at(i), "\"args\".pixel[" + std::to_string(i) + "]");
        };
        s.pixel = {channel(0), channel(1), channel(2), channel(3)};
    });
    const bool has_position =
        PairArg(field("position"), "\"args\".position", 2, [&](const auto& n) {
            s.position = {n[0], n[1]};
        });
    const bool has_origin = PairArg(field("origin"), "\"args\".origin", 2, [&](const auto& n) {
        s.origin = {n[0], n[1]};
    });
    const PF_PixelFloat* pixel = has_pixel ? &s.pixel : nullptr;
    const M_Vector2T<double>* position = has_position ? &s.position : nullptr;
    const M_Vector2T<double>* origin = has_origin ? &s.origin : nullptr;
    return [=](const Suite& suite) { return suite.SetPixelInfo(pixel, position, origin); };
}

SlotCall StreamReadoutCall(CallStorage& s, const Json* args) {
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
    s.layer = std::make_unique<PXM_Layer>(AsInt32(*kind, "\"args\".layer.kind"),
                                          AsBool(*three_d, "\"args\".layer.three_d"));
    const std::string& stream = AsString(require("stream"), "\"args\".stream");
    const bool mask = AsBool(require("mask"), "\"args\".mask");
    s.path = std::make_unique<KVB_StreamIDPath>(
        std::vector<KVB_MatchName>{KVB_MatchName(stream.c_str())}, mask);
    s.narrow.push_back(NarrowArg(require("name"), "\"args\".name"));
    s.narrow.push_back(NarrowArg(require("label"), "\"args\".label"));
    const auto value_kind = static_cast<std::uint32_t>(
        AsInteger(require("value_kind"), "\"args\".value_kind", 0, 0xFFFFFFFF));
    const Json& values = AsArray(require("values"), "\"args\".values");
    if (values.size() != 6) {
        throw ArgumentError("\"args\".values must have 6 entries");
    }
    std::array<float, 6> v{};
    for (std::size_t i = 0; i < 6; ++i) {
        v[i] = FloatArg(values.at(i), "\"args\".values[" + std::to_string(i) + "]");
    }
    PXM_Layer* layer_ptr = s.layer.get();
    const KVB_StreamIDPath* path = s.path.get();
    const char* name = Pointer(s.narrow[0]);
    const char* label = Pointer(s.narrow[1]);
    return [=](const Suite& suite) {
        return suite.ShowStreamReadout(layer_ptr, path, name, label, value_kind, v[0], v[1], v[2],
                                       v[3], v[4], v[5]);
    };
}

/// The call of `slot` with the line's arguments, which it stores in `s`.
SlotCall MakeCall(int slot, CallStorage& s, const Json* args) {
    switch (slot) {
    case 0: {
        const std::size_t i = AddNarrow(s, ArgList(args, 3), 0, 3);
        const char* a = Pointer(s.narrow[i]);
        const char* b = Pointer(s.narrow[i + 1]);
        const char* c = Pointer(s.narrow[i + 2]);
        return [=](const Suite& suite) { return suite.SetTextLines3(a, b, c); };
    }
    case 1: {
        const std::size_t i = AddNarrow(s, ArgList(args, 5), 0, 5);
        std::array<const char*, 5> l{};
        for (std::size_t k = 0; k < 5; ++k) {
            l[k] = Pointer(s.narrow[i + k]);
        }
        return
            [=](const Suite& suite) { return suite.SetTextLines5(l[0], l[1], l[2], l[3], l[4]); };
    }
    case 2: {
        const char* text = Pointer(s.narrow[AddNarrow(s, ArgList(args, 1), 0, 1)]);
        return [=](const Suite& suite) { return suite.SetFirstLineSuffix(text); };
    }
    case 4:
        return PixelInfoCall(s, args);
    case 5: {
        const Json& list = ArgList(args, 3);
        const char* name = Pointer(s.narrow[AddNarrow(s, list, 0, 1)]);
        const std::vector<float> n = Floats(list, 1, 2);
        return [=](const Suite& suite) { return suite.ShowRotationReadout(name, n[0], n[1]); };
    }
    case 6: {
        const Json& list = ArgList(args, 8);
        const char* name = Pointer(s.narrow[AddNarrow(s, list, 0, 1)]);
        const bool orientation = AsBool(list.at(1), Entry(1));
        const std::vector<double> n = Numbers(list, 2, 6);
        return [=](const Suite& suite) {
            return suite.ShowOrientationReadout(name, orientation, n[0], n[1], n[2], n[3], n[4],
                                                n[5]);
        };
    }
    case 7:
    case 11: {
        const Json& list = ArgList(args, 5);
        const char* name = Pointer(s.narrow[AddNarrow(s, list, 0, 1)]);
        const std::vector<float> n = Floats(list, 1, 4);
        if (slot == 7) {
            return [=](const Suite& suite) {
                return suite.ShowPositionReadout2D(name, n[0], n[1], n[2], n[3]);
            };
        }
        return [=](const Suite& suite) {
            return suite.ShowScaleReadout2D(name, n[0], n[1], n[2], n[3]);
        };
    }
    case 8:
    case 12: {
        const Json& list = ArgList(args, 7);
        const char* name = Pointer(s.narrow[AddNarrow(s, list, 0, 1)]);
        const std::vector<float> n = Floats(list, 1, 6);
        if (slot == 8) {
            return [=](const Suite& suite) {
                return suite.ShowPositionReadout3D(name, n[0], n[1], n[2], n[3], n[4], n[5]);
            };
        }
        return [=](const Suite& suite) {
            return suite.ShowScaleReadout3D(name, n[0], n[1], n[2], n[3], n[4], n[5]);
        };
    }
    case 9: {
        const Json& list = ArgList(args, 6);
        const std::size_t i = AddNarrow(s, list, 0, 2);
        const char* name = Pointer(s.narrow[i]);
        const char* label = Pointer(s.narrow[i + 1]);
        const std::vector<float> n = Floats(list, 2, 4);
        return [=](const Suite& suite) {
            return suite.ShowPointReadout2D(name, label, n[0], n[1], n[2], n[3]);
        };
    }
    case 10: {
        const Json& list = ArgList(args, 8);
        const std::size_t i = AddNarrow(s, list, 0, 2);
        const char* name = Pointer(s.narrow[i]);
        const char* label = Pointer(s.narrow[i + 1]);
        const std::vector<float> n = Floats(list, 2, 6);
        return [=](const Suite& suite) {
            return suite.ShowPointReadout3D(name, label, n[0], n[1], n[2], n[3], n[4], n[5]);
        };
    }
    case 13:
        return StreamReadoutCall(s, args);
    case 14:
        ArgList(args, 0);
        return [](const Suite& suite) { return suite.IsPanelVisible(); };
    case 15: {
        const bool wanted = AsBool(ArgList(args, 1).at(0), Entry(0));
        return [=](const Suite& suite) { return suite.SetPanelVisible(wanted); };
    }
    case 16:
        ArgList(args, 0);
        return [](const Suite& suite) { return suite.ShowPanel(); };
    case 17: {
        const bool flag = AsBool(ArgList(args, 1).at(0), Entry(0));
        return [=](const Suite& suite) { return suite.SetFlag(flag); };
    }
    case 19:
        ArgList(args, 0);
        return [](const Suite& suite) { return suite.Reserved19(); };
    case 20:
        ArgList(args, 0);
        return [](const Suite& suite) { return suite.Reserved20(); };
    case 21:
        ArgList(args, 0);
        return [](const Suite& suite) { return suite.UpdatePanelTab(); };
    case 22: {
        AddWide(s, ArgList(args, 3));
        const auto* a = Pointer(s.wide[0]);
        const auto* b = Pointer(s.wide[1]);
        const auto* c = Pointer(s.wide[2]);
        return [=](const Suite& suite) { return suite.SetTextLines3W(a, b, c); };
    }
    case 23: {
        AddWide(s, ArgList(args, 5));
        std::array<const kitcore::utility::UTF16Char*, 5> l{};
        for (std::size_t k = 0; k < 5; ++k) {
            l[k] = Pointer(s.wide[k]);
        }
        return
            [=](const Suite& suite) { return suite.SetTextLines5W(l[0], l[1], l[2], l[3], l[4]); };
    }
    default:
        throw ArgumentError("\"slot\" must be an integer from 0 to 23");
    }
}

/// {"null": B} of slots 3 and 18.
bool NullArg(const Json* args) {
    const Json& object = ArgObject(args, {"null"});
    const Json* null_field = Member(object, "null");
    return null_field != nullptr && AsBool(*null_field, "\"args\".null");
}

/// Runs `call` on this thread, or on a second thread that this one waits for.
QZ_Err RunOn(bool worker, const std::function<QZ_Err()>& call) {
    if (!worker) {
        return call();
    }
    QZ_Err result = 0;
    std::exception_ptr escaped;
    std::thread thread([&] {
        try {
            result = call();
        } catch (...) {
            escaped = std::current_exception();
        }
    });
    thread.join();
    if (escaped) {
        std::rethrow_exception(escaped);
    }
    return result;
}

/// The suite, acquired through the host's basic suite table for the length of one call.
class AcquiredSuite {
public:
    AcquiredSuite() {
        const void* table = nullptr;
        basic_ = SuiteRegistry::Get().HostTable();
        if (basic_->AcquireSuite(kQZ_InfoPaletteSuite, kQZ_InfoPaletteSuiteVersion2, &table) == 0 &&
            table != nullptr) {
            suite_ = static_cast<const Suite*>(table);
        }
    }
    ~AcquiredSuite() {
        if (suite_ != nullptr) {
            basic_->ReleaseSuite(kQZ_InfoPaletteSuite, kQZ_InfoPaletteSuiteVersion2);
        }
    }
    AcquiredSuite(const AcquiredSuite&) = delete;
    AcquiredSuite& operator=(const AcquiredSuite&) = delete;
    const Suite* Get() const noexcept { return suite_; }

private:
    QZ_BasicSuiteTable* basic_ = nullptr;
    const Suite* suite_ = nullptr;
};

Json Call(ScriptSession& session, const OpArgs& args) {
    args.AllowOnly({"slot", "args", "thread"});
    const int slot = static_cast<int>(AsInteger(args.Require("slot"), "\"slot\"", 0, 23));
    bool worker = false;
    if (const Json* thread = args.Find("thread")) {
        const std::string& name = AsString(*thread, "\"thread\"");
        if (name != "main" && name != "worker") {
            throw ArgumentError("\"thread\" must be \"main\" or \"worker\", not " + Quoted(name));
        }
        worker = name == "worker";
    }
    const Json* call_args = args.Find("args");

    // Every argument is checked before anything is called.
    auto storage = std::make_shared<CallStorage>();
    std::function<QZ_Err(const Suite&)> call;
    bool null_pointer = false;
    if (slot == 3 || slot == 18) {
        null_pointer = NullArg(call_args);
    } else {
        call = MakeCall(slot, *storage, call_args);
    }

    Json out = OpOutput(args);
    out["slot"] = slot;
    AcquiredSuite acquired;
    const Suite* suite = acquired.Get();
    if (suite == nullptr) {
        out["published"] = false;
        return out;
    }
    // A call from a worker may leave a queued call behind that reads these values when the
    // main loop runs it; a call on the main thread is done with them when it returns.
    if (worker) {
        session.Keep(storage);
    }

    if (slot == 3) {
        storage->pixel = {-1.0f, -1.0f, -1.0f, -1.0f};
        PF_PixelFloat* pixel = null_pointer ? nullptr : &storage->pixel;
        out["result"] = RunOn(worker, [&] { return suite->GetPixel(pixel); });
        if (!null_pointer) {
            const PF_PixelFloat& p = storage->pixel;
            out["pixel"] = Json::array(
                {NumberOut(p.alpha), NumberOut(p.red), NumberOut(p.green), NumberOut(p.blue)});
        }
        return out;
    }
    if (slot == 18) {
        // The plug-in object's bool, learned through two probes that start from opposite
        // values: a slot that writes nothing leaves both as they were.
        bool probe_false = false;
        bool probe_true = true;
        suite->GetFlag(&probe_false);
        suite->GetFlag(&probe_true);
        const bool written = probe_false || !probe_true;
        storage->flag = written ? !probe_false : false;
        bool* flag = null_pointer ? nullptr : &storage->flag;
        out["result"] = RunOn(worker, [&] { return suite->GetFlag(flag); });
        if (!null_pointer) {
            out["flag"] = storage->flag;
        }
        return out;
    }
    out["result"] = RunOn(worker, [&] { return call(*suite); });
    return out;
}

} // namespace

void AddCallOps(OpTable& table) {
    table.Add("call", Call);
}

} // namespace qzhost::script
