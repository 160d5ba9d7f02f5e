// SPDX-License-Identifier: Apache-2.0
#include "open/survey.h"

#include <algorithm>

#include "open/date_rests.h"
#include "open/odd_names.h"
#include "open/required_values.h"

namespace brackwell::opening {

namespace {

/// An aggregate whose children are walked through.
struct Around {
    std::uint32_t node;
    NameFacts::Parents bit;
};

/// One walk over the nodes of a tree.
class SurveyWalk {
public:
    explicit SurveyWalk(const reading::Document& document) : document_(document) {
        outer_.reserve(16);  // deeper than any document is without being odd
    }

    Survey run() && {
        const NameFactsTable& names = names_;
        const reading::Node* node = &document_.node(1);
        const reading::Node* end = document_.behind(&document_.node(0));
        Around around{0, NameFacts::kOtherParent};
        while (true) {
            while (node != end && names.isQuiet(*node, around.bit)) ++node;
            if (node == end) {
                if (outer_.empty()) return std::move(survey_);
                around = outer_.back();
                outer_.pop_back();
                end = document_.behind(&document_.node(around.node));
                continue;
            }
            const Content value = names.valueOf(*node, around.bit);
            if (isLeafContent(value)) {
                survey_.required += requiredBy(*node);
                readValue(value, document_.text(*node));
            } else {
                const NameFacts& facts = names.of(node->name());
                look(*node, facts, around);
                if (node->isAggregate()) {
                    outer_.push_back(around);
                    around = {document_.index(*node), facts.asParent};
                    end = document_.behind(node);
                }
            }
            ++node;
        }
    }

private:
    void readValue(Content content, std::string_view text) {
        if (content == Content::amount)
            survey_.amounts.add(text);
        else if (content == Content::date)
            readDate(text);
        else
            survey_.identifiers.add(text);
    }

    void readDate(std::string_view text) {
        survey_.dates.add(text);
        if (mayHaveOddRest(text)) [[unlikely]]
            survey_.hasDateRests = true;
    }

    void look(const reading::Node& node, const NameFacts& facts, Around around) {
        if ((facts.standing & around.bit) == 0) [[unlikely]]
            survey_.misplaced.add(document_.index(node), around.node);
        else if (node.isRepeated() && (facts.repeating & around.bit) == 0) [[unlikely]]
            survey_.misplaced.addRepeated(document_.index(node));
        survey_.required += requiredBy(node);
        if (isOdd(node) || (node.isRepeated() && around.bit == NameFacts::kOtherParent)) survey_.isOdd = true;
        if (!isLeafContent(facts.content))
            survey_.found[static_cast<std::size_t>(facts.content)] += isCounted(facts.content, node);
        else if (!node.isAggregate())
            readValue(facts.content, document_.text(node));
        if (facts.content == Content::statement || facts.content == Content::investmentStatement)
            survey_.identifiers.beginStatement();
    }

    const reading::Document& document_;
    const NameFactsTable& names_ = NameFactsTable::known();
    Survey survey_;
    std::vector<Around> outer_;
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
