// SPDX-License-Identifier: Apache-2.0
#include "console/output.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "console/memory.h"
#include "console/messages.h"
#include "console/progress.h"

namespace tool {

Output::Output(const std::string& fileName, Progress& progress)
    : name_(fileName.empty() ? "standard output" : fileName),
      progress_(progress),
      descriptor_(fileName.empty()
                      ? STDOUT_FILENO
                      : ::open(fileName.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0) fail();
    isTerminal_ = ::isatty(descriptor_) != 0;
}

Output::~Output() {
    try {
        close();
    } catch (const std::bad_alloc&) {
        sayThatMemoryIsExhausted();  // instead of what went wrong with the output
    }
}

bool Output::close() {
    if (descriptor_ < 0) return isGood_;
    passOn();
    if (::close(descriptor_) != 0 && isGood_ && errno != EINTR) fail();
    descriptor_ = -1;
    return isGood_;
}

void Output::spill(std::string_view text) {
    passOn();
    if (text.size() > kCapacity)
        pass(text);
    else
        size_ = text.copy(buffer_.get(), text.size());
}

void Output::passOn() {
    pass({buffer_.get(), size_});
    size_ = 0;
}

void Output::pass(std::string_view text) {
    if (isTerminal_ && !text.empty()) progress_.end();
    while (isGood_ && !text.empty()) {
        const ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {  // someone made it non-blocking
            pollfd waiting{descriptor_, POLLOUT, 0};
            ::poll(&waiting, 1, -1);
        } else if (errno != EINTR) {
            fail();
        }
    }
}

void Output::fail() {
    const int reason = errno;
    isGood_ = false;
    progress_.end();
    say(name_, std::strerror(reason));
}

}  // namespace tool
