// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tree/document.h"

namespace brackwell::opening {

/// What people look for in a document. For each kind the survey counts how many a tree has and how many of
/// them are delivered.
enum class Content : std::uint8_t {
    none,
    root,              ///< OFX; more than one means several documents
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
    identifier,  ///< the institution's number of a transaction
};
inline constexpr std::size_t kContentCount = static_cast<std::size_t>(Content::identifier) + 1;
inline constexpr bool isLeafContent(Content content) noexcept { return content >= Content::amount; }
/// True for what people look for; the rest is counted for other reasons.
inline constexpr bool isSought(Content content) noexcept {
    return content > Content::investmentAnswer && !isLeafContent(content);
}

/// True for an element that counts as one of its kind. An empty balance has nothing to deliver, so it does
/// not; a transaction that has text instead of elements does.
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

/// What is known about an element name. A set of parents has a bit for each aggregate whose children are
/// examined, and one bit for all others, in which any element may be.
struct NameFacts {
    using Parents = std::uint32_t;
    static constexpr Parents kOtherParent = Parents{1} << 31;

    Parents standing = ~Parents{0};   ///< in which the element may be
    Parents repeating = ~Parents{0};  ///< in which it may be repeated
    Parents asParent = kOtherParent;  ///< the bit of the name itself
    Content content = Content::none;
};

/// The facts for each name. A name that is not known has no kind, and its element may be anywhere.
class NameFactsTable {
public:
    /// The only table, made at the first call.
    static const NameFactsTable& known() noexcept;
    const NameFacts& of(reading::NameID name) const noexcept {
        return facts_[name < reading::kKnownElementCount ? name : reading::kKnownElementCount];
    }
    Content contentOf(reading::NameID name) const noexcept { return of(name).content; }

    // Nearly all nodes of a document are leaves with a known name, each the first of its name, in an
    // aggregate where it may be. The next two functions are about these.

    /// True for such a leaf that needs no further examination.
    bool isQuiet(const reading::Node& node, NameFacts::Parents parent) const noexcept {
        return isPlainLeaf(node) && (quietIn_[node.nameAndKind] & parent) != 0;
    }
    /// What the text of such a leaf is; below Content::amount for all others.
    Content valueOf(const reading::Node& node, NameFacts::Parents parent) const noexcept {
        if (!isPlainLeaf(node)) return Content::none;
        const NameFacts& facts = facts_[node.nameAndKind];
        return (facts.standing & parent) != 0 ? facts.content : Content::none;
    }

private:
    static bool isPlainLeaf(const reading::Node& node) noexcept {
        // The marks of an aggregate and of a repetition make this more than any known name.
        return node.nameAndKind < reading::kKnownElementCount;
    }

    using Facts = std::array<NameFacts, reading::kKnownElementCount + 1>;

    NameFactsTable() noexcept;
    void addContents() noexcept;
    void addQuietLeaves() noexcept;
    static const Facts kPlacements;  ///< the facts but for the contents

    Facts facts_ = kPlacements;
    std::array<NameFacts::Parents, reading::kKnownElementCount> quietIn_{};  ///< by name
};

}  // namespace brackwell::opening
