// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brackwell::system {

/// The names that locales have for dates.
enum class DateNames : std::uint8_t {
    months,
    shortMonths,
    aloneMonths,  ///< as they are by themselves, where system and language distinguish them
    shortAloneMonths,
    weekdays,  ///< from Sunday on
    shortWeekdays,
    dayHalves,
};

/// A locale of the system for the names of dates; closed on every way out.
class DateLocale {
public:
    explicit DateLocale(const std::string& name);
    DateLocale(const DateLocale&) = delete;
    DateLocale& operator=(const DateLocale&) = delete;
    ~DateLocale();

    /// False where there is no such locale, or the system has none with names.
    bool isOpen() const noexcept { return handle_ != nullptr; }

    /// In the locale's encoding; valid as long as the locale.
    std::string_view name(DateNames list, std::size_t index) const noexcept;

private:
    void* handle_ = nullptr;
};

}  // namespace brackwell::system
