// Resource manifests: the JSON list of the resources that a library carries, read at
// build time by qzrespack.
//
//   {
//     "resources": [
//       {"type": "XML", "name": "CONTROL_LAYOUT", "language": 1033,
//        "file": "layouts/control_layout.xml"},
//       {"type": "PRPL", "name": "16000", "language": 1033, "format_version": 1,
//        "properties": [...]}
//     ]
//   }
//
// Each resource has a "type" and a "name" (printable ASCII, matched later without regard
// to case; a name may also be given as a JSON number), an optional "language" (1033 when
// left out), and exactly one source of its bytes: "file", a path relative to the
// manifest's folder whose bytes are taken as they are, or "properties", a property-list
// description (see PropertyListJson.h) compiled to the property-list layout, with an
// optional "format_version" (1 when left out). Unknown fields are errors.
#pragma once

#include <filesystem>
#include <vector>

#include "qzhost/ResourceArchive.h"

namespace qzrespack {

struct Manifest {
    std::vector<qzhost::resources::Resource> resources;
    /// The manifest and every file that it names, as absolute paths: what the archive
    /// depends on.
    std::vector<std::filesystem::path> inputs;
};

/// Reads the manifest at `path` and every file that it names. Throws std::runtime_error
/// with one line naming the manifest, the resource and the problem.
Manifest LoadManifest(const std::filesystem::path& path);

} // namespace qzrespack
