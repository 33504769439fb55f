// Make-style dependency files, which the build tool reads to learn which inputs a
// generated file depends on.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace qzrespack {

/// "output: input input ...\n" with spaces, '#' and '$' escaped for make and Ninja.
/// Throws std::runtime_error for a path holding a line break.
std::string DepfileText(const std::filesystem::path& output,
                        const std::vector<std::filesystem::path>& inputs);

} // namespace qzrespack
