// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <functional>

namespace brackwell::tests {

/// Reads texts with a function, and remembers which it was asked for.
class ScriptedNumberFormatter final : public NumberFormatter {
public:
    using Read = std::function<std::optional<Decimal>(std::string_view)>;
    explicit ScriptedNumberFormatter(Read read) : read_(std::move(read)) {}
    std::optional<Decimal> numberFromString(std::string_view text) const override {
        asked_.emplace_back(text);
        return read_(text);
    }
    std::optional<std::string> stringFromNumber(const Decimal&) const override { return std::nullopt; }
    const std::vector<std::string>& asked() const noexcept { return asked_; }

private:
    Read read_;
    mutable std::vector<std::string> asked_;
};

class ScriptedDateFormatter final : public DateFormatter {
public:
    using Read = std::function<std::optional<Date>(std::string_view)>;
    explicit ScriptedDateFormatter(Read read) : read_(std::move(read)) {}
    std::optional<Date> dateFromString(std::string_view text) const override {
        asked_.emplace_back(text);
        return read_(text);
    }
    std::string stringFromDate(Date) const override { return {}; }
    const std::vector<std::string>& asked() const noexcept { return asked_; }

private:
    Read read_;
    mutable std::vector<std::string> asked_;
};

}  // namespace brackwell::tests
