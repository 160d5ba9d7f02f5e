// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace tool {

/// What is wrong with the first option of a command line that its command does not have, with the one that
/// may be meant; "" when there is none. To be asked after parsing: the parser says first that FILE is
/// missing, or counts a mistyped option's value as a file.
std::string unknownOptionIn(const CLI::App& app);

/// What is wrong with a word in the place of the command, with the command that may be meant.
std::string unknownCommand(const CLI::App& app, const std::string& word);

}  // namespace tool
