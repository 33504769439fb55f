// The SDK headers as the compiler's own parser reads them for one target: a translation
// unit that includes every header, compiled with the target compiler's include folders.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <clang-c/Index.h>

namespace qzsdkexports {

struct ParseSettings {
    /// The SDK's include folder: the headers are included by their paths under it.
    std::filesystem::path includeDir;
    /// The headers to read, each under `includeDir`.
    std::vector<std::filesystem::path> headers;
    /// The target compiler's own include folders, in its search order, then any other
    /// folder of system headers (boost). Clang does not find a cross compiler's C++
    /// library headers by itself.
    std::vector<std::string> systemIncludeDirs;
    /// The target triple, e.g. "x86_64-w64-mingw32".
    std::string target;
};

/// The headers did not parse: clang's diagnostics, each on one line.
class ParseError : public std::runtime_error {
public:
    ParseError(const std::string& what, std::vector<std::string> diagnostics)
        : std::runtime_error(what), diagnostics_(std::move(diagnostics)) {}
    const std::vector<std::string>& Diagnostics() const noexcept { return diagnostics_; }

private:
    std::vector<std::string> diagnostics_;
};

/// The source of the translation unit: one #include line per header, in the order of
/// their paths under the include folder.
std::string TranslationUnitSource(const ParseSettings& settings);

/// The arguments with which clang parses the translation unit.
std::vector<std::string> CompilerArguments(const ParseSettings& settings);

/// A parsed translation unit. Parsing throws ParseError when clang reports an error.
class SdkTranslationUnit {
public:
    explicit SdkTranslationUnit(const ParseSettings& settings);
    ~SdkTranslationUnit();
    SdkTranslationUnit(const SdkTranslationUnit&) = delete;
    SdkTranslationUnit& operator=(const SdkTranslationUnit&) = delete;

    CXTranslationUnit Get() const noexcept { return unit_; }

private:
    CXIndex index_ = nullptr;
    CXTranslationUnit unit_ = nullptr;
};

} // namespace qzsdkexports
