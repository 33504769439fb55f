// The host operations that the SDK headers declare, read from the headers' text: what a
// header marks QZ_HOST_API (a class, with every member of it that no header defines; a
// free function; a variable), named with its namespaces and enclosing classes.
//
// The reading is the checks' own, independent of the compiler: it tokenizes each header
// without comments, preprocessor lines and the text of literals, and follows namespaces,
// classes and the statements in them. It reports what it cannot read, so that a check
// never passes over a declaration that it did not see.
//
// check_operation_homes (the runtime's objects) and check_sdk_imports (the Windows import
// library) both read the headers through it.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace sdkcheck {

inline constexpr std::string_view kExportMacro = "QZ_HOST_API";

/// What a check found wrong, one line each.
struct Problems {
    std::vector<std::string> lines;
    void Add(std::string line) { lines.push_back(std::move(line)); }
};

/// The whole content of a file; throws std::runtime_error when it cannot be read.
std::string ReadFile(const std::filesystem::path& path);

/// A class, free function or variable that a header marks QZ_HOST_API.
struct Declaration {
    enum class Kind { Class, Function, Variable };
    Kind kind;
    std::string name;   // with its namespaces and enclosing classes
    std::string header; // relative to the include folder
    /// Functions: the text of each declaration's parameter list and what follows it, one
    /// per overload.
    std::set<std::string> overloads = {};
    /// Functions: a header defines it (inline), so the runtime exports nothing for it.
    bool definedInHeader = false;
};

std::string KindText(Declaration::Kind kind);

/// A member function or static data member that a class declares and no header defines,
/// so that the runtime defines it.
struct MemberDeclaration {
    enum class Kind { Function, Constructor, Destructor, StaticVariable };
    Kind kind;
    std::string name;      // with the class: "ns::Class::Name", "ns::Class::~Class"
    std::string signature; // the parameter list and what follows it: tells overloads apart
    bool isVirtual;        // declared virtual or override
    bool marked;           // marked QZ_HOST_API on its own
};

/// A class that a header defines, marked or not, with what its members say about it.
struct ClassDeclaration {
    std::string name;   // with its namespaces and enclosing classes
    std::string scope;  // the namespace or class that it is declared in ("" for global)
    std::string header; // relative to the include folder
    bool marked = false;
    /// The base classes as written, e.g. "std::runtime_error" or "UI_Node".
    std::vector<std::string> bases;
    /// A member function declared virtual or override (a destructor too).
    bool declaresVirtual = false;
    /// The destructor is declared virtual or override.
    bool declaresVirtualDestructor = false;
    /// The member functions declared pure ("= 0"), by name.
    std::set<std::string> pureVirtuals;
    /// The other member functions that it declares or defines, by name.
    std::set<std::string> functionNames;
    /// The members that no header defines.
    std::vector<MemberDeclaration> members;
};

struct SdkDeclarations {
    /// Each name once, in the order of the headers' paths. A name declared in two
    /// headers is a problem.
    std::vector<Declaration> declarations;
    std::vector<ClassDeclaration> classes;
};

/// Reads every ".h" file under `includeDir`. What it cannot read, and a name declared in
/// two headers, it adds to `problems`.
SdkDeclarations ReadSdkDeclarations(const std::filesystem::path& includeDir, Problems& problems);

} // namespace sdkcheck
