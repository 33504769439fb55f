// Checks that every host operation that an SDK header declares is defined in the runtime
// source file named after that header: the operations of "X.h" in "X.cpp".
//
// The declarations come from the headers (SdkDeclarations.h): what a header marks
// QZ_HOST_API (a class, with every member of it that is defined out of line; a free
// function; a variable), named with its namespaces. The definitions come from the runtime's
// object files: the strong symbols that each one defines (the object of "X.cpp" is
// "X.cpp.o"). Inline and template code has no strong symbol and so no home to check.
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
#include <filesystem>
#include <iostream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "ProgramOutput.h"
#include "SdkDeclarations.h"

namespace fs = std::filesystem;

using sdkcheck::Declaration;
using sdkcheck::Problems;

namespace {

// ---- Reading the objects ----------------------------------------------------------------

struct Symbol {
    std::string name; // demangled, without "vtable for " and the like
    bool exported;    // default visibility
    std::string object;
};

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
    const std::string listing = sdkcheck::ProgramOutput(sdkcheck::ShellQuoted(readelf) +
                                                        " -sW -C " + sdkcheck::ShellQuoted(object));
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
    std::istringstream lines(sdkcheck::ReadFile(path));
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
        const std::vector<Declaration> declarations =
            sdkcheck::ReadSdkDeclarations(include_dir, problems).declarations;

        // What the objects define.
        std::vector<std::string> objects;
        {
            std::string list = sdkcheck::ReadFile(argv[2]);
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
                                 std::string(sdkcheck::kExportMacro));
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
                problems.Add(symbol.name + " (" + sdkcheck::KindText(owner->kind) + " " +
                             owner->name + ", declared in " + owner->header + ") is defined in " +
                             source + ", not in a file named " + home);
            }
        }
        for (const Declaration& declaration : declarations) {
            if (declaration.kind != Declaration::Kind::Class &&
                !defined.contains(declaration.name)) {
                problems.Add(sdkcheck::KindText(declaration.kind) + " " + declaration.name +
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
