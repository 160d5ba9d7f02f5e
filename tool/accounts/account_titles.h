// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// What institutions call accounts in their account lists.
class AccountTitles {
public:
    explicit AccountTitles(const std::vector<brackwell::ListedAccount>& listed);

    /// @{
    /// The first description of an account in a list; "" when no list has one.
    std::string_view ofBank(brackwell::OptionalText bank, brackwell::OptionalText number) const;
    std::string_view ofCard(brackwell::OptionalText number) const;
    std::string_view ofInvestment(brackwell::OptionalText broker, brackwell::OptionalText number) const;
    /// @}

private:
    std::map<std::string, std::string> titles_;
};

/// A text with what is shown of an account's number in the place of the number, where it has that: names of
/// files and identifiers of transactions often do. A number that is too short to be a secret stays.
std::string withoutNumber(std::string_view text, std::string_view number, std::string_view shown);

}  // namespace tool
