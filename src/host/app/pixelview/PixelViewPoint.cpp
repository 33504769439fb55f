#include "pixelview/PixelViewPoint.h"

#include <charconv>
#include <cmath>
#include <istream>

#include "pixelview/PixelViewError.h"

namespace qzhost::pixelview {

namespace {

constexpr std::string_view kBlanks = " \t\r\f\v";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t last = text.find_last_not_of(kBlanks);
    return text.substr(first, last - first + 1);
}

/// One finite number filling all of `text`, or false.
bool Number(std::string_view text, double& value) {
    text = Trimmed(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return false;
    }
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && std::isfinite(value);
}

} // namespace

Point ParsePoint(std::string_view text, const std::string& what) {
    const std::size_t comma = text.find(',');
    Point point;
    if (comma == std::string_view::npos || text.find(',', comma + 1) != std::string_view::npos ||
        !Number(text.substr(0, comma), point.x) || !Number(text.substr(comma + 1), point.y)) {
        throw BadRequest(what + " must be X,Y (two numbers), not '" + std::string(text) + "'");
    }
    return point;
}

std::vector<Point> ReadPoints(std::istream& in) {
    std::vector<Point> points;
    std::string line;
    long number = 0;
    while (std::getline(in, line)) {
        ++number;
        const std::string_view text = Trimmed(line);
        if (text.empty() || text.front() == '#') {
            continue;
        }
        points.push_back(ParsePoint(text, "standard input line " + std::to_string(number)));
    }
    if (in.bad()) {
        throw BadRequest("reading points from standard input failed after line " +
                         std::to_string(number));
    }
    return points;
}

} // namespace qzhost::pixelview
