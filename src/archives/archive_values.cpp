// SPDX-License-Identifier: Apache-2.0
#include "archives/archive_values.h"

#include <chrono>
#include <cstdint>
#include <limits>

#include "archives/cbor.h"
#include "numbers/decimal_coefficient.h"

namespace brackwell {

namespace {

using cbor::Major;

// The keys of an extended time: seconds since 1970, and milliseconds to be added to them.
constexpr std::int64_t kKeySeconds = 1;
constexpr std::int64_t kKeyMilliseconds = -3;

constexpr std::int64_t kMillisecondsPerSecond = 1000;

std::optional<Date> dateFrom(std::int64_t seconds, std::int64_t milliseconds) noexcept {
    if (milliseconds < 0 || milliseconds >= kMillisecondsPerSecond) return std::nullopt;
    // The seconds of the earliest date, which are rounded down, would not fit as milliseconds alone.
    if (seconds < 0 && milliseconds > 0) {
        ++seconds;
        milliseconds -= kMillisecondsPerSecond;
    }
    // Archives come from outside: any number may be in them.
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr std::int64_t earliest = Limits::min() / kMillisecondsPerSecond;
    constexpr std::int64_t latest = Limits::max() / kMillisecondsPerSecond;
    if (seconds < earliest || seconds > latest) return std::nullopt;
    const std::int64_t count = seconds * kMillisecondsPerSecond;
    if (milliseconds < 0 && count < Limits::min() - milliseconds) return std::nullopt;
    if (milliseconds > 0 && count > Limits::max() - milliseconds) return std::nullopt;
    return Date(std::chrono::milliseconds(count + milliseconds));
}

std::optional<Date> takeExtendedTime(std::string_view& bytes) noexcept {
    if (cbor::takeArgument(bytes, Major::map) != 2U) return std::nullopt;
    if (cbor::takeInteger(bytes) != kKeySeconds) return std::nullopt;
    const auto seconds = cbor::takeInteger(bytes);
    if (!seconds || cbor::takeInteger(bytes) != kKeyMilliseconds) return std::nullopt;
    const auto milliseconds = cbor::takeInteger(bytes);
    if (!milliseconds) return std::nullopt;
    return dateFrom(*seconds, *milliseconds);
}

/// A decimal number's coefficient with its sign.
struct Mantissa {
    bool negative = false;
    Wide coefficient = 0;
};

void appendMantissa(std::string& bytes, const Mantissa& mantissa) {
    // Negative integers are counted from -1 down.
    const Wide value = mantissa.negative ? mantissa.coefficient - 1 : mantissa.coefficient;
    // The deterministic form takes a plain integer wherever it fits, and a bignum without leading zeros.
    if ((value >> 64) == 0) {
        const Major major = mantissa.negative ? Major::negativeInteger : Major::unsignedInteger;
        return cbor::appendHead(bytes, major, static_cast<std::uint64_t>(value));
    }
    unsigned size = sizeof value;
    while ((value >> 8 * (size - 1)) == 0) --size;
    cbor::appendHead(bytes, Major::tag,
                     mantissa.negative ? cbor::kTagNegativeBignum : cbor::kTagUnsignedBignum);
    cbor::appendHead(bytes, Major::bytes, size);
    for (; size != 0; --size) bytes += static_cast<char>(value >> 8 * (size - 1) & 0xFFU);
}

std::optional<Mantissa> takeMantissa(std::string_view& bytes) noexcept {
    const auto head = cbor::takeHead(bytes);
    if (!head) return std::nullopt;
    if (head->major == Major::unsignedInteger) return Mantissa{false, head->argument};
    if (head->major == Major::negativeInteger) return Mantissa{true, Wide{head->argument} + 1};

    const bool negative = head->argument == cbor::kTagNegativeBignum;
    if (head->major != Major::tag || (!negative && head->argument != cbor::kTagUnsignedBignum))
        return std::nullopt;
    const auto digits = cbor::takeString(bytes, Major::bytes);
    if (!digits || digits->size() > sizeof(Wide)) return std::nullopt;
    Wide value = 0;
    for (const char byte : *digits) value = value << 8 | static_cast<unsigned char>(byte);
    if ((value >> 127) != 0)
        return std::nullopt;  // more than any decimal number holds; one more could overflow
    return Mantissa{negative, negative ? value + 1 : value};
}

}  // namespace

void appendDate(std::string& bytes, const Date& date) {
    const std::int64_t count = date.time_since_epoch().count();
    std::int64_t seconds = count / kMillisecondsPerSecond;
    std::int64_t milliseconds = count % kMillisecondsPerSecond;
    // The usual form where it is exact; its fractions of a second would be binary floating point.
    if (milliseconds == 0) {
        cbor::appendHead(bytes, Major::tag, cbor::kTagUnixTime);
        return cbor::appendInteger(bytes, seconds);
    }
    // The standard wants the fraction counted forwards, also before 1970.
    if (milliseconds < 0) {
        --seconds;
        milliseconds += kMillisecondsPerSecond;
    }
    cbor::appendHead(bytes, Major::tag, cbor::kTagExtendedTime);
    cbor::appendHead(bytes, Major::map, 2);
    for (const std::int64_t value : {kKeySeconds, seconds, kKeyMilliseconds, milliseconds})
        cbor::appendInteger(bytes, value);
}

std::optional<Date> takeDate(std::string_view& bytes) noexcept {
    const auto tag = cbor::takeArgument(bytes, Major::tag);
    if (tag == cbor::kTagExtendedTime) return takeExtendedTime(bytes);
    if (tag != cbor::kTagUnixTime) return std::nullopt;
    const auto seconds = cbor::takeInteger(bytes);
    if (!seconds) return std::nullopt;
    return dateFrom(*seconds, 0);
}

void appendDecimal(std::string& bytes, const Decimal& number) {
    cbor::appendHead(bytes, Major::tag, cbor::kTagDecimalFraction);
    cbor::appendHead(bytes, Major::array, 2);
    cbor::appendInteger(bytes, number.exponent());
    appendMantissa(bytes, {number.isNegative(), coefficientOf(number)});
}

std::optional<Decimal> takeDecimal(std::string_view& bytes) noexcept {
    if (cbor::takeArgument(bytes, Major::tag) != cbor::kTagDecimalFraction) return std::nullopt;
    if (cbor::takeArgument(bytes, Major::array) != 2U) return std::nullopt;
    const auto exponent = cbor::takeInteger(bytes);
    if (!exponent) return std::nullopt;
    const auto mantissa = takeMantissa(bytes);
    if (!mantissa) return std::nullopt;
    return decimalFrom(mantissa->negative, mantissa->coefficient, *exponent);
}

}  // namespace brackwell
