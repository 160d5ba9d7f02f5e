// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// How transactions hold their dates. It is installed because their getters are inline, but it is no part of
/// the interface: what namespace internal has may change with any version.

#include <brackwell/platform.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace brackwell::internal {

/// Dates of which each may be absent. They take eight bytes each, where std::optional takes sixteen: there
/// are millions of transactions in a large document.
template <std::size_t Count>
class OptionalDates {
public:
    /// The date; nothing when it is absent.
    std::optional<Date> get(std::size_t field) const noexcept {
        return (present_ & bit(field)) != 0 ? std::optional(dates_[field]) : std::nullopt;
    }
    /// Sets the date, or makes it absent.
    void set(std::size_t field, const std::optional<Date>& date) noexcept {
        if (date) {
            dates_[field] = *date;
            present_ = static_cast<std::uint8_t>(present_ | bit(field));
        } else {
            present_ = static_cast<std::uint8_t>(present_ & ~bit(field));
        }
    }

private:
    static_assert(Count <= 8, "a bit for each");
    static constexpr unsigned bit(std::size_t field) noexcept { return 1U << field; }

    std::array<Date, Count> dates_{};
    std::uint8_t present_ = 0;
};

}  // namespace brackwell::internal
