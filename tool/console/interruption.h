// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <string>

/// \file
/// What happens to an unfinished file when somebody ends the program: Ctrl-C, kill, a terminal that is
/// closed.

namespace tool {

/// Holds back every signal for as long as it lives, so that none comes between making a file and
/// remembering it. To be used before other threads are started: they would still get the signal.
class SignalsHeld {
public:
    SignalsHeld() noexcept;
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;
    ~SignalsHeld();

private:
    alignas(std::max_align_t) std::array<std::byte, 128> before_{};  ///< the signals as the system keeps them
};

/// From here on a signal that ends the program removes this file first; the program still ends by that
/// signal. One file at a time. The path has at most PATH_MAX bytes, as one has that was opened. Signals that
/// the program was started to ignore, as by nohup, stay ignored.
void removeWhenInterrupted(const std::string& path) noexcept;

/// The file has its place, or is gone: nothing is removed any more.
void keepWhenInterrupted() noexcept;

}  // namespace tool
