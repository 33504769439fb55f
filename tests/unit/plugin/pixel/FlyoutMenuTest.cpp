// The panel's flyout menu of colour notations, the notation kept in the preference file,
// and the crosshair picture.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "PixelTestSupport.h"
#include "kitui/controls/UI_StaticImage.h"
#include "qzhost/ImageCanvas.h"
#include "qzhost/PreferenceFile.h"

namespace pixel_test {
namespace {

using kitworkspace::workspace::FlyoutMenu;

struct Item {
    std::string text;
    std::int32_t command;
    bool checked;
    bool enabled;
    friend bool operator==(const Item&, const Item&) = default;
};

std::ostream& operator<<(std::ostream& out, const Item& item) {
    return out << "{" << item.text << ", " << item.command << ", " << item.checked << ", "
               << item.enabled << "}";
}

std::vector<Item> Items(const FlyoutMenu& menu) {
    std::vector<Item> items;
    for (const FlyoutMenu::Item& item : menu.GetItems()) {
        items.push_back(Item{qzhost::strings::Utf16ToUtf8(item.text), item.command, item.checked,
                             item.enabled});
    }
    return items;
}

// The menu's texts and commands, with the check mark at `checked` (none when -1).
std::vector<Item> Expected(int checked) {
    const std::pair<const char*, std::int32_t> rows[] = {{"Auto Color Display", 50},
                                                         {"Percent", 51},
                                                         {"Web", 52},
                                                         {"HSB", 53},
                                                         {"8-bpc (0-255)", 54},
                                                         {"10-bpc (0-1023)", 55},
                                                         {"16-bpc (0-32768)", 56},
                                                         {"Decimal (0.0-1.0)", 57}};
    std::vector<Item> items;
    for (int i = 0; i < 8; ++i) {
        items.push_back(Item{rows[i].first, rows[i].second, i == checked, true});
    }
    return items;
}

class FlyoutMenuTest : public PanelTest {
protected:
    std::vector<Item> Populate() {
        FlyoutMenu menu;
        Panel()->PopulateFlyoutMenu(menu);
        return Items(menu);
    }
};

TEST_F(FlyoutMenuTest, AFreshPreferenceFileStartsInAutoAndWritesNothing) {
    Open();
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 0);
    EXPECT_EQ(Populate(), Expected(0));
    EXPECT_FALSE(StoredPreference().has_value());
}

TEST_F(FlyoutMenuTest, PopulatingReplacesWhatTheMenuHeld) {
    Open();
    FlyoutMenu menu;
    menu.AppendItem(u"stale");
    Panel()->PopulateFlyoutMenu(menu);
    EXPECT_EQ(Items(menu), Expected(0));
}

TEST_F(FlyoutMenuTest, EachCommandStoresItsModeAndMovesTheCheckMark) {
    Open();
    const struct {
        std::int32_t command;
        long mode;
        int position;
    } cases[] = {{53, 7, 3}, {55, 6, 5}, {51, 1, 1}, {52, 2, 2},
                 {54, 3, 4}, {56, 4, 6}, {57, 5, 7}, {50, 0, 0}};
    for (const auto& c : cases) {
        EXPECT_TRUE(Panel()->DoFlyoutMenuCommand(c.command));
        EXPECT_EQ(StoredPreference(), std::optional<long>(c.mode)) << c.command;
        EXPECT_EQ(Panel()->GetPixelDisplayMode(), c.mode);
        EXPECT_EQ(Populate(), Expected(c.position)) << c.command;
    }
}

TEST_F(FlyoutMenuTest, CommandsOutsideTheMenuAreRefusedWithoutPreferenceAccess) {
    Open();
    auto& host = qzhost::HostControls::Get();
    host.SetError("pref_exists", 44);
    host.SetError("pref_write", 45);
    for (std::int32_t command : {49, 58, 0, -50}) {
        EXPECT_FALSE(Panel()->DoFlyoutMenuCommand(command)) << command;
    }
    host.SetError("pref_exists", 0);
    host.SetError("pref_write", 0);
    EXPECT_FALSE(StoredPreference().has_value());
    EXPECT_TRUE(host.RefreshWindowsCalls().empty());
}

TEST_F(FlyoutMenuTest, ChoosingTheCurrentModeWritesClearsThePixelAndRefreshes) {
    Open();
    Choose(kBpc8Command);
    ASSERT_EQ(Deliver(Pixel(1, 1, 1, 1)), 0);
    ASSERT_EQ(Text(7), "255");
    StorePreference(2); // changed behind the panel's back
    const std::size_t refreshes = qzhost::HostControls::Get().RefreshWindowsCalls().size();

    Choose(kBpc8Command);
    EXPECT_EQ(StoredPreference(), std::optional<long>(3));
    EXPECT_EQ(Panel()->GetPixel().red, 0.0f);
    EXPECT_EQ(Panel()->GetPixel().alpha, 0.0f);
    EXPECT_EQ(Values(), (std::array<std::string, 4>{"", "", "", "0"}));
    const auto& calls = qzhost::HostControls::Get().RefreshWindowsCalls();
    ASSERT_EQ(calls.size(), refreshes + 1);
    EXPECT_EQ(calls.back(), static_cast<short>(-32766));
}

TEST_F(FlyoutMenuTest, AModeChangeLeavesThePreviousModeCaughtUpAfterTheRefresh) {
    Open();
    Choose(kWebCommand);
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 2);
    EXPECT_EQ(Panel()->GetPreviousPixelDisplayMode(), 2);
}

TEST_F(FlyoutMenuTest, StoredModeKeepsTheModeInThePreferenceFile) {
    Open();
    StorePreference(6);
    Panel()->SetPixelDisplayMode(infopal::pixel_mode::kStored);
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 6);
    EXPECT_EQ(StoredPreference(), std::optional<long>(6));
}

TEST_F(FlyoutMenuTest, StoredModeWithoutAKeyIsWrittenAsMinusOne) {
    Open();
    Panel()->SetPixelDisplayMode(infopal::pixel_mode::kStored);
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 65535);
    EXPECT_EQ(StoredPreference(), std::optional<long>(-1));
    EXPECT_EQ(Populate(), Expected(-1));
}

TEST_F(FlyoutMenuTest, AWriteErrorIsThrownAfterTheModeChanged) {
    Open();
    qzhost::HostControls::Get().SetError("pref_write", 31);
    try {
        Panel()->DoFlyoutMenuCommand(kHSBCommand);
        ADD_FAILURE() << "no error";
    } catch (QZ_Err code) {
        EXPECT_EQ(code, 31);
    }
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 7);
    EXPECT_TRUE(qzhost::HostControls::Get().RefreshWindowsCalls().empty());
}

TEST_F(FlyoutMenuTest, AReadErrorIsThrownBeforeAnythingChanged) {
    Open();
    StorePreference(1);
    qzhost::HostControls::Get().SetError("pref_read", 32);
    try {
        Panel()->DoFlyoutMenuCommand(kHSBCommand);
        ADD_FAILURE() << "no error";
    } catch (QZ_Err code) {
        EXPECT_EQ(code, 32);
    }
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 0);
    qzhost::HostControls::Get().SetError("pref_read", 0);
    EXPECT_EQ(StoredPreference(), std::optional<long>(1));
}

TEST_F(FlyoutMenuTest, ANewPanelStartsInTheStoredMode) {
    StorePreference(7);
    Open();
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 7);
    EXPECT_EQ(Panel()->GetPreviousPixelDisplayMode(), 7);
    EXPECT_EQ(Labels(), (std::array<std::string, 4>{"H :", "S :", "B :", "A :"}));
    EXPECT_EQ(Populate(), Expected(3));
}

TEST_F(FlyoutMenuTest, AnOutOfRangeStoredModeMarksNoItemAndShowsNoValues) {
    StorePreference(9);
    Open();
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 9);
    EXPECT_EQ(Populate(), Expected(-1));
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    EXPECT_EQ(Values(), (std::array<std::string, 4>{"", "", "", ""}));
}

TEST_F(FlyoutMenuTest, APreferenceErrorAbortsThePanelsConstruction) {
    StorePreference(3);
    qzhost::HostControls::Get().SetError("pref_read", 33);
    try {
        qzhost::WorkspaceModel::Get().Open(kTab);
        ADD_FAILURE() << "no error";
    } catch (QZ_Err code) {
        EXPECT_EQ(code, 33);
    }
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_EQ(qzhost::WorkspaceModel::Get().Panel(kTab), nullptr);

    qzhost::HostControls::Get().SetError("pref_read", 0);
    qzhost::HostControls::Get().SetError("pref_exists", 34);
    EXPECT_THROW(qzhost::WorkspaceModel::Get().Open(kTab), QZ_Err);
    EXPECT_EQ(Panel(), nullptr);
}

TEST_F(FlyoutMenuTest, AChosenModeIsThereInTheNextHostRun) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                         ("infopal-pixel-prefs-" + std::to_string(::getpid()));
    const std::filesystem::path file = folder / "preferences.txt";
    std::filesystem::remove_all(folder);
    qzhost::SetPreferenceFile(file);
    Open();
    Choose(kBpc10Command);

    // The host goes down and starts again on the same file.
    ASSERT_EQ(Death(), 0);
    qztest::ResetHost();
    ASSERT_FALSE(StoredPreference().has_value()); // a reset host has a new, empty store
    qzhost::SetPreferenceFile(file);
    ASSERT_EQ(Load(), 0);
    Open();
    EXPECT_EQ(Panel()->GetPixelDisplayMode(), 6);
    EXPECT_EQ(Populate(), Expected(5));
    qzhost::UsePrivatePreferenceFile();
    std::filesystem::remove_all(folder);
}

// The crosshair picture

class CrosshairPicture : public PanelTest {};

TEST_F(CrosshairPicture, ControlTwoGetsItsPictureInBothStates) {
    Open();
    auto& image = Panel()->GetControl<kitui::controls::UI_StaticImage>(2);
    qzhost::ImageCanvas canvas(34, 34, 2.0);
    for (std::uint32_t state :
         {kitui::controls::picture_state::kNormal, kitui::controls::picture_state::kSelected}) {
        image.SetPictureState(state);
        const auto picture = image.UI_RequestPicture(canvas.GetInkwell().GetSupplier(), 2.0f);
        EXPECT_TRUE(picture) << "state " << state;
    }
}

TEST_F(CrosshairPicture, ARequestFromAnyOtherControlGetsNoPicture) {
    Open();
    auto& image = Panel()->GetControl<kitui::controls::UI_StaticImage>(2);
    qzhost::ImageCanvas canvas(17, 17, 1.0);
    auto* supplier = canvas.GetInkwell().GetSupplier();
    for (std::size_t number : {0, 1, 7, 19, 22}) {
        kitui::controls::UI_PictureSupplyMessage message(
            Panel()->GetControlsContainer(0)->UI_GetChild(number), 0, supplier, 1.0f);
        image.GetPictureSupplyHandler()->HandleMessage(message);
        EXPECT_FALSE(message.GetImage()) << number;
    }
    kitui::controls::UI_PictureSupplyMessage own(&image, 0, supplier, 1.0f);
    image.GetPictureSupplyHandler()->HandleMessage(own);
    EXPECT_TRUE(own.GetImage());
}

TEST_F(CrosshairPicture, TheControlMessageHandlerAnswersPictureRequestsToo) {
    Open();
    auto& image = Panel()->GetControl<kitui::controls::UI_StaticImage>(2);
    qzhost::ImageCanvas canvas(17, 17, 1.0);
    kitui::controls::UI_PictureSupplyMessage message(&image, 0, canvas.GetInkwell().GetSupplier(),
                                                     1.0f);
    EXPECT_TRUE(image.GetControlMessageHandler()->HandleMessage(message));
    EXPECT_TRUE(message.GetImage());
}

TEST_F(CrosshairPicture, ASenderThatIsNotAControlIsATypeConversionError) {
    Open();
    kitui::ui::UI_Node stray;
    kitui::controls::UI_ControlMessage message(&stray,
                                               kitui::controls::UI_ControlMessage::kClicked);
    EXPECT_ANY_THROW((void)Panel()->ControlNumberOf(message));
    kitui::controls::UI_ControlMessage from_value(Panel()->GetControlsContainer(0)->UI_GetChild(9),
                                                  kitui::controls::UI_ControlMessage::kClicked);
    EXPECT_EQ(Panel()->ControlNumberOf(from_value), 9U);
}

} // namespace
} // namespace pixel_test
