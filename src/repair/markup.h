// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "elements/structure.h"
#include "repair/edit.h"
#include "tree/name_table.h"

namespace brackwell::repair {

/// A tag of a body. Places have 32 bits, as they have in a parse tree: the parser refuses longer texts, and
/// it is asked first. A repair takes more memory for tags than for all else, so they are no larger than need
/// be.
struct Tag {
    enum class Form : std::uint8_t { open, close, selfClosed };

    std::uint32_t begin;
    std::uint32_t end;
    std::uint32_t textBegin;  ///< where text follows, blanks aside
    reading::NameID name;     ///< as it should stand
    elements::Element element;
    Form form : 2;
    bool hasText : 1;  ///< text other than blanks follows, before the next tag
    RepairKind flaw;

    bool isClose() const noexcept { return form == Form::close; }
};
static_assert(sizeof(Tag) == 20);

/// How a document writes the names of its elements.
enum class NameCase : std::uint8_t {
    upper,  ///< so what has small letters may be no name
    mixed,  ///< its root is in capitals, but not all of its elements are
    lower,  ///< it has tags of "ofx", and none that opens "OFX"
};

/// What a body is made of, and what must be changed in it however its tags are nested.
struct Markup {
    NameCase nameCase;
    std::vector<Tag> tags;
    std::vector<Edit> edits;
};

/// Finds the tags of a body, with their names in capitals where they are in lower case; where the body
/// begins with its root, that says in which they are. Each name gets its number from the table, which may
/// own its characters.
Markup readMarkup(std::string_view body, bool beginsWithRoot, reading::NameTable& names);

/// True when this can stand in a tag as a name.
bool isName(std::string_view text) noexcept;

bool hasSmallLetter(std::string_view text) noexcept;

}  // namespace brackwell::repair
