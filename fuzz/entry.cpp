// SPDX-License-Identifier: Apache-2.0
#include "entry.h"

#include "target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const char* bytes = reinterpret_cast<const char*>(data);
    brackwell::fuzz::tryBytes(size == 0 ? std::string_view() : std::string_view(bytes, size));
    return 0;
}
