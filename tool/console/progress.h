// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tool {

struct InputSource;

/// A line on standard error that tells how far the work is, when that takes more than two seconds and
/// standard error is a terminal: "Reading file 7 of 120, 12 of 310 MB, 3 s: Downloads/july.ofx". A thread
/// draws it, four times a second; the work itself only sets a name and adds to numbers, and does not wait for
/// the terminal. Otherwise nothing is written and no thread started.
///
/// There is one of these at a time. The line is erased before a message or anything else is written to the
/// terminal, and comes back when there is more to tell.
class Progress {
public:
    explicit Progress(bool isWanted);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// These files are going to be read. They have to live until the end.
    void expect(const std::vector<InputSource>& files);
    /// One of them is being read.
    void beginFile(const std::string& name);
    /// So much of it was read.
    void addBytes(std::size_t count) noexcept { bytes_ += count; }
    /// All are read: what comes now is done with what is in them.
    void finishReading();
    /// From now on there is no line: something else has the terminal.
    void silence();
    /// The work is done.
    void end();

    /// Erases the line that stands on the terminal, if there is one, until there is something new to tell.
    static void erase();

private:
    void run();
    void draw(std::uint64_t seconds);
    void eraseLine();
    std::string text(std::uint64_t seconds);

    bool isShown_;
    const std::vector<InputSource>* files_ = nullptr;
    std::uint64_t allBytes_ = 0;  ///< of all files; 0 when that is not known
    std::thread thread_;

    std::mutex terminal_;   ///< what is written there
    bool isDrawn_ = false;  ///< the line stands there
    bool isPaused_ = true;  ///< nothing is told yet, or other text stands there

    std::atomic<std::uint64_t> bytes_ = 0;  ///< that were read
    std::mutex mutex_;                      ///< what follows
    std::string name_;                      ///< of the file that is being read; "" when all are read
    std::size_t begun_ = 0;                 ///< files
    bool isNews_ = false;                   ///< there is more to tell than when the line was erased
    bool isEnded_ = true;
    std::condition_variable ended_;
};

}  // namespace tool
