// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "console/messages.h"
#include "run.h"
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

void sayChange(const std::string& name, const brackwell::RepairChange& change, bool isSecret) {
    std::string what(describe(change.kind));
    if (isSecret)
        what += ": in a secret, which is not shown";
    else if (change.was.empty())
        what += ": put in " + quotation(change.now);
    else if (change.now.empty())
        what += ": dropped " + quotation(change.was);
    else
        what += ": " + quotation(change.was) + " becomes " + quotation(change.now);
    say(name + ":" + std::to_string(change.line) + ":" + std::to_string(change.column), what);
}

/// True for a tag of which nothing but the case was changed: a document that has one has many of them.
bool isCaseOnly(const brackwell::RepairChange& change) noexcept {
    return change.kind == brackwell::RepairKind::lowerCaseTag && change.was.size() == change.now.size();
}

/// All changes; of those of the case, how many there are.
void sayList(const std::string& name, const brackwell::OpenedDocument& document) {
    const auto& changes = document.changes();
    if (const auto count = std::ranges::count_if(changes, isCaseOnly); count > 0)
        say(name,
            std::to_string(count) + (count == 1 ? " tag in" : " tags in") + " lower case put into capitals");
    const auto secrets = brackwell::secretsInOFXText(document.text().bytes());
    for (const brackwell::RepairChange& change : changes)
        if (!isCaseOnly(change))
            sayChange(name, change, overlapsAny(secrets, {change.offset, change.offset + change.was.size()}));
}

void sayChanges(const std::string& name, const brackwell::OpenedDocument& document, bool asDiff) {
    if (asDiff)
        sayText(unifiedDiff(name, name + " (repaired)", std::string(document.text().bytes()),
                            document.changes()));
    else
        sayList(name, document);
}

/// Writes a document; on a terminal, so that it can be looked at.
void write(Output& output, std::string_view bytes) {
    if (output.isTerminal())
        output.write(visibleLines(bytes));
    else
        output.write(bytes);
}

/// Writes the document in the encoding that it came in.
void writeRepaired(Run& run, const brackwell::OpenedDocument& document) {
    if (document.changes().empty()) return write(run.output, document.bytes().bytes());
    // What the repair puts in is ASCII, which every encoding has.
    const brackwell::Data& text = document.readText();
    const auto bytes = brackwell::encodeText(text.bytes(), document.encoding());
    write(run.output, document.mark());
    write(run.output, bytes.value_or(text).bytes());
}

}  // namespace

bool runRepair(Run& run) {
    return forEachFile(run, [&run](const Document& document) {
        for (const brackwell::OpenedDocument& opened : document.file.documents()) {
            run.progress.end();
            if (!opened.changes().empty()) sayChanges(document.name, opened, run.options.asDiff);
            writeRepaired(run, opened);
        }
    });
}

}  // namespace tool
