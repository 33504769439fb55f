#include "script/Shape.h"

#include <limits>

#include "script/ScriptErrors.h"

namespace qzhost::script {

std::string Quoted(const std::string& name) {
    return "\"" + name + "\"";
}

bool AsBool(const Json& value, const std::string& what) {
    if (!value.is_boolean()) {
        throw ArgumentError(what + " must be true or false");
    }
    return value.get<bool>();
}

std::int64_t AsInteger(const Json& value, const std::string& what, std::int64_t min,
                       std::int64_t max) {
    const std::string range = " from " + std::to_string(min) + " to " + std::to_string(max);
    if (value.is_number_unsigned()) {
        const auto number = value.get<std::uint64_t>();
        if (number > static_cast<std::uint64_t>(max)) {
            throw ArgumentError(what + " must be an integer" + range);
        }
        return static_cast<std::int64_t>(number);
    }
    if (!value.is_number_integer()) {
        throw ArgumentError(what + " must be an integer");
    }
    const auto number = value.get<std::int64_t>();
    if (number < min || number > max) {
        throw ArgumentError(what + " must be an integer" + range);
    }
    return number;
}

std::int32_t AsInt32(const Json& value, const std::string& what) {
    return static_cast<std::int32_t>(AsInteger(value, what,
                                               std::numeric_limits<std::int32_t>::min(),
                                               std::numeric_limits<std::int32_t>::max()));
}

const std::string& AsString(const Json& value, const std::string& what) {
    if (!value.is_string()) {
        throw ArgumentError(what + " must be a string");
    }
    return value.get_ref<const std::string&>();
}

const Json& AsObject(const Json& value, const std::string& what) {
    if (!value.is_object()) {
        throw ArgumentError(what + " must be an object");
    }
    return value;
}

const Json& AsArray(const Json& value, const std::string& what) {
    if (!value.is_array()) {
        throw ArgumentError(what + " must be a list");
    }
    return value;
}

} // namespace qzhost::script
