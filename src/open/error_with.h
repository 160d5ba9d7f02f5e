// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <string>
#include <utility>

namespace brackwell::opening {

/// An error without a place.
inline OpenError errorWith(OpenErrorCode code, std::string text, std::string cause = {},
                           std::string remedy = {}) {
    OpenError error;
    error.code = code;
    error.text = std::move(text);
    error.cause = std::move(cause);
    error.remedy = std::move(remedy);
    return error;
}

}  // namespace brackwell::opening
