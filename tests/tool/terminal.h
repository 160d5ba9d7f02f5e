// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tool/tool.h"

/// \file
/// The tool on a terminal.

namespace brackwell::tests {

/// False on a machine without terminals to run the tool on; ctest knows the message and counts the test
/// as skipped.
inline bool hasTerminals() {
    const std::string obstacle = obstacleToTerminals();
    if (!obstacle.empty()) MESSAGE("skipped: no pseudo terminal can be had here: ", obstacle);
    return obstacle.empty();
}

inline Finished onTerminal(std::vector<std::string> arguments,
                           std::map<std::string, std::string> environment = {}, unsigned short columns = 80) {
    Command command = toolCommand(std::move(arguments));
    command.environment = std::move(environment);
    return runOnTerminal(command, columns);
}

}  // namespace brackwell::tests
