// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "open/content.h"

namespace brackwell::opening {

/// What a survey finds in a record, an aggregate that is not the first of its name, but for the texts of its
/// values. All of it holds for every record with the same elements in the same order, and the records of a
/// document have few shapes.
class RecordShape {
public:
    /// A few elements of the record, in its order.
    template <class Element>
    class Few {
    public:
        /// False when there are too many.
        bool add(Element element) noexcept {
            if (count_ == all_.size()) return false;
            all_[count_++] = element;
            return true;
        }
        const Element* begin() const noexcept { return all_.data(); }
        const Element* end() const noexcept { return all_.data() + count_; }

    private:
        std::array<Element, 16> all_{};
        std::size_t count_ = 0;
    };
    /// How many nodes after that of the record itself.
    using Offset = std::uint16_t;
    /// An element whose text is a value.
    struct Value {
        Offset offset;
        Content content;
    };

    /// Of no record.
    RecordShape() = default;
    /// Of a record in which nothing was found so far. The document must outlive this object.
    RecordShape(const reading::Node& record, const reading::Node* end, const ChildFacts* around) noexcept
        : record_(&record), end_(end), around_(around) {
        for (const reading::Node* node = record_ + 1; node < end_; ++node)
            if (node->isAggregate() && !aggregates_.add(static_cast<Offset>(node - record_)))
                end_ = record_;  // too many: the shape of no record
    }

    /// False for what is rather a part of a document than one of its records.
    static bool isRecord(const reading::Node& node, const reading::Node* end) noexcept {
        constexpr std::ptrdiff_t mostNodes = 64;
        return node.isRepeated() && node.isAggregate() && end - &node <= mostNodes;
    }

    /// Adds what was found in the record; false when it is too much.
    bool add(const reading::Node& node, Content content) noexcept {
        if (!isLeafContent(content)) return counted.add(content);
        return values.add({static_cast<Offset>(&node - record_), content});
    }

    /// True when another record has the same elements in the same order.
    bool isOf(const reading::Node& record, const reading::Node* end,
              const ChildFacts* around) const noexcept {
        if (around_ != around || end - &record != end_ - record_) return false;
        if (!hasSameNames(&record)) return false;
        for (const Offset offset : aggregates_)
            if (record_->begin - record_[offset].begin != record.begin - (&record)[offset].begin)
                return false;  // ends elsewhere
        return true;
    }

    Few<Content> counted;
    Few<Value> values;
    std::ptrdiff_t required = 0;  ///< what the record adds to Survey::required

private:
    /// Looks at as many nodes of another record as this one has.
    bool hasSameNames(const reading::Node* other) const noexcept {
        const reading::Node* node = record_;
        const reading::Node* const end = end_;
        const auto difference = [&](std::ptrdiff_t i) { return node[i].nameAndKind ^ other[i].nameAndKind; };
        for (; end - node >= 4; node += 4, other += 4)  // one branch instead of four
            if ((difference(0) | difference(1) | difference(2) | difference(3)) != 0) return false;
        for (; node != end; ++node, ++other)
            if (difference(0) != 0) return false;
        return true;
    }

    const reading::Node* record_ = nullptr;
    const reading::Node* end_ = nullptr;
    const ChildFacts* around_ = nullptr;  ///< about the aggregate around it
    Few<Offset> aggregates_;              ///< in the record
};

}  // namespace brackwell::opening
