// SPDX-License-Identifier: Apache-2.0
#include <brackwell/internal/text_fields.h>
#include <brackwell/reading.h>

#include <initializer_list>

#include "tree/node_ref.h"

namespace brackwell {

using reading::NodeRef;

ParseDictionary::ParseDictionary(std::initializer_list<Entry> entries) {
    ParseDictionaryBuilder builder;
    for (const auto& [name, value] : entries) builder.value(name, value);
    *this = builder.finish();
}

std::size_t ParseDictionary::size() const noexcept { return document_ ? document_->node(node_).size : 0; }

ParseValue ParseDictionary::operator[](std::string_view name) const noexcept {
    for (const NodeRef& child : NodeRef::of(*this).children())
        if (child.name() == name) return child.value();
    return {};
}

ParseDictionary::Iterator ParseDictionary::begin() const noexcept {
    // The first child of a node is never a repeated one.
    return document_ ? Iterator(document_, node_ + 1, document_->node(node_).begin) : Iterator();
}

ParseDictionary::Iterator ParseDictionary::end() const noexcept {
    if (!document_) return {};
    const std::uint32_t after = document_->node(node_).begin;
    return Iterator(nullptr, after, after);
}

ParseDictionary::Entry ParseDictionary::Iterator::operator*() const {
    return {document_->name(document_->node(node_)), ParseValue(document_, node_, false)};
}

ParseDictionary::Iterator& ParseDictionary::Iterator::operator++() noexcept {
    node_ = document_->endOf(node_);
    // The value of the first element of a name has the repeated ones, too.
    while (node_ != end_ && document_->node(node_).isRepeated()) node_ = document_->endOf(node_);
    return *this;
}

ParseDictionary::Iterator ParseDictionary::Iterator::operator++(int) noexcept {
    Iterator before = *this;
    ++*this;
    return before;
}

ParseDictionary::DocumentOrder ParseDictionary::inDocumentOrder() const noexcept {
    return {document_, node_};
}

ParseDictionary::DocumentOrder::Iterator ParseDictionary::DocumentOrder::begin() const noexcept {
    return document_ ? Iterator(document_, node_ + 1) : Iterator();
}

ParseDictionary::DocumentOrder::Iterator ParseDictionary::DocumentOrder::end() const noexcept {
    return document_ ? Iterator(nullptr, document_->endOf(node_)) : Iterator();
}

ParseDictionary::Entry ParseDictionary::DocumentOrder::Iterator::operator*() const {
    return {document_->name(document_->node(node_)), ParseValue(document_, node_, true)};
}

ParseDictionary::DocumentOrder::Iterator& ParseDictionary::DocumentOrder::Iterator::operator++() noexcept {
    node_ = document_->endOf(node_);
    return *this;
}

ParseDictionary::DocumentOrder::Iterator ParseDictionary::DocumentOrder::Iterator::operator++(int) noexcept {
    Iterator before = *this;
    ++*this;
    return before;
}

std::string_view internal::leafText(const reading::Document& document, std::uint32_t node) noexcept {
    return document.text(document.node(node));
}

}  // namespace brackwell
