// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "tree/document.h"

namespace brackwell::opening {

/// Where the elements of a tree stand in the text as it came, before a repair.
class TreePlaces {
public:
    /// Both must outlive this object.
    TreePlaces(const reading::Document& document, const std::vector<RepairChange>& changes);

    /// The offset of an element's open tag, or of the first text after it where the tag is not found near it;
    /// nothing when no text follows.
    std::optional<std::size_t> offsetOf(std::uint32_t node) const;
    /// The offset before the repair of an offset after it.
    std::size_t originalOffset(std::size_t offset) const noexcept;

private:
    const reading::Document& document_;
    const std::vector<RepairChange>& changes_;
    std::vector<std::size_t> begins_;  ///< of each change, where it begins after the repair
};

}  // namespace brackwell::opening
