// Fuzz target of the point reader of `qzhost inspect`: the input as one point ("X,Y", as
// --at and --origin give it) and as the lines of standard input (`--at -`). A point that
// is read is two finite numbers, and the shortest text of those numbers reads back as the
// same point.
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewPoint.h"

namespace {

using qzhost::pixelview::Point;

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
    const Point again =
        qzhost::pixelview::ParsePoint(Text(point.x) + "," + Text(point.y), "the point");
    Require(again.x == point.x && again.y == point.y);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        CheckPoint(qzhost::pixelview::ParsePoint(text, "--at"));
    } catch (const qzhost::pixelview::BadRequest&) {
    }
    std::istringstream in(text);
    qzhost::pixelview::PointReader reader(in);
    try {
        for (Point point; reader.Next(point);) {
            CheckPoint(point);
        }
    } catch (const qzhost::pixelview::BadRequest&) {
    }
    return 0;
}
