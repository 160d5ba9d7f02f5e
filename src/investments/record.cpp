// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investment_records.h>

#include <algorithm>
#include <array>
#include <bit>
#include <span>

#include "investments/getters.h"

namespace brackwell {

using namespace investments;

namespace {

constexpr bool isListed(FieldRule rule) noexcept { return rule <= FieldRule::date; }

InvestmentField::Kind kindOf(FieldRule rule) noexcept {
    constexpr std::array kinds{InvestmentField::Kind::text, InvestmentField::Kind::word,
                               InvestmentField::Kind::flag, InvestmentField::Kind::amount,
                               InvestmentField::Kind::date};
    return kinds[static_cast<std::size_t>(rule)];
}

/// How many nodes are searched for the next text after an aggregate. A limit, because a document of empty
/// aggregates has none, and each of its records would search all of it.
constexpr std::uint32_t kMostNodesAfter = 64;

/// The source text of an aggregate. Nodes know only where the texts of leaves are, so its tags are searched
/// before the first leaf and after the last.
class SourceText {
public:
    SourceText(const reading::Document& document, std::uint32_t aggregate) noexcept
        : document_(document), body_(document.body()), aggregate_(aggregate) {}

    OptionalText find() const noexcept {
        const std::uint32_t end = document_.endOf(aggregate_);
        const reading::Node* first = firstSlice(aggregate_ + 1, end);
        if (first == nullptr) return std::nullopt;
        const std::string_view name = document_.name(document_.node(aggregate_));
        const std::size_t begin = openTag(name, first->begin);
        const std::size_t close = endOf(name, end);
        if (begin == body_.npos || close == body_.npos) return std::nullopt;
        return body_.substr(begin, close - begin);
    }

private:
    static bool isSlice(const reading::Node& node) noexcept {
        return !node.isAggregate() && (node.begin & reading::Node::kOwnText) == 0;
    }
    const reading::Node* firstSlice(std::uint32_t from, std::uint32_t end) const noexcept {
        for (std::uint32_t at = from; at < end; ++at)
            if (isSlice(document_.node(at))) return &document_.node(at);
        return nullptr;
    }
    /// The "<" of the last tag with this name before a place.
    std::size_t openTag(std::string_view name, std::size_t before) const noexcept {
        for (std::size_t at = body_.rfind(name, before); at != body_.npos && at > 0;
             at = body_.rfind(name, at - 1))
            if (body_[at - 1] == '<' && endsName(at + name.size())) return at - 1;
        return body_.npos;
    }
    bool endsName(std::size_t at) const noexcept {
        return at < body_.size() && (body_[at] == '>' || body_[at] <= ' ');
    }
    /// The end of the close tag after the last leaf, or of the leaf.
    std::size_t endOf(std::string_view name, std::uint32_t endOfNodes) const noexcept {
        std::uint32_t last = endOfNodes - 1;
        while (!isSlice(document_.node(last))) --last;
        const reading::Node& leaf = document_.node(last);
        const std::size_t afterLeaf = leaf.begin + leaf.size;
        const std::size_t limit = nextSlice(endOfNodes, afterLeaf);
        const std::string_view rest = body_.substr(afterLeaf, limit - afterLeaf);
        for (std::size_t at = rest.find("</"); at != rest.npos; at = rest.find("</", at + 2)) {
            const std::string_view tag = rest.substr(at + 2);
            if (tag.starts_with(name) && tag.substr(name.size()).starts_with('>'))
                return afterLeaf + at + name.size() + 3;
        }
        return afterLeaf;
    }
    /// Where the next leaf's text begins, or the end of the text; the place itself when none is near.
    std::size_t nextSlice(std::uint32_t from, std::size_t place) const noexcept {
        const std::uint32_t last = document_.endOf(std::uint32_t{0});
        const std::uint32_t end = std::min(last, from + kMostNodesAfter);
        if (const reading::Node* next = firstSlice(from, end)) return next->begin;
        return end == last ? body_.size() : place;
    }

    const reading::Document& document_;
    std::string_view body_;
    std::uint32_t aggregate_;
};

}  // namespace

OptionalText InvestmentRecord::text(std::string_view getter) const noexcept {
    const std::span<const FieldRow> rows = fieldsOf(recordOf(*this).type).fields();
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (isListed(rows[i].rule) && rows[i].name == getter) return textOf(*this, i);
    return std::nullopt;
}

std::vector<InvestmentField> InvestmentRecord::fields() const {
    const Record& record = recordOf(*this);
    const std::span<const FieldRow> rows = fieldsOf(record.type).fields();
    std::vector<InvestmentField> fields;
    for (FieldTable::Fields left = record.found; left != 0; left &= left - 1) {
        const auto i = static_cast<std::size_t>(std::countr_zero(left));
        if (!isListed(rows[i].rule)) continue;
        InvestmentField& field = fields.emplace_back(
            InvestmentField{rows[i].name, kindOf(rows[i].rule), *textOf(*this, i), {}, {}});
        if (rows[i].rule == FieldRule::amount) field.amount = amountOf(*this, i);
        if (rows[i].rule == FieldRule::date) field.date = dateOf(*this, i);
    }
    return fields;
}

std::string_view InvestmentRecord::elementName() const noexcept {
    const Records& records = recordsOf(*this);
    return records.document->name(records.node(recordOf(*this).node));
}

ParseDictionary InvestmentRecord::originalParseData() const {
    return recordsOf(*this).dictionaryAt(recordOf(*this).node);
}

OptionalText InvestmentRecord::originalText() const noexcept {
    return SourceText(*recordsOf(*this).document, recordOf(*this).node).find();
}

}  // namespace brackwell
