// The entries of a DLL's import library, as the binary tools' nm lists them: for each
// export an import pointer ("__imp_" and the name), and for a function a code thunk under
// the name itself as well (an entry marked DATA has none).
#pragma once

#include <map>
#include <string>
#include <vector>

namespace sdkcheck {

struct ImportEntry {
    std::string symbol;    // as exported: mangled, without "__imp_"
    std::string demangled; // the symbol itself when it is no C++ name
    std::string entity;    // what it names (EntityName)
    bool hasThunk;         // a code thunk beside the import pointer
};

/// `symbol` demangled, or `symbol` when it is not a mangled C++ name.
std::string Demangle(const std::string& symbol);

/// What a demangled name names: "ns::C::f" of "ns::C::f[abi:cxx11](int) const",
/// "ns::C::operator==" of "ns::C::operator==(ns::C const&) const", "ns::x" of "ns::x".
/// Names of the compiler's own objects ("vtable for ns::C", "non-virtual thunk to ...")
/// are kept whole.
std::string EntityName(const std::string& demangled);

class ImportLibrary {
public:
    /// The entries of an nm listing of an import library.
    static ImportLibrary FromListing(const std::string& listing);
    /// The entries of `library`, listed by the program `nm`.
    static ImportLibrary Read(const std::string& nm, const std::string& library);

    const std::vector<ImportEntry>& Entries() const noexcept { return entries_; }
    /// The entries whose entity is `entity`.
    std::vector<const ImportEntry*> Named(const std::string& entity) const;

private:
    std::vector<ImportEntry> entries_;
    std::multimap<std::string, std::size_t> byEntity_;
};

} // namespace sdkcheck
