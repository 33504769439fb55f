// The Info panel: the pixel block (channel labels and values, swatch, X/Y and X'/Y'), and
// three full-width text rows for the text lines.
#pragma once

#include <array>
#include <cstdint>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include "InfoPal/panel/QZGPPaletteUI.h"
#include "InfoPal/suite/TextLinesSink.h"
#include "host/M_Vector.h"
#include "host/PF_Pixel.h"
#include "kitui/ui/UI_Describable.h"

namespace infopal {

/// Layout numbers of the Info panel's controls.
namespace control {
inline constexpr std::size_t kHorizontalDivider = 0;
inline constexpr std::size_t kVerticalDivider = 1;
inline constexpr std::size_t kCrosshair = 2;
inline constexpr std::size_t kChannelLabel1 = 3; // to 6
inline constexpr std::size_t kChannelValue1 = 7; // to 10
inline constexpr std::size_t kXLabel = 11;
inline constexpr std::size_t kYLabel = 12;
inline constexpr std::size_t kXPrimeLabel = 13;
inline constexpr std::size_t kYPrimeLabel = 14;
inline constexpr std::size_t kXValue = 15;
inline constexpr std::size_t kYValue = 16;
inline constexpr std::size_t kXPrimeValue = 17;
inline constexpr std::size_t kYPrimeValue = 18;
inline constexpr std::size_t kSwatch = 19;
inline constexpr std::size_t kTextLine1 = 20; // to 22
inline constexpr std::size_t kCount = 23;
} // namespace control

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
    /// the UI thread the call is posted to the main thread with the same pointers.
    void UpdatePixelInfo(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                         const M_Vector2T<double>* origin);
    /// The untransformed pixel last delivered.
    const PF_PixelFloat& GetPixel() const noexcept { return pixel_; }
    const M_Vector2T<double>& GetPosition() const noexcept { return position_; }
    const M_Vector2T<double>& GetOrigin() const noexcept { return origin_; }

    /// [ui-thread] The label of control `number` (3 to 6, 11 to 14) in the current mode;
    /// any other number gives `fallback`.
    kitcore::utility::UTF16String
    ControlLabelText(std::size_t number, const kitcore::utility::UTF16String& fallback) const;
    std::uint16_t GetPixelDisplayMode() const noexcept { return mode_; }

    /// Runs the pending updates when the panel has just become visible.
    void UI_NodeChanged(const kitui::ui::NodeChange& change) override;
    /// Re-arranges the controls in the new rectangle, then lets the base resize.
    void UI_LocalRectChanged(const kitui::ui::RectT<float>& local) override;
    /// Reports the display mode, the text-lines type and lines, the minimum size, the
    /// plug-in object's flag and the swatch colour.
    void UI_Describe(kitui::ui::UI_Description& out) const override;
    /// The panel kind that the palette base asks for.
    virtual std::int32_t GetPaletteKind() const { return 5058; }

protected:
    /// Runs the pending text-lines update, then the pending pixel update.
    virtual void RefreshOnShow();

private:
    void CreateControls();
    void ArrangeControls(const kitui::ui::RectT<float>& rect);
    void ChangeTextLinesType();
    void RedrawTextLines();
    void SetTextRow(std::size_t number, const kitcore::utility::UTF16String& text, bool alert);
    bool IsVisibleForUpdates() const;

    std::array<kitcore::utility::UTF16String, 5> lines_;
    TextLinesType type_ = TextLinesType::Three;
    bool suffixPending_ = false;
    kitcore::utility::UTF16String suffix_;
    DisplayState displayState_ = DisplayState::Nothing;
    double cachedReadout_ = 0.0;
    boost::function<void()> pendingText_;
    boost::function<void()> pendingPixel_;

    PF_PixelFloat pixel_{0, 0, 0, 0};
    M_Vector2T<double> position_{0, 0};
    M_Vector2T<double> origin_{0, 0};
    std::uint16_t mode_ = 0;
};

} // namespace infopal
