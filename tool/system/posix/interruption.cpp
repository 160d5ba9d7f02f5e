// SPDX-License-Identifier: Apache-2.0
#include "console/interruption.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstring>

namespace tool {
namespace {

/// What ends a program from outside and can be caught. A write to a closed pipe or beyond a limit of size is
/// no signal here, but a write that fails.
constexpr std::array kEndingSignals = {SIGHUP,  SIGINT,  SIGQUIT, SIGTERM,   SIGXCPU,
                                       SIGUSR1, SIGUSR2, SIGALRM, SIGVTALRM, SIGPROF};

// A handler may run in any thread and at any time, so it reads memory that is never released.
std::array<char, PATH_MAX> pathToRemove{};
std::atomic<bool> isToBeRemoved{false};
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" {
/// Calls only what may be called in a handler. The signal, which is held back until the handler returns, then
/// ends the program as if there had been no handler.
void removeAndEnd(int signal) {
    if (isToBeRemoved) ::unlink(pathToRemove.data());
    static_cast<void>(std::signal(signal, SIG_DFL));
    static_cast<void>(std::raise(signal));
}
}

void handle(int signal) noexcept {
    struct sigaction action = {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
    action = {};
    action.sa_handler = removeAndEnd;
    ::sigfillset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

SignalsHeld::SignalsHeld() noexcept {
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    static_assert(sizeof before <= sizeof before_);
    std::memcpy(before_.data(), &before, sizeof before);
}

SignalsHeld::~SignalsHeld() {
    sigset_t before;
    std::memcpy(&before, before_.data(), sizeof before);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void removeWhenInterrupted(const std::string& path) noexcept {
    isToBeRemoved = false;
    const std::size_t size = path.copy(pathToRemove.data(), pathToRemove.size() - 1);
    pathToRemove[size] = '\0';
    isToBeRemoved = true;
    for (const int signal : kEndingSignals) handle(signal);
}

void keepWhenInterrupted() noexcept { isToBeRemoved = false; }

}  // namespace tool
