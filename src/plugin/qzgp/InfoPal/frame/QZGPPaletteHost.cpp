#include "InfoPal/frame/QZGPPaletteHost.h"

namespace infopal {

QZGPPaletteHost::QZGPPaletteHost(const STR_ModuleRecord& module, QZ_BasicSuiteTable* basic,
                                 QZGP_PluginID plugin_id)
    : BasicQZGPHost(module, basic, plugin_id, /*wants_idle=*/true) {}

QZGPPaletteHost::~QZGPPaletteHost() {
    paletteImageCache_.reset();
    resourceManager_.reset();
}

} // namespace infopal
