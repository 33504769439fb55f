#include "validate/DynamicSymbols.h"

#include <elf.h>

#include <cstring>
#include <fstream>
#include <stdexcept>

namespace qzhost::validate {

namespace {

template <class T>
T ReadAt(const std::vector<char>& bytes, std::size_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) {
        throw std::runtime_error("the ELF file is cut short");
    }
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

} // namespace

std::vector<DynamicSymbol> DefinedDynamicSymbols(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::vector<char> bytes(static_cast<std::size_t>(file.tellg()));
    file.seekg(0);
    if (!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw std::runtime_error("cannot read " + path);
    }
    const auto header = ReadAt<Elf64_Ehdr>(bytes, 0);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
        header.e_ident[EI_CLASS] != ELFCLASS64) {
        throw std::runtime_error(path + " is not a 64-bit ELF file");
    }
    std::vector<DynamicSymbol> symbols;
    for (std::size_t i = 0; i < header.e_shnum; ++i) {
        const auto section = ReadAt<Elf64_Shdr>(bytes, header.e_shoff + i * sizeof(Elf64_Shdr));
        if (section.sh_type != SHT_DYNSYM) {
            continue;
        }
        const auto strings =
            ReadAt<Elf64_Shdr>(bytes, header.e_shoff + section.sh_link * sizeof(Elf64_Shdr));
        for (std::size_t at = 0; at + sizeof(Elf64_Sym) <= section.sh_size;
             at += sizeof(Elf64_Sym)) {
            const auto symbol = ReadAt<Elf64_Sym>(bytes, section.sh_offset + at);
            const unsigned bind = ELF64_ST_BIND(symbol.st_info);
            const unsigned type = ELF64_ST_TYPE(symbol.st_info);
            if (symbol.st_shndx == SHN_UNDEF || (bind != STB_GLOBAL && bind != STB_WEAK) ||
                ELF64_ST_VISIBILITY(symbol.st_other) == STV_HIDDEN) {
                continue;
            }
            const std::size_t name_at = strings.sh_offset + symbol.st_name;
            if (name_at >= bytes.size() || symbol.st_name >= strings.sh_size) {
                throw std::runtime_error("a symbol name lies outside the string table");
            }
            const char* name = bytes.data() + name_at;
            const std::size_t length =
                strnlen(name, std::min<std::size_t>(bytes.size() - name_at,
                                                    strings.sh_size - symbol.st_name));
            symbols.push_back({std::string(name, length), type == STT_FUNC || type == STT_GNU_IFUNC,
                               bind == STB_WEAK});
        }
    }
    return symbols;
}

} // namespace qzhost::validate
