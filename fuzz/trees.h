// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/model.h>

namespace brackwell::fuzz {

/// True when the text of a tree is read as the same tree: no leaf is repeated, and neither a name nor a
/// text has a character of markup. (The source text of a transaction has, and so is not plain.)
bool isPlain(const ParseDictionary& tree);

/// The names and texts of a tree that was read from this source are slices of it, but for those that
/// held entities.
void requireSlices(const ParseDictionary& tree, std::string_view source);

/// What holds for every tree whose texts are UTF-8: it is equal to itself and to its copies, and comes back
/// from an archive.
void requireSound(const ParseDictionary& tree);

/// What holds besides for the tree of a body: it comes back from its text when it is plain. (Values of
/// headers may begin and end with white space.)
void requireReadable(const ParseDictionary& tree);

}  // namespace brackwell::fuzz
