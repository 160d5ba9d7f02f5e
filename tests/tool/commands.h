// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/tool.h"

/// \file
/// The tool's commands, as its help tells them: a further one is tested without a word here.

namespace brackwell::tests {

/// What the help says of a command.
struct HelpedCommand {
    std::string name;
    std::string help;

    /// True when the help has this option: "--output".
    bool has(std::string_view option) const {
        return std::ranges::any_of(linesOf(help), [&](std::string_view line) {
            const std::string_view head = line.substr(0, 32);
            const std::size_t at = head.find(option);
            return line.starts_with("  -") && at != head.npos &&
                   (at + option.size() == head.size() || head[at + option.size()] == ' ');
        });
    }
    bool readsFiles() const { return contains(help, "\n  FILE "); }
    /// Into one output, which is what a command with a folder for its output does not do.
    bool takesSeveralFiles() const { return contains(help, "\n  FILE ... ") && !has("--into"); }
};

/// All commands, in the order of the help, which is asked once.
inline const std::vector<HelpedCommand>& helpedCommands() {
    static const std::vector<HelpedCommand> commands = [] {
        const std::string help = tool({"--help"}).output;
        const std::size_t begin = std::min(help.find("Subcommands:\n"), help.size());
        std::vector<HelpedCommand> found;
        for (const std::string& line : linesOf(help.substr(begin, help.find("\n\n", begin) - begin))) {
            if (!line.starts_with("  ")) continue;
            const std::string name = line.substr(2, line.find(' ', 2) - 2);
            found.push_back({name, tool({name, "--help"}).output});
        }
        return found;
    }();
    return commands;
}

/// The names of the commands that a condition is true of.
template <class Condition>
std::vector<std::string> commandsThat(const Condition& condition) {
    std::vector<std::string> names;
    for (const HelpedCommand& command : helpedCommands())
        if (std::invoke(condition, command)) names.push_back(command.name);
    return names;
}

/// Every command.
inline std::vector<std::string> allCommands() {
    return commandsThat([](const HelpedCommand&) { return true; });
}
/// Those that have this option.
inline std::vector<std::string> commandsWith(std::string_view option) {
    return commandsThat([&](const HelpedCommand& command) { return command.has(option); });
}
/// Those that read files.
inline std::vector<std::string> readingCommands() { return commandsThat(&HelpedCommand::readsFiles); }
/// Those that write something of what they read.
inline std::vector<std::string> writingCommands() {
    return commandsThat(
        [](const HelpedCommand& command) { return command.readsFiles() && command.has("--output"); });
}

/// False for a command that reads one file only.
inline bool takesSeveralFiles(const std::string& name) {
    return std::ranges::any_of(helpedCommands(), [&](const HelpedCommand& command) {
        return command.name == name && command.takesSeveralFiles();
    });
}

/// True when the help of a command has this option.
inline bool hasOption(const std::string& name, std::string_view option) {
    return std::ranges::count(commandsWith(option), name) != 0;
}

/// False for the command that writes something else each time.
inline bool isRepeatable(const std::string& name) { return name != "anonymize"; }

/// False for the command that takes files that cannot be read, too.
inline bool needsDocument(const std::string& name) { return name != "anonymize"; }

/// False for a reading command that does not write what each transaction of a document is for.
inline bool showsPayees(const std::string& name) {
    return name != "accounts" && name != "duplicates" && name != "check" && name != "anonymize";
}

/// A document of one transaction.
inline std::string paidTo(const std::string& payee) {
    return transactionsWith("<STMTTRN><TRNTYPE>POS<DTPOSTED>20240301<TRNAMT>-1<FITID>1<NAME>" + payee +
                            "</STMTTRN>");
}

/// The files that `json` writes of.
inline std::vector<std::string> filesIn(const std::string& output) {
    std::vector<std::string> files;
    for (const std::string& line : linesOf(output)) files.push_back(Json::parse(line).at("file"));
    return files;
}

}  // namespace brackwell::tests
