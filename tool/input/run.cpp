// SPDX-License-Identifier: Apache-2.0
#include "input/run.h"

#include <algorithm>
#include <cstdint>
#include <new>

#include "console/messages.h"
#include "console/terminal.h"
#include "input/error_lines.h"
#include "system/descriptors.h"

namespace tool {

bool withEnoughMemory(Run& run, const std::string& name, const std::function<bool()>& work) {
    const std::uint64_t before = run.output.count();
    try {
        return work();
    } catch (const std::bad_alloc&) {
        if (run.output.count() != before) run.output.spoil();
        say(name, "There is not enough memory for this document.");
        return false;
    }
}

bool isWhollyRead(const brackwell::OpenedFile& file) {
    return file && std::ranges::all_of(file.documents(), [](const brackwell::OpenedDocument& document) {
               return static_cast<bool>(document);
           });
}

namespace {

/// "july.ofx:812:1", or the name alone where there is no one place.
std::string subjectOf(const std::string& name, std::size_t line, std::size_t column) {
    if (line == 0) return name;
    return name + ":" + std::to_string(line) + ":" + std::to_string(column);
}

/// A document that was not read is an error, also where the file has others.
void sayFindings(Run& run, const InputFile& input) {
    run.findings += input.file.findings().size();
    for (const brackwell::Finding& finding : input.file.findings())
        if (!run.options.isQuiet || finding.kind == brackwell::FindingKind::unreadDocument)
            say(subjectOf(input.name, finding.line, finding.column), finding.text);
}

void sayError(const InputFile& input) {
    const brackwell::OpenError& error = input.error();
    say(subjectOf(input.name, error.line, error.column), error.text);
    sayText(errorLines(input, terminalWidth(system::kStandardError)));
}

}  // namespace

bool forEachFile(Run& run, const UseOfFile& use, const UseOfFile& useUnread) {
    bool allRead = true;
    for (const InputSource& source : run.options.named.files) {
        const bool isRead = withEnoughMemory(run, source.name, [&] {
            const InputFile input = readFile(run, source);
            if (!input.file) {
                if (useUnread) useUnread(input);
                return false;
            }
            use(input);
            run.output.keep();
            return isWhollyRead(input.file);
        });
        allRead = allRead && isRead;
        if (!run.output.isGood()) break;
    }
    run.progress.finishReading();
    return allRead;
}

InputFile readFile(Run& run, const InputSource& source) {
    InputFile input = openInput(source, run.options.reading, run.progress);
    sayFindings(run, input);
    if (!input.file) sayError(input);
    return input;
}

}  // namespace tool
