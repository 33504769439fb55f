// Checks of the shape of script arguments. Each function either returns the value or
// throws ArgumentError with a message that names the value (`what`, e.g. "\"command\"").
#pragma once

#include <cstdint>
#include <string>

#include "script/Json.h"

namespace qzhost::script {

/// `"name"`: the way messages name a field.
std::string Quoted(const std::string& name);

bool AsBool(const Json& value, const std::string& what);
/// An integer in [min, max]; a number with a fraction or a string is refused.
std::int64_t AsInteger(const Json& value, const std::string& what, std::int64_t min,
                       std::int64_t max);
std::int32_t AsInt32(const Json& value, const std::string& what);
const std::string& AsString(const Json& value, const std::string& what);
const Json& AsObject(const Json& value, const std::string& what);
const Json& AsArray(const Json& value, const std::string& what);

} // namespace qzhost::script
