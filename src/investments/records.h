// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/investments.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "investments/field_table.h"
#include "memory/pod_vector.h"
#include "tree/document.h"
#include "tree/node_ref.h"

/// \file
/// What is kept of one reading of a document. An object is a record: which fields it has, as bits, and where
/// their leaves and values begin in arrays that all records share. So a field that is absent costs a bit,
/// whatever its kind, and an object that is handed out is a record's number.

namespace brackwell::investments {

/// The classes that have records.
enum class RecordType : std::uint8_t {
    statement,
    transaction,
    position,
    balance,
    listedBalance,
    plan,
    loan,
    period,
    amounts,
    security,
    portion,
};
inline constexpr std::size_t kRecordTypes = static_cast<std::size_t>(RecordType::portion) + 1;

/// The fields of a class.
const FieldTable& fieldsOf(RecordType type) noexcept;

struct Record {
    FieldTable::Fields found;   ///< those that the document has
    FieldTable::Fields values;  ///< of the amounts and dates those whose text is one
    std::uint32_t leaves;       ///< where the nodes of the found fields begin, in the order of the bits
    std::uint32_t amounts;      ///< where the amounts begin, in the same order
    std::uint32_t dates;        ///< where the dates begin
    std::uint32_t node;         ///< the aggregate
    RecordType type;
    std::uint8_t kind;    ///< the number of the enumerator
    std::uint32_t extra;  ///< of a statement and of a bank transaction: which one
};

/// What a statement has beside its fields.
struct StatementParts {
    std::shared_ptr<TvOFXStatus> status;
    std::shared_ptr<TvOFXInvestmentAccount> account;
    /// By type: where its records begin and end in `numbers`.
    std::array<std::pair<std::uint32_t, std::uint32_t>, kRecordTypes> ranges{};
};

struct Records {
    std::shared_ptr<const reading::Document> document;
    reading::PodVector<Record> records;
    reading::PodVector<std::uint32_t> leaves;
    reading::PodVector<Decimal> amounts;
    reading::PodVector<Date> dates;
    std::array<reading::PodVector<std::uint32_t>, kRecordTypes> numbers;  ///< of the records, by type
    std::vector<StatementParts> statements;
    std::vector<std::shared_ptr<TvOFXStatementTransaction>> bankTransactions;
    /// Leaves that say something else than the element of another name or place that a field was taken from.
    reading::PodVector<std::uint32_t> rivals;

    const reading::Node& node(std::uint32_t index) const noexcept { return document->node(index); }
    std::uint32_t endOf(const Record& record) const noexcept { return document->endOf(record.node); }

    /// The leaf or aggregate of a field; 0 when the document does not have it.
    std::uint32_t fieldNode(const Record& record, std::size_t field) const noexcept {
        const FieldTable::Fields bit = FieldTable::Fields{1} << field;
        if ((record.found & bit) == 0) return 0;
        return leaves[record.leaves + countBelow(record.found, bit)];
    }
    OptionalText text(const Record& record, std::size_t field) const noexcept;
    /// Null for one that the document does not have, or that is none.
    const Decimal* amountAt(const Record& record, std::size_t field) const noexcept {
        const FieldTable::Fields bit = FieldTable::Fields{1} << field;
        if ((record.values & bit) == 0) return nullptr;
        const FieldTable::Fields all = record.values & fieldsOf(record.type).amounts();
        return &amounts[record.amounts + countBelow(all, bit)];
    }
    std::optional<Decimal> amount(const Record& record, std::size_t field) const noexcept {
        const Decimal* found = amountAt(record, field);
        return found != nullptr ? std::optional(*found) : std::nullopt;
    }
    std::optional<Date> date(const Record& record, std::size_t field) const noexcept {
        const FieldTable::Fields bit = FieldTable::Fields{1} << field;
        if ((record.values & bit) == 0) return std::nullopt;
        const FieldTable::Fields all = record.values & fieldsOf(record.type).dates();
        return dates[record.dates + countBelow(all, bit)];
    }
    /// The aggregate of a field that has a class of its own; nothing when there is none.
    std::optional<ParseDictionary> dictionary(const Record& record, std::size_t field) const;

    ParseDictionary dictionaryAt(std::uint32_t node) const;

private:
    static std::uint32_t countBelow(FieldTable::Fields fields, FieldTable::Fields bit) noexcept {
        return static_cast<std::uint32_t>(std::popcount(fields & (bit - 1)));
    }
};

/// Collects the fields of one object, which may stand in several aggregates, and adds the object.
class RecordReader {
public:
    explicit RecordReader(Records& records, RecordType type) noexcept
        : records_(&records), table_(&fieldsOf(type)), type_(type) {}

    /// Takes the fields of an aggregate and of its parts; true when there are other aggregates in it.
    bool read(std::uint32_t aggregate);
    /// The node of a field that has been read, by one of its elements; 0 when there is none.
    std::uint32_t nodeOf(NameID element) const noexcept {
        const FieldTable::Entry entry = table_->entry(element);
        return entry.isField() ? node(entry.field()) : 0;
    }
    /// Adds the object, which stands for an aggregate; returns its number.
    std::uint32_t add(std::uint32_t aggregate, std::uint8_t kind, const TvOFXHelper& helper,
                      std::uint32_t extra = 0);

private:
    std::uint32_t node(std::size_t field) const noexcept {
        return (found_ >> field & 1) != 0 ? nodes_[field] : 0;
    }
    /// The first element of a field counts, or the longer form of it.
    void take(std::size_t field, std::uint32_t node) noexcept {
        const FieldTable::Fields bit = FieldTable::Fields{1} << field;
        if ((found_ & bit) != 0 && !isLongerForm(node)) return;
        found_ |= bit;
        nodes_[field] = node;
    }
    void takeLeaf(std::size_t field, std::uint32_t node, bool isRepetition);
    /// True for a text that repeats another one in full.
    bool isLongerForm(std::uint32_t node) const noexcept;
    bool takesAggregate(FieldTable::Entry entry, std::uint32_t node) noexcept;
    bool isObject(FieldTable::Entry entry, std::uint32_t taken) const noexcept;
    bool convert(std::size_t field, const TvOFXHelper& helper);

    Records* records_;
    const FieldTable* table_;
    RecordType type_;
    FieldTable::Fields found_ = 0;
    std::array<std::uint32_t, FieldTable::kMostFields> nodes_{};  ///< by field; only those that are found
};

/// What the classes' sources reach of an object.
struct RecordAccess {
    static const std::shared_ptr<const Records>& shared(const InvestmentRecord& object) noexcept {
        return object.records_;
    }
    static const Records& records(const InvestmentRecord& object) noexcept { return *object.records_; }
    static std::uint32_t number(const InvestmentRecord& object) noexcept { return object.number_; }
};

}  // namespace brackwell::investments
