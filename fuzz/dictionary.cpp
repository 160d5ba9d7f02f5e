// SPDX-License-Identifier: Apache-2.0
#include <cstdio>

#include "elements/element_list.h"

/// \file
/// Prints the tags of all known elements as entries of a dictionary of libFuzzer; ofx.dict has what documents
/// are made of besides.

int main() {
    for (const brackwell::elements::ElementRow& row : brackwell::elements::kElementRows)
        if (row.isKnown) std::printf("\"<%s>\"\n", row.name.data());
    return std::ferror(stdout) != 0 ? 1 : 0;
}
