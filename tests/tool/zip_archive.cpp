// SPDX-License-Identifier: Apache-2.0
#include "tool/zip_archive.h"

#include <zlib.h>

#include <cstddef>
#include <stdexcept>

namespace brackwell::tests {
namespace {

void add(std::string& bytes, std::uint64_t number, std::size_t width) {
    for (; width > 0; --width, number >>= 8U) bytes += static_cast<char>(number & 0xFFU);
}

std::string deflated(const std::string& bytes) {
    z_stream stream{};
    if (deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
    std::string packed(deflateBound(&stream, bytes.size()), '\0');
    std::string copy = bytes;
    stream.next_in = reinterpret_cast<Bytef*>(copy.data());
    stream.avail_in = static_cast<uInt>(copy.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int status = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    if (status != Z_STREAM_END) throw std::runtime_error("not packed");
    return packed;
}

/// What an archive says of a member, in its two places.
struct Described {
    explicit Described(const ZipMember& wanted)
        : member(wanted),
          packed(wanted.method == 0 ? wanted.bytes : deflated(wanted.bytes)),
          size(wanted.bytes.size() + static_cast<std::uint64_t>(wanted.sizeError)) {
        const auto* begin = reinterpret_cast<const Bytef*>(wanted.bytes.data());
        checksum = static_cast<std::uint32_t>(crc32(0, begin, static_cast<uInt>(wanted.bytes.size()))) +
                   wanted.checksumError;
    }

    void addCommon(std::string& bytes, bool isInList) const {
        add(bytes, 20, 2);
        add(bytes, member.flags, 2);
        add(bytes, member.method, 2);
        add(bytes, 0, 4);
        add(bytes, checksum, 4);
        const bool isLong = member.isLong && isInList;
        add(bytes, isLong ? 0xFFFFFFFF : packed.size(), 4);
        add(bytes, isLong ? 0xFFFFFFFF : size, 4);
        add(bytes, member.name.size(), 2);
    }

    std::string inPlace() const {
        std::string bytes = "PK\x03\x04";
        addCommon(bytes, false);
        add(bytes, 0, 2);
        return bytes + member.name + packed;
    }

    std::string inList(std::uint64_t place) const {
        std::string bytes = "PK\x01\x02";
        add(bytes, 20U + 0x300U, 2);
        addCommon(bytes, true);
        add(bytes, member.isLong ? 28 : 0, 2);
        add(bytes, 0, 2 + 2 + 2);
        add(bytes, member.attributes, 4);
        add(bytes, member.isLong ? 0xFFFFFFFF : place, 4);
        bytes += member.name;
        if (!member.isLong) return bytes;
        add(bytes, 1, 2);
        add(bytes, 24, 2);
        for (const std::uint64_t number : {size, std::uint64_t{packed.size()}, place}) add(bytes, number, 8);
        return bytes;
    }

    ZipMember member;
    std::string packed;
    std::uint64_t size;
    std::uint32_t checksum;
};

std::string endOf(std::uint64_t place, std::uint64_t listSize, std::uint64_t count, const ZipEnd& end) {
    std::string bytes;
    if (end.isLong) {
        bytes = "PK\x06\x06";
        add(bytes, 44, 8);
        add(bytes, 45, 2 + 2);
        add(bytes, 0, 4 + 4);
        for (const std::uint64_t number : {count, count, listSize, place}) add(bytes, number, 8);
        bytes += "PK\x06\x07";
        add(bytes, 0, 4);
        add(bytes, place + listSize, 8);
        add(bytes, 1, 4);
    }
    bytes += "PK\x05\x06";
    add(bytes, end.disk, 2);
    add(bytes, 0, 2);
    for (int i = 0; i < 2; ++i) add(bytes, end.isLong ? 0xFFFF : count + end.countError, 2);
    add(bytes, end.isLong ? 0xFFFFFFFF : listSize, 4);
    add(bytes, end.isLong ? 0xFFFFFFFF : place, 4);
    add(bytes, end.comment.size(), 2);
    return bytes + end.comment;
}

}  // namespace

std::string zipOf(const std::vector<ZipMember>& members, const ZipEnd& end) {
    std::string bytes;
    std::string list;
    for (const ZipMember& member : members) {
        const Described described(member);
        list += described.inList(bytes.size());
        bytes += described.inPlace();
    }
    return bytes + list + endOf(bytes.size(), list.size(), members.size(), end);
}

std::string overlappingZip(const ZipMember& member, std::size_t count) {
    const Described described(member);
    const std::string bytes = described.inPlace();
    std::string list;
    for (std::size_t i = 0; i < count; ++i) list += described.inList(0);
    return bytes + list + endOf(bytes.size(), list.size(), count, {});
}

}  // namespace brackwell::tests
