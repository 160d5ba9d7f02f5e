// SPDX-License-Identifier: Apache-2.0
#include "system/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tool::system {
namespace {

/// Lets large blocks go back to the system as soon as they are given back. The C library keeps more and more
/// of them otherwise, the larger the blocks were that it had to do with, and a large document then takes a
/// third of its size in memory that nobody uses.
void returnLargeBlocks() noexcept {
#ifdef __GLIBC__
    constexpr int kLargeBlock = 4 << 20;
    ::mallopt(M_MMAP_THRESHOLD, kLargeBlock);
#endif
}

}  // namespace

void prepareProcess() noexcept {
    returnLargeBlocks();
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
}

std::vector<std::string> commandLine(int count, char** arguments) { return {arguments, arguments + count}; }

}  // namespace tool::system
