// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command_line/options.h"
#include "command_line/wrapped_help.h"
#include "commands/command.h"
#include "console/memory.h"
#include "console/messages.h"
#include "console/terminal.h"
#include "input/run.h"
#include "system/process.h"

namespace {

constexpr int kWrongUsage = 2;
constexpr int kHasFindings = 3;  ///< the exit status of --strict

tool::CommandLine readWords(const std::vector<std::string>& words) {
    std::vector<const char*> pointers;
    std::ranges::transform(words, std::back_inserter(pointers), &std::string::c_str);
    return tool::readCommandLine(static_cast<int>(pointers.size()), pointers.data());
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

/// False when a folder or an archive could not be looked into or holds no document.
bool sayWhatIsNotRead(const tool::Options& options) {
    for (const tool::InputNote& error : options.named.errors) tool::say(error.subject, error.text);
    if (!options.isQuiet)
        for (const tool::InputNote& note : options.named.notes) tool::say(note.subject, note.text);
    return options.named.errors.empty();
}

int runCommand(const tool::Options& options) {
    const bool isAllSeen = sayWhatIsNotRead(options);
    if (!isAllSeen && options.named.files.empty()) return 1;
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
    if (options.command->readsFiles()) progress.expect(options.named.files);
    const bool isDone = output.isGood() && options.command->run(run);
    progress.end();
    if (!output.close() || !isDone || !isAllSeen || !tool::areMessagesWritten()) return 1;
    return options.isStrict && run.findings != 0 ? kHasFindings : 0;
}

}  // namespace

int main(int count, char** arguments) {
    tool::system::prepareProcess();
    const tool::CommandLine line = readWords(tool::system::commandLine(count, arguments));
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
