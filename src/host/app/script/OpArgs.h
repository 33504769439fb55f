// The arguments of one script line: the JSON object with its "op" name, and checked
// access to its fields.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "script/Json.h"

namespace qzhost::script {

class OpArgs {
public:
    /// `line` is an object whose "op" member is a string (the runner checks both).
    explicit OpArgs(const Json& line);

    const std::string& Op() const noexcept { return op_; }
    const Json& Line() const noexcept { return line_; }

    /// The field, or null when the line does not have it.
    const Json* Find(const std::string& field) const;
    /// The field; throws ArgumentError when it is missing.
    const Json& Require(const std::string& field) const;

    bool Bool(const std::string& field) const;
    bool Bool(const std::string& field, bool fallback) const;
    std::int32_t Int32(const std::string& field) const;
    const std::string& String(const std::string& field) const;

    /// Throws ArgumentError when the line has a field other than "op" and `fields`.
    void AllowOnly(std::initializer_list<std::string_view> fields) const;

private:
    const Json& line_;
    std::string op_;
};

} // namespace qzhost::script
