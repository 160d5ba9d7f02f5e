// SPDX-License-Identifier: Apache-2.0
#include "repair/front.h"

#include <brackwell/reading.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "elements/header_fields.h"
#include "elements/structure.h"
#include "repair/markup.h"
#include "text/ascii_case.h"
#include "text/ascii_space.h"
#include "text/byte_order_marks.h"
#include "text/comment_marks.h"
#include "text/text_parts.h"

namespace brackwell::repair {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kHeaderBlanks = " \t\r\n";
constexpr std::string_view kHeaderBegin = "OFXHEADER:";

bool isHeaderBlank(char c) noexcept { return kHeaderBlanks.find(c) != std::string_view::npos; }

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
                           (isHeaderBlank(after.front()) && after.find('=') != std::string_view::npos);
        if (text[end] == '<' || !isTag) continue;
        const std::size_t next = text.find_first_not_of(kHeaderBlanks, end + 1);
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

/// Where the first tag begins that `beginsDocument` knows, with another tag after it.
template <class BeginsDocument>
std::size_t findFirstTag(std::string_view text, BeginsDocument beginsDocument) noexcept {
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const std::size_t end = text.find_first_of("<>", at + 1);
        if (end == std::string_view::npos) break;
        if (text[end] == '<' || !beginsDocument(trimWhiteSpace(text.substr(at + 1, end - at - 1)))) continue;
        const std::size_t next = text.find_first_not_of(kHeaderBlanks, end + 1);
        if (next != std::string_view::npos && text[next] == '<') return at;
    }
    return std::string_view::npos;
}

/// Where the first element of a document begins, whatever its header is; npos: there is none.
std::size_t findFirstElement(std::string_view text) noexcept {
    std::size_t first = findLooseOFXTag(text, NameCase::upper);
    if (first == std::string_view::npos) first = findLooseOFXTag(text, NameCase::lower);
    first = std::min(first, findFirstTag(text, beginsRootlessDocument));
    if (first != std::string_view::npos) return first;
    return findFirstTag(text, [](std::string_view name) { return name == "STMTTRN"; });
}

// ---------------------------------------------------------------------------------------------
// Headers of OFX 1

bool beginsLine(std::string_view header, std::size_t at) noexcept {
    while (at > 0 && isBlank(header[at - 1])) --at;
    return at == 0 || header[at - 1] == '\n' || header[at - 1] == '\r';
}

/// The name of a field and its colon.
struct Field {
    std::size_t begin;
    std::size_t colon;
    std::string_view name;  ///< in its prescribed form; empty: there is no field
};

/// True when the name of a field ends here. One in small letters stands by itself: it may be a part of a
/// word.
bool endsWithField(std::string_view text, std::string_view name) noexcept {
    if (text.ends_with(name)) return true;
    if (text.size() < name.size() || !equalsIgnoringCase(text.substr(text.size() - name.size()), name))
        return false;
    const std::size_t begin = text.size() - name.size();
    return begin == 0 || isHeaderBlank(text[begin - 1]);
}

/// The next field of a header at or after a place, with blanks before its colon and in whatever case; at the
/// end of the header when there is none.
Field findField(std::string_view header, std::size_t from) noexcept {
    for (std::size_t colon = header.find(':', from); colon != std::string_view::npos;
         colon = header.find(':', colon + 1)) {
        std::size_t end = colon;
        while (end > from && isBlank(header[end - 1])) --end;
        const std::string_view before = header.substr(from, end - from);
        for (const std::string_view field : elements::kHeaderFields)
            if (endsWithField(before, field)) return {end - field.size(), colon, field};
    }
    return {header.size(), header.size(), {}};
}

/// Where a field in its prescribed form begins, at or after a place; the end when there is none.
std::size_t findPlainField(std::string_view header, std::size_t from) noexcept {
    for (Field field = findField(header, from); !field.name.empty();
         field = findField(header, field.colon + 1))
        if (header.substr(field.begin, field.colon - field.begin) == field.name) return field.begin;
    return header.size();
}

constexpr std::string_view kHides = "it hides fields of the header";

/// Takes the marks of comments away from around fields, and comments without fields.
class HeaderComments {
public:
    HeaderComments(std::string_view header, std::size_t base) : header_(header), base_(base) {}

    Edits edits() {
        for (std::size_t at = header_.find("--"); at != std::string_view::npos; at = header_.find("--", at)) {
            if (at >= 2 && header_.substr(at - 2).starts_with(kCommentBegin))
                at = dropBegin(at - 2);
            else if (header_.substr(at).starts_with(kCommentEnd))
                at = drop(at, kCommentEnd.size(), std::string(kHides));
            else
                ++at;
        }
        return std::move(edits_);
    }

private:
    /// Ends after what was dropped.
    std::size_t drop(std::size_t at, std::size_t size, std::string reason) {
        edits_.push_back({base_ + at, size, RepairKind::comment, {}, std::move(reason)});
        return at + size;
    }

    std::size_t dropBegin(std::size_t at) {
        const std::size_t inside = at + kCommentBegin.size();
        // What was found is still the next one until the place is beyond it, so that no part is searched
        // twice.
        if (close_ < inside) close_ = std::min(header_.find(kCommentEnd, inside), header_.size());
        if (field_ < inside) field_ = findPlainField(header_, inside);
        if (field_ < close_ || close_ == header_.size())
            return drop(at, kCommentBegin.size(), std::string(kHides));
        return drop(at, close_ + kCommentEnd.size() - at, "a header must not have comments");
    }

    std::string_view header_;
    std::size_t base_;
    std::size_t close_ = 0;  ///< of the next end of a comment
    std::size_t field_ = 0;  ///< of the next field
    Edits edits_;
};

/// Gives each field a line of its own, and its name in capitals.
void mendFields(std::string_view header, std::size_t base, Edits& edits) {
    bool isFirst = true;
    for (Field field = findField(header, 0); !field.name.empty();
         field = findField(header, field.colon + 1), isFirst = false) {
        if (!isFirst && !beginsLine(header, field.begin)) {
            std::size_t end = field.begin;
            while (end > 0 && isHeaderBlank(header[end - 1])) --end;
            edits.push_back({base + end, field.begin - end, RepairKind::header, "\n",
                             "each line of a header has one field"});
        }
        const std::string_view name = header.substr(field.begin, field.colon - field.begin);
        const bool isPlain = isFirst ? name == field.name : name.starts_with(field.name);
        if (!isPlain)
            edits.push_back({base + field.begin, field.colon - field.begin, RepairKind::header,
                             std::string(field.name), "header fields must be in capitals"});
    }
}

/// The edits of a list that do not stand within one of another list.
Edits outside(const Edits& others, Edits edits) {
    auto other = others.begin();
    std::erase_if(edits, [&](const Edit& edit) {
        while (other != others.end() && other->offset + other->size <= edit.offset) ++other;
        return other != others.end() && other->offset < edit.offset + edit.size;
    });
    return edits;
}

Edits sgmlHeaderEdits(std::string_view header, std::size_t base) {
    Edits comments;
    if (header.find("--"sv) != std::string_view::npos) comments = HeaderComments(header, base).edits();
    Edits fields;
    mendFields(header, base, fields);
    fields = outside(comments, std::move(fields));
    return merged(std::move(comments), std::move(fields));
}

// ---------------------------------------------------------------------------------------------
// Headers of OFX 2

constexpr std::string_view kInstruction = "<?OFX";

bool isXMLDeclaration(std::string_view text) noexcept {
    return text.starts_with("<?xml"sv) || text.starts_with("<?XML"sv);
}

/// Where the instruction begins, in whatever case.
std::size_t findInstruction(std::string_view text) noexcept {
    for (std::size_t at = text.find("<?"sv); at != std::string_view::npos; at = text.find("<?"sv, at + 1))
        if (equalsIgnoringCase(text.substr(at, kInstruction.size()), kInstruction)) return at;
    return std::string_view::npos;
}

/// The value of an attribute that begins at a place, without quotation marks or apostrophes, and where it
/// ends.
struct Value {
    std::string_view text;
    std::size_t end;
};
Value valueAt(std::string_view attributes, std::size_t at) noexcept {
    at = std::min(attributes.find_first_not_of(kHeaderBlanks, at), attributes.size());
    const bool isQuoted = at < attributes.size() && (attributes[at] == '"' || attributes[at] == '\'');
    const std::size_t begin = at + (isQuoted ? 1 : 0);
    const std::size_t end = std::min(
        isQuoted ? attributes.find(attributes[at], begin) : attributes.find_first_of(kHeaderBlanks, begin),
        attributes.size());
    return {attributes.substr(begin, end - begin), std::min(end + (isQuoted ? 1 : 0), attributes.size())};
}

/// An instruction as the import reads it. Other systems write it with small letters, with apostrophes, with
/// blanks around the equals signs.
std::string plainInstruction(std::string_view attributes) {
    std::string plain(kInstruction);
    for (std::size_t equals = attributes.find('='); equals != std::string_view::npos;
         equals = attributes.find('=')) {
        const std::string_view before = trimWhiteSpace(attributes.substr(0, equals));
        const std::string_view name = afterLast(before, kHeaderBlanks);
        const Value value = valueAt(attributes, equals + 1);
        plain += ' ';
        for (const char c : name) plain += capitalLetter(c);
        plain.append("=\"").append(value.text).append("\"");
        attributes.remove_prefix(value.end);
    }
    return plain + "?>";
}

ParseDictionary fieldsOf(std::string_view instruction) {
    ParseDictionary fields;
    TvOFXParser::parseXmlHeader(instruction, &fields);
    return fields;
}

/// Puts the instruction right when the import does not find what stands in it.
Edits instructionEdits(std::string_view header, std::size_t at, std::size_t base) {
    const std::size_t end = header.find("?>"sv, at);
    if (end == std::string_view::npos) return {};
    const std::string_view before = header.substr(at, end + 2 - at);
    std::string plain =
        plainInstruction(before.substr(kInstruction.size(), before.size() - kInstruction.size() - 2));
    const bool isRead = before.starts_with(kInstruction) && fieldsOf(before) == fieldsOf(plain);
    if (isRead) return {};
    return {{base + at, before.size(), RepairKind::header, std::move(plain),
             "the import reads only one form of this instruction"}};
}

/// True when an open tag begins in a text: of an envelope around a document.
bool holdsElement(std::string_view text) noexcept {
    for (std::size_t at = text.find('<'); at < text.size(); at = text.find('<', at + 1))
        if (at + 1 < text.size() && isASCIILetter(text[at + 1])) return true;
    return false;
}

/// Without its instruction the import takes the whole document for a header. An envelope is dropped.
Edits xmlHeaderEdits(std::string_view text, std::size_t element, std::size_t base) {
    const std::string_view header = text.substr(0, element);
    if (const std::size_t at = findInstruction(header); at != std::string_view::npos)
        return instructionEdits(header, at, base);
    if (!isXMLDeclaration(text) || element == std::string_view::npos ||
        text.find(kInstruction) != std::string_view::npos)
        return {};
    const std::size_t next = text.find('<', 1);
    const std::size_t end = text.find("?>"sv);
    const bool hasEnd = end < next;
    const std::size_t begin = hasEnd ? end + 2 : next;
    const std::size_t size = holdsElement(text.substr(begin, element - begin)) ? element - begin : 0;
    return {{base + begin, size, RepairKind::header,
             std::string(hasEnd ? "" : "?>") + "<?OFX OFXHEADER=\"200\"?>",
             "without this instruction nothing is read from a document that begins with <?xml"}};
}

// ---------------------------------------------------------------------------------------------
// Headers of both

/// Where a header of OFX 1 begins after a declaration of XML, which then is no part of it; npos: there is
/// none.
std::size_t findHeaderAfterDeclaration(std::string_view header) noexcept {
    if (!isXMLDeclaration(header) || findInstruction(header) != std::string_view::npos)
        return std::string_view::npos;
    const Field field = findField(header, 0);
    return field.name == elements::kHeaderFields.front() ? field.begin : std::string_view::npos;
}

/// What must be changed before the first element of a document, which begins with its header.
Edits editsBefore(std::string_view text, std::size_t element, std::size_t base) {
    const std::string_view header = text.substr(0, element);
    if (const std::size_t begin = findHeaderAfterDeclaration(header); begin != std::string_view::npos) {
        Edits edits{
            {base, begin, RepairKind::textBeforeDocument, {}, "an OFX 1 header has no XML declaration"}};
        return merged(std::move(edits), sgmlHeaderEdits(header.substr(begin), base + begin));
    }
    const bool isSGML = !header.starts_with('<') && element != std::string_view::npos;
    return isSGML ? sgmlHeaderEdits(header, base) : xmlHeaderEdits(text, element, base);
}

/// Where a header begins that the import does not recognise: in small letters, or with a blank before its
/// first colon. npos: there is none.
std::size_t findLooseHeader(std::string_view front) noexcept {
    const std::size_t instruction = findInstruction(front);
    for (Field field = findField(front, 0); !field.name.empty(); field = findField(front, field.colon + 1))
        if (field.name == elements::kHeaderFields.front() && beginsLine(front, field.begin))
            return std::min(field.begin, instruction);
    return instruction;
}

/// The first field of a header that lacks its first line; npos: there is none.
std::size_t findPartOfHeader(std::string_view front) noexcept {
    for (std::size_t at = findPlainField(front, 0); at < front.size();
         at = findPlainField(front, front.find(':', at) + 1)) {
        std::size_t end = at;
        while (end > 0 && isHeaderBlank(front[end - 1])) --end;
        if (beginsLine(front, at) || front.substr(0, end).ends_with(kCommentBegin)) return at;
    }
    return std::string_view::npos;
}

}  // namespace

std::size_t recognisedBegin(std::string_view text) noexcept {
    const std::string_view document =
        trimWhiteSpace(text.substr(text.starts_with(kUTF8Mark) ? kUTF8Mark.size() : 0));
    return static_cast<std::size_t>(document.data() - text.data());
}

Front findFront(std::string_view text) {
    Front front;
    const std::size_t element = findFirstElement(text);
    std::size_t begin = element;
    // A header comes before the root; the same words after it are part of a value.
    for (const std::string_view first : {kHeaderBegin, "<?xml"sv, "<?XML"sv, kInstruction})
        begin = std::min(begin, text.find(first));
    if (begin == std::string_view::npos) return front;
    front.isDocument = true;
    const std::string_view header = text.substr(0, element);
    begin = std::min(begin, findLooseHeader(header));
    const std::size_t part = begin == element ? findPartOfHeader(header) : std::string_view::npos;
    front.begin = std::min(begin, part);
    std::string_view before = trimWhiteSpace(text.substr(0, front.begin));
    const bool isInComment = before.ends_with(kCommentBegin) && front.begin < element;
    if (isInComment) before = trimWhiteSpace(before.substr(0, before.size() - kCommentBegin.size()));
    const std::size_t comment = isInComment ? text.rfind(kCommentBegin, front.begin) : front.begin;
    if (!before.empty())
        front.edits.push_back(
            {0, comment, RepairKind::textBeforeDocument, {}, "a document is recognised by how it begins"});
    if (isInComment)
        front.edits.push_back({comment, front.begin - comment, RepairKind::comment, {}, std::string(kHides)});
    if (part != std::string_view::npos)
        front.edits.push_back(
            {front.begin, 0, RepairKind::header, "OFXHEADER:100\n", "a header begins with this line"});
    const std::size_t size = element == std::string_view::npos ? element : element - front.begin;
    for (Edit& edit : editsBefore(text.substr(front.begin), size, front.begin))
        front.edits.push_back(std::move(edit));
    return front;
}

Edits headerEdits(std::string_view text) {
    const std::size_t begin = recognisedBegin(text);
    const std::string_view document = text.substr(begin);
    return editsBefore(document, findFirstElement(document), begin);
}

bool isOFC(std::string_view text) noexcept {
    constexpr std::string_view root = "<OFC"sv;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const std::string_view here = text.substr(at);
        if (here.starts_with("<?"sv) || here.starts_with("<!"sv)) {
            const bool isComment = here.starts_with(kCommentBegin);
            at = text.find(isComment ? kCommentEnd : ">"sv, at + 2);
            if (at == std::string_view::npos) break;
            continue;
        }
        const std::string_view after = here.substr(std::min(root.size(), here.size()));
        return equalsIgnoringCase(here.substr(0, root.size()), root) && !after.empty() &&
               (after.front() == '>' || isHeaderBlank(after.front()));
    }
    return false;
}

}  // namespace brackwell::repair
