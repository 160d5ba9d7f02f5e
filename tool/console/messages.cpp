// SPDX-License-Identifier: Apache-2.0
#include "console/messages.h"

#include <cstddef>
#include <cstdio>
#include <string>

#include "console/progress.h"
#include "system/descriptors.h"
#include "text/visible_text.h"

namespace tool {

namespace {

bool areMessagesHeld = false;

std::string& heldMessages() {
    static std::string messages;
    return messages;
}

/// What cannot be written here is told by the exit status.
void writeMessages(const std::string& lines) {
    if (lines.empty()) return;
    Progress::erase();
    std::fwrite(lines.data(), 1, lines.size(), stderr);
}

/// The text with a visible form of the subject wherever it repeats it.
std::string withVisibleSubject(std::string_view text, std::string_view subject, std::string_view visible) {
    std::string result;
    for (std::size_t found; (found = text.find(subject)) != text.npos && !subject.empty();) {
        result.append(text.substr(0, found)).append(visible);
        text.remove_prefix(found + subject.size());
    }
    return result.append(text);
}

}  // namespace

void say(std::string_view subject, std::string_view text) {
    // On a terminal, a line break in the name of a file must not begin what looks like a message of its own.
    const bool isTerminal = system::isTerminal(system::kStandardError);
    const std::string name = isTerminal ? visiblePart(subject) : std::string(subject);
    sayText(name + ": " + withVisibleSubject(text, subject, name) + "\n");
}

void sayText(std::string_view lines) {
    const std::string visible =
        system::isTerminal(system::kStandardError) ? visibleLines(lines) : std::string(lines);
    if (areMessagesHeld)
        heldMessages() += visible;
    else
        writeMessages(visible);
}

void holdMessages() noexcept { areMessagesHeld = system::isTerminal(system::kStandardError); }

void releaseMessages() {
    areMessagesHeld = false;
    writeMessages(heldMessages());
    heldMessages().clear();
}

bool areMessagesWritten() noexcept { return std::ferror(stderr) == 0; }

}  // namespace tool
