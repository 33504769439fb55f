#include "ProgramOutput.h"

#include <cstdio>
#include <stdexcept>

namespace sdkcheck {

std::string ShellQuoted(const std::string& text) {
    std::string out = "'";
    for (const char c : text) {
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return out + "'";
}

std::string ProgramOutput(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot run " + command);
    }
    std::string output;
    char buffer[4096];
    while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, pipe)) {
        output.append(buffer, got);
    }
    if (pclose(pipe) != 0) {
        throw std::runtime_error(command + " failed");
    }
    return output;
}

} // namespace sdkcheck
