// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "console/memory.h"
#include "console/messages.h"
#include "run.h"

namespace {

struct Command {
    std::string_view name;
    bool (*run)(tool::Run&);
};

constexpr Command kCommands[] = {
    {"show", tool::runShow},       {"json", tool::runJson},         {"csv", tool::runCsv},
    {"report", tool::runReport},   {"accounts", tool::runAccounts}, {"duplicates", tool::runDuplicates},
    {"tree", tool::runTree},       {"pretty", tool::runPretty},     {"repair", tool::runRepair},
    {"request", tool::runRequest},
};

/// Makes sure that the three standard descriptors are open, so that no file that is opened later takes
/// the place of one. What is written to a closed one still fails.
void openStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

int runCommand(const tool::CommandLine& line) {
    tool::Progress progress;
    tool::Output output(line.options.outputFile, progress);
    tool::Run run{line.options, output, progress};
    bool isDone = line.exitStatus.has_value();
    output.write(line.text);
    if (!isDone && output.isGood())
        for (const Command& command : kCommands)
            if (command.name == line.options.command) isDone = command.run(run);
    progress.end();
    return output.close() && isDone ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
    openStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is a failed write like any other
    const tool::CommandLine line = tool::readCommandLine(count, arguments);
    tool::throwWhenMemoryIsExhausted();
    try {
        tool::sayText(line.error);
        if (line.exitStatus.value_or(0) != 0) return *line.exitStatus;
        return runCommand(line);
    } catch (const std::bad_alloc&) {
        tool::sayThatMemoryIsExhausted();
        return 1;
    }
}
