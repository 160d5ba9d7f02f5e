// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "console/output_file.h"
#include "console/pager.h"
#include "console/terminal.h"

namespace tool {

class Progress;

/// Where a command's result goes: standard output or a file. Collects what is written and passes it
/// on in large pieces. The first failure is reported on standard error; what comes after it is dropped.
///
/// A file gets its name only when it is closed, all was written and `keep` was called: what was there before
/// gives way to a result, not to what is left of one.
class Output {
public:
    /// Writes to the file of this name, and replaces an OFX document there only when that is said; to
    /// standard output when there is no name or it is "-". The progress line is erased before anything is
    /// written to a terminal.
    Output(const std::optional<std::string>& fileName, bool replacesDocuments, Progress& progress);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output();

    /// Lets a person read what is written in a pager, where it goes to a terminal, and one is wanted. It is
    /// started when there is something to read. Who quits it has read enough: that is no failure, though
    /// nothing more can be written.
    void usePager();
    void setColour(Colour colour) noexcept { colour_ = colour; }

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
    bool hasColour() const noexcept { return wantsColour(colour_, descriptor_); }
    /// The terminal, also where a pager stands between.
    int descriptor() const noexcept { return descriptor_; }

    /// How many bytes were written.
    std::uint64_t count() const noexcept { return passedOn_ + size_; }

    /// What is written is a result: a document was read, or none is needed.
    void keep() noexcept { isResult_ = true; }
    /// What is written lacks a part, as where a document ended in the middle.
    void spoil() noexcept { isSpoilt_ = true; }

    /// Passes on what is left and closes; true when everything has arrived where it belongs.
    bool close();

private:
    static constexpr std::size_t kCapacity = 1 << 16;

    void spill(std::string_view text);
    void passOn();
    void pass(std::string_view text);
    int startedDescriptor();
    bool closePager();
    void fail(std::string_view reason);
    bool isToBeDropped();

    std::optional<OutputFile> file_;  ///< none: standard output
    std::string name_;
    Progress& progress_;
    std::optional<std::string> pagerCommand_;  ///< of one that is wanted
    std::unique_ptr<Pager> pager_;             ///< that was started
    bool isQuit_ = false;                      ///< the pager reads no more
    Colour colour_ = Colour::automatic;
    int descriptor_ = 1;  ///< standard output
    bool isGood_ = true;
    bool isResult_ = false;
    bool isSpoilt_ = false;
    bool isTerminal_ = false;
    bool isPipe_ = false;
    std::unique_ptr<char[]> buffer_ = std::make_unique_for_overwrite<char[]>(kCapacity);
    std::size_t size_ = 0;        ///< how much of the buffer waits
    std::uint64_t passedOn_ = 0;  ///< what does not wait
};

}  // namespace tool
