// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

/// \file
/// What may stand where in a document, in a table of the tests' own: each element with the aggregates that it
/// may stand in, where the library has each aggregate with its children. So a mistake in the library's list,
/// or in what looks things up in it, does not pass for the standard.

namespace brackwell::tests {

/// How often an element may stand in an aggregate.
enum class Times { never, once, anyNumber };

/// What is not in the table may stand anywhere, and anything may stand in it.
Times timesIn(std::string_view child, std::string_view parent);

bool isKnownElement(std::string_view name);

/// True for what never has a text of its own.
bool isKnownAggregate(std::string_view name);

/// The known elements, but for the root.
std::vector<std::string_view> placedElements();

}  // namespace brackwell::tests
