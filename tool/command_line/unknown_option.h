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

}  // namespace tool
