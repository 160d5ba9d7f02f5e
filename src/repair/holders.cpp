// SPDX-License-Identifier: Apache-2.0
#include "repair/holders.h"

#include <algorithm>
#include <iterator>

namespace brackwell::repair {

void Holders::addAll(const Tree& tree) {
    nodes_.resize(elements::kElementCount);
    for (NodeID node = 1; node < tree.size(); ++node)
        if (!tree[node].isLeaf && tree[node].element != elements::kUnknown && tree[node].open.isThere())
            nodes_[tree[node].element].push_back(node);
}

Holders::Holder Holders::lastBefore(const Tree& tree, elements::Element element, std::size_t offset) const {
    Holder last;
    if (element < nodes_.size()) {
        const std::vector<NodeID>& nodes = nodes_[element];
        const auto end = std::ranges::lower_bound(nodes, offset, {},
                                                  [&tree](NodeID node) { return tree[node].open.begin; });
        if (end != nodes.begin()) last = {*std::prev(end), tree[*std::prev(end)].open.begin};
    }
    const auto made = made_.lower_bound({element, offset});
    if (made != made_.begin() && std::prev(made)->first.first == element &&
        (last.node == kNoNode || std::prev(made)->first.second > last.offset))
        last = {std::prev(made)->second, std::prev(made)->first.second};
    return last;
}

}  // namespace brackwell::repair
