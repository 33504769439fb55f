#include "sdkexports/ImportedSymbols.h"

#include <map>
#include <set>
#include <stdexcept>

#include "sdkexports/ClangText.h"

namespace qzsdkexports {

namespace {

bool IsClass(CXCursorKind kind) {
    return kind == CXCursor_ClassDecl || kind == CXCursor_StructDecl || kind == CXCursor_UnionDecl;
}

bool IsFunction(CXCursorKind kind) {
    return kind == CXCursor_FunctionDecl || kind == CXCursor_CXXMethod ||
           kind == CXCursor_Constructor || kind == CXCursor_Destructor ||
           kind == CXCursor_ConversionFunction;
}

// Whether `cursor` carries an attribute of `kind` (an attribute is a child cursor).
bool HasAttribute(CXCursor cursor, CXCursorKind kind) {
    struct Search {
        CXCursorKind kind;
        bool found = false;
    } search{kind};
    clang_visitChildren(
        cursor,
        [](CXCursor child, CXCursor, CXClientData data) {
            auto* state = static_cast<Search*>(data);
            if (clang_getCursorKind(child) == state->kind) {
                state->found = true;
                return CXChildVisit_Break;
            }
            return CXChildVisit_Continue;
        },
        &search);
    return search.found;
}

// Whether the target imports `cursor`: dllimport on the declaration, or on its class
// (what the class imports reaches all of its members).
bool IsImported(CXCursor cursor) {
    if (HasAttribute(cursor, CXCursor_DLLImport)) {
        return true;
    }
    const CXCursor parent = clang_getCursorSemanticParent(cursor);
    return IsClass(clang_getCursorKind(parent)) && HasAttribute(parent, CXCursor_DLLImport);
}

std::string Describe(CXCursor cursor) {
    std::string name = TakeText(clang_getCursorDisplayName(cursor));
    for (CXCursor scope = clang_getCursorSemanticParent(cursor);
         !clang_Cursor_isNull(scope) && clang_getCursorKind(scope) != CXCursor_TranslationUnit;
         scope = clang_getCursorSemanticParent(scope)) {
        name = TakeText(clang_getCursorSpelling(scope)) + "::" + name;
    }
    return name;
}

// The mangled names of a function: a member's every variant and thunk, or a free
// function's one name.
std::vector<std::string> Manglings(CXCursor cursor) {
    std::vector<std::string> names;
    if (clang_getCursorKind(cursor) == CXCursor_FunctionDecl) {
        names.push_back(TakeText(clang_Cursor_getMangling(cursor)));
    } else if (CXStringSet* set = clang_Cursor_getCXXManglings(cursor)) {
        for (unsigned i = 0; i < set->Count; ++i) {
            names.push_back(clang_getCString(set->Strings[i]));
        }
        clang_disposeStringSet(set);
    }
    for (const std::string& name : names) {
        if (name.empty()) {
            throw std::runtime_error("clang gives no mangled name for " + Describe(cursor));
        }
    }
    if (names.empty()) {
        throw std::runtime_error("clang gives no mangled name for " + Describe(cursor));
    }
    return names;
}

// The mangled name of a class type: its source names, nested in its namespaces and
// classes ("N...E") unless it lies in the global namespace.
struct ClassMangling {
    std::string inner; // the nested names without "N" and "E"
    std::string type;
};

ClassMangling MangledClassName(CXCursor cls) {
    std::vector<std::string> names;
    for (CXCursor scope = cls; clang_getCursorKind(scope) != CXCursor_TranslationUnit;
         scope = clang_getCursorSemanticParent(scope)) {
        const CXCursorKind kind = clang_getCursorKind(scope);
        if (kind == CXCursor_LinkageSpec) {
            continue;
        }
        const std::string name = TakeText(clang_getCursorSpelling(scope));
        const bool named = kind == CXCursor_Namespace || IsClass(kind);
        if (!named || name.empty() || clang_Cursor_isAnonymous(scope) ||
            clang_Type_getNumTemplateArguments(clang_getCursorType(scope)) > 0) {
            throw std::runtime_error("cannot name the class " + Describe(cls) +
                                     " for its vtable and typeinfo");
        }
        names.insert(names.begin(), name);
    }
    if (names.front() == "std") {
        throw std::runtime_error("cannot name the class " + Describe(cls) +
                                 ": a class of namespace std");
    }
    ClassMangling mangling;
    for (const std::string& name : names) {
        mangling.inner += std::to_string(name.size()) + name;
    }
    mangling.type = names.size() == 1 ? mangling.inner : "N" + mangling.inner + "E";
    return mangling;
}

// Checks the class's mangled name against its members' names, which clang mangles
// itself: each begins with "_ZN", its qualifiers, then the class's nested names.
void CheckAgainstMembers(CXCursor cls, const ClassMangling& mangling) {
    struct State {
        const ClassMangling* mangling;
        std::string mismatch;
    } state{&mangling, {}};
    clang_visitChildren(
        cls,
        [](CXCursor child, CXCursor, CXClientData data) {
            auto* state = static_cast<State*>(data);
            const CXCursorKind kind = clang_getCursorKind(child);
            if (kind != CXCursor_CXXMethod && kind != CXCursor_Constructor &&
                kind != CXCursor_Destructor) {
                return CXChildVisit_Continue;
            }
            for (const std::string& name : Manglings(child)) {
                if (name.starts_with("_ZT")) {
                    continue; // a thunk
                }
                std::size_t at = 3;
                while (at < name.size() &&
                       std::string_view("rVKRO").find(name[at]) != std::string_view::npos) {
                    ++at;
                }
                if (!name.starts_with("_ZN") ||
                    name.compare(at, state->mangling->inner.size(), state->mangling->inner) != 0) {
                    state->mismatch = name;
                    return CXChildVisit_Break;
                }
            }
            return CXChildVisit_Continue;
        },
        &state);
    if (!state.mismatch.empty()) {
        throw std::runtime_error("the class " + Describe(cls) + " is named " + mangling.type +
                                 ", but its member " + state.mismatch + " is not named after it");
    }
}

// Whether objects of the class hold a vtable pointer: a virtual member function (its own
// or inherited), or a virtual base.
bool IsDynamic(CXCursor cls) {
    bool dynamic = false;
    clang_visitChildren(
        cls,
        [](CXCursor child, CXCursor, CXClientData data) {
            bool& found = *static_cast<bool*>(data);
            const CXCursorKind kind = clang_getCursorKind(child);
            if ((kind == CXCursor_CXXMethod || kind == CXCursor_Destructor) &&
                clang_CXXMethod_isVirtual(child)) {
                found = true;
            } else if (kind == CXCursor_CXXBaseSpecifier) {
                const CXCursor base = clang_getCursorDefinition(
                    clang_getTypeDeclaration(clang_getCanonicalType(clang_getCursorType(child))));
                found =
                    clang_isVirtualBase(child) || (!clang_Cursor_isNull(base) && IsDynamic(base));
            }
            return found ? CXChildVisit_Break : CXChildVisit_Continue;
        },
        &dynamic);
    return dynamic;
}

class Collector {
public:
    Collector(CXTranslationUnit unit, const std::filesystem::path& includeDir)
        : unit_(unit),
          includeDir_(std::filesystem::weakly_canonical(includeDir).generic_string() + "/") {}

    std::vector<ImportEntry> Run() {
        clang_visitChildren(clang_getTranslationUnitCursor(unit_), &Collector::VisitChild, this);
        for (const auto& [usr, function] : functions_) {
            if (function.imported && !function.excluded) {
                for (const std::string& name : function.manglings) {
                    Add(name, false);
                }
            }
        }
        for (const auto& [usr, variable] : variables_) {
            if (variable.imported && !variable.defined) {
                Add(variable.mangling, true);
            }
        }
        std::vector<ImportEntry> entries;
        for (const auto& [name, data] : entries_) {
            entries.push_back(ImportEntry{name, data});
        }
        return entries;
    }

private:
    // What the declarations of one function say, over all of its redeclarations.
    struct Function {
        bool imported = false;
        bool excluded = false;
        std::set<std::string> manglings;
    };
    struct Variable {
        bool imported = false;
        bool defined = false;
        std::string mangling;
    };

    static CXChildVisitResult VisitChild(CXCursor cursor, CXCursor, CXClientData data) {
        return static_cast<Collector*>(data)->Visit(cursor);
    }

    CXChildVisitResult Visit(CXCursor cursor) {
        if (!InSdk(cursor)) {
            return CXChildVisit_Continue;
        }
        const CXCursorKind kind = clang_getCursorKind(cursor);
        if (kind == CXCursor_Namespace || kind == CXCursor_LinkageSpec ||
            kind == CXCursor_UnexposedDecl) {
            return CXChildVisit_Recurse;
        }
        if (IsClass(kind)) {
            NoteClass(cursor);
            return CXChildVisit_Recurse;
        }
        if (IsFunction(kind)) {
            NoteFunction(cursor);
        } else if (kind == CXCursor_VarDecl) {
            NoteVariable(cursor);
        }
        // Templates are left out: nothing of them is imported before it is instantiated.
        return CXChildVisit_Continue;
    }

    // Whether the declaration lies in a header under the include folder (rather than in
    // the C or C++ library's, which declare imports of their own).
    bool InSdk(CXCursor cursor) {
        CXFile file = nullptr;
        clang_getExpansionLocation(clang_getCursorLocation(cursor), &file, nullptr, nullptr,
                                   nullptr);
        if (file == nullptr) {
            return false;
        }
        const auto known = files_.find(file);
        if (known != files_.end()) {
            return known->second;
        }
        std::string path = TakeText(clang_File_tryGetRealPathName(file));
        if (path.empty()) {
            path = TakeText(clang_getFileName(file));
        }
        const bool inside =
            std::filesystem::weakly_canonical(path).generic_string().starts_with(includeDir_);
        files_.emplace(file, inside);
        return inside;
    }

    void NoteFunction(CXCursor cursor) {
        if (clang_getCursorLinkage(cursor) != CXLinkage_External) {
            return;
        }
        Function& function = functions_[TakeText(clang_getCursorUSR(cursor))];
        function.imported = function.imported || IsImported(cursor);
        const CXCursorKind kind = clang_getCursorKind(cursor);
        const bool member = kind != CXCursor_FunctionDecl;
        const bool pure = member && clang_CXXMethod_isPureVirtual(cursor);
        function.excluded = function.excluded ||
                            !clang_Cursor_isNull(clang_getCursorDefinition(cursor)) ||
                            clang_Cursor_isFunctionInlined(cursor) ||
                            clang_getCursorAvailability(cursor) == CXAvailability_NotAvailable ||
                            (member && clang_CXXMethod_isDefaulted(cursor)) ||
                            (pure && kind != CXCursor_Destructor);
        for (std::string& name : Manglings(cursor)) {
            function.manglings.insert(std::move(name));
        }
    }

    void NoteVariable(CXCursor cursor) {
        if (clang_getCursorLinkage(cursor) != CXLinkage_External) {
            return;
        }
        Variable& variable = variables_[TakeText(clang_getCursorUSR(cursor))];
        variable.imported = variable.imported || IsImported(cursor);
        variable.defined =
            variable.defined || !clang_Cursor_isNull(clang_getCursorDefinition(cursor));
        variable.mangling = TakeText(clang_Cursor_getMangling(cursor));
        if (variable.mangling.empty()) {
            throw std::runtime_error("clang gives no mangled name for " + Describe(cursor));
        }
    }

    void NoteClass(CXCursor cursor) {
        if (!clang_isCursorDefinition(cursor) || !HasAttribute(cursor, CXCursor_DLLImport) ||
            !IsDynamic(cursor)) {
            return;
        }
        const ClassMangling mangling = MangledClassName(cursor);
        CheckAgainstMembers(cursor, mangling);
        Add("_ZTV" + mangling.type, true);
        Add("_ZTI" + mangling.type, true);
        Add("_ZTS" + mangling.type, true);
    }

    void Add(const std::string& name, bool data) {
        const auto [entry, inserted] = entries_.emplace(name, data);
        if (!inserted && entry->second != data) {
            throw std::runtime_error(name + " is both a function and data");
        }
    }

    CXTranslationUnit unit_;
    std::string includeDir_;
    std::map<CXFile, bool> files_;
    std::map<std::string, Function> functions_; // by USR
    std::map<std::string, Variable> variables_; // by USR
    std::map<std::string, bool> entries_;       // name: whether it is data
};

} // namespace

std::vector<ImportEntry> ImportedSymbols(CXTranslationUnit unit,
                                         const std::filesystem::path& includeDir) {
    return Collector(unit, includeDir).Run();
}

} // namespace qzsdkexports
