#include "OutputComparison.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>

#include <nlohmann/json.hpp>

namespace qzhost::scenario {

namespace {

using Json = nlohmann::ordered_json;

struct Lines {
    std::vector<std::string_view> lines;
    /// Whether the last line ends with a line end (true for an empty text).
    bool terminated = true;
};

Lines Split(std::string_view text) {
    Lines out;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) {
            out.lines.push_back(text.substr(start));
            out.terminated = false;
            break;
        }
        out.lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return out;
}

/// A value as compact JSON text: two values agree when their texts do, so 1 and 1.0
/// differ as they do on the line.
std::string Text(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string LineCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " line" : " lines");
}

std::string Quoted(const std::string& name) {
    return "\"" + name + "\"";
}

/// Whether `line` is a snapshot op's output.
bool IsSnapshot(const Json& line) {
    if (!line.is_object()) {
        return false;
    }
    const auto op = line.find("op");
    return op != line.end() && *op == "snapshot";
}

/// The controls of `list` by id; nullopt (with a message in `problems`) when the list
/// is not a list of objects with distinct integer ids.
std::optional<std::map<std::int64_t, const Json*>>
ControlsById(const Json& list, const std::string& whose, const std::string& at,
             std::vector<std::string>& problems) {
    if (!list.is_array()) {
        problems.push_back(at + whose + " \"controls\" is not a list");
        return std::nullopt;
    }
    std::map<std::int64_t, const Json*> by_id;
    for (const Json& control : list) {
        const Json* id = nullptr;
        if (control.is_object()) {
            const auto it = control.find("id");
            id = it == control.end() ? nullptr : &*it;
        }
        if (id == nullptr || !id->is_number_integer()) {
            problems.push_back(
                at + whose +
                " \"controls\" has an entry without an integer \"id\": " + Text(control));
            return std::nullopt;
        }
        if (!by_id.emplace(id->get<std::int64_t>(), &control).second) {
            problems.push_back(at + whose + " \"controls\" lists control " + Text(*id) + " twice");
            return std::nullopt;
        }
    }
    return by_id;
}

void CompareControls(const Json& expected, const Json& actual, const std::string& at,
                     std::vector<std::string>& problems) {
    const auto wanted = ControlsById(expected, "the expected", at, problems);
    const auto present = ControlsById(actual, "the actual", at, problems);
    if (!wanted || !present) {
        return;
    }
    for (const auto& [id, control] : *wanted) {
        const auto found = present->find(id);
        if (found == present->end()) {
            problems.push_back(at + "control " + std::to_string(id) +
                               " is not in the actual snapshot");
            continue;
        }
        const Json& shown = *found->second;
        for (const auto& member : control->items()) {
            const auto value = shown.find(member.key());
            if (value == shown.end()) {
                problems.push_back(at + "control " + std::to_string(id) + " has no " +
                                   Quoted(member.key()) + " in the actual snapshot");
            } else if (Text(*value) != Text(member.value())) {
                problems.push_back(at + "control " + std::to_string(id) + " " +
                                   Quoted(member.key()) + ": expected " + Text(member.value()) +
                                   ", actual " + Text(*value));
            }
        }
    }
}

/// The members that the expected snapshot line names, against the actual one.
void CompareSnapshot(std::string_view expected_text, const Json& actual, const std::string& at,
                     std::vector<std::string>& problems) {
    Json expected;
    try {
        expected = Json::parse(expected_text);
    } catch (const Json::parse_error& error) {
        problems.push_back(at + "the expected snapshot line is not valid JSON (" + error.what() +
                           ")");
        return;
    }
    if (!expected.is_object()) {
        problems.push_back(at + "the expected snapshot line is not a JSON object");
        return;
    }
    if (!expected.contains("op")) {
        problems.push_back(at + "the expected snapshot line does not name \"op\"");
    }
    for (const auto& member : expected.items()) {
        const auto value = actual.find(member.key());
        if (value == actual.end()) {
            problems.push_back(at + "the expected line names " + Quoted(member.key()) +
                               ", which the actual snapshot does not have");
        } else if (member.key() == "controls") {
            CompareControls(member.value(), *value, at, problems);
        } else if (Text(*value) != Text(member.value())) {
            problems.push_back(at + Quoted(member.key()) + ": expected " + Text(member.value()) +
                               ", actual " + Text(*value));
        }
    }
}

} // namespace

std::vector<std::string> CompareOutput(std::string_view expected, std::string_view actual) {
    std::vector<std::string> problems;
    const Lines want = Split(expected);
    const Lines got = Split(actual);
    const std::size_t common = std::min(want.lines.size(), got.lines.size());
    for (std::size_t i = 0; i < common; ++i) {
        const std::string at = "line " + std::to_string(i + 1) + ": ";
        const Json line = Json::parse(got.lines[i], nullptr, false);
        if (!line.is_discarded() && IsSnapshot(line)) {
            CompareSnapshot(want.lines[i], line, at, problems);
        } else if (want.lines[i] != got.lines[i]) {
            problems.push_back(at + "differs\n  expected: " + std::string(want.lines[i]) +
                               "\n  actual:   " + std::string(got.lines[i]));
        }
    }
    if (want.lines.size() != got.lines.size()) {
        std::string message = "the actual output has " + LineCount(got.lines.size()) +
                              ", the expected text " + LineCount(want.lines.size());
        if (got.lines.size() > common) {
            message += "; the first extra line: " + std::string(got.lines[common]);
        } else {
            message += "; the first missing line: " + std::string(want.lines[common]);
        }
        problems.push_back(message);
    } else if (want.terminated != got.terminated) {
        problems.push_back(std::string("the last line of the ") +
                           (got.terminated ? "expected text" : "actual output") +
                           " has no line end");
    }
    return problems;
}

} // namespace qzhost::scenario
