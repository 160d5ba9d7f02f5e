// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <new>
#include <optional>
#include <string_view>

#include "command_line/options.h"
#include "command_line/wrapped_help.h"
#include "commands/command.h"
#include "console/memory.h"
#include "console/messages.h"
#include "console/terminal.h"
#include "input/run.h"

namespace {

constexpr int kWrongUsage = 2;
constexpr int kHasFindings = 3;  ///< the exit status of --strict

/// Makes sure that the three standard descriptors are open, so that no file that is opened later takes
/// the place of one. What is written to a closed one still fails.
void openStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

/// Writes help or the version; a terminal gets it in a pager, and no word parted at its edge.
int writeText(std::string_view text) {
    tool::Progress progress(false);
    tool::Output output(std::nullopt, false, progress);
    output.usePager();
    if (output.isTerminal())
        output.write(tool::wrappedHelp(text, tool::terminalWidth(output.descriptor())));
    else
        output.write(text);
    return output.close() ? 0 : 1;
}

/// False when a folder could not be looked into or holds no document.
bool sayFolders(const tool::Options& options) {
    for (const tool::FolderNote& error : options.folderErrors) tool::say(error.subject, error.text);
    if (!options.isQuiet)
        for (const tool::FolderNote& note : options.folderNotes) tool::say(note.subject, note.text);
    return options.folderErrors.empty();
}

int runCommand(const tool::Options& options) {
    const bool areFoldersRead = sayFolders(options);
    if (!areFoldersRead && options.files.empty()) return 1;
    tool::Progress progress(!options.isQuiet);
    tool::Output output(options.outputFile, options.replacesDocuments, progress);
    output.setColour(options.colour);
    if (options.command->has(tool::kPage) && options.usesPager) output.usePager();
    if (options.command->has(tool::kForBrowser) && output.isTerminal() && !options.outputFile) {
        tool::say("standard output",
                  "This is a page for a browser: give it a file with --output report.html.");
        return kWrongUsage;
    }
    tool::Run run{options, output, progress};
    if (options.command->readsFiles()) progress.expect(options.files);
    const bool isDone = output.isGood() && options.command->run(run);
    progress.end();
    if (!output.close() || !isDone || !areFoldersRead || !tool::areMessagesWritten()) return 1;
    return options.isStrict && run.findings != 0 ? kHasFindings : 0;
}

}  // namespace

int main(int count, char** arguments) {
    openStandardDescriptors();
    // A closed pipe, and a file that is larger than it may be, are failed writes like any other.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
    const tool::CommandLine line = tool::readCommandLine(count, arguments);
    tool::throwWhenMemoryIsExhausted();
    try {
        tool::sayText(line.error);
        if (!line.exitStatus) return runCommand(line.options);
        return *line.exitStatus == 0 ? writeText(line.text) : *line.exitStatus;
    } catch (const std::bad_alloc&) {
        tool::sayThatMemoryIsExhausted();
        return 1;
    }
}
