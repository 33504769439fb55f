// The Info panel: the pixel block (channel labels and values, swatch, X/Y and X'/Y'), and
// three full-width text rows for the text lines.
#pragma once

#include <array>
#include <cstdint>

#include <boost/function.hpp>

#include "InfoPal/panel/InfoPalControlPlan.h"
#include "InfoPal/panel/PixelDelivery.h"
#include "InfoPal/panel/QZGPPaletteUI.h"
#include "InfoPal/readout/PixelDisplayMode.h"
#include "InfoPal/readout/TextLinesSink.h"
#include "host/M_Vector.h"
#include "host/PF_Pixel.h"
#include "kitui/controls/UI_PictureSupplyMessage.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/ui/UI_Describable.h"

namespace kitui::controls {
class UI_SwatchRect;
} // namespace kitui::controls

namespace infopal {

/// What the panel shows below its pixel block.
enum class DisplayState : std::int32_t { Nothing = 0, TextLines = 1, PixelReadout = 2 };

class InfoPal_UI : public QZGPPaletteUI, public TextLinesSink, public kitui::ui::UI_Describable {
public:
    /// Registers the panel with the plug-in object, builds the 23 controls, places them by
    /// the localised layout resource and arranges them in the panel.
    InfoPal_UI(kitui::ui::UI_Node* parent,
               const kitworkspace::workspace::TabPanelCreationArgs* args,
               const kitcore::utility::UTF16String& title, std::uint32_t options, bool flag);
    /// Unregisters the panel from the plug-in object.
    ~InfoPal_UI() override;

    // Text lines.
    void ShowTextLines(const kitcore::utility::UTF16String& line1,
                       const kitcore::utility::UTF16String& line2,
                       const kitcore::utility::UTF16String& line3,
                       const kitcore::utility::UTF16String& line4,
                       const kitcore::utility::UTF16String& line5, TextLinesType type) override;
    /// [ui-thread] Sets, keeps or (with null) cancels the one-shot first-line suffix.
    void SetFirstLineSuffix(const char* text);
    const std::array<kitcore::utility::UTF16String, 5>& StoredLines() const noexcept {
        return lines_;
    }
    TextLinesType CurrentTextLinesType() const noexcept { return type_; }
    bool HasPendingTextUpdate() const noexcept { return !pendingText_.empty(); }
    DisplayState GetDisplayState() const noexcept { return displayState_; }
    double CachedReadoutValue() const noexcept { return cachedReadout_; }

    // Pixel readout.
    /// [any-thread] Stores the pointer's pixel, position and origin (any may be null); off
    /// the UI thread their values are copied and posted to the main thread, where they
    /// reach this panel if it is still the plug-in object's panel.
    void UpdatePixelInfo(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                         const M_Vector2T<double>* origin);
    /// [ui-thread] Shows one delivery, or keeps it (the latest only) until the panel is
    /// visible again.
    void UpdatePixelInfo(const PixelDelivery& delivery);
    /// [ui-thread] Redraws the pixel block from the stored pixel, position and origin:
    /// channel labels, swatch (as the monitor shows the colour), values, X/Y and X'/Y'.
    void RefreshPixelReadout();
    /// Whether a delivery that arrived while the panel was not visible waits to be shown.
    bool HasPendingPixelUpdate() const noexcept { return !pendingPixel_.empty(); }
    /// The untransformed pixel last delivered.
    const PF_PixelFloat& GetPixel() const noexcept { return pixel_; }
    const M_Vector2T<double>& GetPosition() const noexcept { return position_; }
    const M_Vector2T<double>& GetOrigin() const noexcept { return origin_; }

    /// [ui-thread] The label of control `number` (3 to 6, 11 to 14) in the current mode;
    /// any other number gives `fallback`.
    kitcore::utility::UTF16String
    ControlLabelText(std::size_t number, const kitcore::utility::UTF16String& fallback) const;
    PixelDisplayMode GetPixelDisplayMode() const noexcept { return mode_; }
    PixelDisplayMode GetPreviousPixelDisplayMode() const noexcept { return previousMode_; }

    /// [ui-thread] The eight colour notations, the current one checked.
    void PopulateFlyoutMenu(kitworkspace::workspace::FlyoutMenu& menu) override;
    /// [ui-thread] Commands 50 to 57 choose a notation; any other is not the panel's.
    bool DoFlyoutMenuCommand(std::int32_t command) override;
    /// [ui-thread] Makes `mode` (pixel_mode::kStored: the one in the preference file) the
    /// current notation, clears the stored pixel, writes the preference and refreshes.
    /// A preference error is thrown as its integer code.
    void SetPixelDisplayMode(PixelDisplayMode mode);

    /// [ui-thread] The layout number of the control that sent `message`; a sender that is
    /// not a control view raises the toolkit's type-conversion error. A control outside
    /// the panel's layout gives kCount.
    std::size_t ControlNumberOf(const kitui::controls::UI_ControlMessage& message) const;

    /// Runs the pending updates when the panel has just become visible.
    void UI_NodeChanged(const kitui::ui::NodeChange& change) override;
    /// Re-arranges the controls in the new rectangle, then lets the base resize.
    void UI_LocalRectChanged(const kitui::ui::RectT<float>& local) override;
    /// Reports the display mode, the text-lines type and lines, the minimum size, the
    /// plug-in object's flag and the swatch colour.
    void UI_Describe(kitui::ui::UI_Description& out) const override;
    /// The panel kind that the palette base asks for.
    virtual std::int32_t GetPaletteKind() const { return 5058; }

    /// [ui-thread] Stores a delivery on a panel that the caller found shown, and
    /// refreshes the pixel block.
    virtual void ApplyPixelDelivery(const PixelDelivery& delivery);

protected:
    /// Runs the pending text-lines update, then the pending pixel update.
    virtual void RefreshOnShow();

private:
    /// Makes the notation in the preference file, if any, the current one.
    void LoadStoredPixelDisplayMode();
    void CreateControls();
    /// The text controls by layout number (null for controls of another kind) and the
    /// swatch, as found in the controls container.
    struct ResolvedControls {
        std::array<kitui::controls::UI_StaticText*, control::kCount> text{};
        kitui::controls::UI_SwatchRect* swatch = nullptr;
    };
    /// [ui-thread] The controls, looked up again only when the panel's or the container's
    /// children changed since the last lookup. A control that is missing or of another
    /// class raises the toolkit's type-conversion error.
    const ResolvedControls& Controls() const;
    /// [ui-thread] The text control `number`; the type-conversion error when it is none.
    kitui::controls::UI_StaticText& TextControl(std::size_t number) const;
    void ArrangeControls(const kitui::ui::RectT<float>& rect);
    void ChangeTextLinesType();
    void RedrawTextLines();
    void SetTextRow(std::size_t number, const kitcore::utility::UTF16String& text, bool alert);

    /// Fills the value fields 7 to 10 from the stored pixel in the current notation.
    void UpdateColorValues();
    /// Sets value field `number` to `text` and invalidates it.
    void SetValueField(std::size_t number, const kitcore::utility::UTF16String& text);
    void UpdateSwatch();
    void UpdatePositionValues();
    void UpdateOriginValues();
    /// Sets field `number` to the decimal text of `value` and invalidates it; gives the field.
    kitui::controls::UI_StaticText& SetNumberField(std::size_t number, std::int32_t value);
    void SupplyCrosshairPicture(kitui::controls::UI_PictureSupplyMessage& message);
    void HandleControlMessage(kitui::controls::UI_ControlMessage& message);

    std::array<kitcore::utility::UTF16String, 5> lines_;
    TextLinesType type_ = TextLinesType::Three;
    bool suffixPending_ = false;
    kitcore::utility::UTF16String suffix_;
    DisplayState displayState_ = DisplayState::Nothing;
    // Host contract: required, though nothing here uses it.
    double cachedReadout_ = 0.0;
    boost::function<void()> pendingText_;
    boost::function<void()> pendingPixel_;

    PF_PixelFloat pixel_{0, 0, 0, 0};
    M_Vector2T<double> position_{0, 0};
    M_Vector2T<double> origin_{0, 0};
    PF_PixelFloat previousPixel_{0, 0, 0, 0};
    // Host contract: required, though nothing here uses it.
    M_Vector2T<double> previousPosition_{0, 0};
    M_Vector2T<double> previousOrigin_{0, 0};
    PixelDisplayMode mode_ = pixel_mode::kAuto;
    PixelDisplayMode previousMode_ = pixel_mode::kAuto;
    // The one buffer that the four channel texts are formatted into in turn (emptied at
    // the start of each refresh, so that a notation without a rule leaves the fields
    // empty), and the text of a position field.
    kitcore::utility::UTF16String channelText_;
    kitcore::utility::UTF16String numberText_;
    // The registration number that the plug-in object gave this panel (0: none): pixel
    // deliveries posted from other threads carry it, and reach the panel only while it is
    // still the registered one.
    std::uint64_t serial_ = 0;
    // The controls as last looked up, and the child lists' versions at that time.
    mutable ResolvedControls resolved_;
    mutable const kitui::ui::UI_Node* resolvedContainer_ = nullptr;
    mutable std::uint64_t resolvedPanelVersion_ = 0;
    mutable std::uint64_t resolvedContainerVersion_ = 0;
};

} // namespace infopal
