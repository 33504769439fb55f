// Replacing a file's content so that a reader, or a crash at any moment, sees either the
// old content or the new one, never a mix or a truncated file.
#pragma once

#include <filesystem>
#include <string_view>

namespace qzhost::prefs {

/// Writes `content` into a new temporary file in the folder of `path`, flushes it to the
/// disk, and renames it over `path`. Returns 0, or the errno of the step that failed; on
/// failure `path` is untouched and the temporary file is removed.
int WriteFileAtomically(const std::filesystem::path& path, std::string_view content);

} // namespace qzhost::prefs
