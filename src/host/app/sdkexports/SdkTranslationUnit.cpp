#include "sdkexports/SdkTranslationUnit.h"

#include <algorithm>

#include "sdkexports/ClangText.h"

namespace qzsdkexports {

namespace {

// The name under which the generated source is handed to clang; it lies in no folder of
// the include search, so that it cannot shadow a header.
constexpr const char* kSourceName = "qzsdkexports-all-sdk-headers.cpp";

} // namespace

std::string TranslationUnitSource(const ParseSettings& settings) {
    std::vector<std::string> relative;
    for (const std::filesystem::path& header : settings.headers) {
        const std::filesystem::path path =
            std::filesystem::relative(header, settings.includeDir).lexically_normal();
        if (path.empty() || *path.begin() == "..") {
            throw std::runtime_error(header.string() + " does not lie under the include folder " +
                                     settings.includeDir.string());
        }
        relative.push_back(path.generic_string());
    }
    std::sort(relative.begin(), relative.end());
    relative.erase(std::unique(relative.begin(), relative.end()), relative.end());
    std::string source;
    for (const std::string& path : relative) {
        source += "#include \"" + path + "\"\n";
    }
    return source;
}

std::vector<std::string> CompilerArguments(const ParseSettings& settings) {
    // Clang's own builtin headers stay (after the given folders); the machine's C and C++
    // library headers are left out, as they are not the target's.
    std::vector<std::string> arguments = {"-x", "c++", "-std=c++20", "--target=" + settings.target,
                                          "-nostdlibinc"};
    for (const std::string& dir : settings.systemIncludeDirs) {
        arguments.push_back("-isystem");
        arguments.push_back(dir);
    }
    arguments.push_back("-I");
    arguments.push_back(settings.includeDir.string());
    return arguments;
}

SdkTranslationUnit::SdkTranslationUnit(const ParseSettings& settings) {
    const std::string source = TranslationUnitSource(settings);
    const std::vector<std::string> arguments = CompilerArguments(settings);
    std::vector<const char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    CXUnsavedFile unsaved{kSourceName, source.c_str(), static_cast<unsigned long>(source.size())};

    index_ = clang_createIndex(/*excludeDeclarationsFromPCH=*/0, /*displayDiagnostics=*/0);
    const CXErrorCode status =
        clang_parseTranslationUnit2(index_, kSourceName, argv.data(), static_cast<int>(argv.size()),
                                    &unsaved, 1, CXTranslationUnit_VisitImplicitAttributes, &unit_);
    if (status != CXError_Success || unit_ == nullptr) {
        clang_disposeIndex(index_);
        throw ParseError("clang could not parse the SDK headers (libclang error " +
                             std::to_string(static_cast<int>(status)) + ")",
                         {});
    }

    std::vector<std::string> diagnostics;
    std::size_t errors = 0;
    const unsigned count = clang_getNumDiagnostics(unit_);
    for (unsigned i = 0; i < count; ++i) {
        CXDiagnostic diagnostic = clang_getDiagnostic(unit_, i);
        const CXDiagnosticSeverity severity = clang_getDiagnosticSeverity(diagnostic);
        if (severity >= CXDiagnostic_Error) {
            ++errors;
        }
        diagnostics.push_back(
            TakeText(clang_formatDiagnostic(diagnostic, clang_defaultDiagnosticDisplayOptions())));
        clang_disposeDiagnostic(diagnostic);
    }
    if (errors > 0) {
        clang_disposeTranslationUnit(unit_);
        clang_disposeIndex(index_);
        throw ParseError("the SDK headers do not parse for " + settings.target + " (" +
                             std::to_string(errors) + " error(s))",
                         std::move(diagnostics));
    }
}

SdkTranslationUnit::~SdkTranslationUnit() {
    clang_disposeTranslationUnit(unit_);
    clang_disposeIndex(index_);
}

} // namespace qzsdkexports
