// A set of bit flags of an unsigned integer type.
#pragma once

namespace kitcore::utility {

template <class Bits>
class Flags {
public:
    constexpr Flags() noexcept = default;
    constexpr explicit Flags(Bits bits) noexcept : bits_(bits) {}
    constexpr Bits Value() const noexcept { return bits_; }
    constexpr bool Empty() const noexcept { return bits_ == 0; }
    constexpr bool Has(Bits bit) const noexcept { return (bits_ & bit) == bit; }

private:
    Bits bits_ = 0;
};

} // namespace kitcore::utility
