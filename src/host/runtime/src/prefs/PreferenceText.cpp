#include "PreferenceText.h"

#include <cctype>
#include <optional>
#include <string_view>
#include <vector>

namespace qzhost::prefs {

PreferenceFormatError::PreferenceFormatError(std::size_t line, const std::string& problem)
    : std::runtime_error("line " + std::to_string(line) + ": " + problem), line_(line) {}

namespace {

constexpr std::string_view kHeader = "# qzhost preferences\n";

// One character of a line after escapes are resolved; `escaped` characters never carry
// a meaning of their own (section brackets, "=", comment mark, trimmed space).
struct Token {
    char c;
    bool escaped;
};

bool IsBlank(const Token& t) {
    return !t.escaped && (t.c == ' ' || t.c == '\t' || t.c == '\r');
}

// The value of one hexadecimal digit, or -1 for any other character.
int HexDigit(char c) {
    const auto lower = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const std::size_t at = std::string_view("0123456789abcdef").find(lower);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

std::vector<Token> Tokenize(std::string_view line, std::size_t number) {
    std::vector<Token> tokens;
    tokens.reserve(line.size());
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '\0') {
            throw PreferenceFormatError(number, "NUL byte");
        }
        if (c != '\\') {
            tokens.push_back({c, false});
            continue;
        }
        if (i + 1 >= line.size()) {
            throw PreferenceFormatError(number, "backslash at the end of the line");
        }
        const char e = line[++i];
        switch (e) {
        case '\\':
        case '=':
        case '[':
        case ']':
        case '#':
        case ' ':
            tokens.push_back({e, true});
            break;
        case 'n':
            tokens.push_back({'\n', true});
            break;
        case 'r':
            tokens.push_back({'\r', true});
            break;
        case 't':
            tokens.push_back({'\t', true});
            break;
        case 'x': {
            const int hi = i + 1 < line.size() ? HexDigit(line[i + 1]) : -1;
            const int lo = i + 2 < line.size() ? HexDigit(line[i + 2]) : -1;
            if (hi < 0 || lo < 0) {
                throw PreferenceFormatError(number, "\\x needs two hexadecimal digits");
            }
            const char byte = static_cast<char>(hi * 16 + lo);
            if (byte == '\0') {
                throw PreferenceFormatError(number, "NUL byte");
            }
            tokens.push_back({byte, true});
            i += 2;
            break;
        }
        default:
            throw PreferenceFormatError(number, std::string("unknown escape \\") + e);
        }
    }
    return tokens;
}

// The text of tokens [first, last) without the unescaped blanks at either end.
std::string Trimmed(const std::vector<Token>& tokens, std::size_t first, std::size_t last) {
    while (first < last && IsBlank(tokens[first])) {
        ++first;
    }
    while (last > first && IsBlank(tokens[last - 1])) {
        --last;
    }
    std::string text;
    text.reserve(last - first);
    for (std::size_t i = first; i < last; ++i) {
        text.push_back(tokens[i].c);
    }
    return text;
}

void AppendEscaped(std::string& out, std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        switch (c) {
        case '\\':
        case '=':
        case '[':
        case ']':
        case '#':
            out.push_back('\\');
            out.push_back(static_cast<char>(c));
            continue;
        case '\n':
            out += "\\n";
            continue;
        case '\r':
            out += "\\r";
            continue;
        case '\t':
            out += "\\t";
            continue;
        case ' ':
            if (i == 0 || i + 1 == text.size()) {
                out += "\\ ";
            } else {
                out.push_back(' ');
            }
            continue;
        default:
            break;
        }
        if (c < 0x20 || c == 0x7F) {
            static constexpr char kHex[] = "0123456789ABCDEF";
            out += "\\x";
            out.push_back(kHex[c >> 4]);
            out.push_back(kHex[c & 0xF]);
        } else {
            out.push_back(static_cast<char>(c));
        }
    }
}

} // namespace

PreferenceData ParsePreferenceText(std::string_view text) {
    PreferenceData data;
    std::map<std::string, std::string>* section = nullptr;
    std::size_t number = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        ++number;
        const std::vector<Token> tokens = Tokenize(text.substr(start, end - start), number);
        start = end + 1;

        std::size_t first = 0;
        std::size_t last = tokens.size();
        while (first < last && IsBlank(tokens[first])) {
            ++first;
        }
        while (last > first && IsBlank(tokens[last - 1])) {
            --last;
        }
        if (first == last || (tokens[first].c == '#' && !tokens[first].escaped)) {
            continue;
        }
        if (tokens[first].c == '[' && !tokens[first].escaped) {
            if (last - first < 2 || tokens[last - 1].c != ']' || tokens[last - 1].escaped) {
                throw PreferenceFormatError(number, "a section line must end with ']'");
            }
            section = &data[Trimmed(tokens, first + 1, last - 1)];
            continue;
        }
        if (section == nullptr) {
            throw PreferenceFormatError(number, "an entry before the first section");
        }
        std::optional<std::size_t> equals;
        for (std::size_t i = first; i < last; ++i) {
            if (tokens[i].c == '=' && !tokens[i].escaped) {
                equals = i;
                break;
            }
        }
        if (!equals) {
            throw PreferenceFormatError(number, "an entry without '='");
        }
        std::string key = Trimmed(tokens, first, *equals);
        std::string value = Trimmed(tokens, *equals + 1, last);
        if (!section->emplace(std::move(key), std::move(value)).second) {
            throw PreferenceFormatError(number, "a key given twice in its section");
        }
    }
    return data;
}

std::string FormatPreferenceText(const PreferenceData& data) {
    std::string out(kHeader);
    for (const auto& [name, entries] : data) {
        out.push_back('[');
        AppendEscaped(out, name);
        out += "]\n";
        for (const auto& [key, value] : entries) {
            AppendEscaped(out, key);
            out += " = ";
            AppendEscaped(out, value);
            out.push_back('\n');
        }
    }
    return out;
}

} // namespace qzhost::prefs
