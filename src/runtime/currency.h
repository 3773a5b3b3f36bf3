// Fixed-point numbers with four decimals, for sizes that are compared exactly.
#pragma once

#include <compare>
#include <cstdint>

namespace runtime {

// Range ±922,337,203,685,477.5807.
class Currency {
public:
    constexpr Currency() = default;

    static constexpr Currency fromUnits(std::int64_t tenThousandths) {
        Currency result;
        result.units_ = tenThousandths;
        return result;
    }

    // Rounded half to even at the fourth decimal; errOverflow beyond the range.
    static Currency fromDouble(double value);

    constexpr std::int64_t units() const { return units_; }  // ten-thousandths
    constexpr double toDouble() const { return static_cast<double>(units_) / 10000.0; }

    constexpr auto operator<=>(const Currency&) const = default;

private:
    std::int64_t units_ = 0;
};

namespace literals {

// 9.36_cur; the literal has at most four decimals.
consteval Currency operator""_cur(long double value) {
    return Currency::fromUnits(static_cast<std::int64_t>(value * 10000.0L + 0.5L));
}
consteval Currency operator""_cur(unsigned long long value) {
    return Currency::fromUnits(static_cast<std::int64_t>(value * 10000));
}

}  // namespace literals

}  // namespace runtime
