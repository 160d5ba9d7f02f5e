// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "reading/document.h"

namespace brackwell::reading {

/// A value of a parse tree as the library's own readers see it: it does not share ownership, so it
/// costs nothing and must not outlive the value that it came from.
struct NodeRef {
    const std::shared_ptr<const Document>* owner = nullptr;  ///< null: nothing
    std::uint32_t index = 0;
    bool single = false;  ///< one element of a repeated name, not all of them

    static NodeRef of(const ParseDictionary& dictionary) noexcept {
        if (!dictionary.document_) return {};
        return {&dictionary.document_, dictionary.node_, true};
    }
    static NodeRef of(const ParseValue& value) noexcept {
        if (!value.document_) return {};
        return {&value.document_, value.node_, value.single_};
    }

    /// The dictionary of all that is in a finished document.
    static ParseDictionary root(std::shared_ptr<const Document> document) noexcept {
        return ParseDictionary(std::move(document), 0);
    }

    const Document& document() const noexcept { return **owner; }
    const Node& node() const noexcept { return document().node(index); }
    explicit operator bool() const noexcept { return owner != nullptr; }
    bool isArray() const noexcept { return owner != nullptr && !single && node().next != 0; }
    bool isText() const noexcept { return owner != nullptr && !node().isAggregate() && !isArray(); }
    bool isDictionary() const noexcept { return owner != nullptr && node().isAggregate() && !isArray(); }

    NameID nameID() const noexcept { return node().name(); }
    std::string_view name() const noexcept { return document().name(node()); }
    /// Of a text.
    std::string_view text() const noexcept { return document().text(node()); }
    /// Of a dictionary.
    ParseDictionary dictionary() const { return ParseDictionary(*owner, index); }
    ParseValue value() const { return owner != nullptr ? ParseValue(*owner, index, single) : ParseValue(); }

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
        at_ = {dictionary.owner, dictionary.index + 1, false};
        end_ = dictionary.node().begin;
        skipRepeated();
    }
    Children begin() const noexcept { return *this; }
    std::nullptr_t end() const noexcept { return nullptr; }
    const NodeRef& operator*() const noexcept { return at_; }
    bool operator==(std::nullptr_t) const noexcept { return at_.index == end_; }
    Children& operator++() noexcept {
        at_.index = at_.document().behind(at_.index);
        skipRepeated();
        return *this;
    }

private:
    void skipRepeated() noexcept {
        while (at_.index != end_ && at_.node().isRepeated()) at_.index = at_.document().behind(at_.index);
    }
    NodeRef at_;
    std::uint32_t end_ = 0;
};

/// Walks the elements of an array.
class NodeRef::Elements {
public:
    explicit Elements(const NodeRef& value) noexcept : at_(value) {
        single_ = value.single;
        at_.single = true;
    }
    Elements begin() const noexcept { return *this; }
    std::nullptr_t end() const noexcept { return nullptr; }
    const NodeRef& operator*() const noexcept { return at_; }
    bool operator==(std::nullptr_t) const noexcept { return at_.owner == nullptr; }
    Elements& operator++() noexcept {
        at_.index = at_.node().next;
        if (single_ || at_.index == 0) at_.owner = nullptr;
        return *this;
    }

private:
    NodeRef at_;
    bool single_ = false;
};

inline NodeRef::Children NodeRef::children() const noexcept { return Children(*this); }

inline NodeRef::Elements NodeRef::elements() const noexcept { return Elements(*this); }

inline NodeRef NodeRef::operator[](NameID name) const noexcept {
    for (const NodeRef& child : children())
        if (child.nameID() == name) return child;
    return {};
}

}  // namespace brackwell::reading
