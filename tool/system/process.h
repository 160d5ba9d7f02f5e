// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace tool::system {

/// What a process sets up before anything else. The three standard descriptors are open, so that no file that
/// is opened later takes the place of one; what is written to a closed one still fails. Bytes go through them
/// as they are. A closed pipe, and a file that is larger than it may be, are failed writes like any other.
void prepareProcess() noexcept;

/// The command line in UTF-8, or in bytes where the system's names are bytes; the program's name first.
std::vector<std::string> commandLine(int count, char** arguments);

}  // namespace tool::system
