// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

namespace tool::commands {
namespace {

#define TOOL_ADDRESS_OF_COMMAND(NAME) &k##NAME,
constexpr const Command* kAll[] = {TOOL_COMMANDS(TOOL_ADDRESS_OF_COMMAND)};
#undef TOOL_ADDRESS_OF_COMMAND

}  // namespace

std::span<const Command* const> all() noexcept { return kAll; }

}  // namespace tool::commands
