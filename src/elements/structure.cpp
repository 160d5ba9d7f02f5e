// SPDX-License-Identifier: Apache-2.0
#include "elements/structure.h"

#include <algorithm>
#include <array>

namespace brackwell::elements {
namespace {

constexpr std::uint32_t hashOf(std::string_view name) noexcept {
    std::uint32_t hash = 2166136261U;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash ^ hash >> 15;
}

// Hash tables with open addressing. They are less than a third full, and their contents are fixed, so how
// far a lookup goes is fixed, too.

constexpr std::size_t kNameSlots = 4096;
static_assert(kElementCount * 3 < kNameSlots);
using NameSlots = std::array<Element, kNameSlots>;  ///< kUnknown: free

constexpr NameSlots makeNameSlots() {
    NameSlots slots{};
    slots.fill(kUnknown);
    for (Element element = 0; element < kElementCount; ++element) {
        std::size_t at = hashOf(kElementRows[element].name) % kNameSlots;
        while (slots[at] != kUnknown) at = (at + 1) % kNameSlots;
        slots[at] = element;
    }
    return slots;
}
constexpr NameSlots kSlotsOfNames = makeNameSlots();

constexpr Element find(std::string_view name) noexcept {
    for (std::size_t at = hashOf(name) % kNameSlots;; at = (at + 1) % kNameSlots) {
        const Element element = kSlotsOfNames[at];
        if (element == kUnknown || kElementRows[element].name == name) return element;
    }
}

/// Calls `note` with each name of a content.
template <class Note>
constexpr void forEachChild(std::string_view content, Note note) {
    while (!content.empty() && content != kUnlisted) {
        const std::size_t end = std::min(content.find(' '), content.size());
        note(content.substr(0, end));
        content.remove_prefix(std::min(end + 1, content.size()));
    }
}

constexpr std::size_t kChildCount = [] {
    std::size_t count = 0;
    for (const ElementRow& row : kElementRows) forEachChild(row.content, [&](std::string_view) { ++count; });
    return count;
}();

/// Where the entries of each element begin in a table of all; those of the next end them.
using Begins = std::array<std::uint16_t, kElementCount + 2>;
static_assert(kChildCount < 0xFFFF);

/// All children, those of an aggregate in a row.
struct Children {
    std::array<Child, kChildCount> all{};
    Begins begins{};
};

constexpr Child readChild(std::string_view entry) noexcept {
    const char sign = entry.back();
    const bool hasSign = sign == '?' || sign == '*' || sign == '+';
    return {find(entry.substr(0, entry.size() - (hasSign ? 1 : 0))), sign == '?' || sign == '*',
            sign == '*' || sign == '+'};
}

constexpr Children kChildren = [] {
    Children children;
    std::uint16_t count = 0;
    for (Element parent = 0; parent < kElementCount; ++parent) {
        children.begins[parent] = count;
        forEachChild(kElementRows[parent].content,
                     [&](std::string_view entry) { children.all[count++] = readChild(entry); });
    }
    children.begins[kElementCount] = children.begins[kElementCount + 1] = count;
    return children;
}();
static_assert(std::ranges::all_of(kChildren.all, [](const Child& child) { return child.element < kUnknown; }),
              "a child is not in the list");

/// All parents, those of a child in a row.
struct Parents {
    std::array<Element, kChildCount> all{};
    Begins begins{};
};

constexpr Parents kParents = [] {
    Parents parents;
    for (const Child& child : kChildren.all) ++parents.begins[child.element + 1];
    for (std::size_t i = 1; i != parents.begins.size(); ++i) parents.begins[i] += parents.begins[i - 1];
    Begins next = parents.begins;
    for (Element parent = 0; parent < kElementCount; ++parent)
        for (std::size_t i = kChildren.begins[parent]; i < kChildren.begins[parent + 1]; ++i)
            parents.all[next[kChildren.all[i].element]++] = parent;
    return parents;
}();

constexpr std::size_t kPairSlots = 16384;
static_assert(kChildCount * 3 < kPairSlots);
constexpr std::uint16_t kNoPair = 0xFFFF;

constexpr std::size_t slotOfPair(Element child, Element parent) noexcept {
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

bool isUnlisted(Element parent) noexcept {
    const ElementRow& row = kElementRows[parent];
    return row.isAggregate ? row.content == kUnlisted : parentsOf(parent).empty();
}

}  // namespace

constexpr Element kRootElement = find("OFX");
const Element kRoot = kRootElement;

Element findElement(std::string_view name) noexcept { return find(name); }

std::string_view nameOf(Element element) noexcept {
    return element < kElementCount ? kElementRows[element].name : std::string_view();
}

Kind kindOf(Element element) noexcept {
    if (element >= kElementCount) return Kind::unknown;
    const ElementRow& row = kElementRows[element];
    if (row.isAggregate) return row.type == ValueType::none ? Kind::aggregate : Kind::either;
    return row.type == ValueType::headerField ? Kind::headerField : Kind::leaf;
}

ValueType valueTypeOf(Element element) noexcept {
    return element < kElementCount ? kElementRows[element].type : ValueType::none;
}

std::span<const Child> childrenOf(Element parent) noexcept {
    return std::span(kChildren.all)
        .subspan(kChildren.begins[parent], kChildren.begins[parent + 1] - kChildren.begins[parent]);
}

std::span<const Element> parentsOf(Element child) noexcept {
    return std::span(kParents.all)
        .subspan(kParents.begins[child], kParents.begins[child + 1] - kParents.begins[child]);
}

const Child* findChild(Element child, Element parent) noexcept {
    if (parent >= kElementCount) return nullptr;
    for (std::size_t at = slotOfPair(child, parent);; at = (at + 1) % kPairSlots) {
        const std::uint16_t entry = kSlotsOfPairs[at];
        if (entry == kNoPair) return nullptr;
        if (kChildren.all[entry].element == child && isIn(entry, parent)) return &kChildren.all[entry];
    }
}

bool isJudged(Element child, Element parent) noexcept {
    return parent < kElementCount && !isUnlisted(parent) && (child == kRoot || !parentsOf(child).empty());
}

bool mayStandIn(Element child, Element parent) noexcept {
    return !isJudged(child, parent) || findChild(child, parent) != nullptr;
}

bool mayRepeatIn(Element child, Element parent) noexcept {
    if (!isJudged(child, parent)) return true;
    const Child* const entry = findChild(child, parent);
    return entry != nullptr && entry->mayRepeat;
}

}  // namespace brackwell::elements
