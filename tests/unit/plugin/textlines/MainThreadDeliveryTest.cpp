#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "SubstitutePanel.h"
#include "TextLinesFixture.h"

namespace {

using infopal::TextLinesType;
using qzhost::MainLoop;
using qzhost::WorkspaceModel;
using namespace textlines_test;

class MainThreadDeliveryTest : public TextLinesFixture {
protected:
    /// Runs `call` on a second thread and waits for it; returns the slot's result.
    static QZ_Err OnWorker(const std::function<QZ_Err()>& call) {
        QZ_Err result = -1;
        std::thread worker([&] { result = call(); });
        worker.join();
        return result;
    }
};

TEST_F(MainThreadDeliveryTest, AThreeLineCallOffTheUIThreadArrivesAsAFiveLineUpdate) {
    auto& panel = OpenPanel();
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines3("a", "", nullptr); }), 0);
    EXPECT_EQ(MainLoop::Get().Pending(), 1U);
    EXPECT_EQ(Lines(panel), (Lines5{"", "", "", "", ""})); // nothing yet
    const auto drained = MainLoop::Get().Drain();
    EXPECT_EQ(drained.ran, 1U);
    EXPECT_TRUE(drained.thrown.empty());
    EXPECT_EQ(Type(panel), 1U);
    EXPECT_EQ(Lines(panel), (Lines5{"a", "", "", "", ""}));
    EXPECT_EQ(Rows(panel), (Rows3{"a", " ", " "}));
}

TEST_F(MainThreadDeliveryTest, AFiveLineCallOffTheUIThreadArrivesAsAThreeLineUpdate) {
    auto& panel = OpenPanel();
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines5("1", "2", "3", "4", "5"); }), 0);
    EXPECT_EQ(Lines(panel), (Lines5{"", "", "", "", ""}));
    EXPECT_EQ(MainLoop::Get().Drain().ran, 1U);
    EXPECT_EQ(Type(panel), 0U);
    EXPECT_EQ(Lines(panel), (Lines5{"1", "2", "3", "", ""}));
    EXPECT_EQ(Rows(panel), (Rows3{"1", "2", "3"}));
}

TEST_F(MainThreadDeliveryTest, WideCallsOffTheUIThreadCrossTheirTypesToo) {
    auto& panel = OpenPanel();
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines3W(u"x", nullptr, u"z"); }), 0);
    MainLoop::Get().Drain();
    EXPECT_EQ(Type(panel), 1U);
    EXPECT_EQ(Lines(panel), (Lines5{"x", "", "z", "", ""}));
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines5W(u"6", u"7", u"8", u"9", u"10"); }), 0);
    MainLoop::Get().Drain();
    EXPECT_EQ(Type(panel), 0U);
    EXPECT_EQ(Lines(panel), (Lines5{"6", "7", "8", "", ""}));
}

TEST_F(MainThreadDeliveryTest, TheCallersStringsMayBeFreedAsSoonAsTheCallReturns) {
    std::vector<std::string> shown;
    UseSubstitutePanel(kTab,
                       [&](SubstitutePanel& panel, const UTF16String* lines, TextLinesType type) {
                           shown.push_back(Utf8(lines[0]) + "," + Utf8(lines[1]));
                           panel.ShowTextLinesAsUsual(lines, type);
                       });
    OpenPanel();
    OnWorker([&] {
        auto l1 = std::make_unique<char[]>(8);
        auto l2 = std::make_unique<char16_t[]>(8);
        std::strcpy(l1.get(), "copied");
        std::u16string(u"wide").copy(l2.get(), 4);
        l2[4] = 0;
        const QZ_Err narrow = Suite().SetTextLines5(l1.get(), "b", "c", nullptr, nullptr);
        std::memset(l1.get(), 'X', 7); // overwritten, then freed
        l1.reset();
        const QZ_Err wide = Suite().SetTextLines3W(l2.get(), u"q", nullptr);
        l2[0] = u'X';
        l2.reset();
        return narrow | wide;
    });
    ASSERT_EQ(MainLoop::Get().Pending(), 2U);
    MainLoop::Get().Drain();
    EXPECT_EQ(shown, (std::vector<std::string>{"copied,b", "wide,q"}));
}

TEST_F(MainThreadDeliveryTest, EachOffThreadCallIsDeliveredSeparatelyInOrder) {
    std::vector<std::string> shown;
    UseSubstitutePanel(
        kTab, [&](SubstitutePanel& panel, const UTF16String* lines, TextLinesType type) {
            shown.push_back(Utf8(lines[0]) + "/" + std::to_string(static_cast<int>(type)));
            panel.ShowTextLinesAsUsual(lines, type);
        });
    OpenPanel();
    OnWorker([&] {
        QZ_Err err = Suite().SetTextLines3("one", nullptr, nullptr);
        err |= Suite().SetTextLines3("one", nullptr, nullptr); // the same text: not merged
        err |= Suite().SetTextLines5W(u"two", nullptr, nullptr, nullptr, nullptr);
        err |= Suite().SetTextLines5("three", nullptr, nullptr, nullptr, nullptr);
        return err;
    });
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(MainLoop::Get().Drain().ran, 4U);
    EXPECT_EQ(shown, (std::vector<std::string>{"one/1", "one/1", "two/0", "three/0"}));
}

TEST_F(MainThreadDeliveryTest, APanelClosedBeforeDeliveryShowsNothingAndNoErrorEscapes) {
    OpenPanel();
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines3("late", "b", "c"); }), 0);
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines5W(u"late", u"", u"", u"", u""); }), 0);
    WorkspaceModel::Get().Close(kTab);
    const auto drained = MainLoop::Get().Drain();
    EXPECT_EQ(drained.ran, 2U);
    EXPECT_TRUE(drained.thrown.empty());
    EXPECT_EQ(WorkspaceModel::Get().Panel(kTab), nullptr); // not brought back
    EXPECT_TRUE(qzhost::HostControls::Get().Reported().empty());
}

TEST_F(MainThreadDeliveryTest, APanelHiddenBeforeDeliveryDropsTheText) {
    auto& panel = OpenPanel();
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines3("late", "b", "c"); }), 0);
    WorkspaceModel::Get().Hide(kTab);
    EXPECT_TRUE(MainLoop::Get().Drain().thrown.empty());
    WorkspaceModel::Get().Show(kTab);
    EXPECT_EQ(Lines(panel), (Lines5{"", "", "", "", ""}));
}

TEST_F(MainThreadDeliveryTest, APluginObjectGoneBeforeDeliveryDropsTheText) {
    OpenPanel();
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines5("late", "", "", "", ""); }), 0);
    ASSERT_EQ(Death(), 0);
    const auto drained = MainLoop::Get().Drain();
    EXPECT_EQ(drained.ran, 1U);
    EXPECT_TRUE(drained.thrown.empty());
}

TEST_F(MainThreadDeliveryTest, AnErrorDuringDeliveryIsThrownIntoTheHostsDispatcher) {
    UseSubstitutePanel(kTab, [](SubstitutePanel&, const UTF16String* lines, TextLinesType) {
        if (lines[0] == u"int") {
            throw QZ_Err{7};
        }
        throw std::runtime_error("delivery went wrong");
    });
    OpenPanel();
    qzhost::HostControls::Get().SetReportResult(11);
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines3("int", "", ""); }), 0);
    EXPECT_EQ(OnWorker([&] { return Suite().SetTextLines5W(u"std", u"", u"", u"", u""); }), 0);
    const auto drained = MainLoop::Get().Drain();
    EXPECT_EQ(drained.ran, 2U);
    EXPECT_EQ(drained.thrown, (std::vector<QZ_Err>{7, 11}));
    EXPECT_EQ(qzhost::HostControls::Get().Reported(),
              std::vector<std::string>{"delivery went wrong"});
}

TEST_F(MainThreadDeliveryTest, OffThreadCallsTouchNoHostOperationThatIsForTheUIThread) {
    OpenPanel();
    OnWorker([&] {
        return Suite().SetTextLines3("a", "b", "c") | Suite().SetTextLines5("a", "", "", "", "") |
               Suite().SetTextLines3W(u"a", u"", u"") |
               Suite().SetTextLines5W(u"a", u"", u"", u"", u"");
    });
    MainLoop::Get().Drain();
    EXPECT_TRUE(qzhost::HostControls::Get().Violations().empty());
}

} // namespace
