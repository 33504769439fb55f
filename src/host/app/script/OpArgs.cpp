#include "script/OpArgs.h"

#include <algorithm>

#include "script/ScriptErrors.h"
#include "script/Shape.h"

namespace qzhost::script {

OpArgs::OpArgs(const Json& line) : line_(line), op_(line.at("op").get<std::string>()) {}

const Json* OpArgs::Find(const std::string& field) const {
    auto it = line_.find(field);
    return it == line_.end() ? nullptr : &*it;
}

const Json& OpArgs::Require(const std::string& field) const {
    const Json* value = Find(field);
    if (value == nullptr) {
        throw ArgumentError("missing field " + Quoted(field));
    }
    return *value;
}

bool OpArgs::Bool(const std::string& field) const {
    return AsBool(Require(field), Quoted(field));
}

bool OpArgs::Bool(const std::string& field, bool fallback) const {
    const Json* value = Find(field);
    return value == nullptr ? fallback : AsBool(*value, Quoted(field));
}

std::int32_t OpArgs::Int32(const std::string& field) const {
    return AsInt32(Require(field), Quoted(field));
}

const std::string& OpArgs::String(const std::string& field) const {
    return AsString(Require(field), Quoted(field));
}

void OpArgs::AllowOnly(std::initializer_list<std::string_view> fields) const {
    for (const auto& member : line_.items()) {
        const std::string& key = member.key();
        if (key == "op") {
            continue;
        }
        if (std::find(fields.begin(), fields.end(), key) == fields.end()) {
            throw ArgumentError("unknown field " + Quoted(key) + " for op " + Quoted(op_));
        }
    }
}

} // namespace qzhost::script
