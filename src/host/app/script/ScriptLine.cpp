#include "script/ScriptLine.h"

#include "script/ScriptErrors.h"
#include "script/Shape.h"

namespace qzhost::script {

bool IsSkippedLine(const std::string& line) {
    const std::size_t first = line.find_first_not_of(" \t\r\f\v");
    return first == std::string::npos || line[first] == '#';
}

Json DecodeScriptLine(const std::string& text) {
    Json line;
    try {
        line = Json::parse(text);
    } catch (const Json::parse_error& error) {
        throw ArgumentError("not valid JSON", error.what());
    } catch (const Json::out_of_range& error) {
        // A number literal beyond the range of a double: valid JSON text, but no value
        // that a line can carry.
        throw ArgumentError("a number beyond the range of a double", error.what());
    }
    if (!line.is_object()) {
        throw ArgumentError("a line must be a JSON object");
    }
    auto op = line.find("op");
    if (op == line.end()) {
        throw ArgumentError("missing field \"op\"");
    }
    AsString(*op, "\"op\"");
    return line;
}

} // namespace qzhost::script
