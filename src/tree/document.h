// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/reading.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "memory/pod_vector.h"
#include "system/exhausted_memory.h"
#include "tree/name_table.h"

namespace brackwell::reading {

/// One element of a parse tree. The nodes of a tree stand in document order: an aggregate is followed
/// by all that is in it. Those of one name in one aggregate are chained; the first stands for them all.
struct Node {
    static constexpr std::uint32_t kAggregate = 1U << 31;
    static constexpr std::uint32_t kRepeated = 1U << 30;  ///< not the first of its name in its aggregate
    static constexpr std::uint32_t kOwnText = 1U << 31;   ///< in `begin`: an offset into the own text

    std::uint32_t nameAndKind;
    std::uint32_t begin;  ///< of a leaf: where its text begins; of an aggregate: the node after it
    std::uint32_t size;   ///< of a leaf: the text's bytes; of an aggregate: how many names it holds
    std::uint32_t next;   ///< the next of the same name in the same aggregate; 0 is none

    NameID name() const noexcept { return nameAndKind & ~(kAggregate | kRepeated); }
    bool isAggregate() const noexcept { return (nameAndKind & kAggregate) != 0; }
    bool isRepeated() const noexcept { return (nameAndKind & kRepeated) != 0; }
};
static_assert(sizeof(Node) == 16);

/// What a parser came by in a body and a tree does not show.
struct Leftovers {
    std::uint32_t looseTexts = 0;      ///< texts between elements, which are in none
    std::uint32_t firstLooseText = 0;  ///< where in the body the first one begins
    bool hasOddText = false;           ///< a leaf's text has a ">" in it, which may have been that of a tag

    bool areAny() const noexcept { return looseTexts != 0 || hasOddText; }
};

/// A parse tree with the text that it refers to. Node 0 is the root.
class Document {
public:
    /// A tree whose texts are all its own.
    Document() = default;
    /// A tree over a body, which lies in `source`.
    Document(Data source, std::string_view body) : source_(std::move(source)), body_(body) {
        if (body.size() >= Node::kOwnText) system::failForMemory();
    }

    std::string_view text(const Node& leaf) const noexcept {
        if ((leaf.begin & Node::kOwnText) == 0) return {body_.data() + leaf.begin, leaf.size};
        return {ownText_.data() + (leaf.begin & ~Node::kOwnText), leaf.size};
    }
    /// The text that slices are parts of; empty when the tree was built in code.
    std::string_view body() const noexcept { return body_; }
    std::string_view name(const Node& node) const noexcept { return names_.name(node.name()); }
    const Node& node(std::uint32_t index) const noexcept { return nodes_[index]; }
    std::uint32_t index(const Node& node) const noexcept {
        return static_cast<std::uint32_t>(&node - nodes_.data());
    }
    /// The node after this one and all that is in it.
    std::uint32_t endOf(std::uint32_t index) const noexcept {
        const Node& node = nodes_[index];
        return node.isAggregate() ? node.begin : index + 1;
    }
    const Node* endOf(const Node* node) const noexcept {
        return node->isAggregate() ? nodes_.data() + node->begin : node + 1;
    }

    /// How many nodes there are, the root included.
    std::uint32_t size() const noexcept { return nodes_.size(); }
    const NameTable& names() const noexcept { return names_; }
    const Leftovers& leftovers() const noexcept { return leftovers_; }
    /// Where the body begins in the source.
    std::size_t bodyOffset() const noexcept {
        return static_cast<std::size_t>(body_.data() - source_.bytes().data());
    }
    /// The decoded text that the body lies in, header included; no bytes for a tree that was built in code.
    const Data& source() const noexcept { return source_; }
    /// Where in the source a leaf's text begins; nothing for a text of the tree's own.
    std::optional<std::size_t> sourceOffset(const Node& leaf) const noexcept {
        if ((leaf.begin & Node::kOwnText) != 0) return std::nullopt;
        return bodyOffset() + leaf.begin;
    }

private:
    friend class TreeWriter;
    Data source_;
    std::string_view body_;
    PodVector<Node> nodes_;
    PodVector<char> ownText_;  ///< leaves that held an entity, or that were built in code
    NameTable names_;
    Leftovers leftovers_;
};

}  // namespace brackwell::reading
