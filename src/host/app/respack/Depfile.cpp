#include "Depfile.h"

#include <stdexcept>

namespace qzrespack {

namespace {

std::string Escaped(const std::filesystem::path& path) {
    std::string out;
    for (const char c : path.string()) {
        switch (c) {
        case ' ':
            out += "\\ ";
            break;
        case '#':
            out += "\\#";
            break;
        case '$':
            out += "$$";
            break;
        case '\n':
        case '\r':
            throw std::runtime_error("cannot write the path '" + path.string() +
                                     "' into a dependency file: it holds a line break");
        default:
            out += c;
        }
    }
    return out;
}

} // namespace

std::string DepfileText(const std::filesystem::path& output,
                        const std::vector<std::filesystem::path>& inputs) {
    std::string text = Escaped(output) + ":";
    for (const auto& input : inputs) {
        text += " \\\n  " + Escaped(input);
    }
    return text + "\n";
}

} // namespace qzrespack
