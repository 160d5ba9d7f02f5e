// SPDX-License-Identifier: Apache-2.0
#include "console/progress.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <new>
#include <system_error>

#include "console/interruption.h"
#include "console/terminal.h"
#include "input/input_source.h"
#include "system/descriptors.h"
#include "text/display_width.h"
#include "text/visible_text.h"

namespace tool {
namespace {

using namespace std::chrono_literals;

constexpr auto kFirstLine = 2s;
constexpr auto kNextLine = 250ms;

/// The one that there is.
Progress* current = nullptr;

/// The size of all files; 0 when one has none, as standard input.
std::uint64_t sizeOf(const std::vector<InputSource>& files) {
    std::uint64_t size = 0;
    for (const InputSource& file : files) {
        if (file.name == "-") return 0;
        std::error_code error;  // which is said when the file is read
        const auto status = std::filesystem::status(file.path(), error);
        if (std::filesystem::is_other(status)) return 0;
        const std::uintmax_t own =
            file.isInArchive() ? file.member.size : std::filesystem::file_size(file.name, error);
        if (!error) size += own;
    }
    return size;
}

/// "12345" -> "12,345"
std::string grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t place = text.size(); place > 3;) text.insert(place -= 3, ",");
    return text;
}

struct ByteUnit {
    std::uint64_t size;
    const char* name;
};

const ByteUnit& unitOf(std::uint64_t bytes) {
    static constexpr std::array<ByteUnit, 4> kUnits{
        {{1'000'000'000, "GB"}, {1'000'000, "MB"}, {1'000, "kB"}, {1, "bytes"}}};
    for (const ByteUnit& unit : kUnits)
        if (bytes >= unit.size) return unit;
    return kUnits.back();
}

/// Gigabytes with a decimal, since they take longer.
std::string inUnit(std::uint64_t bytes, const ByteUnit& unit) {
    std::string text = std::to_string(bytes / unit.size);
    if (unit.size < 1'000'000'000) return text;
    return text + "." + std::to_string(bytes % unit.size / (unit.size / 10));
}

/// "12 of 310 MB", or "12 MB" where no more is known.
std::string bytesText(std::uint64_t bytes, std::uint64_t all) {
    const ByteUnit& unit = unitOf(std::max(bytes, all));
    const std::string total = bytes < all ? " of " + inUnit(all, unit) : "";
    return inUnit(bytes, unit) + total + " " + unit.name;
}

}  // namespace

Progress::Progress(bool isWanted) : isShown_(isWanted && isCapableTerminal(system::kStandardError)) {
    if (isShown_) current = this;
}

Progress::~Progress() {
    end();
    if (current == this) current = nullptr;
}

void Progress::expect(const std::vector<InputSource>& files) {
    if (!isShown_) return;
    files_ = &files;
    isEnded_ = false;
    try {
        const SignalsHeld held;  // signals are for the thread that works
        thread_ = std::thread([this] {
            try {
                run();
            } catch (const std::bad_alloc&) {
                // The line ends here, the work goes on.
            }
        });
    } catch (const std::system_error&) {
        isEnded_ = true;  // the work is done without a line
    }
}

void Progress::beginFile(const std::string& name) {
    if (!isShown_) return;
    const std::lock_guard lock(mutex_);
    name_ = name;
    ++begun_;
    isNews_ = true;
}

void Progress::finishReading() {
    if (!isShown_) return;
    const std::lock_guard lock(mutex_);
    name_.clear();
    isNews_ = true;
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
    eraseLine();
}

void Progress::erase() {
    if (current == nullptr) return;
    const std::lock_guard terminal(current->terminal_);
    const std::lock_guard lock(current->mutex_);
    current->isPaused_ = true;
    current->isNews_ = false;
    current->eraseLine();
}

void Progress::run() {
    const auto start = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    if (ended_.wait_for(lock, kFirstLine, [this] { return isEnded_; })) return;
    lock.unlock();
    allBytes_ = sizeOf(*files_);
    lock.lock();
    do {
        lock.unlock();
        const auto elapsed = std::chrono::steady_clock::now() - start;
        draw(static_cast<std::uint64_t>(std::chrono::floor<std::chrono::seconds>(elapsed).count()));
        lock.lock();
    } while (!ended_.wait_for(lock, kNextLine, [this] { return isEnded_; }));
}

void Progress::draw(std::uint64_t seconds) {
    const std::lock_guard terminal(terminal_);
    const std::string line = clipped(text(seconds), terminalWidth(system::kStandardError) - 1);
    if (isPaused_) return;
    std::fprintf(stderr, "\r%s\x1b[K", line.c_str());
    std::fflush(stderr);
    isDrawn_ = true;
}

void Progress::eraseLine() {
    if (!isDrawn_) return;
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
    isDrawn_ = false;
}

std::string Progress::text(std::uint64_t seconds) {
    const std::lock_guard lock(mutex_);
    if (isNews_) isPaused_ = false;
    const bool isOne = files_->size() == 1;
    // How much of one file was read is known only when all of it was, unless it comes piece by piece.
    const std::uint64_t bytes = isOne ? std::max(bytes_.load(), allBytes_) : bytes_.load();
    const std::string end = bytesText(bytes, allBytes_) + ", " + grouped(seconds) + " s";
    if (name_.empty()) return "Read " + (isOne ? "" : grouped(begun_) + " files, ") + end;
    const std::string count =
        isOne ? "" : "file " + grouped(begun_) + " of " + grouped(files_->size()) + ", ";
    return "Reading " + count + end + ": " + visibleText(name_ == "-" ? "standard input" : name_);
}

}  // namespace tool
