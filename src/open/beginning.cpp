// SPDX-License-Identifier: Apache-2.0
#include "open/beginning.h"

#include <algorithm>
#include <cstddef>

#include "open/shown_text.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"
#include "text/byte_order_marks.h"
#include "text/comment_marks.h"
#include "text/size_until.h"

namespace brackwell::opening {
namespace {

using namespace std::string_view_literals;

/// A letter or digit of ASCII, which is neither white space nor a part of a byte order mark.
bool isPlain(char c) noexcept { return isASCIILetter(c) || digitValue(c) <= 9; }

/// True for a letter or digit, in whatever writing.
bool isInWord(char c) noexcept { return isPlain(c) || static_cast<unsigned char>(c) >= 0x80; }

/// A text without what stands around its words, such as white space, a byte order mark and zeros; empty when
/// it has no words.
std::string_view inked(std::string_view text) noexcept {
    if (!text.empty() && isPlain(text.front()) && isPlain(text.back())) return text;  // the usual case
    for (std::size_t size = text.npos; size != text.size();) {
        size = text.size();
        text = trimWhiteSpace(text);
        if (text.starts_with(kUTF8Mark)) text.remove_prefix(kUTF8Mark.size());
        while (!text.empty() && !isInWord(text.front())) text.remove_prefix(1);
        while (!text.empty() && !isInWord(text.back())) text.remove_suffix(1);
    }
    return text;
}

/// True for a line that the import reads as a field of a header.
bool isHeaderLine(std::string_view line) noexcept { return std::ranges::count(line, ':') == 1; }

/// The first line of a text that is not a field of a header; empty when there is none.
std::string_view firstOtherLine(std::string_view text) noexcept {
    while (!text.empty()) {
        const std::string_view line =
            text.substr(0, sizeUntil(text, [](char c) { return c == '\n' || c == '\r'; }));
        if (const std::string_view ink = inked(line); !ink.empty() && !isHeaderLine(ink)) return ink;
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return {};
}

/// The first text of a piece that stands in no tag, instruction or comment, as `firstIn` finds it.
template <class FirstIn>
std::string_view firstTextIn(std::string_view piece, FirstIn firstIn) {
    while (!piece.empty()) {
        const std::string_view between = piece.substr(0, piece.find('<'));
        if (const std::string_view text = firstIn(between); !text.empty()) return text;
        piece.remove_prefix(between.size());
        const std::string_view end = piece.starts_with(kCommentBegin) ? kCommentEnd : ">"sv;
        const std::size_t at = piece.find(end);
        piece.remove_prefix(at == piece.npos ? piece.size() : at + end.size());
    }
    return {};
}

void add(FindingList& findings, std::string_view document, std::size_t offset, std::string_view text) {
    constexpr std::size_t shown = 40;
    findings.add(FindingKind::textAround, FindingSeverity::note,
                 "Text before the beginning of the document is not part of it: " +
                     quotedUnlessSecret(document, offset, std::min(text.size(), shown), text) + ".",
                 1, offset);
}

}  // namespace

void findTextBefore(FindingList& findings, std::string_view text, const std::vector<RepairChange>& changes,
                    std::string_view readText, std::string_view name, const TreePlaces& places) {
    const auto dropped = std::ranges::find(changes, RepairKind::textBeforeDocument, &RepairChange::kind);
    if (dropped != changes.end()) {
        const std::string_view was = text.substr(dropped->offset, dropped->was.size());
        if (const std::string_view ink = firstTextIn(was, inked); !ink.empty())
            return add(findings, text, static_cast<std::size_t>(ink.data() - text.data()), ink);
    }
    if (name.empty()) return;
    const std::string_view front =
        readText.substr(0, static_cast<std::size_t>(name.data() - readText.data()) - 1);
    if (const std::string_view line = firstTextIn(front, firstOtherLine); !line.empty())
        add(findings, text, places.originalOffset(static_cast<std::size_t>(line.data() - readText.data())),
            line);
}

}  // namespace brackwell::opening
