// Locale-aware number text on ICU's number formatter.
//
// The text is exactly what icu::number::NumberFormatter gives for the host locale with
// grouping off and Precision::minMaxFraction(fewest, max(most, fewest)), with ICU's
// default rounding (half-even). Building a localized formatter is costly and this runs on
// every pointer move, so each thread keeps the formatters it has built, keyed by locale
// and fraction digits.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include <unicode/numberformatter.h>

#include "kitcore/utility/NumberText.h"
#include "qzhost/HostControls.h"

namespace kitcore::utility {

namespace {

// ICU refuses more fraction digits than this; larger counts are clamped to it.
constexpr std::size_t kMaxFractionDigits = 999;
// Formatters kept per thread; the oldest is dropped first.
constexpr std::size_t kMaxCachedFormatters = 16;

struct CachedFormatter {
    std::string locale;
    int32_t fewest;
    int32_t most;
    icu::number::LocalizedNumberFormatter formatter;
};

const icu::number::LocalizedNumberFormatter& ThreadFormatter(const std::string& locale,
                                                             int32_t fewest, int32_t most) {
    thread_local std::vector<CachedFormatter> cache;
    auto it = std::find_if(cache.begin(), cache.end(), [&](const CachedFormatter& entry) {
        return entry.fewest == fewest && entry.most == most && entry.locale == locale;
    });
    if (it != cache.end()) {
        return it->formatter;
    }
    if (cache.size() >= kMaxCachedFormatters) {
        cache.erase(cache.begin());
    }
    cache.push_back(
        CachedFormatter{locale, fewest, most,
                        icu::number::NumberFormatter::withLocale(icu::Locale(locale.c_str()))
                            .grouping(UNUM_GROUPING_OFF)
                            .precision(icu::number::Precision::minMaxFraction(fewest, most))});
    return cache.back().formatter;
}

int32_t FractionDigits(std::size_t count) {
    return static_cast<int32_t>(std::min(count, kMaxFractionDigits));
}

} // namespace

UTF16String NumberToString(double value, std::size_t most, std::size_t fewest,
                           Flags<unsigned short> /*flags*/, int /*last*/) {
    const qzhost::HostControls& host = qzhost::HostControls::Get();
    host.ThrowIfInjected(qzhost::op::kNumberText);
    const int32_t min_digits = FractionDigits(fewest);
    const int32_t max_digits = std::max(FractionDigits(most), min_digits);
    const auto& formatter = ThreadFormatter(host.Locale(), min_digits, max_digits);

    UErrorCode status = U_ZERO_ERROR;
    const icu::number::FormattedNumber formatted = formatter.formatDouble(value, status);
    const icu::UnicodeString text = formatted.toString(status);
    if (U_FAILURE(status)) {
        throw std::runtime_error(std::string("number text failed: ") + u_errorName(status));
    }
    return UTF16String(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

} // namespace kitcore::utility
