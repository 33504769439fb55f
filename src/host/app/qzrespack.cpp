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

#include "respack/Depfile.h"
#include "respack/ResourceManifest.h"

namespace {

// Writes `bytes` to `path` through a temporary file in the same folder, so that a reader
// never sees a half-written file.
void WriteAtomically(const std::filesystem::path& path, const std::string& bytes) {
    const std::filesystem::path temporary = path.string() + ".tmp";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.flush();
        if (!out) {
            throw std::runtime_error("cannot write '" + temporary.string() + "'");
        }
    }
    std::error_code error;
    std::filesystem::rename(temporary, path, error);
    if (error) {
        throw std::runtime_error("cannot rename '" + temporary.string() + "' to '" + path.string() +
                                 "': " + error.message());
    }
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"Packs the resources listed in a JSON manifest into a resource archive."};
    std::string manifestPath;
    std::string outputPath;
    std::string depfilePath;
    app.add_option("--manifest", manifestPath, "The JSON resource manifest")->required();
    app.add_option("--output", outputPath, "Where to write the resource archive")->required();
    app.add_option("--depfile", depfilePath,
                   "Where to write the make-style list of the archive's inputs");
    CLI11_PARSE(app, argc, argv);

    try {
        const qzrespack::Manifest manifest = qzrespack::LoadManifest(manifestPath);
        const std::vector<std::uint8_t> archive =
            qzhost::resources::WriteResourceArchive(manifest.resources);
        WriteAtomically(outputPath, std::string(archive.begin(), archive.end()));
        if (!depfilePath.empty()) {
            WriteAtomically(
                depfilePath,
                qzrespack::DepfileText(std::filesystem::absolute(outputPath), manifest.inputs));
        }
    } catch (const std::exception& error) {
        std::cerr << "qzrespack: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
