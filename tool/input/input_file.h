// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <brackwell/open.h>

#include <string>

namespace tool {

/// One file of the command line, opened.
struct InputFile {
    std::string name;  ///< as on the command line
    brackwell::OpenedFile file;
};

class Progress;

/// Opens a file, or standard input for "-", and tells how far that is.
InputFile openInput(const std::string& name, const brackwell::OpenOptions& options, Progress& progress);

}  // namespace tool
