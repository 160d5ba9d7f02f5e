// SPDX-License-Identifier: Apache-2.0
#include "investments/records.h"

#include <optional>
#include <string_view>

#include "convert/field_values.h"
#include "investments/field_tables.h"

namespace brackwell::investments {
namespace {

/// By RecordType.
constexpr std::array<const FieldTable*, kRecordTypes> kTables{
    &kStatementFields,     &kTransactionFields, &kPositionFields, &kBalanceFields,
    &kListedBalanceFields, &kPlanFields,        &kLoanFields,     &kPeriodFields,
    &kAmountsFields,       &kSecurityFields,    &kPortionFields};

constexpr NameID kLongMemo = reading::element("MEMO2");
constexpr NameID kLongIdentifier = reading::element("SRVRTID2");

}  // namespace

const FieldTable& fieldsOf(RecordType type) noexcept { return *kTables[static_cast<std::size_t>(type)]; }

OptionalText Records::text(const Record& record, std::size_t field) const noexcept {
    const std::uint32_t found = fieldNode(record, field);
    if (found == 0 || node(found).isAggregate()) return std::nullopt;
    return document->text(node(found));
}

std::optional<ParseDictionary> Records::dictionary(const Record& record, std::size_t field) const {
    const std::uint32_t found = fieldNode(record, field);
    if (found == 0) return std::nullopt;
    return dictionaryAt(found);
}

ParseDictionary Records::dictionaryAt(std::uint32_t node) const {
    return reading::NodeRef{&document, &this->node(node), true}.dictionary();
}

bool RecordReader::read(std::uint32_t aggregate) {
    const reading::Document& document = *records_->document;
    const std::uint32_t end = document.endOf(aggregate);
    bool hasOthers = false;
    std::uint32_t endOfScope = 0;
    std::uint32_t endOfRepetition = 0;
    for (std::uint32_t at = aggregate + 1; at < end;) {
        const reading::Node& node = document.node(at);
        const FieldTable::Entry entry = table_->entry(node.name());
        if (!node.isAggregate()) {
            if (entry.isField() && table_->fields()[entry.field()].rule != FieldRule::object)
                takeLeaf(entry.field(), at, node.isRepeated() || at < endOfRepetition);
            ++at;
            continue;
        }
        // A statement may have several lists, and all are read.
        if (node.isRepeated() && type_ != RecordType::statement) endOfRepetition = document.endOf(at);
        if (node.name() == table_->scope()) endOfScope = document.endOf(at);
        const bool isPart = entry.isPart() || (entry.isScopedPart() && at < endOfScope);
        if (isPart || takesAggregate(entry, at))
            ++at;
        else {
            hasOthers = hasOthers || !isObject(entry, at);
            at = document.endOf(at);
        }
    }
    return hasOthers;
}

/// Notes a second value for a field, unless it is a repetition of one element, which another finding reports.
void RecordReader::takeLeaf(std::size_t field, std::uint32_t node, bool isRepetition) {
    const std::uint32_t before = this->node(field);
    take(field, node);
    if (before == 0 || isRepetition) return;
    const auto textOf = [this](std::uint32_t leaf) { return records_->document->text(records_->node(leaf)); };
    const std::uint32_t rival = nodes_[field] == node ? before : node;
    if (!textOf(nodes_[field]).starts_with(textOf(rival))) records_->rivals.push(rival);
}

bool RecordReader::isLongerForm(std::uint32_t node) const noexcept {
    const NameID name = records_->node(node).name();
    return name == kLongMemo || name == kLongIdentifier;
}

/// Takes an aggregate that is a field; true when its leaves are to be read as well.
bool RecordReader::takesAggregate(FieldTable::Entry entry, std::uint32_t node) noexcept {
    if (!entry.isField()) return false;
    const FieldRule rule = table_->fields()[entry.field()].rule;
    if (rule == FieldRule::object || rule == FieldRule::currency) take(entry.field(), node);
    return rule == FieldRule::currency;
}

/// True for an aggregate that was taken as an object.
bool RecordReader::isObject(FieldTable::Entry entry, std::uint32_t taken) const noexcept {
    return entry.isField() && node(entry.field()) == taken;
}

std::uint32_t RecordReader::add(std::uint32_t aggregate, std::uint8_t kind, const TvOFXHelper& helper,
                                std::uint32_t extra) {
    Record record{found_,
                  0,
                  records_->leaves.size(),
                  records_->amounts.size(),
                  records_->dates.size(),
                  aggregate,
                  type_,
                  kind,
                  extra};
    std::uint32_t* leaf = records_->leaves.append(static_cast<std::size_t>(std::popcount(found_)));
    for (FieldTable::Fields left = found_; left != 0; left &= left - 1) {
        const auto field = static_cast<std::size_t>(std::countr_zero(left));
        *leaf++ = nodes_[field];
        if (convert(field, helper)) record.values |= FieldTable::Fields{1} << field;
    }
    const std::uint32_t number = records_->records.size();
    records_->records.push(record);
    records_->numbers[static_cast<std::size_t>(type_)].push(number);
    return number;
}

/// Adds the value of an amount or a date; false when the field is neither, or its text is not a value.
bool RecordReader::convert(std::size_t field, const TvOFXHelper& helper) {
    const FieldTable::Fields bit = FieldTable::Fields{1} << field;
    if (((table_->amounts() | table_->dates()) & bit) == 0) return false;
    const std::string_view text = records_->document->text(records_->node(nodes_[field]));
    if ((table_->dates() & bit) != 0) {
        std::optional<Date> date;
        readDate(helper, text, date);
        if (date) records_->dates.push(*date);
        return date.has_value();
    }
    std::optional<Decimal> amount;
    readAmount(helper, text, amount);
    if (amount) records_->amounts.push(*amount);
    return amount.has_value();
}

}  // namespace brackwell::investments
