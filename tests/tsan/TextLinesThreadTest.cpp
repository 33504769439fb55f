// Text lines sent by many threads at once through the published suite while the main
// thread drains its queue: every call reaches the panel exactly once, on the main thread,
// each thread's calls in the order in which that thread made them. Built on its own so
// that it runs under ThreadSanitizer with only the libraries it needs.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "HostFixture.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "kitworkspace/workspace/TabCreator.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/UnicodeText.h"

namespace {

using infopal::TextLinesType;
using kitcore::utility::UTF16String;

constexpr int kThreads = 8;
constexpr int kCallsPerThread = 10000;
using qztest::kInfoTab;

/// One update as the panel received it.
struct Received {
    std::string first;
    TextLinesType type;
    bool onMainThread;
};

/// The Info panel, recording every text-lines update before showing it as usual.
class TextLinesRecordingPanel : public infopal::InfoPal_UI {
public:
    TextLinesRecordingPanel(kitui::ui::UI_Node* parent,
                            const kitworkspace::workspace::TabPanelCreationArgs* args,
                            std::vector<Received>* log)
        : InfoPal_UI(parent, args, u"Info", 0, true), log_(log) {}

    void ShowTextLines(const UTF16String& l1, const UTF16String& l2, const UTF16String& l3,
                       const UTF16String& l4, const UTF16String& l5, TextLinesType type) override {
        log_->push_back(
            {qzhost::strings::Utf16ToUtf8(l1), type, qzhost::MainLoop::Get().IsMainThread()});
        InfoPal_UI::ShowTextLines(l1, l2, l3, l4, l5, type);
    }

private:
    std::vector<Received>* log_;
};

class TextLinesRecordingPanelCreator : public kitworkspace::workspace::TabCreator {
public:
    explicit TextLinesRecordingPanelCreator(std::vector<Received>* log)
        : TabCreator(kInfoTab), log_(log) {}
    void Create(kitworkspace::workspace::TabPanel** out_panel, kitui::ui::UI_Node* parent,
                const kitworkspace::workspace::TabPanelCreationArgs* args) override {
        auto* panel = new TextLinesRecordingPanel(parent, args, log_);
        *out_panel = panel;
        static_cast<kitui::ui::UI_NodeBase*>(panel)->UI_PostCreate();
    }

private:
    std::vector<Received>* log_;
};

/// "thread:sequence"
std::string Tag(int thread, int sequence) {
    return std::to_string(thread) + ":" + std::to_string(sequence);
}

class TextLinesThreadTest : public qztest::HostFixture {};

TEST_F(TextLinesThreadTest, EveryOffThreadCallIsDeliveredOnceInItsThreadsOrder) {
    ASSERT_EQ(Load(), 0);
    std::vector<Received> log;
    log.reserve(kThreads * kCallsPerThread);
    qzhost::WorkspaceModel::Get().RegisterTabCreator(new TextLinesRecordingPanelCreator(&log));
    qzhost::WorkspaceModel::Get().Open(kInfoTab);
    ASSERT_NE(dynamic_cast<TextLinesRecordingPanel*>(infopal::InfoPal::GetPlugin()->GetPanel()),
              nullptr);

    const void* table = nullptr;
    ASSERT_EQ(qzhost::SuiteRegistry::Get().Acquire(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                                   kQZ_InfoPaletteSuiteVersion2, &table),
              0);
    const auto* suite = static_cast<const QZ_InfoPaletteSuite2*>(table);

    // Threads take the four text slots in turn: 0, 1, 22, 23.
    std::atomic<int> running{kThreads};
    std::atomic<int> failures{0};
    std::vector<std::thread> workers;
    for (int t = 0; t < kThreads; ++t) {
        workers.emplace_back([t, suite, &running, &failures] {
            for (int i = 0; i < kCallsPerThread; ++i) {
                const std::string tag = Tag(t, i);
                const UTF16String wide = qzhost::strings::Utf8ToUtf16(tag);
                QZ_Err err = 0;
                switch (t % 4) {
                case 0:
                    err = suite->SetTextLines3(tag.c_str(), "b", nullptr);
                    break;
                case 1:
                    err = suite->SetTextLines5(tag.c_str(), "b", "c", "d", "e");
                    break;
                case 2:
                    err = suite->SetTextLines3W(wide.c_str(), u"b", nullptr);
                    break;
                default:
                    err = suite->SetTextLines5W(wide.c_str(), u"b", u"c", u"d", u"e");
                    break;
                }
                if (err != 0) {
                    failures.fetch_add(1);
                }
            }
            running.fetch_sub(1);
        });
    }

    std::size_t ran = 0;
    std::vector<QZ_Err> thrown;
    while (running.load() > 0) {
        const qzhost::DrainResult drained = qzhost::MainLoop::Get().Drain();
        ran += drained.ran;
        thrown.insert(thrown.end(), drained.thrown.begin(), drained.thrown.end());
        std::this_thread::yield();
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    const qzhost::DrainResult last = qzhost::MainLoop::Get().Drain();
    ran += last.ran;
    thrown.insert(thrown.end(), last.thrown.begin(), last.thrown.end());

    EXPECT_EQ(failures.load(), 0);
    EXPECT_TRUE(thrown.empty());
    EXPECT_EQ(ran, static_cast<std::size_t>(kThreads * kCallsPerThread));
    ASSERT_EQ(log.size(), static_cast<std::size_t>(kThreads * kCallsPerThread));

    // Each thread's tags arrive exactly once and in order; a three-line call arrives as a
    // five-line update and the other way round.
    std::vector<int> next(kThreads, 0);
    int off_main = 0;
    int wrong_type = 0;
    int out_of_order = 0;
    for (const Received& r : log) {
        int thread = -1;
        int sequence = -1;
        ASSERT_EQ(std::sscanf(r.first.c_str(), "%d:%d", &thread, &sequence), 2) << r.first;
        ASSERT_GE(thread, 0);
        ASSERT_LT(thread, kThreads);
        if (sequence != next[thread]) {
            ++out_of_order;
        }
        next[thread] = sequence + 1;
        const TextLinesType expected =
            (thread % 4 == 0 || thread % 4 == 2) ? TextLinesType::Five : TextLinesType::Three;
        wrong_type += r.type != expected ? 1 : 0;
        off_main += r.onMainThread ? 0 : 1;
    }
    EXPECT_EQ(out_of_order, 0);
    EXPECT_EQ(wrong_type, 0);
    EXPECT_EQ(off_main, 0);
    for (int t = 0; t < kThreads; ++t) {
        EXPECT_EQ(next[t], kCallsPerThread) << "thread " << t;
    }
    EXPECT_TRUE(qzhost::HostControls::Get().Violations().empty());

    // The last update of all is what the panel holds.
    auto* panel = dynamic_cast<infopal::InfoPal_UI*>(infopal::InfoPal::GetPlugin()->GetPanel());
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(qzhost::strings::Utf16ToUtf8(panel->StoredLines()[0]), log.back().first);

    qzhost::SuiteRegistry::Get().Release(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                         kQZ_InfoPaletteSuiteVersion2);
}

} // namespace
