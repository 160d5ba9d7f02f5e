// SPDX-License-Identifier: Apache-2.0
#include "open/explanation.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

#include "open/error_with.h"
#include "open/root_name.h"
#include "open/shown_text.h"
#include "repair/repair.h"
#include "text/ascii_case.h"
#include "text/byte_order_marks.h"
#include "text/utf8.h"

namespace brackwell::opening {
namespace {

using namespace std::string_view_literals;
using Outcome = Parsed::Outcome;
using reading::BodyFailure;
using reading::TagPlace;

constexpr std::string_view kRepairRemedy = "Allow repair, which can fix this document.";

// ---------------------------------------------------------------------------------------------
// Tags that do not match

struct TagCause {
    RepairKind kind;
    std::string_view sentence;  ///< in which "@" is the open tag
};

/// What is wrong at the open tag, when a repair would have to change something there.
constexpr TagCause kCausesAtOpenTag[] = {
    {RepairKind::comment, "A comment, which is not part of OFX, was read as an element."},
    {RepairKind::instruction, "An instruction or declaration inside the body was read as an element."},
    {RepairKind::characterData, "A CDATA section was read as an element."},
    {RepairKind::lessThan, "A \"<\" in a text was read as the start of a tag; it should be \"&lt;\"."},
    {RepairKind::tagForm, "A tag has blanks or attributes in it, which were read as part of its name."},
    {RepairKind::unfinishedTag, "A tag has no \">\" at its end."},
    {RepairKind::selfClosedTag, "A self-closing tag was read as an open tag."},
    {RepairKind::emptyLeaf,
     "@ has neither a value nor a close tag, so what follows was read as its content."},
};

constexpr std::string_view kMissingClose = "The close tag of @ is missing.";
constexpr std::string_view kStrayClose = "The close tag is one too many, or its open tag is missing.";
constexpr TagCause kCausesAtCloseTag[] = {
    {RepairKind::wrongClose, "The close tag is misspelt, or belongs to another element than @."},
    {RepairKind::strayClose, kStrayClose},
    {RepairKind::missingOpen, "The open tag is missing."},
    {RepairKind::missingClose, kMissingClose},
};

template <std::size_t Count>
std::string_view sentenceFor(RepairKind kind, const TagCause (&causes)[Count]) noexcept {
    const auto* const cause = std::ranges::find(causes, kind, &TagCause::kind);
    return cause != std::end(causes) ? cause->sentence : std::string_view();
}

/// What was wrong at a place. A tag in lower case may have another flaw, which weighs more.
RepairKind faultOf(const RepairChange& change) noexcept {
    const bool becomesOpen = change.kind == RepairKind::wrongClose && !change.now.starts_with("</");
    if (becomesOpen) return RepairKind::missingOpen;
    const bool hasOtherFlaw = change.was.size() != change.now.size();
    if (change.kind != RepairKind::lowerCaseTag || !hasOtherFlaw) return change.kind;
    return change.was.ends_with('>') ? RepairKind::tagForm : RepairKind::unfinishedTag;
}

/// What stands in a tag, white space at its ends aside; "/" before the name of a close tag.
std::string_view insideOf(std::string_view text, TagPlace tag) noexcept {
    std::string_view inside = text.substr(tag.begin + 1, tag.end - tag.begin - 1);
    if (inside.ends_with('>')) inside.remove_suffix(1);  // the end of a text may stand in its place
    return trimWhiteSpace(inside);
}

/// True for the open tag that a close tag of this name wants.
bool isOpenTagOf(std::string_view tag, std::string_view name) noexcept {
    return tag.size() == name.size() + 2 && tag.substr(1, name.size()) == name;
}

/// The change that a repair would make at the place of the error, put in a sentence.
std::string_view likelyCause(std::string_view text, const BodyFailure& error,
                             const std::vector<RepairChange>& changes) noexcept {
    const std::string_view closed = insideOf(text, error.close).substr(1);
    std::string_view sentence = error.open ? kMissingClose : kStrayClose;
    for (const RepairChange& change : changes) {
        if (change.offset > error.close.begin) break;
        if (error.open && change.offset >= error.open->begin && change.offset <= error.open->end)
            if (const auto cause = sentenceFor(faultOf(change), kCausesAtOpenTag); !cause.empty())
                return cause;
        const bool opensThis = change.kind == RepairKind::missingOpen && isOpenTagOf(change.now, closed);
        if (change.offset == error.close.begin || opensThis)
            if (const auto cause = sentenceFor(faultOf(change), kCausesAtCloseTag); !cause.empty())
                sentence = cause;
    }
    return sentence;
}

/// A tag for a sentence, without a secret in it.
std::string shownTag(std::string_view text, TagPlace tag, const std::vector<TextRange>& secrets) {
    const bool isSecret = overlapsAny(secrets, {tag.begin, tag.end});
    return "<" + (isSecret ? std::string("****") : shownText(insideOf(text, tag))) + ">";
}

void setPlace(OpenError& error, std::string_view text, std::size_t offset) {
    const TextPlace place = placeInText(text, offset);
    error.offset = offset;
    error.line = place.line;
    error.column = place.column;
}

OpenError nestingError(std::string_view text, const BodyFailure& failure, RepairTrial& repair) {
    OpenError error = errorWith(OpenErrorCode::tagsDoNotMatch, {}, {}, std::string(kRepairRemedy));
    const std::vector<TextRange> secrets = secretsInOFXText(text.substr(0, failure.close.end));
    setPlace(error, text, failure.close.begin);
    error.text = "Found close tag " + shownTag(text, failure.close, secrets) + " without opening tag.";
    std::string open = "an element";
    if (failure.open) {
        open = shownTag(text, *failure.open, secrets);
        error.openedAt = failure.open->begin;
        error.text += " Maybe there is a close tag missing for " + open + ".";
    }
    const std::vector<RepairChange>& changes = repair.changesOf(text);
    error.isRepairable = !changes.empty();
    error.cause = likelyCause(text, failure, changes);
    if (const std::size_t place = error.cause.find('@'); place != error.cause.npos)
        error.cause.replace(place, 1, open);
    return error;
}

// ---------------------------------------------------------------------------------------------
// Texts and bytes that are something else

constexpr std::string_view kAskForOFX = "Ask the institution for OFX.";
constexpr std::string_view kUnpack = "Unpack it first.";

struct Format {
    std::string_view begin;
    std::string_view cause;
    std::string_view remedy = kAskForOFX;
    OpenErrorCode code = OpenErrorCode::otherFormat;
};

constexpr Format kOFC{"<OFC>", "It is a document of OFC, the predecessor of OFX.", kAskForOFX,
                      OpenErrorCode::ofc};

constexpr Format webPage(std::string_view begin) noexcept {
    return {begin, "It is a web page, usually one saying that the session has expired.",
            "Sign in again and repeat the download.", OpenErrorCode::html};
}

/// What people hand over for an OFX document, by how it begins, in whatever case.
constexpr Format kFormats[] = {
    webPage("<!DOCTYPE html"),
    webPage("<html"),
    webPage("<head"),
    {"%PDF-", "It is a PDF document."},
    {"PK\x03\x04", "It is a ZIP archive or an office document.", kUnpack},
    {"\x1F\x8B", "It is compressed with gzip.", kUnpack},
    {"\xD0\xCF\x11\xE0", "It is an office document."},
    {"{\\rtf", "It is an RTF document."},
    {"!Type:", "It is a QIF file."},
    {"!Account", "It is a QIF file."},
    {":20:", "It is an MT940 statement."},
    {"{1:F01", "It is an MT940 statement."},
    {"{\"", "It is a JSON document."},
};

const Format* formatOf(std::string_view bytes) noexcept {
    if (isOFCText(bytes)) return &kOFC;
    // Enough for white space before the first word, and little to search in a large file.
    const std::string_view begin = trimWhiteSpace(bytes.substr(0, 512));
    const auto* const format = std::ranges::find_if(kFormats, [begin](const Format& row) {
        return equalsIgnoringCase(begin.substr(0, row.begin.size()), row.begin);
    });
    return format != std::end(kFormats) ? format : nullptr;
}

/// A web page may begin with an XML declaration or a comment. A mention further on proves nothing.
bool mentionsWebPage(std::string_view text) noexcept {
    const std::string_view begin = text.substr(0, 1024);
    for (std::size_t at = begin.find('<'); at != begin.npos; at = begin.find('<', at + 1))
        if (equalsIgnoringCase(begin.substr(at, 5), "<html")) return true;
    return false;
}

OpenError otherFormatError(const Format& format) {
    return errorWith(format.code, "not an OFX document", std::string(format.cause),
                     std::string(format.remedy));
}

OpenError notOFXError(std::string_view text, RepairTrial& repair) {
    const std::vector<RepairChange>& changes = repair.changesOf(text);
    OpenError error = errorWith(OpenErrorCode::notOFX, "not an OFX document");
    error.isRepairable = !changes.empty();
    if (!error.isRepairable) {
        if (const Format* format = formatOf(text)) return otherFormatError(*format);
        if (mentionsWebPage(text)) return otherFormatError(kFormats[0]);
        const std::string begin = quoted(text);
        error.cause =
            trimWhiteSpace(text).empty() ? "It contains only white space." : "It begins with " + begin + ".";
        error.remedy = "Download it again, and choose OFX, QFX or \"Money\" as the format.";
        return error;
    }
    const auto before = std::ranges::find(changes, RepairKind::textBeforeDocument, &RepairChange::kind);
    if (before != changes.end()) {
        setPlace(error, text, before->was.size());
        error.cause = "A document begins at line " + std::to_string(error.line) + ", column " +
                      std::to_string(error.column) + ", but the text before it hides it.";
    } else if (isInLowerCase(changes)) {
        error.cause = "The tags are in lower case.";
    } else if (changes.front().kind == RepairKind::header) {
        error.cause = "Its header is incomplete.";
    } else if (changes.front().kind == RepairKind::tagForm) {
        error.cause = "The tag <OFX> has blanks or attributes in it.";
    } else {
        error.cause = "The tag <OFX> is missing or incomplete.";
    }
    error.remedy = kRepairRemedy;
    return error;
}

/// Where bytes stop being UTF-8; nothing when all of them are.
std::optional<std::size_t> firstInvalidByte(std::string_view bytes) noexcept {
    for (std::size_t at = 0; at < bytes.size();) {
        at += asciiPrefix(bytes.substr(at));
        if (at == bytes.size()) break;
        const UTF8Character character = firstCharacter(bytes.substr(at));
        if (character.size == 0) return at;
        at += character.size;
    }
    return std::nullopt;
}

std::string hexadecimal(char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {digits[value >> 4U], digits[value & 0xFU]};
}

std::string nameOf(TextEncoding encoding) {
    const OptionalText name = nameOfTextEncoding(encoding);
    return name ? std::string(*name) : "text encoding " + std::to_string(encoding);
}

/// The encodings in which the bytes are an OFX document.
std::vector<TextEncoding> readingEncodings(const Data& bytes) {
    std::vector<TextEncoding> encodings;
    for (const TextEncoding encoding : knownTextEncodings())
        if (parseChosen(bytes, encoding).outcome == Outcome::read) encodings.push_back(encoding);
    return encodings;
}

/// Names the encodings that read the bytes, if there are any.
void findReadingEncodings(OpenError& error, const Data& bytes) {
    error.readingEncodings = readingEncodings(bytes);
    if (error.readingEncodings.empty()) return;
    std::string names;
    for (const TextEncoding encoding : error.readingEncodings)
        names.append(names.empty() ? "" : ", ").append(*nameOfTextEncoding(encoding));
    error.remedy = "These encodings can read it: " + names + ".";
}

/// A text that is not OFX in the encoding that the application has chosen, when it is in another.
void blameChosenEncoding(OpenError& error, const Data& bytes, const OpenOptions& options,
                         EncodingSearch search) {
    if (options.encoding == TextEncodingNone || search == EncodingSearch::none || error.isRepairable) return;
    findReadingEncodings(error, bytes);
    if (!error.readingEncodings.empty())
        error.cause = "It is not OFX when it is read as " + nameOf(options.encoding) + ".";
}

OpenError undecodedError(const Data& bytes, const OpenOptions& options, EncodingSearch search) {
    if (bytes.isEmpty())
        return errorWith(OpenErrorCode::empty, "no data to parse",
                         "The file has no bytes; usually an interrupted download.", "Download it again.");
    const bool isChosen = options.encoding != TextEncodingNone;
    const Data unmarked = withoutMark(bytes);
    if (const Format* format = formatOf(unmarked.bytes()); format != nullptr && !isChosen)
        return otherFormatError(*format);
    const bool isWide =
        bytes.bytes().starts_with(kUTF16BigEndianMark) || bytes.bytes().starts_with(kUTF16LittleEndianMark);
    if (isWide && bytes.size() % 2 != 0 && !isChosen)
        return errorWith(
            OpenErrorCode::undecodable, "Data is not OFX or unknown character encoding.",
            "It is UTF-16, which consists of pairs of bytes, but it ends in the middle of a pair.",
            "Download it again.");
    OpenError error = errorWith(OpenErrorCode::undecodable, "Data is not OFX or unknown character encoding.");
    const TextEncoding hidden = isChosen ? TextEncodingNone : encodingOfHiddenDocument(bytes);
    if (const std::optional<Data> text = decodeText(bytes, hidden)) {
        RepairTrial repair;
        OpenError found = notOFXError(text->bytes(), repair);
        found.code = error.code;
        found.text = std::move(error.text);
        found.offset = 0;  // the document has no decoded text to have a place in
        return found;
    }
    if (isChosen && options.encoding != TextEncodingUTF8) {
        error.cause = "Its bytes are not text in " + nameOf(options.encoding) + ".";
    } else if (const auto invalid = firstInvalidByte(bytes.bytes())) {
        error.offset = *invalid;
        error.cause = "The byte at offset " + std::to_string(*invalid) + " (hexadecimal " +
                      hexadecimal(bytes.bytes()[*invalid]) + ") is not UTF-8.";
    }
    if (search == EncodingSearch::none) {
        error.remedy = "Give the encoding that it is in.";
        return error;
    }
    error.remedy = "It is not an OFX document in any supported encoding. Ask the institution for OFX.";
    findReadingEncodings(error, bytes);
    return error;
}

}  // namespace

bool isInLowerCase(const std::vector<RepairChange>& changes) noexcept {
    return std::ranges::find(changes, RepairKind::lowerCaseTag, &RepairChange::kind) != changes.end();
}

const std::vector<RepairChange>& RepairTrial::changesOf(std::string_view text) {
    if (!changes_) changes_ = repair::changesOfRepair(text);
    return *changes_;
}

OpenError errorOfOtherContent(std::string_view text, RepairTrial& repair) {
    if (isOFCText(text)) return otherFormatError(kOFC);
    const std::string_view root = withoutPrefix(firstElementName(text));
    for (const std::string_view name : {"html", "head", "body"})
        if (equalsIgnoringCase(root, name)) return otherFormatError(kFormats[0]);
    const bool isXML = equalsIgnoringCase(trimWhiteSpace(text).substr(0, 5), "<?xml");
    const bool mayBeOFX = root.empty() || equalsIgnoringCase(root, "OFX") || !repair.changesOf(text).empty();
    if (!isXML || mayBeOFX) return {};
    return errorWith(OpenErrorCode::otherFormat, "not an OFX document",
                     "It is XML of another kind, with the root <" + shownText(root) + ">.",
                     std::string(kAskForOFX));
}

OpenError errorOf(const Parsed& parsed, const Data& bytes, RepairTrial& repair, const OpenOptions& options,
                  EncodingSearch search) {
    const std::string_view text = parsed.text.bytes();
    switch (parsed.outcome) {
        case Outcome::read:
            return {};
        case Outcome::notOFX: {
            OpenError error = notOFXError(text, repair);
            blameChosenEncoding(error, bytes, options, search);
            return error;
        }
        case Outcome::malformed:
            return nestingError(text, parsed.failure, repair);
        case Outcome::undecoded:
            break;
    }
    return undecodedError(bytes, options, search);
}

}  // namespace brackwell::opening
