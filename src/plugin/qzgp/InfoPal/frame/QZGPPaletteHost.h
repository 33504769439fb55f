// A plug-in that shows a docked palette: it holds the resource manager through which its
// panel reads the library's resources, and asks for idle time.
#pragma once

#include "InfoPal/frame/BasicQZGPHost.h"
#include "kitcore/utility/ScopedPtr.h"
#include "kitui/utility/InkwellImageResourceCache.h"
#include "kitui/utility/ResourceManager.h"

namespace infopal {

class QZGPPaletteHost : public BasicQZGPHost {
public:
    QZGPPaletteHost(const STR_ModuleRecord& module, QZ_BasicSuiteTable* basic,
                    QZGP_PluginID plugin_id);
    /// Destroys the image cache, then the resource manager.
    ~QZGPPaletteHost() override;

    kitui::utility::ResourceManager* GetResourceManager() const noexcept {
        return resourceManager_.get();
    }

protected:
    kitcore::utility::ScopedPtr<kitui::utility::ResourceManager> resourceManager_;
    // Host contract: required, though nothing here uses it.
    kitcore::utility::ScopedPtr<kitui::utility::InkwellImageResourceCache> paletteImageCache_;
};

} // namespace infopal
