// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <string>
#include <utility>

namespace brackwell::python {

/// The text for the rest of the process, as descriptions of functions have to be.
inline const char* kept(std::string text) {
    static auto* texts = new std::deque<std::string>();
    return texts->emplace_back(std::move(text)).c_str();
}

}  // namespace brackwell::python
