// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <doctest/doctest.h>

#include "support/value_text.h"

/// \file
/// Parse trees as text, so that a comparison that fails shows both sides.

namespace doctest {

template <>
struct StringMaker<brackwell::ParseValue> {
    static String convert(const brackwell::ParseValue& value);
};

template <>
struct StringMaker<brackwell::ParseDictionary> {
    static String convert(const brackwell::ParseDictionary& dictionary);
};

}  // namespace doctest
