// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "console/document_output.h"
#include "console/messages.h"
#include "input/run.h"
#include "text/diff.h"
#include "text/visible_text.h"

namespace tool {
namespace {

/// A part of a document in one short line.
std::string quotation(const std::string& text) {
    constexpr std::size_t longest = 60;
    std::string shown = visibleText(std::string_view(text).substr(0, 4 * longest));
    if (shown.size() > longest || text.size() > 4 * longest) {
        std::size_t end = std::min(longest, shown.size());
        while (end > 0 && end < shown.size() && (static_cast<unsigned char>(shown[end]) & 0xC0) == 0x80)
            --end;
        shown.replace(end, std::string::npos, "...");
    }
    return "\"" + shown + "\"";
}

/// Tells the changes of one document, without its secrets.
class ChangeList {
public:
    ChangeList(const std::string& name, const brackwell::OpenedDocument& document)
        : name_(name),
          changes_(document.changes()),
          secrets_(brackwell::secretsInOFXText(document.text().bytes())) {}

    void sayAll() const {
        for (const RepairChange& change : changes_) sayOne(change);
    }
    void sayGroups() const {
        for (const brackwell::RepairGroup& group : brackwell::summaryOf(changes_)) {
            const RepairChange& first = changes_[group.first];
            if (group.count == 1)
                sayOne(first);
            else
                sayAt(first, group.text + (group.text.starts_with("1 ") ? ": " : ", the first ") +
                                 (isSecret(first) ? "hidden, since it contains a secret"
                                                  : quotation(first.was.empty() ? first.now : first.was)));
        }
    }

private:
    using RepairChange = brackwell::RepairChange;

    /// What is moved may hold a secret where it is put in, too.
    bool isSecret(const RepairChange& change) const {
        return overlapsAny(secrets_, {change.offset, change.offset + change.was.size()}) ||
               !brackwell::secretsInOFXText(change.now).empty();
    }

    void sayOne(const RepairChange& change) const {
        std::string what(describe(change.kind));
        if (isSecret(change))
            what += ": hidden, since it contains a secret";
        else if (change.was.empty())
            what += ": inserted " + quotation(change.now);
        else if (change.now.empty())
            what += ": dropped " + quotation(change.was);
        else
            what += ": " + quotation(change.was) + " becomes " + quotation(change.now);
        sayAt(change, what);
    }
    void sayAt(const RepairChange& change, const std::string& what) const {
        say(name_ + ":" + std::to_string(change.line) + ":" + std::to_string(change.column),
            change.reason.empty() ? what : what + "; " + change.reason);
    }

    const std::string& name_;
    const std::vector<RepairChange>& changes_;
    std::vector<brackwell::TextRange> secrets_;
};

void sayChanges(const std::string& name, const brackwell::OpenedDocument& document, const Options& options) {
    if (options.asDiff)
        return sayText(unifiedDiff(name, name + " (repaired)", std::string(document.text().bytes()),
                                   document.changes()));
    const ChangeList list(name, document);
    if (options.listsEveryChange)
        list.sayAll();
    else
        list.sayGroups();
}

/// Writes the document in the encoding that it came in.
void writeRepaired(Run& run, const brackwell::OpenedDocument& document) {
    if (document.changes().empty()) return writeDocument(run.output, document.bytes().bytes());
    // What the repair puts in is ASCII, which every encoding has.
    const brackwell::Data& text = document.readText();
    const bool isUTF8 = document.encoding() == brackwell::TextEncodingUTF8 ||
                        document.encoding() == brackwell::TextEncodingASCII;
    writeDocument(run.output, document.mark());
    if (isUTF8) return writeDocument(run.output, text.bytes());
    const auto bytes = brackwell::encodeText(text.bytes(), document.encoding());
    writeDocument(run.output, bytes.value_or(text).bytes());
}

bool runRepair(Run& run) {
    return forEachFile(run, [&run](const InputFile& input) {
        for (const brackwell::OpenedDocument& opened : input.file.documents()) {
            if (!opened.changes().empty()) sayChanges(input.name, opened, run.options);
            writeRepaired(run, opened);
        }
    });
}

void declareRepairOptions(CLI::App& command, Options& options) {
    CLI::Option* diff =
        command.add_flag("--diff", options.asDiff, "Show what was changed as a diff instead of a list");
    command
        .add_flag("--all", options.listsEveryChange,
                  "List every change by itself, in the order of the document")
        ->excludes(diff);
}

constexpr const char* kRepairHelp =
    "Repairs missing, misspelt and crossed tags, and moves elements to where they belong; closes empty\n"
    "leaves, drops comments, unwraps CDATA sections, and changes tags in lower case to capitals. Values are\n"
    "not changed. The changes are listed on standard error, the most important first, with line, column and\n"
    "reason; of similar changes, the first with their number. A document that needs no repair is copied\n"
    "unchanged. The list does not show passwords, keys and cookies; the diff has the lines unchanged.\n"
    "With --force the output may also replace FILE itself.\n\n"
    "Examples:\n"
    "  brackwell repair july.ofx --output july-fixed.ofx\n"
    "  brackwell repair july.ofx --output july.ofx --force\n"
    "  brackwell repair --diff july.ofx --output /dev/null\n";

}  // namespace

constexpr Command commands::kRepair({
    .name = "repair",
    .summary = "The repaired document",
    .traits = kOneFile | kOutput | kMayReplaceItsFile,
    .help = kRepairHelp,
    .run = runRepair,
    .declareOptions = declareRepairOptions,
});

}  // namespace tool
