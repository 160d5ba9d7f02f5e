// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string>
#include <vector>

/// \file
/// The tool's commands that read files.

namespace brackwell::tests {

/// Those that write something of what they read.
inline const std::vector<std::string> kWritingCommands{"show",       "json", "csv",    "report", "accounts",
                                                       "duplicates", "tree", "pretty", "repair"};

/// Those, and the one that only says what it finds.
inline const std::vector<std::string> kReadingCommands = [] {
    std::vector<std::string> commands = kWritingCommands;
    commands.emplace_back("check");
    return commands;
}();

/// False for a command that reads one file only.
inline bool takesSeveralFiles(const std::string& command) {
    return command != "tree" && command != "pretty" && command != "repair";
}

}  // namespace brackwell::tests
