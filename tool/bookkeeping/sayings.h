// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "bookkeeping/coverage.h"
#include "bookkeeping/draft.h"
#include "bookkeeping/identity.h"

namespace tool {

/// Balances and remarks of one account, which is at a place among those of the drafts. What several
/// statements say equally is said once.
class Sayings {
public:
    /// All have to live as long as this.
    Sayings(DraftLists& lists, const Identities& identities, const Coverage& coverage, std::uint32_t account)
        : lists_(lists), identities_(identities), coverage_(coverage), account_(account) {}

    /// A balance of a day, in a statement of which the transactions end on another one. Where that is long
    /// before, those of other statements are needed, too.
    void add(BookBalance balance, brackwell::Date date, std::optional<brackwell::Date> end);
    /// One without facts says nothing.
    void add(BookRemark remark);

private:
    DraftLists& lists_;
    const Identities& identities_;
    const Coverage& coverage_;
    std::uint32_t account_;
    std::set<std::string> met_;
};

}  // namespace tool
