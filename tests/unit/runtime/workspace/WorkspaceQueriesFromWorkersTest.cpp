// The visibility queries that a worker thread may ask: whether the tab is shown (and in
// front), its panel, whether its frame is stacked, and the ui-suppressed byte. They give
// the main thread's answers, record no contract violation, and never see half of a change.
#include <atomic>
#include <chrono>
#include <thread>

#include "WorkspaceTestSupport.h"
#include "kitworkspace/workspace/Workspace.h"
#include "qzgp/QZGP_UtilitySuite.h"
#include "qzhost/SuiteRegistry.h"

namespace workspacetest {
namespace {

using kitworkspace::workspace::WorkspaceUtils;
using qzhost::WorkspaceModel;

using WorkspaceQueriesFromWorkers = WorkspaceTest;

template <class Body>
void OnWorker(Body body) {
    std::thread worker(body);
    worker.join();
}

TEST_F(WorkspaceQueriesFromWorkers, TheAnswersAreTheMainThreadsAndNoViolationIsRecorded) {
    FlyoutPanel* panel = Open();
    ASSERT_NE(panel, nullptr);
    WorkspaceModel::Get().SetAnswers(kTab, true, false, true);
    qzhost::HostControls::Get().SetUISuppressed(3);

    const void* table = nullptr;
    ASSERT_EQ(qzhost::SuiteRegistry::Get().Acquire(qzhost::Acquirer::Host, kQZGP_UtilitySuite,
                                                   kQZGP_UtilitySuiteVersion13, &table),
              QZ_Err_NONE);
    const auto* utility = static_cast<const QZGP_UtilitySuite13*>(table);

    bool shown = false;
    bool front = true;
    kitworkspace::workspace::TabPanel* found = nullptr;
    bool stacked = false;
    std::uint8_t suppressed = 0;
    QZ_Err suppressed_err = -1;
    OnWorker([&] {
        shown = WorkspaceUtils::TabIsShown(kTab, &front);
        found = WorkspaceUtils::FindFirstTabOfType(kTab, nullptr);
        stacked = found != nullptr && found->InStackedFrame();
        suppressed_err = utility->GetUISuppressed(&suppressed);
    });
    qzhost::SuiteRegistry::Get().Release(qzhost::Acquirer::Host, kQZGP_UtilitySuite,
                                         kQZGP_UtilitySuiteVersion13);
    EXPECT_TRUE(shown);
    EXPECT_FALSE(front);
    EXPECT_EQ(found, panel);
    EXPECT_TRUE(stacked);
    EXPECT_EQ(suppressed_err, QZ_Err_NONE);
    EXPECT_EQ(suppressed, 3);
    EXPECT_TRUE(qzhost::HostControls::Get().Violations().empty());
}

TEST_F(WorkspaceQueriesFromWorkers, AHiddenOrMissingTabIsNotShown) {
    ASSERT_NE(Open(), nullptr);
    WorkspaceModel::Get().Hide(kTab);
    bool shown = true;
    OnWorker([&] { shown = WorkspaceUtils::TabIsShown(kTab, nullptr); });
    EXPECT_FALSE(shown);

    WorkspaceModel::Get().Close(kTab);
    kitworkspace::workspace::TabPanel* found = nullptr;
    OnWorker([&] {
        shown = WorkspaceUtils::TabIsShown(kTab, nullptr);
        found = WorkspaceUtils::FindFirstTabOfType(kTab, nullptr);
    });
    EXPECT_FALSE(shown);
    EXPECT_EQ(found, nullptr);
}

TEST_F(WorkspaceQueriesFromWorkers, APanelOutsideTheWorkspaceIsNotInAStackedFrame) {
    FlyoutPanel loose(nullptr);
    bool stacked = true;
    OnWorker([&] { stacked = loose.InStackedFrame(); });
    EXPECT_FALSE(stacked);
}

TEST_F(WorkspaceQueriesFromWorkers, AWorkerNeverSeesHalfOfAChangeOfTheAnswers) {
    ASSERT_NE(Open(), nullptr);
    // The main thread flips between "shown, in front" and "hidden, behind"; a worker that
    // finds the tab shown must find it in front as well.
    std::atomic<bool> stop{false};
    std::atomic<int> torn{0};
    std::atomic<int> shown_seen{0};
    std::thread worker([&] {
        while (!stop.load()) {
            bool front = false;
            if (WorkspaceUtils::TabIsShown(kTab, &front)) {
                shown_seen.fetch_add(1);
                if (!front) {
                    torn.fetch_add(1);
                }
            }
        }
    });
    // Flip until the worker has looked often enough (or a few seconds have gone by).
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    for (int i = 0;
         i < 20000 || (shown_seen.load() < 1000 && std::chrono::steady_clock::now() < deadline);
         ++i) {
        const bool on = (i % 2) == 0;
        WorkspaceModel::Get().SetAnswers(kTab, on, on, true);
    }
    stop = true;
    worker.join();
    EXPECT_GT(shown_seen.load(), 0);
    EXPECT_EQ(torn.load(), 0);
    EXPECT_TRUE(qzhost::HostControls::Get().Violations().empty());
}

} // namespace
} // namespace workspacetest
