// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "input/input_source.h"

/// \file
/// What the names of a command line stand for.

namespace tool {

/// A line for standard error: what it is about, and a sentence.
struct InputNote {
    std::string subject;
    std::string text;
};

/// The files of a command line, with documents in the places of folders and archives.
struct NamedFiles {
    std::vector<InputSource> files;
    std::vector<InputNote> notes;   ///< what was passed over
    std::vector<InputNote> errors;  ///< what has no document, or could not be looked into
};

/// How many files a command takes.
enum class FileCount : unsigned char {
    one,  ///< no folders, and archives only of one document
    any,
};

/// `results`, which may be "", is the folder that a command writes into: what stands there is no input unless
/// it is named.
NamedFiles namedFiles(const std::vector<std::string>& names, FileCount count,
                      const std::string& results = {});

}  // namespace tool
