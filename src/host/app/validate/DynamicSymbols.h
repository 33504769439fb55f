// The dynamic symbols that a shared library defines (its exports), read from its ELF
// file's .dynsym section.
#pragma once

#include <string>
#include <vector>

namespace qzhost::validate {

struct DynamicSymbol {
    std::string name;
    bool function = false; // STT_FUNC (or STT_GNU_IFUNC)
    bool weak = false;
};

/// Every defined global or weak symbol of the 64-bit ELF library at `path`; throws
/// std::runtime_error for a file that is no such library.
std::vector<DynamicSymbol> DefinedDynamicSymbols(const std::string& path);

} // namespace qzhost::validate
