// Fuzz target of the preference-file reader: ParsePreferenceText over the text of a
// preference file. What it reads, the writer writes back, and that text reads back as
// the same preferences and is written again unchanged.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "PreferenceText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qzhost::prefs;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    PreferenceData read;
    try {
        read = ParsePreferenceText(text);
    } catch (const PreferenceFormatError& error) {
        if (error.Line() == 0) {
            std::abort(); // a problem is always on a line of the text
        }
        return 0;
    }
    const std::string written = FormatPreferenceText(read);
    if (ParsePreferenceText(written) != read) {
        std::abort(); // the written text does not read back as what was read
    }
    if (FormatPreferenceText(ParsePreferenceText(written)) != written) {
        std::abort();
    }
    return 0;
}
