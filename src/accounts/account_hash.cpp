// SPDX-License-Identifier: Apache-2.0
#include "accounts/account_hash.h"

#include <bit>

#include "memory/unpredictable_hash.h"
#include "numbers/as_size.h"

namespace brackwell {

std::size_t accountHash(std::uint64_t number, std::initializer_list<OptionalText> texts) noexcept {
    static const UnpredictableHash kHash;
    constexpr std::uint64_t kAbsent = 0x9e3779b97f4a7c15;  // any number that is no hash by rule
    std::uint64_t all = number;
    // The turn makes the same text in another place another hash.
    for (const OptionalText& text : texts) all = std::rotl(all, 23) ^ (text ? kHash(*text) : kAbsent);
    return asSize(all);
}

}  // namespace brackwell
