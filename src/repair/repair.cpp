// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>

#include <algorithm>

#include "platform/ascii_case.h"
#include "repair/nesting.h"

namespace brackwell {
namespace {

using namespace std::string_view_literals;
using repair::Edit;
using repair::NameCase;

enum class Reading { reads, readsNothing, notOFX, fails };

/// What the import makes of a text. It reads nothing where the element is missing in which all is looked
/// for.
Reading readingOf(std::string_view text) {
    TvOFXParser parser(Data::view(text));
    parser.setStringEncoding(TextEncodingUTF8);
    Error error;
    const std::shared_ptr<TvOFXParserResult> result = parser.parseWithError(&error);
    if (!result) return Reading::fails;
    if (!result->ofxData) return Reading::notOFX;
    return (*result->ofxData)["OFX"].isNothing() ? Reading::readsNothing : Reading::reads;
}

constexpr std::string_view kBlanks = " \t\r\n";

/// Where the first tag begins that is "<OFX>" but for blanks or attributes, or but for its case, too. One
/// with another tag behind it comes before one that is only mentioned in a text.
std::size_t findLooseOFXTag(std::string_view text, NameCase nameCase) noexcept {
    constexpr std::string_view begin = "<OFX"sv;
    std::size_t mentioned = std::string_view::npos;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const std::string_view here = text.substr(at, begin.size());
        if (nameCase == NameCase::upper ? here != begin : !equalsIgnoringCase(here, begin)) continue;
        const std::size_t end = text.find_first_of("<>", at + 1);
        if (end == std::string_view::npos) break;
        const std::string_view behind = text.substr(at + begin.size(), end - at - begin.size());
        const bool isTag =
            trimWhiteSpace(behind).empty() || (kBlanks.find(behind.front()) != std::string_view::npos &&
                                               behind.find('=') != std::string_view::npos);
        if (text[end] == '<' || !isTag) continue;
        const std::size_t next = text.find_first_not_of(kBlanks, end + 1);
        if (next != std::string_view::npos && text[next] == '<') return at;
        mentioned = std::min(mentioned, at);
    }
    return mentioned;
}

/// Where a document begins that has something in front of it; npos: there is none. A header stands in front
/// of the root; the same words behind it are part of a value.
std::size_t findDocument(std::string_view text) noexcept {
    std::size_t first = findLooseOFXTag(text, NameCase::upper);
    if (first == std::string_view::npos) first = findLooseOFXTag(text, NameCase::lower);
    for (const std::string_view begin : {"OFXHEADER:"sv, "<?xml"sv, "<?XML"sv, "<?OFX"sv})
        first = std::min(first, text.find(begin));
    return first;
}

/// Where a document begins that the import recognises: behind a mark and white space.
std::size_t recognisedBegin(std::string_view text) noexcept {
    constexpr std::string_view mark = "\xEF\xBB\xBF"sv;
    const std::string_view document = trimWhiteSpace(text.substr(text.starts_with(mark) ? mark.size() : 0));
    return static_cast<std::size_t>(document.data() - text.data());
}

/// Where the body begins in a document that has nothing in front of it.
std::size_t bodyIndexOf(std::string_view document) {
    if (!document.starts_with("<?"sv)) return 0;
    ParseDictionary header;
    return TvOFXParser::parseXmlHeader(document, &header);
}

/// What must be changed in a body, in the order of the places. Where something is put in between a tag
/// and what follows it, that comes first.
std::vector<Edit> editsOf(std::string_view body, Reading reading) {
    reading::NameTable names;
    // Without a header, the root is what the document was found by.
    repair::Markup markup = repair::readMarkup(body, reading == Reading::notOFX, names);
    if (reading == Reading::readsNothing && markup.nameCase == NameCase::upper) return {};
    return merged(repair::repairNesting(body, markup.tags, names), std::move(markup.edits));
}

/// Carries edits out, from the first to the last, and notes them with lines and columns.
class Editor {
public:
    explicit Editor(std::string_view text) : text_(text) {}

    void apply(Edit&& edit, std::size_t base) {
        const std::size_t offset = base + edit.offset;
        result_.text.append(text_, copied_, offset - copied_).append(edit.now);
        copied_ = offset + edit.size;
        advanceTo(offset);
        result_.changes.push_back({edit.kind, offset, line_, column_,
                                   std::string(text_.substr(offset, edit.size)), std::move(edit.now)});
    }

    RepairedText finish() {
        result_.text.append(text_, copied_);
        return std::move(result_);
    }

private:
    void advanceTo(std::size_t offset) noexcept {
        for (; at_ < offset; ++at_) {
            const char c = text_[at_];
            const bool isFirstOfTwo = c == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n';
            if (c == '\n' || (c == '\r' && !isFirstOfTwo)) {
                ++line_;
                column_ = 1;
            } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
                ++column_;
            }
        }
    }

    std::string_view text_;
    RepairedText result_;
    std::size_t copied_ = 0;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    std::size_t column_ = 1;
};

}  // namespace

std::string_view describe(RepairKind kind) noexcept {
    switch (kind) {
        case RepairKind::textBeforeDocument:
            return "text before the document";
        case RepairKind::comment:
            return "comment";
        case RepairKind::instruction:
            return "instruction inside the body";
        case RepairKind::characterData:
            return "character-data section";
        case RepairKind::lessThan:
            return "\"<\" inside a text";
        case RepairKind::tagForm:
            return "blanks or attributes in a tag";
        case RepairKind::lowerCaseTag:
            return "tag in lower case";
        case RepairKind::unfinishedTag:
            return "unfinished tag";
        case RepairKind::selfClosedTag:
            return "self-closed tag";
        case RepairKind::emptyLeaf:
            return "empty leaf without close tag";
        case RepairKind::missingClose:
            return "close tag missing";
        case RepairKind::wrongClose:
            return "wrong close tag";
        case RepairKind::strayClose:
            return "close tag without open tag";
        case RepairKind::missingOpen:
            return "open tag missing";
    }
    return {};
}

RepairedText repairOFXText(std::string_view text) {
    Reading reading = isValidUTF8(text) ? readingOf(text) : Reading::reads;
    if (reading == Reading::reads) return {std::string(text), {}};
    const std::size_t begin = reading == Reading::notOFX ? findDocument(text) : recognisedBegin(text);
    if (begin == std::string_view::npos) return {std::string(text), {}};

    Editor editor(text);
    const std::string_view document = trimWhiteSpace(text.substr(begin));
    if (reading == Reading::notOFX) {
        if (!trimWhiteSpace(text.substr(0, begin)).empty())
            editor.apply({0, begin, RepairKind::textBeforeDocument, {}, {}}, 0);
        reading = readingOf(document);
        if (reading == Reading::reads) return editor.finish();
    }
    const std::size_t bodyIndex = bodyIndexOf(document);
    for (Edit& edit : editsOf(document.substr(bodyIndex), reading))
        editor.apply(std::move(edit), begin + bodyIndex);
    return editor.finish();
}

}  // namespace brackwell
