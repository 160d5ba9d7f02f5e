// SPDX-License-Identifier: Apache-2.0
#include "command_line/unknown_word.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <vector>

namespace tool {
namespace {

constexpr std::size_t kLongestCompared = 40;  ///< more than any name has

/// How many characters must be put in, taken out, changed or exchanged with the next one to make one word of
/// the other.
std::size_t typingDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast;
    std::vector<std::size_t> last(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::vector<std::size_t> row(b.size() + 1, i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, changed});
            const bool isExchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (isExchanged) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast = std::move(last);
        last = std::move(row);
    }
    return last.back();
}

/// The name that is most like a word; "" when none resembles it.
std::string nearestOf(const std::vector<std::string>& names, const std::string& word) {
    if (word.size() > kLongestCompared) return {};
    std::string nearest;
    std::size_t least = word.size() / 3 + 1;  // of which a third may be wrong
    for (const std::string& name : names)
        if (const std::size_t distance = typingDistance(word, name); distance < least) {
            nearest = name;
            least = distance;
        }
    return nearest;
}

std::vector<std::string> optionsOf(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    return names;
}

std::vector<std::string> commandsOf(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

/// What cannot be understood, what may be meant, and where to read on.
std::string sentenceOn(const char* kind, const std::string& word, const std::vector<std::string>& names,
                       const char* advice) {
    const std::string nearest = nearestOf(names, word);
    return std::string("unknown ") + kind + " \"" + word + "\"" +
           (nearest.empty() ? "" : "; \"" + nearest + "\" may be meant") + "\nRun with --help for " + advice +
           ".\n";
}

}  // namespace

std::string unknownOptionIn(const CLI::App& app) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    const CLI::App& command = commands.empty() ? app : *commands.front();
    for (const std::string& argument : app.remaining(true)) {
        if (argument == "--") break;
        if (argument.size() < 2 || !argument.starts_with('-')) continue;
        return sentenceOn("option", argument.substr(0, argument.find('=')), optionsOf(command),
                          "more information");
    }
    return {};
}

std::string unknownCommand(const CLI::App& app, const std::string& word) {
    return sentenceOn("command", word, commandsOf(app), "a list of the commands");
}

}  // namespace tool
