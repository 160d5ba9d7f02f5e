// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "reading/document.h"

namespace brackwell::opening {

/// What people look for in a document. Of each kind it is counted how much a tree holds and how much of
/// that is delivered.
enum class Content : std::uint8_t {
    none,
    root,              ///< OFX; more than one of them are several documents
    investmentAnswer,  ///< INVSTMTTRNRS, with a statement or with a status alone
    transaction,
    pendingTransaction,
    balance,
    listedBalance,
    statement,
    investmentStatement,
    investmentTransaction,
    position,
    security,
    listedAccount,
    // From here on leaves, whose texts are checked:
    amount,
    date,
};
inline constexpr std::size_t kContentCount = static_cast<std::size_t>(Content::date) + 1;
inline constexpr bool isLeafContent(Content content) noexcept { return content >= Content::amount; }
/// True for what people look for; the rest is counted for other reasons.
inline constexpr bool isSought(Content content) noexcept {
    return content > Content::investmentAnswer && !isLeafContent(content);
}

/// True for an element that stands for one of its kind. A balance that is empty holds nothing to deliver; a
/// transaction that has text in place of elements does.
inline bool isCounted(Content content, const reading::Node& node) noexcept {
    if (content == Content::none || isLeafContent(content))
        return content != Content::none && !node.isAggregate();
    if (!node.isAggregate()) return content <= Content::statement && isSought(content);
    const bool isBalance = content == Content::balance || content == Content::listedBalance;
    return !isBalance || node.size != 0;
}

/// How many there are of each kind.
using ContentCounts = std::array<std::size_t, kContentCount>;

/// What a kind is called in a sentence.
struct ContentWords {
    std::string_view one;
    std::string_view several;
};
ContentWords wordsFor(Content content) noexcept;

/// What is known of an element name. A set of parents has a bit for each aggregate whose children are looked
/// at, and one for all others, in which anything may stand.
struct NameFacts {
    using Parents = std::uint32_t;
    static constexpr Parents kOtherParent = Parents{1} << 31;

    Content content = Content::none;
    Parents standing = ~Parents{0};   ///< in which the name may stand
    Parents repeating = ~Parents{0};  ///< in which it may stand more than once
    Parents asParent = kOtherParent;  ///< the bit of the name itself
};

/// The facts of each name. One that no tree knows is of no kind and may stand anywhere.
class NameFactsTable {
public:
    /// The one that there is, made at the first call.
    static const NameFactsTable& known() noexcept;
    const NameFacts& of(reading::NameID name) const noexcept {
        return facts_[name < reading::kKnownElementCount ? name : reading::kKnownElementCount];
    }
    Content contentOf(reading::NameID name) const noexcept { return of(name).content; }

private:
    NameFactsTable() noexcept;
    void addContents() noexcept;
    void addPlacements() noexcept;

    std::array<NameFacts, reading::kKnownElementCount + 1> facts_{};
};

}  // namespace brackwell::opening
