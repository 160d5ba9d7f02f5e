// SPDX-License-Identifier: Apache-2.0
#include "open/survey.h"

#include <algorithm>

namespace brackwell::opening {

namespace {

/// Four characters as a number that orders them as texts.
constexpr std::uint32_t ordered(const char* characters) noexcept {
    std::uint32_t number = 0;
    for (unsigned i = 0; i < 4; ++i) number = number << 8U | static_cast<unsigned char>(characters[i]);
    return number;
}

bool hasUsualYear(std::string_view date) noexcept {
    if (date.size() < 4) return false;
    const std::uint32_t year = ordered(date.data());
    return year >= ordered("1970") && year <= ordered("2100");
}

/// An aggregate whose children are walked through.
struct Around {
    std::uint32_t node;
    std::uint32_t end;
    NameFacts::Parents bit;
};

void readValue(Survey& survey, Content content, std::string_view text) {
    if (content == Content::amount) return survey.amounts.add(text);
    survey.dates.add(text);
    if (!hasUsualYear(text)) ++survey.improbableDates;
}

}  // namespace

Survey surveyOf(const reading::Document& document) {
    const NameFactsTable& names = NameFactsTable::known();
    Survey survey;
    std::vector<Around> outer;
    Around around{0, document.size(), NameFacts::kOtherParent};
    for (std::uint32_t index = 1; index < document.size(); ++index) {
        for (; around.end <= index; outer.pop_back()) around = outer.back();
        const reading::Node& node = document.node(index);
        const NameFacts& facts = names.of(node.name());
        if ((facts.standing & around.bit) == 0)
            survey.misplaced.add(index, around.node);
        else if (node.isRepeated() && (facts.repeating & around.bit) == 0)
            survey.misplaced.addRepeated(index);
        if (isLeafContent(facts.content)) {
            if (!node.isAggregate()) readValue(survey, facts.content, document.text(node));
        } else {
            survey.found[static_cast<std::size_t>(facts.content)] += isCounted(facts.content, node);
        }
        if (!node.isAggregate()) continue;
        outer.push_back(around);
        around = {index, document.behind(index), facts.asParent};
    }
    return survey;
}

std::size_t depthOf(const reading::Document& document) {
    std::vector<std::uint32_t> ends;
    std::size_t depth = 0;
    for (std::uint32_t index = 1; index < document.size(); ++index) {
        while (!ends.empty() && ends.back() <= index) ends.pop_back();
        if (!document.node(index).isAggregate()) continue;
        ends.push_back(document.behind(index));
        depth = std::max(depth, ends.size());
    }
    return depth;
}

}  // namespace brackwell::opening
