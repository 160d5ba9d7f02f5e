// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "elements/element_list.h"

/// \file
/// What the elements of the OFX standard are, and what may stand where. Every lookup takes the same time
/// whatever it is asked, and none allocates or throws.

namespace brackwell::elements {

/// The position of an element in the list.
using Element = std::uint16_t;

inline constexpr Element kElementCount = kElementRows.size();
/// Stands for any name that is not in the list. All functions below take it.
inline constexpr Element kUnknown = kElementCount;

inline constexpr std::size_t kLongestName =
    std::ranges::max(kElementRows, {}, [](const ElementRow& row) { return row.name.size(); }).name.size();

/// The element of a name; names count in capitals only.
Element findElement(std::string_view name) noexcept;

/// The name of an element; "" for kUnknown.
std::string_view nameOf(Element element) noexcept;

/// The element that all others of a document stand in.
extern const Element kRoot;

enum class Kind : std::uint8_t {
    unknown,
    aggregate,
    leaf,
    either,       ///< a leaf or an aggregate (CURRENCY), as what follows its tag says
    headerField,  ///< no element of a body
};
Kind kindOf(Element element) noexcept;

/// True for what is an aggregate whatever follows its tag.
inline bool isAggregate(Element element) noexcept { return kindOf(element) == Kind::aggregate; }

/// Of a leaf; none for all else.
ValueType valueTypeOf(Element element) noexcept;

/// A child as its aggregate has it.
struct Child {
    Element element = kUnknown;
    bool mayMiss = false;
    bool mayRepeat = false;
};

/// The children of an aggregate in the order of the standard; none for all else, and for an aggregate whose
/// children are not listed.
std::span<const Child> childrenOf(Element parent) noexcept;

/// The aggregates that an element may stand in, in the order of the list.
std::span<const Element> parentsOf(Element child) noexcept;

/// The entry of a child in childrenOf(parent); null when it may not stand there by the list.
const Child* findChild(Element child, Element parent) noexcept;

/// True when it is known of both where they belong: of the child some place, of the parent its children. A
/// leaf has none, and the root stands in nothing.
bool isJudged(Element child, Element parent) noexcept;

/// True unless the list says that the child has no place there: what is not known may stand anywhere, and
/// anything may stand in it.
bool mayStandIn(Element child, Element parent) noexcept;

/// The same for a second one of its kind.
bool mayRepeatIn(Element child, Element parent) noexcept;

}  // namespace brackwell::elements
