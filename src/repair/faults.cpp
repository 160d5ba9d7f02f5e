// SPDX-License-Identifier: Apache-2.0
#include "repair/faults.h"

#include <algorithm>
#include <string_view>

#include "repair/edit.h"
#include "repair/markup.h"
#include "text/ascii_case.h"

namespace brackwell::repair {
namespace {

/// True for a name in small letters that would be that of an element in capitals.
bool isElementInCapitals(std::string_view name) {
    if (!hasSmallLetter(name)) return false;
    std::string capitals(name);
    std::ranges::transform(capitals, capitals.begin(), capitalLetter);
    const elements::Kind kind = elements::kindOf(elements::findElement(capitals));
    return kind != elements::Kind::unknown && kind != elements::Kind::headerField;
}

std::string placeOf(const Tree& tree, NodeID parent) {
    return parent == Tree::kDocument ? "outside <OFX>" : "in " + openTag(tree.name(parent));
}

/// Finds the first node of an element in a parent, while its children are walked through in order. One entry
/// for each element is enough, since a parent is finished before the next.
class Firsts {
public:
    /// The first one; the node itself when it is that.
    NodeID firstOf(const Tree& tree, NodeID node) noexcept {
        NodeID& first = nodes_[tree[node].element];
        if (first == kNoNode || tree[first].parent != tree[node].parent) first = node;
        return first;
    }

private:
    std::vector<NodeID> nodes_ = std::vector<NodeID>(elements::kElementCount, kNoNode);
};

/// True for an element directly in a message set.
bool isInMessageSet(const Tree& tree, NodeID node) {
    const NodeID parent = tree[node].parent;
    return parent != Tree::kDocument && tree[tree[parent].parent].element == elements::kRoot;
}

}  // namespace

bool mayRepeat(const Tree& tree, NodeID node) {
    const NodeID parent = tree[node].parent;
    if (parent == Tree::kDocument) return tree[node].element != elements::kRoot;
    return elements::mayRepeatIn(tree[node].element, tree[parent].element);
}

bool isMisplaced(const Tree& tree, NodeID node) {
    const elements::Element element = tree[node].element;
    const NodeID parent = tree[node].parent;
    if (parent == Tree::kDocument) return !elements::parentsOf(element).empty();
    return !elements::mayStandIn(element, tree[parent].element);
}

std::vector<Fault> faultsOf(const Tree& tree) {
    std::vector<Fault> faults;
    Firsts firsts;
    for (NodeID parent = 0; parent < tree.size(); ++parent)
        for (NodeID node = tree[parent].first; node != kNoNode; node = tree[node].next) {
            const Node& it = tree[node];
            if (it.element == elements::kUnknown) {
                if (isElementInCapitals(tree.name(node)))
                    faults.push_back({FaultKind::smallLetters, node, kNoNode});
                continue;
            }
            const NodeID first = firsts.firstOf(tree, node);
            if (isMisplaced(tree, node))
                faults.push_back({FaultKind::misplaced, node, kNoNode});
            else if (it.isLeaf && elements::isAggregate(it.element))
                faults.push_back({FaultKind::hasText, node, kNoNode});
            else if (first != node && !mayRepeat(tree, node))
                faults.push_back(
                    {isInMessageSet(tree, node) ? FaultKind::further : FaultKind::repeated, node, first});
        }
    return faults;
}

std::string reasonOf(const Tree& tree, const Fault& fault) {
    const std::string tag = openTag(tree.name(fault.node));
    const auto place = [&] { return placeOf(tree, tree[fault.node].parent); };
    switch (fault.kind) {
        case FaultKind::misplaced:
            return tag + " is not allowed " + place();
        case FaultKind::repeated:
        case FaultKind::further:
            return "a second " + tag + " is not allowed " + place();
        case FaultKind::hasText:
            return tag + " has text, which only a leaf may have";
        case FaultKind::smallLetters:
            break;
    }
    return tag + " must be in capitals";
}

Loss lossOf(const Tree& tree) {
    Loss loss;
    std::vector<bool> isLost(tree.size(), false);
    for (const Fault& fault : faultsOf(tree)) {
        ++loss.faults;
        if (fault.kind == FaultKind::further) continue;  // both are read
        isLost[fault.node] = true;
        // Of two elements where one may be, readers may take neither.
        if (fault.first != kNoNode) isLost[fault.first] = true;
    }
    for (NodeID node = 1; node < tree.size(); ++node) {  // a node comes after its parent
        isLost[node] = isLost[node] || isLost[tree[node].parent];
        if (isLost[node] && tree[node].isLeaf) ++loss.leaves;
    }
    return loss;
}

}  // namespace brackwell::repair
