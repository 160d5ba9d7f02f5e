// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "memory/load_word.h"

namespace brackwell::opening {

/// Whether the identifiers of each statement rise or fall throughout. Most institutions count or begin with
/// the date; then all identifiers of a statement are different, and none has to be looked up.
class IdentifierOrder {
public:
    void beginStatement() noexcept { seen_ = Seen::none; }

    /// The next identifier of the statement.
    void add(std::string_view identifier) noexcept {
        const Key key = Key::of(identifier);
        if (seen_ == Seen::rising) [[likely]]
            inOrder_ = inOrder_ & last_.isBefore(key);
        else
            addToOther(key);
        last_ = key;
    }

    /// True when those of every statement so far are in order.
    bool areInOrder() const noexcept { return inOrder_; }

private:
    /// What identifiers are compared by: size, the first eight bytes, the last eight. Identifiers with
    /// different keys are different; those of more than 16 bytes may have one key and be different all the
    /// same.
    struct Key {
        std::size_t size = 0;
        std::uint64_t first = 0;
        std::uint64_t last = 0;

        static Key of(std::string_view text) noexcept {
            constexpr std::size_t wordSize = sizeof(std::uint64_t);
            if (text.size() >= wordSize)
                return {text.size(), loadOrderedWord(text.data()),
                        loadOrderedWord(text.data() + text.size() - wordSize)};
            std::uint64_t first = 0;
            for (const char c : text) first = first << 8U | static_cast<unsigned char>(c);
            return {text.size(), first, 0};
        }
        bool isBefore(const Key& other) const noexcept {
            if (size != other.size) return size < other.size;
            return first != other.first ? first < other.first : last < other.last;
        }
    };

    /// The identifiers of the statement so far.
    enum class Seen : std::uint8_t { none, one, rising, falling };

    void addToOther(const Key& key) noexcept {
        if (seen_ == Seen::one) seen_ = last_.isBefore(key) ? Seen::rising : Seen::falling;
        if (seen_ == Seen::falling) inOrder_ = inOrder_ && key.isBefore(last_);
        if (seen_ == Seen::none) seen_ = Seen::one;
    }

    Key last_;
    Seen seen_ = Seen::none;
    bool inOrder_ = true;
};

}  // namespace brackwell::opening
