// What one sample of the Info panel costs in the viewer: the composite of the square
// around the pointer's pixel, taken from the layers' full-precision pixels and averaged
// (CompositeSampler, as InfoFeed::Deliver calls it once a frame). Three 3840 x 2160 float
// layers: a plate covering the composition, one at 60 % opacity and one turned off the
// pixel grid on top, so that every square composites three layers, one of them warped.
// The pointer steps between places all over the composition, so that each sample reads
// pixels that the last one did not. The goal: well within a 60 Hz frame (16 ms).
#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <string>

#include "BenchPlates.h"
#include "composition/CompositeSample.h"
#include "composition/Composition.h"

namespace {

qzview::LayerImage Plate(int index) {
    return benchplates::Plate(index, qzview::SampleKind::Float);
}

/// The three layers, made once for every benchmark of the run.
const qzview::Composition& Plates() {
    static const qzview::Composition composition = [] {
        qzview::Composition made;
        made.AddImage(Plate(0));
        const int middle = made.AddImage(Plate(1));
        const int top = made.AddImage(Plate(2));
        qzview::LayerValues values = made.Find(middle)->values;
        values.opacity = 60;
        made.SetValues(middle, values);
        values = made.Find(top)->values;
        values.rotation = 12;
        values.position = {1930.4, 1075.7, 0};
        made.SetValues(top, values);
        return made;
    }();
    return composition;
}

/// Samples of side state.range(0) at places spread over the composition.
void Sample(benchmark::State& state) {
    const int size = static_cast<int>(state.range(0));
    const auto snapshot = Plates().Snapshot();
    int dx = 0;
    int dy = 0;
    if (snapshot->layers.size() != 3 || snapshot->layers[2].warp.WholePixelShift(dx, dy)) {
        state.SkipWithError("the composition is not three layers, the top one warped");
        return;
    }
    qzview::CompositeSampler sampler;
    constexpr std::array<std::array<int, 2>, 8> places = {{{1920, 1080},
                                                           {400, 300},
                                                           {3500, 1900},
                                                           {2600, 700},
                                                           {1200, 1700},
                                                           {3000, 200},
                                                           {50, 2100},
                                                           {1937, 1091}}};
    std::size_t i = 0;
    float alpha = 0;
    for (auto _ : state) {
        const auto& [x, y] = places[i % places.size()];
        const std::array<float, 4> pixel = sampler.At(*snapshot, x, y, size);
        benchmark::DoNotOptimize(pixel);
        alpha += pixel[3];
        ++i;
    }
    // Every place lies under the opaque plate: a sample that read nothing would show it.
    if (!(alpha / static_cast<float>(state.iterations()) > 0.99f)) {
        state.SkipWithError("the samples did not read the plate");
    }
    state.counters["pixels"] = static_cast<double>(size) * size;
}

} // namespace

BENCHMARK(Sample)
    ->Name("viewer_sample_three_4k_float_layers")
    ->Arg(1)
    ->Arg(11)
    ->Arg(31)
    ->Arg(101)
    ->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
