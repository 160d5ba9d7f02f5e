// SPDX-License-Identifier: Apache-2.0
#include "open/element_nature.h"

#include <algorithm>
#include <string>

#include "elements/roles.h"
#include "platform/ascii_case.h"
#include "reading/element_names.h"
#include "repair/markup.h"

namespace brackwell::opening {
namespace {

/// Known, so that the survey can count it, but no class reads it.
constexpr std::string_view kOnlyCounted = "EXTDNAME";

bool isReadByClass(std::string_view name) noexcept {
    return elements::isMessageSet(name) ||
           (reading::findKnownElement(name) != reading::kKnownElementCount && name != kOnlyCounted);
}

/// True when a letter more, less or other makes one name of the other.
bool differInALetter(std::string_view a, std::string_view b) noexcept {
    if (a.size() > b.size()) std::swap(a, b);
    if (b.size() - a.size() > 1) return false;
    const auto same = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
    const std::string_view restOfLonger = b.substr(std::min(same + 1, b.size()));
    const std::size_t restOfShorter = a.size() == b.size() ? same + 1 : same;
    return a.substr(std::min(restOfShorter, a.size())) == restOfLonger;
}

}  // namespace

ElementNature natureOf(std::string_view name) {
    if (const elements::Element element = elements::findElement(name); element != elements::kUnknown)
        return {isReadByClass(name) ? NameKind::read : NameKind::treeOnly, element};
    if (!repair::isName(name)) return {NameKind::noName};
    if (name.size() <= elements::kLongestName && repair::hasSmallLetter(name)) {
        std::string capitals(name);
        std::ranges::transform(capitals, capitals.begin(), capitalLetter);
        if (const elements::Element element = elements::findElement(capitals); element != elements::kUnknown)
            return {NameKind::notCapitals, element};
    }
    return {name.find('.') != name.npos ? NameKind::extension : NameKind::unknown};
}

bool isUnreadIn(std::string_view child, std::string_view parent) noexcept {
    return child == "PHONE" && parent == "PAYEE";
}

std::string_view similarElement(std::string_view name, elements::Element parent) noexcept {
    if (name.size() > elements::kLongestName) return {};
    for (const elements::Child& child : elements::childrenOf(parent))
        if (differInALetter(name, elements::nameOf(child.element))) return elements::nameOf(child.element);
    return {};
}

}  // namespace brackwell::opening
