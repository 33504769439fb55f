// The pixel readout of the Info panel fed through suite slot 4: colour values in each
// notation, swatch, labels, X/Y and X'/Y', deliveries from other threads and while the
// panel is hidden, and slot 3.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

#include "InfoPal/controls/UI_SwatchRect.h"
#include "PixelTestSupport.h"

namespace pixel_test {
namespace {

using Four = std::array<std::string, 4>;
using infopal::DisplayState;

class PixelReadout : public PanelTest {
protected:
    void SetUp() override {
        PanelTest::SetUp();
        Open();
    }
    kitui::inkwell::ColorRGBA Swatch() const {
        return Panel()->GetControl<kitui::controls::UI_SwatchRect>(19).color;
    }
    bool Shown(std::size_t number) const { return Field(number).UI_IsShown(); }
    std::uint64_t Invalidations(std::size_t number) const {
        return Field(number).UI_InvalidationCount();
    }
};

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// Colour values

TEST_F(PixelReadout, EightBitNotationShowsEachChannelAndAlpha) {
    Choose(kBpc8Command);
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    EXPECT_EQ(Values(), (Four{"255", "128", "0", "255"}));
}

TEST_F(PixelReadout, EveryNotationFormatsTheSamePixel) {
    const PF_PixelFloat pixel = Pixel(0.5f, 1.0f, 0.25f, -0.5f);
    const struct {
        std::int32_t command;
        Four values;
    } cases[] = {
        {kAutoCommand, {"255", "64", "-128", "128"}},
        {kPercentCommand, {"100.0%", "25.0%", "-50.0%", "50.0%"}},
        {kWebCommand, {"FF", "40", "FFFFFF80", "80"}},
        {kBpc8Command, {"255", "64", "-128", "128"}},
        {kBpc10Command, {"1023", "256", "-512", "512"}},
        {kBpc16Command, {"32768", "8192", "-16384", "16384"}},
        {kDecimalCommand, {"1.0000", "0.2500", "-0.5000", "0.5000"}},
        {kHSBCommand, {"30", "150%", "100%", "50%"}},
    };
    for (const auto& c : cases) {
        Choose(c.command);
        ASSERT_EQ(Deliver(pixel), 0);
        EXPECT_EQ(Values(), c.values) << "command " << c.command;
    }
}

TEST_F(PixelReadout, GermanNotationsUseTheDecimalComma) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    const PF_PixelFloat pixel = Pixel(0.5f, 1.0f, 0.2f / 3.0f * 10.0f, -0.125f);
    Choose(kPercentCommand);
    ASSERT_EQ(Deliver(pixel), 0);
    EXPECT_EQ(Values(), (Four{"100,0%", "66,7%", "-12,5%", "50,0%"}));
    Choose(kDecimalCommand);
    ASSERT_EQ(Deliver(pixel), 0);
    EXPECT_EQ(Values(), (Four{"1,0000", "0,6667", "-0,1250", "0,5000"}));
    Choose(kHSBCommand);
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.4f, 0.4f)), 0);
    // Saturation 60%, brightness 100%; two thirds show one decimal.
    EXPECT_EQ(Values(), (Four{"0", "60%", "100%", "100%"}));
    ASSERT_EQ(Deliver(Pixel(1, 0.9f, 0.3f, 0.3f)), 0);
    EXPECT_EQ(Values(), (Four{"0", "66,7%", "90%", "100%"}));
}

TEST_F(PixelReadout, HSBShowsHueSaturationAndBrightness) {
    Choose(kHSBCommand);
    const struct {
        PF_PixelFloat pixel;
        Four values;
    } cases[] = {
        {Pixel(1, 1, 0, 0), {"0", "100%", "100%", "100%"}},
        {Pixel(1, 0, 1, 0), {"120", "100%", "100%", "100%"}},
        {Pixel(1, 0, 0, 1), {"240", "100%", "100%", "100%"}},
        // Hue -30 becomes 330.
        {Pixel(1, 1, 0, 0.5f), {"330", "100%", "100%", "100%"}},
        {Pixel(1, 0.5f, 0.5f, 0.5f), {"0", "0%", "50%", "100%"}},
        {Pixel(1, 0, 0, 0), {"0", "0%", "0%", "100%"}},
        // Brightness is not clamped.
        {Pixel(0.25f, 2, 2, 2), {"0", "0%", "200%", "25%"}},
    };
    for (const auto& c : cases) {
        ASSERT_EQ(Deliver(c.pixel), 0);
        EXPECT_EQ(Values(), c.values);
    }
}

TEST_F(PixelReadout, HSBAlphaIsAWholePercentageUnlikePercent) {
    Choose(kHSBCommand);
    ASSERT_EQ(Deliver(Pixel(0.5f, 1, 0, 0)), 0);
    EXPECT_EQ(Text(10), "50%");
    Choose(kPercentCommand);
    ASSERT_EQ(Deliver(Pixel(0.5f, 1, 0, 0)), 0);
    EXPECT_EQ(Text(10), "50.0%");
}

TEST_F(PixelReadout, AlphaZeroShowsOnlyTheAlphaInEveryNotation) {
    const struct {
        std::int32_t command;
        const char* alpha;
    } cases[] = {
        {kAutoCommand, "0"}, {kPercentCommand, "0.0%"},   {kWebCommand, "0"},
        {kBpc8Command, "0"}, {kBpc10Command, "0"},        {kBpc16Command, "0"},
        {kHSBCommand, "0%"}, {kDecimalCommand, "0.0000"},
    };
    for (const auto& c : cases) {
        Choose(c.command);
        ASSERT_EQ(Deliver(Pixel(1, 0.5f, 0.5f, 0.5f)), 0);
        ASSERT_NE(Text(7), "") << c.command;
        ASSERT_EQ(Deliver(Pixel(0, 0.5f, 0.5f, 0.5f)), 0);
        EXPECT_EQ(Values(), (Four{"", "", "", c.alpha})) << "command " << c.command;
    }
}

TEST_F(PixelReadout, AutoFollowsTheProjectDepth) {
    auto& host = qzhost::HostControls::Get();
    host.SetProjectDepth(1);
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    EXPECT_EQ(Values(), (Four{"32768", "16384", "0", "32768"}));
    host.SetProjectDepth(2);
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    EXPECT_EQ(Values(), (Four{"1.0000", "0.5000", "0.0000", "1.0000"}));
    host.SetProjectDepth(std::nullopt);
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    EXPECT_EQ(Values(), (Four{"255", "128", "0", "255"}));
}

TEST_F(PixelReadout, AutoWithAnUnknownDepthEmptiesTheFields) {
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    qzhost::HostControls::Get().SetProjectDepth(7);
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    EXPECT_EQ(Values(), (Four{"", "", "", ""}));
}

TEST_F(PixelReadout, AProjectQueryErrorIsTheSlotsResultAndLeavesTheValues) {
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    qzhost::HostControls::Get().SetError("project_query", 23);
    EXPECT_EQ(Deliver(Pixel(1, 0, 0, 1)), 23);
    EXPECT_EQ(Values(), (Four{"255", "128", "0", "255"}));
    qzhost::HostControls::Get().SetError("project_query", 0);
    EXPECT_EQ(Deliver(Pixel(1, 0, 0, 1)), 0);
    EXPECT_EQ(Values(), (Four{"0", "0", "255", "255"}));
}

TEST_F(PixelReadout, AnOutOfRangeModeEmptiesAllFourFields) {
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    Panel()->SetPixelDisplayMode(9);
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0)), 0);
    EXPECT_EQ(Values(), (Four{"", "", "", ""}));
    EXPECT_EQ(Labels(), (Four{"R :", "G :", "B :", "A :"}));
}

// Labels

TEST_F(PixelReadout, LabelsFollowTheNotation) {
    EXPECT_EQ(Labels(), (Four{"R :", "G :", "B :", "A :"}));
    Choose(kHSBCommand);
    EXPECT_EQ(Labels(), (Four{"H :", "S :", "B :", "A :"}));
    Choose(kWebCommand);
    EXPECT_EQ(Labels(), (Four{"R :", "G :", "B :", "A :"}));
}

TEST_F(PixelReadout, EveryRefreshSetsAndInvalidatesTheLabels) {
    const std::uint64_t before = Invalidations(3);
    ASSERT_EQ(Deliver(Pixel(1, 1, 1, 1)), 0);
    ASSERT_EQ(Deliver(Pixel(1, 1, 1, 1)), 0);
    EXPECT_EQ(Invalidations(3), before + 2);
    EXPECT_EQ(Invalidations(6), before + 2);
}

// Swatch

TEST_F(PixelReadout, SwatchIsOpaqueAndClampedWhileTheValuesShowTheOverRangePixel) {
    Choose(kBpc8Command);
    ASSERT_EQ(Deliver(Pixel(0.25f, 2.0f, -0.5f, 0.5f)), 0);
    const kitui::inkwell::ColorRGBA swatch = Swatch();
    EXPECT_EQ(swatch, (kitui::inkwell::ColorRGBA{1.0f, 0.0f, 0.5f, 1.0f}));
    EXPECT_EQ(Values(), (Four{"510", "-128", "128", "64"}));
}

TEST_F(PixelReadout, OverRangeRedWithLowAlphaGivesAnOpaquePureRedSwatch) {
    ASSERT_EQ(Deliver(Pixel(0.25f, 2.0f, 0, 0)), 0);
    EXPECT_EQ(Swatch(), (kitui::inkwell::ColorRGBA{1.0f, 0.0f, 0.0f, 1.0f}));
    EXPECT_EQ(Text(7), "510");
}

TEST_F(PixelReadout, SwatchShowsNotFiniteChannelsAsDefinedColours) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    ASSERT_EQ(Deliver(Pixel(nan, nan, inf, -inf)), 0);
    EXPECT_EQ(Swatch(), (kitui::inkwell::ColorRGBA{0.0f, 1.0f, 0.0f, 1.0f}));
}

TEST_F(PixelReadout, EveryDeliveryInvalidatesTheSwatch) {
    auto& swatch = Panel()->GetControl<kitui::controls::UI_SwatchRect>(19);
    const std::uint64_t before = swatch.UI_InvalidationCount();
    ASSERT_EQ(Deliver(Pixel(1, 0.2f, 0.2f, 0.2f)), 0);
    ASSERT_EQ(Deliver(Pixel(1, 0.2f, 0.2f, 0.2f)), 0);
    EXPECT_EQ(swatch.UI_InvalidationCount(), before + 2);
}

// Position and origin

TEST_F(PixelReadout, PositionsAreFlooredAndTheRelativeReadoutIsTheFloorOfTheDifference) {
    const PF_PixelFloat pixel = Pixel(1, 1, 1, 1);
    const M_Vector2T<double> position{15.7, 9.2};
    const M_Vector2T<double> origin{10, 10};
    ASSERT_EQ(Deliver(&pixel, &position, &origin), 0);
    EXPECT_EQ(Text(15), "15");
    EXPECT_EQ(Text(16), "9");
    EXPECT_EQ(Text(17), "5");
    EXPECT_EQ(Text(18), "-1");
    for (std::size_t number : {13, 14, 17, 18}) {
        EXPECT_TRUE(Shown(number)) << number;
    }
}

TEST_F(PixelReadout, NegativeHalvesFloorDownAndFractionsFloorToTheWholeBelow) {
    const M_Vector2T<double> position{-0.5, 3.99};
    ASSERT_EQ(Deliver(nullptr, &position, nullptr), 0);
    EXPECT_EQ(Text(15), "-1");
    EXPECT_EQ(Text(16), "3");
    const M_Vector2T<double> origin{0.5, -0.25};
    const M_Vector2T<double> at{1.0, 0.0};
    ASSERT_EQ(Deliver(nullptr, &at, &origin), 0);
    // floor(0.5) and floor(0.25), not floor(1) - floor(0.5) and floor(0) - floor(-0.25).
    EXPECT_EQ(Text(17), "0");
    EXPECT_EQ(Text(18), "0");
}

TEST_F(PixelReadout, NotFiniteAndHugePositionsShowTheSmallestInteger) {
    const M_Vector2T<double> cases[] = {
        {kNaN, -kInf}, {kInf, 1e300}, {3e9, -3e9}, {2147483648.0, -2147483649.0}};
    for (const auto& position : cases) {
        ASSERT_EQ(Deliver(nullptr, &position, nullptr), 0);
        EXPECT_EQ(Text(15), "-2147483648") << position.x;
        EXPECT_EQ(Text(16), "-2147483648") << position.y;
    }
    const M_Vector2T<double> edge{2147483647.5, -2147483648.0};
    ASSERT_EQ(Deliver(nullptr, &edge, nullptr), 0);
    EXPECT_EQ(Text(15), "2147483647");
    EXPECT_EQ(Text(16), "-2147483648");
    const M_Vector2T<double> origin{kNaN, 1};
    ASSERT_EQ(Deliver(nullptr, &edge, &origin), 0);
    EXPECT_EQ(Text(17), "-2147483648");
    EXPECT_TRUE(Shown(17));
}

TEST_F(PixelReadout, ANullPixelKeepsTheColourAndUpdatesThePosition) {
    Choose(kBpc8Command);
    ASSERT_EQ(Deliver(Pixel(1, 1, 0.5f, 0), {1, 2}), 0);
    const M_Vector2T<double> position{30.5, 40.5};
    ASSERT_EQ(Deliver(nullptr, &position, nullptr), 0);
    EXPECT_EQ(Values(), (Four{"255", "128", "0", "255"}));
    EXPECT_EQ(Text(15), "30");
    EXPECT_EQ(Text(16), "40");
    EXPECT_EQ(Panel()->GetPixel().green, 0.5f);
}

TEST_F(PixelReadout, ANullPositionKeepsThePosition) {
    ASSERT_EQ(Deliver(Pixel(1, 1, 1, 1), {7.5, 8.5}), 0);
    const PF_PixelFloat pixel = Pixel(1, 0, 0, 0);
    ASSERT_EQ(Deliver(&pixel, nullptr, nullptr), 0);
    EXPECT_EQ(Text(15), "7");
    EXPECT_EQ(Text(16), "8");
}

TEST_F(PixelReadout, ANullOriginHidesTheRelativeReadoutOnceAndThenLeavesItAlone) {
    const PF_PixelFloat pixel = Pixel(1, 1, 1, 1);
    const M_Vector2T<double> position{15.7, 9.2};
    const M_Vector2T<double> origin{10, 10};
    ASSERT_EQ(Deliver(&pixel, &position, &origin), 0);
    ASSERT_TRUE(Shown(13));

    ASSERT_EQ(Deliver(&pixel, &position, nullptr), 0);
    for (std::size_t number : {13, 14, 17, 18}) {
        EXPECT_FALSE(Shown(number)) << number;
    }
    EXPECT_EQ(Text(17), "");
    EXPECT_EQ(Text(18), "");

    std::uint64_t before[19] = {};
    for (std::size_t number : {13, 14, 17, 18}) {
        before[number] = Invalidations(number);
    }
    ASSERT_EQ(Deliver(&pixel, &position, nullptr), 0);
    ASSERT_EQ(Deliver(&pixel, &position, nullptr), 0);
    for (std::size_t number : {13, 14, 17, 18}) {
        EXPECT_EQ(Invalidations(number), before[number]) << number;
        EXPECT_FALSE(Shown(number)) << number;
    }
}

TEST_F(PixelReadout, AnUnchangedOriginKeepsTheRelativeReadoutUpToDate) {
    const PF_PixelFloat pixel = Pixel(1, 1, 1, 1);
    const M_Vector2T<double> origin{10, 10};
    const M_Vector2T<double> first{15.7, 9.2};
    const M_Vector2T<double> second{5.0, 20.0};
    ASSERT_EQ(Deliver(&pixel, &first, &origin), 0);
    ASSERT_EQ(Deliver(&pixel, &second, &origin), 0);
    EXPECT_EQ(Text(17), "-5");
    EXPECT_EQ(Text(18), "10");
    EXPECT_TRUE(Shown(17));
    EXPECT_TRUE(Shown(13));
}

TEST_F(PixelReadout, ANewPanelHasLabelsEmptyValuesAndNoRelativeRow) {
    EXPECT_EQ(Labels(), (Four{"R :", "G :", "B :", "A :"}));
    EXPECT_EQ(Text(11), "X :");
    EXPECT_EQ(Text(12), "Y :");
    EXPECT_EQ(Values(), (Four{"", "", "", ""}));
    EXPECT_EQ(Text(15), "");
    EXPECT_EQ(Text(16), "");
    EXPECT_EQ(Swatch(), (kitui::inkwell::ColorRGBA{0.0f, 0.0f, 0.0f, 1.0f}));
}

TEST_F(PixelReadout, ANewPanelHasNoRelativeRowUntilAnOriginArrives) {
    for (std::size_t number : {13, 14, 17, 18}) {
        EXPECT_FALSE(Shown(number)) << number;
    }
    ASSERT_EQ(Deliver(Pixel(1, 1, 1, 1), {1, 1}), 0);
    for (std::size_t number : {13, 14, 17, 18}) {
        EXPECT_FALSE(Shown(number)) << number;
    }
}

// Delivery

TEST_F(PixelReadout, ADeliverySwitchesTheDisplayToThePixelReadout) {
    EXPECT_EQ(Panel()->GetDisplayState(), DisplayState::Nothing);
    ASSERT_EQ(Deliver(Pixel(1, 1, 1, 1)), 0);
    EXPECT_EQ(Panel()->GetDisplayState(), DisplayState::PixelReadout);
}

TEST_F(PixelReadout, AWorkerDeliveryIsShownOnlyWhenTheMainThreadRunsIt) {
    Choose(kBpc8Command);
    const PF_PixelFloat pixel = Pixel(1, 1, 0.5f, 0);
    const M_Vector2T<double> position{3.5, 4.5};
    QZ_Err result = -1;
    const QZ_InfoPaletteSuite2& suite = Suite();
    std::thread worker([&] { result = suite.SetPixelInfo(&pixel, &position, nullptr); });
    worker.join();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Values(), (Four{"", "", "", "0"}));
    EXPECT_EQ(Text(15), "0");
    EXPECT_EQ(Panel()->GetDisplayState(), DisplayState::Nothing);

    const qzhost::DrainResult drained = qzhost::MainLoop::Get().Drain();
    EXPECT_EQ(drained.ran, 1U);
    EXPECT_TRUE(drained.thrown.empty());
    EXPECT_EQ(Values(), (Four{"255", "128", "0", "255"}));
    EXPECT_EQ(Text(15), "3");
    EXPECT_EQ(Text(16), "4");
    EXPECT_EQ(Panel()->GetDisplayState(), DisplayState::PixelReadout);
}

TEST_F(PixelReadout, AWorkerDeliveryCarriesTheValuesOfTheCall) {
    PF_PixelFloat pixel = Pixel(1, 0.5f, 0, 0);
    M_Vector2T<double> position{7.5, 8.5};
    const QZ_InfoPaletteSuite2& suite = Suite();
    std::thread worker([&] { (void)suite.SetPixelInfo(&pixel, &position, nullptr); });
    worker.join();
    // The caller may reuse or free its records as soon as the call returns.
    pixel = Pixel(1, 1, 1, 1);
    position = {100, 100};
    (void)qzhost::MainLoop::Get().Drain();
    EXPECT_EQ(Text(7), "128");
    EXPECT_EQ(Text(15), "7");
    EXPECT_EQ(Text(16), "8");
}

TEST_F(PixelReadout, AWorkerDeliveryForAReplacedPanelIsDropped) {
    const PF_PixelFloat pixel = Pixel(1, 1, 1, 1);
    const QZ_InfoPaletteSuite2& suite = Suite();
    std::thread worker([&] { (void)suite.SetPixelInfo(&pixel, nullptr, nullptr); });
    worker.join();
    qzhost::WorkspaceModel::Get().Close(kTab);
    qzhost::WorkspaceModel::Get().Open(kTab);
    ASSERT_NE(Panel(), nullptr);
    const qzhost::DrainResult drained = qzhost::MainLoop::Get().Drain();
    EXPECT_EQ(drained.ran, 1U);
    EXPECT_EQ(Panel()->GetDisplayState(), DisplayState::Nothing);
    EXPECT_EQ(Values(), (Four{"", "", "", ""}));
}

TEST_F(PixelReadout, AWorkerDeliveryForAClosedPanelIsDropped) {
    const PF_PixelFloat pixel = Pixel(1, 1, 1, 1);
    const QZ_InfoPaletteSuite2& suite = Suite();
    std::thread worker([&] { (void)suite.SetPixelInfo(&pixel, nullptr, nullptr); });
    worker.join();
    qzhost::WorkspaceModel::Get().Close(kTab);
    ASSERT_EQ(Panel(), nullptr);
    const qzhost::DrainResult drained = qzhost::MainLoop::Get().Drain();
    EXPECT_EQ(drained.ran, 1U);
    EXPECT_TRUE(drained.thrown.empty());
}

TEST_F(PixelReadout, ADeliveryWhileHiddenWaitsAndTheLatestRunsOnShow) {
    Choose(kBpc8Command);
    infopal::InfoPal_UI* panel = Panel();
    qzhost::WorkspaceModel::Get().Hide(kTab);
    const PF_PixelFloat first = Pixel(1, 0, 0, 0);
    const PF_PixelFloat second = Pixel(1, 1, 0.5f, 0);
    const M_Vector2T<double> position{12.5, 13.5};
    panel->UpdatePixelInfo(&first, &position, nullptr);
    {
        // The caller's values need not outlive the call.
        const PF_PixelFloat latest = second;
        panel->UpdatePixelInfo(&latest, &position, nullptr);
    }
    EXPECT_TRUE(panel->HasPendingPixelUpdate());
    EXPECT_EQ(Values(), (Four{"", "", "", "0"}));
    EXPECT_EQ(panel->GetDisplayState(), DisplayState::Nothing);

    qzhost::WorkspaceModel::Get().Show(kTab);
    EXPECT_FALSE(panel->HasPendingPixelUpdate());
    EXPECT_EQ(Values(), (Four{"255", "128", "0", "255"}));
    EXPECT_EQ(Text(15), "12");
    EXPECT_EQ(panel->GetDisplayState(), DisplayState::PixelReadout);
}

TEST_F(PixelReadout, SlotFourIgnoresAHiddenPanel) {
    qzhost::WorkspaceModel::Get().Hide(kTab);
    EXPECT_EQ(Deliver(Pixel(1, 1, 1, 1)), 0);
    EXPECT_FALSE(Panel()->HasPendingPixelUpdate());
    EXPECT_EQ(Panel()->GetPixel().red, 0.0f);
}

// Slot 3

TEST_F(PixelReadout, SlotThreeWithANullPointerIsError3WhateverThePanel) {
    EXPECT_EQ(Suite().GetPixel(nullptr), 3);
    qzhost::WorkspaceModel::Get().Hide(kTab);
    EXPECT_EQ(Suite().GetPixel(nullptr), 3);
    qzhost::WorkspaceModel::Get().Close(kTab);
    EXPECT_EQ(Suite().GetPixel(nullptr), 3);
}

TEST_F(PixelReadout, SlotThreeCopiesTheUntransformedPixel) {
    ASSERT_EQ(Deliver(Pixel(0.25f, 2.0f, -0.5f, 0.5f)), 0);
    PF_PixelFloat out{-1, -1, -1, -1};
    ASSERT_EQ(Suite().GetPixel(&out), 0);
    EXPECT_EQ(out.alpha, 0.25f);
    EXPECT_EQ(out.red, 2.0f);
    EXPECT_EQ(out.green, -0.5f);
    EXPECT_EQ(out.blue, 0.5f);
}

TEST_F(PixelReadout, SlotThreeWritesNothingWhileThePanelIsHidden) {
    ASSERT_EQ(Deliver(Pixel(1, 1, 1, 1)), 0);
    qzhost::WorkspaceModel::Get().Hide(kTab);
    PF_PixelFloat out{-1, -1, -1, -1};
    ASSERT_EQ(Suite().GetPixel(&out), 0);
    EXPECT_EQ(out.alpha, -1.0f);
    EXPECT_EQ(out.red, -1.0f);
}

TEST_F(PixelReadout, SlotThreeGivesZerosAfterAModeChange) {
    ASSERT_EQ(Deliver(Pixel(1, 1, 1, 1)), 0);
    Choose(kDecimalCommand);
    PF_PixelFloat out{-1, -1, -1, -1};
    ASSERT_EQ(Suite().GetPixel(&out), 0);
    EXPECT_EQ(out.alpha, 0.0f);
    EXPECT_EQ(out.red, 0.0f);
    EXPECT_EQ(out.green, 0.0f);
    EXPECT_EQ(out.blue, 0.0f);
}

} // namespace
} // namespace pixel_test
