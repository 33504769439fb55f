// What `qzhost inspect` costs: one point (the whole run: the image opened, the host set
// up, the plug-in loaded, its panel opened, the pixel shown and printed) and 10,000
// points read from standard input, whose time less that of one point, divided by 9,999,
// is the cost of each further point.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>

#include "pixelview/PixelViewCommand.h"
#include "qzhost/MainLoop.h"

namespace {

namespace fs = std::filesystem;
using qzhost::pixelview::PixelViewOptions;
using qzhost::pixelview::RunPixelView;

constexpr int kManyPoints = 10000;

/// A preference file of the benchmark's own, so that the user's is never touched.
std::string PrefsFile() {
    static const std::string path =
        (fs::temp_directory_path() / "qzpixelview-bench-preferences.txt").string();
    return path;
}

/// Points spread over the bundled chart (240 by 160 pixels), one per line.
std::string ManyPoints() {
    std::string text;
    for (int i = 0; i < kManyPoints; ++i) {
        text += std::to_string((i * 7) % 240) + "," + std::to_string((i * 13) % 160) + "\n";
    }
    return text;
}

void PixelView(benchmark::State& state, const PixelViewOptions& options, const std::string& input) {
    qzhost::MainLoop::Get().AdoptCurrentThread();
    std::size_t printed = 0;
    for (auto _ : state) {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        if (RunPixelView(options, in, out, err) != 0) {
            state.SkipWithError(err.str().c_str());
            break;
        }
        printed = out.str().size();
        benchmark::DoNotOptimize(printed);
    }
    state.counters["bytes_printed"] = static_cast<double>(printed);
}

void BM_PixelViewOnePoint(benchmark::State& state) {
    PixelViewOptions options;
    options.at = {"45,85"};
    options.prefs = PrefsFile();
    PixelView(state, options, "");
}
BENCHMARK(BM_PixelViewOnePoint)->Unit(benchmark::kMillisecond);

void BM_PixelViewPointsFromStandardInput(benchmark::State& state) {
    PixelViewOptions options;
    options.at = {"-"};
    options.prefs = PrefsFile();
    options.json = state.range(0) != 0;
    PixelView(state, options, ManyPoints());
    state.SetItemsProcessed(state.iterations() * kManyPoints);
}
BENCHMARK(BM_PixelViewPointsFromStandardInput)
    ->ArgName("json")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    std::remove(PrefsFile().c_str());
    return 0;
}
