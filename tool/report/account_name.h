// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// \file
/// What a report calls its accounts. No two of them have one name, since a table whose rows all say
/// "Checking account •• 1111" tells nothing.

namespace tool {

class HtmlWriter;

/// The name of an account, in the parts that people tell accounts apart by.
struct AccountName {
    std::string title;        ///< as an account list of the institution calls it, else what kind it is
    std::string number;       ///< masked, unless it is to be shown in full; "" when there is none
    std::string distinction;  ///< "Larkmoor Savings Bank", "EUR" or "no. 2", where others have the same

    std::string text() const;
    /// Takes the title of an account list, unless it is "". A title with the account's number in it has what
    /// is shown of that, and once is enough.
    void take(std::string_view listed, std::string_view wholeNumber);
};

/// What distinguishes accounts whose titles and numbers are the same.
struct NamedAccount {
    AccountName* name;
    std::string institution;
    std::string currency;
};

/// Gives accounts that have the same name a distinction: the institution where that is another, then the
/// currency, then their order.
void distinguish(std::vector<NamedAccount>& accounts);

/// Writes a name in which the masked number is never parted from its dots.
void writeName(HtmlWriter& html, const AccountName& name);

}  // namespace tool
