// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

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
};

/// A document of that shape, as UTF-8.
std::string makeDocument(const Shape& shape);

/// The reply of an institution's profile with `realms` sign-on realms.
std::string makeProfile(std::size_t realms);

}  // namespace brackwell::benchmarks
