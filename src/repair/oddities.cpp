// SPDX-License-Identifier: Apache-2.0
#include "repair/oddities.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <string_view>

#include "repair/markup.h"
#include "repair/remains.h"

namespace brackwell::repair {
namespace {

/// The text from a place to the next tag.
std::string_view textFrom(const Tree& tree, std::size_t begin) noexcept {
    const std::string_view rest = tree.text().substr(begin);
    return trimWhiteSpace(rest.substr(0, rest.find('<')));
}

bool hasLooseText(const Tree& tree, NodeID node) noexcept {
    const Node& it = tree[node];
    if (it.parent == Tree::kDocument) return false;
    const Stretch& end = it.isLeaf ? it.open : it.close;
    return end.isThere() && !textFrom(tree, end.end).empty();
}

bool holdsTagWithoutBegin(const Tree& tree, const Node& leaf) noexcept {
    std::string_view text = tree.text().substr(leaf.open.begin, leaf.open.end - leaf.open.begin);
    text.remove_prefix(std::min(text.find('>') + 1, text.size()));
    text = text.substr(0, text.find('<'));
    for (std::size_t close = text.find('>'); close != text.npos; close = text.find('>', close + 1))
        if (!nameWithoutBegin(text.substr(0, close), leaf.element).empty()) return true;
    return false;
}

/// True for an unknown element directly after a leaf without close tag, on the same line: it may be a word of
/// the leaf's text in angle brackets.
bool cutsText(const Tree& tree, NodeID node) noexcept {
    const Node& before = tree[node - 1];
    if (node < 2 || !before.isLeaf || tree[node].element != elements::kUnknown) return false;
    const std::string_view leaf = tree.text().substr(before.open.begin, before.open.end - before.open.begin);
    const std::size_t begin = tree[node].open.begin;
    const std::string_view between = tree.text().substr(before.open.end, begin - before.open.end);
    return !leaf.ends_with('>') && !between.empty() && between.find_first_not_of(' ') == between.npos &&
           tree[node].isLeaf && tree.name(node).find('.') == std::string_view::npos;
}

}  // namespace

std::size_t odditiesOf(const Tree& tree) {
    std::size_t count = 0;
    for (NodeID node = 1; node < tree.size(); ++node) {
        const Node& it = tree[node];
        if (!it.open.isThere()) continue;
        count += it.element == elements::kUnknown && !isName(tree.name(node));
        count += hasLooseText(tree, node);
        count += it.isLeaf && holdsTagWithoutBegin(tree, it);
        count += cutsText(tree, node);
    }
    return count;
}

}  // namespace brackwell::repair
