#include "qzhost/ToolkitSettings.h"

namespace qzhost {

ToolkitSettings& ToolkitSettings::Get() {
    static ToolkitSettings settings;
    return settings;
}

void ToolkitSettings::Reset() noexcept {
    shaderFills_ = false;
    textAntialiasing_ = true;
}

} // namespace qzhost
