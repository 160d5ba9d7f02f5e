// SPDX-License-Identifier: Apache-2.0
#include "input/input_file.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

#include "console/progress.h"
#include "input/archives.h"
#include "system/descriptors.h"
#include "zip/inflate.h"

namespace tool {
namespace {

std::optional<brackwell::Data> readStandardInput(Progress& progress) {
    std::string bytes;
    std::array<char, 1 << 16> piece;
    for (;;) {
        const std::ptrdiff_t count = system::readFrom(system::kStandardInput, piece.data(), piece.size());
        if (count < 0) return std::nullopt;
        if (count == 0) return brackwell::Data::adopt(std::move(bytes));
        bytes.append(piece.data(), static_cast<std::size_t>(count));
        progress.addBytes(static_cast<std::size_t>(count));
    }
}

using brackwell::OpenError;
using brackwell::OpenErrorCode;

OpenError memberError(zip::MemberFault fault, const zip::Member& member) {
    OpenError error;
    error.code = OpenErrorCode::notReadable;
    if (fault == zip::MemberFault::encrypted) {
        error.code = OpenErrorCode::notPermitted;
        error.text = "In the archive this file is encrypted, and nobody is asked for a password.";
        error.remedy = "Unpack the archive with its password, and name the file.";
    } else if (fault == zip::MemberFault::unknownMethod) {
        error.text = "In the archive this file is packed by method " + std::to_string(member.method) +
                     ", and only 0 (stored) and 8 (deflated) are read.";
        error.remedy = "Unpack the archive, and name the file.";
    } else {
        error.text = "In the archive this file is damaged or cut off.";
        error.remedy = "Download the archive again.";
    }
    return error;
}

OpenError memberSizeError(const zip::Member& member) {
    OpenError error;
    error.code = OpenErrorCode::tooLarge;
    error.text = "Unpacked, this file has " + std::to_string(member.size) + " bytes, more than the " +
                 std::to_string(kLargestMember) + " that are read from an archive.";
    error.remedy = "Unpack the archive if you trust who made it, and name the file.";
    return error;
}

OpenError pipedArchiveError() {
    OpenError error;
    error.code = OpenErrorCode::otherFormat;
    error.text = "not an OFX document";
    error.cause = "It is a ZIP archive or an office document.";
    error.remedy = "Archives are read as files only: save this one, and name it.";
    return error;
}

InputFile unreadInput(const InputSource& source, OpenError error) {
    return {source.name, brackwell::openData({}), std::move(error)};
}

InputFile openMember(const InputSource& source, const brackwell::OpenOptions& options) {
    const zip::Member& member = source.member;
    if (member.size > kLargestMember) return unreadInput(source, memberSizeError(member));
    zip::ArchiveFile archive(source.archive);
    zip::MemberBytes read = zip::bytesOf(archive, member, kLargestMember);
    if (read.fault != zip::MemberFault::none) return unreadInput(source, memberError(read.fault, member));
    return {source.name, brackwell::openData(brackwell::Data::adopt(std::move(read.bytes)), options)};
}

InputFile openStandardInput(const InputSource& source, const brackwell::OpenOptions& options,
                            Progress& progress) {
    const std::optional<brackwell::Data> data = readStandardInput(progress);
    // What the system calls this descriptor cannot be read either, and the library says why.
    if (!data) return {source.name, brackwell::openFile(std::filesystem::path("/dev/stdin"), options)};
    if (zip::canInflate && beginLikeArchive(data->bytes())) return unreadInput(source, pipedArchiveError());
    return {source.name, brackwell::openData(*data, options)};
}

}  // namespace

InputFile openInput(const InputSource& source, const brackwell::OpenOptions& options, Progress& progress) {
    progress.beginFile(source.name);
    if (source.name == "-") return openStandardInput(source, options, progress);
    InputFile input =
        source.isInArchive()
            ? openMember(source, options)
            : InputFile{source.name, brackwell::openFile(std::filesystem::path(source.name), options)};
    progress.addBytes(input.file.bytes().size());
    return input;
}

}  // namespace tool
