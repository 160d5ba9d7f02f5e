// SPDX-License-Identifier: Apache-2.0
#include "console/progress.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <new>
#include <string_view>
#include <system_error>

#include "console/terminal.h"
#include "text/display_width.h"
#include "text/visible_text.h"

namespace tool {

Progress::Progress() : isShown_(isCapableTerminal(STDERR_FILENO)) {}

void Progress::begin(std::string_view work) {
    end();
    if (!isShown_) return;
    isEnded_ = false;
    try {
        thread_ = std::thread([this, name = visibleText(work)] {
            try {
                show(name);
            } catch (const std::bad_alloc&) {
                // The line ends here, the work goes on.
            }
        });
    } catch (const std::system_error&) {
        isEnded_ = true;  // the work is done without a line
    }
}

void Progress::silence() {
    end();
    isShown_ = false;
}

void Progress::end() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        isEnded_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

void Progress::show(const std::string& work) {
    using namespace std::chrono_literals;
    const auto start = std::chrono::steady_clock::now();
    bool isWritten = false;
    std::unique_lock lock(mutex_);
    while (!ended_.wait_for(lock, isWritten ? 250ms : 500ms, [this] { return isEnded_; })) {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        const std::string line = clipped(work, terminalWidth(STDERR_FILENO) - 10);
        std::fprintf(stderr, "\r%s %.1f s\x1b[K", line.c_str(), elapsed.count());
        std::fflush(stderr);
        isWritten = true;
    }
    if (!isWritten) return;
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
}

}  // namespace tool
