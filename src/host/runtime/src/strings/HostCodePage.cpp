// The host's code-page conversions, on the calling thread's cached ICU converters.
#include "HostCodePage.h"

#include <stdexcept>

#include "ConverterCache.h"
#include "qzhost/HostControls.h"

namespace qzhost::strings {

namespace {

[[noreturn]] void ThrowConversionError(UErrorCode status) {
    throw std::runtime_error(std::string("code page conversion failed: ") + u_errorName(status));
}

// Runs one ICU conversion step over the whole input into `out`, which starts at
// `initial` units and doubles whenever the converter runs out of room.
template <class Out, class In, class Step>
Out ConvertAll(std::basic_string_view<In> input, std::size_t initial, Step step) {
    Out out(initial, typename Out::value_type{});
    const In* source = input.data();
    const In* const source_end = input.data() + input.size();
    std::size_t written = 0;
    for (;;) {
        auto* target = out.data() + written;
        UErrorCode status = U_ZERO_ERROR;
        step(&target, out.data() + out.size(), &source, source_end, &status);
        written = static_cast<std::size_t>(target - out.data());
        if (status == U_BUFFER_OVERFLOW_ERROR) {
            out.resize(out.size() * 2);
            continue;
        }
        if (U_FAILURE(status)) {
            ThrowConversionError(status);
        }
        break;
    }
    out.resize(written);
    return out;
}

} // namespace

kitcore::utility::UTF16String FromHostCodePage(std::string_view bytes) {
    if (bytes.empty()) {
        return {};
    }
    UConverter* converter = ThreadConverter(HostControls::Get().Codepage());
    // One unit per byte is enough for nearly every code page; grow when it is not.
    return ConvertAll<kitcore::utility::UTF16String>(
        bytes, bytes.size() + 16,
        [converter](UChar** target, const UChar* target_end, const char** source,
                    const char* source_end, UErrorCode* status) {
            ucnv_toUnicode(converter, target, target_end, source, source_end, nullptr, true,
                           status);
        });
}

std::string ToHostCodePage(std::u16string_view text) {
    if (text.empty()) {
        return {};
    }
    UConverter* converter = ThreadConverter(HostControls::Get().Codepage());
    const auto most_per_unit = static_cast<std::size_t>(ucnv_getMaxCharSize(converter));
    return ConvertAll<std::string>(text, text.size() * most_per_unit + 16,
                                   [converter](char** target, const char* target_end,
                                               const UChar** source, const UChar* source_end,
                                               UErrorCode* status) {
                                       ucnv_fromUnicode(converter, target, target_end, source,
                                                        source_end, nullptr, true, status);
                                   });
}

} // namespace qzhost::strings
