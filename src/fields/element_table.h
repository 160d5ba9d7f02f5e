// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/model.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

#include "convert/field_values.h"
#include "elements/refuse.h"
#include "fields/text_table.h"
#include "tree/node_ref.h"

/// \file
/// How a class reads its elements: a table of element names, each with what to do with its value.
///
///     struct BRACKWELL_INTERNAL TvOFXBankAccountInfo::Elements {
///         using Self = TvOFXBankAccountInfo;
///         static constexpr auto kTable = elementTable<Self>({
///             {element("SUPTXDL"), flag<&Self::supportsTransactionDownload_>},
///             {element("XFERSRC"), flag<&Self::isTransferSourceAccount_>},
///         });
///     };
///     Elements::kTable.read(*this, NodeRef::of(*node));
///
/// The rules that more than one class needs are written once, here. A rule that finds a value of
/// another kind than its element should have leaves the field as it is. A name stands once among the
/// entries of an aggregate, so each rule runs at most once for an object.

namespace brackwell {

using reading::element;
using reading::NodeRef;

/// What to do with one element of an object.
template <class Object>
using ElementRule = void (*)(Object& object, const NodeRef& value);

template <class Object>
struct ElementEntry {
    reading::NameID name;
    ElementRule<Object> rule;
};

/// Finds the rule of each element with one lookup, so that reading an object takes time in proportion
/// to its elements, whatever the number of rules.
template <class Object, std::size_t Count>
class ElementTable {
public:
    using Reader = Object;

    consteval explicit ElementTable(const std::array<ElementEntry<Object>, Count>& entries) {
        static_assert(Count < kNone);
        rows_.fill(kNone);
        for (std::size_t row = 0; row < Count; ++row) {
            const auto& [name, rule] = entries[row];
            if (rule == nullptr) elements::refuse("an element has no rule");
            rules_[row] = rule;
            if (name == kNoElement) continue;
            if (rows_[name] != kNone) elements::refuse("an element stands in a table twice");
            rows_[name] = static_cast<std::uint8_t>(row);
        }
    }

    /// Applies the rules to the entries of a dictionary; elements without a rule are passed over.
    void read(Object& object, const NodeRef& dictionary) const {
        for (const NodeRef& child : dictionary.children()) {
            const reading::NameID name = child.nameID();
            if (name < rows_.size() && rows_[name] != kNone) rules_[rows_[name]](object, child);
        }
    }

private:
    static constexpr std::uint8_t kNone = 0xFF;
    std::array<ElementRule<Object>, Count> rules_{};
    std::array<std::uint8_t, reading::kKnownElementCount> rows_{};
};

/// The class and the type of a member, from a pointer to it.
template <class Member>
struct MemberOf;
template <class Object, class Field>
struct MemberOf<Field Object::*> {
    using Class = Object;
    using Type = Field;
};
template <auto member>
using ClassOf = typename MemberOf<decltype(member)>::Class;
template <auto member>
using FieldOf = typename MemberOf<decltype(member)>::Type;

/// A text is kept as it stands.
template <auto texts, std::size_t field>
void text(ClassOf<texts>& object, const NodeRef& value) {
    if (value.isText()) (object.*texts).setLeaf(field, *value.owner, value.index());
}

/// A table of as many rows as there are entries. A number that is written beside them could be larger, and
/// the rows that are missing would be rules to call nothing.
template <class Object, std::size_t Count>
consteval ElementTable<Object, Count> elementTable(const ElementEntry<Object> (&entries)[Count]) {
    return ElementTable<Object, Count>(std::to_array(entries));
}

/// The entries of a class's texts.
template <auto texts, const auto& table, std::size_t... field>
consteval auto textEntries(std::index_sequence<field...>) {
    return std::to_array<ElementEntry<ClassOf<texts>>>({{table.row(field).element, text<texts, field>}...});
}

/// A table of a class's texts, which a TextTable describes, and of further entries.
template <auto texts, const auto& table, std::size_t Others>
consteval auto elementTable(const ElementEntry<ClassOf<texts>> (&others)[Others]) {
    constexpr std::size_t count = table.size();
    std::array<ElementEntry<ClassOf<texts>>, count + Others> entries{};
    const auto own = textEntries<texts, table>(std::make_index_sequence<count>());
    std::ranges::copy(others, std::ranges::copy(own, entries.begin()).out);
    return ElementTable<ClassOf<texts>, count + Others>(entries);
}

/// A table of nothing but a class's texts.
template <auto texts, const auto& table>
consteval auto elementTable() {
    constexpr std::size_t count = table.size();
    return ElementTable<ClassOf<texts>, count>(textEntries<texts, table>(std::make_index_sequence<count>()));
}

/// A yes/no element: true exactly for "Y", false for every other text.
template <auto member>
void flag(ClassOf<member>& object, const NodeRef& value) {
    if (value.isText()) object.*member = value.text() == "Y";
}

/// An integer: the leading digits, 0 when there are none.
template <auto member>
void integer(ClassOf<member>& object, const NodeRef& value) {
    if (value.isText()) object.*member = leadingInteger(value.text());
}

/// A text and what it stands for.
template <class Value>
struct Choice {
    std::string_view text;
    Value value;
};

/// One of several words; any other text leaves the field as it is.
template <auto member, const auto& choices>
void choice(ClassOf<member>& object, const NodeRef& value) {
    if (!value.isText()) return;
    for (const auto& [text, meaning] : choices)
        if (text == value.text()) object.*member = meaning;
}

/// The helper of an object, or the shared one when it has none.
inline const TvOFXHelper& helperOf(const TvOFXAggregate& object) {
    const auto& own = object.helperObject();
    return own ? *own : *TvOFXHelper::defaultHelper();
}

/// A date; nothing when the text is none.
template <auto member>
void date(ClassOf<member>& object, const NodeRef& value) {
    if (value.isText()) readDate(helperOf(object), value.text(), object.*member);
}

/// An amount; nothing when the text is none.
template <auto member>
void amount(ClassOf<member>& object, const NodeRef& value) {
    if (value.isText()) readAmount(helperOf(object), value.text(), object.*member);
}

/// A leaf that may repeat: the values as they stand, whatever their kind; a text that stands alone is a
/// list of one.
template <auto member>
void list(ClassOf<member>& object, const NodeRef& value) {
    if (value.isDictionary()) return;
    auto& values = (object.*member).emplace();
    for (const NodeRef& element : value.elements()) values.push_back(element.value());
}

/// An aggregate whose elements are fields of the object itself.
template <const auto& elements>
void inner(typename std::remove_cvref_t<decltype(elements)>::Reader& object, const NodeRef& value) {
    if (value.isDictionary()) elements.read(object, value);
}

/// An aggregate that has a class, built with the class's own function.
template <auto member, auto make = &FieldOf<member>::element_type::initWithParseDict>
void object(ClassOf<member>& object, const NodeRef& value) {
    if (value.isDictionary()) object.*member = make(value.dictionary());
}

/// A repeated aggregate that has a class: one object for each, in document order. Texts among them are
/// passed over.
template <auto make, class List>
void appendObjects(List& list, const NodeRef& value) {
    for (const NodeRef& element : value.elements())
        if (element.isDictionary()) list.push_back(make(element.dictionary()));
}

}  // namespace brackwell
