// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>
#include <nanobind/nanobind.h>
#include <nanobind/stl/optional.h>
#include <nanobind/stl/shared_ptr.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/string_view.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

/// \file
/// One value of a field, between the library's types and those of Python and of Arrow.

namespace brackwell::python {

namespace nb = nanobind;

/// An enumerator: its Python name, and how the member is made.
struct Word {
    std::string_view name;  ///< "BUY_TO_OPEN"; never destroyed
    nb::object (*member)(std::uint64_t);
    std::uint64_t value;
};

/// What a cell holds when it holds something.
enum class Kind : std::uint8_t { text, amount, day, moment, flag, integer, word, object };

/// One value; monostate where the document has none. A view is valid as long as the object that was asked.
using Cell = std::variant<std::monostate, std::string_view, std::string, Decimal, std::chrono::year_month_day,
                          Date, bool, std::int64_t, Word>;

/// The day of a moment, in UTC; nothing outside of the years 1 to 9999.
std::optional<std::chrono::year_month_day> dayOf(std::optional<Date> moment);

/// The value as Python has it: str, decimal.Decimal, datetime.date, an aware datetime.datetime in UTC, bool,
/// int, a member of an enumeration, or None. A moment outside of the years 1 to 9999, which datetime does not
/// have, is None.
nb::object toPython(const Cell& cell);
nb::object toPython(const Decimal& number);

/// The type of a kind in a signature, such as "decimal.Decimal"; nothing for words and objects, which have
/// their own.
std::string_view typeOf(Kind kind);

}  // namespace brackwell::python
