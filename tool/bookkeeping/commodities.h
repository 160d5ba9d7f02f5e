// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bookkeeping/account_map.h"
#include "bookkeeping/book.h"

namespace tool {

/// The names that commodities have in books, each for one currency or one security. They are taken from the
/// account map, else they are the text of a currency or the ticker of a security, else its identifier with
/// its type: "CUSIP.900000101". They live as long as this.
class Commodities {
public:
    explicit Commodities(const AccountMap& map) : map_(map) {}

    /// The name of a currency as documents write it; XXX, which ISO 4217 has for no currency, for none.
    std::string_view currency(brackwell::OptionalText text);
    /// The name of a security; "" where nothing names it.
    std::string_view security(brackwell::OptionalText id, brackwell::OptionalText idType,
                              const std::optional<brackwell::Security>& known);

    /// All that were asked for, by name.
    std::vector<BookCommodity> all() const;

private:
    /// A shared name is one that people gave to several.
    std::string_view claim(std::string name, const std::string& key, BookCommodity commodity, bool isShared);

    const AccountMap& map_;
    std::map<std::string, std::string> names_;  ///< by key
    std::map<std::string, BookCommodity, std::less<>> claims_;
};

}  // namespace tool
