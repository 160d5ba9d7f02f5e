// SPDX-License-Identifier: Apache-2.0
#include "repair/uniting.h"

#include <string>

#include "elements/roles.h"
#include "repair/faults.h"
#include "repair/period.h"
#include "repair/place_rules.h"

namespace brackwell::repair {
namespace {

using elements::Element;

class Uniter {
public:
    explicit Uniter(WorkTree& tree) : tree_(tree) {}

    void run() {
        for (NodeID parent = Tree::kDocument; parent != kNoNode; parent = tree_.tree().following(parent))
            uniteChildrenOf(parent);
    }

private:
    void uniteChildrenOf(NodeID parent) {
        if (isParted(parent)) return;
        for (NodeID node = tree_[parent].first; node != kNoNode;) {
            const NodeID next = tree_[node].next;
            const NodeID first = firstOfKind(node);
            if (first != kNoNode) unite(first, node);
            node = next;
        }
    }

    /// The aggregate before a node that takes its place; kNoNode: none.
    NodeID firstOfKind(NodeID node) const {
        if (tree_.elementOf(node) == elements::kUnknown || tree_[node].isLeaf) return kNoNode;
        if (isMisplaced(tree_.tree(), node) || mayRepeat(tree_.tree(), node)) return kNoNode;
        const NodeID first = tree_.first(tree_[node].parent, tree_.elementOf(node));
        return first == node || first == kNoNode || tree_[first].isLeaf ? kNoNode : first;
    }

    /// Parts a wrapper that holds several responses, so that each has its own.
    bool isParted(NodeID wrapper) {
        if (wrapper == Tree::kDocument || !elements::isWrapper(tree_.name(wrapper))) return false;
        const NodeID owner = tree_[wrapper].parent;
        if (owner == Tree::kDocument ||
            !elements::mayRepeatIn(tree_.elementOf(wrapper), tree_.elementOf(owner)))
            return false;
        for (NodeID node = tree_[wrapper].first; node != kNoNode;) {
            const NodeID next = tree_[node].next;
            if (tree_.name(node).ends_with("RS")) partAccounts(node);
            node = next;
        }
        NodeID made = kNoNode;
        for (NodeID node = tree_[wrapper].first; node != kNoNode;) {
            const NodeID next = tree_[node].next;
            if (tree_.name(node).ends_with("RS") && firstOfKind(node) != kNoNode) {
                made = partBefore(node, wrapper, made == kNoNode ? wrapper : made);
            } else if (made != kNoNode) {
                tree_.detach(node);
                tree_.append(node, made);
            }
            node = next;
        }
        return made != kNoNode;
    }

    /// Parts a statement that goes on with a second account after what belongs to the first.
    void partAccounts(NodeID statement) {
        NodeID made = kNoNode;
        bool hasContent = false;
        for (NodeID node = tree_[statement].first; node != kNoNode;) {
            const NodeID next = tree_[node].next;
            const bool isAccount = tree_.name(node).ends_with("ACCTFROM");
            if (isAccount && hasContent && firstOfKind(node) != kNoNode) {
                made = partBefore(node, statement, made == kNoNode ? statement : made);
                hasContent = false;
            } else if (made != kNoNode) {
                tree_.detach(node);
                tree_.append(node, made);
            }
            hasContent = hasContent || (!isAccount && !tree_[node].isLeaf);
            node = next;
        }
    }

    /// Makes a wrapper of its own for a response, after `before`, and takes along what is before it
    /// and is there a second time. For an account it makes a statement, and takes leaves alone along.
    NodeID partBefore(NodeID response, NodeID wrapper, NodeID before) {
        const NodeID made = tree_.make(
            tree_.elementOf(wrapper), RepairKind::missingOpen,
            "a second " + tree_.nameOf(response) + " is not allowed in one " + tree_.nameOf(wrapper));
        tree_.mark(before).closeReason = tree_.mark(made).reason;
        tree_.insert(made, tree_[wrapper].parent, before);
        tree_.swapCloseTags(made, before);  // the one that is there ends the last
        const Element kind = tree_.elementOf(response);
        const bool takesAll = tree_.name(response).ends_with("RS");
        for (NodeID node = before == wrapper ? tree_[response].previous : tree_[before].last;
             node != kNoNode;) {
            const NodeID previous = tree_[node].previous;
            if (tree_.elementOf(node) == elements::kUnknown || tree_.elementOf(node) == kind) break;
            if (!takesAll && !tree_[node].isLeaf) break;
            if (tree_.first(wrapper, tree_.elementOf(node)) == node) break;
            tree_.detach(node);
            tree_.insert(node, made, kNoNode);
            node = previous;
        }
        tree_.detach(response);
        tree_.append(response, made);
        return made;
    }

    /// Moves the children of the second into the first. Of leaves that both have, one stays beside it.
    void unite(NodeID first, NodeID second) {
        const Element element = tree_.elementOf(first);
        const NodeID owner = tree_[first].parent;
        const bool isAlwaysOne = owner == Tree::kDocument || tree_.elementOf(owner) == elements::kRoot;
        if (!isAlwaysOne && !isList(element)) return;
        const std::string reason =
            "a second " + tree_.nameOf(second) + " is not allowed " +
            (element == elements::kRoot ? "in a document" : "in " + tree_.nameOf(tree_[first].parent)) +
            ", so the two are merged";
        // What is next to each other ends where the second does.
        if (tree_[first].next == second) tree_.swapCloseTags(first, second);
        NodeID beside = second;
        for (NodeID child = tree_[second].first; child != kNoNode;) {
            const NodeID next = tree_[child].next;
            tree_.detach(child);
            const NodeID odd = exchangeBounds(first, child);
            if (odd == child) {
                tree_.insert(child, tree_[second].parent, beside);
            } else {
                tree_.append(child, first);
                if (odd != kNoNode) tree_.insert(odd, tree_[second].parent, beside);
            }
            if (odd != kNoNode) beside = odd;
            for (const NodeID moved : {child, odd})
                if (moved != kNoNode && tree_.mark(moved).reason.empty())
                    tree_.explain(moved, RepairKind::repeated, reason);
            child = next;
        }
        tree_.explain(second, RepairKind::repeated, reason);
        tree_.mark(first).closeReason = reason;
        tree_.detach(second);
    }

    /// Of a leaf that goes into an aggregate that has one of its kind, the one of both that has to stand
    /// beside it; kNoNode when there is none there. A period keeps the first begin and the last end.
    NodeID exchangeBounds(NodeID around, NodeID leaf) {
        const elements::Child* const row =
            elements::findChild(tree_.elementOf(leaf), tree_.elementOf(around));
        if (!tree_[leaf].isLeaf || row == nullptr || row->mayRepeat) return kNoNode;
        const NodeID there = tree_.first(around, tree_.elementOf(leaf));
        if (there == kNoNode || !tree_[there].isLeaf) return there == kNoNode ? kNoNode : leaf;
        if (!widensPeriod(tree_.tree(), leaf, there)) return leaf;
        tree_.detach(there);
        return there;
    }

    WorkTree& tree_;
};

}  // namespace

void uniteRepeated(WorkTree& tree) { Uniter(tree).run(); }

}  // namespace brackwell::repair
