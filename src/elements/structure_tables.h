// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "elements/structure.h"

/// \file
/// The tables that structure.h is answered from, made by the compiler. For tables that are made of them by
/// the compiler, too; all else asks structure.h.

namespace brackwell::elements::tables {

/// What is asked of an element while a program runs. The rows of the list, whose contents are long texts, are
/// read by the compiler alone, so a program does not have them.
struct Facts {
    std::string_view name;
    Kind kind = Kind::unknown;
    ValueType type = ValueType::none;
    bool hasListedChildren = false;  ///< an aggregate of which is known what may stand in it
};

constexpr Kind kindOf(const ElementRow& row) noexcept {
    if (row.isAggregate) return row.type == ValueType::none ? Kind::aggregate : Kind::either;
    return row.type == ValueType::headerField ? Kind::headerField : Kind::leaf;
}

inline constexpr auto kFacts = [] {
    std::array<Facts, kElementCount> facts;
    for (Element element = 0; element < kElementCount; ++element) {
        const ElementRow& row = kElementRows[element];
        facts[element] = {row.name, kindOf(row), row.type, row.isAggregate && row.content != kUnlisted};
    }
    return facts;
}();

constexpr std::uint32_t hashOf(std::string_view name) noexcept {
    std::uint32_t hash = 2166136261U;  // FNV-1a: its basis, and its prime below
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash ^ hash >> 15;
}

// Hash tables with open addressing. They are less than a third full, and their contents are fixed, so the
// length of every lookup is fixed, too.

inline constexpr std::size_t kNameSlots = 4096;
static_assert(kElementCount * 3 < kNameSlots);
using NameSlots = std::array<Element, kNameSlots>;  ///< kUnknown: free

constexpr NameSlots makeNameSlots() {
    NameSlots slots{};
    slots.fill(kUnknown);
    for (Element element = 0; element < kElementCount; ++element) {
        std::size_t at = hashOf(kFacts[element].name) % kNameSlots;
        while (slots[at] != kUnknown) at = (at + 1) % kNameSlots;
        slots[at] = element;
    }
    return slots;
}
inline constexpr NameSlots kSlotsOfNames = makeNameSlots();

constexpr Element find(std::string_view name) noexcept {
    for (std::size_t at = hashOf(name) % kNameSlots;; at = (at + 1) % kNameSlots) {
        const Element element = kSlotsOfNames[at];
        if (element == kUnknown || kFacts[element].name == name) return element;
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

inline constexpr std::size_t kChildCount = [] {
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

inline constexpr Children kChildren = [] {
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

inline constexpr Parents kParents = [] {
    Parents parents;
    for (const Child& child : kChildren.all) ++parents.begins[child.element + 1];
    for (std::size_t i = 1; i != parents.begins.size(); ++i) parents.begins[i] += parents.begins[i - 1];
    Begins next = parents.begins;
    for (Element parent = 0; parent < kElementCount; ++parent)
        for (std::size_t i = kChildren.begins[parent]; i < kChildren.begins[parent + 1]; ++i)
            parents.all[next[kChildren.all[i].element]++] = parent;
    return parents;
}();

constexpr std::span<const Child> childrenInList(Element parent) noexcept {
    return std::span(kChildren.all)
        .subspan(kChildren.begins[parent], kChildren.begins[parent + 1] - kChildren.begins[parent]);
}

constexpr std::span<const Element> parentsInList(Element child) noexcept {
    return std::span(kParents.all)
        .subspan(kParents.begins[child], kParents.begins[child + 1] - kParents.begins[child]);
}

/// True when it is known where an element may stand. The root may stand in nothing.
constexpr bool knowsPlaces(Element child) noexcept {
    return child == find("OFX") || !parentsInList(child).empty();
}

/// True when it is known what may stand in an element. Nothing may stand in a leaf.
constexpr bool knowsChildren(Element parent) noexcept {
    if (parent >= kElementCount) return false;
    const Facts& facts = kFacts[parent];
    const bool isAggregate = facts.kind == Kind::aggregate || facts.kind == Kind::either;
    return isAggregate ? facts.hasListedChildren : !parentsInList(parent).empty();
}

}  // namespace brackwell::elements::tables
