// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "repair/markup.h"

namespace brackwell::repair {

/// The children of an open aggregate that have come by, as bits by their place in its row.
class ChildSet {
public:
    bool has(const elements::Child& child, elements::Element parent) const noexcept {
        return (words_[index(child, parent) / 64] & bit(child, parent)) != 0;
    }
    void add(const elements::Child& child, elements::Element parent) noexcept {
        words_[index(child, parent) / 64] |= bit(child, parent);
    }
    void remove(const elements::Child& child, elements::Element parent) noexcept {
        words_[index(child, parent) / 64] &= ~bit(child, parent);
    }

private:
    static std::size_t index(const elements::Child& child, elements::Element parent) noexcept {
        return static_cast<std::size_t>(&child - elements::childrenOf(parent).data()) % 128;
    }
    static std::uint64_t bit(const elements::Child& child, elements::Element parent) noexcept {
        return std::uint64_t{1} << index(child, parent) % 64;
    }
    std::array<std::uint64_t, 2> words_{};
};

/// The aggregates that are open while the tags of a body are gone through, with the elements that each has so
/// far. The first one stands for the document, in which all others are; it has the depth 0.
class OpenAggregates {
public:
    struct Frame {
        std::uint32_t tag;  ///< its number; that of the document means nothing
        reading::NameID name;
        std::uint32_t outer;  ///< depth of the next one of the same name; 0: none
        elements::Element element;
        std::size_t firstChild;  ///< the number of its first element
        std::size_t settled;     ///< the elements before this one have no open tag to get
        bool isDocument;
        ChildSet seen;

        /// True when an element has a place in it that is not taken.
        bool hasRoomFor(elements::Element child) const noexcept;
        /// True when an element may stand in it; anything may in one that nobody knows.
        bool mayHold(elements::Element child) const noexcept;
    };
    /// An element of an open aggregate.
    struct Child {
        elements::Element element;
        std::size_t begin;
        std::uint32_t tag;  ///< its number
    };

    /// For tags whose names have numbers below this one.
    explicit OpenAggregates(std::size_t names);

    std::uint32_t depth() const noexcept { return static_cast<std::uint32_t>(frames_.size() - 1); }
    /// The depth of the innermost one of a name; 0: none is open.
    std::uint32_t depthOf(reading::NameID name) const noexcept { return depths_[name]; }
    const Frame& operator[](std::uint32_t depth) const noexcept { return frames_[depth]; }
    const Frame& innermost() const noexcept { return frames_.back(); }

    void push(std::uint32_t number, const Tag& tag);
    void pop() noexcept;

    /// Notes an element of the innermost one.
    void add(const Tag& tag, std::uint32_t number);
    void dropLastChild() noexcept;
    /// By number, which counts the elements of those further out, too.
    const Child& child(std::size_t number) const noexcept { return children_[number]; }
    Child& lastChild() noexcept { return children_.back(); }

    /// The number of the first one of the last elements that may all stand in an aggregate.
    std::size_t beginOfContent(elements::Element aggregate) const noexcept;
    /// True when an element from this one on cannot stand in the innermost aggregate.
    bool holdsLost(std::size_t begin) const noexcept;
    /// No element up to here gets an open tag any more.
    void settle() noexcept { frames_.back().settled = children_.size(); }
    /// Makes one element of those from this one on.
    void closeOver(std::size_t begin, elements::Element aggregate);

private:
    std::vector<std::uint32_t> depths_;  ///< by name
    std::vector<Frame> frames_;
    std::vector<Child> children_;  ///< of all of them, those of an inner one after those before it
};

}  // namespace brackwell::repair
