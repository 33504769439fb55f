// The localised keys of the property readouts' labels and units ("$$$/path=default").
#pragma once

namespace infopal::labels {

inline constexpr const char* kPosition = "$$$/QZ/Plugin/InfoPal/Position=Position:";
inline constexpr const char* kAnchorPoint = "$$$/QZ/Plugin/InfoPal/AnchorPoint=Anchor Point:";
inline constexpr const char* kPointOfInterest = "$$$/QZ/Plugin/InfoPal/PointOfInterest=POI:";
inline constexpr const char* kPoint = "$$$/QZ/Plugin/InfoPal/Point=Point:";
inline constexpr const char* kScale = "$$$/QZ/Plugin/InfoPal/ScaleParam=Scale:";
inline constexpr const char* kRotation = "$$$/QZ/Plugin/InfoPal/Rotation=Rotation:";
inline constexpr const char* kOrientation = "$$$/QZ/Plugin/InfoPal/Orientation=Orientation:";
inline constexpr const char* kRotationX = "$$$/QZ/Plugin/InfoPal/RotationX=Rotation (x):";
inline constexpr const char* kRotationY = "$$$/QZ/Plugin/InfoPal/RotationY=Rotation (y):";
inline constexpr const char* kRotationZ = "$$$/QZ/Plugin/InfoPal/RotationZ=Rotation (z):";
inline constexpr const char* kMaskOpacity = "$$$/QZ/Plugin/InfoPal/MaskOpacity=Mask Opacity:";
inline constexpr const char* kFeather = "$$$/QZ/Plugin/InfoPal/Feather=Feather:";
inline constexpr const char* kMaskExpansion = "$$$/QZ/Plugin/InfoPal/MaskExpansion=Mask Expansion:";
// This key has no slash between "InfoPal" and "Opacity"; string tables know it so.
inline constexpr const char* kOpacity = "$$$/QZ/Plugin/InfoPalOpacity=Opacity:";
inline constexpr const char* kValue = "$$$/QZ/Plugin/InfoPal/Value=Value:";

inline constexpr const char* kPercentUnit = "$$$/QZ/Plugin/InfoPal/PercentSign=%";
inline constexpr const char* kPixelsUnit = "$$$/QZ/Plugin/InfoPal/Pixels= pixels";

inline constexpr const char* kDelta = "$$$/QZ/Plugin/InfoPal/Delta=^I";
inline constexpr const char* kColon = "$$$/QZ/Plugin/InfoPal/Colon=:";

} // namespace infopal::labels
