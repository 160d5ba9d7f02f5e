// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <compare>
#include <concepts>
#include <cstdint>

/// \file
/// Whole numbers of 128 bits without a sign: Wide.

namespace brackwell {

/// Such a number for compilers that have none. As with theirs, results that do not fit lose their upper bits;
/// nobody relies on that.
class PortableWide {
public:
    constexpr PortableWide() noexcept = default;
    template <std::integral Integer>
    constexpr PortableWide(Integer value) noexcept  // NOLINT(google-explicit-constructor): as of a built-in
        : high_(value < Integer{0} ? ~std::uint64_t{0} : 0), low_(static_cast<std::uint64_t>(value)) {}

    template <std::integral Integer>
    constexpr explicit operator Integer() const noexcept {
        return static_cast<Integer>(low_);
    }

    friend constexpr PortableWide operator+(PortableWide a, PortableWide b) noexcept {
        const std::uint64_t low = a.low_ + b.low_;
        return {a.high_ + b.high_ + (low < a.low_ ? 1 : 0), low};
    }
    friend constexpr PortableWide operator-(PortableWide a, PortableWide b) noexcept {
        return {a.high_ - b.high_ - (a.low_ < b.low_ ? 1 : 0), a.low_ - b.low_};
    }
    friend constexpr PortableWide operator*(PortableWide a, PortableWide b) noexcept {
        PortableWide product = productOf(a.low_, b.low_);
        product.high_ += a.high_ * b.low_ + a.low_ * b.high_;
        return product;
    }
    /// The divisor is not zero.
    friend constexpr PortableWide operator/(PortableWide a, PortableWide b) noexcept {
        if (b.high_ == 0 && b.low_ <= kLowerHalf) return a.dividedByHalfWord(b.low_);
        PortableWide quotient;
        if (a < b) return quotient;
        for (unsigned shift = b.zerosInFront() - a.zerosInFront() + 1; shift-- != 0;) {
            const PortableWide part = b << shift;
            quotient = quotient << 1;
            if (a < part) continue;
            a = a - part;
            quotient.low_ |= 1;
        }
        return quotient;
    }
    friend constexpr PortableWide operator%(PortableWide a, PortableWide b) noexcept { return a - a / b * b; }
    friend constexpr PortableWide operator<<(PortableWide number, unsigned count) noexcept {
        if (count == 0) return number;
        if (count >= kWord) return {number.low_ << (count - kWord), 0};
        return {number.high_ << count | number.low_ >> (kWord - count), number.low_ << count};
    }
    friend constexpr PortableWide operator>>(PortableWide number, unsigned count) noexcept {
        if (count == 0) return number;
        if (count >= kWord) return {0, number.high_ >> (count - kWord)};
        return {number.high_ >> count, number.low_ >> count | number.high_ << (kWord - count)};
    }
    friend constexpr PortableWide operator|(PortableWide a, PortableWide b) noexcept {
        return {a.high_ | b.high_, a.low_ | b.low_};
    }
    friend constexpr PortableWide operator&(PortableWide a, PortableWide b) noexcept {
        return {a.high_ & b.high_, a.low_ & b.low_};
    }
    constexpr PortableWide& operator+=(PortableWide other) noexcept { return *this = *this + other; }
    constexpr PortableWide& operator/=(PortableWide other) noexcept { return *this = *this / other; }
    constexpr PortableWide& operator++() noexcept { return *this = *this + 1; }

    // The upper half comes first, so that these are the orders of numbers.
    friend constexpr bool operator==(const PortableWide&, const PortableWide&) noexcept = default;
    friend constexpr auto operator<=>(const PortableWide&, const PortableWide&) noexcept = default;

private:
    static constexpr unsigned kWord = 64;
    static constexpr unsigned kHalf = 32;
    static constexpr std::uint64_t kLowerHalf = 0xFFFFFFFF;

    constexpr PortableWide(std::uint64_t high, std::uint64_t low) noexcept : high_(high), low_(low) {}

    /// The product of two halves, whose parts of half a word are multiplied as on paper.
    static constexpr PortableWide productOf(std::uint64_t a, std::uint64_t b) noexcept {
        const std::uint64_t lower = (a & kLowerHalf) * (b & kLowerHalf);
        const std::uint64_t crossed = (a & kLowerHalf) * (b >> kHalf);
        const std::uint64_t middle =
            (a >> kHalf) * (b & kLowerHalf) + (lower >> kHalf) + (crossed & kLowerHalf);
        const std::uint64_t upper = (a >> kHalf) * (b >> kHalf);
        return {upper + (crossed >> kHalf) + (middle >> kHalf), middle << kHalf | (lower & kLowerHalf)};
    }
    /// Division as on paper, with digits of half a word.
    constexpr PortableWide dividedByHalfWord(std::uint64_t divisor) const noexcept {
        const auto digit = [divisor](std::uint64_t& rest, std::uint64_t next) {
            rest = (rest % divisor) << kHalf | next;
            return rest / divisor;
        };
        std::uint64_t rest = 0;
        std::uint64_t high = digit(rest, high_ >> kHalf) << kHalf;
        high |= digit(rest, high_ & kLowerHalf);
        std::uint64_t low = digit(rest, low_ >> kHalf) << kHalf;
        low |= digit(rest, low_ & kLowerHalf);
        return {high, low};
    }
    constexpr unsigned zerosInFront() const noexcept {
        const auto zeros = [](std::uint64_t word) { return static_cast<unsigned>(std::countl_zero(word)); };
        return high_ != 0 ? zeros(high_) : kWord + zeros(low_);
    }

    std::uint64_t high_ = 0;
    std::uint64_t low_ = 0;
};

// With sizes of 32 bits the compiler's own is a call of functions, which not every kit for WebAssembly has.
#if defined(__SIZEOF_INT128__) && SIZE_MAX > UINT32_MAX
// NOLINTNEXTLINE(modernize-use-using): "using" has no place for __extension__
__extension__ typedef unsigned __int128 Wide;
#else
using Wide = PortableWide;
#endif

}  // namespace brackwell
