// qzsdkexports: writes the module-definition file of the host runtime's DLL from the SDK
// headers, for the import library that a plug-in built for Windows links against. The
// headers are parsed by clang for the Windows target with the cross compiler's include
// folders; what they declare dllimport and do not define is what the DLL exports (see
// ImportedSymbols.h), under its mangled name for that target.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/CLI.hpp>

#include "buildtools/AtomicFile.h"
#include "sdkexports/ImportedSymbols.h"
#include "sdkexports/ModuleDefinition.h"
#include "sdkexports/SdkTranslationUnit.h"

int main(int argc, char** argv) {
    CLI::App app{"Writes the module-definition file (LIBRARY, EXPORTS) of the host runtime's DLL: "
                 "every function, member function and variable that the SDK headers declare "
                 "dllimport for the target and do not define, and the vtable and typeinfo of "
                 "every imported polymorphic class, by their mangled names."};
    qzsdkexports::ParseSettings settings;
    std::string outputPath;
    std::string library = "qzhost-runtime.dll";
    settings.target = "x86_64-w64-mingw32";
    std::vector<std::string> headers;
    app.add_option("--include-dir", settings.includeDir,
                   "The SDK's include folder; the headers are included by their paths under it")
        ->required();
    app.add_option("--system-include-dir", settings.systemIncludeDirs,
                   "A folder of system headers: the target compiler's own include folders in "
                   "its search order (its C++ library first), then any other (repeatable)");
    app.add_option("--target", settings.target, "The target triple")->capture_default_str();
    app.add_option("--library", library, "The DLL's file name, for the LIBRARY line")
        ->capture_default_str();
    app.add_option("--output", outputPath, "Where to write the module-definition file")->required();
    app.add_option("headers", headers, "The SDK headers, each under the include folder")
        ->required();
    CLI11_PARSE(app, argc, argv);

    try {
        for (const std::string& header : headers) {
            settings.headers.emplace_back(header);
        }
        const qzsdkexports::SdkTranslationUnit unit(settings);
        const std::vector<qzsdkexports::ImportEntry> entries =
            qzsdkexports::ImportedSymbols(unit.Get(), settings.includeDir);
        if (entries.empty()) {
            std::cerr << "qzsdkexports: error: no declaration of the headers is imported for "
                      << settings.target << "\n";
            return 1;
        }
        qzbuildtools::WriteAtomically(outputPath,
                                      qzsdkexports::ModuleDefinitionText(library, entries));
    } catch (const qzsdkexports::ParseError& error) {
        for (const std::string& diagnostic : error.Diagnostics()) {
            std::cerr << diagnostic << "\n";
        }
        std::cerr << "qzsdkexports: error: " << error.what() << "\n";
        return 1;
    } catch (const std::exception& error) {
        std::cerr << "qzsdkexports: error: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
