// Points of the image, as the command line and standard input give them: "X,Y", two
// numbers in image coordinates (the pixel's column and row; fractions allowed).
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace qzhost::pixelview {

struct Point {
    double x = 0;
    double y = 0;
};

/// Parses "X,Y" (blanks around either number allowed). Throws BadRequest naming `what`
/// when the text is not two finite numbers separated by one comma.
Point ParsePoint(std::string_view text, const std::string& what);

/// Reads points from a stream one line at a time, as the lines arrive: one point per
/// line; empty lines and lines whose first non-blank character is '#' are skipped.
class PointReader {
public:
    explicit PointReader(std::istream& in) : in_(in) {}

    /// The next point, or false at the end of the stream. Throws BadRequest naming the
    /// line when a line is not a point, or when reading fails.
    bool Next(Point& point);

private:
    std::istream& in_;
    std::string line_;
    long number_ = 0;
};

/// Reads one point per line from `in` to its end, as PointReader does.
std::vector<Point> ReadPoints(std::istream& in);

} // namespace qzhost::pixelview
