// SPDX-License-Identifier: Apache-2.0
#include "zip/member.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "zip/inflate.h"

namespace tool::zip {
namespace {

enum Method : unsigned { kStored = 0, kDeflated = 8 };

/// Where the bytes of a member begin: after its header, which repeats what the list of members has.
std::optional<std::uint64_t> dataOf(ArchiveFile& archive, const Member& member) {
    constexpr std::size_t size = 30;
    const std::string header = archive.read(member.place, size);
    if (!header.starts_with("PK\x03\x04")) return std::nullopt;
    return member.place + size + sizeIn(header, 26) + sizeIn(header, 28);
}

/// What is packed, piece by piece.
class PackedBytes {
public:
    PackedBytes(ArchiveFile& archive, std::uint64_t place, std::uint64_t size)
        : archive_(archive), place_(place), left_(size) {}

    /// Empty when there is no more, or less than there should be.
    std::string_view next() {
        constexpr std::uint64_t longest = 1U << 16U;
        const auto count = static_cast<std::size_t>(std::min(left_, longest));
        piece_ = archive_.read(place_, count);
        place_ += count;
        left_ -= count;
        return piece_;
    }

private:
    ArchiveFile& archive_;
    std::uint64_t place_;
    std::uint64_t left_;
    std::string piece_;
};

bool readStored(ArchiveFile& archive, const Member& member, std::uint64_t place, std::string& bytes) {
    return member.packedSize == member.size && archive.readInto(bytes.data(), place, bytes.size());
}

bool readDeflated(ArchiveFile& archive, const Member& member, std::uint64_t place, std::string& bytes) {
    const std::size_t wanted = bytes.size();
    PackedBytes packed(archive, place, member.packedSize);
    bytes.resize(wanted + 1);  // a member must not be longer than it says
    const Inflated inflated = inflate(bytes, [&packed] { return packed.next(); });
    bytes.resize(wanted);
    return wanted == member.size ? inflated.isEnd && inflated.size == wanted : inflated.size >= wanted;
}

}  // namespace

MemberBytes bytesOf(ArchiveFile& archive, const Member& member, std::size_t most) {
    if (member.isEncrypted) return {{}, MemberFault::encrypted};
    if (member.method != kStored && member.method != kDeflated) return {{}, MemberFault::unknownMethod};
    const std::optional<std::uint64_t> place = dataOf(archive, member);
    if (!place) return {{}, MemberFault::damaged};
    std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(member.size, most)), '\0');
    const auto& read = member.method == kStored ? readStored : readDeflated;
    const bool isSound = read(archive, member, *place, bytes) &&
                         (bytes.size() < member.size || checksumOf(bytes) == member.checksum);
    if (!isSound) return {{}, MemberFault::damaged};
    return {std::move(bytes), MemberFault::none};
}

}  // namespace tool::zip
