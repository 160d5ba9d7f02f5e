// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/brackwell.h>

#include <cstddef>
#include <functional>
#include <string>

#include "command_line/options.h"
#include "console/output.h"
#include "console/progress.h"
#include "input/input_file.h"

namespace tool {

/// What a command works with.
struct Run {
    const Options& options;
    Output& output;
    Progress& progress;
    std::size_t findings = 0;  ///< how many were said, or would have been
};

/// Does the work on a file; where memory does not suffice, that is said, and the answer is false.
bool withEnoughMemory(Run& run, const std::string& name, const std::function<bool()>& work);

/// True when every document of a file was read.
bool isWhollyRead(const brackwell::OpenedFile& file);

using UseOfFile = std::function<void(const InputFile&)>;

/// Reads the files one after the other, says what is to be said of them, and hands on those of which
/// something was read; the others, too, where there is a use for them. False when there was another one, or
/// one that was not wholly read.
bool forEachFile(Run& run, const UseOfFile& use, const UseOfFile& useUnread = {});

/// Reads one file, with a progress line while it lasts, and says what is to be said of it: findings, or why
/// it was not read.
InputFile readFile(Run& run, const InputSource& source);

}  // namespace tool
