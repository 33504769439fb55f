// qzrespack: packs the resources that a manifest lists into one resource archive, which
// the build then places in the ".qzres" section of a library or program (see
// cmake/QZResources.cmake). It also writes a dependency file so that the archive is
// rebuilt when the manifest or any file that it names changes.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <system_error>

#include <CLI/CLI.hpp>

#include "buildtools/AtomicFile.h"
#include "respack/Depfile.h"
#include "respack/ResourceManifest.h"
#include "respack/ResourceScript.h"

namespace {

using qzbuildtools::WriteAtomically;

// Writes the resource script `scriptPath` and, in the folder "<scriptPath>.data" beside it,
// one data file per resource holding its bytes.
void WriteResourceScript(const std::filesystem::path& scriptPath,
                         const std::vector<qzhost::resources::Resource>& resources) {
    const std::filesystem::path dataFolder = scriptPath.string() + ".data";
    std::filesystem::create_directories(dataFolder);
    std::vector<std::filesystem::path> dataFiles;
    for (std::size_t i = 0; i < resources.size(); ++i) {
        const qzhost::resources::Resource& resource = resources[i];
        const std::filesystem::path file = std::filesystem::absolute(
            dataFolder / (std::to_string(i) + "_" + resource.type + "_" + resource.name + ".bin"));
        WriteAtomically(file, std::string(resource.data.begin(), resource.data.end()));
        dataFiles.push_back(file);
    }
    WriteAtomically(scriptPath, qzrespack::ResourceScriptText(resources, dataFiles));
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"Packs the resources listed in a JSON manifest into a resource archive, or "
                 "writes them as a resource script for the Windows resource compiler."};
    std::string manifestPath;
    std::string outputPath;
    std::string scriptPath;
    std::string depfilePath;
    app.add_option("--manifest", manifestPath, "The JSON resource manifest")->required();
    app.add_option("--output", outputPath, "Where to write the resource archive");
    app.add_option("--rc-script", scriptPath,
                   "Where to write the resource script (its data files go into the folder "
                   "'<script>.data' beside it)");
    app.add_option("--depfile", depfilePath,
                   "Where to write the make-style list of the inputs (of the archive, or of "
                   "the script when no archive is written)");
    CLI11_PARSE(app, argc, argv);
    if (outputPath.empty() && scriptPath.empty()) {
        std::cerr << "qzrespack: nothing to write: give --output, --rc-script or both\n";
        return 2;
    }

    try {
        const qzrespack::Manifest manifest = qzrespack::LoadManifest(manifestPath);
        if (!outputPath.empty()) {
            const std::vector<std::uint8_t> archive =
                qzhost::resources::WriteResourceArchive(manifest.resources);
            WriteAtomically(outputPath, std::string(archive.begin(), archive.end()));
        }
        if (!scriptPath.empty()) {
            WriteResourceScript(scriptPath, manifest.resources);
        }
        if (!depfilePath.empty()) {
            const std::string target = outputPath.empty() ? scriptPath : outputPath;
            WriteAtomically(depfilePath, qzrespack::DepfileText(std::filesystem::absolute(target),
                                                                manifest.inputs));
        }
    } catch (const std::exception& error) {
        std::cerr << "qzrespack: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
