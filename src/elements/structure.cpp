// SPDX-License-Identifier: Apache-2.0
#include "elements/structure.h"

#include <array>

#include "elements/structure_tables.h"

namespace brackwell::elements {

using namespace tables;

namespace {

// A hash table with open addressing, less than a third full and with fixed contents like that of names.

constexpr std::size_t kPairSlots = 16384;
static_assert(kChildCount * 3 < kPairSlots);
constexpr std::uint16_t kNoPair = 0xFFFF;

constexpr std::size_t slotOfPair(Element child, Element parent) noexcept {
    // 2^32 divided by the golden ratio spreads neighbouring numbers; the 14 highest bits are the slot.
    const std::uint32_t mixed = (std::uint32_t{parent} << 16 | child) * 0x9E3779B1U;
    return mixed >> 18;
}

/// By a child and its parent: where their entry is among all children.
constexpr auto kSlotsOfPairs = [] {
    std::array<std::uint16_t, kPairSlots> slots{};
    slots.fill(kNoPair);
    for (Element parent = 0; parent < kElementCount; ++parent)
        for (std::uint16_t i = kChildren.begins[parent]; i < kChildren.begins[parent + 1]; ++i) {
            std::size_t at = slotOfPair(kChildren.all[i].element, parent);
            while (slots[at] != kNoPair) at = (at + 1) % kPairSlots;
            slots[at] = i;
        }
    return slots;
}();

bool isIn(std::size_t entry, Element parent) noexcept {
    return entry >= kChildren.begins[parent] && entry < kChildren.begins[parent + 1];
}

}  // namespace

constinit const Element kRoot = find("OFX");

Element findElement(std::string_view name) noexcept { return find(name); }

std::string_view nameOf(Element element) noexcept {
    return element < kElementCount ? kFacts[element].name : std::string_view();
}

Kind kindOf(Element element) noexcept {
    return element < kElementCount ? kFacts[element].kind : Kind::unknown;
}

ValueType valueTypeOf(Element element) noexcept {
    return element < kElementCount ? kFacts[element].type : ValueType::none;
}

std::span<const Child> childrenOf(Element parent) noexcept { return childrenInList(parent); }

std::span<const Element> parentsOf(Element child) noexcept { return parentsInList(child); }

const Child* findChild(Element child, Element parent) noexcept {
    if (parent >= kElementCount) return nullptr;
    for (std::size_t at = slotOfPair(child, parent);; at = (at + 1) % kPairSlots) {
        const std::uint16_t entry = kSlotsOfPairs[at];
        if (entry == kNoPair) return nullptr;
        if (kChildren.all[entry].element == child && isIn(entry, parent)) return &kChildren.all[entry];
    }
}

bool isJudged(Element child, Element parent) noexcept { return knowsChildren(parent) && knowsPlaces(child); }

bool mayStandIn(Element child, Element parent) noexcept {
    return !isJudged(child, parent) || findChild(child, parent) != nullptr;
}

bool mayRepeatIn(Element child, Element parent) noexcept {
    if (!isJudged(child, parent)) return true;
    const Child* const entry = findChild(child, parent);
    return entry != nullptr && entry->mayRepeat;
}

}  // namespace brackwell::elements
