// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>

#include "tree/node_ref.h"

namespace brackwell {

using reading::NodeRef;

namespace {

/// A value made in code is in a dictionary of its own, under the empty name: every value refers to a tree.
ParseValue onlyEntry(ParseDictionaryBuilder&& builder) { return builder.finish()[""]; }

template <class Elements>
ParseValue makeArray(const Elements& elements) {
    ParseDictionaryBuilder builder;
    for (const ParseValue& element : elements) builder.value("", element);
    return onlyEntry(std::move(builder));
}

}  // namespace

ParseValue::ParseValue(std::string_view text) {
    ParseDictionaryBuilder builder;
    builder.leaf("", text);
    *this = onlyEntry(std::move(builder));
}

ParseValue::ParseValue(const ParseDictionary& dictionary) {
    if (dictionary.document_) {
        document_ = dictionary.document_;
        node_ = dictionary.node_;
        single_ = true;
        return;
    }
    ParseDictionaryBuilder builder;
    builder.open("");
    *this = onlyEntry(std::move(builder));
}

ParseValue ParseValue::array(std::initializer_list<ParseValue> elements) { return makeArray(elements); }
ParseValue ParseValue::array(const std::vector<ParseValue>& elements) { return makeArray(elements); }

ParseValue::Kind ParseValue::kind() const noexcept {
    const NodeRef ref = NodeRef::of(*this);
    if (!ref) return Kind::nothing;
    if (ref.isArray()) return Kind::array;
    return ref.isDictionary() ? Kind::dictionary : Kind::text;
}

OptionalText ParseValue::text() const noexcept {
    const NodeRef ref = NodeRef::of(*this);
    if (!ref.isText()) return std::nullopt;
    return ref.text();
}

std::optional<ParseDictionary> ParseValue::dictionary() const {
    const NodeRef ref = NodeRef::of(*this);
    if (!ref.isDictionary()) return std::nullopt;
    return ref.dictionary();
}

std::vector<ParseValue> ParseValue::elements() const {
    std::vector<ParseValue> found;
    const NodeRef ref = NodeRef::of(*this);
    if (ref.isArray())
        for (const NodeRef& element : ref.elements()) found.push_back(element.value());
    return found;
}

ParseValue ParseValue::operator[](std::string_view name) const {
    const std::optional<ParseDictionary> found = dictionary();
    return found ? (*found)[name] : ParseValue();
}

}  // namespace brackwell
