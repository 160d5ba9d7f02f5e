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
    const ChildFacts* children;
};

/// One walk over the nodes of a tree, for every document: what it finds decides whether more is examined.
class SurveyWalk {
public:
    explicit SurveyWalk(const reading::Document& document) : document_(document) {
        outer_.reserve(16);  // deeper than any document is without being odd
    }

    Survey run() && {
        const reading::Node* node = &document_.node(1);
        const reading::Node* end = document_.endOf(&document_.node(0));
        Around around{0, &names_.anythingGoes()};
        while (true) {
            while (node != end && NameFactsTable::isQuiet(*node, *around.children)) ++node;
            if (node == end) {
                if (outer_.empty()) return std::move(survey_);
                if (recorded_ == around.node) keepShape();
                around = outer_.back();
                outer_.pop_back();
                end = document_.endOf(&document_.node(around.node));
                continue;
            }
            if (const reading::Node* after = pastKnown(node, end, around.children); after != node) {
                node = after;
                continue;
            }
            const Content value = names_.valueOf(*node, *around.children);
            if (isLeafContent(value)) {
                survey_.required += requiredBy(*node);
                take(*node, value);
            } else {
                look(*node, around);
                if (node->isAggregate()) {
                    outer_.push_back(around);
                    around = {document_.index(*node), &names_.childrenOf(node->name())};
                    end = document_.endOf(node);
                }
            }
            ++node;
        }
    }

private:
    void take(const reading::Node& node, Content content) {
        if (recorded_ != 0 && !recording_.add(node, content)) recorded_ = 0;
        takeValue(node, content);
    }

    [[gnu::always_inline]] void takeValue(const reading::Node& node, Content content) {
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

    void look(const reading::Node& node, Around around) {
        const reading::NameID name = NameFactsTable::knownOrNone(node.name());
        if (!around.children->standing.has(name)) [[unlikely]] {
            survey_.misplaced.add(document_.index(node), around.node);
            recorded_ = 0;
        } else if (node.isRepeated() && !around.children->repeating.has(name)) [[unlikely]] {
            noteRepeated(document_.index(node), around.node);
            recorded_ = 0;
        }
        survey_.required += requiredBy(node);
        const bool isUnjudged = around.children == &names_.anythingGoes();
        if (isOdd(node) || (node.isRepeated() && isUnjudged)) survey_.isOdd = true;
        const Content content = names_.contentOf(name);
        if (isCounted(content, node)) take(node, content);
        if (content == Content::statement || content == Content::investmentStatement) {
            survey_.identifiers.beginStatement();
            recorded_ = 0;
        }
    }

    /// Counts the records from here on whose shapes are known; returns the node after them.
    const reading::Node* pastKnown(const reading::Node* node, const reading::Node* end,
                                   const ChildFacts* around) {
        if (recorded_ != 0) return node;
        while (node != end) {
            const reading::Node* after = document_.endOf(node);
            if (!RecordShape::isRecord(*node, after) || !takeKnown(*node, after, around)) break;
            node = after;
        }
        return node;
    }

    /// Counts a record whose shape is known without walking through it: the transactions of a statement have
    /// few shapes. An unknown shape is recorded, unless the record has something that varies within a shape.
    bool takeKnown(const reading::Node& record, const reading::Node* end, const ChildFacts* around) {
        for (const RecordShape& shape : shapes_) {
            if (!shape.isOf(record, end, around)) continue;
            survey_.required += shape.required;
            for (const Content content : shape.counted) count(content);
            for (const auto [offset, content] : shape.values) takeValue((&record)[offset], content);
            return true;
        }
        recording_ = RecordShape(record, end, around);
        recorded_ = document_.index(record);
        requiredBefore_ = survey_.required;
        return false;
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
