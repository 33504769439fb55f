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

/// Two finite numbers separated by one comma, or false.
bool TwoNumbers(std::string_view text, Point& point) {
    const std::size_t comma = text.find(',');
    return comma != std::string_view::npos && text.find(',', comma + 1) == std::string_view::npos &&
           Number(text.substr(0, comma), point.x) && Number(text.substr(comma + 1), point.y);
}

[[noreturn]] void RefusePoint(std::string_view text, const std::string& what) {
    throw BadRequest(what + " must be X,Y (two numbers), not '" + std::string(text) + "'");
}

} // namespace

Point ParsePoint(std::string_view text, const std::string& what) {
    Point point;
    if (!TwoNumbers(text, point)) {
        RefusePoint(text, what);
    }
    return point;
}

bool PointReader::Next(Point& point) {
    while (std::getline(in_, line_)) {
        ++number_;
        const std::string_view text = Trimmed(line_);
        if (text.empty() || text.front() == '#') {
            continue;
        }
        if (!TwoNumbers(text, point)) {
            RefusePoint(text, "standard input line " + std::to_string(number_));
        }
        return true;
    }
    if (in_.bad()) {
        throw BadRequest("reading points from standard input failed after line " +
                         std::to_string(number_));
    }
    return false;
}

std::vector<Point> ReadPoints(std::istream& in) {
    std::vector<Point> points;
    PointReader reader(in);
    for (Point point; reader.Next(point);) {
        points.push_back(point);
    }
    return points;
}

} // namespace qzhost::pixelview
