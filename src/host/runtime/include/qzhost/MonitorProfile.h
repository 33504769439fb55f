// The monitor profile of the reference host: what TransformPixelAtScreenLocation converts
// to. The host has one monitor, covering every screen point.
//
// Working-space colours are sRGB: the transform goes from LittleCMS's built-in sRGB
// profile (cmsCreate_sRGBProfile) to the monitor's ICC profile, relative colorimetric, in
// floating point, alpha untouched. Without a monitor profile colours pass through
// unchanged.
#pragma once

#include <filesystem>
#include <optional>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// Makes the ICC profile at `path` the monitor's; nullopt means no monitor profile (the
/// identity). Throws std::runtime_error naming the file and the problem when it cannot be
/// read, is not an RGB profile or cannot be used as the target of a transform; the
/// previous setting then stays. The transform of each profile file is made once and kept.
QZ_HOST_API void SetMonitorProfile(const std::optional<std::filesystem::path>& path);

/// The monitor profile in use, nullopt for none.
QZ_HOST_API std::optional<std::filesystem::path> MonitorProfile();

} // namespace qzhost
