// SPDX-License-Identifier: Apache-2.0
#include "input/input_file.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

#include "console/progress.h"

namespace tool {
namespace {

std::optional<brackwell::Data> readStandardInput(Progress& progress) {
    std::string bytes;
    std::array<char, 1 << 16> piece;
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, piece.data(), piece.size());
        if (count == 0) return brackwell::Data::adopt(std::move(bytes));
        if (count < 0 && errno != EINTR) return std::nullopt;
        if (count < 0) continue;
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
