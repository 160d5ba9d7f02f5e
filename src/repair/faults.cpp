// SPDX-License-Identifier: Apache-2.0
#include "repair/faults.h"

#include <algorithm>

#include "platform/ascii_case.h"
#include "repair/edit.h"
#include "repair/markup.h"

namespace brackwell::repair {
namespace {

bool isKnownInCapitals(std::string_view name) {
    if (!hasSmallLetter(name)) return false;
    std::string capitals(name);
    std::ranges::transform(capitals, capitals.begin(), capitalLetter);
    return elements::findElement(capitals) != elements::kUnknown;
}

std::string placeOf(const Tree& tree, NodeID parent) {
    return parent == Tree::kDocument ? "outside of <OFX>" : "in " + openTag(tree[parent].name);
}

/// Says which node of an element came by first in a parent, while the children of one are gone through.
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

}  // namespace

bool mayRepeat(const Tree& tree, NodeID node) {
    const NodeID parent = tree[node].parent;
    if (parent == Tree::kDocument) return tree[node].element != elements::kRoot;
    if (tree[tree[parent].parent].element == elements::kRoot) return true;
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
    const auto add = [&](NodeID node, NodeID first, std::string reason) {
        faults.push_back({node, first, std::move(reason)});
    };
    for (NodeID parent = 0; parent < tree.size(); ++parent)
        for (NodeID node = tree[parent].first; node != kNoNode; node = tree[node].next) {
            const Node& it = tree[node];
            if (isMisplaced(tree, node)) {
                add(node, kNoNode, openTag(it.name) + " cannot stand " + placeOf(tree, parent));
            } else if (it.element == elements::kUnknown) {
                if (isKnownInCapitals(it.name))
                    add(node, kNoNode, openTag(it.name) + " counts in capitals only");
            } else if (!it.isLeaf && !mayRepeat(tree, node)) {
                const NodeID first = firsts.firstOf(tree, node);
                if (first != node)
                    add(node, first,
                        "a second " + openTag(it.name) + " cannot stand " + placeOf(tree, parent));
            }
        }
    return faults;
}

Loss lossOf(const Tree& tree) {
    const std::vector<Fault> faults = faultsOf(tree);
    std::vector<bool> isLost(tree.size(), false);
    for (const Fault& fault : faults) {
        isLost[fault.node] = true;
        if (fault.first != kNoNode) isLost[fault.first] = true;
    }
    Loss loss{0, faults.size()};
    for (NodeID node = 1; node < tree.size(); ++node) {  // a node comes after its parent
        isLost[node] = isLost[node] || isLost[tree[node].parent];
        if (isLost[node] && tree[node].isLeaf) ++loss.leaves;
    }
    return loss;
}

}  // namespace brackwell::repair
