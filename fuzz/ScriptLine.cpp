// Fuzz target of the line decoder of `qzhost script`: the input is a script, read line by
// line as the runner reads it. Each line that is not skipped is decoded into an object
// with its op (DecodeScriptLine, OpArgs), and every field is put through each of the
// argument decoders that the ops use (strings in the host code page and in UTF-16,
// numbers with their non-finite spellings, integers, flags), and the outputs made of them
// are written as the runner writes its output lines.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "script/Json.h"
#include "script/OpArgs.h"
#include "script/ScriptErrors.h"
#include "script/ScriptLine.h"
#include "script/Shape.h"
#include "script/Values.h"

namespace {

using namespace qzhost::script;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

// Runs one decoder; a value of the wrong shape is refused with ArgumentError.
template <class Decode>
void Try(Decode decode) {
    try {
        decode();
    } catch (const ArgumentError&) {
    }
}

void DecodeField(const OpArgs& args, const std::string& field, Json& out) {
    const Json& value = args.Require(field);
    Try([&] {
        if (const auto narrow = NarrowArg(value, field)) {
            out[field + ".narrow"] = UTF16ToUTF8(UTF8ToUTF16(*narrow));
        }
    });
    Try([&] {
        if (const auto wide = UTF16Arg(value, field)) {
            out[field + ".utf16"] = UTF16ToUTF8(*wide);
        }
    });
    Try([&] { out[field + ".number"] = NumberOut(NumberArg(value, field)); });
    Try([&] { out[field + ".float"] = NumberOut(FloatArg(value, field)); });
    Try([&] { out[field + ".int32"] = args.Int32(field); });
    Try([&] { out[field + ".bool"] = args.Bool(field); });
    Try([&] { out[field + ".string"] = args.String(field); });
    Try([&] { (void)AsObject(value, field); });
    Try([&] {
        for (const Json& element : AsArray(value, field)) {
            Try([&] { out[field + ".element"] = NumberOut(NumberArg(element, field)); });
        }
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::string text;
    while (std::getline(in, text)) {
        if (IsSkippedLine(text)) {
            continue;
        }
        Json line;
        try {
            line = DecodeScriptLine(text);
        } catch (const ArgumentError&) {
            continue;
        }
        Require(line.is_object() && line.contains("op") && line["op"].is_string());
        const OpArgs args(line);
        Json out = Json::object();
        out["op"] = args.Op();
        for (const auto& member : line.items()) {
            DecodeField(args, member.key(), out);
        }
        Try([&] { args.AllowOnly({"op"}); });
        // The output line, as the runner writes it: text that is not valid UTF-8 is
        // replaced, and the line is one line.
        const std::string written = out.dump(-1, ' ', false, Json::error_handler_t::replace);
        Require(written.find('\n') == std::string::npos);
        Require(Json::parse(written).is_object());
    }
    return 0;
}
