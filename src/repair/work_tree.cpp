// SPDX-License-Identifier: Apache-2.0
#include "repair/work_tree.h"

namespace brackwell::repair {

NodeID WorkTree::childAround(NodeID node, NodeID parent) const noexcept {
    while (tree()[node].parent != parent) node = tree()[node].parent;
    return node;
}

void WorkTree::detach(NodeID node) {
    forget(node);
    result_.tree.detach(node);
    result_.isChanged = true;
}

void WorkTree::insert(NodeID node, NodeID parent, NodeID after) {
    firsts_.learn(tree(), parent);
    result_.tree.insert(node, parent, after);
    note(node);
}

NodeID WorkTree::make(elements::Element element, RepairKind kind, std::string reason) {
    const NodeID node = result_.tree.make(element);
    explain(node, kind, std::move(reason));
    result_.isChanged = true;
    return node;
}

void WorkTree::rename(NodeID node, elements::Element element, std::string reason) {
    Node& it = result_.tree[node];
    forget(node);
    explain(node, RepairKind::wrongName, std::move(reason));
    mark(node).isRenamed = true;
    it.element = element;
    note(node);
    result_.isChanged = true;
}

void WorkTree::swapCloseTags(NodeID a, NodeID b) noexcept {
    std::swap(result_.tree[a].close, result_.tree[b].close);
}

Mark& WorkTree::mark(NodeID node) { return result_.marks.of(node); }

void WorkTree::explain(NodeID node, RepairKind kind, std::string reason) {
    Mark& it = mark(node);
    it.kind = kind;
    it.reason = std::move(reason);
}

}  // namespace brackwell::repair
