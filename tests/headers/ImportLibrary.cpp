#include "ImportLibrary.h"

#include <cstdlib>
#include <cxxabi.h>
#include <set>
#include <sstream>
#include <string_view>

#include "ProgramOutput.h"

namespace sdkcheck {

std::string Demangle(const std::string& symbol) {
    int status = 0;
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
    if (status != 0 || text == nullptr) {
        std::free(text);
        return symbol;
    }
    std::string demangled = text;
    std::free(text);
    return demangled;
}

std::string EntityName(const std::string& demangled) {
    static const std::vector<std::string_view> generated = {"vtable for ",
                                                            "typeinfo for ",
                                                            "typeinfo name for ",
                                                            "VTT for ",
                                                            "non-virtual thunk to ",
                                                            "virtual thunk to ",
                                                            "covariant return thunk to ",
                                                            "guard variable for ",
                                                            "construction vtable for "};
    for (const std::string_view prefix : generated) {
        if (demangled.starts_with(prefix)) {
            return demangled;
        }
    }
    // The name ends where its parameter list begins: at the first "(" outside template
    // arguments, or after an operator's own symbols.
    std::size_t end = demangled.size();
    int depth = 0;
    for (std::size_t i = 0; i < demangled.size(); ++i) {
        if (demangled.compare(i, 8, "operator") == 0 &&
            (i == 0 || demangled[i - 1] == ':' || demangled[i - 1] == ' ')) {
            std::size_t after = i + 8;
            if (demangled.compare(after, 2, "()") == 0) {
                after += 2;
            }
            end = std::min(demangled.find('(', after), demangled.size());
            break;
        }
        const char c = demangled[i];
        if (c == '<') {
            ++depth;
        } else if (c == '>') {
            --depth;
        } else if (c == '(' && depth == 0) {
            end = i;
            break;
        }
    }
    // ABI tags ("[abi:cxx11]") are no part of the name as the source writes it.
    std::string name = demangled.substr(0, end);
    for (std::size_t tag = name.find("[abi:"); tag != std::string::npos;
         tag = name.find("[abi:", tag)) {
        const std::size_t close = name.find(']', tag);
        name.erase(tag, close == std::string::npos ? std::string::npos : close - tag + 1);
    }
    return name;
}

ImportLibrary ImportLibrary::FromListing(const std::string& listing) {
    constexpr std::string_view kImportPrefix = "__imp_";
    std::set<std::string> imports;
    std::set<std::string> thunks;
    std::istringstream lines(listing);
    std::string line;
    while (std::getline(lines, line)) {
        // "<value> <type> <name>" for a symbol that a member defines.
        std::istringstream fields(line);
        std::string value;
        std::string type;
        std::string name;
        if (!(fields >> value >> type >> name)) {
            continue;
        }
        if (name.starts_with(kImportPrefix)) {
            imports.insert(name.substr(kImportPrefix.size()));
        } else if (type == "T") {
            thunks.insert(name);
        }
    }
    ImportLibrary library;
    for (const std::string& symbol : imports) {
        const std::string demangled = Demangle(symbol);
        library.entries_.push_back(
            ImportEntry{symbol, demangled, EntityName(demangled), thunks.contains(symbol)});
        library.byEntity_.emplace(library.entries_.back().entity, library.entries_.size() - 1);
    }
    return library;
}

ImportLibrary ImportLibrary::Read(const std::string& nm, const std::string& library) {
    return FromListing(ProgramOutput(ShellQuoted(nm) + " " + ShellQuoted(library)));
}

std::vector<const ImportEntry*> ImportLibrary::Named(const std::string& entity) const {
    std::vector<const ImportEntry*> found;
    const auto [first, last] = byEntity_.equal_range(entity);
    for (auto it = first; it != last; ++it) {
        found.push_back(&entries_[it->second]);
    }
    return found;
}

} // namespace sdkcheck
