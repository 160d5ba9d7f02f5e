// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// \file
/// The names of enumerators as the compiler knows them, so that the module has no second list of them.

namespace brackwell::python {

/// "dateFundsAvailable" as Python writes it, "date_funds_available"; a run of capitals is one word:
/// "fiTransactionID" is "fi_transaction_id". In capitals for members of enumerations.
std::string snakeCase(std::string_view name);
std::string upperSnakeCase(std::string_view name);

/// What the compiler calls an enumerator, without its scope; empty for a number that has no name.
template <class Enumeration, Enumeration Value>
consteval std::string_view enumeratorName() {
    // "... [with Enumeration = ns::Kind; Enumeration Value = ns::Kind::fund; ...]", and "(ns::Kind)9" without
    // a name.
    std::string_view text = __PRETTY_FUNCTION__;
    text = text.substr(text.rfind("Value = ") + std::string_view("Value = ").size());
    text = text.substr(0, text.find_first_of(",;]"));
    if (text.starts_with('(')) return {};
    return text.substr(text.rfind(':') + 1);
}

/// The name of an enumeration's type, without its scope.
template <class Enumeration>
consteval std::string_view enumerationName() {
    std::string_view text = __PRETTY_FUNCTION__;
    text = text.substr(text.find("Enumeration = ") + std::string_view("Enumeration = ").size());
    text = text.substr(0, text.find_first_of(",;]"));
    return text.substr(text.rfind(':') + 1);
}

/// More than any enumeration of the library has, which all count from 0.
inline constexpr std::size_t kMostEnumerators = 40;

template <class Enumeration, std::size_t Number = 0>
consteval std::size_t enumeratorCount() {
    if constexpr (Number == kMostEnumerators)
        throw "an enumeration with more enumerators than kMostEnumerators";
    else if constexpr (enumeratorName<Enumeration, static_cast<Enumeration>(Number)>().empty())
        return Number;
    else
        return enumeratorCount<Enumeration, Number + 1>();
}

}  // namespace brackwell::python
