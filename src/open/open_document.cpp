// SPDX-License-Identifier: Apache-2.0
#include "open/open_document.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "open/account_types.h"
#include "open/answers.h"
#include "open/beginning.h"
#include "open/contradictions.h"
#include "open/date_rests.h"
#include "open/document_split.h"
#include "open/ending.h"
#include "open/error_with.h"
#include "open/explanation.h"
#include "open/header_faults.h"
#include "open/identifiers.h"
#include "open/interpreted.h"
#include "open/investment_identifiers.h"
#include "open/missing_values.h"
#include "open/named_encoding.h"
#include "open/parsing.h"
#include "open/placement.h"
#include "open/repair_losses.h"
#include "open/rival_values.h"
#include "open/root_name.h"
#include "open/shown_text.h"
#include "open/survey.h"
#include "open/text_place.h"
#include "open/values.h"
#include "text/byte_order_marks.h"

/// \file
/// The steps of one document: parse, survey the tree, make the objects, count what they deliver. When the
/// document does not read, or something is missing, the text is repaired and takes the same steps again.

namespace brackwell::opening {
namespace {

/// What follows the lines of a header of OFX 1, or all of a text without one.
std::string_view textAfterHeader(std::string_view text) noexcept {
    for (std::string_view rest = trimWhiteSpace(text);; rest = trimWhiteSpace(rest)) {
        const std::size_t colon = rest.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
        if (colon == 0 || colon == rest.npos || rest[colon] != ':') return rest;
        rest.remove_prefix(std::min(rest.find_first_of("\r\n"), rest.size()));
    }
}

/// The byte order mark before the text, if there is one. The parser counts that of UTF-8 as part of the text.
std::string_view markOf(std::string_view bytes, const Parsed& parsed) noexcept {
    const std::string_view before = bytes.substr(0, bytes.size() - parsed.data.size());
    const bool isCounted = parsed.encoding == TextEncodingUTF8 && parsed.data.bytes().starts_with(kUTF8Mark);
    return isCounted ? bytes.substr(0, before.size() + kUTF8Mark.size()) : before;
}

/// Opens one document.
class Opening {
public:
    /// `datesOfFile` are the dates of all documents of the file, where they are known; otherwise null.
    Opening(const Data& bytes, const OpenOptions& options, const WrittenDates* datesOfFile = nullptr)
        : options_(options), datesOfFile_(datesOfFile), state_(std::make_shared<DocumentState>()) {
        state_->bytes = bytes;
    }

    /// Parses the document and makes objects of it, as far as that goes without a repair.
    void begin() {
        content_ = interpreted(firstParsed(), options_, datesOfFile_);
        state_->text = content_.parsed.text;
        state_->encoding = content_.parsed.encoding;
        state_->mark = markOf(state_->bytes.bytes(), content_.parsed);
        state_->readText = state_->text;
        content_.headerFaults = headerFaultsOf(content_.parsed, state_->text.bytes());
    }

    /// The documents in the text, when there may be several.
    std::vector<TextRange> parts() const {
        const bool mayBeSeveral = !content_.isRead() || content_.found(Content::root) > 1;
        return mayBeSeveral ? splitIntoDocuments(splitText().bytes()) : std::vector<TextRange>(1);
    }
    /// What is split: the bytes, since each document may have an encoding of its own, or the decoded text
    /// when a character takes more than one byte.
    const Data& splitText() const noexcept { return isWide() ? state_->text : state_->bytes; }
    bool isWide() const noexcept {
        return state_->bytes.bytes().substr(0, 64).find('\0') != std::string_view::npos;
    }

    std::shared_ptr<DocumentState> finish(EncodingSearch search = EncodingSearch::all) {
        repair(content_);
        checkDepth(content_);
        checkKind(content_);
        if (content_.isRead() && state_->error.code == OpenErrorCode::none)
            take(std::move(content_));
        else
            fail(content_, search);
        return std::move(state_);
    }

private:
    bool mayRepair() const noexcept { return options_.repair == OpenRepair::whenNeeded; }

    Parsed firstParsed() {
        if (options_.encoding != TextEncodingNone) return parseChosen(state_->bytes, options_.encoding);
        return parseInAnyEncoding(state_->bytes, mayRepair(), isEncodingGuessed_);
    }

    void repair(Interpreted& content) {
        if (!mayRepair() || content.isWhole() || state_->text.isEmpty()) return;
        // Two readings of a large document and what a repair needs are more than there may be memory for. So
        // the first one is set aside, and made again where the repair is no better.
        const Worth before(content);
        setAside(content);
        if (!takeRepaired(content, before)) readAgain(content, options_, datesOfFile_);
    }

    /// Repairs the text; true when the content is now that of the repaired one.
    bool takeRepaired(Interpreted& content, const Worth& before) {
        RepairedText repaired = repairOFXText(state_->text.bytes(), RepairScope::structure);
        if (repaired.changes.empty()) {
            trial_.keep({});
            return false;
        }
        const Data text = Data::adopt(std::move(repaired.text));
        Interpreted after = interpreted(parse(text, TextEncodingUTF8), options_, datesOfFile_);
        after.headerFaults = headerFaultsOf(after.parsed, text.bytes());
        if (!isBetter(Worth(after), before)) {
            trial_.keep(std::move(repaired.changes));
            return false;
        }
        content = std::move(after);
        state_->changes = std::move(repaired.changes);
        state_->readText = content.parsed.text;
        return true;
    }

    void checkDepth(const Interpreted& content) {
        if (!content.isRead() || options_.maximumDepth == std::numeric_limits<std::size_t>::max()) return;
        if (depthOf(content.document()) <= options_.maximumDepth) return;
        state_->error = errorWith(OpenErrorCode::tooDeep,
                                  "The document's elements are nested more than " +
                                      std::to_string(options_.maximumDepth) + " deep, which is the limit.",
                                  {}, "Raise OpenOptions::maximumDepth if you trust the sender.");
    }

    void checkKind(const Interpreted& content) {
        if (!content.isRead() || content.parsed.hasRoot() || state_->error.code != OpenErrorCode::none)
            return;
        state_->error = errorOfOtherContent(state_->text.bytes(), trial_);
        state_->content.ofxData = content.parsed.content.ofxData;
    }

    void fail(const Interpreted& content, EncodingSearch search) {
        state_->content.ofxHeader = content.parsed.content.ofxHeader;
        if (state_->error.code == OpenErrorCode::none)
            state_->error = errorOf(content.parsed, state_->bytes, trial_, options_, search);
        FindingList findings;
        addNotes(findings, content.parsed);
        state_->findings = std::move(findings).finish(state_->text.bytes());
    }

    void take(Interpreted content) {
        addFindings(content);
        state_->interpreter = std::move(content.interpreter);
        state_->statements = std::move(content.known.statements);
        state_->accounts = accountsOf(content.known.accountLists);
        state_->investmentStatements = std::move(content.investmentStatements);
        state_->securities = std::move(content.securities);
        state_->dates = content.survey.dates;
        state_->content = std::move(content.parsed.content);
    }

    // -----------------------------------------------------------------------------------------
    // Findings

    void addNotes(FindingList& findings, const Parsed& parsed) const {
        if (options_.encoding == TextEncodingNone && state_->encoding != TextEncodingNone)
            findEncodingDoubts(findings, state_->encoding, parsed.content.ofxHeader, state_->readText.bytes(),
                               isEncodingGuessed_     ? EncodingOrigin::guess
                               : state_->mark.empty() ? EncodingOrigin::bytes
                                                      : EncodingOrigin::mark);
        if (const std::size_t count = state_->changes.size(); count != 0)
            findings.add(FindingKind::repaired, FindingSeverity::note,
                         "Repaired in " + counted(count, "place", "places") + ".", count,
                         state_->changes.front().offset);
    }

    void addFindings(const Interpreted& content) {
        const reading::Document& document = content.document();
        const TreePlaces places(document, state_->changes);
        const TvOFXResponseList& responses = content.responses();
        FindingList findings;
        addNotes(findings, content.parsed);
        const std::string_view text = state_->text.bytes();
        const std::string_view readText = state_->readText.bytes();
        const std::string_view first = firstElementName(text);
        if (!first.empty()) findCutsAndMargins(findings, text, rootNameOf(text, first), readText, places);
        // A header with faults is named as a whole.
        if (content.headerFaults == 0)
            findTextBefore(findings, text, state_->changes, readText,
                           state_->changes.empty() ? first : firstElementName(readText), places);
        if (content.headerFaults != 0 && document.size() > 1)
            findings.add(FindingKind::notDelivered, FindingSeverity::warning,
                         "The header does not follow the OFX format, so some of its fields are not read.",
                         content.headerFaults);
        if (content.missing != 0) content.delivery().addFindings(findings, document, places);
        if (content.repairable == 0) addMisplaced(findings, document, content.survey.misplaced, places);
        content.accounting.addFindings(findings, document, places);
        findRepairLosses(findings, state_->text.bytes(), state_->changes);
        if (content.survey.required != 0 || content.survey.misplaced.repeated != 0)
            findMissingValues(findings, document, places);
        if (content.survey.hasDateRests) findDateRests(findings, document, places);
        findOddValues(findings, document, content.survey, options_, places);
        findRefusals(findings, responses, places);
        if (!content.investmentStatements.empty())
            findContradictions(findings, content.investmentStatements, SecurityList(content.securities),
                               places);
        findRivalValues(findings, content.investmentStatements, content.securities, places);
        findNamelessStatements(findings, content.known, content.investmentStatements, places);
        findUnknownAccountTypes(findings, content.known, places);
        if (!content.survey.hasDistinctIdentifiers()) {
            findRepeatedIdentifiers(findings, content.known, places);
            findRepeatedInvestmentIdentifiers(findings, content.investmentStatements, places);
        }
        // Another finding has already said why what was found is not delivered.
        const bool isEmpty =
            responses.empty() && content.investmentStatements.empty() && content.securities.empty();
        if (isEmpty && content.repairable == 0) addEmptiness(findings, content);
        state_->findings = std::move(findings).finish(state_->text.bytes());
    }

    void addEmptiness(FindingList& findings, const Interpreted& content) {
        const std::string_view text = state_->text.bytes();
        const bool isXML = text.find("<?xml") != text.npos || text.find("<?XML") != text.npos;
        const std::string_view rest = textAfterHeader(text);
        std::string sentence =
            "The document has no responses: no statement, no sign-on, no list of accounts.";
        if (content.document().size() < 2 && isXML && text.find("<?OFX") == text.npos)
            sentence =
                "The document is XML without the instruction <?OFX ...?>, so nothing in it is read. Put "
                "<?OFX VERSION=\"211\"?> before <OFX>.";
        else if (firstElementName(text).empty())
            sentence = rest.empty() ? "The document ends after its header. Download it again."
                                    : "The document has no elements after its header, but the text " +
                                          quoted(rest) + ".";
        else if (!content.parsed.hasRoot() && isInLowerCase(trial_.changesOf(text)))
            sentence = "The document's tags are in lower case, so nothing in it is read without a repair.";
        findings.add(FindingKind::noContent, FindingSeverity::warning, std::move(sentence));
    }

    const OpenOptions& options_;
    const WrittenDates* datesOfFile_;
    std::shared_ptr<DocumentState> state_;
    Interpreted content_;
    bool isEncodingGuessed_ = false;
    RepairTrial trial_;  ///< of the text
};

/// Moves the places of a part of a file to where they are in the file.
void moveBy(const TextPlace& begin, DocumentState& state) {
    const auto move = [&begin](std::size_t& line, std::size_t& column) {
        if (line == 1) column += begin.column - 1;
        if (line != 0) line += begin.line - 1;
    };
    for (Finding& finding : state.findings) move(finding.line, finding.column);
    for (RepairChange& change : state.changes) move(change.line, change.column);
    move(state.error.line, state.error.column);
}

using DocumentStates = std::vector<std::shared_ptr<DocumentState>>;

/// The documents of a file that has several.
class Parts {
public:
    Parts(Data text, std::vector<TextRange> parts, const OpenOptions& options)
        : text_(std::move(text)), parts_(std::move(parts)), options_(options) {}

    DocumentStates open() && {
        // So that many documents that are no text do not take their time many times over.
        std::size_t searches = 4;
        for (const TextRange& part : parts_) {
            documents_.push_back(
                openPart(part, searches > 0 ? EncodingSearch::all : EncodingSearch::none, nullptr));
            if (documents_.back()->error.code == OpenErrorCode::undecodable && searches > 0) --searches;
        }
        readDatesTogether();
        PlaceCursor cursor(text_.bytes());
        for (std::size_t i = 0; i != parts_.size(); ++i)
            moveBy(cursor.advanceTo(parts_[i].begin), *documents_[i]);
        return std::move(documents_);
    }

private:
    std::shared_ptr<DocumentState> openPart(const TextRange& part, EncodingSearch search,
                                            const WrittenDates* datesOfFile) const {
        Opening opening(text_.slice(part.begin, part.end - part.begin), options_, datesOfFile);
        opening.begin();
        return opening.finish(search);
    }

    /// Reads those documents again whose dates only the other documents explain.
    void readDatesTogether() {
        WrittenDates all;
        for (const auto& document : documents_) all.addOrdersOf(document->dates);
        for (std::size_t i = 0; i != parts_.size(); ++i)
            if (documents_[i]->dates.isHelpedBy(all))
                documents_[i] = openPart(parts_[i], EncodingSearch::all, &all);
    }

    Data text_;
    std::vector<TextRange> parts_;
    const OpenOptions& options_;
    DocumentStates documents_;
};

}  // namespace

DocumentStates openDocuments(const Data& bytes, const OpenOptions& options) {
    Opening whole(bytes, options);
    whole.begin();
    std::vector<TextRange> parts = whole.parts();
    if (parts.size() == 1) return {whole.finish()};
    OpenOptions partOptions = options;
    if (whole.isWide()) partOptions.encoding = TextEncodingUTF8;
    return Parts(whole.splitText(), std::move(parts), partOptions).open();
}

}  // namespace brackwell::opening
