// SPDX-License-Identifier: Apache-2.0
#include "command_line/unknown_option.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <vector>

namespace tool {
namespace {

constexpr std::size_t kLongestCompared = 40;  ///< more than any option has

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

/// The option of a command that is most like a word; "" when none resembles it.
std::string nearestOption(const CLI::App& command, const std::string& word) {
    if (word.size() > kLongestCompared) return {};
    std::string nearest;
    std::size_t least = word.size() / 3 + 1;  // of which a third may be wrong
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            if (const std::size_t distance = typingDistance(word, "--" + name); distance < least) {
                nearest = "--" + name;
                least = distance;
            }
    return nearest;
}

}  // namespace

std::string unknownOptionIn(const CLI::App& app) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    const CLI::App& command = commands.empty() ? app : *commands.front();
    for (const std::string& argument : app.remaining(true)) {
        if (argument == "--") break;
        if (argument.size() < 2 || !argument.starts_with('-')) continue;
        const std::string word = argument.substr(0, argument.find('='));
        const std::string nearest = nearestOption(command, word);
        return "unknown option \"" + word + "\"" +
               (nearest.empty() ? "" : "; \"" + nearest + "\" may be meant") +
               "\nRun with --help for more information.\n";
    }
    return {};
}

}  // namespace tool
