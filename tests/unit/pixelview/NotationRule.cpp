#include "NotationRule.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace pixelviewtest {

std::string NumberText(double value, int min_digits, int max_digits, char separator) {
    char buffer[400];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    std::string text(buffer, result.ptr);
    const bool negative = !text.empty() && text[0] == '-';
    if (negative) {
        text.erase(0, 1);
    }
    const std::size_t point = text.find('.');
    std::string whole = point == std::string::npos ? text : text.substr(0, point);
    std::string fraction = point == std::string::npos ? "" : text.substr(point + 1);
    std::string digits = whole + fraction;
    const std::size_t keep = whole.size() + static_cast<std::size_t>(max_digits);
    if (digits.size() > keep) {
        const std::string rest = digits.substr(keep);
        digits.resize(keep);
        const bool above_half =
            rest[0] > '5' ||
            (rest[0] == '5' && rest.find_first_not_of('0', 1) != std::string::npos);
        const bool half = rest[0] == '5' && !above_half;
        const bool odd = !digits.empty() && (digits.back() - '0') % 2 == 1;
        if (above_half || (half && odd)) {
            std::size_t i = digits.size();
            while (i > 0 && digits[i - 1] == '9') {
                digits[--i] = '0';
            }
            if (i == 0) {
                digits.insert(digits.begin(), '1');
                whole.insert(whole.begin(), '0');
            } else {
                ++digits[i - 1];
            }
        }
    }
    digits.append(keep > digits.size() ? keep - digits.size() : 0, '0');
    whole = digits.substr(0, whole.size());
    fraction = digits.substr(whole.size());
    while (static_cast<int>(fraction.size()) > min_digits && fraction.back() == '0') {
        fraction.pop_back();
    }
    const std::size_t lead = std::min(whole.find_first_not_of('0'), whole.size() - 1);
    whole.erase(0, lead);
    return (negative ? "-" : "") + whole + (fraction.empty() ? "" : separator + fraction);
}

std::int32_t RoundHalfEven(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= 2147483647.0) {
        return INT32_MAX;
    }
    if (value <= -2147483648.0) {
        return INT32_MIN;
    }
    // Within the range a double holds its floor and the distance to it exactly.
    const double below = std::floor(value);
    const double above_by = value - below;
    double nearest = below;
    if (above_by > 0.5) {
        nearest = below + 1;
    } else if (above_by == 0.5) {
        nearest = std::fmod(below, 2.0) == 0 ? below : below + 1;
    }
    return static_cast<std::int32_t>(nearest);
}

namespace {

std::string Scaled(float v, float scale) {
    const float product = v * scale;
    return NumberText(static_cast<double>(RoundHalfEven(product)), 0, 1);
}

std::string Channel(float v, Mode mode, int depth, char separator) {
    switch (mode) {
    case kAuto:
        return Channel(v, depth == 0 ? kBpc8 : depth == 1 ? kBpc16 : kDecimal, depth, separator);
    case kPercent: {
        const float p = static_cast<float>(static_cast<double>(v) * 100.0);
        return NumberText(p, 1, 1, separator) + "%";
    }
    case kWeb: {
        char hex[17];
        std::snprintf(hex, sizeof hex, "%X", static_cast<std::uint32_t>(RoundHalfEven(v * 255.0f)));
        return hex;
    }
    case kBpc8:
        return Scaled(v, 255.0f);
    case kBpc10:
        return Scaled(v, 1023.0f);
    case kBpc16:
        return Scaled(v, 32768.0f);
    case kDecimal:
        return NumberText(v, 4, 4, separator);
    default:
        return "";
    }
}

} // namespace

std::array<std::string, 4> ExpectedValues(const Pixel& pixel, Mode mode, int depth,
                                          char separator) {
    const float a = pixel[0];
    std::array<std::string, 4> fields;
    if (mode == kHsb) {
        const double r = pixel[1];
        const double g = pixel[2];
        const double b = pixel[3];
        const double max = std::max({r, g, b});
        const double min = std::min({r, g, b});
        double s = 0;
        double h = -1;
        if (max != 0) {
            const double d = max - min;
            s = d / max;
            if (s != 0) {
                const double sector = r == max   ? (g - b) / d
                                      : g == max ? (b - r) / d + 2
                                                 : (r - g) / d + 4;
                h = sector * 60;
                if (h < 0) {
                    h += 360;
                }
            }
        }
        if (a != 0) {
            fields[0] = NumberText(std::max(0.0, h), 0, 1, separator);
            fields[1] = NumberText(s * 100, 0, 1, separator) + "%";
            fields[2] = NumberText(max * 100, 0, 1, separator) + "%";
        }
        fields[3] = NumberText(static_cast<double>(a) * 100, 0, 1, separator) + "%";
        return fields;
    }
    if (a != 0) {
        fields[0] = Channel(pixel[1], mode, depth, separator);
        fields[1] = Channel(pixel[2], mode, depth, separator);
        fields[2] = Channel(pixel[3], mode, depth, separator);
    }
    fields[3] = Channel(a, mode, depth, separator);
    return fields;
}

std::array<std::string, 4> ExpectedLabels(Mode mode) {
    if (mode == kHsb) {
        return {"H :", "S :", "B :", "A :"};
    }
    return {"R :", "G :", "B :", "A :"};
}

} // namespace pixelviewtest
