// SPDX-License-Identifier: Apache-2.0
#include "repair/edit.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace brackwell::repair {
namespace {

/// Applies the edits of a second list to a text that is given in parts, as a first list has made it.
class Composer {
public:
    explicit Composer(const Edits& second) : second_(second) {}

    /// A part that the first list has kept: from `from` to `to` in the first text.
    void keep(std::size_t from, std::size_t to) {
        while (from < to) {
            if (beginsInsertion()) {
                insert(from);
                continue;
            }
            beginDrop();
            const std::size_t size = std::min(to - from, untilChange());
            if (dropped_ > 0) {
                drop(from, size);
            } else {
                isDropping_ = false;
            }
            advance(size);
            from += size;
        }
    }

    /// A part that the first list has changed.
    void change(Edit&& edit) {
        while (beginsInsertion()) insert(edit.offset);
        const bool isInside = isDropping_ && dropped_ > 0;
        std::string now;
        for (std::size_t at = 0; at < edit.now.size();) {
            if (beginsInsertion()) {
                now += second_[next_++].now;
                continue;
            }
            beginDrop();
            const std::size_t size = std::min(edit.now.size() - at, untilChange());
            if (dropped_ == 0) now.append(edit.now, at, size);
            now += std::exchange(instead_, {});
            advance(size);
            at += size;
        }
        edit.now = std::move(now);
        if (isInside && edit.now.empty() && isAfterDrop(edit.offset))
            edits_.back().size += edit.size;
        else if (edit.size > 0 || !edit.now.empty())
            edits_.push_back(std::move(edit));
    }

    Edits finish(std::size_t end) {
        while (next_ < second_.size()) insert(end);
        return std::move(edits_);
    }

private:
    bool beginsInsertion() const noexcept {
        return dropped_ == 0 && next_ < second_.size() && second_[next_].offset == at_ &&
               second_[next_].size == 0;
    }
    void insert(std::size_t offset) {
        const Edit& edit = second_[next_++];
        edits_.push_back({offset, 0, edit.kind, edit.now, edit.reason});
        isDropping_ = false;
    }

    /// Begins to drop what the next edit replaces, when it begins here.
    void beginDrop() {
        if (dropped_ > 0 || next_ == second_.size() || second_[next_].offset != at_) return;
        dropped_ = second_[next_].size;
        instead_ = second_[next_].now;
        isDropping_ = false;
        ++next_;
    }
    void drop(std::size_t offset, std::size_t size) {
        const Edit& edit = second_[next_ - 1];
        if (isDropping_ && isAfterDrop(offset))
            edits_.back().size += size;
        else
            edits_.push_back({offset, size, edit.kind, std::exchange(instead_, {}), edit.reason});
        isDropping_ = true;
    }
    bool isAfterDrop(std::size_t offset) const noexcept {
        return !edits_.empty() && edits_.back().offset + edits_.back().size == offset;
    }

    /// How far it is to where the next edit begins or the present one ends.
    std::size_t untilChange() const noexcept {
        if (dropped_ > 0) return dropped_;
        return next_ < second_.size() ? second_[next_].offset - at_ : std::numeric_limits<std::size_t>::max();
    }
    void advance(std::size_t size) noexcept {
        at_ += size;
        dropped_ -= std::min(dropped_, size);
    }

    const Edits& second_;
    std::size_t next_ = 0;     ///< in the second list
    std::size_t at_ = 0;       ///< in the text between the lists
    std::size_t dropped_ = 0;  ///< how much the edit before `next_` still drops
    std::string instead_;      ///< what it inserts, until that has been done
    bool isDropping_ = false;  ///< the last edit that was made belongs to it
    Edits edits_;
};

/// Leaves out edits that change nothing: alone, or two of which one drops what the other inserts again.
Edits withoutEffectless(std::string_view text, Edits edits) {
    Edits kept;
    kept.reserve(edits.size());
    for (Edit& edit : edits) {
        if (text.substr(edit.offset, edit.size) == edit.now) continue;
        if (!kept.empty()) {
            const Edit& last = kept.back();
            const std::size_t end = last.offset + last.size;
            if (end == edit.offset && last.size + edit.size == last.now.size() + edit.now.size() &&
                text.substr(last.offset, edit.offset + edit.size - last.offset) == last.now + edit.now) {
                kept.pop_back();
                continue;
            }
        }
        kept.push_back(std::move(edit));
    }
    return kept;
}

}  // namespace

Edits merged(Edits first, Edits second) {
    Edits edits;
    edits.reserve(first.size() + second.size());
    std::merge(std::make_move_iterator(first.begin()), std::make_move_iterator(first.end()),
               std::make_move_iterator(second.begin()), std::make_move_iterator(second.end()),
               std::back_inserter(edits), [](const Edit& a, const Edit& b) { return a.offset < b.offset; });
    return edits;
}

std::string applied(std::string_view text, const Edits& edits) {
    std::size_t size = text.size();
    for (const Edit& edit : edits) size = size - edit.size + edit.now.size();
    std::string result;
    result.reserve(size);  // a text that grows is there twice
    std::size_t done = 0;
    for (const Edit& edit : edits) {
        result.append(text, done, edit.offset - done).append(edit.now);
        done = edit.offset + edit.size;
    }
    return result.append(text, done);
}

Edits composed(std::string_view text, Edits first, const Edits& second) {
    if (second.empty()) return first;
    Composer composer(second);
    std::size_t done = 0;
    for (Edit& edit : first) {
        composer.keep(done, edit.offset);
        done = edit.offset + edit.size;
        composer.change(std::move(edit));
    }
    composer.keep(done, text.size());
    return withoutEffectless(text, composer.finish(text.size()));
}

std::string openTag(std::string_view name) { return std::string("<").append(name).append(">"); }
std::string closeTag(std::string_view name) { return std::string("</").append(name).append(">"); }

}  // namespace brackwell::repair
