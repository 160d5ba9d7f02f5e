// SPDX-License-Identifier: Apache-2.0
#include "system/descriptors.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tool::system {

bool isTerminal(int descriptor) noexcept { return ::isatty(descriptor) != 0; }

bool isPipe(int descriptor) noexcept {
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

std::size_t terminalColumns(int descriptor) noexcept {
    winsize size{};
    return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

int openForReading(const std::string& path) noexcept {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
}

std::ptrdiff_t readFrom(int descriptor, char* place, std::size_t room) noexcept {
    std::ptrdiff_t count = 0;
    do {
        count = ::read(descriptor, place, room);
    } while (count < 0 && errno == EINTR);
    return count;
}

bool seekTo(int descriptor, std::uint64_t place) noexcept {
    return ::lseek(descriptor, static_cast<off_t>(place), SEEK_SET) >= 0;
}

std::ptrdiff_t writeTo(int descriptor, std::string_view text) noexcept {
    for (;;) {
        const std::ptrdiff_t count = ::write(descriptor, text.data(), text.size());
        if (count >= 0 || (errno != EAGAIN && errno != EINTR)) return count;
        if (errno == EINTR) continue;
        pollfd waiting{descriptor, POLLOUT, 0};  // someone made it non-blocking
        ::poll(&waiting, 1, -1);
    }
}

bool closeDescriptor(int descriptor) noexcept { return ::close(descriptor) == 0 || errno == EINTR; }

}  // namespace tool::system
