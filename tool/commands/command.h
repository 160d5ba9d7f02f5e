// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace CLI {
class App;
}

namespace tool {

struct Options;
struct Run;

/// What a command takes on the command line besides options of its own.
enum Trait : unsigned {
    kOneFile = 1,             ///< a file to read, with --encoding, --quiet and --strict
    kSeveralFiles = 2,        ///< the same of one file or more
    kReading = 4,             ///< how amounts and dates are read, and --as-is
    kFilter = 8,              ///< the options that choose transactions
    kNumbers = 16,            ///< --full
    kOutput = 32,             ///< --output and --force
    kMayReplaceItsFile = 64,  ///< with --force the output may be the file that is read
    kPage = 128,              ///< a page for people: --color and --no-pager
    kForBrowser = 256,        ///< a page that says nothing on a terminal
};

/// What is known of a command.
struct CommandRow {
    std::string_view name;
    const char* summary = nullptr;  ///< a line for the list of commands
    unsigned traits = 0;
    const char* help = nullptr;  ///< what its own help ends with: what is to know, and examples
    /// Does it; false when one of its files could not be read.
    bool (*run)(Run& run) = nullptr;
    /// Declares the options of its own; null when it has none.
    void (*declareOptions)(CLI::App& command, Options& options) = nullptr;
    /// Throws a CLI::ValidationError when options are wrong only together; null when they cannot be.
    void (*check)(const Options& options) = nullptr;
};

/// A row that lacks nothing: one without a function does not compile.
struct Command : CommandRow {
    consteval explicit Command(const CommandRow& row) : CommandRow(row) {
        if (row.name.empty() || row.summary == nullptr) throw "a command has no name or summary";
        if (row.help == nullptr) throw "a command has no help";
        if (row.run == nullptr) throw "a command has no function";
    }

    constexpr bool has(Trait trait) const noexcept { return (traits & trait) != 0; }
    constexpr bool readsFiles() const noexcept { return has(kOneFile) || has(kSeveralFiles); }
};

}  // namespace tool
