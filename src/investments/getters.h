// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "investments/field_tables.h"
#include "investments/records.h"
#include "investments/words.h"

/// \file
/// What the getters of the classes are made of.

namespace brackwell::investments {

inline const Records& recordsOf(const InvestmentRecord& object) noexcept {
    return RecordAccess::records(object);
}
inline const Record& recordOf(const InvestmentRecord& object) noexcept {
    return recordsOf(object).records[RecordAccess::number(object)];
}

inline OptionalText textOf(const InvestmentRecord& object, std::size_t field) noexcept {
    return recordsOf(object).text(recordOf(object), field);
}
inline std::optional<Decimal> amountOf(const InvestmentRecord& object, std::size_t field) noexcept {
    return recordsOf(object).amount(recordOf(object), field);
}
inline std::optional<Date> dateOf(const InvestmentRecord& object, std::size_t field) noexcept {
    return recordsOf(object).date(recordOf(object), field);
}
inline std::optional<bool> flagOf(const InvestmentRecord& object, std::size_t field) noexcept {
    const OptionalText word = textOf(object, field);
    if (word == "Y") return true;
    if (word == "N") return false;
    return std::nullopt;
}
template <class Value>
std::optional<Value> wordOf(const InvestmentRecord& object, std::size_t field) noexcept {
    return valueOfWord<Value>(textOf(object, field));
}

/// The objects of a class in this one, in document order.
template <class Object>
std::vector<Object> innerObjects(const InvestmentRecord& object, RecordType type) {
    const Records& records = recordsOf(object);
    const std::uint32_t end = records.endOf(recordOf(object));
    std::vector<Object> found;
    for (std::uint32_t number = RecordAccess::number(object) + 1; number < records.records.size(); ++number) {
        const Record& record = records.records[number];
        if (record.node >= end) break;
        if (record.type == type) found.emplace_back(RecordAccess::shared(object), number);
    }
    return found;
}

/// The objects of a class in a statement, in document order.
template <class Object>
InvestmentList<Object> listOf(const InvestmentStatement& statement, RecordType type) noexcept {
    const Records& records = recordsOf(statement);
    const auto index = static_cast<std::size_t>(type);
    const auto [begin, end] = records.statements[recordOf(statement).extra].ranges[index];
    return {RecordAccess::shared(statement), records.numbers[index].data() + begin, end - begin};
}
template <class Object>
std::optional<Object> firstOf(const InvestmentStatement& statement, RecordType type) {
    const auto objects = listOf<Object>(statement, type);
    if (objects.isEmpty()) return std::nullopt;
    return objects[0];
}

}  // namespace brackwell::investments
