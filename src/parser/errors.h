// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/platform.h>

#include <string>
#include <utility>

namespace brackwell::reading {

inline constexpr const char* kParserError = "OFX Parser Error";
inline constexpr const char* kImportError = "Error importing file.";

/// Fills the caller's error place, if there is one.
inline void report(Error* place, const char* failureReason, std::string description) {
    if (place != nullptr) *place = {"Brackwell", 1, std::move(description), failureReason};
}

}  // namespace brackwell::reading
