// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <string_view>

#include "platform/load_word.h"

namespace brackwell::opening {

/// Whether the identifiers of each statement rise or fall throughout. Most institutions count or begin with
/// the date; then all identifiers of a statement are different, and none has to be looked up.
class IdentifierOrder {
public:
    void beginStatement() noexcept { isFirst_ = rises_ = falls_ = true; }

    /// The next identifier of the statement.
    void add(std::string_view identifier) noexcept {
        const Key key = Key::of(identifier);
        if (!isFirst_) {
            const auto order = key <=> last_;
            rises_ = rises_ && order > 0;
            falls_ = falls_ && order < 0;
            inOrder_ = inOrder_ && (rises_ || falls_);
        }
        last_ = key;
        isFirst_ = false;
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
            Key key{text.size()};
            if (text.size() >= wordSize) {
                key.first = __builtin_bswap64(loadWord(text.data()));
                key.last = __builtin_bswap64(loadWord(text.data() + text.size() - wordSize));
            } else {
                for (const char c : text) key.first = key.first << 8U | static_cast<unsigned char>(c);
            }
            return key;
        }
        auto operator<=>(const Key&) const = default;
    };

    Key last_;
    bool isFirst_ = true;
    bool rises_ = true;
    bool falls_ = true;
    bool inOrder_ = true;
};

}  // namespace brackwell::opening
