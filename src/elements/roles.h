// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// \file
/// What the name of an element tells of its place among the answers of a server. It tells that of elements,
/// too, that the standard does not have.

namespace brackwell::elements {

/// True for a message set of answers, of whatever version: "BANKMSGSRSV1". It holds wrappers.
constexpr bool isMessageSet(std::string_view name) noexcept { return name.find("MSGSRSV") != name.npos; }

/// True for a transaction wrapper: "STMTTRNRS". It holds an identifier, a status and one response.
constexpr bool isWrapper(std::string_view name) noexcept { return name.ends_with("TRNRS"); }

/// True for a response: "STMTRS".
constexpr bool isResponse(std::string_view name) noexcept { return name.ends_with("RS") && !isWrapper(name); }

/// True for a response in a message set without its wrapper, which the standard does not have and the reader
/// takes.
constexpr bool isBareResponse(std::string_view name, std::string_view parent) noexcept {
    return isResponse(name) && isMessageSet(parent);
}

}  // namespace brackwell::elements
