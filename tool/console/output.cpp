// SPDX-License-Identifier: Apache-2.0
#include "console/output.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <new>

#include "console/memory.h"
#include "console/messages.h"
#include "console/output_target.h"
#include "console/progress.h"
#include "system/descriptors.h"

namespace tool {

Output::Output(const std::optional<std::string>& fileName, bool replacesDocuments, Progress& progress)
    : name_(fileName.value_or("standard output")), progress_(progress) {
    if (fileName == kStandardOutput) {
        name_ = "standard output";
    } else if (fileName) {
        file_.emplace(*fileName, replacesDocuments);
        descriptor_ = file_->descriptor();
        if (descriptor_ < 0) fail(file_->problem());
    }
    isTerminal_ = system::isTerminal(descriptor_);
    isPipe_ = system::isPipe(descriptor_);
}

/// Without a call of `close` something has been thrown: a file keeps the content that it had.
Output::~Output() {
    if (file_ && !file_->isDirect()) return;
    try {
        close();
    } catch (const std::bad_alloc&) {
        sayThatMemoryIsExhausted();  // instead of what went wrong with the output
    }
}

void Output::usePager() {
    if (isTerminal_ && !file_) pagerCommand_ = wantedPager();
}

bool Output::close() {
    if (descriptor_ < 0) return isGood_ || isQuit_;
    passOn();
    if (!closePager()) fail("the pager \"" + *pagerCommand_ + "\" could not be run");
    descriptor_ = -1;
    if (!file_) {
        if (!system::closeDescriptor(system::kStandardOutput) && isGood_) fail(std::strerror(errno));
    } else if (isGood_ && isToBeDropped()) {
        fail("not written, since " + std::string(isSpoilt_ ? "a part is missing" : "no document was read"));
    } else if (isGood_ && !file_->finish()) {
        fail(file_->problem());
    }
    return isGood_ || isQuit_;
}

bool Output::isToBeDropped() { return !file_->isDirect() && (isSpoilt_ || !isResult_); }

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

/// Where to write: the pager is started for the first text.
int Output::startedDescriptor() {
    if (!pagerCommand_) return descriptor_;
    if (!pager_) {
        progress_.silence();
        pager_ = std::make_unique<Pager>(*pagerCommand_);
        if (pager_->descriptor() < 0) pagerCommand_.reset();  // without one, as it is
    }
    return pagerCommand_ ? pager_->descriptor() : descriptor_;
}

/// Waits for a pager that was started; false when it could not be run.
bool Output::closePager() {
    if (!pagerCommand_ || !pager_) return true;
    const bool wasRun = pager_->finish();
    if (!wasRun) isQuit_ = false;
    return wasRun;
}

void Output::pass(std::string_view text) {
    passedOn_ += text.size();
    if (text.empty()) return;
    if (isPipe_) progress_.silence();  // a pager may be at its end, and has the terminal from now on
    if (isTerminal_) Progress::erase();
    while (isGood_ && !text.empty()) {
        const std::ptrdiff_t written = system::writeTo(startedDescriptor(), text);
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EPIPE && pager_) {
            isGood_ = false;
            isQuit_ = true;
        } else {
            fail(std::strerror(errno));
        }
    }
}

void Output::fail(std::string_view reason) {
    isGood_ = false;
    say(name_, reason);
}

}  // namespace tool
