// Fuzz target of the request readers of `qzhost inspect`: its command line and the points
// of its standard input. Each line of the input is one word of the command line after
// "inspect"; the words are parsed with the command's own options (CLI11) and, when they
// parse, the request is checked as the command checks it before the host starts (points,
// origin, notation, scale, locale, the files named). The same lines are then read as the
// points of standard input (`--at -`). A point that is read is two finite numbers, and
// the shortest text of those numbers reads back as the same point.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewPoint.h"
#include "pixelview/PixelViewRequest.h"

namespace {

using namespace qzhost::pixelview;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

std::string Text(double value) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

void CheckPoint(const Point& point) {
    Require(std::isfinite(point.x) && std::isfinite(point.y));
    const Point again = ParsePoint(Text(point.x) + "," + Text(point.y), "the point");
    Require(again.x == point.x && again.y == point.y);
}

void CheckCommandLine(std::vector<std::string> words) {
    // CLI11 takes the words last first.
    std::reverse(words.begin(), words.end());
    PixelViewOptions options;
    CLI::App command("inspect", "inspect");
    AddPixelViewOptions(command, options);
    try {
        command.parse(words);
    } catch (const CLI::ParseError&) {
        return;
    }
    try {
        const PixelViewRequest request = CheckPixelViewOptions(options);
        Require(!request.sources.empty());
        for (const PointSource& source : request.sources) {
            if (!source.fromInput) {
                CheckPoint(source.at);
            }
        }
        if (request.origin) {
            CheckPoint(*request.origin);
        }
    } catch (const BadRequest&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> words;
    std::istringstream lines(text);
    for (std::string word; std::getline(lines, word);) {
        words.push_back(word);
    }
    CheckCommandLine(words);

    std::istringstream in(text);
    PointReader reader(in);
    try {
        for (Point point; reader.Next(point);) {
            CheckPoint(point);
        }
    } catch (const BadRequest&) {
    }
    return 0;
}
