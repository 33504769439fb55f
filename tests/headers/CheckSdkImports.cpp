// Checks that the import library of the host runtime's DLL, which the Windows build makes
// for the plug-in to link, has an entry for every host operation that the SDK headers
// declare. The declarations are read from the headers' text (SdkDeclarations.h), not by
// the compiler that made the library, so that the two readings check each other.
//
// The check fails, naming each, for
//   - a free function, or a member function of a marked class (or marked itself), with
//     fewer overloads in the library than the headers declare, or with no code thunk
//     there (a function that is marked DATA cannot be called or put in a vtable);
//   - a constructor without its base-object variant (C2), or its complete-object one (C1)
//     unless the class is abstract; a destructor without D1 and D2, or without the
//     deleting one (D0) when it is virtual (declared so, or a base class's of the SDK is);
//   - a variable or static data member missing, or given a code thunk (not marked DATA);
//   - a polymorphic marked class whose vtable, typeinfo or typeinfo name is missing;
//   - a header that the reading cannot follow, or a class of which it cannot tell
//     whether it is polymorphic.
//
// Usage: check_sdk_imports INCLUDE_DIR IMPORT_LIBRARY NM
//   INCLUDE_DIR     the SDK's include folder
//   IMPORT_LIBRARY  the import library (libqzhost-runtime.dll.a)
//   NM              the nm program of the target's binary tools
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "ImportLibrary.h"
#include "SdkDeclarations.h"

namespace fs = std::filesystem;

using sdkcheck::ClassDeclaration;
using sdkcheck::Declaration;
using sdkcheck::ImportEntry;
using sdkcheck::ImportLibrary;
using sdkcheck::MemberDeclaration;
using sdkcheck::Problems;

namespace {

// The nested names of a class in a mangled name: "5kitui2ui7UI_Node" of "kitui::ui::UI_Node".
std::string MangledNestedNames(const std::string& qualified) {
    std::string mangled;
    std::size_t begin = 0;
    while (begin <= qualified.size()) {
        std::size_t end = qualified.find("::", begin);
        if (end == std::string::npos) {
            end = qualified.size();
        }
        const std::string part = qualified.substr(begin, end - begin);
        mangled += std::to_string(part.size()) + part;
        begin = end + 2;
    }
    return mangled;
}

// What the classes of the headers say about each other through their bases.
class ClassFacts {
public:
    explicit ClassFacts(const std::vector<ClassDeclaration>& classes) {
        for (const ClassDeclaration& cls : classes) {
            byName_.emplace(cls.name, &cls);
        }
    }

    // The class that `cls` names as its base `written`, looked up from the scope that
    // `cls` is declared in outwards; null when the headers do not define it.
    const ClassDeclaration* Base(const ClassDeclaration& cls, const std::string& written) const {
        if (written.starts_with("::")) {
            return Find(written.substr(2));
        }
        std::string scope = cls.scope;
        while (true) {
            if (const ClassDeclaration* found =
                    Find(scope.empty() ? written : scope + "::" + written)) {
                return found;
            }
            if (scope.empty()) {
                return nullptr;
            }
            const std::size_t last = scope.rfind("::");
            scope = last == std::string::npos ? "" : scope.substr(0, last);
        }
    }

    // Whether objects of the class have a vtable: it declares a virtual function, or a
    // base class has one. Empty when a base class is not the headers' own and the class
    // declares nothing virtual.
    std::optional<bool> IsPolymorphic(const ClassDeclaration& cls) const {
        if (cls.declaresVirtual || !cls.pureVirtuals.empty()) {
            return true;
        }
        bool unknown = false;
        for (const std::string& written : cls.bases) {
            const ClassDeclaration* base = Base(cls, written);
            const std::optional<bool> polymorphic =
                base != nullptr ? IsPolymorphic(*base) : std::nullopt;
            if (polymorphic == true) {
                return true;
            }
            unknown = unknown || !polymorphic.has_value();
        }
        return unknown ? std::nullopt : std::optional<bool>(false);
    }

    // Whether the destructor is virtual: declared so, or a base class's of the headers is.
    bool HasVirtualDestructor(const ClassDeclaration& cls) const {
        if (cls.declaresVirtualDestructor) {
            return true;
        }
        for (const std::string& written : cls.bases) {
            const ClassDeclaration* base = Base(cls, written);
            if (base != nullptr && HasVirtualDestructor(*base)) {
                return true;
            }
        }
        return false;
    }

    // The pure virtual functions that the class leaves without a final overrider (by
    // name): an abstract class has some.
    std::set<std::string> PureVirtuals(const ClassDeclaration& cls) const {
        std::set<std::string> pure = cls.pureVirtuals;
        for (const std::string& written : cls.bases) {
            if (const ClassDeclaration* base = Base(cls, written)) {
                for (const std::string& name : PureVirtuals(*base)) {
                    if (!name.starts_with("~") && !cls.functionNames.contains(name)) {
                        pure.insert(name);
                    }
                }
            }
        }
        return pure;
    }

private:
    const ClassDeclaration* Find(const std::string& name) const {
        const auto found = byName_.find(name);
        return found != byName_.end() ? found->second : nullptr;
    }

    std::map<std::string, const ClassDeclaration*> byName_;
};

class ImportCheck {
public:
    ImportCheck(const ImportLibrary& library, Problems& problems)
        : library_(library), problems_(problems) {}

    // A function with `overloads` declarations: as many entries of that name, each with
    // its code thunk.
    void Function(const std::string& what, const std::string& name, const std::string& header,
                  std::size_t overloads) {
        ++checked_;
        std::set<std::string> found;
        for (const ImportEntry* entry : library_.Named(name)) {
            found.insert(entry->demangled);
            if (!entry->hasThunk) {
                problems_.Add(what + " " + name + " (" + header + "): " + entry->symbol +
                              " is marked DATA in the import library, without the code thunk "
                              "that a call or a vtable needs");
            }
        }
        if (found.size() < overloads) {
            problems_.Add(what + " " + name + " (" + header + "): " +
                          (found.empty() ? std::string("not in the import library")
                                         : std::to_string(found.size()) + " of its " +
                                               std::to_string(overloads) +
                                               " overloads in the import library"));
        }
    }

    // A variable, static data member, vtable or typeinfo: an entry marked DATA. `what`
    // is empty for a name that says what it is ("vtable for X").
    void Data(const std::string& what, const std::string& name, const std::string& header) {
        ++checked_;
        const std::string subject = (what.empty() ? "" : what + " ") + name + " (" + header + ")";
        const std::vector<const ImportEntry*> found = library_.Named(name);
        if (found.empty()) {
            problems_.Add(subject + ": not in the import library");
        }
        for (const ImportEntry* entry : found) {
            if (entry->hasThunk) {
                problems_.Add(subject + ": " + entry->symbol +
                              " has a code thunk in the import library: data is marked DATA");
            }
        }
    }

    // A constructor or destructor with `overloads` declarations, in each of `variants`
    // ("C1", "C2", "D0", "D1", "D2"; the code after the class's nested names).
    void Structor(const std::string& what, const ClassDeclaration& cls, const std::string& name,
                  std::size_t overloads, const std::vector<std::string>& variants) {
        ++checked_;
        const std::string prefix = "_ZN" + MangledNestedNames(cls.name);
        std::map<std::string, std::set<std::string>> found;
        for (const ImportEntry* entry : library_.Named(name)) {
            if (entry->symbol.starts_with(prefix)) {
                found[entry->symbol.substr(prefix.size(), 2)].insert(entry->demangled);
            }
            if (!entry->hasThunk) {
                problems_.Add(what + " " + name + " (" + cls.header + "): " + entry->symbol +
                              " is marked DATA in the import library, without its code thunk");
            }
        }
        for (const std::string& variant : variants) {
            const std::size_t count = found[variant].size();
            if (count < overloads) {
                problems_.Add(what + " " + name + " (" + cls.header + "): " +
                              std::to_string(count) + " of its " + std::to_string(overloads) +
                              " overloads in variant " + variant + " in the import library");
            }
        }
    }

    std::size_t Checked() const noexcept { return checked_; }

private:
    const ImportLibrary& library_;
    Problems& problems_;
    std::size_t checked_ = 0;
};

// The members of one name that a class declares, with their overloads.
struct MemberGroup {
    MemberDeclaration::Kind kind;
    std::set<std::string> signatures;
    bool isVirtual = false;
};

void CheckClass(const ClassDeclaration& cls, const ClassFacts& facts, ImportCheck& check,
                Problems& problems, std::size_t& polymorphicClasses) {
    std::map<std::string, MemberGroup> groups;
    for (const MemberDeclaration& member : cls.members) {
        if (!cls.marked && !member.marked) {
            continue;
        }
        MemberGroup& group =
            groups.try_emplace(member.name, MemberGroup{member.kind, {}, false}).first->second;
        group.signatures.insert(member.signature);
        group.isVirtual = group.isVirtual || member.isVirtual;
    }
    for (const auto& [name, group] : groups) {
        switch (group.kind) {
        case MemberDeclaration::Kind::Function:
            check.Function("member function", name, cls.header, group.signatures.size());
            break;
        case MemberDeclaration::Kind::StaticVariable:
            check.Data("static data member", name, cls.header);
            break;
        case MemberDeclaration::Kind::Constructor: {
            std::vector<std::string> variants = {"C2"};
            if (facts.PureVirtuals(cls).empty()) {
                variants.push_back("C1");
            }
            check.Structor("constructor", cls, name, group.signatures.size(), variants);
            break;
        }
        case MemberDeclaration::Kind::Destructor: {
            std::vector<std::string> variants = {"D1", "D2"};
            if (group.isVirtual || facts.HasVirtualDestructor(cls)) {
                variants.push_back("D0");
            }
            check.Structor("destructor", cls, name, group.signatures.size(), variants);
            break;
        }
        }
    }
    if (!cls.marked) {
        return;
    }
    const std::optional<bool> polymorphic = facts.IsPolymorphic(cls);
    if (!polymorphic.has_value()) {
        problems.Add("class " + cls.name + " (" + cls.header +
                     "): cannot tell whether it is polymorphic: it declares nothing virtual and "
                     "a base class is not one of the SDK headers'");
        return;
    }
    if (*polymorphic) {
        ++polymorphicClasses;
        check.Data("", "vtable for " + cls.name, cls.header);
        check.Data("", "typeinfo for " + cls.name, cls.header);
        check.Data("", "typeinfo name for " + cls.name, cls.header);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: " << argv[0] << " INCLUDE_DIR IMPORT_LIBRARY NM\n";
        return 2;
    }
    const fs::path includeDir = argv[1];
    const std::string libraryPath = argv[2];
    Problems problems;
    try {
        const sdkcheck::SdkDeclarations sdk = sdkcheck::ReadSdkDeclarations(includeDir, problems);
        const ImportLibrary library = ImportLibrary::Read(argv[3], libraryPath);
        if (sdk.declarations.empty() || library.Entries().empty()) {
            std::cerr << "nothing to check: " << sdk.declarations.size() << " declarations, "
                      << library.Entries().size() << " entries in " << libraryPath << "\n";
            return 1;
        }

        ImportCheck check(library, problems);
        for (const Declaration& declaration : sdk.declarations) {
            if (declaration.kind == Declaration::Kind::Function && !declaration.definedInHeader) {
                check.Function("function", declaration.name, declaration.header,
                               declaration.overloads.size());
            } else if (declaration.kind == Declaration::Kind::Variable) {
                check.Data("variable", declaration.name, declaration.header);
            }
        }
        const ClassFacts facts(sdk.classes);
        std::size_t polymorphicClasses = 0;
        for (const ClassDeclaration& cls : sdk.classes) {
            CheckClass(cls, facts, check, problems, polymorphicClasses);
        }

        if (problems.lines.empty()) {
            std::cout << check.Checked() - 3 * polymorphicClasses
                      << " declared operations, and the vtable, typeinfo and typeinfo name of "
                      << polymorphicClasses << " polymorphic classes: each in " << libraryPath
                      << " (" << library.Entries().size() << " entries)\n";
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
