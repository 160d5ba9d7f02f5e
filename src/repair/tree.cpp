// SPDX-License-Identifier: Apache-2.0
#include "repair/tree.h"

#include <brackwell/platform.h>

#include <algorithm>

#include "parser/closing.h"

namespace brackwell::repair {
namespace {

using reading::closes;

/// Reads a text as the body parser does, whose tree does not have the places of all tags.
class TreeReader {
public:
    TreeReader(Tree& tree, std::string_view text) : tree_(tree), text_(text) {}

    void read(std::size_t from) {
        std::size_t open = findOrEnd('<', from);
        while (open + 1 < text_.size()) {
            const std::size_t close = findOrEnd('>', open + 1);
            const std::size_t end = std::min(close + 1, text_.size());
            const Stretch place{static_cast<std::uint32_t>(open), static_cast<std::uint32_t>(end)};
            if (!readTag(trimWhiteSpace(text_.substr(open + 1, close - open - 1)), place)) return;
            if (close == text_.size()) return;
            open = readText(end < text_.size() ? end : close, place);
        }
    }

private:
    std::size_t findOrEnd(char wanted, std::size_t from) const noexcept {
        return std::min(text_.find(wanted, from), text_.size());
    }

    /// False for a close tag that the parser refuses.
    bool readTag(std::string_view name, Stretch place) {
        if (name.empty()) return true;
        if (name.front() != '/') {
            pending_ = name;
            leaf_ = kNoNode;
            return true;
        }
        name.remove_prefix(1);
        if (innermost_ != Tree::kDocument && closes(name, tree_.name(innermost_))) {
            tree_[innermost_].close = place;
            innermost_ = tree_[innermost_].parent;
        } else if (!closes(name, pending_)) {  // "</>" closes nothing where nothing is pending
            return false;
        } else if (leaf_ != kNoNode) {
            tree_[leaf_].open.end = place.end;
        }
        pending_ = {};
        leaf_ = kNoNode;
        return true;
    }

    /// Reads the text after a tag, which says what the pending element is; returns where it ends.
    std::size_t readText(std::size_t begin, Stretch tag) {
        const std::size_t end = findOrEnd('<', begin);
        if (pending_.empty()) return end;
        const std::string_view text = trimWhiteSpace(text_.substr(begin, end - begin));
        const NodeID node = tree_.make(pending_);
        tree_[node].open = tag;
        tree_.append(node, innermost_);
        if (text.empty()) {
            innermost_ = node;
        } else {
            tree_[node].isLeaf = true;
            tree_[node].open.end = static_cast<std::uint32_t>(text.data() + text.size() - text_.data());
            leaf_ = node;
        }
        return end;
    }

    Tree& tree_;
    std::string_view text_;
    std::string_view pending_;
    NodeID leaf_ = kNoNode;  ///< the pending element, once it has been read
    NodeID innermost_ = Tree::kDocument;
};

/// No fewer than there are.
std::size_t openTagsIn(std::string_view text) noexcept {
    std::size_t count = 0;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1))
        count += !text.substr(at + 1).starts_with('/');
    return count;
}

}  // namespace

Tree::Tree(std::string_view text, std::size_t bodyIndex) : text_(text) {
    // At least half of an array that grows is there twice. Documents that hardly have anything between their
    // tags do not say beforehand how many there will be.
    constexpr std::size_t usualDistance = 8;
    nodes_.reserve(std::min(openTagsIn(text), text.size() / usualDistance) + 1);
    nodes_.emplace_back();
    TreeReader(*this, text).read(bodyIndex);
}

NodeID Tree::make(std::string_view name) {
    const NodeID node = make(elements::findElement(name));
    if (nodes_[node].element == elements::kUnknown) nodes_[node].unknownName = names_.number(name);
    return node;
}

NodeID Tree::make(elements::Element element) {
    nodes_.emplace_back();
    nodes_.back().element = element;
    return size() - 1;
}

void Tree::detach(NodeID node) noexcept {
    Node& it = nodes_[node];
    Node& parent = nodes_[it.parent];
    (it.previous == kNoNode ? parent.first : nodes_[it.previous].next) = it.next;
    (it.next == kNoNode ? parent.last : nodes_[it.next].previous) = it.previous;
    it.parent = it.next = it.previous = kNoNode;
}

void Tree::insert(NodeID node, NodeID parent, NodeID after) noexcept {
    Node& it = nodes_[node];
    Node& owner = nodes_[parent];
    it.parent = parent;
    it.previous = after;
    it.next = after == kNoNode ? owner.first : nodes_[after].next;
    (it.previous == kNoNode ? owner.first : nodes_[it.previous].next) = node;
    (it.next == kNoNode ? owner.last : nodes_[it.next].previous) = node;
}

NodeID Tree::following(NodeID node) const noexcept {
    if (nodes_[node].first != kNoNode) return nodes_[node].first;
    while (node != kNoNode && nodes_[node].next == kNoNode) node = nodes_[node].parent;
    return node == kNoNode ? kNoNode : nodes_[node].next;
}

}  // namespace brackwell::repair
