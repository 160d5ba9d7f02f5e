// SPDX-License-Identifier: Apache-2.0
#include "tree/tree_writer.h"

#include <cstring>
#include <new>

#include "system/exhausted_memory.h"

namespace brackwell::reading {

TreeWriter::TreeWriter(Document& document, std::size_t expectedNodes, std::size_t expectedOwnText)
    : document_(document) {
    document_.nodes_.reserve(expectedNodes);
    document_.nodes_.push({Node::kAggregate, 0, 0, 0});
    if (expectedOwnText != 0) document_.ownText_.reserve(expectedOwnText);
    open_.push({0, 0});
}

char* TreeWriter::ownLeaf(NameID name, std::size_t size) {
    char* text = appendOwnText(size);
    add(name, (document_.ownText_.size() - static_cast<std::uint32_t>(size)) | Node::kOwnText,
        static_cast<std::uint32_t>(size));
    return text;
}

void TreeWriter::setLeaf(NameID name, std::string_view text) {
    const Place place = placeOf(name);
    if (place.aggregate == innermost_ &&
        place.node != 0) {  // the name is there already: the later text counts
        const std::uint32_t begin = document_.ownText_.size();
        text.copy(appendOwnText(text.size()), text.size());
        Node& leaf = document_.nodes_[place.node];
        leaf.begin = begin | Node::kOwnText;
        leaf.size = static_cast<std::uint32_t>(text.size());
    } else {
        text.copy(ownLeaf(name, text.size()), text.size());
    }
}

char* TreeWriter::appendOwnText(std::size_t size) {
    PodVector<char>& own = document_.ownText_;
    if (size >= Node::kOwnText - own.size()) system::failForMemory();
    return own.append(size);
}

void TreeWriter::setOwnTextSize(std::size_t size) noexcept {
    Node& leaf = document_.nodes_.back();
    leaf.size = static_cast<std::uint32_t>(size);
    document_.ownText_.setSize((leaf.begin & ~Node::kOwnText) + leaf.size);
}

void TreeWriter::close() noexcept {
    const Open closed = open_.back();
    Node& node = document_.nodes_[closed.node];
    node.begin = document_.nodes_.size();
    node.next = 0;
    // Restores the places of names that occur in this aggregate and in those around it.
    while (overwritten_.size() > closed.overwritten) {
        placeOf(overwritten_.back().name) = overwritten_.back().place;
        overwritten_.pop();
    }
    open_.pop();
    innermost_ = open_.empty() ? 0 : open_.back().node;
}

void TreeWriter::finish() noexcept {
    while (!open_.empty()) close();
    // In a large document nobody has touched that room; of many small ones it would be half of all.
    document_.nodes_.giveBackRoom();
}

TreeWriter::Place& TreeWriter::placeOfUnknown(std::uint32_t number) {
    // Unknown names turn up while the tree is written; this makes room for all that the document has so far.
    if (number >= placesOfUnknown_.size()) {
        const std::uint32_t more = document_.names_.end() - kKnownElementCount - placesOfUnknown_.size();
        std::memset(static_cast<void*>(placesOfUnknown_.append(more)), 0, more * sizeof(Place));
    }
    return placesOfUnknown_[number];
}

}  // namespace brackwell::reading
