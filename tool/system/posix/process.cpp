// SPDX-License-Identifier: Apache-2.0
#include "system/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace tool::system {

void prepareProcess() noexcept {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
}

std::vector<std::string> commandLine(int count, char** arguments) { return {arguments, arguments + count}; }

}  // namespace tool::system
