// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "elements/element_list.h"
#include "elements/refuse.h"
#include "memory/byte_block.h"
#include "tree/name_key.h"

/// \file
/// The names that the list of elements marks as known, each with a small number, so that readers compare
/// integers. Other names get their numbers per document (name_table.h).

namespace brackwell::reading {

/// The number of an element name: below kKnownElementCount one of the names here.
using NameID = std::uint32_t;

/// The names; the position is the number.
inline constexpr auto kElementNames = [] {
    std::array<std::string_view,
               std::ranges::count(elements::kElementRows, true, &elements::ElementRow::isKnown)>
        names;
    std::size_t count = 0;
    for (const elements::ElementRow& row : elements::kElementRows)
        if (row.isKnown) names[count++] = row.name;
    return names;
}();

inline constexpr NameID kKnownElementCount = kElementNames.size();

/// A perfect hash, made by the compiler: every known name has a slot of its own, so a lookup compares one
/// name. The highest bits of a mixed key are its bucket; a bucket says which bits are the slot, chosen so
/// that no two names share one. If that fails, the search starts over with another multiplier.
struct KnownElements {
    static constexpr unsigned kBucketBits = 8;
    static constexpr unsigned kSlotBits = std::bit_width(4 * kKnownElementCount);  ///< so most slots are free
    static constexpr unsigned kHighestShift = 64 - kBucketBits - kSlotBits;
    static constexpr unsigned kLowestShift = 16;  ///< a product's lower bits depend on few of a key's

    std::uint64_t multiplier = 0;
    std::array<std::uint8_t, std::size_t{1} << kBucketBits> shifts{};  ///< by bucket
    std::array<std::uint16_t, std::size_t{1} << kSlotBits> slots{};
    std::array<NameKey, kKnownElementCount + 1> keys{};
    bool isPerfect = false;

    constexpr std::uint64_t mixed(const NameKey& key) const noexcept {
        return (key.head ^ std::rotl(key.tail, 29) ^ std::uint64_t{key.size} << 59) * multiplier;
    }
    static constexpr std::size_t bucket(std::uint64_t mixed) noexcept { return mixed >> (64 - kBucketBits); }
    static constexpr std::size_t slot(std::uint64_t mixed, unsigned shift) noexcept {
        return mixed >> shift & ((std::size_t{1} << kSlotBits) - 1);
    }
    constexpr NameID at(const NameKey& key) const noexcept {
        const std::uint64_t bits = mixed(key);
        return slots[slot(bits, shifts[bucket(bits)])];
    }
};
static_assert(kKnownElementCount < std::numeric_limits<std::uint16_t>::max(), "slots hold two bytes");

/// Finds the shifts that give every name a slot, the fullest buckets first.
class KnownElementsMaker {
public:
    static constexpr KnownElements make() noexcept {
        KnownElementsMaker maker;
        // Odd multiples of 2^64 divided by the golden ratio: numbers whose bits look random.
        constexpr std::uint64_t golden = 0x9E3779B97F4A7C15;
        for (std::uint64_t tries = 1; tries < 64 && !maker.table_.isPerfect; tries += 2)
            maker.tryMultiplier(golden * tries);
        return maker.table_;
    }

private:
    static constexpr std::uint16_t kNone = kKnownElementCount;

    constexpr KnownElementsMaker() noexcept {
        for (NameID id = 0; id < kKnownElementCount; ++id) table_.keys[id] = nameKey(kElementNames[id]);
    }
    constexpr void tryMultiplier(std::uint64_t multiplier) noexcept {
        table_.multiplier = multiplier;
        table_.slots.fill(kNone);
        fillBuckets();
        for (std::size_t size = largest_; size > 0; --size)
            for (std::size_t bucket = 0; bucket < sizes_.size(); ++bucket)
                if (sizes_[bucket] == size && !place(bucket)) return;
        table_.isPerfect = true;
    }
    /// Chains the names of each bucket.
    constexpr void fillBuckets() noexcept {
        first_.fill(kNone);
        sizes_.fill(0);
        largest_ = 0;
        for (std::uint16_t id = 0; id < kKnownElementCount; ++id) {
            mixed_[id] = table_.mixed(table_.keys[id]);
            const std::size_t bucket = KnownElements::bucket(mixed_[id]);
            next_[id] = first_[bucket];
            first_[bucket] = id;
            largest_ = std::max<std::size_t>(largest_, ++sizes_[bucket]);
        }
    }
    constexpr bool place(std::size_t bucket) noexcept {
        for (unsigned shift = KnownElements::kHighestShift; shift >= KnownElements::kLowestShift; --shift) {
            table_.shifts[bucket] = static_cast<std::uint8_t>(shift);
            if (takeSlots(bucket, shift)) return true;
        }
        return false;
    }
    /// Gives each name of a bucket its slot, or none of them when one is taken.
    constexpr bool takeSlots(std::size_t bucket, unsigned shift) noexcept {
        std::uint16_t id = first_[bucket];
        for (; id != kNone; id = next_[id]) {
            std::uint16_t& slot = table_.slots[KnownElements::slot(mixed_[id], shift)];
            if (slot != kNone) break;
            slot = id;
        }
        if (id == kNone) return true;
        for (std::uint16_t taken = first_[bucket]; taken != id; taken = next_[taken])
            table_.slots[KnownElements::slot(mixed_[taken], shift)] = kNone;
        return false;
    }

    KnownElements table_;
    std::array<std::uint64_t, kKnownElementCount> mixed_{};
    std::array<std::uint16_t, kKnownElementCount> next_{};
    std::array<std::uint16_t, std::size_t{1} << KnownElements::kBucketBits> first_{};
    std::array<std::uint16_t, std::size_t{1} << KnownElements::kBucketBits> sizes_{};
    std::size_t largest_ = 0;
};

inline constexpr KnownElements kKnownElements = KnownElementsMaker::make();
static_assert(kKnownElements.isPerfect,
              "a name stands there twice, or two have one length, one begin and one end");

/// The number of the known name that has this key, otherwise kKnownElementCount: one lookup and one
/// comparison. The empty name has the key of the place after the last name, which is the right answer.
constexpr NameID findKnownElement(const NameKey& key, std::string_view name) noexcept {
    const NameID id = kKnownElements.at(key);
    if (kKnownElements.keys[id] != key) return kKnownElementCount;
    return key.size <= kKeyedBytes || kElementNames[id] == name ? id : kKnownElementCount;
}
constexpr NameID findKnownElement(std::string_view name) noexcept {
    return findKnownElement(nameKey(name), name);
}

/// The number of a known name, found by the compiler; a name that is not known does not compile.
consteval NameID element(std::string_view name) {
    const NameID id = findKnownElement(name);
    if (id == kKnownElementCount) elements::refuse("not a known element name");
    return id;
}

/// A known name as it stands in a tag, ">" included, for comparing 16 bytes at once.
struct TagText {
    std::array<char, ByteBlock::size> bytes{};
    unsigned mask = 0;  ///< which bytes count; of a name that is too long, a bit that none has
    unsigned size = 0;  ///< of the name
};

inline constexpr auto kTagTexts = [] {
    std::array<TagText, kKnownElementCount> texts{};
    for (NameID id = 0; id < kKnownElementCount; ++id) {
        const std::string_view name = kElementNames[id];
        TagText& text = texts[id];
        text.size = static_cast<unsigned>(name.size());
        text.mask = 1U << ByteBlock::size;
        if (name.size() >= ByteBlock::size) continue;
        std::copy(name.begin(), name.end(), text.bytes.begin());
        text.bytes[name.size()] = '>';
        text.mask = (2U << name.size()) - 1;
    }
    return texts;
}();

/// True when a block begins with this known name and ">".
inline bool beginsWithTag(const ByteBlock& block, NameID id) noexcept {
    const TagText& text = kTagTexts[id];
    return (~block.equal(ByteBlock(text.bytes.data())) & text.mask) == 0;
}

}  // namespace brackwell::reading
