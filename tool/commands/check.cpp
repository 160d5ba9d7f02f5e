// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include "input/run.h"

namespace tool {
namespace {

/// What is to be said of a file is said while it is read.
bool runCheck(Run& run) {
    return forEachFile(run, [](const InputFile&) {});
}

constexpr const char* kCheckHelp =
    "Findings go to standard error, a line each, as in every command; nothing else is written.\n"
    "With --strict the status is 3 when there is one.\n\n"
    "Examples:\n"
    "  brackwell check *.ofx\n"
    "  brackwell check --strict july.ofx && echo complete\n";

}  // namespace

constexpr Command commands::kCheck({
    .name = "check",
    .summary = "What the documents hold but the output lacks, or may have wrong",
    .traits = kSeveralFiles | kReading,
    .help = kCheckHelp,
    .run = runCheck,
});

}  // namespace tool
