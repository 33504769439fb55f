// Helpers of the pixel readout tests: a loaded plug-in with its Info panel open in the
// default host, the panel's controls by layout number, and suite calls.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

#include "HostFixture.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "host/PREF_Preferences.h"
#include "kitui/controls/UI_StaticText.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/UnicodeText.h"

namespace pixel_test {

inline constexpr const char* kTab = "QZGP_Info";
inline constexpr const char* kPrefSection = "Misc Section";
inline constexpr const char* kPrefKey = "Info Palette Pixel Display";

inline PF_PixelFloat Pixel(float a, float r, float g, float b) {
    return PF_PixelFloat{a, r, g, b};
}

/// The plug-in loaded and its panel open and visible.
class PanelTest : public qztest::HostFixture {
protected:
    void SetUp() override {
        HostFixture::SetUp();
        ASSERT_EQ(Load(), 0);
    }

    /// Opens the panel (the workspace creates it) and returns it.
    infopal::InfoPal_UI& Open() {
        qzhost::WorkspaceModel::Get().Open(kTab);
        auto* panel = dynamic_cast<infopal::InfoPal_UI*>(infopal::InfoPal::GetPlugin()->GetPanel());
        EXPECT_NE(panel, nullptr);
        return *panel;
    }

    infopal::InfoPal_UI* Panel() const {
        infopal::InfoPal* plugin = infopal::InfoPal::GetPlugin();
        return plugin == nullptr ? nullptr : dynamic_cast<infopal::InfoPal_UI*>(plugin->GetPanel());
    }

    kitui::controls::UI_StaticText& Field(std::size_t number) const {
        return Panel()->GetControl<kitui::controls::UI_StaticText>(number);
    }
    /// The text of static text `number`, as UTF-8.
    std::string Text(std::size_t number) const {
        return qzhost::strings::Utf16ToUtf8(Field(number).GetValue());
    }
    /// The texts of the four value fields 7 to 10.
    std::array<std::string, 4> Values() const { return {Text(7), Text(8), Text(9), Text(10)}; }
    /// The texts of the four channel labels 3 to 6.
    std::array<std::string, 4> Labels() const { return {Text(3), Text(4), Text(5), Text(6)}; }

    const QZ_InfoPaletteSuite2& Suite() const {
        const void* table = nullptr;
        EXPECT_EQ(qzhost::SuiteRegistry::Get().HostTable()->AcquireSuite(
                      kQZ_InfoPaletteSuite, kQZ_InfoPaletteSuiteVersion2, &table),
                  0);
        // The host keeps the table for the whole test; the acquisition is given back at
        // once so that nothing stays held.
        qzhost::SuiteRegistry::Get().HostTable()->ReleaseSuite(kQZ_InfoPaletteSuite,
                                                               kQZ_InfoPaletteSuiteVersion2);
        return *static_cast<const QZ_InfoPaletteSuite2*>(table);
    }

    /// Slot 4 on the calling thread.
    QZ_Err Deliver(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                   const M_Vector2T<double>* origin) {
        return Suite().SetPixelInfo(pixel, position, origin);
    }
    QZ_Err Deliver(PF_PixelFloat pixel, M_Vector2T<double> position = {0, 0}) {
        return Deliver(&pixel, &position, nullptr);
    }

    /// The notation chosen through the panel's flyout command for `mode`.
    void Choose(std::int32_t command) { ASSERT_TRUE(Panel()->DoFlyoutMenuCommand(command)); }

    /// The preference as the store has it: nullopt when the key is absent.
    static std::optional<long> StoredPreference() {
        PREF_Handle prefs = PREF_GetPrefHandle(PREF_TYPE_TEXT);
        bool exists = false;
        EXPECT_EQ(PREF_DoesKeyExist(prefs, kPrefSection, kPrefKey, &exists), 0);
        if (!exists) {
            return std::nullopt;
        }
        long value = 0;
        EXPECT_EQ(PREF_GetTextPrefLong(prefs, kPrefSection, kPrefKey, 0, &value), 0);
        return value;
    }
    static void StorePreference(long value) {
        ASSERT_EQ(
            PREF_SetTextPrefLong(PREF_GetPrefHandle(PREF_TYPE_TEXT), kPrefSection, kPrefKey, value),
            0);
    }
};

// Flyout commands by notation.
inline constexpr std::int32_t kAutoCommand = 50;
inline constexpr std::int32_t kPercentCommand = 51;
inline constexpr std::int32_t kWebCommand = 52;
inline constexpr std::int32_t kHSBCommand = 53;
inline constexpr std::int32_t kBpc8Command = 54;
inline constexpr std::int32_t kBpc10Command = 55;
inline constexpr std::int32_t kBpc16Command = 56;
inline constexpr std::int32_t kDecimalCommand = 57;

} // namespace pixel_test
