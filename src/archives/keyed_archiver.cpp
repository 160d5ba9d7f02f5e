// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include "archives/archive_values.h"
#include "archives/cbor.h"

namespace brackwell {

namespace {

using cbor::Major;
using Kind = ArchiveListItem::Kind;

/// How many items are directly in the list, not in a list inside it: CBOR has the number before the items.
std::uint64_t countEntries(const std::vector<ArchiveListItem>& items) noexcept {
    std::uint64_t count = 0;
    std::uint64_t depth = 0;
    for (const ArchiveListItem& item : items) {
        if (item.kind == Kind::endList) {
            --depth;
            continue;
        }
        if (depth == 0) ++count;
        if (item.kind == Kind::beginList) ++depth;
    }
    return count;
}

}  // namespace

void KeyedArchiver::encodeText(std::string_view key, std::string_view text) {
    std::string encoded;
    cbor::appendText(encoded, text);
    store(key, std::move(encoded));
}

void KeyedArchiver::encodeUnsigned(std::string_view key, std::uint64_t value) {
    std::string encoded;
    cbor::appendHead(encoded, Major::unsignedInteger, value);
    store(key, std::move(encoded));
}

void KeyedArchiver::encodeDate(std::string_view key, Date date) {
    std::string encoded;
    appendDate(encoded, date);
    store(key, std::move(encoded));
}

void KeyedArchiver::encodeDecimal(std::string_view key, const Decimal& number) {
    std::string encoded;
    appendDecimal(encoded, number);
    store(key, std::move(encoded));
}

void KeyedArchiver::encodeList(std::string_view key, const std::vector<ArchiveListItem>& items) {
    std::string encoded;
    cbor::appendHead(encoded, Major::array, countEntries(items));
    for (const ArchiveListItem& item : items) {
        if (item.kind == Kind::text) cbor::appendText(encoded, item.text);
        if (item.kind == Kind::beginList) cbor::appendHead(encoded, Major::array, item.count);
    }
    store(key, std::move(encoded));
}

void KeyedArchiver::encodeObject(std::string_view key, const KeyedArchiver& object) {
    store(key, object.encodedMap());
}

Data KeyedArchiver::archivedData() const { return Data::adopt(encodedMap()); }

std::string KeyedArchiver::encodedMap() const {
    std::string encoded;
    cbor::appendHead(encoded, Major::map, entries_.size());
    // The size is known beforehand; growing step by step would copy large texts several times.
    std::size_t size = encoded.size();
    for (const auto& [key, value] : entries_) size += key.size() + value.size();
    encoded.reserve(size);
    for (const auto& [key, value] : entries_) encoded.append(key).append(value);
    return encoded;
}

// Entries are sorted by encoded key, and a key has one value: that is the deterministic form of a map.
void KeyedArchiver::store(std::string_view key, std::string encoded) {
    std::string encodedKey;
    cbor::appendText(encodedKey, key);
    entries_.insert_or_assign(std::move(encodedKey), std::move(encoded));
}

}  // namespace brackwell
