// Fuzz target of the control-layout reader: UI_ControlsContainer::RestoreLayout over a
// layout document, then what a panel does with a restored layout (the container takes the
// layout's size, the controls are placed, and the panel's next layout of the same
// document finds the controls that the first one made). The Info panel's layouts name the
// plug-in's own swatch control, which the target makes known to the control factory as
// the plug-in's panel does by making it itself.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "InfoPal/controls/UI_SwatchRect.h"
#include "kitcore/config/Error.h"
#include "kitui/controls/UI_ControlFactory.h"
#include "kitui/controls/UI_ControlsContainer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool swatchKnown = [] {
        kitui::controls::UI_RegisterControlClass("UI_SwatchRect", [](std::uint32_t) {
            return std::make_unique<kitui::controls::UI_SwatchRect>();
        });
        return true;
    }();
    (void)swatchKnown;
    const std::string document(reinterpret_cast<const char*>(data), size);
    kitui::controls::UI_ControlsContainer container(1);
    try {
        const kitui::ui::PointT<float> layoutSize = container.RestoreLayout(document);
        container.UI_SetBounds({0.0f, 0.0f, layoutSize.x, layoutSize.y});
        for (std::size_t i = 0; i < container.UI_GetChildCount(); ++i) {
            (void)container.UI_GetChild(i)->UI_LocalToGlobal({0, 0});
        }
        (void)container.UI_GetInvalidBounds();
        (void)container.RestoreLayout(document);
    } catch (const kitcore::config::Error&) {
        // A document that is not a valid layout is refused with the toolkit's error.
    }
    return 0;
}
