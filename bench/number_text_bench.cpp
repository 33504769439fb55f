// What the host's number text costs beside ICU's number formatter: the same 10,000 values
// (whole numbers, fractions, negatives, large and tiny magnitudes, values at and beside
// rounding ties) formatted with kitcore::utility::NumberToString and with an ICU
// LocalizedNumberFormatter (grouping off, Precision::minMaxFraction(fewest, max(most,
// fewest)), built once per locale and digit counts before anything is timed), in four
// locales, for the digit counts the readouts use: (most, fewest) = (1, 0), (1, 1), (1, 4).
//
// Before timing, every value is formatted both ways in every locale and for every pair of
// digit counts; the program stops with the differing texts and exit status 1 when any
// differ. Each benchmark iteration formats all 10,000 values; after the run a table gives
// the CPU time per value of both and their ratio, computed from this run's measurements
// (the median over repetitions when --benchmark_repetitions is given).
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <unicode/numberformatter.h>

#include "SplitMix64.h"
#include "kitcore/utility/NumberText.h"
#include "qzhost/HostControls.h"

namespace {

using kitcore::utility::Flags;
using kitcore::utility::NumberToString;
using kitcore::utility::UTF16String;

constexpr std::size_t kValueCount = 10000;

// ASCII digits and a full stop; ASCII digits and a comma (twice: these two locales differ
// only in their grouping separator, and grouping is off); Arabic-Indic digits, an Arabic
// decimal separator and a direction mark before the minus sign.
constexpr std::array<const char*, 4> kLocales = {"en_US", "de_DE", "fr_FR", "ar_EG"};

struct DigitCounts {
    std::size_t most;
    std::size_t fewest;
    int last; // NumberToString's last argument, as the readouts pass it
};

// The readouts' calls: a value with at most one fraction digit, a percentage with exactly
// one, a decimal channel value with exactly four.
constexpr std::array<DigitCounts, 3> kDigitCounts = {{{1, 0, 31}, {1, 1, 8}, {1, 4, 8}}};

using qztest::SplitMix64;

// The decimal `whole`.`fraction` with `places` fraction digits, ending in 5: a tie of
// ICU's rounding at `places - 1` digits (ICU rounds the shortest digits of the double).
double DecimalTie(std::uint64_t whole, std::uint64_t fraction, int places) {
    char text[64];
    std::snprintf(text, sizeof text, "%llu.%0*llu5", static_cast<unsigned long long>(whole),
                  places - 1, static_cast<unsigned long long>(fraction));
    return std::strtod(text, nullptr);
}

std::vector<double> MakeValues() {
    SplitMix64 random(0xB3C4D0E1F2A39584ULL);
    std::vector<double> values;
    values.reserve(kValueCount);
    // Ties of the three digit counts: at 0 digits (x.5), 1 digit (x.x5) and 4 digits
    // (x.xxxx5).
    constexpr std::array<int, 3> kTiePlaces = {1, 2, 5};
    while (values.size() < kValueCount) {
        double value = 0.0;
        switch (values.size() % 8) {
        case 0: { // whole numbers up to 2^40
            const int bits = static_cast<int>(random.Below(41));
            value = bits == 0 ? 0.0 : static_cast<double>(random.Next() >> (64 - bits));
            break;
        }
        case 1: // fractions below 1000
            value = random.Unit() * 1000.0;
            break;
        case 2: // 8-bit channel values scaled to 0..1 and widened from float
            value = static_cast<double>(static_cast<float>(random.Below(256)) / 255.0f);
            break;
        case 3: // large magnitudes, 1e6 to 1e22
            value = random.Unit() * std::pow(10.0, 6 + static_cast<int>(random.Below(17)));
            break;
        case 4: // tiny magnitudes, 1e-12 to 1e-2
            value = random.Unit() * std::pow(10.0, -12 + static_cast<int>(random.Below(11)));
            break;
        case 5: // binary ties, exact in the double: n + k / 2^j
        {
            const int j = 1 + static_cast<int>(random.Below(6));
            value = static_cast<double>(random.Below(10000)) +
                    std::ldexp(static_cast<double>(2 * random.Below(1ULL << (j - 1)) + 1), -j);
            break;
        }
        default: { // decimal ties and the doubles on either side of them
            const int places = kTiePlaces[random.Below(kTiePlaces.size())];
            const double tie = DecimalTie(random.Below(100000), random.Below(10000), places);
            const std::uint64_t side = random.Below(3);
            value = side == 0   ? tie
                    : side == 1 ? std::nextafter(tie, 0.0)
                                : std::nextafter(tie, std::numeric_limits<double>::infinity());
            break;
        }
        }
        // About half of every kind negative.
        values.push_back((random.Next() & 1) != 0 ? -value : value);
    }
    return values;
}

const std::vector<double>& Values() {
    static const std::vector<double> values = MakeValues();
    return values;
}

// The ICU formatters, one per locale and pair of digit counts, built before anything runs.
using IcuFormatter = icu::number::LocalizedNumberFormatter;
std::map<std::pair<std::size_t, std::size_t>, std::unique_ptr<IcuFormatter>> gFormatters;

const IcuFormatter& Formatter(std::size_t locale, std::size_t counts) {
    return *gFormatters.at({locale, counts});
}

void BuildFormatters() {
    for (std::size_t l = 0; l < kLocales.size(); ++l) {
        for (std::size_t c = 0; c < kDigitCounts.size(); ++c) {
            const auto fewest = static_cast<int32_t>(kDigitCounts[c].fewest);
            const auto most = std::max(static_cast<int32_t>(kDigitCounts[c].most), fewest);
            gFormatters[{l, c}] = std::make_unique<IcuFormatter>(
                icu::number::NumberFormatter::withLocale(icu::Locale(kLocales[l]))
                    .grouping(UNUM_GROUPING_OFF)
                    .precision(icu::number::Precision::minMaxFraction(fewest, most)));
        }
    }
}

std::string Utf8(const char16_t* units, std::size_t length) {
    std::string out;
    icu::UnicodeString(units, static_cast<int32_t>(length)).toUTF8String(out);
    return out;
}

// Formats every value both ways in every locale and for every pair of digit counts.
// Prints the first differences of each case; true when there are none.
bool TextsAgree() {
    const std::vector<double>& values = Values();
    bool agree = true;
    for (std::size_t l = 0; l < kLocales.size(); ++l) {
        qzhost::HostControls::Get().SetLocale(kLocales[l]);
        for (std::size_t c = 0; c < kDigitCounts.size(); ++c) {
            const DigitCounts& counts = kDigitCounts[c];
            const IcuFormatter& formatter = Formatter(l, c);
            std::size_t differences = 0;
            for (const double value : values) {
                UErrorCode status = U_ZERO_ERROR;
                const icu::UnicodeString expected =
                    formatter.formatDouble(value, status).toString(status);
                const UTF16String actual = NumberToString(value, counts.most, counts.fewest,
                                                          Flags<unsigned short>(), counts.last);
                const bool same = U_SUCCESS(status) &&
                                  static_cast<std::size_t>(expected.length()) == actual.size() &&
                                  expected.compare(0, expected.length(), actual.data(), 0,
                                                   static_cast<int32_t>(actual.size())) == 0;
                if (!same && ++differences <= 5) {
                    std::string icu_text;
                    expected.toUTF8String(icu_text);
                    std::fprintf(stderr,
                                 "number text differs from ICU: %s, most %zu fewest %zu, "
                                 "%.17g (%a): host \"%s\", ICU \"%s\" (%s)\n",
                                 kLocales[l], counts.most, counts.fewest, value, value,
                                 Utf8(actual.data(), actual.size()).c_str(), icu_text.c_str(),
                                 u_errorName(status));
                }
            }
            if (differences != 0) {
                std::fprintf(stderr, "%s, most %zu fewest %zu: %zu of %zu texts differ\n",
                             kLocales[l], counts.most, counts.fewest, differences, values.size());
                agree = false;
            }
        }
    }
    return agree;
}

void TimeHostNumberText(benchmark::State& state, std::size_t locale, std::size_t c) {
    qzhost::HostControls::Get().SetLocale(kLocales[locale]);
    const DigitCounts& counts = kDigitCounts[c];
    const std::vector<double>& values = Values();
    for (auto _ : state) {
        for (const double value : values) {
            UTF16String text = NumberToString(value, counts.most, counts.fewest,
                                              Flags<unsigned short>(), counts.last);
            benchmark::DoNotOptimize(text.data());
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}

// ICU's formatted number and its text as a string of its own, as a caller keeps it.
void TimeIcuNumberText(benchmark::State& state, std::size_t locale, std::size_t c) {
    const IcuFormatter& formatter = Formatter(locale, c);
    const std::vector<double>& values = Values();
    for (auto _ : state) {
        for (const double value : values) {
            UErrorCode status = U_ZERO_ERROR;
            icu::UnicodeString text = formatter.formatDouble(value, status).toString(status);
            benchmark::DoNotOptimize(text.getBuffer());
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}

std::string CaseName(std::size_t locale, std::size_t c) {
    return std::string(kLocales[locale]) + "/most" + std::to_string(kDigitCounts[c].most) +
           "_fewest" + std::to_string(kDigitCounts[c].fewest);
}

// The console report, plus the CPU time per iteration of every run, kept by benchmark name
// for the table after the run.
class CollectingReporter : public benchmark::ConsoleReporter {
public:
    explicit CollectingReporter(OutputOptions options) : ConsoleReporter(options) {}

    void ReportRuns(const std::vector<Run>& reports) override {
        for (const Run& run : reports) {
            if (run.error_occurred) {
                continue;
            }
            const std::string name = run.run_name.function_name;
            // Times in nanoseconds per iteration.
            const double scale = 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
            if (run.run_type == Run::RT_Iteration) {
                runs_[name].push_back(run.GetAdjustedCPUTime() * scale);
            } else if (run.aggregate_name == "median") {
                medians_[name] = run.GetAdjustedCPUTime() * scale;
            }
        }
        ConsoleReporter::ReportRuns(reports);
    }

    // The median CPU time per iteration of the named benchmark in nanoseconds, or a
    // negative number when it did not run.
    double Nanoseconds(const std::string& name) const {
        if (const auto it = runs_.find(name); it != runs_.end() && !it->second.empty()) {
            std::vector<double> times = it->second;
            std::sort(times.begin(), times.end());
            const std::size_t n = times.size();
            return n % 2 == 1 ? times[n / 2] : (times[n / 2 - 1] + times[n / 2]) / 2.0;
        }
        if (const auto it = medians_.find(name); it != medians_.end()) {
            return it->second;
        }
        return -1.0;
    }

private:
    std::map<std::string, std::vector<double>> runs_;
    std::map<std::string, double> medians_;
};

void PrintSummary(const CollectingReporter& reporter) {
    const double n = static_cast<double>(Values().size());
    std::printf("\nCPU time per value (median over repetitions), %zu values\n", Values().size());
    std::printf("%-26s %12s %12s %10s\n", "locale/digits", "host ns", "ICU ns", "ICU/host");
    double host_total = 0.0;
    double icu_total = 0.0;
    for (std::size_t l = 0; l < kLocales.size(); ++l) {
        for (std::size_t c = 0; c < kDigitCounts.size(); ++c) {
            const std::string name = CaseName(l, c);
            const double host = reporter.Nanoseconds("host/" + name);
            const double icu = reporter.Nanoseconds("icu/" + name);
            if (host < 0.0 || icu < 0.0) {
                continue;
            }
            host_total += host;
            icu_total += icu;
            std::printf("%-26s %12.1f %12.1f %10.1f\n", name.c_str(), host / n, icu / n,
                        icu / host);
        }
    }
    if (host_total > 0.0) {
        std::printf("%-26s %12.1f %12.1f %10.1f\n", "all cases (total time)", host_total / n,
                    icu_total / n, icu_total / host_total);
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    if (Values().size() != kValueCount) {
        std::fprintf(stderr, "expected %zu values, made %zu\n", kValueCount, Values().size());
        return 1;
    }
    BuildFormatters();
    if (!TextsAgree()) {
        std::fprintf(stderr, "the host's number text is not ICU's; nothing was timed\n");
        return 1;
    }
    for (std::size_t l = 0; l < kLocales.size(); ++l) {
        for (std::size_t c = 0; c < kDigitCounts.size(); ++c) {
            const std::string name = CaseName(l, c);
            benchmark::RegisterBenchmark(("host/" + name).c_str(), TimeHostNumberText, l, c)
                ->Unit(benchmark::kMicrosecond);
            benchmark::RegisterBenchmark(("icu/" + name).c_str(), TimeIcuNumberText, l, c)
                ->Unit(benchmark::kMicrosecond);
        }
    }
    auto options = benchmark::ConsoleReporter::OO_Tabular;
    if (isatty(STDOUT_FILENO) != 0) {
        options = static_cast<benchmark::ConsoleReporter::OutputOptions>(
            options | benchmark::ConsoleReporter::OO_Color);
    }
    CollectingReporter reporter(options);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    PrintSummary(reporter);
    benchmark::Shutdown();
    return 0;
}
