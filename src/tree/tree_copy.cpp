// SPDX-License-Identifier: Apache-2.0
#include "tree/tree_copy.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "tree/node_ref.h"
#include "tree/tree_writer.h"

namespace brackwell::reading {
namespace {

/// Nodes of a document, from one to before another.
struct Nodes {
    const Document& document;
    std::uint32_t begin;
    std::uint32_t end;

    static Nodes in(const NodeRef& aggregate) noexcept {
        const Document& document = aggregate.document();
        return {document, aggregate.index() + 1, document.endOf(aggregate.index())};
    }
};

bool isSlice(const Node& node) noexcept { return !node.isAggregate() && (node.begin & Node::kOwnText) == 0; }

/// The part of the body with the texts of the nodes: a copy need not keep the whole document.
std::string_view bodyOf(const Nodes& nodes) noexcept {
    const std::string_view body = nodes.document.body();
    std::size_t begin = body.size();
    std::size_t end = 0;
    for (std::uint32_t index = nodes.begin; index != nodes.end; ++index) {
        const Node& node = nodes.document.node(index);
        if (!isSlice(node)) continue;
        begin = std::min(begin, std::size_t{node.begin});
        end = std::max(end, std::size_t{node.begin} + node.size);
    }
    return begin < end ? body.substr(begin, end - begin) : std::string_view();
}

/// Writes the nodes again, over a copy of their part of the body.
class NodeCopy {
public:
    explicit NodeCopy(const Nodes& nodes)
        : from_(nodes),
          body_(bodyOf(nodes)),
          to_(documentOver(body_)),
          writer_(*to_, nodes.end - nodes.begin + 1) {}

    std::shared_ptr<const Document> run() && {
        std::vector<std::uint32_t> ends;
        for (std::uint32_t index = from_.begin; index != from_.end; ++index) {
            for (; !ends.empty() && ends.back() == index; ends.pop_back()) writer_.close();
            const Node& node = from_.document.node(index);
            if (!node.isAggregate()) {
                leaf(node);
                continue;
            }
            writer_.open(nameOf(node));
            ends.push_back(node.begin);
        }
        writer_.finish();
        return std::move(to_);
    }

private:
    static std::shared_ptr<Document> documentOver(std::string_view body) {
        const Data copy = Data::copy(body);
        return std::make_shared<Document>(copy, copy.bytes());
    }

    NameID nameOf(const Node& node) {
        const NameID name = node.name();
        return name < kKnownElementCount ? name : writer_.names().numberOfCopy(from_.document.name(node));
    }

    void leaf(const Node& node) {
        const std::string_view text = from_.document.text(node);
        const NameID name = nameOf(node);
        if (!isSlice(node))
            text.copy(writer_.ownLeaf(name, text.size()), text.size());
        else if (text.empty())  // there may be no copied part that it lies in
            writer_.leaf(name, to_->body().substr(0, 0));
        else
            writer_.leaf(
                name, to_->body().substr(static_cast<std::size_t>(text.data() - body_.data()), text.size()));
    }

    Nodes from_;
    std::string_view body_;
    std::shared_ptr<Document> to_;
    TreeWriter writer_;
};

}  // namespace

ParseDictionary copyOf(const ParseDictionary& aggregate) {
    const NodeRef node = NodeRef::of(aggregate);
    if (!node) return {};
    return NodeRef::root(NodeCopy(Nodes::in(node)).run());
}

}  // namespace brackwell::reading
