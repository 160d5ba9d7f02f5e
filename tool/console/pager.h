// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <optional>
#include <string>

namespace tool {

/// The command for the shell that shows long texts in a terminal: BRACKWELL_PAGER, else PAGER, else less
/// where that is installed. None when it is empty or "cat", or when the terminal does not say what it is.
std::optional<std::string> wantedPager();

/// A program that a person reads a long text in. It gets the text through a pipe; the messages of this
/// program wait until it ends, since they would stand in the middle of the text. Interruptions are for the
/// pager, too, as long as it runs. Unless they are set, LESS is FRX (less ends by itself where the text fits
/// on the screen, and shows colours) and LV is -c.
class Pager {
public:
    /// Starts it; it has no descriptor when that fails.
    explicit Pager(const std::string& command);
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;
    ~Pager() { finish(); }

    /// Where the text is written to; -1 when it could not be started or is finished.
    int descriptor() const noexcept { return descriptor_; }

    /// Ends the text and waits until the person has read it. False when the pager could not be run.
    bool finish();

private:
    int process_ = -1;
    int descriptor_ = -1;
    bool wasRun_ = false;
    std::array<void (*)(int), 2> actions_{};  ///< before, of the signals that are the pager's
};

}  // namespace tool
