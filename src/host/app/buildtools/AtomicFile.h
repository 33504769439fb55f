// Files that the build tools write, so that the build never reads a half-written one.
#pragma once

#include <filesystem>
#include <string>

namespace qzbuildtools {

/// Writes `bytes` to `path` through a temporary file in the same folder, then renames it
/// over `path`. Throws std::runtime_error naming the file when either step fails.
void WriteAtomically(const std::filesystem::path& path, const std::string& bytes);

} // namespace qzbuildtools
