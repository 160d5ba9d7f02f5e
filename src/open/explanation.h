// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "open/parsing.h"

namespace brackwell::opening {

/// True when a repair puts the tags of a document into capitals.
bool isInLowerCase(const std::vector<RepairChange>& changes) noexcept;

/// Whether bytes that are no text are read in every encoding that is known, to name those in which they are a
/// document. That takes many times as long as all the rest.
enum class EncodingSearch : std::uint8_t { all, none };

/// What a repair would change in a text. It takes several times as long as reading, so it is done when
/// somebody asks, and once.
class RepairTrial {
public:
    /// Keeps the changes of a repair that was done for another reason.
    void keep(std::vector<RepairChange> changes) { changes_ = std::move(changes); }
    /// The changes; always of the same text.
    const std::vector<RepairChange>& changesOf(std::string_view text);

private:
    std::optional<std::vector<RepairChange>> changes_;
};

/// What a text is that reads, but has no OFX in it: a web page under a header of OFX, XML of another kind, a
/// document of OFX's forerunner. Its code is none when it is nothing of these.
OpenError errorOfOtherContent(std::string_view text, RepairTrial& repair);

/// Why a document was not read, in words for a person. `repair` is one of its text.
OpenError errorOf(const Parsed& parsed, const Data& bytes, RepairTrial& repair, const OpenOptions& options,
                  EncodingSearch search);

}  // namespace brackwell::opening
