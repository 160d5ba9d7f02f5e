// SPDX-License-Identifier: Apache-2.0
#include <brackwell/platform.h>

#include <algorithm>
#include <utility>

#include "archives/archive_values.h"
#include "archives/cbor.h"
#include "numbers/as_size.h"

namespace brackwell {

namespace {

using cbor::Major;
using Kind = ArchiveListItem::Kind;

/// Walks over an archive from its beginning to its end and tells whether KeyedArchiver can have written it,
/// byte for byte. What has passed can be read without another look at lengths.
class ArchiveCheck {
public:
    explicit ArchiveCheck(std::string_view archive) noexcept : rest_(archive) {}

    bool passes() {
        if (!takeMapHead()) return false;
        while (!maps_.empty()) {
            OpenMap& map = maps_.back();
            if (map.entriesLeft == 0) {
                maps_.pop_back();
                continue;
            }
            --map.entriesLeft;
            if (!takeKey(map) || !takeValue()) return false;
        }
        return rest_.empty();
    }

private:
    /// A map of which the beginning was seen. There are as many as objects inside each other; lists do not
    /// count, as nothing must be remembered of them.
    struct OpenMap {
        std::uint64_t entriesLeft = 0;
        std::string_view lastKey;  ///< as it is encoded; empty before the first key, which no encoded key is
    };

    bool takeMapHead() {
        const auto count = cbor::takeArgument(rest_, Major::map);
        if (!count || *count > rest_.size()) return false;
        maps_.push_back({*count, {}});
        return true;
    }

    /// A key that sorts after the one before it, by encoded bytes; so none occurs twice.
    bool takeKey(OpenMap& map) noexcept {
        const std::string_view start = rest_;
        if (!takeText()) return false;
        const std::string_view key = start.substr(0, start.size() - rest_.size());
        return std::exchange(map.lastKey, key) < key;
    }

    bool takeValue() {
        std::string_view afterHead = rest_;
        const auto head = cbor::takeHead(afterHead);
        if (!head) return false;
        switch (head->major) {
            case Major::unsignedInteger:
                rest_ = afterHead;
                return true;
            case Major::text:
                return takeText();
            case Major::array:
                return takeList();
            case Major::map:
                return takeMapHead();
            case Major::tag:
                return takeAsWritten(takeDate, appendDate) || takeAsWritten(takeDecimal, appendDecimal);
            case Major::negativeInteger:
            case Major::bytes:
                break;
        }
        return false;
    }

    bool takeText() noexcept {
        const auto text = cbor::takeString(rest_, Major::text);
        return text && isValidUTF8(*text);
    }

    /// A list of texts and lists.
    bool takeList() noexcept {
        std::uint64_t pending = 1;
        do {
            --pending;
            std::string_view afterHead = rest_;
            const auto head = cbor::takeHead(afterHead);
            if (!head) return false;
            if (head->major == Major::array) {
                rest_ = afterHead;
                // Each entry takes at least a byte; a count within the input's size cannot overflow.
                if (head->argument > rest_.size()) return false;
                pending += head->argument;
                if (pending > rest_.size()) return false;
            } else if (!takeText()) {
                return false;
            }
        } while (pending > 0);
        return true;
    }

    /// A value in the one form in which it is written.
    template <class Value>
    bool takeAsWritten(std::optional<Value> (*take)(std::string_view&) noexcept,
                       void (*append)(std::string&, const Value&)) {
        std::string_view after = rest_;
        const std::optional<Value> value = take(after);
        if (!value) return false;
        std::string written;
        append(written, *value);
        if (written != rest_.substr(0, rest_.size() - after.size())) return false;
        rest_ = after;
        return true;
    }

    std::string_view rest_;
    std::vector<OpenMap> maps_;
};

/// The order of keys in a map: that of their encoded bytes, of which the first ones tell the length.
bool comesBefore(std::string_view a, std::string_view b) noexcept {
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

}  // namespace

std::optional<KeyedUnarchiver> KeyedUnarchiver::open(Data data) {
    if (!ArchiveCheck(data.bytes()).passes()) return std::nullopt;
    const std::string_view map = data.bytes();
    return KeyedUnarchiver(std::move(data), map);
}

bool KeyedUnarchiver::contains(std::string_view key) const { return !valueOf(key).empty(); }

OptionalText KeyedUnarchiver::decodeText(std::string_view key) const {
    std::string_view value = valueOf(key);
    return cbor::takeString(value, Major::text);
}

std::optional<std::uint64_t> KeyedUnarchiver::decodeUnsigned(std::string_view key) const {
    std::string_view value = valueOf(key);
    return cbor::takeArgument(value, Major::unsignedInteger);
}

std::optional<Date> KeyedUnarchiver::decodeDate(std::string_view key) const {
    std::string_view value = valueOf(key);
    return takeDate(value);
}

std::optional<Decimal> KeyedUnarchiver::decodeDecimal(std::string_view key) const {
    std::string_view value = valueOf(key);
    return takeDecimal(value);
}

std::optional<std::vector<ArchiveListItem>> KeyedUnarchiver::decodeList(std::string_view key) const {
    std::string_view value = valueOf(key);
    const auto count = cbor::takeArgument(value, Major::array);
    if (!count) return std::nullopt;
    std::vector<ArchiveListItem> items;
    std::vector<std::uint64_t> entriesLeft = {*count};  // of the lists that have begun
    for (;;) {
        if (entriesLeft.back() == 0) {
            entriesLeft.pop_back();
            if (entriesLeft.empty()) return items;
            items.push_back({Kind::endList, {}, 0});
            continue;
        }
        --entriesLeft.back();
        std::string_view afterHead = value;
        if (const auto inner = cbor::takeArgument(afterHead, Major::array)) {
            value = afterHead;
            items.push_back({Kind::beginList, {}, 0});
            items.back().count = asSize(*inner);
            entriesLeft.push_back(*inner);
        } else {
            items.push_back({Kind::text, *cbor::takeString(value, Major::text), 0});
        }
    }
}

std::optional<KeyedUnarchiver> KeyedUnarchiver::decodeObject(std::string_view key) const {
    const std::string_view value = valueOf(key);
    std::string_view afterHead = value;
    if (!cbor::takeArgument(afterHead, Major::map)) return std::nullopt;
    return KeyedUnarchiver(data_, value);
}

KeyedUnarchiver::KeyedUnarchiver(Data data, std::string_view map) : data_(std::move(data)) {
    const std::uint64_t count = *cbor::takeArgument(map, Major::map);
    entries_.reserve(asSize(count));
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string_view key = *cbor::takeString(map, Major::text);
        const std::string_view start = map;
        cbor::skipItem(map);
        entries_.push_back({key, start.substr(0, start.size() - map.size())});
    }
}

std::string_view KeyedUnarchiver::valueOf(std::string_view key) const noexcept {
    const auto found = std::ranges::lower_bound(entries_, key, comesBefore, &Entry::key);
    return found == entries_.end() || found->key != key ? std::string_view() : found->value;
}

}  // namespace brackwell
