#include "ConverterCache.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include <unicode/ucnv_cb.h>

namespace qzhost::strings {

namespace {

// At most this many code pages stay open per thread; the oldest is closed first.
constexpr std::size_t kMaxConvertersPerThread = 8;

struct ConverterCloser {
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};

struct CachedConverter {
    std::string name;
    std::unique_ptr<UConverter, ConverterCloser> converter;
};

// Writes U+FFFD for every invalid, irregular or unmapped byte sequence, whatever the
// converter's own substitution character is (some legacy code pages would give U+001A).
void SubstituteReplacementCharacter(const void* /*context*/, UConverterToUnicodeArgs* args,
                                    const char* /*units*/, int32_t /*length*/,
                                    UConverterCallbackReason reason, UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) {
        return; // reset, close or clone: nothing to write
    }
    *status = U_ZERO_ERROR;
    const UChar replacement = 0xFFFD;
    ucnv_cbToUWriteUChars(args, &replacement, 1, 0, status);
}

std::unique_ptr<UConverter, ConverterCloser> OpenConverter(const std::string& codepage) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UConverter, ConverterCloser> converter(ucnv_open(codepage.c_str(), &status));
    if (U_FAILURE(status) || converter == nullptr) {
        throw std::runtime_error("unknown code page '" + codepage + "': " + u_errorName(status));
    }
    ucnv_setToUCallBack(converter.get(), SubstituteReplacementCharacter, nullptr, nullptr, nullptr,
                        &status);
    if (U_FAILURE(status)) {
        throw std::runtime_error(std::string("code page set-up failed: ") + u_errorName(status));
    }
    return converter;
}

} // namespace

UConverter* ThreadConverter(const std::string& codepage) {
    thread_local std::vector<CachedConverter> cache;
    auto it = std::find_if(cache.begin(), cache.end(),
                           [&](const CachedConverter& entry) { return entry.name == codepage; });
    if (it == cache.end()) {
        auto converter = OpenConverter(codepage);
        if (cache.size() >= kMaxConvertersPerThread) {
            cache.erase(cache.begin());
        }
        cache.push_back(CachedConverter{codepage, std::move(converter)});
        it = cache.end() - 1;
    }
    ucnv_reset(it->converter.get());
    return it->converter.get();
}

} // namespace qzhost::strings
