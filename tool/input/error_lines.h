// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

#include "input/input_file.h"

namespace tool {

/// What a person should know of a file that was not read, besides what happened: where tags do not match both
/// places with the lines around them; the likely cause; and what to do. Lines that end in line feeds, no
/// wider than so many columns where they quote the document, without its secrets.
std::string errorLines(const InputFile& input, std::size_t width);

}  // namespace tool
