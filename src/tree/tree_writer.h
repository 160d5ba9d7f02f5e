// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tree/document.h"

namespace brackwell::reading {

/// Writes the nodes of a tree in document order and chains those of one name in one aggregate as it
/// goes, without ever searching an aggregate: for every name it remembers where it stood last. An
/// aggregate inside another may overwrite that; what it overwrote is put back when it is closed.
class TreeWriter {
public:
    /// Begins the root. What is expected is a guess.
    explicit TreeWriter(Document& document, std::size_t expectedNodes = 16, std::size_t expectedOwnText = 0);

    NameTable& names() noexcept { return document_.names_; }
    const NameTable& names() const noexcept { return document_.names_; }
    Leftovers& leftovers() noexcept { return document_.leftovers_; }

    /// Adds a leaf whose text is a slice of the document's body; returns its node.
    std::uint32_t leaf(NameID name, std::string_view slice) {
        return add(name, static_cast<std::uint32_t>(slice.data() - document_.body_.data()),
                   static_cast<std::uint32_t>(slice.size()));
    }
    /// Adds a leaf with a text of its own of at most `size` bytes, which the caller writes to the
    /// returned place; setOwnTextSize then tells how many they are.
    char* ownLeaf(NameID name, std::size_t size);
    void setOwnTextSize(std::size_t size) noexcept;
    /// Adds a leaf with a copy of a text, or gives that text to the leaf of this name that was added before
    /// in the same aggregate.
    void setLeaf(NameID name, std::string_view text);
    /// Changes the text of a leaf that was added as a slice.
    void setSliceSize(std::uint32_t leaf, std::size_t size) noexcept {
        document_.nodes_[leaf].size = static_cast<std::uint32_t>(size);
    }

    class LeafRun;

    /// Opens an aggregate, whose name begins here in the body.
    void open(NameID name, std::uint32_t nameBegin = 0) {
        innermost_ = add(name | Node::kAggregate, 0, 0, nameBegin);
        open_.push({innermost_, overwritten_.size()});
    }
    /// Closes the innermost open aggregate; there must be one.
    void close() noexcept;
    bool hasOpen() const noexcept { return open_.size() > 1; }
    NameID innermostName() const noexcept { return document_.nodes_[innermost_].name(); }
    /// Where the name of the innermost open aggregate begins; there must be one.
    std::uint32_t innermostNameBegin() const noexcept { return document_.nodes_[innermost_].next; }
    /// Closes all that is open, the root included.
    void finish() noexcept;

private:
    /// Where a name stood last: in which aggregate, as which node; node 0, the root, is nowhere.
    struct Place {
        std::uint32_t aggregate;
        std::uint32_t node;
    };
    struct Open {
        std::uint32_t node;
        std::uint32_t overwritten;  ///< how many places had been overwritten when it was opened
    };
    struct Overwritten {
        NameID name;
        Place place;
    };

    /// As long as an aggregate is open, no other of its name follows it, so `next` may be anything else.
    std::uint32_t add(NameID nameAndKind, std::uint32_t begin, std::uint32_t size, std::uint32_t next = 0) {
        const NameID name = nameAndKind & ~Node::kAggregate;
        const std::uint32_t node = document_.nodes_.size();
        const std::uint32_t aggregate = innermost_;
        Node& added = *document_.nodes_.append(1);
        added.nameAndKind = nameAndKind;  // field by field: a copy of all would wait for its parts
        added.begin = begin;
        added.size = size;
        added.next = next;
        Place& place = placeOf(name);
        if (place.aggregate == aggregate && place.node != 0) {
            added.nameAndKind |= Node::kRepeated;
            document_.nodes_[place.node].next = node;
        } else {
            ++document_.nodes_[aggregate].size;
            if (place.node != 0 && isOpen(place.aggregate)) overwritten_.push({name, place});
        }
        place.aggregate = aggregate;
        place.node = node;
        return node;
    }
    char* appendOwnText(std::size_t size);
    Place& placeOf(NameID name) {
        // cppcheck-suppress returnTempReference ; both are members
        return name < kKnownElementCount ? places_[name] : placeOfUnknown(name - kKnownElementCount);
    }
    Place& placeOfUnknown(std::uint32_t number);
    /// A place is a node and an aggregate; an aggregate is open as long as it has no end.
    bool isOpen(std::uint32_t aggregate) const noexcept { return document_.nodes_[aggregate].begin == 0; }

    Document& document_;
    std::uint32_t innermost_ = 0;  ///< the innermost open aggregate
    PodVector<Open> open_;
    std::array<Place, kKnownElementCount> places_{};  ///< by name
    PodVector<Place> placesOfUnknown_;
    PodVector<Overwritten> overwritten_;
};

/// Adds leaves of known names, slices of the body, to the innermost aggregate, as `leaf` would one by one.
/// What that changes for each of them stays in registers until the end; before then, nothing else may be
/// written.
class TreeWriter::LeafRun {
public:
    explicit LeafRun(TreeWriter& writer) noexcept : writer_(writer) { begin(); }
    LeafRun(const LeafRun&) = delete;
    LeafRun& operator=(const LeafRun&) = delete;
    ~LeafRun() { end(); }

    /// Goes on after something else was written.
    void begin() noexcept {
        PodVector<Node>& nodes = writer_.document_.nodes_;
        next_ = nodes.data() + nodes.size();
        end_ = nodes.data() + nodes.capacity();
    }
    void end() noexcept {
        PodVector<Node>& nodes = writer_.document_.nodes_;
        const auto size = static_cast<std::uint32_t>(next_ - nodes.data());
        nodes[writer_.innermost_].size += size - nodes.size() - repeated_;
        nodes.setSize(size);
        repeated_ = 0;
    }

    void add(NameID name, std::string_view slice) {
        if (next_ == end_) makeRoom();
        Node* const nodes = writer_.document_.nodes_.data();
        const std::uint32_t aggregate = writer_.innermost_;
        const auto node = static_cast<std::uint32_t>(next_ - nodes);
        Node& added = *next_++;
        added.nameAndKind = name;
        added.begin = static_cast<std::uint32_t>(slice.data() - writer_.document_.body_.data());
        added.size = static_cast<std::uint32_t>(slice.size());
        added.next = 0;
        Place& place = writer_.places_[name];
        const Place before = place;
        place.aggregate = aggregate;
        place.node = node;
        if (before.aggregate == aggregate && before.node != 0) {
            added.nameAndKind = name | Node::kRepeated;
            nodes[before.node].next = node;
            ++repeated_;
        } else if (before.node != 0 && nodes[before.aggregate].begin == 0) {
            writer_.overwritten_.push({name, before});
        }
    }

    /// Of the leaf that was added last.
    NameID lastName() const noexcept { return next_[-1].name(); }

private:
    void makeRoom() {
        end();
        writer_.document_.nodes_.reserve(writer_.document_.nodes_.size());
        begin();
    }

    TreeWriter& writer_;
    Node* next_;
    Node* end_;
    std::uint32_t repeated_ = 0;  ///< leaves that bring the aggregate no further name
};

}  // namespace brackwell::reading
