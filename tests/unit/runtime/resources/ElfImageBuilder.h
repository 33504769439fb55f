// Builds small ELF64 little-endian images for the section-reader tests: the ELF header,
// the data of each section, the section name table, then the section header table.
#pragma once

#include <elf.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace qztest {

struct ElfImage {
    std::vector<std::uint8_t> bytes;
    std::size_t namesIndex = 0; // section number of the section name table

    Elf64_Ehdr Header() const {
        Elf64_Ehdr header;
        std::memcpy(&header, bytes.data(), sizeof header);
        return header;
    }
    void SetHeader(const Elf64_Ehdr& header) { std::memcpy(bytes.data(), &header, sizeof header); }
    Elf64_Shdr Section(std::size_t index) const {
        Elf64_Shdr section;
        std::memcpy(&section, bytes.data() + Header().e_shoff + index * sizeof section,
                    sizeof section);
        return section;
    }
    void SetSection(std::size_t index, const Elf64_Shdr& section) {
        std::memcpy(bytes.data() + Header().e_shoff + index * sizeof section, &section,
                    sizeof section);
    }
};

/// An image with a null section 0, then `sections` in order (section 1 onwards), then the
/// section name table.
inline ElfImage
BuildElfImage(const std::vector<std::pair<std::string, std::vector<std::uint8_t>>>& sections) {
    ElfImage image;
    image.bytes.assign(sizeof(Elf64_Ehdr), 0);

    std::vector<Elf64_Shdr> headers(1);
    std::string names(1, '\0');
    for (const auto& [name, data] : sections) {
        Elf64_Shdr header{};
        header.sh_name = static_cast<Elf64_Word>(names.size());
        names += name + '\0';
        header.sh_type = SHT_PROGBITS;
        header.sh_offset = image.bytes.size();
        header.sh_size = data.size();
        header.sh_addralign = 1;
        image.bytes.insert(image.bytes.end(), data.begin(), data.end());
        headers.push_back(header);
    }
    Elf64_Shdr namesHeader{};
    namesHeader.sh_name = static_cast<Elf64_Word>(names.size());
    names += std::string(".shstrtab") + '\0';
    namesHeader.sh_type = SHT_STRTAB;
    namesHeader.sh_offset = image.bytes.size();
    namesHeader.sh_size = names.size();
    namesHeader.sh_addralign = 1;
    image.bytes.insert(image.bytes.end(), names.begin(), names.end());
    image.namesIndex = headers.size();
    headers.push_back(namesHeader);

    image.bytes.resize((image.bytes.size() + 7) / 8 * 8, 0);
    const std::size_t tableAt = image.bytes.size();
    for (const Elf64_Shdr& header : headers) {
        const auto* raw = reinterpret_cast<const std::uint8_t*>(&header);
        image.bytes.insert(image.bytes.end(), raw, raw + sizeof header);
    }

    Elf64_Ehdr header{};
    std::memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_ident[EI_CLASS] = ELFCLASS64;
    header.e_ident[EI_DATA] = ELFDATA2LSB;
    header.e_ident[EI_VERSION] = EV_CURRENT;
    header.e_type = ET_DYN;
    header.e_machine = EM_X86_64;
    header.e_version = EV_CURRENT;
    header.e_ehsize = sizeof(Elf64_Ehdr);
    header.e_shoff = tableAt;
    header.e_shentsize = sizeof(Elf64_Shdr);
    header.e_shnum = static_cast<Elf64_Half>(headers.size());
    header.e_shstrndx = static_cast<Elf64_Half>(image.namesIndex);
    image.SetHeader(header);
    return image;
}

} // namespace qztest
