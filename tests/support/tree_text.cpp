// SPDX-License-Identifier: Apache-2.0
#include "support/tree_text.h"

namespace doctest {

using brackwell::tests::treeText;

String StringMaker<brackwell::ParseValue>::convert(const brackwell::ParseValue& value) {
    return treeText(value).c_str();
}

String StringMaker<brackwell::ParseDictionary>::convert(const brackwell::ParseDictionary& dictionary) {
    return treeText(dictionary).c_str();
}

}  // namespace doctest
