// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "elements/refuse.h"
#include "tree/element_names.h"

/// \file
/// The fields of an investment object as data. A field is one row: its getter's name, the rule that it is
/// read by, and the elements that hold it. Reading, text() and fields() need nothing else, and a getter
/// finds its row by its name and its rule while it is compiled, so that one without a row does not compile:
///
///     constexpr FieldRow kPositionRows[] = {{"units", FieldRule::amount, {"UNITS"}}, ...};
///     constexpr PartRow kPositionParts[] = {"INVPOS", "SECID"};
///     constexpr FieldTable kPositionFields(kPositionRows, kPositionParts);
///
///     std::optional<Decimal> Position::units() const noexcept {
///         return amountOf(*this, kPositionFields.amount("units"));
///     }

namespace brackwell::investments {

using reading::NameID;

/// What is done with an element.
enum class FieldRule : std::uint8_t {
    text,      ///< a leaf, as it stands
    word,      ///< a leaf with a word of a closed list
    flag,      ///< a leaf with "Y" or "N"
    amount,    ///< a leaf, converted while reading
    date,      ///< a leaf, converted while reading
    object,    ///< an aggregate that has a class of its own
    currency,  ///< CURRENCY or ORIGCURRENCY: a leaf, or an aggregate whose leaves are read as well
    part,      ///< a leaf that is read for another getter: like a text, but not among fields()
    rate,      ///< the same as an amount
};

constexpr bool isAmount(FieldRule rule) noexcept {
    return rule == FieldRule::amount || rule == FieldRule::rate;
}

/// A field: the name of its getter and the elements that it stands in, of which a document has one.
struct FieldRow {
    static constexpr std::size_t kMostElements = 4;

    consteval FieldRow(std::string_view getter, FieldRule how, std::initializer_list<std::string_view> names)
        : name(getter), rule(how) {
        for (const std::string_view each : names) elements[elementCount++] = reading::element(each);
    }

    std::string_view name;
    FieldRule rule;
    std::array<NameID, kMostElements> elements{};
    std::size_t elementCount = 0;
};

/// An aggregate whose leaves are fields of the object around it.
struct PartRow {
    consteval explicit(false) PartRow(const char* name, const char* around = nullptr)
        : element(reading::element(name)), in(around != nullptr ? reading::element(around) : kAnywhere) {}

    static constexpr NameID kAnywhere = reading::kKnownElementCount;
    NameID element;
    NameID in;  ///< where it counts: an aggregate that is a part as well, or anywhere
};

/// The fields of a class, found by element with one lookup. The position of a field is a bit in the set of
/// those that an object has.
class FieldTable {
public:
    static constexpr std::size_t kMostFields = 64;
    using Fields = std::uint64_t;

    template <std::size_t FieldCount, std::size_t PartCount>
    consteval FieldTable(const FieldRow (&fields)[FieldCount], const PartRow (&parts)[PartCount])
        : FieldTable(std::span<const FieldRow>(fields), std::span<const PartRow>(parts)) {}
    template <std::size_t FieldCount>
    consteval explicit FieldTable(const FieldRow (&fields)[FieldCount])
        : FieldTable(std::span<const FieldRow>(fields), std::span<const PartRow>()) {}

    std::span<const FieldRow> fields() const noexcept { return fields_; }

    /// What an element is: a field, a part, or neither.
    struct Entry {
        std::uint8_t code;
        bool isField() const noexcept { return code < kMostFields; }
        bool isPart() const noexcept { return code == kPart; }
        bool isScopedPart() const noexcept { return code == kScopedPart; }
        std::size_t field() const noexcept { return code; }
    };
    Entry entry(NameID name) const noexcept {
        return {name < reading::kKnownElementCount ? entries_[name] : kNothing};
    }
    /// The aggregate in which a scoped part counts.
    NameID scope() const noexcept { return scope_; }

    /// Those of the fields that are amounts, and those that are dates.
    Fields amounts() const noexcept { return amounts_; }
    Fields dates() const noexcept { return dates_; }

    /// The position of a field with such a rule; one that is not there does not compile.
    consteval std::size_t text(std::string_view name) const { return position(name, FieldRule::text); }
    consteval std::size_t word(std::string_view name) const { return position(name, FieldRule::word); }
    consteval std::size_t flag(std::string_view name) const { return position(name, FieldRule::flag); }
    consteval std::size_t amount(std::string_view name) const { return position(name, FieldRule::amount); }
    consteval std::size_t date(std::string_view name) const { return position(name, FieldRule::date); }
    consteval std::size_t object(std::string_view name) const { return position(name, FieldRule::object); }
    consteval std::size_t currency(std::string_view name) const {
        return position(name, FieldRule::currency);
    }
    consteval std::size_t part(std::string_view name) const { return position(name, FieldRule::part); }
    consteval std::size_t rate(std::string_view name) const { return position(name, FieldRule::rate); }

private:
    static constexpr std::uint8_t kPart = kMostFields;
    static constexpr std::uint8_t kScopedPart = kPart + 1;
    static constexpr std::uint8_t kNothing = 0xFF;

    consteval FieldTable(std::span<const FieldRow> fields, std::span<const PartRow> parts) : fields_(fields) {
        if (fields.size() > kMostFields) elements::refuse("more fields than bits");
        entries_.fill(kNothing);
        for (std::size_t i = 0; i < fields.size(); ++i) add(fields[i], i);
        for (const PartRow& part : parts) add(part);
    }
    consteval void add(const FieldRow& row, std::size_t position) {
        for (std::size_t i = 0; i < row.elementCount; ++i)
            add(row.elements[i], static_cast<std::uint8_t>(position));
        if (isAmount(row.rule)) amounts_ |= Fields{1} << position;
        if (row.rule == FieldRule::date) dates_ |= Fields{1} << position;
    }
    consteval void add(const PartRow& part) {
        add(part.element, part.in == PartRow::kAnywhere ? kPart : kScopedPart);
        if (part.in == PartRow::kAnywhere) return;
        if (scope_ != PartRow::kAnywhere && scope_ != part.in) elements::refuse("parts have two scopes");
        scope_ = part.in;
    }
    consteval void add(NameID element, std::uint8_t code) {
        if (entries_[element] != kNothing) elements::refuse("an element stands in a table twice");
        entries_[element] = code;
    }
    consteval std::size_t position(std::string_view name, FieldRule rule) const {
        for (std::size_t i = 0; i < fields_.size(); ++i)
            if (fields_[i].name == name && fields_[i].rule == rule) return i;
        elements::refuse("no such field");
    }

    std::span<const FieldRow> fields_;
    std::array<std::uint8_t, reading::kKnownElementCount> entries_{};
    NameID scope_ = PartRow::kAnywhere;
    Fields amounts_ = 0;
    Fields dates_ = 0;
};

}  // namespace brackwell::investments
