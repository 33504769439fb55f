// Pictures of a library's resources, chosen by control state and UI scale.
//
// A picture called "Name" is looked up among the resources under upper-case names built
// from the name, the state and the scale:
//   "SP_NAME_<state>_D"          PNG, 1x            (state: N normal, S selected)
//   "SP_NAME_<state>_D_AT_3TO2X" PNG, 1.5x
//   "SP_NAME_<state>_D_AT_2X"    PNG, 2x
//   "S_NAME_<state>_D_AT_2X"     SVG, drawn for the 2x size
#pragma once

#include <cstdint>

#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/inkwell/Handles.h"
#include "kitui/inkwell/SupplierInterface.h"
#include "kitui/utility/ResourceManager.h"

namespace kitui::utility {

/// Which kinds of picture resource EDB_GetImage may use.
namespace image_file_type {
/// PNG resources only.
inline constexpr std::int32_t kPNG = 0;
/// The SVG resource only.
inline constexpr std::int32_t kSVG = 1;
/// The PNG made for the UI scale (1, 1.5 or 2); at any other scale the SVG, drawn at
/// that scale.
inline constexpr std::int32_t kPNGOrSVG = 2;
} // namespace image_file_type

} // namespace kitui::utility

/// [ui-thread] The picture `name` of `resources` for the control state `state_flags`
/// (kitui::controls::picture_state; the selected bit picks the "S" pictures) at the host's
/// UI scale, made with `supplier`. With `match_scale` false the 1x picture is used at
/// every scale. With `fall_back_to_normal` a state that has no picture of its own uses the
/// normal one. `tint`, when not null, replaces the colour of every pixel and keeps its
/// alpha. Gives an empty handle when no resource fits or the supplier or resources are
/// null; throws std::runtime_error when a resource that fits cannot be decoded.
QZ_HOST_API kitui::inkwell::PictureRef
EDB_GetImage(const kitui::utility::ResourceManager* resources,
             kitui::inkwell::SupplierInterface* supplier, const char* name,
             std::uint32_t state_flags, std::int32_t file_type, bool match_scale,
             bool fall_back_to_normal, const kitui::inkwell::ColorRGBA* tint);
