// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

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

/// A set of the names that trees have a number for, and of "unknown", which is all other names.
class NameSet {
public:
    constexpr void add(reading::NameID name) noexcept { words_[name / kBits] |= bit(name); }
    constexpr void add(const NameSet& names) noexcept {
        for (std::size_t i = 0; i != words_.size(); ++i) words_[i] |= names.words_[i];
    }
    constexpr NameSet operator&(const NameSet& other) const noexcept {
        NameSet both;
        for (std::size_t i = 0; i != words_.size(); ++i) both.words_[i] = words_[i] & other.words_[i];
        return both;
    }
    /// The name must be known, or kKnownElementCount for an unknown one.
    constexpr bool has(reading::NameID name) const noexcept {
        return (words_[name / kBits] & bit(name)) != 0;
    }

private:
    static constexpr std::size_t kBits = 64;
    static constexpr std::uint64_t bit(reading::NameID name) noexcept {
        return std::uint64_t{1} << name % kBits;
    }

    std::array<std::uint64_t, reading::kKnownElementCount / kBits + 1> words_{};
};

/// What is known about the elements in an aggregate, by their names.
struct ChildFacts {
    NameSet standing;   ///< may be there
    NameSet repeating;  ///< may be repeated there
    NameSet quiet;      ///< leaves that need no further examination where they are the first of their name
};

/// What is known about the names of elements.
class NameFactsTable {
public:
    /// The only table, made at the first call.
    static const NameFactsTable& known();

    /// What an element is to people, wherever it stands.
    Content contentOf(reading::NameID name) const noexcept { return contents_[knownOrNone(name)]; }

    /// About the children of an aggregate. There is one object for all aggregates in which any element may
    /// be, anythingGoes().
    const ChildFacts& childrenOf(reading::NameID parent) const noexcept {
        return childFacts_[childFactsOf_[knownOrNone(parent)]];
    }
    const ChildFacts& anythingGoes() const noexcept { return childFacts_.front(); }

    // Nearly all nodes of a document are leaves with a known name, each the first of its name, in an
    // aggregate where it may be. The next two functions are about these.

    /// True for such a leaf that needs no further examination.
    static bool isQuiet(const reading::Node& node, const ChildFacts& around) noexcept {
        return isPlainLeaf(node) && around.quiet.has(node.nameAndKind);
    }
    /// What the text of such a leaf is; below Content::amount for all others.
    Content valueOf(const reading::Node& node, const ChildFacts& around) const noexcept {
        const bool stands = isPlainLeaf(node) && around.standing.has(node.nameAndKind);
        return stands ? contents_[node.nameAndKind] : Content::none;
    }

    /// The number that a name has here: its own, or that of all unknown ones.
    static reading::NameID knownOrNone(reading::NameID name) noexcept {
        return std::min<reading::NameID>(name, reading::kKnownElementCount);
    }

private:
    static bool isPlainLeaf(const reading::Node& node) noexcept {
        // The marks of an aggregate and of a repetition make this more than any known name.
        return node.nameAndKind < reading::kKnownElementCount;
    }
    template <class Facts>
    using ByName = std::array<Facts, reading::kKnownElementCount + 1>;  // the last is for unknown names

    NameFactsTable();
    void addContents() noexcept;
    void addChildFacts();

    ByName<Content> contents_{};
    ByName<std::uint8_t> childFactsOf_{};  ///< positions in childFacts_
    std::vector<ChildFacts> childFacts_;   ///< of anything, then of aggregates whose children are judged
};

}  // namespace brackwell::opening
