// What text lines cost: an update of five short lines on a visible Info panel, and a
// three-line call made off the UI thread (the copy and the post to the main thread's
// queue, as the calling worker pays it).
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <thread>

#include "InfoPal/panel/InfoPal_UI.h"
#include "LoadedHost.h"
#include "qzhost/MainLoop.h"

namespace {

using kitcore::utility::UTF16String;

using qzbench::LoadedHost;

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
