// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

namespace brackwell::benchmarks {

/// What a generated document looks like. Everything follows from these fields, so that two runs, or
/// two programs, see the same bytes.
struct Shape {
    bool version2 = true;           ///< OFX 2 (XML) or OFX 1 (SGML)
    std::size_t statements = 1;     ///< bank statements
    std::size_t transactions = 20;  ///< in each statement
    bool longMemos = false;         ///< memos of some 400 characters
    bool entities = false;          ///< an entity in every name and memo
    bool accents = false;           ///< letters that are not ASCII in every name
    std::size_t positions = 0;      ///< when any: an investment statement, and as many securities
    std::size_t realms = 0;         ///< when any: an institution's profile instead of statements
    TextEncoding encoding = TextEncodingUTF8;
};

/// A document of that shape: its bytes in its encoding, UTF-16 with a mark.
std::string makeDocument(const Shape& shape);

}  // namespace brackwell::benchmarks
