// The notation menu: the panel's flyout menu of the eight colour notations, and the
// notation kept in the host's preference file.
#include "InfoPal/panel/InfoPal_UI.h"

#include <optional>

#include "InfoPal/frame/HostCallGuard.h"
#include "host/COakApp.h"
#include "host/PREF_Preferences.h"
#include "host/U_LocalizedStrings.h"

namespace infopal {

namespace {

// Where the colour notation is kept in the host's text preference file.
constexpr const char* kPrefSection = "Misc Section";
constexpr const char* kPrefKey = "Info Palette Pixel Display";

// What the application redraws after the notation changed.
constexpr short kRefreshAfterModeChange = -32766; // 0x8002

struct FlyoutItem {
    const char* text; // localised key
    std::int32_t command;
    PixelDisplayMode mode;
};

// The flyout menu, top to bottom. The commands follow the menu; the modes do not.
constexpr FlyoutItem kFlyoutItems[] = {
    {"$$$/QZ/Plugin/InfoPal/AutoColorDisplay=Auto Color Display", 50, pixel_mode::kAuto},
    {"$$$/QZ/Plugin/InfoPal/Percent=Percent", 51, pixel_mode::kPercent},
    {"$$$/QZ/Plugin/InfoPal/Web=Web", 52, pixel_mode::kWeb},
    {"$$$/QZ/Plugin/InfoPal/Hsb=HSB", 53, pixel_mode::kHSB},
    {"$$$/QZ/Plugin/InfoPal/8bpc=8-bpc (0-255)", 54, pixel_mode::kBpc8},
    {"$$$/QZ/Plugin/InfoPal/10bpc=10-bpc (0-1023)", 55, pixel_mode::kBpc10},
    {"$$$/QZ/Plugin/InfoPal/16bpc=16-bpc (0-32768)", 56, pixel_mode::kBpc16},
    {"$$$/QZ/Plugin/InfoPal/Decimal=Decimal (0.0-1.0)", 57, pixel_mode::kDecimal},
};

// thrown as their integer codes.
std::optional<PixelDisplayMode> StoredPixelDisplayMode(PREF_Handle prefs) {
    bool exists = false;
    ThrowIfError(PREF_DoesKeyExist(prefs, kPrefSection, kPrefKey, &exists));
    if (!exists) {
        return std::nullopt;
    }
    long value = 0;
    ThrowIfError(PREF_GetTextPrefLong(prefs, kPrefSection, kPrefKey, 0, &value));
    // Kept as it is, without a range check: the low 16 bits.
    return static_cast<PixelDisplayMode>(static_cast<unsigned long>(value) & 0xFFFFUL);
}

} // namespace

void InfoPal_UI::LoadStoredPixelDisplayMode() {
    if (const auto stored = StoredPixelDisplayMode(PREF_GetPrefHandle(PREF_TYPE_TEXT))) {
        mode_ = *stored;
        previousMode_ = *stored;
    }
}

void InfoPal_UI::PopulateFlyoutMenu(kitworkspace::workspace::FlyoutMenu& menu) {
    menu.RemoveItems(0);
    for (const FlyoutItem& item : kFlyoutItems) {
        const std::size_t position = menu.AppendItem(U_ZStringToUTF16String(item.text));
        menu.SetItemCommand(position, item.command);
        if (item.mode == mode_) {
            menu.SetItemChecked(position, true);
        }
    }
}

bool InfoPal_UI::DoFlyoutMenuCommand(std::int32_t command) {
    for (const FlyoutItem& item : kFlyoutItems) {
        if (item.command == command) {
            SetPixelDisplayMode(item.mode);
            return true;
        }
    }
    return false;
}

void InfoPal_UI::SetPixelDisplayMode(PixelDisplayMode mode) {
    PREF_Handle prefs = PREF_GetPrefHandle(PREF_TYPE_TEXT);
    const PixelDisplayMode stored = StoredPixelDisplayMode(prefs).value_or(pixel_mode::kStored);
    const PixelDisplayMode chosen = mode == pixel_mode::kStored ? stored : mode;
    previousMode_ = mode_;
    mode_ = chosen;
    // Blank colour fields until the next pixel arrives.
    pixel_ = PF_PixelFloat{0, 0, 0, 0};
    // Written sign-extended: 65535 is kept as -1 and reads back as 65535.
    const long value = static_cast<std::int16_t>(chosen);
    ThrowIfError(PREF_SetTextPrefLong(prefs, kPrefSection, kPrefKey, value));
    if (gOak != nullptr) {
        gOak->RefreshWindows(kRefreshAfterModeChange);
    }
    RefreshPixelReadout();
}

} // namespace infopal
