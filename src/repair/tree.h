// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "elements/structure.h"
#include "tree/name_table.h"

namespace brackwell::repair {

/// The number of a node in its tree; kNoNode: none.
using NodeID = std::uint32_t;
inline constexpr NodeID kNoNode = std::numeric_limits<NodeID>::max();

inline constexpr std::uint32_t kNowhere = std::numeric_limits<std::uint32_t>::max();

/// A stretch of a text, with 32 bits like a parse tree; begin is kNowhere for what does not stand in it.
struct Stretch {
    std::uint32_t begin = kNowhere;
    std::uint32_t end = kNowhere;
    bool isThere() const noexcept { return begin != kNowhere; }
};

/// An element of a text, or the document itself, which holds the outermost ones.
struct Node {
    elements::Element element = elements::kUnknown;
    bool isLeaf = false;
    reading::NameID unknownName = 0;  ///< the number of the name of an element that is not known
    Stretch open;   ///< of a leaf: from its open tag to its close tag or the end of its text
    Stretch close;  ///< the close tag of an aggregate
    NodeID parent = kNoNode;
    NodeID first = kNoNode;  ///< child
    NodeID last = kNoNode;
    NodeID next = kNoNode;  ///< sibling
    NodeID previous = kNoNode;
};
static_assert(sizeof(Node) == 44, "trees of large documents take most of a repair's memory");

/// A text as the body parser reads it, with the places of its tags. The nodes are in the order of the text;
/// the document is the first.
class Tree {
public:
    static constexpr NodeID kDocument = 0;

    /// The tree of a text from `bodyIndex` on; of one that the parser refuses, up to the tag it refuses.
    Tree(std::string_view text, std::size_t bodyIndex);

    std::string_view text() const noexcept { return text_; }
    NodeID size() const noexcept { return static_cast<NodeID>(nodes_.size()); }
    /// In the text, or in the list of elements; "" of the document.
    std::string_view name(NodeID node) const noexcept {
        const Node& it = nodes_[node];
        if (node == kDocument) return {};
        return it.element == elements::kUnknown ? names_.name(it.unknownName) : elements::nameOf(it.element);
    }
    Node& operator[](NodeID node) noexcept { return nodes_[node]; }
    const Node& operator[](NodeID node) const noexcept { return nodes_[node]; }

    /// A new node of a name in the text.
    NodeID make(std::string_view name);
    /// A new node that does not stand in the text, and has no place in the tree yet.
    NodeID make(elements::Element element);
    void detach(NodeID node) noexcept;
    /// Puts a detached node into a parent: after a child of it, or as the first.
    void insert(NodeID node, NodeID parent, NodeID after) noexcept;
    void append(NodeID node, NodeID parent) noexcept { insert(node, parent, nodes_[parent].last); }

    /// The node that comes after this one when all are visited from top to bottom; kNoNode at the end.
    NodeID following(NodeID node) const noexcept;

private:
    std::string_view text_;
    std::vector<Node> nodes_;
    reading::NameTable names_;  ///< those that are not known
};

}  // namespace brackwell::repair
