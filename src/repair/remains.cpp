// SPDX-License-Identifier: Apache-2.0
#include "repair/remains.h"

#include <algorithm>
#include <cstddef>

#include "text/ascii_case.h"
#include "text/ascii_space.h"

namespace brackwell::repair {
namespace {

using elements::Element;

constexpr std::size_t kShortest = 4;  ///< after a value; shorter ones are words of texts, too

bool isInStandardName(char c) noexcept {
    return isASCIICapital(c) || (c >= '0' && c <= '9') || c == '.' || c == '_';
}
bool isLeaf(Element element) noexcept {
    return elements::kindOf(element) == elements::Kind::leaf ||
           elements::kindOf(element) == elements::Kind::either;
}

/// True when only blanks stand between the beginning of a line, or of the text, and its end.
bool endsAtBeginOfLine(std::string_view text) noexcept {
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text.empty() || text.back() == '\n' || text.back() == '\r';
}

}  // namespace

bool areSiblings(Element a, Element b) noexcept {
    return std::ranges::any_of(elements::parentsOf(a),
                               [b](Element parent) { return elements::findChild(b, parent) != nullptr; });
}

std::string_view nameWithoutBegin(std::string_view text, Element before) noexcept {
    std::size_t begin = text.size();
    while (begin > 0 && text.size() - begin < elements::kLongestName && isInStandardName(text[begin - 1]))
        --begin;
    const bool isClose = begin > 0 && text[begin - 1] == '/';
    if (elements::findElement(text.substr(begin)) != elements::kUnknown) {
        if (isClose) return text.substr(begin - 1);
        if (endsAtBeginOfLine(text.substr(0, begin))) return text.substr(begin);
    }
    // Directly after a value nothing shows where the value ends, so the longest name counts.
    for (; begin + kShortest <= text.size(); ++begin) {
        if (begin == 0 || isASCIICapital(text[begin - 1]) || isBlank(text[begin - 1])) continue;
        const Element element = elements::findElement(text.substr(begin));
        if (isLeaf(element) && areSiblings(before, element)) return text.substr(begin);
    }
    return {};
}

std::string_view possibleNameWithoutBegin(std::string_view text, Element before) noexcept {
    if (const std::string_view name = nameWithoutBegin(text, before); !name.empty()) return name;
    for (std::size_t size = 2; size <= std::min(text.size(), elements::kLongestName); ++size) {
        const std::string_view name = text.substr(text.size() - size);
        if (!isInStandardName(name.front())) return {};
        const Element element = elements::findElement(name);
        if (element != elements::kUnknown && areSiblings(before, element)) return name;
    }
    return {};
}

std::string_view nameWithoutEnd(std::string_view inside) noexcept {
    constexpr std::size_t shortest = 3;
    for (std::size_t size = std::min(inside.size(), elements::kLongestName); size >= shortest; --size)
        if (isLeaf(elements::findElement(inside.substr(0, size)))) return inside.substr(0, size);
    return {};
}

}  // namespace brackwell::repair
