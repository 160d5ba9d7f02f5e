// SPDX-License-Identifier: Apache-2.0
#include "reading/element_names.h"

namespace brackwell::reading {
namespace {

constexpr unsigned kSlotBits = 11;
constexpr std::size_t kSlots = std::size_t{1} << kSlotBits;
/// Found by trying random odd numbers until no two names shared a slot.
constexpr std::uint64_t kMultiplier = 0x06aa74f5832265e9;
static_assert(kKnownElementCount < 255, "slots hold one byte");

constexpr std::size_t slotOf(const NameKey& key) noexcept {
    const std::uint64_t mixed = (key.head ^ (key.tail << 7 | key.tail >> 57) ^ key.size << 59) * kMultiplier;
    return mixed >> (64 - kSlotBits);
}

struct Table {
    std::array<std::uint8_t, kSlots> slots{};
    std::array<NameKey, kKnownElementCount + 1> keys{};
    bool perfect = true;
};

constexpr Table makeTable() noexcept {
    Table table;
    table.slots.fill(kKnownElementCount);
    for (NameID id = 0; id < kKnownElementCount; ++id) {
        table.keys[id] = nameKey(kElementNames[id]);
        std::uint8_t& slot = table.slots[slotOf(table.keys[id])];
        if (slot != kKnownElementCount) table.perfect = false;
        slot = static_cast<std::uint8_t>(id);
    }
    return table;
}

constexpr Table kTable = makeTable();
static_assert(kTable.perfect, "two names share a slot: try another multiplier");

}  // namespace

NameID findKnownElement(std::string_view name) noexcept {
    const NameKey key = nameKey(name);
    const NameID id = kTable.slots[slotOf(key)];
    if (kTable.keys[id] != key) return kKnownElementCount;
    if (name.size() > 16 && kElementNames[id] != name) return kKnownElementCount;
    // The empty name has the same key as the entry behind the last one, which is the right answer.
    return id;
}

}  // namespace brackwell::reading
