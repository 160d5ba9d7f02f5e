// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <algorithm>
#include <compare>
#include <functional>
#include <numeric>
#include <string_view>

#include "text/ascii_case.h"

namespace brackwell {
namespace {

/// What securities are searched by. Types are the same in any case: institutions write "CUSIP" in the list
/// and "cusip" beside a position.
struct Key {
    std::string_view id;
    std::string_view type;

    /// One without a type comes before those that have one.
    bool operator<(const Key& other) const noexcept {
        if (const auto order = id <=> other.id; std::is_neq(order)) return std::is_lt(order);
        return std::ranges::lexicographical_compare(type, other.type, {}, smallLetter, smallLetter);
    }
};

Key keyOf(const Security& security) noexcept {
    return {security.id().value_or(""), security.idType().value_or("")};
}

}  // namespace

SecurityList::SecurityList(std::vector<Security> securities)
    : all_(std::move(securities)), sorted_(all_.size()) {
    std::iota(sorted_.begin(), sorted_.end(), 0U);
    std::ranges::stable_sort(sorted_, std::less<>(),
                             [this](std::uint32_t index) { return keyOf(all_[index]); });
}

std::optional<Security> SecurityList::find(TextArgument id, TextArgument idType) const {
    if (!id) return std::nullopt;
    const auto keyAt = [this](std::uint32_t index) { return keyOf(all_[index]); };
    const auto firstFrom = [&](std::string_view type) {
        return std::ranges::lower_bound(sorted_, Key{*id, type}, std::less<>(), keyAt);
    };
    const auto untyped = firstFrom("");
    if (untyped == sorted_.end() || all_[*untyped].id() != id) return std::nullopt;
    const Security& first = all_[*untyped];
    if (!idType || !first.idType()) return first;
    const auto typed = firstFrom(*idType);
    if (typed == sorted_.end() || Key{*id, *idType} < keyOf(all_[*typed])) return std::nullopt;
    return all_[*typed];
}

std::optional<Security> SecurityList::find(const Position& position) const {
    return find(position.securityID(), position.securityIDType());
}

std::optional<Security> SecurityList::find(const InvestmentTransaction& transaction) const {
    return find(transaction.securityID(), transaction.securityIDType());
}

}  // namespace brackwell
