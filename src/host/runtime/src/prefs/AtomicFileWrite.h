// Replacing a file's content so that a reader, or a crash at any moment, sees either the
// old content or the new one, never a mix or a truncated file; and removing the temporary
// files that writers killed mid-write leave behind.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace qzhost::prefs {

/// Writes `content` into a new temporary file in the folder of `path`, flushes it to the
/// disk, and renames it over `path`. Returns 0, or the errno of the step that failed; on
/// failure `path` is untouched and the temporary file is removed.
///
/// The temporary file is named ".<name of path>.tmp-XXXXXX", the X being six letters or
/// digits, and the writer holds an exclusive flock(2) lock on it from just after it is
/// made until it is renamed or removed. The kernel drops the lock when the writer's
/// process ends, however it ends: a temporary file that nobody holds locked belongs to a
/// writer that is gone.
int WriteFileAtomically(const std::filesystem::path& path, std::string_view content);

/// Whether `name` (a file name, without folder) is one that WriteFileAtomically gives to
/// the temporary files of a file named `file_name`.
bool IsTemporaryFileNameFor(std::string_view name, std::string_view file_name);

/// Removes the temporary files of `path` (see WriteFileAtomically) that a writer left
/// behind when it was killed before it could rename or remove them. A temporary file that
/// a living writer, in this process or another, still holds locked is left alone, and so
/// is everything that is not a regular file of that exact naming. Returns how many files
/// were removed; a file that cannot be examined or removed is skipped.
std::size_t RemoveAbandonedTemporaryFiles(const std::filesystem::path& path);

} // namespace qzhost::prefs
