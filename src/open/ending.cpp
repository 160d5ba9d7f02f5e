// SPDX-License-Identifier: Apache-2.0
#include "open/ending.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "open/shown_text.h"
#include "text/ascii_case.h"

namespace brackwell::opening {
namespace {

using namespace std::string_view_literals;

/// Where the last close tag of the root begins, in whatever case and with blanks in it; npos: there is none.
std::size_t findRootEnd(std::string_view text, std::string_view root) noexcept {
    constexpr std::size_t blanks = 8;  // allowed in the tag; a limit keeps the search linear
    std::size_t end = text.npos;       // of the tag: the first ">" after it, which many tags may share
    for (std::size_t at = text.rfind("</"), last = text.size(); at != text.npos;
         last = at, at = at == 0 ? text.npos : text.rfind("</", at - 1)) {
        const std::size_t nearer = text.substr(at, last - at).find('>');
        if (nearer != text.npos) end = at + nearer;
        const std::size_t size = std::min(root.size() + blanks, end - at - 2);
        if (equalsIgnoringCase(trimWhiteSpace(text.substr(at + 2, size)), root)) return at;
    }
    return text.npos;
}

constexpr std::string_view kUsualRoot = "OFX";

/// What old systems put after the end of a text: zero bytes, and Control-Z of CP/M and DOS.
constexpr std::string_view kEndOfFileMarks = "\0\x1A"sv;

std::string_view withoutMarks(std::string_view text) noexcept {
    text = trimWhiteSpace(text);
    while (!text.empty() && kEndOfFileMarks.find(text.back()) != text.npos)
        text = trimWhiteSpace(text.substr(0, text.size() - 1));
    return text;
}

void addCut(FindingList& findings, std::string_view text, std::string_view root) {
    const std::string_view whole = withoutMarks(text);
    const bool hasCloseTags = whole.find("</") != whole.npos;
    std::string sentence;
    if (!hasCloseTags) {
        sentence =
            "The document has no close tags, so a missing end cannot be detected. Check that its "
            "last transactions are there.";
    } else {
        sentence = "The document ends before its close tag </" + std::string(root) + ">: the rest is missing";
        const std::size_t tag = whole.rfind('<');
        const std::size_t close = whole.find('>', tag);
        if (close == whole.npos)
            sentence += ", and it ends inside a tag";
        else if (close + 1 < whole.size())
            sentence += ", and the last value, " + quoted(whole.substr(close + 1)) + ", may be incomplete";
        sentence += ". Download it again.";
    }
    findings.add(FindingKind::cutOff, hasCloseTags ? FindingSeverity::warning : FindingSeverity::note,
                 std::move(sentence), 1, whole.size());
}

}  // namespace

void findCutsAndMargins(FindingList& findings, std::string_view text, std::string_view root,
                        std::string_view readText, const TreePlaces& places) {
    const auto findEnd = [root](std::string_view where) {
        const std::size_t end = findRootEnd(where, kUsualRoot);
        return end == where.npos && root != kUsualRoot ? findRootEnd(where, root) : end;
    };
    std::size_t end = findEnd(text);
    if (end == text.npos) return addCut(findings, text, root);
    if (readText.data() != text.data()) end = findEnd(readText);
    if (end == readText.npos) return;
    const std::size_t after = std::min(readText.find('>', end), readText.size() - 1) + 1;
    if (const std::string_view rest = withoutMarks(readText.substr(after)); !rest.empty())
        findings.add(FindingKind::textAround, FindingSeverity::note,
                     "Text after the end of the document is not part of it: " + quoted(rest) + ".", 1,
                     places.originalOffset(static_cast<std::size_t>(rest.data() - readText.data())));
}

}  // namespace brackwell::opening
