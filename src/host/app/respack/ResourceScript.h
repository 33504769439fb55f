// Resource scripts: the text that the Windows resource compiler (windres) reads to make a
// library's PE resources, written from the same resources that the resource archive of
// the other platforms holds, so that the two cannot differ.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "qzhost/ResourceArchive.h"

namespace qzrespack {

/// Why `text` cannot be a resource type or name in a resource script, or "" when it can:
/// a number from 1 to 65535, or a word of letters, digits and '_' that does not start with
/// a digit and is not a word of the script language itself.
std::string ResourceScriptNameProblem(std::string_view text);

/// The script that makes `resources` PE resources, each of its type, name and language,
/// its bytes read from `dataFiles[i]` (one file per resource, in the same order). Throws
/// std::runtime_error naming the resource whose type or name the script cannot hold, or
/// when the two lists differ in length.
std::string ResourceScriptText(std::span<const qzhost::resources::Resource> resources,
                               std::span<const std::filesystem::path> dataFiles);

} // namespace qzrespack
