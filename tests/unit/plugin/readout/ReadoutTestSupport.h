// Helpers of the property-readout tests: a text-lines sink that records every update as
// UTF-8, and a fixture that starts and ends each test with the default host (en_US).
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "InfoPal/readout/TextLinesSink.h"
#include "kitcore/utility/UTF16String.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/UnicodeText.h"

namespace readout_test {

using kitcore::utility::UTF16String;

/// UTF-16 to UTF-8; a lone surrogate becomes U+FFFD.
inline std::string Utf8(const UTF16String& text) {
    return qzhost::strings::Utf16ToUtf8(text);
}

/// One five-line update as it reached the panel.
struct ShownLines {
    std::array<std::string, 5> lines;
    std::uint32_t type = 0;
};

inline std::ostream& operator<<(std::ostream& out, const ShownLines& shown) {
    out << "type " << shown.type << ":";
    for (const std::string& line : shown.lines) {
        out << " [" << line << "]";
    }
    return out;
}

/// Records every ShowTextLines call.
class RecordingSink final : public infopal::TextLinesSink {
public:
    void ShowTextLines(const UTF16String& line1, const UTF16String& line2, const UTF16String& line3,
                       const UTF16String& line4, const UTF16String& line5,
                       infopal::TextLinesType type) override {
        calls.push_back(
            ShownLines{{Utf8(line1), Utf8(line2), Utf8(line3), Utf8(line4), Utf8(line5)},
                       static_cast<std::uint32_t>(type)});
    }

    /// The only update; fails the test when there was not exactly one.
    ShownLines Only() const {
        EXPECT_EQ(calls.size(), 1U);
        return calls.empty() ? ShownLines{} : calls.front();
    }

    std::vector<ShownLines> calls;
};

/// The degree sign and the delta label in the host's default texts, as UTF-8.
inline constexpr const char* kDeg = "\u00B0";

/// `text` followed by the degree sign.
inline std::string Deg(const std::string& text) {
    return text + kDeg;
}

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr float kNaNf = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInff = std::numeric_limits<float>::infinity();
inline constexpr const char* kDeltaLabel = "\u0394:";

/// Each test starts and ends with the default host (en_US, UTF-8, nothing injected), and
/// runs on the host's main thread.
class ReadoutTest : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::HostControls::Get().Reset();
        qzhost::MainLoop::Get().AdoptCurrentThread();
    }
    void TearDown() override { qzhost::HostControls::Get().Reset(); }

    RecordingSink sink;
};

} // namespace readout_test
