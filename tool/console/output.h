// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tool {

class Progress;

/// Where a command's result goes: standard output or a file. Collects what is written and passes it
/// on in large pieces. The first failure is reported on standard error; what comes after it is dropped.
class Output {
public:
    /// Writes to the file of this name, which is created or emptied; to standard output when there is
    /// no name. The progress line is erased before anything is written to a terminal.
    Output(const std::string& fileName, Progress& progress);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output();

    void write(std::string_view text) {
        if (text.size() > kCapacity - size_) return spill(text);
        size_ += text.copy(buffer_.get() + size_, text.size());
    }
    void write(char character) {
        if (size_ == kCapacity) spill({});
        buffer_[size_++] = character;
    }

    /// False once anything could not be written, or the file could not be opened.
    bool isGood() const noexcept { return isGood_; }
    bool isTerminal() const noexcept { return isTerminal_; }
    int descriptor() const noexcept { return descriptor_; }

    /// Passes on what is left and closes; true when everything has arrived.
    bool close();

private:
    static constexpr std::size_t kCapacity = 1 << 16;

    void spill(std::string_view text);
    void passOn();
    void pass(std::string_view text);
    void fail();

    std::string name_;
    Progress& progress_;
    int descriptor_;
    bool isGood_ = true;
    bool isTerminal_ = false;
    std::unique_ptr<char[]> buffer_ = std::make_unique_for_overwrite<char[]>(kCapacity);
    std::size_t size_ = 0;  ///< how much of the buffer waits
};

}  // namespace tool
