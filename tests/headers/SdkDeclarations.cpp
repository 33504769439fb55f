#include "SdkDeclarations.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace sdkcheck {

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

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + path.string());
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

namespace {

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

// Tokens joined back into a name: "std::runtime_error", "Base<unsigned int>".
std::string JoinName(const std::vector<std::string>& tokens, std::size_t begin, std::size_t end) {
    std::string text;
    for (std::size_t i = begin; i < end; ++i) {
        if (!text.empty() && IsIdentifierChar(text.back()) && IsIdentifier(tokens[i])) {
            text += ' ';
        }
        text += tokens[i];
    }
    return text;
}

// Tokens joined with spaces, to compare declarations.
std::string JoinText(const std::vector<std::string>& tokens, std::size_t begin) {
    std::string text;
    for (std::size_t i = begin; i < tokens.size(); ++i) {
        text += (text.empty() ? "" : " ") + tokens[i];
    }
    return text;
}

bool EndsWith(const std::vector<std::string>& tokens, std::string_view last,
              std::string_view before) {
    return tokens.size() >= 2 && tokens.back() == last && tokens[tokens.size() - 2] == before;
}

// The base classes named in a class head ("class X : public A, private ns::B<int>").
std::vector<std::string> BaseNames(const std::vector<std::string>& statement) {
    const std::vector<std::string> tokens = WithoutTemplateAndAttributes(statement);
    const auto colon = std::find(tokens.begin(), tokens.end(), ":");
    std::vector<std::string> bases;
    if (colon == tokens.end()) {
        return bases;
    }
    std::vector<std::string> part;
    int depth = 0;
    const auto finish = [&] {
        if (!part.empty()) {
            bases.push_back(JoinName(part, 0, part.size()));
        }
        part.clear();
    };
    for (auto it = colon + 1; it != tokens.end(); ++it) {
        const std::string& token = *it;
        depth += token == "<" ? 1 : token == ">" ? -1 : 0;
        if (token == "," && depth == 0) {
            finish();
        } else if (token != "public" && token != "protected" && token != "private" &&
                   token != "virtual") {
            part.push_back(token);
        }
    }
    finish();
    return bases;
}

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// The "(" that opens the parameter list of a function's declaration (the one of
// "operator()" is part of the name), or kNone.
std::size_t ParameterList(const std::vector<std::string>& tokens) {
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i] != "(") {
            continue;
        }
        if (i > 0 && tokens[i - 1] == "operator" && i + 1 < tokens.size() && tokens[i + 1] == ")") {
            ++i;
            continue;
        }
        return i;
    }
    return kNone;
}

// The ")" that closes the "(" at `open`.
std::size_t Closing(const std::vector<std::string>& tokens, std::size_t open) {
    int depth = 0;
    for (std::size_t i = open; i < tokens.size(); ++i) {
        depth += tokens[i] == "(" ? 1 : tokens[i] == ")" ? -1 : 0;
        if (depth == 0) {
            return i;
        }
    }
    return tokens.size();
}

// Where the name of a function whose parameter list opens at `paren` begins ("operator",
// "~" or the name's identifier), or kNone when the tokens before it name nothing.
std::size_t NameStart(const std::vector<std::string>& tokens, std::size_t paren) {
    const auto op =
        std::find(tokens.begin(), tokens.begin() + static_cast<long>(paren), "operator");
    if (op != tokens.begin() + static_cast<long>(paren)) {
        return static_cast<std::size_t>(op - tokens.begin());
    }
    if (paren == 0 || !IsIdentifier(tokens[paren - 1])) {
        return kNone;
    }
    return paren >= 2 && tokens[paren - 2] == "~" ? paren - 2 : paren - 1;
}

// The name of the function whose parameter list opens at `paren`, with the qualifiers
// written before it ("X::f", "~X", "operator==", "operator bool"), or "" when there is none.
std::string FunctionName(const std::vector<std::string>& tokens, std::size_t paren) {
    std::size_t start = NameStart(tokens, paren);
    if (start == kNone) {
        return "";
    }
    while (start >= 2 && tokens[start - 1] == "::" && IsIdentifier(tokens[start - 2])) {
        start -= 2;
    }
    return JoinName(tokens, start, paren);
}

// The last name before an initialiser or an array bound: a variable's.
std::string VariableName(const std::vector<std::string>& tokens) {
    std::string name;
    for (const std::string& token : tokens) {
        if (token == "=" || token == "[" || token == "{") {
            break;
        }
        if (IsIdentifier(token) && token != kExportMacro) {
            name = token;
        }
    }
    return name;
}

// What one header declares.
struct HeaderDeclarations {
    std::vector<Declaration> declarations;
    std::vector<ClassDeclaration> classes;
    /// Functions and members that the header defines outside a class, by qualified name.
    std::set<std::string> definitions;
};

class HeaderReader {
public:
    HeaderReader(std::string header, Problems& problems)
        : header_(std::move(header)), problems_(problems) {}

    HeaderDeclarations Read(const std::string& text) {
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
        return std::move(result_);
    }

private:
    struct Scope {
        enum class Kind { Namespace, Class, Other };
        Kind kind;
        std::string name;
        std::size_t classIndex = 0; // Class: its entry in result_.classes
    };

    void Open(const std::vector<std::string>& statement) {
        const Scope outer = scopes_.back();
        if (outer.kind != Scope::Kind::Other) {
            if (const auto name = ClassName(statement)) {
                const std::string qualified = Qualify(outer.name, *name);
                const bool marked = Contains(statement, kExportMacro);
                if (marked) {
                    Add(Declaration::Kind::Class, qualified);
                }
                ClassDeclaration cls;
                cls.name = qualified;
                cls.scope = outer.name;
                cls.header = header_;
                cls.marked = marked;
                cls.bases = BaseNames(statement);
                result_.classes.push_back(std::move(cls));
                scopes_.push_back(Scope{Scope::Kind::Class, qualified, result_.classes.size() - 1});
                return;
            }
            if (!statement.empty() && statement[0] == "extern" &&
                std::all_of(statement.begin() + 1, statement.end(),
                            [](const std::string& token) { return token == "\""; })) {
                // extern "C" { ... }: the declarations inside belong to the outer scope.
                scopes_.push_back(Scope{Scope::Kind::Namespace, outer.name});
                return;
            }
            const std::vector<std::string> tokens = WithoutTemplateAndAttributes(statement);
            if (outer.kind == Scope::Kind::Class) {
                NoteMemberDefinition(result_.classes[outer.classIndex], tokens);
            } else {
                NoteDefinition(outer.name, tokens);
            }
        }
        // A function body, an enumeration, an initialiser: nothing in it is declared for
        // the runtime to define.
        scopes_.push_back(Scope{Scope::Kind::Other, outer.name});
    }

    void End(const std::vector<std::string>& statement) {
        const Scope& scope = scopes_.back();
        if (scope.kind == Scope::Kind::Other) {
            return;
        }
        if (scope.kind == Scope::Kind::Class) {
            NoteMember(result_.classes[scope.classIndex], statement);
            if (Contains(statement, kExportMacro)) {
                // A member marked on its own: its class has operations in the runtime.
                Add(Declaration::Kind::Class, scope.name);
            }
            return;
        }
        const std::vector<std::string> tokens = WithoutTemplateAndAttributes(statement);
        if (!Contains(statement, kExportMacro)) {
            // "X::X() = default;" after the class defines X::X in the header.
            if (EndsWith(tokens, "default", "=") || EndsWith(tokens, "delete", "=")) {
                NoteDefinition(scope.name, tokens);
            }
            return;
        }
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
            Add(Declaration::Kind::Function, Qualify(scope.name, paren[-1]),
                JoinText(tokens, static_cast<std::size_t>(paren - tokens.begin())));
            return;
        }
        // A variable: the last name before an initialiser or an array bound.
        const std::string name = VariableName(tokens);
        if (name.empty()) {
            Unreadable(tokens);
            return;
        }
        Add(Declaration::Kind::Variable, Qualify(scope.name, name));
    }

    // A function that the header defines outside a class (with a body, or defaulted or
    // deleted): the runtime has nothing to define for it.
    void NoteDefinition(const std::string& scope, const std::vector<std::string>& tokens) {
        const std::size_t paren = ParameterList(tokens);
        if (paren == kNone) {
            return;
        }
        const std::string name = FunctionName(tokens, paren);
        if (!name.empty()) {
            result_.definitions.insert(Qualify(scope, name));
        }
    }

    // A member function defined in the class body.
    void NoteMemberDefinition(ClassDeclaration& cls, const std::vector<std::string>& tokens) {
        const std::size_t paren = ParameterList(tokens);
        if (paren == kNone) {
            return; // a data member with a braced initialiser
        }
        const std::size_t start = NameStart(tokens, paren);
        if (start == kNone) {
            return;
        }
        const std::string name = JoinName(tokens, start, paren);
        const std::vector<std::string> trailing(
            tokens.begin() + static_cast<long>(std::min(Closing(tokens, paren), tokens.size())),
            tokens.end());
        NoteVirtual(cls, name, tokens, trailing);
        cls.functionNames.insert(name);
    }

    static void NoteVirtual(ClassDeclaration& cls, const std::string& name,
                            const std::vector<std::string>& tokens,
                            const std::vector<std::string>& trailing) {
        if (Contains(tokens, "virtual") || Contains(trailing, "override") ||
            Contains(trailing, "final")) {
            cls.declaresVirtual = true;
            if (name.starts_with("~")) {
                cls.declaresVirtualDestructor = true;
            }
        }
    }

    // A member declaration (what comes before a ";" in a class).
    void NoteMember(ClassDeclaration& cls, const std::vector<std::string>& statement) {
        if (statement.empty() || statement[0] == "template") {
            return; // a member template: nothing of it is defined before it is used
        }
        const std::vector<std::string> tokens = WithoutTemplateAndAttributes(statement);
        if (tokens.empty() || tokens[0] == "using" || tokens[0] == "typedef" ||
            tokens[0] == "friend" || tokens[0] == "static_assert" || tokens[0] == "enum" ||
            ClassName(tokens)) {
            return;
        }
        const bool marked = Contains(tokens, kExportMacro);
        const bool matters = cls.marked || marked;
        const std::size_t paren = ParameterList(tokens);
        // A data member: no parameter list, an initialiser before the first "(" (one that
        // is not part of an operator's name), or a pointer to a function.
        const auto position = [&](std::string_view token) {
            const auto it = std::find(tokens.begin(), tokens.end(), token);
            return static_cast<std::size_t>(it - tokens.begin());
        };
        const std::size_t equals = position("=");
        const bool isData =
            paren == kNone || (equals < paren && equals < position("operator")) ||
            (paren + 1 < tokens.size() && (tokens[paren + 1] == "*" || tokens[paren + 1] == "&"));
        if (isData) {
            // A static data member that is not defined in the class is the runtime's.
            if (Contains(tokens, "static") && !Contains(tokens, "constexpr") &&
                !Contains(tokens, "inline")) {
                const std::string name = VariableName(tokens);
                if (name.empty()) {
                    if (matters) {
                        Unreadable(tokens);
                    }
                    return;
                }
                cls.members.push_back(MemberDeclaration{MemberDeclaration::Kind::StaticVariable,
                                                        Qualify(cls.name, name), "", false,
                                                        marked});
            }
            return;
        }
        const std::size_t start = NameStart(tokens, paren);
        if (start == kNone) {
            if (matters) {
                Unreadable(tokens);
            }
            return;
        }
        const std::string name = JoinName(tokens, start, paren);
        const std::size_t close = Closing(tokens, paren);
        const std::vector<std::string> trailing(
            tokens.begin() + static_cast<long>(std::min(close, tokens.size())), tokens.end());
        NoteVirtual(cls, name, tokens, trailing);
        if (EndsWith(trailing, "0", "=")) {
            cls.pureVirtuals.insert(name);
            return;
        }
        cls.functionNames.insert(name);
        if (EndsWith(trailing, "default", "=") || EndsWith(trailing, "delete", "=") ||
            Contains(tokens, "inline")) {
            return; // defined in the header
        }
        const std::string unqualified = cls.name.substr(cls.name.rfind(':') + 1);
        const MemberDeclaration::Kind kind =
            name.starts_with("~") ? MemberDeclaration::Kind::Destructor
            : name == unqualified ? MemberDeclaration::Kind::Constructor
                                  : MemberDeclaration::Kind::Function;
        const bool isVirtual = Contains(tokens, "virtual") || Contains(trailing, "override") ||
                               Contains(trailing, "final");
        cls.members.push_back(MemberDeclaration{kind, Qualify(cls.name, name),
                                                JoinText(tokens, paren), isVirtual, marked});
    }

    void Unreadable(const std::vector<std::string>& tokens) {
        std::string text;
        for (const std::string& token : tokens) {
            text += token + " ";
        }
        problems_.Add(header_ + ": cannot tell what this declaration declares: " + text);
    }

    void Add(Declaration::Kind kind, const std::string& name, const std::string& overload = "") {
        for (Declaration& known : result_.declarations) {
            if (known.name == name) {
                // An overload, or a class with several marked members.
                if (kind == Declaration::Kind::Function) {
                    known.overloads.insert(overload);
                }
                return;
            }
        }
        Declaration declaration{kind, name, header_};
        if (kind == Declaration::Kind::Function) {
            declaration.overloads.insert(overload);
        }
        result_.declarations.push_back(std::move(declaration));
    }

    std::string header_;
    Problems& problems_;
    std::vector<Scope> scopes_;
    HeaderDeclarations result_;
};

} // namespace

SdkDeclarations ReadSdkDeclarations(const fs::path& includeDir, Problems& problems) {
    std::vector<fs::path> headers;
    for (const auto& entry : fs::recursive_directory_iterator(includeDir)) {
        if (entry.is_regular_file() && entry.path().extension() == ".h") {
            headers.push_back(entry.path());
        }
    }
    std::sort(headers.begin(), headers.end());

    SdkDeclarations sdk;
    std::set<std::string> definitions;
    std::map<std::string, std::string> declaredIn;
    for (const fs::path& header : headers) {
        const std::string relative = fs::relative(header, includeDir).generic_string();
        HeaderDeclarations read = HeaderReader(relative, problems).Read(ReadFile(header));
        for (Declaration& declaration : read.declarations) {
            const auto [known, inserted] = declaredIn.emplace(declaration.name, declaration.header);
            if (!inserted) {
                problems.Add(declaration.name + " is declared in both " + known->second + " and " +
                             declaration.header);
                continue;
            }
            sdk.declarations.push_back(std::move(declaration));
        }
        for (ClassDeclaration& cls : read.classes) {
            sdk.classes.push_back(std::move(cls));
        }
        definitions.merge(read.definitions);
    }

    // What a header defines outside its class or declaration is no operation of the runtime.
    for (Declaration& declaration : sdk.declarations) {
        declaration.definedInHeader = declaration.kind == Declaration::Kind::Function &&
                                      definitions.contains(declaration.name);
    }
    for (ClassDeclaration& cls : sdk.classes) {
        std::erase_if(cls.members, [&](const MemberDeclaration& member) {
            return definitions.contains(member.name);
        });
    }
    return sdk;
}

} // namespace sdkcheck
