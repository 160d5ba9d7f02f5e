// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tool {

/// A value by its number, in an order in which equal ones stand together.
struct HashedNumber {
    std::uint32_t hash;
    std::uint32_t number;
};

/// Calls `use` with the numbers of values below `count` that have the same key, in their order, where there
/// are several. Values without a hash are left out. Hashes decide nearly always; keys are asked for only
/// where these are the same, which keeps it exact, and n log n with whatever hash.
template <class HashOf, class KeyOf, class Use>
void forEachGroup(std::size_t count, const HashOf& hashOf, const KeyOf& keyOf, const Use& use) {
    std::vector<HashedNumber> values;
    values.reserve(count);
    for (std::uint32_t number = 0; number < count; ++number)
        if (const std::optional<std::uint64_t> hash = hashOf(number))
            values.push_back({static_cast<std::uint32_t>(*hash ^ *hash >> 32), number});
    std::ranges::sort(values, [&keyOf](const HashedNumber& a, const HashedNumber& b) {
        if (a.hash != b.hash) return a.hash < b.hash;
        const auto first = keyOf(a.number);
        const auto second = keyOf(b.number);
        return first != second ? first < second : a.number < b.number;
    });
    for (auto begin = values.begin(); begin != values.end();) {
        const auto end = std::find_if(begin + 1, values.end(), [&](const HashedNumber& other) {
            return other.hash != begin->hash || keyOf(other.number) != keyOf(begin->number);
        });
        if (end - begin > 1) use(std::span<const HashedNumber>(begin, end));
        begin = end;
    }
}

}  // namespace tool
