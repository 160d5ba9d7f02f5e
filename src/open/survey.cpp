// SPDX-License-Identifier: Apache-2.0
#include "open/survey.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "open/date_rests.h"
#include "open/judged_places.h"
#include "open/odd_names.h"
#include "open/record_shape.h"
#include "open/required_values.h"

namespace brackwell::opening {

namespace {

/// An aggregate whose children are walked through.
struct Around {
    std::uint32_t node;
    NameFacts::Parents bit;
};

/// One walk over the nodes of a tree, for every document: what it finds decides whether more is examined.
class SurveyWalk {
public:
    explicit SurveyWalk(const reading::Document& document) : document_(document) {
        outer_.reserve(16);  // deeper than any document is without being odd
    }

    Survey run() && {
        const NameFactsTable& names = names_;
        const reading::Node* node = &document_.node(1);
        const reading::Node* end = document_.endOf(&document_.node(0));
        Around around{0, NameFacts::kOtherParent};
        while (true) {
            while (node != end && names.isQuiet(*node, around.bit)) ++node;
            if (node == end) {
                if (outer_.empty()) return std::move(survey_);
                if (recorded_ == around.node) keepShape();
                around = outer_.back();
                outer_.pop_back();
                end = document_.endOf(&document_.node(around.node));
                continue;
            }
            const Content value = names.valueOf(*node, around.bit);
            if (isLeafContent(value)) {
                survey_.required += requiredBy(*node);
                take(*node, value);
            } else if (RecordShape::isRecord(document_, *node) && takeKnown(*node, around.bit)) {
                node = document_.endOf(node);
                continue;
            } else {
                const NameFacts& facts = names.of(node->name());
                look(*node, facts, around);
                if (node->isAggregate()) {
                    outer_.push_back(around);
                    around = {document_.index(*node), facts.asParent};
                    end = document_.endOf(node);
                }
            }
            ++node;
        }
    }

private:
    void take(const reading::Node& node, Content content) {
        if (recorded_ != 0 && !recording_.add(node, content)) recorded_ = 0;
        if (content == Content::amount)
            survey_.amounts.add(document_.text(node));
        else if (content == Content::date)
            readDate(document_.text(node));
        else if (content == Content::identifier)
            survey_.identifiers.add(document_.text(node));
        else
            count(content);
    }

    void count(Content content) noexcept { ++survey_.found[static_cast<std::size_t>(content)]; }

    void readDate(std::string_view text) {
        survey_.dates.add(text);
        if (mayHaveOddRest(text)) [[unlikely]]
            survey_.hasDateRests = true;
    }

    void look(const reading::Node& node, const NameFacts& facts, Around around) {
        if ((facts.standing & around.bit) == 0) [[unlikely]] {
            survey_.misplaced.add(document_.index(node), around.node);
            recorded_ = 0;
        } else if (node.isRepeated() && (facts.repeating & around.bit) == 0) [[unlikely]] {
            noteRepeated(document_.index(node), around.node);
            recorded_ = 0;
        }
        survey_.required += requiredBy(node);
        if (isOdd(node) || (node.isRepeated() && around.bit == NameFacts::kOtherParent)) survey_.isOdd = true;
        if (isCounted(facts.content, node)) take(node, facts.content);
        if (facts.content == Content::statement || facts.content == Content::investmentStatement) {
            survey_.identifiers.beginStatement();
            recorded_ = 0;
        }
    }

    /// Counts a record whose shape is known without walking through it: the transactions of a statement have
    /// few shapes. An unknown shape is recorded, unless the record has something that varies within a shape.
    bool takeKnown(const reading::Node& record, NameFacts::Parents around) {
        if (recorded_ != 0) return false;
        for (const RecordShape& shape : shapes_) {
            if (!shape.isOf(document_, record, around)) continue;
            takeValues(&record, shape);
            return true;
        }
        recording_ = RecordShape(document_, record, around);
        recorded_ = document_.index(record);
        requiredBefore_ = survey_.required;
        return false;
    }

    void takeValues(const reading::Node* record, const RecordShape& shape) {
        survey_.required += shape.required;
        for (const Content content : shape.counted) count(content);
        for (const auto offset : shape.amounts) survey_.amounts.add(document_.text(record[offset]));
        for (const auto offset : shape.dates) readDate(document_.text(record[offset]));
        for (const auto offset : shape.identifiers) survey_.identifiers.add(document_.text(record[offset]));
    }

    void keepShape() noexcept {
        recording_.required = survey_.required - requiredBefore_;
        // The oldest one goes.
        shapes_[nextShape_++ % shapes_.size()] = recording_;
        recorded_ = 0;
    }

    void noteRepeated(std::uint32_t index, std::uint32_t around) {
        const auto elementOf = [this](std::uint32_t node) {
            return elements::findElement(document_.name(document_.node(node)));
        };
        if (isReadOften({elementOf(index), elementOf(around), true}))
            survey_.misplaced.addFurther(index);
        else
            survey_.misplaced.addRepeated(index);
    }

    const reading::Document& document_;
    const NameFactsTable& names_ = NameFactsTable::known();
    Survey survey_;
    std::vector<Around> outer_;
    std::array<RecordShape, 8> shapes_;  ///< the last ones
    std::size_t nextShape_ = 0;
    RecordShape recording_;
    std::uint32_t recorded_ = 0;         ///< the record whose shape is recorded; 0: none
    std::ptrdiff_t requiredBefore_ = 0;  ///< Survey::required before it
};

}  // namespace

Survey surveyOf(const reading::Document& document) { return SurveyWalk(document).run(); }

std::size_t depthOf(const reading::Document& document) {
    std::vector<std::uint32_t> ends;
    std::size_t depth = 0;
    for (std::uint32_t index = 1; index < document.size(); ++index) {
        while (!ends.empty() && ends.back() <= index) ends.pop_back();
        if (!document.node(index).isAggregate()) continue;
        ends.push_back(document.endOf(index));
        depth = std::max(depth, ends.size());
    }
    return depth;
}

}  // namespace brackwell::opening
