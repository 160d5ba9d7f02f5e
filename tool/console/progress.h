// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace tool {

/// A line on standard error that tells what is being done and for how long, when that takes more than
/// half a second and standard error is a terminal. Otherwise nothing is written and no thread started.
class Progress {
public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { end(); }

    /// Work of this name begins.
    void begin(std::string_view work);
    /// From now on there is no line: something else has the terminal.
    void silence();
    /// The work is done, or other text is about to be written: the line is erased.
    void end();

private:
    void show(const std::string& work);

    bool isShown_;
    std::thread thread_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool isEnded_ = true;
};

}  // namespace tool
