// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brackwell::tests {

/// What may become of the bytes of a document on its way: cut off, damaged here and there, without some of
/// its brackets, in wide characters of either byte order. The same on every machine, for which nothing may
/// depend on the order of its bytes, as UTF-16 without a mark does.
std::vector<std::string> variantsOf(std::string_view bytes);

}  // namespace brackwell::tests
