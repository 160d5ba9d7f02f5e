// SPDX-License-Identifier: Apache-2.0
#include "system/descriptors.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "system/windows/wide_text.h"

namespace tool::system {
namespace {

/// The system's calls take no more at once.
unsigned atMost(std::size_t size) noexcept {
    return static_cast<unsigned>(std::min<std::size_t>(size, 1 << 30));
}

}  // namespace

// The null device counts as a terminal for _isatty.
bool isTerminal(int descriptor) noexcept {
    DWORD mode = 0;
    return ::GetConsoleMode(reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor)), &mode) != 0;
}

bool isPipe(int descriptor) noexcept {
    return ::GetFileType(reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor))) == FILE_TYPE_PIPE;
}

std::size_t terminalColumns(int descriptor) noexcept {
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    const auto console = reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
    if (::GetConsoleScreenBufferInfo(console, &screen) == 0) return 0;
    const int columns = screen.srWindow.Right - screen.srWindow.Left + 1;
    return columns > 0 ? static_cast<std::size_t>(columns) : 0;
}

int openForReading(const std::string& path) noexcept {
    return ::_wopen(wide(path).c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}

std::ptrdiff_t readFrom(int descriptor, char* place, std::size_t room) noexcept {
    return ::_read(descriptor, place, atMost(room));
}

bool seekTo(int descriptor, std::uint64_t place) noexcept {
    return ::_lseeki64(descriptor, static_cast<__int64>(place), SEEK_SET) >= 0;
}

std::ptrdiff_t writeTo(int descriptor, std::string_view text) noexcept {
    return ::_write(descriptor, text.data(), atMost(text.size()));
}

bool closeDescriptor(int descriptor) noexcept { return ::_close(descriptor) == 0; }

}  // namespace tool::system
