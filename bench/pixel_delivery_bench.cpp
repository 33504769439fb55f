// What one pixel delivery costs: suite slot 4 on a visible Info panel (labels, swatch
// colour, the four channel values, X/Y; no drawing) in four notations, beside a floor
// that only turns the same six numbers into UTF-16 text with std::to_chars. Each
// benchmark reports the heap allocations per delivery (global operator new, and malloc
// as the C libraries call it).
#include <benchmark/benchmark.h>

#include <array>
#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <new>

#include "InfoPal/panel/InfoPal_UI.h"
#include "LoadedHost.h"
#include "qzhost/MainLoop.h"

// Allocation counters of the whole program.
namespace {
std::atomic<std::uint64_t> gNewCalls{0};
std::atomic<std::uint64_t> gMallocCalls{0};
} // namespace

// glibc's own allocator, behind the counting malloc below.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void __libc_free(void* block);

extern "C" void* malloc(std::size_t size) {
    gMallocCalls.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}
extern "C" void* calloc(std::size_t count, std::size_t size) {
    gMallocCalls.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(count, size);
}
extern "C" void* realloc(void* block, std::size_t size) {
    gMallocCalls.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(block, size);
}

void* operator new(std::size_t size) {
    gNewCalls.fetch_add(1, std::memory_order_relaxed);
    if (void* block = __libc_malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
    return ::operator new(size);
}
void operator delete(void* block) noexcept {
    __libc_free(block);
}
void operator delete[](void* block) noexcept {
    __libc_free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    __libc_free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    __libc_free(block);
}

namespace {

using qzbench::LoadedHost;

// Four pointer moves over a gradient, delivered in turn.
constexpr std::array<PF_PixelFloat, 4> kPixels = {{{1.0f, 0.8125f, 0.25f, 0.125f},
                                                   {1.0f, 0.5f, 0.75f, 0.0625f},
                                                   {0.5f, 0.3f, 0.6f, 0.9f},
                                                   {1.0f, 1.25f, 0.0f, 0.4f}}};
constexpr std::array<M_Vector2T<double>, 4> kPositions = {
    {{120.25, 64.5}, {121.75, 64.5}, {123.5, 65.25}, {124.0, 66.75}}};

// `command` is a flyout command, or -1 for a notation without a rule (mode 9: the fields
// stay empty and no number is formatted), which shows what the rest of a delivery costs.
void Delivery(benchmark::State& state, std::int32_t command) {
    LoadedHost host;
    if (command < 0) {
        host.Panel().SetPixelDisplayMode(9);
    } else if (!host.Panel().DoFlyoutMenuCommand(command)) {
        std::abort();
    }
    const QZ_InfoPaletteSuite2& suite = host.Suite();
    // Warm up: every buffer and free list reaches its steady size.
    for (std::size_t i = 0; i < 64; ++i) {
        (void)suite.SetPixelInfo(&kPixels[i % 4], &kPositions[i % 4], nullptr);
    }
    const std::uint64_t news = gNewCalls.load();
    const std::uint64_t mallocs = gMallocCalls.load();
    std::size_t i = 0;
    for (auto _ : state) {
        const QZ_Err err = suite.SetPixelInfo(&kPixels[i % 4], &kPositions[i % 4], nullptr);
        benchmark::DoNotOptimize(err);
        ++i;
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["new_per_delivery"] = static_cast<double>(gNewCalls.load() - news) / n;
    state.counters["malloc_per_delivery"] = static_cast<double>(gMallocCalls.load() - mallocs) / n;
}

// The floor: the six numbers of a delivery (four channels scaled to 8 bits, X and Y
// floored) as UTF-16 text, with nothing else.
void Floor(benchmark::State& state) {
    std::array<std::array<char16_t, 16>, 6> texts{};
    const std::uint64_t news = gNewCalls.load();
    const std::uint64_t mallocs = gMallocCalls.load();
    std::size_t i = 0;
    for (auto _ : state) {
        const PF_PixelFloat& p = kPixels[i % 4];
        const M_Vector2T<double>& at = kPositions[i % 4];
        const double numbers[6] = {std::round(p.red * 255.0f),
                                   std::round(p.green * 255.0f),
                                   std::round(p.blue * 255.0f),
                                   std::round(p.alpha * 255.0f),
                                   std::floor(at.x),
                                   std::floor(at.y)};
        for (std::size_t k = 0; k < 6; ++k) {
            char narrow[16];
            const auto result =
                std::to_chars(narrow, narrow + sizeof narrow, static_cast<int>(numbers[k]));
            std::size_t length = 0;
            for (const char* c = narrow; c != result.ptr; ++c) {
                texts[k][length++] = static_cast<char16_t>(*c);
            }
            texts[k][length] = u'\0';
        }
        benchmark::DoNotOptimize(texts);
        ++i;
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["new_per_delivery"] = static_cast<double>(gNewCalls.load() - news) / n;
    state.counters["malloc_per_delivery"] = static_cast<double>(gMallocCalls.load() - mallocs) / n;
}

} // namespace

BENCHMARK(Floor)->Name("floor_to_chars_utf16");
BENCHMARK_CAPTURE(Delivery, bpc8, 54)->Name("delivery_bpc8");
BENCHMARK_CAPTURE(Delivery, percent, 51)->Name("delivery_percent");
BENCHMARK_CAPTURE(Delivery, decimal, 57)->Name("delivery_decimal");
BENCHMARK_CAPTURE(Delivery, hsb, 53)->Name("delivery_hsb");
BENCHMARK_CAPTURE(Delivery, no_rule, -1)->Name("delivery_without_number_text");

BENCHMARK_MAIN();
