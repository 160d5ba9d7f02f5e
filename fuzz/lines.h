// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string_view>

namespace brackwell::fuzz {

/// Takes an input apart that consists of several: each is a line, and the last one all that is left.
class Lines {
public:
    explicit Lines(std::string_view bytes) noexcept : rest_(bytes) {}

    std::string_view next() noexcept {
        const std::size_t size = std::min(rest_.find('\n'), rest_.size());
        const std::string_view line = rest_.substr(0, size);
        rest_.remove_prefix(std::min(size + 1, rest_.size()));
        return line;
    }
    std::string_view rest() const noexcept { return rest_; }

private:
    std::string_view rest_;
};

}  // namespace brackwell::fuzz
