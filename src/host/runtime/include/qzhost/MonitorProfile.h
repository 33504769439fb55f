// The monitor of the reference host: what TransformPixelAtScreenLocation converts to. The
// host has one monitor, covering every screen point.
//
// A colour goes first through the monitor's display transform, when the host program sets
// one (a viewer's display and view: working values to the display's), then through the
// monitor profile, when one is set: from LittleCMS's built-in sRGB profile
// (cmsCreate_sRGBProfile) to the monitor's ICC profile, relative colorimetric, in floating
// point. Alpha is untouched. With neither, colours pass through unchanged.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "qzgp/QZ_Basic.h"
#include "qzhost/ColourTransform.h"

namespace qzhost {

/// Makes the ICC profile at `path` the monitor's; nullopt means no monitor profile (the
/// identity). Throws std::runtime_error naming the file and the problem when it cannot be
/// read, is not an RGB profile or cannot be used as the target of a transform; the
/// previous setting then stays. The transform of each profile file is made once and kept.
QZ_HOST_API void SetMonitorProfile(const std::optional<std::filesystem::path>& path);

/// The monitor profile in use, nullopt for none.
QZ_HOST_API std::optional<std::filesystem::path> MonitorProfile();

/// [ui-thread] Makes `display` the monitor's display transform, applied before the monitor
/// profile; null for none.
QZ_HOST_API void SetMonitorDisplay(std::shared_ptr<const ColourTransform> display);

/// The monitor's display transform; null for none.
QZ_HOST_API std::shared_ptr<const ColourTransform> MonitorDisplay();

} // namespace qzhost
