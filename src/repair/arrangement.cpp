// SPDX-License-Identifier: Apache-2.0
#include "repair/arrangement.h"

#include <algorithm>
#include <unordered_map>

#include "elements/ways.h"
#include "repair/faults.h"
#include "repair/first_children.h"
#include "repair/holders.h"
#include "repair/period.h"
#include "repair/place_rules.h"

namespace brackwell::repair {
namespace {

using elements::Element;

/// No document that means well nests deeper.
constexpr unsigned kDeepest = 16;

class Arranger {
public:
    explicit Arranger(Tree tree) : result_{std::move(tree), {}, false}, tree_(result_.tree) {
        for (NodeID node = 1; node < tree_.size(); ++node) note(node);
    }

    Arrangement run() {
        const NodeID last = tree_.size();
        // A node comes after the one that it stands in, so this goes from the innermost outwards.
        for (NodeID parent = last; parent > 0;) placeChildrenOf(--parent);
        for (NodeID parent = Tree::kDocument; parent != kNoNode; parent = tree_.following(parent))
            uniteChildrenOf(parent);
        return std::move(result_);
    }

private:
    // -----------------------------------------------------------------------------------------
    // The tree and what has been done to it

    Element elementOf(NodeID node) const noexcept { return tree_[node].element; }
    std::string nameOf(NodeID node) const { return openTag(tree_[node].name); }

    void note(NodeID node) {
        if (elementOf(node) != elements::kUnknown) firsts_.add(tree_[node].parent, elementOf(node), node);
    }
    void detach(NodeID node) {
        firsts_.remove(tree_[node].parent, elementOf(node), node);
        tree_.detach(node);
        result_.isChanged = true;
    }
    void insert(NodeID node, NodeID parent, NodeID after) {
        tree_.insert(node, parent, after);
        note(node);
    }
    Mark& mark(NodeID node) {
        if (result_.marks.size() <= node) result_.marks.resize(tree_.size());
        return result_.marks[node];
    }
    void explain(NodeID node, RepairKind kind, std::string reason) {
        Mark& it = mark(node);
        it.kind = kind;
        it.reason = std::move(reason);
    }
    NodeID make(Element element, RepairKind kind, std::string reason) {
        const NodeID node = tree_.make(element);
        explain(node, kind, std::move(reason));
        result_.isChanged = true;
        return node;
    }

    /// The child of a parent in which a node stands, or which it is.
    NodeID childAround(NodeID node, NodeID parent) const noexcept {
        while (tree_[node].parent != parent) node = tree_[node].parent;
        return node;
    }

    // -----------------------------------------------------------------------------------------
    // Elements that cannot stand where they are

    void placeChildrenOf(NodeID parent) {
        bool mayBeMisnamed = parent != Tree::kDocument;
        for (NodeID node = tree_[parent].first; node != kNoNode;) {
            const NodeID next = tree_[node].next;
            if (isMovable(node) && isMisplaced(tree_, node) && !wrap(node, parent) && !tree_[node].isLeaf) {
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
        return !(tree_[node].isLeaf && elements::isAggregate(elementOf(node)));
    }

    /// Moves leaves at the end of an aggregate out of it when they belong into the one around it: it should
    /// have ended before them.
    void moveLastLeavesOf(NodeID parent) {
        const NodeID around = parent == Tree::kDocument ? kNoNode : tree_[parent].parent;
        if (around == kNoNode || around == Tree::kDocument) return;
        NodeID first = kNoNode;
        for (NodeID node = tree_[parent].last; node != kNoNode; node = tree_[node].previous) {
            if (!tree_[node].isLeaf || !isMovable(node) || !isMisplaced(tree_, node) ||
                !hasRoom(around, elementOf(node)))
                break;
            first = node;
        }
        while (first != kNoNode) {
            const NodeID next = tree_[first].next;
            if (hasRoom(around, elementOf(first))) moveTo(around, first);
            first = next;
        }
    }

    /// True when an element has a place among the children of a node that is not taken for good.
    bool hasRoom(NodeID parent, Element element) const {
        if (parent == Tree::kDocument) return element == elements::kRoot;
        const elements::Child* const child = elements::findChild(element, elementOf(parent));
        if (child == nullptr) return false;
        return child->mayRepeat || isList(element) || elementOf(parent) == elements::kRoot ||
               firsts_.find(parent, element) == kNoNode;
    }

    /// The aggregates that are missing between a node and what stands in it; empty when that is not clear.
    std::vector<Element> wayFrom(NodeID parent, NodeID node) {
        const Element element = elementOf(node);
        const bool isOutside = parent == Tree::kDocument;
        if (isOutside && tree_[node].isLeaf) return {};
        if (tree_[node].isLeaf && isMadeFor(tree_[node].previous, element))
            return {elementOf(tree_[node].previous)};
        const Element from = isOutside ? elements::kRoot : elementOf(parent);
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
        if (!hasHolders_) holders_.addAll(tree_);
        hasHolders_ = true;
        const auto [holder, between] = nearestHolder(node, parent);
        if (holder == kNoNode) return false;
        NodeID around = holder;
        std::string reason =
            reasonToPut(node, parent,
                        between == elements::kUnknown ? nameOf(holder) : openTag(elements::nameOf(between)));
        detach(node);
        if (between == elements::kUnknown)
            mark(around).closeReason = reason;
        else
            around = makeIn(holder, between, tree_[holder].last, tree_[node].open.begin, reason);
        insert(node, around, tree_[around].last);
        explain(node, RepairKind::misplaced, std::move(reason));
        return true;
    }

    struct Place {
        NodeID holder = kNoNode;
        Element between = elements::kUnknown;  ///< what has to be made in it around the node
    };

    /// The last aggregate before a node, and inside the one around it, that the node or its list has a place
    /// in; none when that place is taken.
    Place nearestHolder(NodeID node, NodeID parent) const {
        const Element element = elementOf(node);
        Holders::Holder nearest;
        Element between = elements::kUnknown;
        const auto look = [&](Element holder, Element list) {
            const Holders::Holder found = holders_.lastBefore(tree_, holder, tree_[node].open.begin);
            if (found.node == kNoNode || elementOf(found.node) != holder) return;
            if (nearest.node != kNoNode && nearest.offset >= found.offset) return;
            nearest = found;
            between = list;
        };
        for (const Element holder : elements::parentsOf(element)) {
            look(holder, elements::kUnknown);
            if (elements::mayRepeatIn(element, holder))
                for (const Element outer : elements::parentsOf(holder)) look(outer, holder);
        }
        const bool isWrapper = nearest.node != kNoNode && tree_[nearest.node].name.ends_with("TRNRS");
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
        const std::string reason = nameOf(node) + " cannot stand " +
                                   (isOutside ? "outside of <OFX>" : "in " + nameOf(tree_[node].parent));
        return isOutside && place == openTag("OFX") ? reason : reason + ", but in " + place;
    }

    /// Makes an aggregate that an open tag is missing of.
    NodeID makeIn(NodeID parent, Element element, NodeID after, std::size_t offset,
                  const std::string& reason) {
        const NodeID made = make(element, RepairKind::missingOpen, reason);
        insert(made, parent, after);
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
        if (step == way.size() && !hasRoom(around, elementOf(node))) return false;
        const NodeID beside = childAround(node, parent);
        std::string reason = reasonToPut(node, parent, openTag(elements::nameOf(way.back())));
        NodeID after = step == 0 ? (beside == node ? tree_[node].previous : lastAfter(beside)) : kNoNode;
        detach(node);
        if (step > 0) {
            after = placeIn(around, node);
            if (after != kNoNode && after == tree_[around].last) mark(around).closeReason = reason;
        }
        for (; step < way.size(); ++step) {
            const NodeID made = makeIn(around, way[step], after, tree_[node].open.begin, reason);
            if (around == parent && beside != node) moved_[beside] = made;
            around = made;
            after = kNoNode;
        }
        insert(node, around, after);
        explain(node, RepairKind::misplaced, std::move(reason));
        return true;
    }

    /// The child of a parent that a node can go into: of aggregates that may stand there once, the one that
    /// does; of others, the one that was made just before.
    NodeID existing(NodeID parent, Element element, NodeID node) const {
        const bool isOne =
            parent == Tree::kDocument || (elements::findChild(element, elementOf(parent)) != nullptr &&
                                          !elements::mayRepeatIn(element, elementOf(parent)));
        if (isOne) {
            const NodeID found = firsts_.find(parent, element);
            return found != kNoNode && !tree_[found].isLeaf && found != node ? found : kNoNode;
        }
        const NodeID before = tree_[node].parent == parent ? tree_[node].previous : kNoNode;
        if (before == kNoNode || elementOf(before) != element || tree_[before].open.isThere()) return kNoNode;
        return hasRoom(before, elementOf(node)) && !isFull(before, node) ? before : kNoNode;
    }

    /// True for a record of a list that was made for one of several things: each of two BANKACCTINFO in a
    /// ACCTINFORS is an account of its own, although an ACCTINFO may hold both.
    bool isFull(NodeID record, NodeID node) const {
        const elements::Child* const child = elements::findChild(elementOf(node), elementOf(record));
        if (child == nullptr || !child->mayRepeat || tree_[node].isLeaf) return false;
        return std::ranges::any_of(
            elements::childrenOf(elementOf(record)), [&](const elements::Child& other) {
                return other.mayRepeat && firsts_.find(record, other.element) != kNoNode;
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
        const Element was = elementOf(parent);
        if (was == elements::kUnknown || was == elements::kRoot) return false;
        Element found = elements::kUnknown;
        for (const Element candidate : elements::parentsOf(elementOf(node))) {
            if (candidate == was || !holdsAll(candidate, parent)) continue;
            if (found != elements::kUnknown && !isVersionOf(found, candidate, was)) return false;
            if (found == elements::kUnknown || hasSameVersion(candidate, was)) found = candidate;
        }
        if (found == elements::kUnknown) return false;
        firsts_.remove(tree_[parent].parent, was, parent);
        explain(parent, RepairKind::wrongName,
                nameOf(node) + " cannot stand in " + nameOf(parent) + ", and all in it belongs in " +
                    openTag(elements::nameOf(found)));
        mark(parent).isRenamed = true;
        tree_[parent].element = found;
        tree_[parent].name = elements::nameOf(found);
        note(parent);
        result_.isChanged = true;
        return true;
    }

    bool holdsAll(Element candidate, NodeID parent) const noexcept {
        for (NodeID child = tree_[parent].first; child != kNoNode; child = tree_[child].next)
            if (elementOf(child) != elements::kUnknown &&
                elements::findChild(elementOf(child), candidate) == nullptr)
                return false;
        return true;
    }

    /// Moves an aggregate into one further out.
    void moveOut(NodeID node) {
        const NodeID from = tree_[node].parent;
        if (from == Tree::kDocument) return;
        NodeID around = tree_[from].parent;
        bool isInStatement = isStatement(elementOf(from));
        for (unsigned i = 0; i < kDeepest && around != kNoNode; ++i, around = tree_[around].parent) {
            if (hasRoom(around, elementOf(node))) return moveTo(around, node);
            const std::vector<Element> way = wayFrom(around, node);
            // What stands in a statement gets none of its own: that would be one of no account.
            const bool isInvented = isInStatement && std::ranges::any_of(way, isStatement);
            if (!way.empty() && !isInvented && moveThrough(around, node, way)) return;
            isInStatement = isInStatement || isStatement(elementOf(around));
        }
    }

    void moveTo(NodeID around, NodeID node) {
        const NodeID from = tree_[node].parent;
        const NodeID beside = childAround(node, around);
        std::string reason = nameOf(node) + " cannot stand in " + nameOf(from) +
                             (around == Tree::kDocument ? "" : ", but in " + nameOf(around));
        noteEndOf(node, beside);
        const NodeID after = lastAfter(beside);
        detach(node);
        insert(node, around, after);
        moved_[beside] = node;
        explain(node, RepairKind::misplaced, std::move(reason));
    }

    bool moveThrough(NodeID around, NodeID node, const std::vector<Element>& way) {
        noteEndOf(node, childAround(node, around));
        return putInto(node, around, way);
    }

    /// Says why the aggregates around a node end before it, where they do.
    void noteEndOf(NodeID node, NodeID outermost) {
        for (NodeID around = tree_[node].parent;; around = tree_[around].parent) {
            mark(around).closeReason =
                nameOf(node) + " cannot stand in " + nameOf(around) + ", so that ends before it";
            if (around == outermost) return;
        }
    }

    // -----------------------------------------------------------------------------------------
    // Aggregates that stand twice where one may

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
        if (elementOf(node) == elements::kUnknown || tree_[node].isLeaf) return kNoNode;
        if (isMisplaced(tree_, node) || mayRepeat(tree_, node)) return kNoNode;
        const NodeID first = firsts_.find(tree_[node].parent, elementOf(node));
        return first == node || first == kNoNode || tree_[first].isLeaf ? kNoNode : first;
    }

    /// Parts a wrapper that holds several responses, so that each has its own.
    bool isParted(NodeID wrapper) {
        if (wrapper == Tree::kDocument || !tree_[wrapper].name.ends_with("TRNRS")) return false;
        const NodeID owner = tree_[wrapper].parent;
        if (owner == Tree::kDocument || !elements::mayRepeatIn(elementOf(wrapper), elementOf(owner)))
            return false;
        for (NodeID node = tree_[wrapper].first; node != kNoNode;) {
            const NodeID next = tree_[node].next;
            if (tree_[node].name.ends_with("RS")) partAccounts(node);
            node = next;
        }
        NodeID made = kNoNode;
        for (NodeID node = tree_[wrapper].first; node != kNoNode;) {
            const NodeID next = tree_[node].next;
            if (tree_[node].name.ends_with("RS") && firstOfKind(node) != kNoNode) {
                made = partBefore(node, wrapper, made == kNoNode ? wrapper : made);
            } else if (made != kNoNode) {
                detach(node);
                insert(node, made, tree_[made].last);
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
            const bool isAccount = tree_[node].name.ends_with("ACCTFROM");
            if (isAccount && hasContent && firstOfKind(node) != kNoNode) {
                made = partBefore(node, statement, made == kNoNode ? statement : made);
                hasContent = false;
            } else if (made != kNoNode) {
                detach(node);
                insert(node, made, tree_[made].last);
            }
            hasContent = hasContent || (!isAccount && !tree_[node].isLeaf);
            node = next;
        }
    }

    /// Makes a wrapper of its own for a response, after `before`, and takes along what stands in front of it
    /// and is there a second time. For an account it makes a statement, and takes leaves alone along.
    NodeID partBefore(NodeID response, NodeID wrapper, NodeID before) {
        const NodeID made = make(elementOf(wrapper), RepairKind::missingOpen,
                                 "a second " + nameOf(response) + " cannot stand in one " + nameOf(wrapper));
        mark(before).closeReason = mark(made).reason;
        insert(made, tree_[wrapper].parent, before);
        std::swap(tree_[made].close, tree_[before].close);  // the one that is there ends the last
        const Element kind = elementOf(response);
        const bool takesAll = tree_[response].name.ends_with("RS");
        for (NodeID node = before == wrapper ? tree_[response].previous : tree_[before].last;
             node != kNoNode;) {
            const NodeID previous = tree_[node].previous;
            if (elementOf(node) == elements::kUnknown || elementOf(node) == kind) break;
            if (!takesAll && !tree_[node].isLeaf) break;
            if (firsts_.find(wrapper, elementOf(node)) == node) break;
            detach(node);
            insert(node, made, kNoNode);
            node = previous;
        }
        detach(response);
        insert(response, made, tree_[made].last);
        return made;
    }

    /// Moves the children of the second into the first. Of leaves that both have, one stays beside it.
    void unite(NodeID first, NodeID second) {
        const Element element = elementOf(first);
        const NodeID owner = tree_[first].parent;
        const bool isAlwaysOne = owner == Tree::kDocument || elementOf(owner) == elements::kRoot;
        if (!isAlwaysOne && !isList(element)) return;
        const std::string reason =
            "a second " + nameOf(second) + " cannot stand " +
            (element == elements::kRoot ? "in a document" : "in " + nameOf(tree_[first].parent)) +
            ", so both become one";
        // What is next to each other ends where the second does.
        if (tree_[first].next == second) std::swap(tree_[first].close, tree_[second].close);
        NodeID beside = second;
        for (NodeID child = tree_[second].first; child != kNoNode;) {
            const NodeID next = tree_[child].next;
            detach(child);
            const NodeID odd = exchangeBounds(first, child);
            if (odd == child) {
                insert(child, tree_[second].parent, beside);
            } else {
                insert(child, first, tree_[first].last);
                if (odd != kNoNode) insert(odd, tree_[second].parent, beside);
            }
            if (odd != kNoNode) beside = odd;
            for (const NodeID moved : {child, odd})
                if (moved != kNoNode && mark(moved).reason.empty())
                    explain(moved, RepairKind::repeated, reason);
            child = next;
        }
        explain(second, RepairKind::repeated, reason);
        mark(first).closeReason = reason;
        detach(second);
    }

    /// Of a leaf that goes into an aggregate that has one of its kind, the one of both that has to stand
    /// beside it; kNoNode when there is none there. A period keeps the first begin and the last end.
    NodeID exchangeBounds(NodeID around, NodeID leaf) {
        const elements::Child* const row = elements::findChild(elementOf(leaf), elementOf(around));
        if (!tree_[leaf].isLeaf || row == nullptr || row->mayRepeat) return kNoNode;
        const NodeID there = firsts_.find(around, elementOf(leaf));
        if (there == kNoNode || !tree_[there].isLeaf) return there == kNoNode ? kNoNode : leaf;
        if (!widensPeriod(tree_, leaf, there)) return leaf;
        detach(there);
        return there;
    }

    Arrangement result_;
    Tree& tree_;
    elements::Ways ways_;
    FirstChildren firsts_;
    Holders holders_;
    bool hasHolders_ = false;                     ///< those of the text are among them
    std::unordered_map<NodeID, NodeID> moved_;    ///< by child: the last node that left it to stand after it
    std::unordered_map<NodeID, NodeID> leading_;  ///< by aggregate: the last node that was put to its begin
};

}  // namespace

Arrangement arranged(Tree tree) { return Arranger(std::move(tree)).run(); }

}  // namespace brackwell::repair
