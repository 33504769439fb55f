// What text lines cost: an update of five short lines on a visible Info panel, and a
// three-line call made off the UI thread (the copy and the post to the main thread's
// queue, as the calling worker pays it).
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <thread>

#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/HookRegistry.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/MenuModel.h"
#include "qzhost/SuiteRegistry.h"
#include "qzhost/WorkspaceModel.h"

extern "C" QZ_Err GPMain_InfoPal(QZ_BasicSuiteTable* basic, std::int32_t major, std::int32_t minor,
                                 QZGP_PluginID plugin_id, QZGP_GlobalRefcon* global_ref);

namespace {

using kitcore::utility::UTF16String;

/// The default host with the plug-in loaded and its panel open, on the calling thread.
class LoadedHost {
public:
    LoadedHost() {
        qzhost::MainLoop::Get().AdoptCurrentThread();
        qzhost::MainLoop::Get().Discard();
        qzhost::HostControls::Get().Reset();
        qzhost::MenuModel::Get().Reset();
        qzhost::HookRegistry::Get().Reset();
        qzhost::WorkspaceModel::Get().Reset();
        if (GPMain_InfoPal(qzhost::SuiteRegistry::Get().PluginTable(), 1, 0, 42, &global_) != 0) {
            std::abort();
        }
        qzhost::WorkspaceModel::Get().Open("QZGP_Info");
        panel_ = dynamic_cast<infopal::InfoPal_UI*>(infopal::InfoPal::GetPlugin()->GetPanel());
        const void* table = nullptr;
        if (panel_ == nullptr ||
            qzhost::SuiteRegistry::Get().Acquire(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                                 kQZ_InfoPaletteSuiteVersion2, &table) != 0) {
            std::abort();
        }
        suite_ = static_cast<const QZ_InfoPaletteSuite2*>(table);
    }

    ~LoadedHost() {
        qzhost::MainLoop::Get().AdoptCurrentThread();
        qzhost::MainLoop::Get().Discard();
        qzhost::SuiteRegistry::Get().Release(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                             kQZ_InfoPaletteSuiteVersion2);
        auto& hooks = qzhost::HookRegistry::Get().Hooks();
        if (hooks.death != nullptr) {
            (void)hooks.death(global_, hooks.deathRefcon);
        }
        qzhost::HookRegistry::Get().Clear();
        qzhost::WorkspaceModel::Get().Reset();
    }

    infopal::InfoPal_UI& Panel() { return *panel_; }
    const QZ_InfoPaletteSuite2& Suite() const { return *suite_; }

private:
    QZGP_GlobalRefcon global_ = nullptr;
    infopal::InfoPal_UI* panel_ = nullptr;
    const QZ_InfoPaletteSuite2* suite_ = nullptr;
};

// Two sets of five short lines, alternated so that every update changes the rows and
// redraws them, as a drag of a property does.
void BM_ShowTextLinesFiveShortLines(benchmark::State& state) {
    LoadedHost host;
    const UTF16String a[5] = {u"Layer 1", u"Position:", u"320.0, 240.0", u"\u0394:", u"-4.5, 0.0"};
    const UTF16String b[5] = {u"Layer 1", u"Position:", u"321.0, 240.0", u"\u0394:", u"-3.5, 0.0"};
    bool flip = false;
    for (auto _ : state) {
        const UTF16String* lines = flip ? b : a;
        host.Panel().ShowTextLines(lines[0], lines[1], lines[2], lines[3], lines[4],
                                   infopal::TextLinesType::Five);
        flip = !flip;
    }
    benchmark::DoNotOptimize(host.Panel().StoredLines());
}
BENCHMARK(BM_ShowTextLinesFiveShortLines);

// The worker's side of an off-thread SetTextLines3: the benchmark's thread is not the
// host's main thread, so each call copies its lines and posts them. The queue is emptied,
// outside the timing, every 4096 calls.
void BM_OffThreadSetTextLines3Post(benchmark::State& state) {
    LoadedHost host;
    std::thread([] { qzhost::MainLoop::Get().AdoptCurrentThread(); }).join();
    std::size_t posted = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            host.Suite().SetTextLines3("Layer 1", "Rotation:", "0x +45.0\u00B0"));
        if ((++posted & 4095U) == 0) {
            state.PauseTiming();
            qzhost::MainLoop::Get().Discard();
            state.ResumeTiming();
        }
    }
    qzhost::MainLoop::Get().Discard();
}
BENCHMARK(BM_OffThreadSetTextLines3Post);

} // namespace

BENCHMARK_MAIN();
