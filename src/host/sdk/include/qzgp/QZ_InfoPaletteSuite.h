// "QZ Info Palette Suite" version 2: the Info palette's published function table,
// through which host components write text into the Info panel, hand it the pixel and
// property values to show, and ask for or change its visibility.
//
// Every slot returns 0 on success or an error code. A missing plug-in object, a panel that
// is not shown and a missing panel are successes that change nothing. Strings are read
// during the call only. Narrow strings are in the host's multibyte code page; null means
// an empty line.
#pragma once

#include <cstdint>

#include "host/M_Vector.h"
#include "host/PF_Pixel.h"
#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_Basic.h"

class PXM_Layer;
class KVB_StreamIDPath;

inline constexpr const char* kQZ_InfoPaletteSuite = "QZ Info Palette Suite";
inline constexpr std::int32_t kQZ_InfoPaletteSuiteVersion2 = 2;
inline constexpr std::int32_t kQZ_InfoPaletteSuiteSlotCount = 24;

using QZ_Narrow = const char*;
using QZ_Wide = const kitcore::utility::UTF16Char*;

struct QZ_InfoPaletteSuite2 {
    /// 0. [any-thread] Three text lines.
    QZ_Err (*SetTextLines3)(QZ_Narrow line1, QZ_Narrow line2, QZ_Narrow line3);
    /// 1. [any-thread] Five text lines.
    QZ_Err (*SetTextLines5)(QZ_Narrow line1, QZ_Narrow line2, QZ_Narrow line3, QZ_Narrow line4,
                            QZ_Narrow line5);
    /// 2. [ui-thread] Sets (or, with null, cancels) a suffix for the first line of the next
    /// text update only. A pending suffix is kept until it is used or cancelled.
    QZ_Err (*SetFirstLineSuffix)(QZ_Narrow suffix);
    /// 3. [ui-thread] Copies the panel's last delivered pixel; null gives error 3.
    QZ_Err (*GetPixel)(PF_PixelFloat* pixel);
    /// 4. [any-thread] The pixel under the pointer, its position and the origin (any may
    /// be null). From another thread their values are copied into a call queued to the main
    /// thread; the caller may free them as soon as the call returns.
    QZ_Err (*SetPixelInfo)(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                           const M_Vector2T<double>* origin);
    /// 5. [ui-thread] A rotation and its change.
    QZ_Err (*ShowRotationReadout)(QZ_Narrow name, float value, float delta);
    /// 6. [ui-thread] Three angles and their changes; `orientation` wraps them.
    QZ_Err (*ShowOrientationReadout)(QZ_Narrow name, bool orientation, double x, double y, double z,
                                     double dx, double dy, double dz);
    /// 7. [ui-thread] A two-component position and its change.
    QZ_Err (*ShowPositionReadout2D)(QZ_Narrow name, float x, float y, float dx, float dy);
    /// 8. [ui-thread] A three-component position and its change.
    QZ_Err (*ShowPositionReadout3D)(QZ_Narrow name, float x, float y, float z, float dx, float dy,
                                    float dz);
    /// 9. [ui-thread] A two-component point under its own label (anchor point, point of
    /// interest) and its change.
    QZ_Err (*ShowPointReadout2D)(QZ_Narrow name, QZ_Narrow label, float x, float y, float dx,
                                 float dy);
    /// 10. [ui-thread] A three-component point under its own label and its change.
    QZ_Err (*ShowPointReadout3D)(QZ_Narrow name, QZ_Narrow label, float x, float y, float z,
                                 float dx, float dy, float dz);
    /// 11. [ui-thread] A two-component scale in percent and its change.
    QZ_Err (*ShowScaleReadout2D)(QZ_Narrow name, float x, float y, float dx, float dy);
    /// 12. [ui-thread] A three-component scale in percent and its change.
    QZ_Err (*ShowScaleReadout3D)(QZ_Narrow name, float x, float y, float z, float dx, float dy,
                                 float dz);
    /// 13. [ui-thread] A layer property's value, shown by what the property is.
    QZ_Err (*ShowStreamReadout)(PXM_Layer* layer, const KVB_StreamIDPath* path, QZ_Narrow name,
                                QZ_Narrow label, std::uint32_t value_kind, float x, float y,
                                float z, float dx, float dy, float dz);
    /// 14. [ui-thread] 1 when the panel is visible, else 0.
    QZ_Err (*IsPanelVisible)();
    /// 15. [ui-thread] Shows or hides the panel.
    QZ_Err (*SetPanelVisible)(bool visible);
    /// 16. [ui-thread] Shows the panel.
    QZ_Err (*ShowPanel)();
    /// 17. [ui-thread] Sets the palette's flag.
    QZ_Err (*SetFlag)(bool flag);
    /// 18. [ui-thread] Reads the palette's flag.
    QZ_Err (*GetFlag)(bool* flag);
    /// 19. [any-thread] Does nothing.
    QZ_Err (*Reserved19)();
    /// 20. [any-thread] Does nothing.
    QZ_Err (*Reserved20)();
    /// 21. [ui-thread] Asks the visible panel's tab for an immediate update.
    QZ_Err (*UpdatePanelTab)();
    /// 22. [any-thread] Three UTF-16 text lines.
    QZ_Err (*SetTextLines3W)(QZ_Wide line1, QZ_Wide line2, QZ_Wide line3);
    /// 23. [any-thread] Five UTF-16 text lines.
    QZ_Err (*SetTextLines5W)(QZ_Wide line1, QZ_Wide line2, QZ_Wide line3, QZ_Wide line4,
                             QZ_Wide line5);
};

static_assert(sizeof(QZ_InfoPaletteSuite2) == kQZ_InfoPaletteSuiteSlotCount * sizeof(void*));
