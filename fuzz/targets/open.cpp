// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>

#include <algorithm>
#include <functional>

#include "open/survey.h"
#include "support/transcript.h"
#include "target.h"
#include "text/utf8.h"
#include "tree/node_ref.h"

/// \file
/// A file as an application opens it, with the default options, as it is, and within limits.

namespace brackwell::fuzz {
namespace {

using tests::transcriptOf;
using Statements = std::vector<std::shared_ptr<TvOFXAccountStatement>>;

OpenedFile openedWith(std::string_view bytes, const OpenOptions& options) {
    return openData(Data::copy(bytes), options);
}

// ---------------------------------------------------------------------------------------------
// Sentences and places

void requireShown(std::string_view text) {
    constexpr std::size_t longest = 1000;
    require(text.size() < longest, "a sentence is short");
    require(isValidUTF8(text), "a sentence is UTF-8");
    while (!text.empty()) {
        const UTF8Character character = firstCharacter(text);
        const char32_t c = character.value;
        require(c >= 0x20 && (c < 0x7F || c >= 0xA0), "a sentence has no control characters");
        text.remove_prefix(character.size);
    }
}

/// True for a place that is somewhere in one of these texts, or after the last character of a line.
bool isInside(std::size_t line, std::size_t column, std::string_view text) {
    const TextPlace end = placeInText(text, text.size());
    if (line < end.line) return column <= text.size() + 1;
    return line == end.line && column <= end.column;
}

/// The text that places of a file are counted in: that of its one document, or those of all of them.
std::string textOf(const OpenedFile& file) {
    std::string text;
    for (const OpenedDocument& document : file.documents())
        text += document.encoding() != TextEncodingNone ? document.text().bytes() : document.bytes().bytes();
    return text;
}

void requirePlace(std::size_t line, std::size_t column, std::string_view text) {
    require((line == 0) == (column == 0), "a place has a line and a column, or neither");
    require(line == 0 || isInside(line, column, text), "a place is inside of the text");
}

/// `size` is that of the text, or of the bytes where they are no text.
void requireSoundError(const OpenError& error, std::string_view text, std::size_t size) {
    require((error.code == OpenErrorCode::none) == error.text.empty(), "an error says what happened");
    for (const std::string& sentence : {error.text, error.cause, error.remedy, error.description()})
        requireShown(sentence);
    require(!nameOf(error.code).empty(), "an error has a name");
    require(error.offset <= size, "the place of an error is inside of the document");
    require(!error.openedAt || *error.openedAt <= error.offset, "what is open was opened before");
    requirePlace(error.line, error.column, text);
}

void requireSoundFindings(const OpenedFile& file) {
    const std::string text = textOf(file);
    for (const Finding& finding : file.findings()) {
        requireShown(finding.text);
        require(!finding.text.empty() && finding.count > 0, "a finding says of how much it is");
        requirePlace(finding.line, finding.column, text);
    }
    std::size_t largest = 0;
    for (const OpenedDocument& document : file.documents()) {
        const std::size_t size = std::max(document.text().size(), document.bytes().size());
        requireSoundError(document.error(), text, size);
        largest = std::max(largest, size);
    }
    requireSoundError(file.error(), text, largest);
    const auto isRead = [](const OpenedDocument& document) { return static_cast<bool>(document); };
    require(static_cast<bool>(file) == std::ranges::any_of(file.documents(), isRead),
            "a file is read when one of its documents is");
}

// ---------------------------------------------------------------------------------------------
// What is delivered

std::size_t transactionsOf(const Statements& statements) {
    std::size_t count = 0;
    for (const auto& statement : statements) count += statement->statementTransactions().size();
    return count;
}

/// All that a file delivers, in the order of its documents.
std::string transcriptOf(const OpenedFile& file) {
    std::string text;
    for (const OpenedDocument& document : file.documents())
        if (document) text += transcriptOf(*document.interpreter());
    return text;
}

void requireSameFile(const OpenedFile& one, const OpenedFile& other) {
    require(one.findings() == other.findings(), "two openings find the same");
    require(one.documents().size() == other.documents().size(), "two openings find the same documents");
    require(one.error().description() == other.error().description(), "two openings fail alike");
    require(transcriptOf(one) == transcriptOf(other), "two openings deliver the same");
}

/// Without repair and evidence, an opened document is what the core makes of its text.
void requireCore(const OpenedFile& file) {
    if (file.documents().size() != 1) return;
    const OpenedDocument& document = file.documents().front();
    require(document.changes().empty() && document.readText() == document.text(),
            "a document that is opened as it is stays as it is");
    if (!document) return;
    TvOFXParser parser(Data::view(document.text().bytes()));
    parser.setStringEncoding(TextEncodingUTF8);
    const auto result = parser.parseWithError();
    require(result != nullptr, "what was opened as it is parses");
    TvOFXInterpreter interpreter(*result);
    interpreter.interpret();
    require(transcriptOf(interpreter) == transcriptOf(*document.interpreter()),
            "what is opened as it is reads as ever");
}

/// The changes of a document make the text that was read.
void requireChanges(const OpenedDocument& document) {
    std::string text;
    std::size_t copied = 0;
    for (const RepairChange& change : document.changes()) {
        require(change.offset >= copied, "changes stand in their order");
        text.append(document.text().bytes(), copied, change.offset - copied).append(change.now);
        copied = change.offset + change.was.size();
    }
    text.append(document.text().bytes().substr(copied));
    require(text == document.readText().bytes(), "the changes of a document make the text that was read");
}

// ---------------------------------------------------------------------------------------------
// Parts that are kept

bool overlaps(std::string_view part, std::string_view whole) {
    const std::less<const char*> isBefore;
    return !part.empty() && !whole.empty() && isBefore(part.data(), whole.data() + whole.size()) &&
           isBefore(whole.data(), part.data() + part.size());
}

/// The texts of a tree and of all that is in it lie outside of the document.
void requireOutside(const std::optional<ParseDictionary>& tree, const OpenedDocument& document) {
    const reading::NodeRef root = tree ? reading::NodeRef::of(*tree) : reading::NodeRef();
    if (!root) return;
    const reading::Document& nodes = root.document();
    for (std::uint32_t index = 1; index < nodes.size(); ++index) {
        const reading::Node& node = nodes.node(index);
        const std::string_view text = node.isAggregate() ? nodes.name(node) : nodes.text(node);
        for (const Data* data : {&document.bytes(), &document.text(), &document.readText()})
            require(!overlaps(text, data->bytes()), "a detached part refers to nothing of its document");
    }
}

template <class Object>
std::shared_ptr<Object> requireDetached(const std::shared_ptr<Object>& object,
                                        const OpenedDocument& document) {
    const std::shared_ptr<Object> copy = detached(std::shared_ptr<const Object>(object));
    require(copy != nullptr && copy != object, "a detached part is another object");
    require(copy->description() == object->description(), "a detached part has the same description");
    require(transcriptOf(*copy) == transcriptOf(*object), "a detached part has the same fields");
    requireOutside(copy->originalParseData(), document);
    return copy;
}

/// The detached statements, and the transactions of which some are detached alone.
Statements requireParts(const OpenedDocument& document) {
    Statements copies;
    for (const auto& statement : document.statements()) {
        copies.push_back(requireDetached(statement, document));
        const auto& transactions = statement->statementTransactions();
        if (transactions.empty()) continue;
        requireDetached(transactions.front(), document);
        requireDetached(transactions.back(), document);
    }
    return copies;
}

/// Copies are released in another order than they were made, and what was taken from them stays.
void requireLasting(std::string_view bytes) {
    auto file = std::make_unique<OpenedFile>(openedWith(bytes, {}));
    const std::string before = transcriptOf(*file);
    auto copy = std::make_unique<OpenedFile>(*file);
    const std::vector<OpenedDocument> documents = file->documents();
    const Statements statements = file->statements();
    const auto message = file->message();
    require(file->accounts().size() == copy->accounts().size(), "a copy gives the same accounts");
    file.reset();
    require(transcriptOf(*copy) == before, "a copy outlives the file");
    Statements kept;
    for (const OpenedDocument& document : documents)
        for (auto& part : requireParts(document)) kept.push_back(std::move(part));
    copy.reset();
    require(transactionsOf(kept) == transactionsOf(statements), "what was taken outlives the file");
    for (const OpenedDocument& document : documents) requireChanges(document);
}

// ---------------------------------------------------------------------------------------------
// Limits

void requireLimits(std::string_view bytes) {
    OpenOptions options;
    options.maximumSize = 1024;
    options.maximumDepth = 4;
    const OpenedFile file = openedWith(bytes, options);
    requireSoundFindings(file);
    const bool isTooLarge = file.error().code == OpenErrorCode::tooLarge;
    require(isTooLarge == (bytes.size() > options.maximumSize), "a file is larger than the limit, or not");
    for (const OpenedDocument& document : file.documents())
        if (document)
            require(opening::depthOf(reading::NodeRef::of(*document.content().ofxData).document()) <=
                        options.maximumDepth,
                    "what is read is not too deep");
}

}  // namespace

void tryBytes(std::string_view bytes) {
    const OpenedFile file = openedWith(bytes, {});
    requireSoundFindings(file);
    requireSameFile(file, openedWith(bytes, {}));
    OpenOptions unrepaired;
    unrepaired.repair = OpenRepair::never;
    require(transactionsOf(file.statements()) >= transactionsOf(openedWith(bytes, unrepaired).statements()),
            "a repair takes no transaction away");
    const OpenedFile asIs = openedWith(bytes, OpenOptions::asIs());
    requireSoundFindings(asIs);
    requireCore(asIs);
    requireLasting(bytes);
    requireLimits(bytes);
}

}  // namespace brackwell::fuzz
