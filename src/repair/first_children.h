// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "repair/tree.h"

namespace brackwell::repair {

/// The first child of each kind that a node has.
class FirstChildren {
public:
    NodeID find(NodeID parent, elements::Element element) const {
        const auto found = nodes_.find(key(parent, element));
        return found == nodes_.end() ? kNoNode : found->second;
    }
    bool add(NodeID parent, elements::Element element, NodeID node) {
        return nodes_.try_emplace(key(parent, element), node).second;
    }
    void remove(NodeID parent, elements::Element element, NodeID node) {
        const auto found = nodes_.find(key(parent, element));
        if (found != nodes_.end() && found->second == node) nodes_.erase(found);
    }

private:
    struct Hash {
        std::size_t operator()(std::uint64_t key) const noexcept {
            key = (key ^ key >> 31) * 0x9E3779B97F4A7C15U;
            return key ^ key >> 29;
        }
    };
    static std::uint64_t key(NodeID parent, elements::Element element) noexcept {
        return std::uint64_t{parent} << 16 | element;
    }
    std::unordered_map<std::uint64_t, NodeID, Hash> nodes_;
};

}  // namespace brackwell::repair
