// SPDX-License-Identifier: Apache-2.0
#include "run.h"

#include <unistd.h>

#include <algorithm>

#include "console/messages.h"
#include "console/terminal.h"
#include "explain/explanation.h"

namespace tool {

bool withEnoughMemory(Run& run, const std::string& name, const std::function<bool()>& work) {
    const std::uint64_t before = run.output.count();
    try {
        return work();
    } catch (const std::bad_alloc&) {
        if (run.output.count() != before) run.output.spoil();
        run.progress.end();
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
void sayFindings(Run& run, const Document& document) {
    run.findings += document.file.findings().size();
    for (const brackwell::Finding& finding : document.file.findings())
        if (!run.options.isQuiet || finding.kind == brackwell::FindingKind::unreadDocument)
            say(subjectOf(document.name, finding.line, finding.column), finding.text);
}

void sayError(const Document& document) {
    const brackwell::OpenError& error = document.file.error();
    say(subjectOf(document.name, error.line, error.column), error.text);
    sayText(explain(document.file, terminalWidth(STDERR_FILENO)));
}

}  // namespace

bool forEachFile(Run& run, const std::function<void(const Document&)>& use) {
    bool allRead = true;
    for (const std::string& name : run.options.files) {
        const bool isRead = withEnoughMemory(run, name, [&] {
            const Document document = readFile(run, name);
            if (!document.file) return false;
            use(document);
            run.output.keep();
            return isWhollyRead(document.file);
        });
        allRead = allRead && isRead;
        run.progress.end();
        if (!run.output.isGood()) break;
    }
    return allRead;
}

Document readFile(Run& run, const std::string& name) {
    run.progress.begin("Reading " + (name == "-" ? "standard input" : name));
    Document document = readDocument(name, run.options.reading);
    if (document.file && document.file.findings().empty()) return document;
    run.progress.end();
    sayFindings(run, document);
    if (!document.file) sayError(document);
    return document;
}

}  // namespace tool
