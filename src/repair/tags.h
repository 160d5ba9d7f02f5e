// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "repair/edit.h"

namespace brackwell::repair {

/// What must be changed in a body so that the parser takes its tags for what they are meant to be: what they
/// look like, and how they are nested.
Edits tagEdits(std::string_view body);

}  // namespace brackwell::repair
