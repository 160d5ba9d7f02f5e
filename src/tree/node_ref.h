// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "tree/document.h"

namespace brackwell::reading {

/// A value of a parse tree as the library's own readers see it: it does not share ownership, so it
/// costs nothing and must not outlive the value that it came from.
struct NodeRef {
    const std::shared_ptr<const Document>* owner = nullptr;  ///< null: nothing
    const Node* at = nullptr;
    bool single = false;  ///< one element of a repeated name, not all of them

    static NodeRef of(const ParseDictionary& dictionary) noexcept {
        if (!dictionary.document_) return {};
        return {&dictionary.document_, &dictionary.document_->node(dictionary.node_), true};
    }
    static NodeRef of(const ParseValue& value) noexcept {
        if (!value.document_) return {};
        return {&value.document_, &value.document_->node(value.node_), value.single_};
    }

    /// The dictionary of all that is in a finished document.
    static ParseDictionary root(std::shared_ptr<const Document> document) noexcept {
        return ParseDictionary(std::move(document), 0);
    }

    const Document& document() const noexcept { return **owner; }
    const Node& node() const noexcept { return *at; }
    std::uint32_t index() const noexcept { return document().index(*at); }
    explicit operator bool() const noexcept { return owner != nullptr; }
    bool isArray() const noexcept { return owner != nullptr && !single && node().next != 0; }
    bool isText() const noexcept { return owner != nullptr && !node().isAggregate() && !isArray(); }
    bool isDictionary() const noexcept { return owner != nullptr && node().isAggregate() && !isArray(); }

    NameID nameID() const noexcept { return node().name(); }
    std::string_view name() const noexcept { return document().name(node()); }
    /// Of a text.
    std::string_view text() const noexcept { return document().text(node()); }
    /// Of a dictionary.
    ParseDictionary dictionary() const { return ParseDictionary(*owner, index()); }
    ParseValue value() const { return owner != nullptr ? ParseValue(*owner, index(), single) : ParseValue(); }

    class Children;
    /// Of a dictionary, or of nothing, which has none.
    Children children() const noexcept;

    class Elements;
    /// Of an array; any other value is walked as its only element, nothing as none.
    Elements elements() const noexcept;

    /// The entry of a dictionary with a known name; nothing when there is none.
    NodeRef operator[](NameID name) const noexcept;
};

/// Walks the entries of a dictionary, each name once.
class NodeRef::Children {
public:
    explicit Children(const NodeRef& dictionary) noexcept {
        if (!dictionary) return;
        at_ = {dictionary.owner, dictionary.at + 1, false};
        end_ = dictionary.document().endOf(dictionary.at);
    }
    Children begin() const noexcept { return *this; }
    std::nullptr_t end() const noexcept { return nullptr; }
    const NodeRef& operator*() const noexcept { return at_; }
    bool operator==(std::nullptr_t) const noexcept { return at_.at == end_; }
    Children& operator++() noexcept {
        // The first child of a node is never a repeated one.
        do at_.at = at_.document().endOf(at_.at);
        while (at_.at != end_ && at_.at->isRepeated());
        return *this;
    }

private:
    NodeRef at_;
    const Node* end_ = nullptr;
};

/// Walks the elements of an array.
class NodeRef::Elements {
public:
    explicit Elements(const NodeRef& value) noexcept : at_(value), single_(value.single) {
        at_.single = true;
    }
    Elements begin() const noexcept { return *this; }
    std::nullptr_t end() const noexcept { return nullptr; }
    const NodeRef& operator*() const noexcept { return at_; }
    bool operator==(std::nullptr_t) const noexcept { return at_.owner == nullptr; }
    Elements& operator++() noexcept {
        const std::uint32_t next = at_.node().next;
        if (single_ || next == 0)
            at_.owner = nullptr;
        else
            at_.at = &at_.document().node(next);
        return *this;
    }

private:
    NodeRef at_;
    bool single_;
};

inline NodeRef::Children NodeRef::children() const noexcept { return Children(*this); }

inline NodeRef::Elements NodeRef::elements() const noexcept { return Elements(*this); }

inline NodeRef NodeRef::operator[](NameID name) const noexcept {
    for (const NodeRef& child : children())
        if (child.nameID() == name) return child;
    return {};
}

}  // namespace brackwell::reading
