// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <optional>
#include <string>

#include "input/input_source.h"

namespace tool {

/// One file of the command line, opened.
struct InputFile {
    std::string name;  ///< as on the command line, or with an archive before it
    brackwell::OpenedFile file;
    std::optional<brackwell::OpenError> ownError = std::nullopt;  ///< why its bytes could not be had

    /// Why nothing was read; its code is none when something was.
    const brackwell::OpenError& error() const noexcept { return ownError ? *ownError : file.error(); }
};

class Progress;

/// Opens a file, one in an archive, or standard input, and tells how far that is.
InputFile openInput(const InputSource& source, const brackwell::OpenOptions& options, Progress& progress);

}  // namespace tool
