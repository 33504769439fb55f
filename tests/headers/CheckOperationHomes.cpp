// Checks that every host operation that an SDK header declares is defined in the runtime
// source file named after that header: the operations of "X.h" in "X.cpp".
//
// The declarations come from the headers: what a header marks QZ_HOST_API (a class, with
// every member of it that is defined out of line; a free function; a variable), named with
// its namespaces. The definitions come from the runtime's object files: the strong symbols
// that each one defines (the object of "X.cpp" is "X.cpp.o"). Inline and template code has
// no strong symbol and so no home to check.
//
// The check fails when
//   - an operation is defined in a file of another name and the list of exceptions does
//     not name it there;
//   - a declared function or variable is defined in no runtime file;
//   - the runtime exports a symbol, outside its own qzhost namespace, that no SDK header
//     declares (a declaration that this reading of the headers missed, or an export that
//     should not be);
//   - an exception of the list is no longer needed, or gives no reason.
//
// Usage: check_operation_homes INCLUDE_DIR OBJECT_LIST EXCEPTIONS READELF
//   INCLUDE_DIR  the SDK's include folder
//   OBJECT_LIST  a file that names the runtime's object files, separated by ';'
//   EXCEPTIONS   the operations allowed in a file of another name, one a line:
//                "NAME FILE REASON", "#" starts a comment
//   READELF      the readelf program, which lists an object's symbols
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kExportMacro = "QZ_HOST_API";

struct Declaration {
    enum class Kind { Class, Function, Variable };
    Kind kind;
    std::string name;   // with its namespaces and enclosing classes
    std::string header; // relative to the include folder
};

std::string KindText(Declaration::Kind kind) {
    switch (kind) {
    case Declaration::Kind::Class:
        return "class";
    case Declaration::Kind::Function:
        return "function";
    case Declaration::Kind::Variable:
        return "variable";
    }
    return "?";
}

struct Problems {
    std::vector<std::string> lines;
    void Add(std::string line) { lines.push_back(std::move(line)); }
};

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + path.string());
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// ---- Reading the headers ----------------------------------------------------------------

// The header's code without comments, preprocessor lines and the text of literals (an
// empty literal stays in their place).
std::string StripNonCode(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    bool line_start = true;
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        if (line_start && c == '#') {
            // A preprocessor line, with its continuations.
            while (i < text.size() && text[i] != '\n') {
                if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == '\n') {
                    ++i;
                }
                ++i;
            }
            continue;
        }
        if (c == '/' && i + 1 < text.size() && text[i + 1] == '/') {
            while (i < text.size() && text[i] != '\n') {
                ++i;
            }
            continue;
        }
        if (c == '/' && i + 1 < text.size() && text[i + 1] == '*') {
            const std::size_t end = text.find("*/", i + 2);
            i = end == std::string::npos ? text.size() : end + 2;
            out += ' ';
            continue;
        }
        if (c == '"' || c == '\'') {
            std::size_t j = i + 1;
            while (j < text.size() && text[j] != c) {
                j += text[j] == '\\' ? 2 : 1;
            }
            out += c;
            out += c;
            i = j + 1;
            line_start = false;
            continue;
        }
        if (c == '\n') {
            line_start = true;
        } else if (c != ' ' && c != '\t' && c != '\r') {
            line_start = false;
        }
        out += c;
        ++i;
    }
    return out;
}

bool IsIdentifierStart(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsIdentifierChar(char c) {
    return IsIdentifierStart(c) || (c >= '0' && c <= '9');
}

bool IsIdentifier(const std::string& token) {
    return !token.empty() && IsIdentifierStart(token[0]);
}

// Identifiers and numbers, "::", and every other character on its own.
std::vector<std::string> Tokenize(const std::string& code) {
    std::vector<std::string> tokens;
    for (std::size_t i = 0; i < code.size();) {
        const char c = code[i];
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            ++i;
        } else if (IsIdentifierChar(c)) {
            std::size_t j = i;
            while (j < code.size() && IsIdentifierChar(code[j])) {
                ++j;
            }
            tokens.push_back(code.substr(i, j - i));
            i = j;
        } else if (c == ':' && i + 1 < code.size() && code[i + 1] == ':') {
            tokens.emplace_back("::");
            i += 2;
        } else {
            tokens.emplace_back(1, c);
            ++i;
        }
    }
    return tokens;
}

std::string Qualify(const std::string& scope, const std::string& name) {
    return scope.empty() ? name : scope + "::" + name;
}

bool Contains(const std::vector<std::string>& tokens, std::string_view token) {
    return std::find(tokens.begin(), tokens.end(), token) != tokens.end();
}

// The statement without a leading "template <...>" and without attributes ("[[...]]").
std::vector<std::string> WithoutTemplateAndAttributes(const std::vector<std::string>& statement) {
    std::vector<std::string> out;
    std::size_t i = 0;
    if (!statement.empty() && statement[0] == "template" && statement.size() > 1 &&
        statement[1] == "<") {
        int depth = 0;
        for (i = 1; i < statement.size(); ++i) {
            if (statement[i] == "<") {
                ++depth;
            } else if (statement[i] == ">" && --depth == 0) {
                ++i;
                break;
            }
        }
    }
    for (; i < statement.size(); ++i) {
        if (statement[i] == "[" && i + 1 < statement.size() && statement[i + 1] == "[") {
            while (i + 1 < statement.size() && !(statement[i] == "]" && statement[i + 1] == "]")) {
                ++i;
            }
            ++i;
            continue;
        }
        out.push_back(statement[i]);
    }
    return out;
}

// When `statement` (what comes before a "{" or ";") begins a class, its name.
std::optional<std::string> ClassName(const std::vector<std::string>& statement) {
    const std::vector<std::string> tokens = WithoutTemplateAndAttributes(statement);
    if (tokens.empty() || (tokens[0] != "class" && tokens[0] != "struct" && tokens[0] != "union")) {
        return std::nullopt;
    }
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (tokens[i] != kExportMacro && IsIdentifier(tokens[i])) {
            return tokens[i];
        }
    }
    return std::nullopt;
}

class HeaderReader {
public:
    HeaderReader(std::string header, Problems& problems)
        : header_(std::move(header)), problems_(problems) {}

    std::vector<Declaration> Read(const std::string& text) {
        const std::vector<std::string> tokens = Tokenize(StripNonCode(text));
        scopes_ = {Scope{Scope::Kind::Namespace, ""}};
        std::vector<std::string> statement;
        int parentheses = 0;
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            const std::string& token = tokens[i];
            if (parentheses > 0) {
                // Inside a parameter list, braces are default arguments.
                parentheses += token == "(" ? 1 : token == ")" ? -1 : 0;
                statement.push_back(token);
                continue;
            }
            if (token == "(") {
                ++parentheses;
                statement.push_back(token);
            } else if (token == "namespace" && statement.empty()) {
                std::string name;
                std::size_t j = i + 1;
                for (;
                     j < tokens.size() && tokens[j] != "{" && tokens[j] != ";" && tokens[j] != "=";
                     ++j) {
                    name += tokens[j];
                }
                if (j < tokens.size() && tokens[j] == "{") {
                    scopes_.push_back(
                        Scope{Scope::Kind::Namespace, Qualify(scopes_.back().name, name)});
                    i = j;
                } else {
                    statement.push_back(token);
                }
            } else if (token == "{") {
                Open(statement);
                statement.clear();
            } else if (token == "}") {
                if (scopes_.size() == 1) {
                    problems_.Add(header_ + ": a '}' closes nothing; the reading of the header "
                                            "has lost its way");
                    return {};
                }
                scopes_.pop_back();
                statement.clear();
            } else if (token == ";") {
                End(statement);
                statement.clear();
            } else if (token == ":" && scopes_.back().kind == Scope::Kind::Class &&
                       statement.size() == 1 &&
                       (statement[0] == "public" || statement[0] == "protected" ||
                        statement[0] == "private")) {
                statement.clear();
            } else {
                statement.push_back(token);
            }
        }
        if (scopes_.size() != 1) {
            problems_.Add(header_ + ": a '{' is never closed; the reading of the header has "
                                    "lost its way");
        }
        return declarations_;
    }

private:
    struct Scope {
        enum class Kind { Namespace, Class, Other };
        Kind kind;
        std::string name;
    };

    void Open(const std::vector<std::string>& statement) {
        const Scope& outer = scopes_.back();
        if (outer.kind != Scope::Kind::Other) {
            if (const auto name = ClassName(statement)) {
                const std::string qualified = Qualify(outer.name, *name);
                if (Contains(statement, kExportMacro)) {
                    Add(Declaration::Kind::Class, qualified);
                }
                scopes_.push_back(Scope{Scope::Kind::Class, qualified});
                return;
            }
            if (statement.size() == 1 && statement[0] == "extern") {
                // extern "C" { ... }: the declarations inside belong to the outer scope.
                scopes_.push_back(Scope{Scope::Kind::Namespace, outer.name});
                return;
            }
        }
        // A function body, an enumeration, an initialiser: nothing in it is declared for
        // the runtime to define.
        scopes_.push_back(Scope{Scope::Kind::Other, outer.name});
    }

    void End(const std::vector<std::string>& statement) {
        const Scope& scope = scopes_.back();
        if (scope.kind == Scope::Kind::Other || !Contains(statement, kExportMacro)) {
            return;
        }
        if (scope.kind == Scope::Kind::Class) {
            // A member marked on its own: its class has operations in the runtime.
            Add(Declaration::Kind::Class, scope.name);
            return;
        }
        const std::vector<std::string> tokens = WithoutTemplateAndAttributes(statement);
        if (ClassName(tokens)) {
            return; // a forward declaration
        }
        const auto paren = std::find(tokens.begin(), tokens.end(), "(");
        if (paren != tokens.end()) {
            if (paren + 1 != tokens.end() && paren[1] == "*" && paren + 2 != tokens.end() &&
                IsIdentifier(paren[2])) {
                Add(Declaration::Kind::Variable, Qualify(scope.name, paren[2]));
                return;
            }
            if (paren == tokens.begin() || !IsIdentifier(paren[-1])) {
                Unreadable(tokens);
                return;
            }
            Add(Declaration::Kind::Function, Qualify(scope.name, paren[-1]));
            return;
        }
        // A variable: the last name before an initialiser or an array bound.
        std::string name;
        for (const std::string& token : tokens) {
            if (token == "=" || token == "[" || token == "{") {
                break;
            }
            if (IsIdentifier(token)) {
                name = token;
            }
        }
        if (name.empty() || name == kExportMacro) {
            Unreadable(tokens);
            return;
        }
        Add(Declaration::Kind::Variable, Qualify(scope.name, name));
    }

    void Unreadable(const std::vector<std::string>& tokens) {
        std::string text;
        for (const std::string& token : tokens) {
            text += token + " ";
        }
        problems_.Add(header_ + ": cannot tell what this declaration declares: " + text);
    }

    void Add(Declaration::Kind kind, const std::string& name) {
        for (const Declaration& known : declarations_) {
            if (known.name == name) {
                return; // an overload, or a class with several marked members
            }
        }
        declarations_.push_back(Declaration{kind, name, header_});
    }

    std::string header_;
    Problems& problems_;
    std::vector<Scope> scopes_;
    std::vector<Declaration> declarations_;
};

// ---- Reading the objects ----------------------------------------------------------------

struct Symbol {
    std::string name; // demangled, without "vtable for " and the like
    bool exported;    // default visibility
    std::string object;
};

std::string ShellQuoted(const std::string& text) {
    std::string out = "'";
    for (const char c : text) {
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return out + "'";
}

// "vtable for X", "non-virtual thunk to X::f()" and the like belong to X.
std::string WithoutGeneratedPrefix(std::string name) {
    static const std::vector<std::string> prefixes = {"vtable for ",
                                                      "typeinfo for ",
                                                      "typeinfo name for ",
                                                      "VTT for ",
                                                      "guard variable for ",
                                                      "TLS init function for ",
                                                      "TLS wrapper function for ",
                                                      "non-virtual thunk to ",
                                                      "virtual thunk to ",
                                                      "covariant return thunk to ",
                                                      "construction vtable for ",
                                                      "transaction clone for "};
    bool stripped = true;
    while (stripped) {
        stripped = false;
        for (const std::string& prefix : prefixes) {
            if (name.starts_with(prefix)) {
                name.erase(0, prefix.size());
                stripped = true;
            }
        }
    }
    return name;
}

// The strong symbols that `object` defines.
std::vector<Symbol> DefinedSymbols(const std::string& readelf, const std::string& object) {
    const std::string command = ShellQuoted(readelf) + " -sW -C " + ShellQuoted(object);
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot run " + command);
    }
    std::string listing;
    char buffer[4096];
    while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, pipe)) {
        listing.append(buffer, got);
    }
    if (pclose(pipe) != 0) {
        throw std::runtime_error(command + " failed");
    }
    //    Num:    Value          Size Type    Bind   Vis      Ndx Name
    static const std::regex row(
        R"(^\s*\d+:\s+[0-9a-fA-F]+\s+\S+\s+(\S+)\s+(\S+)\s+(\S+)\s+(\S+)\s(.*)$)");
    std::vector<Symbol> symbols;
    std::istringstream lines(listing);
    std::string line;
    while (std::getline(lines, line)) {
        std::smatch match;
        if (!std::regex_match(line, match, row)) {
            continue;
        }
        const std::string type = match[1];
        const std::string bind = match[2];
        const std::string visibility = match[3];
        const std::string section = match[4];
        if (bind != "GLOBAL" || section == "UND" || section == "COM" ||
            (type != "FUNC" && type != "OBJECT" && type != "TLS")) {
            continue;
        }
        symbols.push_back(
            Symbol{WithoutGeneratedPrefix(match[5]), visibility == "DEFAULT", object});
    }
    return symbols;
}

// Whether the symbol `name` is `listed` or a part of it: a function with its parameters
// (or an ABI tag, or template arguments), a variable, a class with its members.
bool Names(const std::string& name, const std::string& listed) {
    if (!name.starts_with(listed)) {
        return false;
    }
    const std::string_view rest = std::string_view(name).substr(listed.size());
    return rest.empty() || rest.starts_with("::") || rest[0] == '(' || rest[0] == '[' ||
           rest[0] == '<';
}

// Whether the symbol `name` belongs to `declared`: a class's members, a function's
// overloads, a variable.
bool Belongs(const std::string& name, const std::string& declared, Declaration::Kind kind) {
    if (!Names(name, declared)) {
        return false;
    }
    const bool member = name.size() > declared.size() && name[declared.size()] == ':';
    return member == (kind == Declaration::Kind::Class) || name.size() == declared.size();
}

// The source file of an object: ".../qzruntime.dir/src/core/X.cpp.o" gives "src/core/X.cpp".
std::string SourceOf(const std::string& object) {
    std::string source = object;
    if (source.ends_with(".o")) {
        source.resize(source.size() - 2);
    }
    if (const std::size_t dir = source.rfind(".dir/"); dir != std::string::npos) {
        source.erase(0, dir + 5);
    }
    while (source.starts_with("./")) {
        source.erase(0, 2);
    }
    return source;
}

std::string StemOf(const std::string& path) {
    return fs::path(path).stem().string();
}

// ---- The exceptions ---------------------------------------------------------------------

struct Exception {
    std::string name;
    std::string file;
    std::string reason;
    int line;
    bool used = false;
};

std::vector<Exception> ReadExceptions(const fs::path& path, Problems& problems) {
    std::vector<Exception> exceptions;
    std::istringstream lines(ReadFile(path));
    std::string line;
    int number = 0;
    while (std::getline(lines, line)) {
        ++number;
        if (const std::size_t hash = line.find('#'); hash != std::string::npos) {
            line.resize(hash);
        }
        std::istringstream words(line);
        Exception exception{{}, {}, {}, number};
        if (!(words >> exception.name)) {
            continue;
        }
        words >> exception.file;
        std::getline(words >> std::ws, exception.reason);
        if (exception.file.empty() || exception.reason.empty()) {
            problems.Add(path.filename().string() + ":" + std::to_string(number) +
                         ": an exception names the operation, its file and why it lives there");
            continue;
        }
        exceptions.push_back(exception);
    }
    return exceptions;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::cerr << "usage: " << argv[0] << " INCLUDE_DIR OBJECT_LIST EXCEPTIONS READELF\n";
        return 2;
    }
    const fs::path include_dir = argv[1];
    const std::string readelf = argv[4];
    Problems problems;
    try {
        // What the headers declare.
        std::vector<fs::path> headers;
        for (const auto& entry : fs::recursive_directory_iterator(include_dir)) {
            if (entry.is_regular_file() && entry.path().extension() == ".h") {
                headers.push_back(entry.path());
            }
        }
        std::sort(headers.begin(), headers.end());
        std::vector<Declaration> declarations;
        std::map<std::string, std::string> declared_in;
        for (const fs::path& header : headers) {
            const std::string relative = fs::relative(header, include_dir).generic_string();
            HeaderReader reader(relative, problems);
            for (Declaration& declaration : reader.Read(ReadFile(header))) {
                const auto [known, inserted] =
                    declared_in.emplace(declaration.name, declaration.header);
                if (!inserted) {
                    problems.Add(declaration.name + " is declared in both " + known->second +
                                 " and " + declaration.header);
                    continue;
                }
                declarations.push_back(std::move(declaration));
            }
        }

        // What the objects define.
        std::vector<std::string> objects;
        {
            std::string list = ReadFile(argv[2]);
            std::istringstream items(list);
            std::string item;
            while (std::getline(items, item, ';')) {
                while (!item.empty() && (item.back() == '\n' || item.back() == '\r')) {
                    item.pop_back();
                }
                if (!item.empty()) {
                    objects.push_back(item);
                }
            }
        }
        std::vector<Symbol> symbols;
        for (const std::string& object : objects) {
            for (Symbol& symbol : DefinedSymbols(readelf, object)) {
                symbols.push_back(std::move(symbol));
            }
        }
        if (declarations.empty() || objects.empty() || symbols.empty()) {
            std::cerr << "nothing to check: " << declarations.size() << " declarations, "
                      << objects.size() << " objects, " << symbols.size() << " symbols\n";
            return 1;
        }

        std::vector<Exception> exceptions = ReadExceptions(argv[3], problems);

        // Each symbol's declaration and the file it is defined in.
        std::set<std::string> defined;
        std::set<std::string> reported;
        std::size_t checked = 0;
        std::size_t listed = 0;
        for (const Symbol& symbol : symbols) {
            const Declaration* owner = nullptr;
            for (const Declaration& declaration : declarations) {
                if (Belongs(symbol.name, declaration.name, declaration.kind) &&
                    (owner == nullptr || declaration.name.size() > owner->name.size())) {
                    owner = &declaration;
                }
            }
            const std::string source = SourceOf(symbol.object);
            if (owner == nullptr) {
                // Names in the implementation's reserved space ("__", such as the
                // AddressSanitizer's "__odr_asan." markers) belong to the toolchain.
                if (symbol.exported && !symbol.name.starts_with("qzhost::") &&
                    !symbol.name.starts_with("__")) {
                    problems.Add(source + " exports " + symbol.name +
                                 ", which no SDK header declares with " +
                                 std::string(kExportMacro));
                }
                continue;
            }
            ++checked;
            defined.insert(owner->name);
            const std::string home = StemOf(owner->header) + ".cpp";
            const std::string file = fs::path(source).filename().string();
            if (file == home) {
                continue;
            }
            bool allowed = false;
            for (Exception& exception : exceptions) {
                if (exception.file == file && Names(symbol.name, exception.name)) {
                    exception.used = true;
                    allowed = true;
                }
            }
            if (allowed) {
                ++listed;
            } else if (reported.insert(symbol.name + "@" + source).second) {
                problems.Add(symbol.name + " (" + KindText(owner->kind) + " " + owner->name +
                             ", declared in " + owner->header + ") is defined in " + source +
                             ", not in a file named " + home);
            }
        }
        for (const Declaration& declaration : declarations) {
            if (declaration.kind != Declaration::Kind::Class &&
                !defined.contains(declaration.name)) {
                problems.Add(KindText(declaration.kind) + " " + declaration.name +
                             ", declared in " + declaration.header +
                             ", is defined in no runtime file");
            }
        }
        for (const Exception& exception : exceptions) {
            if (!exception.used) {
                problems.Add(fs::path(argv[3]).filename().string() + ":" +
                             std::to_string(exception.line) + ": " + exception.name + " in " +
                             exception.file +
                             " matches no operation defined outside its home; remove it");
            }
        }
        if (problems.lines.empty()) {
            std::cout << checked << " definitions of " << declarations.size()
                      << " declared operations in " << objects.size()
                      << " runtime objects: each in the file named after its header";
            if (listed > 0) {
                std::cout << ", or in the file that an exception names (" << listed << ")";
            }
            std::cout << "\n";
            return 0;
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
    for (const std::string& line : problems.lines) {
        std::cerr << line << "\n";
    }
    std::cerr << problems.lines.size() << " problem(s)\n";
    return 1;
}
