// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/repair.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brackwell::repair {

/// A change whose place is an offset only.
struct Edit {
    std::size_t offset = 0;
    std::size_t size = 0;  ///< of what stood there
    RepairKind kind = RepairKind::comment;
    std::string now;
    std::string reason;
};

/// Edits in the order of their places, without overlap. What is put in at the same place stands in the order
/// of the list, and before what is changed there.
using Edits = std::vector<Edit>;

/// Two lists for one text as one. At the same place those of the first come first.
Edits merged(Edits first, Edits second);

/// The text that edits make of a text.
std::string applied(std::string_view text, const Edits& edits);

/// Two lists as one, of which the second is for the text that the first makes. An edit of the second that
/// changes what the first has put in becomes one with it, and vanishes when both undo each other.
Edits composed(std::string_view text, Edits first, const Edits& second);

/// "<NAME>" and "</NAME>".
std::string openTag(std::string_view name);
std::string closeTag(std::string_view name);

}  // namespace brackwell::repair
