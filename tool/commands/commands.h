// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "commands/command.h"

/// The commands, in the order of the help. For each, the source of its name in this folder defines the
/// constant kName. It is a macro since a name has to become a declaration and an entry of the table: so a
/// source without a line here does not compile, and a line without a source does not link.
#define TOOL_COMMANDS(COMMAND) \
    COMMAND(Show)              \
    COMMAND(Json)              \
    COMMAND(Csv)               \
    COMMAND(Report)            \
    COMMAND(Convert)           \
    COMMAND(Accounts)          \
    COMMAND(Duplicates)        \
    COMMAND(Payees)            \
    COMMAND(Check)             \
    COMMAND(Tree)              \
    COMMAND(Pretty)            \
    COMMAND(Repair)            \
    COMMAND(Anonymize)         \
    COMMAND(Request)

namespace tool::commands {

#define TOOL_DECLARE_COMMAND(NAME) extern const Command k##NAME;
TOOL_COMMANDS(TOOL_DECLARE_COMMAND)
#undef TOOL_DECLARE_COMMAND

/// All of them, in this order.
std::span<const Command* const> all() noexcept;

}  // namespace tool::commands
