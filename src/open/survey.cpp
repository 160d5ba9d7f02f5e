// SPDX-License-Identifier: Apache-2.0
#include "open/survey.h"

#include <algorithm>

namespace brackwell::opening {

namespace {

/// An aggregate whose children are walked through.
struct Around {
    const reading::Node* node;
    const reading::Node* end;
    NameFacts::Parents bit;
};

/// One walk over the nodes of a tree.
class SurveyWalk {
public:
    explicit SurveyWalk(const reading::Document& document) noexcept : document_(document) {}

    Survey run() && {
        const NameFactsTable& names = names_;
        const reading::Node* node = &document_.node(0);
        Around around{node, node + document_.size(), NameFacts::kOtherParent};
        std::vector<Around> outer;
        outer.reserve(16);  // deeper than any document is without being odd
        for (++node;;) {
            while (node != around.end && names.isQuiet(*node, around.bit)) ++node;
            if (node == around.end) {
                if (outer.empty()) return std::move(survey_);
                around = outer.back();
                outer.pop_back();
                continue;
            }
            if (const Content value = names.valueOf(*node, around.bit); isLeafContent(value)) {
                readValue(value, document_.text(*node++));
                continue;
            }
            const NameFacts& facts = names.of(node->name());
            look(*node, facts, *around.node, around.bit);
            if (node->isAggregate()) {
                outer.push_back(around);
                around = {node, document_.behind(node), facts.asParent};
            }
            ++node;
        }
    }

private:
    void readValue(Content content, std::string_view text) {
        if (content == Content::amount)
            survey_.amounts.add(text);
        else if (content == Content::date)
            survey_.dates.add(text);
        else
            survey_.identifiers.add(text);
    }

    void look(const reading::Node& node, const NameFacts& facts, const reading::Node& parent,
              NameFacts::Parents bit) {
        if ((facts.standing & bit) == 0) [[unlikely]]
            survey_.misplaced.add(document_.index(node), document_.index(parent));
        else if (node.isRepeated() && (facts.repeating & bit) == 0) [[unlikely]]
            survey_.misplaced.addRepeated(document_.index(node));
        if (!isLeafContent(facts.content))
            survey_.found[static_cast<std::size_t>(facts.content)] += isCounted(facts.content, node);
        else if (!node.isAggregate())
            readValue(facts.content, document_.text(node));
        if (facts.content == Content::statement) survey_.identifiers.beginStatement();
    }

    const reading::Document& document_;
    const NameFactsTable& names_ = NameFactsTable::known();
    Survey survey_;
};

}  // namespace

Survey surveyOf(const reading::Document& document) { return SurveyWalk(document).run(); }

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
