// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/statements.h>

namespace tool {

class TextPage;
struct Options;

/// Nothing for the statement of an account that is not wanted.
void showStatement(TextPage& page, const brackwell::TvOFXAccountStatement& statement, const Options& options);

}  // namespace tool
