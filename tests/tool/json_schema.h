// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "tool/tool.h"

namespace brackwell::tests {

/// Where a value differs from a JSON schema, and how: "/responses/3/class: is not among the values"; "" when
/// it does not. Knows the keywords that docs/json.schema.json uses; any other one is a difference as well.
std::string differenceFrom(const Json& schema, const Json& value);

}  // namespace brackwell::tests
