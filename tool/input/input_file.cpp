// SPDX-License-Identifier: Apache-2.0
#include "input/input_file.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

namespace tool {
namespace {

std::optional<brackwell::Data> readStandardInput() {
    std::string bytes;
    std::array<char, 1 << 16> piece;
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, piece.data(), piece.size());
        if (count == 0) return brackwell::Data::adopt(std::move(bytes));
        if (count > 0)
            bytes.append(piece.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return std::nullopt;
    }
}

}  // namespace

InputFile openInput(const std::string& name, const brackwell::OpenOptions& options) {
    if (name != "-") return {name, brackwell::openFile(std::filesystem::path(name), options)};
    const std::optional<brackwell::Data> data = readStandardInput();
    // What the system calls this descriptor cannot be read either, and the library says why.
    if (!data) return {name, brackwell::openFile(std::filesystem::path("/dev/stdin"), options)};
    return {name, brackwell::openData(*data, options)};
}

}  // namespace tool
