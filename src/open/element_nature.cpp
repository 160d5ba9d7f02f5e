// SPDX-License-Identifier: Apache-2.0
#include "open/element_nature.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "elements/roles.h"
#include "open/known_elements.h"
#include "repair/markup.h"
#include "text/ascii_case.h"

namespace brackwell::opening {
namespace {

/// Known, so that the survey can count it, but no class reads it.
constexpr reading::NameID kOnlyCounted = reading::element("EXTDNAME");

constexpr auto kNatures = [] {
    std::array<ElementNature, reading::kKnownElementCount> natures{};
    for (reading::NameID name = 0; name != natures.size(); ++name)
        natures[name] = {name == kOnlyCounted ? NameKind::treeOnly : NameKind::read, kElementOfName[name]};
    return natures;
}();

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
    if (const reading::NameID known = reading::findKnownElement(name); known != reading::kKnownElementCount)
        return natureOfKnown(known);
    if (const elements::Element element = elements::findElement(name); element != elements::kUnknown)
        return {elements::isMessageSet(name) ? NameKind::read : NameKind::treeOnly, element};
    if (!repair::isName(name)) return {NameKind::noName};
    if (name.size() <= elements::kLongestName && repair::hasSmallLetter(name)) {
        std::string capitals(name);
        std::ranges::transform(capitals, capitals.begin(), capitalLetter);
        if (const elements::Element element = elements::findElement(capitals); element != elements::kUnknown)
            return {NameKind::notCapitals, element};
    }
    return {name.find('.') != name.npos ? NameKind::extension : NameKind::unknown};
}

const ElementNature& natureOfKnown(reading::NameID name) noexcept { return kNatures[name]; }

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
