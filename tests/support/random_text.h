// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace brackwell::tests {

/// Texts made by chance, the same ones in every run.
class RandomText {
public:
    explicit RandomText(unsigned seed) : engine_(seed) {}

    /// A number from 0 to `count` - 1.
    std::size_t below(std::size_t count) { return engine_() % count; }

    /// True once in `count` times.
    bool once(std::size_t count) { return below(count) == 0; }

    template <class Choices>
    const auto& oneOf(const Choices& choices) {
        return choices[below(std::size(choices))];
    }

    /// This many pieces, one after the other.
    template <class Pieces>
    std::string soup(const Pieces& pieces, std::size_t count) {
        std::string text;
        while (count-- > 0) text += oneOf(pieces);
        return text;
    }

private:
    std::mt19937 engine_;
};

}  // namespace brackwell::tests
