// SPDX-License-Identifier: Apache-2.0
#include "open/tag_remains.h"

#include <algorithm>
#include <cstddef>

#include "repair/remains.h"

namespace brackwell::opening {

bool holdsRemains(std::string_view text, elements::Element element) noexcept {
    for (std::size_t close = text.find('>'); close != text.npos; close = text.find('>', close + 1))
        if (!repair::possibleNameWithoutBegin(text.substr(0, close), element).empty()) return true;
    return false;
}

bool cutsText(const reading::Document& document, std::uint32_t node) noexcept {
    const reading::Node& leaf = document.node(node - 1);
    const auto begin = document.sourceOffset(leaf);
    if (node < 2 || leaf.isAggregate() || !begin) return false;
    // A real element starts on a new line, or directly after the text; a word in a text follows a blank.
    const std::string_view after = document.source().bytes().substr(*begin + leaf.size);
    const std::size_t tag = std::min(after.find_first_not_of(' '), after.size());
    return tag > 0 && tag < after.size() && after[tag] == '<' && !document.node(node).isAggregate() &&
           after.substr(tag + 1).starts_with(document.name(document.node(node)));
}

}  // namespace brackwell::opening
