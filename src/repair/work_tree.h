// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "repair/arrangement.h"
#include "repair/first_children.h"

namespace brackwell::repair {

/// A tree on its way to an arrangement, with what has been done to it and the first child of each kind that
/// each aggregate has.
class WorkTree {
public:
    explicit WorkTree(Tree tree) : result_{std::move(tree), {}, false} {}
    Arrangement finish() && { return std::move(result_); }

    const Tree& tree() const noexcept { return result_.tree; }
    NodeID size() const noexcept { return tree().size(); }
    const Node& operator[](NodeID node) const noexcept { return tree()[node]; }
    elements::Element elementOf(NodeID node) const noexcept { return tree()[node].element; }
    std::string_view name(NodeID node) const noexcept { return tree().name(node); }
    /// Its open tag.
    std::string nameOf(NodeID node) const { return openTag(name(node)); }
    /// The first child of a kind; kNoNode: there is none.
    NodeID first(NodeID parent, elements::Element element) const {
        return firsts_.find(tree(), parent, element);
    }
    /// The child of a parent in which a node stands, or which it is.
    NodeID childAround(NodeID node, NodeID parent) const noexcept;

    void detach(NodeID node);
    /// Puts a detached node into a parent: after a child of it, or as the first.
    void insert(NodeID node, NodeID parent, NodeID after);
    void append(NodeID node, NodeID parent) { insert(node, parent, tree()[parent].last); }
    /// A new node that has no place in the tree yet.
    NodeID make(elements::Element element, RepairKind kind, std::string reason);
    /// Gives an aggregate the name of another element.
    void rename(NodeID node, elements::Element element, std::string reason);
    /// Lets two aggregates have each other's close tags.
    void swapCloseTags(NodeID a, NodeID b) noexcept;

    Mark& mark(NodeID node);
    void explain(NodeID node, RepairKind kind, std::string reason);

private:
    void forget(NodeID node) {
        firsts_.learn(tree(), tree()[node].parent);
        firsts_.remove(tree()[node].parent, elementOf(node), node);
    }
    void note(NodeID node) { firsts_.add(tree()[node].parent, elementOf(node), node); }

    Arrangement result_;
    mutable FirstChildren firsts_;  ///< found when they are asked for
};

}  // namespace brackwell::repair
