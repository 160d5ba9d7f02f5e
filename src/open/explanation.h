// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "open/parsing.h"

namespace brackwell::opening {

/// True when a repair puts the tags of a document into capitals.
bool isInLowerCase(const std::vector<RepairChange>& changes) noexcept;

/// Whether bytes that are no text are read in every encoding that is known, to name those in which they are a
/// document. That takes many times as long as all the rest.
enum class EncodingSearch : std::uint8_t { all, none };

/// What a text is that reads, but has no OFX in it: a web page under a header of OFX, XML of another kind, a
/// document of OFX's forerunner. Its code is none when it is nothing of these.
OpenError errorOfOtherContent(std::string_view text);

/// Why a document was not read, in words for a person. `text` is the decoded text, empty when there is none.
OpenError errorOf(const Parsed& parsed, const Data& bytes, std::string_view text, const OpenOptions& options,
                  EncodingSearch search);

}  // namespace brackwell::opening
