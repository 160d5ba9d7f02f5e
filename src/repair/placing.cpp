// SPDX-License-Identifier: Apache-2.0
#include "repair/placing.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "elements/roles.h"
#include "elements/ways.h"
#include "repair/deepest.h"
#include "repair/faults.h"
#include "repair/holders.h"
#include "repair/place_rules.h"

namespace brackwell::repair {
namespace {

using elements::Element;

class Placer {
public:
    explicit Placer(WorkTree& tree) : tree_(tree) {}

    void run() {
        // A node comes after the one that it stands in, so this goes from the innermost outwards.
        for (NodeID parent = tree_.size(); parent > 0;) placeChildrenOf(--parent);
    }

private:
    void placeChildrenOf(NodeID parent) {
        bool mayBeMisnamed = parent != Tree::kDocument;
        for (NodeID node = tree_[parent].first; node != kNoNode;) {
            const NodeID next = tree_[node].next;
            if (isMovable(node) && isMisplaced(tree_.tree(), node) && !wrap(node, parent) &&
                !tree_[node].isLeaf) {
                if (mayBeMisnamed && rename(parent, node)) break;
                mayBeMisnamed = false;
                moveOut(node);
            }
            node = next;
        }
        moveLastLeavesOf(parent);
    }

    /// An aggregate that has a text is something else under its name.
    bool isMovable(NodeID node) const noexcept {
        return !(tree_[node].isLeaf && elements::isAggregate(tree_.elementOf(node)));
    }

    /// Moves leaves at the end of an aggregate out of it when they belong into the one around it: it should
    /// have ended before them.
    void moveLastLeavesOf(NodeID parent) {
        const NodeID around = parent == Tree::kDocument ? kNoNode : tree_[parent].parent;
        if (around == kNoNode || around == Tree::kDocument) return;
        NodeID first = kNoNode;
        for (NodeID node = tree_[parent].last; node != kNoNode; node = tree_[node].previous) {
            if (!tree_[node].isLeaf || !isMovable(node) || !isMisplaced(tree_.tree(), node) ||
                !hasRoom(around, tree_.elementOf(node)))
                break;
            first = node;
        }
        while (first != kNoNode) {
            const NodeID next = tree_[first].next;
            if (hasRoom(around, tree_.elementOf(first))) moveTo(around, first);
            first = next;
        }
    }

    /// True when an element has a place among the children of a node that is not taken for good.
    bool hasRoom(NodeID parent, Element element) const {
        if (parent == Tree::kDocument) return element == elements::kRoot;
        const elements::Child* const child = elements::findChild(element, tree_.elementOf(parent));
        if (child == nullptr) return false;
        return child->mayRepeat || isList(element) || tree_.elementOf(parent) == elements::kRoot ||
               tree_.first(parent, element) == kNoNode;
    }

    /// The aggregates that are missing between a node and what stands in it; empty when that is not clear.
    std::vector<Element> wayFrom(NodeID parent, NodeID node) {
        const Element element = tree_.elementOf(node);
        const bool isOutside = parent == Tree::kDocument;
        if (isOutside && tree_[node].isLeaf) return {};
        if (tree_[node].isLeaf && isMadeFor(tree_[node].previous, element))
            return {tree_.elementOf(tree_[node].previous)};
        const Element from = isOutside ? elements::kRoot : tree_.elementOf(parent);
        std::vector<Element> way = ways_.between(from, element);
        if (isOutside) {
            if (way.empty() && elements::findChild(element, from) == nullptr) return {};
            way.insert(way.begin(), elements::kRoot);
        }
        const bool isClear = tree_[node].isLeaf
                                 ? way.size() == 1 && isOnly(from, element)
                                 : hasClearPlace(element) ||
                                       (way.size() == 1 && (isOutside || isOnly(from, element))) ||
                                       (!way.empty() && isInfoOf(way.back(), element));
        return isClear ? way : std::vector<Element>();
    }

    /// True for a node that was made just now, and has room for an element.
    bool isMadeFor(NodeID node, Element element) const {
        return node != kNoNode && !tree_[node].open.isThere() && hasRoom(node, element);
    }

    /// Puts the aggregates around a node that are missing between it and its parent.
    bool wrap(NodeID node, NodeID parent) {
        const std::vector<Element> way = wayFrom(parent, node);
        if (way.empty()) return false;
        return (way.size() > 1 && putIntoNearest(node, parent)) || putInto(node, parent, way);
    }

    /// Puts a node that stands outside of all statements into the one before it: a STMTTRN after
    /// </STMTTRNRS> into the list of that statement.
    bool putIntoNearest(NodeID node, NodeID parent) {
        if (!tree_[node].open.isThere()) return false;
        if (!hasHolders_) holders_.addAll(tree_.tree());
        hasHolders_ = true;
        const auto [holder, between] = nearestHolder(node, parent);
        if (holder == kNoNode) return false;
        NodeID around = holder;
        std::string reason = reasonToPut(
            node, parent,
            between == elements::kUnknown ? tree_.nameOf(holder) : openTag(elements::nameOf(between)));
        tree_.detach(node);
        if (between == elements::kUnknown)
            tree_.mark(around).closeReason = reason;
        else
            around = makeIn(holder, between, tree_[holder].last, tree_[node].open.begin, reason);
        tree_.append(node, around);
        tree_.explain(node, RepairKind::misplaced, std::move(reason));
        return true;
    }

    struct Place {
        NodeID holder = kNoNode;
        Element between = elements::kUnknown;  ///< what has to be made in it around the node
    };

    /// The last aggregate before a node, and inside the one around it, that the node or its list has a place
    /// in; none when that place is taken.
    Place nearestHolder(NodeID node, NodeID parent) const {
        const Element element = tree_.elementOf(node);
        Holders::Holder nearest;
        Element between = elements::kUnknown;
        const auto look = [&](Element holder, Element list) {
            const Holders::Holder found = holders_.lastBefore(tree_.tree(), holder, tree_[node].open.begin);
            if (found.node == kNoNode || tree_.elementOf(found.node) != holder) return;
            if (nearest.node != kNoNode && nearest.offset >= found.offset) return;
            nearest = found;
            between = list;
        };
        for (const Element holder : elements::parentsOf(element)) {
            look(holder, elements::kUnknown);
            if (elements::mayRepeatIn(element, holder))
                for (const Element outer : elements::parentsOf(holder)) look(outer, holder);
        }
        const bool isWrapper = nearest.node != kNoNode && elements::isWrapper(tree_.name(nearest.node));
        if (nearest.node == kNoNode || isWrapper || !isInside(nearest.node, parent) ||
            !hasRoom(nearest.node, between == elements::kUnknown ? element : between))
            return {};
        return {nearest.node, between};
    }

    bool isInside(NodeID node, NodeID outer) const noexcept {
        for (unsigned i = 0; i < kDeepest && node != kNoNode; ++i) {
            node = tree_[node].parent;
            if (node == outer) return true;
        }
        return false;
    }

    std::string reasonToPut(NodeID node, NodeID parent, const std::string& place) const {
        const bool isOutside = parent == Tree::kDocument;
        const std::string reason = tree_.nameOf(node) + " is not allowed " +
                                   (isOutside ? "outside <OFX>" : "in " + tree_.nameOf(tree_[node].parent));
        return isOutside && place == openTag("OFX") ? reason : reason + "; it belongs in " + place;
    }

    /// Makes an aggregate whose open tag is missing.
    NodeID makeIn(NodeID parent, Element element, NodeID after, std::size_t offset,
                  const std::string& reason) {
        const NodeID made = tree_.make(element, RepairKind::missingOpen, reason);
        tree_.insert(made, parent, after);
        holders_.add(element, offset, made);
        return made;
    }

    /// Puts a node into a parent, through aggregates that are there or are made. False when its place is
    /// taken.
    bool putInto(NodeID node, NodeID parent, const std::vector<Element>& way) {
        NodeID around = parent;
        std::size_t step = 0;
        for (; step < way.size(); ++step) {
            const NodeID child = existing(around, way[step], node);
            if (child == kNoNode) break;
            around = child;
        }
        if (step == way.size() && !hasRoom(around, tree_.elementOf(node))) return false;
        const NodeID beside = tree_.childAround(node, parent);
        std::string reason = reasonToPut(node, parent, openTag(elements::nameOf(way.back())));
        NodeID after = step == 0 ? (beside == node ? tree_[node].previous : lastAfter(beside)) : kNoNode;
        tree_.detach(node);
        if (step > 0) {
            after = placeIn(around, node);
            if (after != kNoNode && after == tree_[around].last) tree_.mark(around).closeReason = reason;
        }
        for (; step < way.size(); ++step) {
            const NodeID made = makeIn(around, way[step], after, tree_[node].open.begin, reason);
            if (around == parent && beside != node) moved_[beside] = made;
            around = made;
            after = kNoNode;
        }
        tree_.insert(node, around, after);
        tree_.explain(node, RepairKind::misplaced, std::move(reason));
        return true;
    }

    /// The child of a parent that a node can go into: of aggregates that may stand there once, the one that
    /// does; of others, the one that was made just before.
    NodeID existing(NodeID parent, Element element, NodeID node) const {
        const bool isOne =
            parent == Tree::kDocument || (elements::findChild(element, tree_.elementOf(parent)) != nullptr &&
                                          !elements::mayRepeatIn(element, tree_.elementOf(parent)));
        if (isOne) {
            const NodeID found = tree_.first(parent, element);
            return found != kNoNode && !tree_[found].isLeaf && found != node ? found : kNoNode;
        }
        const NodeID before = tree_[node].parent == parent ? tree_[node].previous : kNoNode;
        if (before == kNoNode || tree_.elementOf(before) != element || tree_[before].open.isThere())
            return kNoNode;
        return hasRoom(before, tree_.elementOf(node)) && !isFull(before, node) ? before : kNoNode;
    }

    /// True for a record of a list that was made for one of several things: each of two BANKACCTINFO in a
    /// ACCTINFORS is an account of its own, although an ACCTINFO may hold both.
    bool isFull(NodeID record, NodeID node) const {
        const elements::Child* const child =
            elements::findChild(tree_.elementOf(node), tree_.elementOf(record));
        if (child == nullptr || !child->mayRepeat || tree_[node].isLeaf) return false;
        return std::ranges::any_of(
            elements::childrenOf(tree_.elementOf(record)), [&](const elements::Child& other) {
                return other.mayRepeat && tree_.first(record, other.element) != kNoNode;
            });
    }

    /// The child after which a node goes when it comes into an aggregate from outside: it keeps the order of
    /// the text.
    NodeID placeIn(NodeID parent, NodeID node) {
        const Node& it = tree_[parent];
        if (!it.open.isThere() || it.open.begin <= tree_[node].open.begin) return it.last;
        const auto found = leading_.find(parent);
        const bool isFirst = found == leading_.end() || tree_[found->second].parent != parent;
        const NodeID after = isFirst ? kNoNode : found->second;
        leading_[parent] = node;
        return after;
    }

    /// The node after which one goes that leaves a child: others may have left it before.
    NodeID lastAfter(NodeID child) const {
        const auto found = moved_.find(child);
        if (found == moved_.end() || tree_[found->second].parent != tree_[child].parent) return child;
        return found->second;
    }

    /// Gives an aggregate the name of the one that all of its children belong in.
    bool rename(NodeID parent, NodeID node) {
        const Element was = tree_.elementOf(parent);
        if (was == elements::kUnknown || was == elements::kRoot) return false;
        Element found = elements::kUnknown;
        for (const Element candidate : elements::parentsOf(tree_.elementOf(node))) {
            if (candidate == was || !holdsAll(candidate, parent)) continue;
            if (found != elements::kUnknown && !isVersionOf(found, candidate, was)) return false;
            if (found == elements::kUnknown || hasSameVersion(candidate, was)) found = candidate;
        }
        if (found == elements::kUnknown) return false;
        tree_.rename(parent, found,
                     tree_.nameOf(node) + " is not allowed in " + tree_.nameOf(parent) +
                         ", and everything in " + tree_.nameOf(parent) + " belongs in " +
                         openTag(elements::nameOf(found)));
        return true;
    }

    bool holdsAll(Element candidate, NodeID parent) const noexcept {
        for (NodeID child = tree_[parent].first; child != kNoNode; child = tree_[child].next)
            if (tree_.elementOf(child) != elements::kUnknown &&
                elements::findChild(tree_.elementOf(child), candidate) == nullptr)
                return false;
        return true;
    }

    /// Moves an aggregate into one further out.
    void moveOut(NodeID node) {
        const NodeID from = tree_[node].parent;
        if (from == Tree::kDocument) return;
        NodeID around = tree_[from].parent;
        bool isInStatement = isStatement(tree_.elementOf(from));
        for (unsigned i = 0; i < kDeepest && around != kNoNode; ++i, around = tree_[around].parent) {
            if (hasRoom(around, tree_.elementOf(node))) return moveTo(around, node);
            const std::vector<Element> way = wayFrom(around, node);
            // What stands in a statement gets none of its own: that would be one of no account.
            const bool isInvented = isInStatement && std::ranges::any_of(way, isStatement);
            if (!way.empty() && !isInvented && moveThrough(around, node, way)) return;
            isInStatement = isInStatement || isStatement(tree_.elementOf(around));
        }
    }

    void moveTo(NodeID around, NodeID node) {
        const NodeID from = tree_[node].parent;
        const NodeID beside = tree_.childAround(node, around);
        std::string reason = tree_.nameOf(node) + " is not allowed in " + tree_.nameOf(from) +
                             (around == Tree::kDocument ? "" : "; it belongs in " + tree_.nameOf(around));
        noteEndOf(node, beside);
        const NodeID after = lastAfter(beside);
        tree_.detach(node);
        tree_.insert(node, around, after);
        moved_[beside] = node;
        tree_.explain(node, RepairKind::misplaced, std::move(reason));
    }

    bool moveThrough(NodeID around, NodeID node, const std::vector<Element>& way) {
        noteEndOf(node, tree_.childAround(node, around));
        return putInto(node, around, way);
    }

    /// Says why the aggregates around a node end before it, where they do.
    void noteEndOf(NodeID node, NodeID outermost) {
        for (NodeID around = tree_[node].parent;; around = tree_[around].parent) {
            tree_.mark(around).closeReason = tree_.nameOf(node) + " is not allowed in " +
                                             tree_.nameOf(around) + ", so " + tree_.nameOf(around) +
                                             " ends before it";
            if (around == outermost) return;
        }
    }

    WorkTree& tree_;
    elements::Ways ways_;
    Holders holders_;
    bool hasHolders_ = false;                     ///< those of the text are among them
    std::unordered_map<NodeID, NodeID> moved_;    ///< by child: the last node that left it to stand after it
    std::unordered_map<NodeID, NodeID> leading_;  ///< by aggregate: the last node that was put to its begin
};

}  // namespace

void placeElements(WorkTree& tree) { Placer(tree).run(); }

}  // namespace brackwell::repair
