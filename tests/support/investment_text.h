// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <string>

/// \file
/// What all getters of an investment object answer, as text: its element, then a line "  getter = value" for
/// each that does not answer "nothing".

namespace brackwell::tests {

std::string textOf(const InvestmentTransaction& object);
std::string textOf(const Position& object);
std::string textOf(const ListedBalance& object);
std::string textOf(const InvestmentBalance& object);
std::string textOf(const Amounts401k& object);
std::string textOf(const Period401k& object);
std::string textOf(const Loan401k& object);
std::string textOf(const Plan401k& object);
std::string textOf(const AssetPortion& object);
std::string textOf(const Security& object);
std::string textOf(const InvestmentStatement& object);

/// The statements and the securities of a document, one after the other.
std::string investmentTextOf(const std::optional<ParseDictionary>& document,
                             const std::shared_ptr<TvOFXHelper>& helper = nullptr);

}  // namespace brackwell::tests
