// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "open/element_nature.h"
#include "open/finding_list.h"
#include "open/placement.h"
#include "open/tree_places.h"

namespace brackwell::opening {

/// What people look for in elements that are not read.
enum class Unread : std::uint8_t {
    transaction,
    transfer,
    payment,
    order,
    position,
    security,
    account,
    amount,
    value
};
inline constexpr std::size_t kUnreadCount = static_cast<std::size_t>(Unread::value) + 1;

/// Elements of one name that are not read.
struct UnreadGroup {
    NameKind kind = NameKind::read;
    elements::Element meant = elements::kUnknown;  ///< the element that the name is in capitals
    std::size_t count = 0;
    std::uint32_t firstCut = 0;  ///< the first of them that ends the text of the leaf before it; 0: none does
    std::uint32_t first = 0;     ///< the node
    std::uint32_t parent = 0;    ///< what that stands in
    std::array<std::size_t, kUnreadCount>
        contents{};  ///< what is in them; each leaf that has a text is a value

    bool holds(Unread what) const noexcept { return contents[static_cast<std::size_t>(what)] != 0; }
    bool isEmpty() const noexcept { return !holds(Unread::value); }
    /// True when what is lost with them is more than a word beside a record.
    bool holdsRecords() const noexcept;
};

/// What a document holds that no class reads, or that does not mean what it says.
///
/// Every element of a tree is read by a class where it stands, or it is accounted for here. Most documents
/// have nothing of the kind, which the survey shows; their trees are not walked through again.
class Accounting {
public:
    /// Of a document with nothing to say of.
    Accounting() = default;
    /// Of a tree, in linear time.
    explicit Accounting(const reading::Document& document);

    /// Elements that the standard has no place for where they stand.
    const Misplaced& misplaced() const noexcept { return misplaced_; }
    /// How much a repair may mend: names in small letters, tags that are none, texts between elements.
    std::size_t mendable() const noexcept { return mendable_; }

    void addFindings(FindingList& findings, const reading::Document& document,
                     const TreePlaces& places) const;

private:
    friend class AccountingWalk;

    std::vector<UnreadGroup> groups_;
    Misplaced misplaced_;
    UnreadGroup textOnly_;  ///< aggregates that have a text in place of elements
    UnreadGroup oddTexts_;  ///< leaves whose text looks as if a tag in it had lost its "<"
    reading::Leftovers leftovers_;
    std::size_t mendable_ = 0;
};

}  // namespace brackwell::opening
