// SPDX-License-Identifier: Apache-2.0
#include "explain/explanation.h"

#include <brackwell/reading.h>
#include <brackwell/repair.h>

#include "explain/excerpt.h"
#include "explain/nesting_error.h"
#include "text/characters.h"
#include "text/display_width.h"
#include "text/visible_text.h"

namespace tool {
namespace {

using brackwell::RepairChange;
using brackwell::RepairKind;

constexpr std::size_t kLongestQuotation = 60;
constexpr std::string_view kRemedy =
    "  --repair mends such a document; \"brackwell repair\" lists what it changes.\n";

/// A tag for a sentence.
std::string quoted(const TagPlace& tag, const std::vector<TextRange>& secrets) {
    if (touchesSecret(secrets, {tag.begin, tag.end})) return "<" + std::string(kMask) + ">";
    return "<" + clipped(visibleText(tag.name.substr(0, 4 * kLongestQuotation)), kLongestQuotation) + ">";
}

std::string shownPlace(std::string_view document, std::size_t offset) {
    const LinePlace place = linePlaceOf(document, offset);
    return "line " + std::to_string(place.line) + ", column " + std::to_string(place.column);
}

// ---------------------------------------------------------------------------------------------
// Causes

struct Cause {
    RepairKind kind;
    std::string_view sentence;  ///< in which "@" is the open tag
};

/// What is wrong at the open tag, when a repair would have to change something there.
constexpr Cause kCausesAtOpenTag[] = {
    {RepairKind::comment, "A comment, which is no part of OFX, was read as an element."},
    {RepairKind::instruction, "An instruction or declaration inside the body was read as an element."},
    {RepairKind::characterData, "A character-data section was read as an element."},
    {RepairKind::lessThan,
     "A \"<\" that belongs to a text was read as the beginning of a tag; it should be \"&lt;\"."},
    {RepairKind::tagForm, "A tag has blanks or attributes in it, which were read as a part of its name."},
    {RepairKind::unfinishedTag, "A tag has no \">\" at its end."},
    {RepairKind::selfClosedTag, "A tag that closes itself was read as an open tag."},
    {RepairKind::emptyLeaf,
     "@ has neither a value nor a close tag, so what follows it was taken for its contents."},
};

constexpr Cause kCausesAtCloseTag[] = {
    {RepairKind::wrongClose, "The close tag is misspelt, or belongs to another element than @."},
    {RepairKind::strayClose, "The close tag is one too many, or its open tag is missing."},
    {RepairKind::missingOpen, "The open tag is missing."},
    {RepairKind::missingClose, "The close tag of @ is missing."},
};

template <std::size_t Count>
std::string_view sentenceFor(RepairKind kind, const Cause (&causes)[Count]) noexcept {
    for (const Cause& cause : causes)
        if (cause.kind == kind) return cause.sentence;
    return {};
}

/// What was wrong at a place. A tag in lower case may have another flaw, which weighs more.
RepairKind faultOf(const RepairChange& change) noexcept {
    const bool becomesOpen = change.kind == RepairKind::wrongClose && !change.now.starts_with("</");
    if (becomesOpen) return RepairKind::missingOpen;
    const bool hasOtherFlaw = change.was.size() != change.now.size();
    if (change.kind != RepairKind::lowerCaseTag || !hasOtherFlaw) return change.kind;
    return change.was.ends_with('>') ? RepairKind::tagForm : RepairKind::unfinishedTag;
}

/// True for the open tag that a close tag wants.
bool isOpenTagOf(std::string_view tag, const TagPlace& close) noexcept {
    const std::string_view name = close.name.substr(1);
    return tag.size() == name.size() + 2 && tag.substr(1, name.size()) == name;
}

/// The change that a repair would make at the place of the error, put in a sentence.
std::string_view likelyCause(const NestingError& error, const std::vector<RepairChange>& changes) noexcept {
    std::string_view sentence = error.open ? kCausesAtCloseTag[3].sentence : kCausesAtCloseTag[1].sentence;
    for (const RepairChange& change : changes) {
        if (change.offset > error.close.begin) break;
        if (error.open && change.offset >= error.open->begin && change.offset <= error.open->end)
            if (const auto cause = sentenceFor(faultOf(change), kCausesAtOpenTag); !cause.empty())
                return cause;
        const bool opensThis = change.kind == RepairKind::missingOpen && isOpenTagOf(change.now, error.close);
        if (change.offset == error.close.begin || opensThis)
            if (const auto cause = sentenceFor(faultOf(change), kCausesAtCloseTag); !cause.empty())
                sentence = cause;
    }
    return sentence;
}

std::string causeText(const NestingError& error, const std::vector<RepairChange>& changes,
                      const std::string& openTag) {
    std::string text(likelyCause(error, changes));
    const std::size_t place = text.find('@');
    if (place != text.npos) text.replace(place, 1, openTag);
    return text;
}

// ---------------------------------------------------------------------------------------------
// Bytes

/// Where a text stops being UTF-8; nothing when all of it is.
std::optional<std::size_t> firstInvalidByte(std::string_view text) noexcept {
    constexpr std::string_view replacementCharacter = "\uFFFD";
    for (std::size_t at = 0; at < text.size();) {
        const Character character = firstCharacter(text.substr(at));
        const bool isValid =
            character.code != kReplacementCharacter || text.substr(at).starts_with(replacementCharacter);
        if (!isValid) return at;
        at += character.size;
    }
    return std::nullopt;
}

std::string hexadecimal(char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {digits[value >> 4U], digits[value & 0xFU]};
}

/// The encodings in which the bytes are an OFX document.
std::string readingEncodings(const brackwell::Data& bytes) {
    std::string names;
    for (const brackwell::TextEncoding encoding : brackwell::knownTextEncodings()) {
        brackwell::TvOFXParser parser(bytes);
        parser.setStringEncoding(encoding);
        const auto result = parser.parseWithError();
        if (!result || !result->ofxData) continue;
        names.append(names.empty() ? "" : ", ").append(*brackwell::nameOfTextEncoding(encoding));
    }
    return names;
}

}  // namespace

std::string explainNesting(std::string_view document, std::size_t width) {
    const std::optional<NestingError> error = findNestingError(document);
    if (!error) return {};
    const ExcerptSource source{document, secretsIn(document), width};
    const std::string openTag = error->open ? quoted(*error->open, source.secrets) : "an element";
    std::string text;
    if (error->open)
        text += "  " + openTag + " was opened in " + shownPlace(document, error->open->begin) +
                " and is the innermost that is open:\n" + excerpt(source, error->open->begin, 0, 0);
    text += "  " + quoted(error->close, source.secrets) + " stands in " +
            shownPlace(document, error->close.begin) + ":\n" + excerpt(source, error->close.begin, 2, 1);
    const std::vector<RepairChange> changes = brackwell::repairOFXText(document).changes;
    text += "  Likely cause: " + causeText(*error, changes, openTag) + "\n";
    return text.append(kRemedy);
}

std::string explainBegin(std::string_view text) {
    const std::vector<RepairChange> changes = brackwell::repairOFXText(text).changes;
    if (changes.empty()) return {};
    const RepairChange& first = changes.front();
    std::string explanation = "  The tag <OFX> has blanks or attributes in it.\n";
    if (first.kind == RepairKind::lowerCaseTag) explanation = "  The tags are in lower case.\n";
    if (first.kind == RepairKind::textBeforeDocument)
        explanation = "  A document begins in " + shownPlace(text, first.was.size()) +
                      ", but is not found behind other text.\n";
    return explanation.append(kRemedy);
}

std::string withoutSecrets(std::string complaint, std::string_view document) {
    const std::optional<NestingError> error = findNestingError(document);
    if (!error || !error->open) return complaint;
    const std::size_t place = complaint.rfind(error->open->name);
    if (place != complaint.npos && touchesSecret(secretsIn(document), {error->open->begin, error->open->end}))
        complaint.replace(place, error->open->name.size(), kMask);
    return complaint;
}

std::string explainBytes(const brackwell::Data& bytes) {
    const std::string_view text = bytes.bytes();
    std::string explanation;
    if (const auto invalid = firstInvalidByte(text))
        explanation = "  The byte at offset " + std::to_string(*invalid) + " (hexadecimal " +
                      hexadecimal(text[*invalid]) + ") is not UTF-8.\n";
    const std::string names = readingEncodings(bytes);
    if (names.empty()) return explanation + "  No encoding that is known here makes an OFX document of it.\n";
    return explanation + "  --encoding NAME reads it with one of these names: " + names + "\n";
}

}  // namespace tool
