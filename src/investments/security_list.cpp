// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <algorithm>
#include <numeric>
#include <tuple>

namespace brackwell {
namespace {

/// The order in which securities are searched. One without a type comes before those that have one.
std::tuple<std::string_view, std::string_view> keyOf(const Security& security) noexcept {
    return {security.id().value_or(""), security.idType().value_or("")};
}

}  // namespace

SecurityList::SecurityList(std::vector<Security> securities)
    : all_(std::move(securities)), sorted_(all_.size()) {
    std::iota(sorted_.begin(), sorted_.end(), 0U);
    std::ranges::stable_sort(sorted_, {}, [this](std::uint32_t index) { return keyOf(all_[index]); });
}

std::optional<Security> SecurityList::find(OptionalText id, OptionalText idType) const {
    if (!id) return std::nullopt;
    const auto keyAt = [this](std::uint32_t index) { return keyOf(all_[index]); };
    const auto firstFrom = [&](std::string_view type) {
        return std::ranges::lower_bound(sorted_, std::tuple(*id, type), {}, keyAt);
    };
    const auto untyped = firstFrom("");
    if (untyped == sorted_.end() || all_[*untyped].id() != id) return std::nullopt;
    const Security& first = all_[*untyped];
    if (!idType || !first.idType()) return first;
    const auto typed = firstFrom(*idType);
    if (typed == sorted_.end() || all_[*typed].id() != id || all_[*typed].idType() != idType)
        return std::nullopt;
    return all_[*typed];
}

std::optional<Security> SecurityList::find(const Position& position) const {
    return find(position.securityID(), position.securityIDType());
}

std::optional<Security> SecurityList::find(const InvestmentTransaction& transaction) const {
    return find(transaction.securityID(), transaction.securityIDType());
}

}  // namespace brackwell
