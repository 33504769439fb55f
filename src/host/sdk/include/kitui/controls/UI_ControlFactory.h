// Creation of controls by class name, as a layout document names them. The fourteen
// toolkit controls are known from the start; a library can add its own classes.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "kitui/controls/UI_ControlView.h"

namespace kitui::controls {

using UI_ControlCreator = std::function<std::unique_ptr<UI_ControlView>(std::uint32_t flags)>;

/// [any-thread] The qualified class name for a name as a layout or a caller writes it:
/// "class kitui::controls::UI_Divider", "kitui::controls::UI_Divider" and "UI_Divider"
/// all give "kitui::controls::UI_Divider"; a name with other namespaces is kept as it is.
QZ_HOST_API std::string UI_QualifiedControlClassName(std::string_view name);

/// [ui-thread] A new control of class `class_name` (any of the forms above) made with
/// `creation_flags`; null when the class is unknown.
QZ_HOST_API std::unique_ptr<UI_ControlView> UI_CreateControl(std::string_view class_name,
                                                             std::uint32_t creation_flags);

/// [ui-thread] Whether UI_CreateControl knows `class_name`.
QZ_HOST_API bool UI_IsKnownControlClass(std::string_view class_name);

/// [ui-thread] Makes `class_name` known, created by `creator` (replacing an earlier
/// creator of the same class).
QZ_HOST_API void UI_RegisterControlClass(std::string_view class_name, UI_ControlCreator creator);

} // namespace kitui::controls
