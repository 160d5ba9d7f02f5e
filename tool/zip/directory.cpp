// SPDX-License-Identifier: Apache-2.0
#include "zip/directory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace tool::zip {
namespace {

/// Where the list is.
struct Listed {
    std::uint64_t count = 0;  ///< of its entries; of more than 65535 mostly what is left of them in 16 bits
    std::uint64_t size = 0;
    std::uint64_t place = 0;
    bool isPart = false;
};

/// A number that did not fit is all ones, and stands in a longer form elsewhere.
constexpr std::uint64_t kOnes16 = 0xFFFF;
constexpr std::uint64_t kOnes32 = 0xFFFFFFFF;

/// The long form of the end of an archive, which a record right before the short one leads to.
std::optional<Listed> longForm(ArchiveFile& archive, std::uint64_t end) {
    constexpr std::size_t size = 20;
    if (end < size) return std::nullopt;
    const std::string locator = archive.read(end - size, size);
    if (!locator.starts_with("PK\x06\x07")) return std::nullopt;
    const std::string record = archive.read(numberIn(locator, 8, 8), 56);
    if (!record.starts_with("PK\x06\x06")) return std::nullopt;
    return Listed{numberIn(record, 32, 8), numberIn(record, 40, 8), numberIn(record, 48, 8), false};
}

/// What the end of an archive says. A comment of any length up to 65535 bytes may follow it.
std::optional<Listed> listedIn(ArchiveFile& archive) {
    constexpr std::size_t size = 22;
    const auto tailSize = static_cast<std::size_t>(std::min(archive.size(), size + kOnes16));
    const std::string tail = archive.read(archive.size() - tailSize, tailSize);
    for (std::size_t at = tail.rfind("PK\x05\x06"); at != tail.npos;
         at = at == 0 ? tail.npos : tail.rfind("PK\x05\x06", at - 1)) {
        const std::string_view record = std::string_view(tail).substr(at);
        if (record.size() < size || record.size() - size < sizeIn(record, 20)) continue;
        const Listed listed{numberIn(record, 10, 2), numberIn(record, 12, 4), numberIn(record, 16, 4),
                            numberIn(record, 4, 2) != 0};
        const bool isLong = listed.count == kOnes16 || listed.size == kOnes32 || listed.place == kOnes32;
        const auto longListed = isLong ? longForm(archive, archive.size() - tailSize + at) : std::nullopt;
        return longListed.value_or(listed);
    }
    return std::nullopt;
}

/// Puts the numbers of a member right that did not fit, by one of the extra fields of its entry.
void takeLongNumbers(Member& member, std::string_view extra) {
    constexpr std::size_t head = 4;
    while (extra.size() >= head) {
        std::string_view field = extra.substr(head, sizeIn(extra, 2));
        if (sizeIn(extra, 0) == 1) {
            for (std::uint64_t* number : {&member.size, &member.packedSize, &member.place}) {
                if (*number != kOnes32 || field.size() < 8) continue;
                *number = numberIn(field, 0, 8);
                field.remove_prefix(8);
            }
            return;
        }
        extra.remove_prefix(head + field.size());
    }
}

/// True for what a system like Unix calls a symbolic link.
bool isLink(std::string_view record) noexcept {
    constexpr std::uint64_t unixSystem = 3;
    constexpr std::uint64_t kinds = 0170000;
    constexpr std::uint64_t link = 0120000;
    return numberIn(record, 5, 1) == unixSystem && (numberIn(record, 40, 2) & kinds) == link;
}

/// Takes the first entry off the list; nothing when there is none.
std::optional<Entry> takeEntry(std::string_view& list) {
    constexpr std::size_t head = 46;
    if (list.size() < head || !list.starts_with("PK\x01\x02")) return std::nullopt;
    const std::size_t nameSize = sizeIn(list, 28);
    const std::size_t extraSize = sizeIn(list, 30);
    const std::size_t size = head + nameSize + extraSize + sizeIn(list, 32);
    if (list.size() < size) return std::nullopt;
    Entry entry;
    entry.name = list.substr(head, nameSize);
    entry.isLink = isLink(list);
    entry.member = {numberIn(list, 42, 4),
                    numberIn(list, 20, 4),
                    numberIn(list, 24, 4),
                    static_cast<std::uint32_t>(numberIn(list, 16, 4)),
                    static_cast<unsigned>(numberIn(list, 10, 2)),
                    (numberIn(list, 8, 2) & 1U) != 0};
    takeLongNumbers(entry.member, list.substr(head + nameSize, extraSize));
    list.remove_prefix(size);
    return entry;
}

}  // namespace

Directory directoryOf(ArchiveFile& archive) {
    constexpr std::uint64_t longest = 1U << 28U;  // a million members and more
    const std::optional<Listed> listed = listedIn(archive);
    if (!listed) return {{}, DirectoryFault::damaged};
    if (listed->isPart) return {{}, DirectoryFault::isPart};
    if (listed->size > archive.size()) return {{}, DirectoryFault::damaged};
    if (listed->size > longest) return {{}, DirectoryFault::tooLong};
    const std::string bytes = archive.read(listed->place, static_cast<std::size_t>(listed->size));
    Directory directory;
    std::string_view list = bytes;
    while (std::optional<Entry> entry = takeEntry(list)) directory.entries.push_back(std::move(*entry));
    if (directory.entries.size() % (kOnes16 + 1) != listed->count % (kOnes16 + 1))
        return {{}, DirectoryFault::damaged};
    return directory;
}

}  // namespace tool::zip
