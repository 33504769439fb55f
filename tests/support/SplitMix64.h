// A small random number generator written out here (SplitMix64), so that tests and
// benchmarks draw the same values from a seed on every standard library.
#pragma once

#include <cstdint>

namespace qztest {

class SplitMix64 {
public:
    explicit SplitMix64(std::uint64_t seed) : state_(seed) {}
    std::uint64_t Next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    /// A number below `bound` (above 0).
    std::uint64_t Below(std::uint64_t bound) { return Next() % bound; }
    /// A number in [0, 1) with 53 random bits.
    double Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }

private:
    std::uint64_t state_;
};

} // namespace qztest
