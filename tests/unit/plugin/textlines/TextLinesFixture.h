// A loaded plug-in with its Info panel open, the published suite acquired the way other
// host components acquire it, and helpers that read the panel's three text rows.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

#include "HostFixture.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "kitui/controls/UI_StaticText.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/UnicodeText.h"

namespace textlines_test {

using kitcore::utility::UTF16String;

inline std::string Utf8(const UTF16String& text) {
    return qzhost::strings::Utf16ToUtf8(text);
}
inline UTF16String Utf16(const std::string& text) {
    return qzhost::strings::Utf8ToUtf16(text);
}

inline constexpr const char* kTab = "QZGP_Info";

class TextLinesFixture : public qztest::HostFixture {
protected:
    void SetUp() override {
        HostFixture::SetUp();
        ASSERT_EQ(Load(), 0);
        const void* table = nullptr;
        ASSERT_EQ(qzhost::SuiteRegistry::Get().Acquire(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                                       kQZ_InfoPaletteSuiteVersion2, &table),
                  0);
        suite_ = static_cast<const QZ_InfoPaletteSuite2*>(table);
        ASSERT_NE(suite_, nullptr);
    }

    void TearDown() override {
        if (suite_ != nullptr) {
            qzhost::SuiteRegistry::Get().Release(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                                 kQZ_InfoPaletteSuiteVersion2);
        }
        HostFixture::TearDown();
    }

    const QZ_InfoPaletteSuite2& Suite() const { return *suite_; }

    /// Opens the panel as the user does and returns it.
    infopal::InfoPal_UI& OpenPanel() {
        qzhost::WorkspaceModel::Get().Open(kTab);
        infopal::InfoPal_UI* panel = Panel();
        EXPECT_NE(panel, nullptr);
        return *panel;
    }

    /// The open panel, or null.
    static infopal::InfoPal_UI* Panel() {
        infopal::InfoPal* plugin = infopal::InfoPal::GetPlugin();
        return plugin != nullptr ? dynamic_cast<infopal::InfoPal_UI*>(plugin->GetPanel()) : nullptr;
    }

    static kitui::controls::UI_StaticText& Row(infopal::InfoPal_UI& panel, int row) {
        return panel.GetControl<kitui::controls::UI_StaticText>(infopal::control::kTextLine1 +
                                                                static_cast<std::size_t>(row));
    }

    /// The texts of the three rows, as UTF-8.
    static std::array<std::string, 3> Rows(infopal::InfoPal_UI& panel) {
        return {Utf8(Row(panel, 0).GetValue()), Utf8(Row(panel, 1).GetValue()),
                Utf8(Row(panel, 2).GetValue())};
    }

    /// The five stored lines, as UTF-8.
    static std::array<std::string, 5> Lines(const infopal::InfoPal_UI& panel) {
        std::array<std::string, 5> lines;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            lines[i] = Utf8(panel.StoredLines()[i]);
        }
        return lines;
    }

    /// How many times the three rows were invalidated so far, together.
    static std::uint64_t RowInvalidations(infopal::InfoPal_UI& panel) {
        return Row(panel, 0).UI_InvalidationCount() + Row(panel, 1).UI_InvalidationCount() +
               Row(panel, 2).UI_InvalidationCount();
    }

    static std::uint32_t Type(const infopal::InfoPal_UI& panel) {
        return static_cast<std::uint32_t>(panel.CurrentTextLinesType());
    }

    const QZ_InfoPaletteSuite2* suite_ = nullptr;
};

using Rows3 = std::array<std::string, 3>;
using Lines5 = std::array<std::string, 5>;

} // namespace textlines_test
