// SPDX-License-Identifier: Apache-2.0
#include "repair/front.h"

#include <algorithm>
#include <array>

#include "elements/structure.h"
#include "platform/ascii_case.h"
#include "repair/markup.h"

namespace brackwell::repair {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kHeaderBegin = "OFXHEADER:";
constexpr std::string_view kCommentBegin = "<!--";
constexpr std::string_view kCommentEnd = "-->";

bool isBlank(char c) noexcept { return kBlanks.find(c) != std::string_view::npos; }

/// Where the first tag begins that is "<OFX>" but for blanks or attributes, or but for its case, too. One
/// with another tag after it comes before one that is only mentioned in a text.
std::size_t findLooseOFXTag(std::string_view text, NameCase nameCase) noexcept {
    constexpr std::string_view begin = "<OFX"sv;
    std::size_t mentioned = std::string_view::npos;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const std::string_view here = text.substr(at, begin.size());
        if (nameCase == NameCase::upper ? here != begin : !equalsIgnoringCase(here, begin)) continue;
        const std::size_t end = text.find_first_of("<>", at + 1);
        if (end == std::string_view::npos) break;
        const std::string_view after = text.substr(at + begin.size(), end - at - begin.size());
        const bool isTag = trimWhiteSpace(after).empty() ||
                           (isBlank(after.front()) && after.find('=') != std::string_view::npos);
        if (text[end] == '<' || !isTag) continue;
        const std::size_t next = text.find_first_not_of(kBlanks, end + 1);
        if (next != std::string_view::npos && text[next] == '<') return at;
        mentioned = std::min(mentioned, at);
    }
    return mentioned;
}

/// True for the aggregates that a document without its root may begin with: message sets, wrappers,
/// responses and lists.
bool beginsRootlessDocument(std::string_view name) noexcept {
    constexpr auto ends = std::to_array<std::string_view>({"RS", "RSV1", "RSV2", "LIST"});
    return std::ranges::any_of(ends, [name](std::string_view end) { return name.ends_with(end); }) &&
           elements::isAggregate(elements::findElement(name));
}

/// Where the first tag begins that only an OFX document has, with another tag after it.
std::size_t findRootlessDocument(std::string_view text) noexcept {
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const std::size_t end = text.find_first_of("<>", at + 1);
        if (end == std::string_view::npos) break;
        if (text[end] == '<' || !beginsRootlessDocument(trimWhiteSpace(text.substr(at + 1, end - at - 1))))
            continue;
        const std::size_t next = text.find_first_not_of(kBlanks, end + 1);
        if (next != std::string_view::npos && text[next] == '<') return at;
    }
    return std::string_view::npos;
}

/// Where the first element of a document begins, whatever its header is; npos: there is none.
std::size_t findFirstElement(std::string_view text) noexcept {
    std::size_t first = findLooseOFXTag(text, NameCase::upper);
    if (first == std::string_view::npos) first = findLooseOFXTag(text, NameCase::lower);
    return std::min(first, findRootlessDocument(text));
}

// ---------------------------------------------------------------------------------------------
// Headers of OFX 1

constexpr auto kFields =
    std::to_array<std::string_view>({"OFXHEADER:", "DATA:", "VERSION:", "SECURITY:", "ENCODING:", "CHARSET:",
                                     "COMPRESSION:", "OLDFILEUID:", "NEWFILEUID:"});

/// Where the next field of a header begins at or after a place; the end when there is none.
std::size_t findField(std::string_view header, std::size_t from) noexcept {
    for (std::size_t colon = header.find(':', from); colon != std::string_view::npos;
         colon = header.find(':', colon + 1)) {
        const std::string_view before = header.substr(from, colon + 1 - from);
        const auto* const field =
            std::ranges::find_if(kFields, [before](std::string_view name) { return before.ends_with(name); });
        if (field != kFields.end()) return colon + 1 - field->size();
    }
    return header.size();
}

bool beginsLine(std::string_view header, std::size_t at) noexcept {
    while (at > 0 && (header[at - 1] == ' ' || header[at - 1] == '\t')) --at;
    return at == 0 || header[at - 1] == '\n' || header[at - 1] == '\r';
}

constexpr std::string_view kHides = "it hides fields of the header";

/// The next place of something that is looked for from places further and further on: each part of the text
/// is searched once.
template <class Find>
class NextPlace {
public:
    explicit NextPlace(Find find) : find_(find) {}

    std::size_t from(std::size_t at) {
        if (!isSearched_ || place_ < at) place_ = find_(at);
        isSearched_ = true;
        return place_;
    }

private:
    Find find_;
    std::size_t place_ = 0;
    bool isSearched_ = false;
};

/// Takes the marks of comments away from around fields, and comments without fields. A comment that began
/// before the header may be open.
void dropComments(std::string_view header, std::size_t base, bool isOpen, Edits& edits) {
    const auto drop = [&](std::size_t at, std::size_t size, std::string reason) {
        edits.push_back({base + at, size, RepairKind::comment, {}, std::move(reason)});
    };
    NextPlace closes(
        [header](std::size_t at) { return std::min(header.find(kCommentEnd, at), header.size()); });
    NextPlace fields([header](std::size_t at) { return findField(header, at); });
    for (std::size_t at = 0; at < header.size();) {
        if (header.substr(at).starts_with(kCommentBegin)) {
            const std::size_t close = closes.from(at + kCommentBegin.size());
            if (close == header.size() || fields.from(at) < close) {
                drop(at, kCommentBegin.size(), std::string(kHides));
                isOpen = true;
                at += kCommentBegin.size();
            } else {
                drop(at, close + kCommentEnd.size() - at, "a header has no comments");
                at = close + kCommentEnd.size();
            }
        } else if (isOpen && header.substr(at).starts_with(kCommentEnd)) {
            drop(at, kCommentEnd.size(), std::string(kHides));
            isOpen = false;
            at += kCommentEnd.size();
        } else {
            ++at;
        }
    }
}

/// Gives each field a line of its own.
void breakLines(std::string_view header, std::size_t base, Edits& edits) {
    std::size_t before = findField(header, 0);
    while (before < header.size()) {
        const std::size_t field = findField(header, header.find(':', before) + 1);
        if (field == header.size()) break;
        if (!beginsLine(header, field)) {
            std::size_t end = field;
            while (end > 0 && isBlank(header[end - 1])) --end;
            edits.push_back(
                {base + end, field - end, RepairKind::header, "\n", "a line of a header holds one field"});
        }
        before = field;
    }
}

Edits sgmlHeaderEdits(std::string_view header, std::size_t base, bool isInComment) {
    Edits comments;
    if (isInComment || header.find("<!--"sv) != std::string_view::npos)
        dropComments(header, base, isInComment, comments);
    Edits lines;
    breakLines(header, base, lines);
    return merged(std::move(comments), std::move(lines));
}

// ---------------------------------------------------------------------------------------------
// Headers of OFX 2

bool isXMLDeclaration(std::string_view text) noexcept {
    return text.starts_with("<?xml"sv) || text.starts_with("<?XML"sv);
}

/// Without its instruction the import takes the whole document for a header.
Edits xmlHeaderEdits(std::string_view text, std::size_t base) {
    if (!isXMLDeclaration(text)) return {};
    if (text.find("<?OFX"sv) != std::string_view::npos || findFirstElement(text) == std::string_view::npos)
        return {};
    const std::size_t next = text.find('<', 1);
    const std::size_t end = text.find("?>"sv);
    const bool hasEnd = end < next;
    return {{base + (hasEnd ? end + 2 : next), 0, RepairKind::header,
             std::string(hasEnd ? "" : "?>") + "<?OFX OFXHEADER=\"200\"?>",
             "without this instruction nothing is found in a document that begins with <?xml"}};
}

/// The first field of a header that lacks its first line; npos: there is none.
std::size_t findPartOfHeader(std::string_view front) noexcept {
    std::size_t done = 0;
    for (std::size_t at = findField(front, 0); at < front.size(); at = findField(front, done)) {
        const std::string_view before = trimWhiteSpace(front.substr(done, at - done));
        if (beginsLine(front, at) || before.ends_with(kCommentBegin)) return at;
        done = front.find(':', at) + 1;
    }
    return std::string_view::npos;
}

/// Where what the import recognises begins in a text: after a byte order mark and white space.
std::size_t recognisedBegin(std::string_view text) noexcept {
    constexpr std::string_view mark = "\xEF\xBB\xBF"sv;
    const std::string_view document = trimWhiteSpace(text.substr(text.starts_with(mark) ? mark.size() : 0));
    return static_cast<std::size_t>(document.data() - text.data());
}

}  // namespace

Front findFront(std::string_view text) {
    Front front;
    const std::size_t element = findFirstElement(text);
    std::size_t begin = element;
    // A header stands in front of the root; the same words after it are part of a value.
    for (const std::string_view first : {kHeaderBegin, "<?xml"sv, "<?XML"sv, "<?OFX"sv})
        begin = std::min(begin, text.find(first));
    if (begin == std::string_view::npos) return front;
    front.isDocument = true;
    const std::string_view header = text.substr(0, element);
    const std::size_t part = begin == element ? findPartOfHeader(header) : std::string_view::npos;
    front.begin = std::min(begin, part);
    std::string_view before = trimWhiteSpace(text.substr(0, front.begin));
    const bool isInComment = before.ends_with(kCommentBegin) && front.begin < element;
    if (isInComment) before = trimWhiteSpace(before.substr(0, before.size() - kCommentBegin.size()));
    const std::size_t comment = isInComment ? text.rfind(kCommentBegin, front.begin) : front.begin;
    if (!before.empty())
        front.edits.push_back({0,
                               comment,
                               RepairKind::textBeforeDocument,
                               {},
                               "a document is recognised by what it begins with"});
    if (isInComment)
        front.edits.push_back({comment, front.begin - comment, RepairKind::comment, {}, std::string(kHides)});
    if (part != std::string_view::npos)
        front.edits.push_back(
            {front.begin, 0, RepairKind::header, "OFXHEADER:100\n", "a header begins with this line"});
    const bool isSGML = part != std::string_view::npos || text.substr(front.begin).starts_with(kHeaderBegin);
    Edits rest = isSGML ? sgmlHeaderEdits(text.substr(front.begin, element - front.begin), 0, isInComment)
                        : xmlHeaderEdits(text.substr(front.begin), 0);
    for (Edit& edit : rest) {
        edit.offset += front.begin;
        front.edits.push_back(std::move(edit));
    }
    return front;
}

Edits headerEdits(std::string_view text) {
    const std::size_t begin = recognisedBegin(text);
    const std::string_view document = text.substr(begin);
    if (!document.starts_with(kHeaderBegin)) return xmlHeaderEdits(document, begin);
    const std::size_t element = findFirstElement(document);
    if (element == std::string_view::npos) return {};
    return sgmlHeaderEdits(document.substr(0, element), begin, false);
}

bool isOFC(std::string_view text) noexcept {
    constexpr std::string_view root = "<OFC"sv;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        if (at + 1 < text.size() && (text[at + 1] == '?' || text[at + 1] == '!')) continue;
        const std::string_view here = text.substr(at, root.size());
        const std::string_view after = text.substr(std::min(at + root.size(), text.size()));
        return equalsIgnoringCase(here, root) && !after.empty() &&
               (after.front() == '>' || isBlank(after.front()));
    }
    return false;
}

}  // namespace brackwell::repair
