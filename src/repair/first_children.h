// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "numbers/as_size.h"
#include "repair/tree.h"

namespace brackwell::repair {

/// The first child of each kind that a node has. Most nodes are never asked for one and never change, so the
/// children of a node are looked through when that is needed.
class FirstChildren {
public:
    NodeID find(const Tree& tree, NodeID parent, elements::Element element) {
        learn(tree, parent);
        const auto found = nodes_.find(key(parent, element));
        return found == nodes_.end() ? kNoNode : found->second;
    }
    /// To be called before the children of a node change for the first time.
    void learn(const Tree& tree, NodeID parent) {
        if (parent == kNoNode) return;
        if (known_.size() <= parent) known_.resize(tree.size());
        if (known_[parent]) return;
        known_[parent] = true;
        for (NodeID node = tree[parent].first; node != kNoNode; node = tree[node].next)
            add(parent, tree[node].element, node);
    }
    /// A child that has come to stand in a parent.
    void add(NodeID parent, elements::Element element, NodeID node) {
        if (element != elements::kUnknown) nodes_.try_emplace(key(parent, element), node);
    }
    /// A child that goes.
    void remove(NodeID parent, elements::Element element, NodeID node) {
        const auto found = nodes_.find(key(parent, element));
        if (found != nodes_.end() && found->second == node) nodes_.erase(found);
    }

private:
    struct Hash {
        std::size_t operator()(std::uint64_t key) const noexcept {
            key = (key ^ key >> 31) * 0x9E3779B97F4A7C15U;
            return asSize(key ^ key >> 29);
        }
    };
    static std::uint64_t key(NodeID parent, elements::Element element) noexcept {
        return std::uint64_t{parent} << 16 | element;
    }
    std::unordered_map<std::uint64_t, NodeID, Hash> nodes_;
    std::vector<bool> known_;  ///< the nodes whose children were looked through
};

}  // namespace brackwell::repair
