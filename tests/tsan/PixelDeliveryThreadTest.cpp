// Pixel deliveries (and text lines) sent by worker threads while the main thread opens,
// hides, shows and closes the Info panel and drains its queue. Only values cross threads:
// no worker touches the panel or the plug-in object, a delivery reaches only the panel it
// was made for, never one that was closed or replaced, and never off the main thread.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "HostFixture.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/frame/TabVisibility.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "kitworkspace/workspace/TabCreator.h"
#include "qzgp/QZ_InfoPaletteSuite.h"

namespace {

constexpr int kWorkers = 4;
// Calls that each worker makes per round when the main thread sets the pace.
constexpr int kBurst = 16;
using qztest::kInfoTab;

/// What the main thread saw: a delivery shown by a panel, or a panel going away.
struct Event {
    enum Kind { Shown, Closed } kind;
    int panel;    // which panel: the n-th one created
    int worker;   // Shown: the worker that made the call
    int sequence; // Shown: the worker's call number
    bool onMainThread;
    bool visible; // Shown: the panel counted as visible when it showed the delivery
};

/// The Info panel, recording each delivery that it shows and its own end.
class DeliveryRecordingPanel : public infopal::InfoPal_UI {
public:
    DeliveryRecordingPanel(kitui::ui::UI_Node* parent,
                           const kitworkspace::workspace::TabPanelCreationArgs* args,
                           std::vector<Event>* log, int number)
        : InfoPal_UI(parent, args, u"Info", 0, true), log_(log), number_(number) {}
    ~DeliveryRecordingPanel() override {
        log_->push_back(
            {Event::Closed, number_, -1, -1, qzhost::MainLoop::Get().IsMainThread(), false});
    }

protected:
    void ApplyPixelDelivery(const infopal::PixelDelivery& delivery) override {
        log_->push_back({Event::Shown, number_, static_cast<int>(delivery.position.x),
                         static_cast<int>(delivery.position.y),
                         qzhost::MainLoop::Get().IsMainThread(),
                         infopal::IsTabShown(kInfoTab, true)});
        InfoPal_UI::ApplyPixelDelivery(delivery);
    }

private:
    std::vector<Event>* log_;
    int number_;
};

class DeliveryRecordingPanelCreator : public kitworkspace::workspace::TabCreator {
public:
    explicit DeliveryRecordingPanelCreator(std::vector<Event>* log)
        : TabCreator(kInfoTab), log_(log) {}
    void Create(kitworkspace::workspace::TabPanel** out_panel, kitui::ui::UI_Node* parent,
                const kitworkspace::workspace::TabPanelCreationArgs* args) override {
        auto* panel = new DeliveryRecordingPanel(parent, args, log_, ++created_);
        *out_panel = panel;
        static_cast<kitui::ui::UI_NodeBase*>(panel)->UI_PostCreate();
    }

private:
    std::vector<Event>* log_;
    int created_ = 0;
};

class PixelDeliveryThreadTest : public qztest::HostFixture {
protected:
    void SetUp() override {
        HostFixture::SetUp();
        ASSERT_EQ(Load(), 0);
        qzhost::WorkspaceModel::Get().RegisterTabCreator(new DeliveryRecordingPanelCreator(&log_));
        const void* table = nullptr;
        ASSERT_EQ(qzhost::SuiteRegistry::Get().Acquire(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                                       kQZ_InfoPaletteSuiteVersion2, &table),
                  0);
        suite_ = static_cast<const QZ_InfoPaletteSuite2*>(table);
    }
    void TearDown() override {
        qzhost::SuiteRegistry::Get().Release(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                             kQZ_InfoPaletteSuiteVersion2);
        HostFixture::TearDown();
    }

    /// One call of worker `w`: a pixel delivery whose position carries the worker's number
    /// and the call's, and for every eighth call a text line too.
    void Send(int w, int i) {
        const PF_PixelFloat pixel{1.0f, 0.25f * static_cast<float>(w), 0.5f, 1.0f};
        const M_Vector2T<double> position{static_cast<double>(w), static_cast<double>(i)};
        const M_Vector2T<double> origin{1.0, 1.0};
        if (suite_->SetPixelInfo(&pixel, &position, &origin) != 0) {
            failures_.fetch_add(1);
        }
        if (i % 8 == 0 && suite_->SetTextLines3("worker", nullptr, nullptr) != 0) {
            failures_.fetch_add(1);
        }
    }

    /// Starts the workers: each makes `calls` calls; with 0, each makes kBurst calls per
    /// round that the main thread starts (StartRound), until told to stop.
    void StartWorkers(int calls) {
        running_ = kWorkers;
        for (int w = 0; w < kWorkers; ++w) {
            workers_.emplace_back([this, w, calls] {
                if (calls > 0) {
                    for (int i = 0; i < calls; ++i) {
                        Send(w, i);
                    }
                } else {
                    int seen = 0;
                    int i = 0;
                    for (;;) {
                        int round = round_.load();
                        while (round == seen && !stop_.load()) {
                            std::this_thread::yield();
                            round = round_.load();
                        }
                        if (stop_.load()) {
                            break;
                        }
                        seen = round;
                        for (int k = 0; k < kBurst; ++k, ++i) {
                            Send(w, i);
                        }
                        finished_.fetch_add(1);
                    }
                }
                running_.fetch_sub(1);
            });
        }
    }

    /// Lets every worker make one burst of calls.
    void StartRound() {
        finished_ = 0;
        round_.fetch_add(1);
    }
    /// Waits until every worker has made its burst: the queue then stops growing, so that
    /// draining it ends.
    void WaitForRound() {
        while (finished_.load() < kWorkers) {
            std::this_thread::yield();
        }
    }

    void JoinWorkers() {
        stop_ = true;
        for (std::thread& worker : workers_) {
            worker.join();
        }
        workers_.clear();
    }

    std::size_t Drain() {
        const qzhost::DrainResult drained = qzhost::MainLoop::Get().Drain();
        thrown_ += drained.thrown.size();
        return drained.ran;
    }

    const QZ_InfoPaletteSuite2* suite_ = nullptr;
    std::vector<Event> log_;
    std::vector<std::thread> workers_;
    std::atomic<int> running_{0};
    std::atomic<bool> stop_{false};
    std::atomic<int> round_{0};
    std::atomic<int> finished_{0};
    std::atomic<int> failures_{0};
    std::size_t thrown_ = 0;
};

TEST_F(PixelDeliveryThreadTest, DeliveriesReachOnlyTheOpenPanelOnTheMainThread) {
    auto& workspace = qzhost::WorkspaceModel::Get();
    StartWorkers(0);
    // The main thread opens, hides, shows and closes the panel in turn while the workers
    // send, and drains its queue between any two steps.
    constexpr int kSteps = 400;
    int step = 0;
    while (step < kSteps) {
        StartRound();
        switch (step++ % 4) {
        case 0:
            workspace.Open(kInfoTab);
            break;
        case 1:
            workspace.Hide(kInfoTab);
            break;
        case 2:
            workspace.Show(kInfoTab);
            break;
        default:
            workspace.Close(kInfoTab);
            break;
        }
        WaitForRound();
        (void)Drain();
    }
    JoinWorkers();
    workspace.Close(kInfoTab);
    const std::size_t closed_at = log_.size();
    (void)Drain();

    EXPECT_EQ(failures_.load(), 0);
    EXPECT_EQ(thrown_, 0U);
    // Nothing arrives once the last panel is closed.
    EXPECT_EQ(log_.size(), closed_at);
    std::set<int> closed;
    std::set<std::pair<int, int>> seen;
    int shown = 0;
    for (const Event& event : log_) {
        EXPECT_TRUE(event.onMainThread);
        if (event.kind == Event::Closed) {
            closed.insert(event.panel);
            continue;
        }
        ++shown;
        EXPECT_EQ(closed.count(event.panel), 0U)
            << "delivery to panel " << event.panel << " after it was closed";
        EXPECT_TRUE(event.visible);
        EXPECT_TRUE(seen.insert({event.worker, event.sequence}).second)
            << "delivery " << event.worker << ":" << event.sequence << " shown twice";
    }
    EXPECT_GT(shown, 0);
    EXPECT_TRUE(qzhost::HostControls::Get().Violations().empty());
}

TEST_F(PixelDeliveryThreadTest, EveryDeliveryMadeWhileThePanelIsShownIsShownOnce) {
    constexpr int kCalls = 3000;
    qzhost::WorkspaceModel::Get().Open(kInfoTab);
    ASSERT_TRUE(infopal::IsTabShown(kInfoTab, true));
    StartWorkers(kCalls);
    while (running_.load() > 0) {
        (void)Drain();
        std::this_thread::yield();
    }
    JoinWorkers();
    (void)Drain();

    EXPECT_EQ(failures_.load(), 0);
    EXPECT_EQ(thrown_, 0U);
    std::map<int, int> next; // worker -> the call number expected next
    for (const Event& event : log_) {
        ASSERT_EQ(event.kind, Event::Shown);
        EXPECT_TRUE(event.onMainThread);
        EXPECT_EQ(event.sequence, next[event.worker]) << "worker " << event.worker;
        next[event.worker] = event.sequence + 1;
    }
    ASSERT_EQ(log_.size(), static_cast<std::size_t>(kWorkers * kCalls));
    for (int w = 0; w < kWorkers; ++w) {
        EXPECT_EQ(next[w], kCalls) << "worker " << w;
    }
    EXPECT_TRUE(qzhost::HostControls::Get().Violations().empty());
}

TEST_F(PixelDeliveryThreadTest, ADeliveryForAReplacedPanelIsDropped) {
    auto& workspace = qzhost::WorkspaceModel::Get();
    workspace.Open(kInfoTab);
    StartWorkers(1);
    JoinWorkers();
    // The panel that the calls were made for goes, and a new one takes its place before
    // the main thread runs them.
    workspace.Close(kInfoTab);
    workspace.Open(kInfoTab);
    EXPECT_EQ(Drain(), static_cast<std::size_t>(2 * kWorkers));
    for (const Event& event : log_) {
        EXPECT_NE(event.kind, Event::Shown)
            << "panel " << event.panel << " showed " << event.worker << ":" << event.sequence;
    }
}

} // namespace
