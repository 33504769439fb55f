// What a plug-in can import from the host runtime's DLL, read from the parsed SDK headers:
// the symbols that the runtime's module-definition file lists.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <clang-c/Index.h>

namespace qzsdkexports {

struct ImportEntry {
    /// The symbol's name for the target (mangled, without an import prefix).
    std::string name;
    /// A variable, a vtable or a typeinfo object: reached through its import pointer
    /// only, with no code thunk of its own.
    bool data = false;
};

/// The symbols of every declaration in a header under `includeDir` that the target
/// imports (dllimport, written on it or on its class) and that the headers do not define:
///   - functions and member functions that are not inline, not defined in a header, not
///     defaulted or deleted there and not pure virtual (a pure virtual destructor is
///     called by every derived destructor, so it stays); each constructor and destructor
///     in every variant that a plug-in can call (base and complete; a virtual
///     destructor's deleting one too) and the thunks of virtual member functions;
///   - variables and static data members;
///   - the vtable, typeinfo and typeinfo name of every imported polymorphic class.
/// Sorted by name, each once. Throws std::runtime_error when a declaration cannot be
/// named.
std::vector<ImportEntry> ImportedSymbols(CXTranslationUnit unit,
                                         const std::filesystem::path& includeDir);

} // namespace qzsdkexports
