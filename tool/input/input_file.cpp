// SPDX-License-Identifier: Apache-2.0
#include "input/input_file.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

#include "console/progress.h"
#include "system/descriptors.h"

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

}  // namespace

InputFile openInput(const std::string& name, const brackwell::OpenOptions& options, Progress& progress) {
    progress.beginFile(name);
    if (name != "-") {
        InputFile input{name, brackwell::openFile(std::filesystem::path(name), options)};
        progress.addBytes(input.file.bytes().size());
        return input;
    }
    const std::optional<brackwell::Data> data = readStandardInput(progress);
    // What the system calls this descriptor cannot be read either, and the library says why.
    if (!data) return {name, brackwell::openFile(std::filesystem::path("/dev/stdin"), options)};
    return {name, brackwell::openData(*data, options)};
}

}  // namespace tool
