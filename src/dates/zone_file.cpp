// SPDX-License-Identifier: Apache-2.0
#include "dates/zone_file.h"

#include <brackwell/platform.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <string>
#include <utility>

#include "numbers/as_size.h"
#include "system/local_time.h"
#include "text/ascii_digit.h"

namespace brackwell {

namespace {

constexpr std::size_t kTypeSize = 6;  // four bytes of offset, the flag of daylight saving, an index

/// A big-endian number in two's complement.
std::int64_t signedNumber(std::string_view bytes) noexcept {
    const bool negative = !bytes.empty() && static_cast<signed char>(bytes.front()) < 0;
    std::int64_t value = negative ? -1 : 0;
    for (const char byte : bytes) value = value * 256 + static_cast<unsigned char>(byte);
    return value;
}

/// Takes parts off the beginning of a file. After a part that is longer than the rest, all are empty and the
/// whole is not good; so the callers check once, at the end.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) noexcept : rest_(bytes) {}

    bool isGood() const noexcept { return good_; }
    std::string_view rest() const noexcept { return rest_; }

    std::string_view take(std::uint64_t count) noexcept {
        good_ &= count <= rest_.size();
        if (!good_) return {};
        const std::string_view part = rest_.substr(0, asSize(count));
        rest_.remove_prefix(part.size());
        return part;
    }

    std::uint64_t count() noexcept { return static_cast<std::uint32_t>(signedNumber(take(4))); }

private:
    std::string_view rest_;
    bool good_ = true;
};

/// How many entries each part of a block has.
struct Header {
    char version = 0;
    std::uint64_t universalFlags = 0;
    std::uint64_t standardFlags = 0;
    std::uint64_t leapSeconds = 0;
    std::uint64_t changes = 0;
    std::uint64_t types = 0;
    std::uint64_t characters = 0;
};

std::optional<Header> takeHeader(Bytes& bytes) {
    constexpr std::size_t unused = 15;  // bytes that the format keeps for later
    const bool marked = bytes.take(4) == "TZif";
    const std::string_view version = bytes.take(1);
    bytes.take(unused);
    Header header;
    for (std::uint64_t* count : {&header.universalFlags, &header.standardFlags, &header.leapSeconds,
                                 &header.changes, &header.types, &header.characters})
        *count = bytes.count();
    if (!bytes.isGood() || !marked) return std::nullopt;
    header.version = version.front();
    return header;
}

/// The parts of a block with the clock changes.
struct Block {
    std::string_view times;
    std::string_view typeOfChange;
    std::string_view types;
    std::string_view characters;
};

Block takeBlock(Bytes& bytes, const Header& header, std::size_t timeSize) {
    Block block;
    block.times = bytes.take(header.changes * timeSize);
    block.typeOfChange = bytes.take(header.changes);
    block.types = bytes.take(header.types * kTypeSize);
    block.characters = bytes.take(header.characters);
    bytes.take(header.leapSeconds * (timeSize + 4));
    bytes.take(header.standardFlags);
    bytes.take(header.universalFlags);
    return block;
}

/// True for counts that the format allows. Leap seconds are refused: times with them do not count as POSIX
/// does.
bool countsFit(const Header& header) noexcept {
    const auto isFlagCount = [&header](std::uint64_t count) { return count == 0 || count == header.types; };
    return header.types > 0 && header.leapSeconds == 0 && isFlagCount(header.standardFlags) &&
           isFlagCount(header.universalFlags);
}

bool isLetterOrDigit(char character) noexcept {
    return digitValue(character) <= 9 || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

bool isAbbreviation(std::string_view text) noexcept {
    constexpr std::size_t longest = 255;  // far above all; keeps the types as small as the file
    return !text.empty() && text.size() <= longest && std::ranges::all_of(text, [](char character) {
        return isLetterOrDigit(character) || character == '+' || character == '-';
    });
}

std::optional<LocalTimeType> parseType(std::string_view bytes, std::string_view characters) {
    const std::int64_t fromUTC = signedNumber(bytes.substr(0, 4));
    const std::size_t begin = static_cast<unsigned char>(bytes[5]);
    if (fromUTC <= -kZoneOffsetLimit || fromUTC >= kZoneOffsetLimit) return std::nullopt;
    if (static_cast<unsigned char>(bytes[4]) > 1 || begin >= characters.size()) return std::nullopt;
    const std::size_t end = characters.find('\0', begin);
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view abbreviation = characters.substr(begin, end - begin);
    if (!isAbbreviation(abbreviation)) return std::nullopt;
    return LocalTimeType{static_cast<std::int32_t>(fromUTC), std::string(abbreviation)};
}

std::optional<ZoneFile> parseBlock(const Block& block, std::size_t timeSize) {
    ZoneFile file;
    for (std::size_t i = 0; i < block.types.size(); i += kTypeSize) {
        std::optional<LocalTimeType> type = parseType(block.types.substr(i, kTypeSize), block.characters);
        if (!type) return std::nullopt;
        file.types.push_back(std::move(*type));
    }
    file.changes.reserve(block.typeOfChange.size());
    for (std::size_t i = 0; i < block.typeOfChange.size(); ++i) {
        const std::int64_t time = signedNumber(block.times.substr(i * timeSize, timeSize));
        const auto type = static_cast<std::uint8_t>(block.typeOfChange[i]);
        // The lookup is a binary search.
        const bool ascends = file.changes.empty() || file.changes.back().time < time;
        if (!ascends || type >= file.types.size()) return std::nullopt;
        file.changes.push_back({time, type});
    }
    return file;
}

/// Takes the rule between two line feeds that ends the file; false when there is no such end.
bool takeRule(std::string_view text, ZoneFile& file) {
    if (text.size() < 2 || text.front() != '\n' || text.back() != '\n') return false;
    text = text.substr(1, text.size() - 2);
    if (text.empty()) return true;
    file.rule = ZoneRule::parse(text);
    return file.rule.has_value();
}

/// Names such as "Europe/Berlin" or "Etc/GMT+5". A name may come from outside, so it must not lead out of the
/// folder of zones.
bool isZoneName(std::string_view name) noexcept {
    const auto isPart = [](char character) {
        return isLetterOrDigit(character) ||
               std::string_view("_+-.").find(character) != std::string_view::npos;
    };
    char before = '/';
    for (const char character : name) {
        // No part is empty or begins with a dot; so none is "." or "..".
        if (before == '/' && (character == '/' || character == '.')) return false;
        if (character != '/' && !isPart(character)) return false;
        before = character;
    }
    return before != '/';
}

}  // namespace

const LocalTimeType& ZoneFile::typeAt(std::int64_t seconds) const noexcept {
    const auto next = std::ranges::upper_bound(changes, seconds, {}, &Change::time);
    if (next == changes.end() && rule) return rule->typeAt(seconds);
    return types[next == changes.begin() ? 0 : std::prev(next)->type];
}

std::optional<ZoneFile> parseZoneFile(std::string_view text) {
    Bytes bytes(text);
    std::size_t timeSize = 4;
    std::optional<Header> header = takeHeader(bytes);
    if (!header) return std::nullopt;
    const bool hasWideBlock = header->version >= '2' && header->version <= '9';
    if (!hasWideBlock && header->version != '\0') return std::nullopt;
    if (hasWideBlock) {
        // The first block is for old readers; the second has the same changes, and more, with 64 bits.
        takeBlock(bytes, *header, timeSize);
        timeSize = 8;
        header = takeHeader(bytes);
    }
    if (!header || !countsFit(*header)) return std::nullopt;
    const Block block = takeBlock(bytes, *header, timeSize);
    if (!bytes.isGood()) return std::nullopt;
    std::optional<ZoneFile> file = parseBlock(block, timeSize);
    if (!file) return std::nullopt;
    const bool endsRightly = hasWideBlock ? takeRule(bytes.rest(), *file) : bytes.rest().empty();
    if (!endsRightly) return std::nullopt;
    return file;
}

std::optional<ZoneFile> loadZoneFile(std::string_view name) {
    if (!isZoneName(name)) return std::nullopt;
    const char* folder = std::getenv("TZDIR");
    std::string path = folder != nullptr && *folder != '\0' ? folder : system::zoneFolder();
    path += '/';
    path += name;
    const std::optional<Data> data = Data::fromFile(path);
    if (!data) return std::nullopt;
    return parseZoneFile(data->bytes());
}

}  // namespace brackwell
