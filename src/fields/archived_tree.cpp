// SPDX-License-Identifier: Apache-2.0
#include "fields/archived_tree.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tree/node_ref.h"

namespace brackwell {
namespace {

using reading::Document;
using reading::Node;
using Item = ArchiveListItem;

/// How many entries are directly in an aggregate, repeated ones included.
std::size_t countEntries(const Document& document, std::uint32_t aggregate) noexcept {
    std::size_t count = 0;
    const std::uint32_t end = document.node(aggregate).begin;
    for (std::uint32_t node = aggregate + 1; node != end; node = document.endOf(node)) ++count;
    return count;
}

}  // namespace

void encodeTree(KeyedArchiver& coder, std::string_view key, const ParseDictionary& tree) {
    // Names and values in turn, in one flat list: neither direction recurses, however deep the tree is.
    std::vector<Item> items;
    if (const reading::NodeRef root = reading::NodeRef::of(tree)) {
        const Document& document = root.document();
        std::vector<std::uint32_t> ends{root.node().begin};
        for (std::uint32_t index = root.index() + 1; !ends.empty();) {
            if (index == ends.back()) {  // several aggregates may end at one node, so it is looked at again
                ends.pop_back();
                if (!ends.empty()) items.push_back({Item::Kind::endList, {}, 0});
                continue;
            }
            const Node& node = document.node(index);
            items.push_back({Item::Kind::text, document.name(node), 0});
            if (node.isAggregate()) {
                items.push_back({Item::Kind::beginList, {}, 2 * countEntries(document, index)});
                ends.push_back(node.begin);
            } else {
                items.push_back({Item::Kind::text, document.text(node), 0});
            }
            ++index;
        }
    }
    coder.encodeList(key, items);
}

std::optional<ParseDictionary> decodeTree(const KeyedUnarchiver& coder, std::string_view key) {
    const std::optional<std::vector<Item>> items = coder.decodeList(key);
    if (!items) return std::nullopt;
    ParseDictionaryBuilder builder;
    std::size_t depth = 0;
    OptionalText name;  // of an entry whose value has not been read yet
    for (const Item& item : *items) {
        if (item.kind == Item::Kind::endList) {
            if (name || depth == 0) return std::nullopt;
            --depth;
            builder.close();
        } else if (!name) {
            if (item.kind != Item::Kind::text) return std::nullopt;
            name = item.text;
        } else {
            if (item.kind == Item::Kind::beginList) {
                ++depth;
                builder.open(*name);
            } else {
                builder.leaf(*name, item.text);
            }
            name.reset();
        }
    }
    if (name || depth != 0) return std::nullopt;
    return builder.finish();
}

}  // namespace brackwell
