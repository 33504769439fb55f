// The Info palette plug-in object: the one long-lived object of the plug-in. It registers
// the panel's tab creator and menu command, and is how the suite and the panel find each
// other.
#pragma once

#include <cstdint>

#include "InfoPal/frame/QZGPPaletteHost.h"
#include "kitcore/utility/UTF16String.h"

namespace infopal {

class QZGPPaletteUI;

class InfoPal : public QZGPPaletteHost {
public:
    /// The Info panel's menu command.
    static constexpr QZGP_Command kCommand = 2028;

    InfoPal(QZ_BasicSuiteTable* basic, QZGP_PluginID plugin_id);
    /// Hides a shown panel, unregisters the tab creator, and stops being the process's
    /// plug-in object.
    ~InfoPal() override;

    const char* MenuName() override;
    void IdleHandler() override;
    void CommandHandler(QZGP_Command command, bool already_handled, bool* handled) override;
    void UpdateMenuHandler() override;

    /// [ui-thread] The process's plug-in object, or null before start-up, after teardown,
    /// and when the host's user interface is suppressed.
    static InfoPal* GetPlugin() noexcept;
    /// [any-thread] Whether the process has a plug-in object now; never dereferences it.
    static bool Exists() noexcept;
    /// [any-thread] The registration number of the panel registered now, 0 when none:
    /// each panel that registers gets a new one, so a number tells a panel from the one
    /// that replaced it, without touching either.
    static std::uint64_t CurrentPanelSerial() noexcept;

    // The remaining accessors are [ui-thread].
    /// [any-thread] Whether the Info panel counts as shown: its tab is open in a shown
    /// frame, and stands in a stacked frame or is the front tab of its frame. The one
    /// visibility test of the plug-in: the suite, the panel's pending updates and the menu
    /// check mark all ask it.
    static bool PanelIsShown();
    /// The panel; when there is none, the tab is toggled (so that the workspace creates
    /// and shows it) and the panel is looked up again, which may still give null.
    QZGPPaletteUI* GetPanelCreatingIfNeeded();
    /// Toggles the tab when its shown state differs from `shown`.
    void SetPanelShown(bool shown);
    /// The panel registers itself here when it is built and with null when it goes;
    /// gives the panel's registration number (0 for null).
    std::uint64_t SetPanel(QZGPPaletteUI* panel) noexcept;
    QZGPPaletteUI* GetPanel() const noexcept { return panel_; }
    /// The bool that the Info palette suite sets and reads.
    bool GetFlag() const noexcept { return flag_; }
    void SetFlag(bool flag) noexcept { flag_ = flag; }

    const kitcore::utility::UTF16String& PanelTitle() const noexcept { return title_; }
    kitui::utility::InkwellImageResourceCache* GetImageCache() const noexcept {
        return imageCache_.get();
    }

private:
    QZGPPaletteUI* panel_ = nullptr;
    // Host contract: required, though nothing here uses it.
    kitcore::utility::ScopedPtr<kitui::utility::InkwellImageResourceCache> imageCache_;
    // Every new panel sets it; it starts false so that it is never read unset.
    bool flag_ = false;
    kitcore::utility::UTF16String title_;
};

/// The localised key of the panel title (spelled so).
inline constexpr const char* kPanelTitleKey = "$$$/QZ/Plugin/InfoPal/pallete_name=Info";

} // namespace infopal
