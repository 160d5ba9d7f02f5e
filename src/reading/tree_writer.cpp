// SPDX-License-Identifier: Apache-2.0
#include "reading/tree_writer.h"

#include <cstring>

namespace brackwell::reading {

TreeWriter::TreeWriter(Document& document, std::size_t expectedNodes) : document_(document) {
    document_.nodes_.reserve(expectedNodes);
    document_.nodes_.push({Node::kAggregate, 0, 0, 0});
    open_.push({0, 0});
    makePlaces(kKnownElementCount);
}

char* TreeWriter::ownLeaf(NameID name, std::size_t size) {
    PodVector<char>& own = document_.ownText_;
    const std::size_t begin = own.size();
    if (size >= Node::kOwnText - begin) throw std::bad_alloc();
    char* text = own.append(size);
    add(name, static_cast<std::uint32_t>(begin) | Node::kOwnText, static_cast<std::uint32_t>(size));
    return text;
}

void TreeWriter::setOwnTextSize(std::size_t size) noexcept {
    Node& leaf = document_.nodes_.back();
    leaf.size = static_cast<std::uint32_t>(size);
    document_.ownText_.truncate((leaf.begin & ~Node::kOwnText) + leaf.size);
}

void TreeWriter::open(NameID name) {
    const std::uint32_t node = add(name | Node::kAggregate, 0, 0);
    open_.push({node, overwritten_.size()});
    innermost_ = node;
}

void TreeWriter::close() noexcept {
    const Open closed = open_.back();
    document_.nodes_[closed.node].begin = document_.nodes_.size();
    while (overwritten_.size() > closed.overwritten) {
        places_[overwritten_.back().name] = overwritten_.back().place;
        overwritten_.pop();
    }
    open_.pop();
    innermost_ = open_.empty() ? 0 : open_.back().node;
}

void TreeWriter::finish() noexcept {
    while (!open_.empty()) close();
}

void TreeWriter::makePlaces(NameID end) {
    const std::uint32_t more = end - places_.size();
    std::memset(static_cast<void*>(places_.append(more)), 0, more * sizeof(Place));
}

}  // namespace brackwell::reading
