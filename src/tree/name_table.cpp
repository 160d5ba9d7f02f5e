// SPDX-License-Identifier: Apache-2.0
#include "tree/name_table.h"

#include <algorithm>
#include <utility>

namespace brackwell::reading {

NameID NameTable::numberOfUnknown(std::string_view name, bool copy) {
    if (!hash_) hash_ = std::make_unique<UnpredictableHash>();
    if (unknown_.size() >= slots_.size() / 2) rehash();
    const std::uint64_t hash = (*hash_)(name);
    const std::uint32_t mask = slots_.size() - 1;
    auto slot = static_cast<std::uint32_t>(hash) & mask;
    for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const Entry& entry = unknown_[slots_[slot] - 1];
        if (entry.hash == hash && entry.name == name) return kKnownElementCount + slots_[slot] - 1;
    }
    if (copy) name = copies_.emplace_front(name);
    unknown_.push({name, hash});
    slots_[slot] = unknown_.size();
    return kKnownElementCount + unknown_.size() - 1;
}

void NameTable::rehash() {
    PodVector<std::uint32_t> slots;
    const std::uint32_t count = std::max<std::uint32_t>(slots_.size() * 2, 32);
    std::fill_n(slots.append(count), count, 0U);
    for (std::uint32_t i = 0; i < unknown_.size(); ++i) {
        auto slot = static_cast<std::uint32_t>(unknown_[i].hash) & (count - 1);
        while (slots[slot] != 0) slot = (slot + 1) & (count - 1);
        slots[slot] = i + 1;
    }
    slots_ = std::move(slots);
}

}  // namespace brackwell::reading
