// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>

#include "tree/node_ref.h"
#include "tree/tree_writer.h"

namespace brackwell {

using reading::NodeRef;

struct BRACKWELL_INTERNAL ParseDictionaryBuilder::State {
    std::shared_ptr<reading::Document> document = std::make_shared<reading::Document>();
    reading::TreeWriter writer{*document};

    void leaf(std::string_view name, std::string_view text) {
        text.copy(writer.ownLeaf(writer.names().numberOfCopy(name), text.size()), text.size());
    }
    void open(std::string_view name) { writer.open(writer.names().numberOfCopy(name)); }
    void copy(std::string_view name, const NodeRef& single);
};

/// Copies an aggregate in one walk over its nodes, which are in document order. The writer chains repeated
/// names again.
void ParseDictionaryBuilder::State::copy(std::string_view name, const NodeRef& single) {
    if (!single.node().isAggregate()) return leaf(name, single.text());
    const reading::Document& from = single.document();
    std::vector<std::uint32_t> ends{from.endOf(single.index())};
    open(name);
    for (std::uint32_t index = single.index() + 1; !ends.empty();) {
        if (index == ends.back()) {
            ends.pop_back();
            writer.close();
            continue;
        }
        const reading::Node& node = from.node(index++);
        if (node.isAggregate()) {
            open(from.name(node));
            ends.push_back(node.begin);
        } else {
            leaf(from.name(node), from.text(node));
        }
    }
}

ParseDictionaryBuilder::ParseDictionaryBuilder() = default;
ParseDictionaryBuilder::ParseDictionaryBuilder(ParseDictionaryBuilder&&) noexcept = default;
ParseDictionaryBuilder& ParseDictionaryBuilder::operator=(ParseDictionaryBuilder&&) noexcept = default;
ParseDictionaryBuilder::~ParseDictionaryBuilder() = default;

/// Releases the state during a step: if memory runs out, the builder is empty rather than half a tree.
template <class Step>
void ParseDictionaryBuilder::add(Step step) {
    std::unique_ptr<State> state = state_ ? std::move(state_) : std::make_unique<State>();
    step(*state);
    state_ = std::move(state);
}

void ParseDictionaryBuilder::leaf(std::string_view name, std::string_view text) {
    add([&](State& state) { state.leaf(name, text); });
}

void ParseDictionaryBuilder::open(std::string_view name) {
    add([&](State& state) { state.open(name); });
}

void ParseDictionaryBuilder::close() {
    if (state_ && state_->writer.hasOpen()) state_->writer.close();
}

void ParseDictionaryBuilder::value(std::string_view name, const ParseValue& value) {
    if (value.isNothing()) return;
    add([&](State& state) {
        for (const NodeRef& element : NodeRef::of(value).elements()) state.copy(name, element);
    });
}

ParseDictionary ParseDictionaryBuilder::finish() {
    const std::unique_ptr<State> finished = std::move(state_);
    if (!finished) return {};
    finished->writer.finish();
    return NodeRef::root(finished->document);
}

}  // namespace brackwell
