// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

#include "support/shown.h"

/// \file
/// Small trees for tests of the interpreter, and what it made of them as texts.

namespace brackwell::tests {

inline TvOFXInterpreter over(const std::optional<ParseDictionary>& tree) {
    return TvOFXInterpreter({{}, tree});
}

/// A tree with one message set.
inline ParseDictionary ofx(std::string_view messageSet, const ParseValue& content) {
    return {{"OFX", ParseDictionary{{messageSet, content}}}};
}

inline ParseDictionary status(const char* code, const char* severity = "INFO") {
    return {{"CODE", code}, {"SEVERITY", severity}};
}

/// The names of the responses' aggregates in their order.
inline std::string names(const TvOFXResponseList& responses) {
    std::string text;
    for (const auto& response : responses)
        text.append("[").append(shown(response->transactionWrapperName())).append("]");
    return text;
}

/// Their transaction identifiers.
inline std::string uids(const TvOFXResponseList& responses) {
    std::string text;
    for (const auto& response : responses)
        text.append("[").append(shown(response->transactionUID())).append("]");
    return text;
}

}  // namespace brackwell::tests
