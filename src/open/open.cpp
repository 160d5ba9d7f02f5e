// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>

#include <algorithm>
#include <type_traits>
#include <utility>

#include "open/file_findings.h"
#include "open/file_source.h"
#include "open/open_document.h"
#include "open/response_kind.h"
#include "open/shown_text.h"

namespace brackwell {

using opening::DocumentState;
using opening::FileState;

/// What stands behind an OpenedFile. It does not change once it is made.
struct opening::FileState {
    OpenError error;
    Data bytes;
    std::vector<OpenedDocument> documents;
    TvOFXResponseList responses;  ///< of all documents, like the lists after it
    std::vector<std::shared_ptr<TvOFXAccountStatement>> statements;
    std::vector<InvestmentStatement> investmentStatements;
    SecurityList securities;
    std::vector<ListedAccount> accounts;
    std::vector<Finding> findings;

    /// A file of which nothing was read.
    static OpenedFile unread(OpenError error) {
        auto state = std::make_shared<FileState>();
        state->error = std::move(error);
        return OpenedFile(std::move(state));
    }

    static OpenedFile of(Data bytes, const std::vector<std::shared_ptr<DocumentState>>& documents) {
        auto state = std::make_shared<FileState>();
        state->bytes = std::move(bytes);
        const bool isRead = std::ranges::any_of(
            documents, [](const auto& document) { return document->interpreter != nullptr; });
        if (!isRead) state->error = documents.front()->error;
        FileFindings findings;
        if (documents.size() > 1)
            findings.add(
                {FindingKind::severalDocuments, FindingSeverity::note, 0, 0, documents.size(),
                 "The file holds " + std::to_string(documents.size()) + " documents, one after the other."});
        std::vector<Security> securities;
        for (const auto& document : documents) {
            if (isRead && document->interpreter == nullptr) findings.add(unreadFinding(*document));
            for (Finding& finding : document->findings) findings.add(std::move(finding));
            document->findings.clear();  // they are the file's now
            state->documents.push_back(OpenedDocument(document));
            append(state->responses, state->documents.back().responses());
            append(state->statements, document->statements);
            append(state->investmentStatements, document->investmentStatements);
            append(securities, document->securities);
            append(state->accounts, document->accounts);
        }
        state->findings = std::move(findings).finish();
        if (!securities.empty()) state->securities = SecurityList(std::move(securities));
        return OpenedFile(std::move(state));
    }

private:
    template <class List>
    static void append(List& list, const List& more) {
        list.insert(list.end(), more.begin(), more.end());
    }

    static Finding unreadFinding(const DocumentState& document) {
        return {FindingKind::unreadDocument,
                FindingSeverity::error,
                document.error.line,
                document.error.column,
                1,
                "One of the file's documents was not read: " + document.error.description()};
    }
};

// ---------------------------------------------------------------------------------------------
// Names

std::string_view nameOf(FindingKind kind) noexcept {
    switch (kind) {
        case FindingKind::cutOff:
            return "cutOff";
        case FindingKind::notDelivered:
            return "notDelivered";
        case FindingKind::treeOnly:
            return "treeOnly";
        case FindingKind::unknownElement:
            return "unknownElement";
        case FindingKind::brokenTag:
            return "brokenTag";
        case FindingKind::looseText:
            return "looseText";
        case FindingKind::missingValue:
            return "missingValue";
        case FindingKind::unreadableValue:
            return "unreadableValue";
        case FindingKind::doubtfulValue:
            return "doubtfulValue";
        case FindingKind::severalDocuments:
            return "severalDocuments";
        case FindingKind::unreadDocument:
            return "unreadDocument";
        case FindingKind::textAround:
            return "textAround";
        case FindingKind::refused:
            return "refused";
        case FindingKind::repeatedIdentifier:
            return "repeatedIdentifier";
        case FindingKind::doesNotAddUp:
            return "doesNotAddUp";
        case FindingKind::noAccount:
            return "noAccount";
        case FindingKind::noContent:
            return "noContent";
        case FindingKind::encodingGuessed:
            return "encodingGuessed";
        case FindingKind::repaired:
            return "repaired";
    }
    return {};
}

std::string_view nameOf(FindingSeverity severity) noexcept {
    switch (severity) {
        case FindingSeverity::note:
            return "note";
        case FindingSeverity::warning:
            return "warning";
        case FindingSeverity::error:
            return "error";
    }
    return {};
}

std::string_view nameOf(OpenErrorCode code) noexcept {
    switch (code) {
        case OpenErrorCode::none:
            return "none";
        case OpenErrorCode::notFound:
            return "notFound";
        case OpenErrorCode::isFolder:
            return "isFolder";
        case OpenErrorCode::notPermitted:
            return "notPermitted";
        case OpenErrorCode::notReadable:
            return "notReadable";
        case OpenErrorCode::invalidURL:
            return "invalidURL";
        case OpenErrorCode::otherComputer:
            return "otherComputer";
        case OpenErrorCode::empty:
            return "empty";
        case OpenErrorCode::undecodable:
            return "undecodable";
        case OpenErrorCode::notOFX:
            return "notOFX";
        case OpenErrorCode::html:
            return "html";
        case OpenErrorCode::otherFormat:
            return "otherFormat";
        case OpenErrorCode::ofc:
            return "ofc";
        case OpenErrorCode::tagsDoNotMatch:
            return "tagsDoNotMatch";
        case OpenErrorCode::tooLarge:
            return "tooLarge";
        case OpenErrorCode::tooDeep:
            return "tooDeep";
    }
    return {};
}

std::string OpenError::description() const {
    std::string all = text;
    for (const std::string& more : {cause, remedy})
        if (!more.empty()) all.append(all.empty() || all.ends_with('.') ? " " : ". ").append(more);
    return all;
}

// ---------------------------------------------------------------------------------------------
// Documents

OpenedDocument::OpenedDocument(std::shared_ptr<const DocumentState> state) noexcept
    : state_(std::move(state)) {}

OpenedDocument::operator bool() const noexcept { return state_->interpreter != nullptr; }
const OpenError& OpenedDocument::error() const noexcept { return state_->error; }
TextEncoding OpenedDocument::encoding() const noexcept { return state_->encoding; }
const Data& OpenedDocument::bytes() const noexcept { return state_->bytes; }
const Data& OpenedDocument::text() const noexcept { return state_->text; }
const std::vector<RepairChange>& OpenedDocument::changes() const noexcept { return state_->changes; }
const Data& OpenedDocument::readText() const noexcept { return state_->readText; }
const TvOFXParserResult& OpenedDocument::content() const noexcept { return state_->content; }

std::string_view OpenedDocument::mark() const noexcept { return state_->mark; }

std::shared_ptr<const TvOFXInterpreter> OpenedDocument::interpreter() const noexcept {
    return state_->interpreter;
}

const TvOFXResponseList& OpenedDocument::responses() const noexcept {
    static const TvOFXResponseList kNone;
    return state_->interpreter ? state_->interpreter->allResponses() : kNone;
}

const std::vector<std::shared_ptr<TvOFXAccountStatement>>& OpenedDocument::statements() const noexcept {
    return state_->statements;
}

const std::vector<InvestmentStatement>& OpenedDocument::investmentStatements() const noexcept {
    return state_->investmentStatements;
}
const std::vector<Security>& OpenedDocument::securities() const noexcept { return state_->securities; }

const std::shared_ptr<TvOFXSignOnResponse>& OpenedDocument::signOn() const noexcept {
    static const std::shared_ptr<TvOFXSignOnResponse> kNone;
    return state_->interpreter ? state_->interpreter->signOnResponse() : kNone;
}

const std::shared_ptr<TvOFXFIProfileResponse>& OpenedDocument::profile() const noexcept {
    static const std::shared_ptr<TvOFXFIProfileResponse> kNone;
    return state_->interpreter ? state_->interpreter->fiProfileResponse() : kNone;
}

const std::vector<ListedAccount>& OpenedDocument::accounts() const noexcept { return state_->accounts; }

std::shared_ptr<TvOFXMessage> OpenedDocument::message() const {
    if (!*this) return nullptr;
    auto message = std::make_shared<TvOFXMessage>();
    message->take(state_->content.ofxHeader, *state_->interpreter);
    return message;
}

namespace {

/// The order of two accounts; null is before all others.
template <class Account>
std::strong_ordering orderOf(const std::shared_ptr<Account>& a, const std::shared_ptr<Account>& b) noexcept {
    return a && b ? *a <=> *b : static_cast<bool>(a) <=> static_cast<bool>(b);
}

}  // namespace

OptionalText StatementAccount::accountID() const noexcept {
    if (bank) return bank->accountID();
    return card ? card->accountID() : OptionalText();
}

bool StatementAccount::operator==(const StatementAccount& other) const noexcept {
    return AccountEqual()(bank, other.bank) && AccountEqual()(card, other.card);
}

std::strong_ordering StatementAccount::operator<=>(const StatementAccount& other) const noexcept {
    const std::strong_ordering banks = orderOf(bank, other.bank);
    return std::is_neq(banks) ? banks : orderOf(card, other.card);
}

StatementAccount accountOf(const TvOFXAccountStatement& statement) noexcept {
    StatementAccount account;
    if (const auto* bank = responseAs<TvOFXStatementResponse>(statement))
        account.bank = bank->bankAccountFrom();
    if (const auto* card = responseAs<TvOFXCCStatementResponse>(statement))
        account.card = card->creditCardAccountFrom();
    return account;
}

// ---------------------------------------------------------------------------------------------
// Files

OpenedFile::OpenedFile(std::shared_ptr<const FileState> state) noexcept : state_(std::move(state)) {}

OpenedFile::operator bool() const noexcept { return state_->error.code == OpenErrorCode::none; }
const OpenError& OpenedFile::error() const noexcept { return state_->error; }
const Data& OpenedFile::bytes() const& noexcept { return state_->bytes; }
const std::vector<Finding>& OpenedFile::findings() const& noexcept { return state_->findings; }
const std::vector<OpenedDocument>& OpenedFile::documents() const& noexcept { return state_->documents; }

const TvOFXResponseList& OpenedFile::responses() const& noexcept { return state_->responses; }
const std::vector<std::shared_ptr<TvOFXAccountStatement>>& OpenedFile::statements() const& noexcept {
    return state_->statements;
}
const std::vector<InvestmentStatement>& OpenedFile::investmentStatements() const& noexcept {
    return state_->investmentStatements;
}
const SecurityList& OpenedFile::securities() const& noexcept { return state_->securities; }
const std::vector<ListedAccount>& OpenedFile::accounts() const& noexcept { return state_->accounts; }

namespace {

/// What the first document gives that gives anything.
template <class Question>
auto firstOf(const std::vector<OpenedDocument>& documents, Question question) {
    std::remove_cvref_t<decltype((documents.front().*question)())> first;
    for (const OpenedDocument& document : documents)
        if (!first) first = (document.*question)();
    return first;
}

}  // namespace

std::shared_ptr<TvOFXSignOnResponse> OpenedFile::signOn() const {
    return firstOf(documents(), &OpenedDocument::signOn);
}
std::shared_ptr<TvOFXFIProfileResponse> OpenedFile::profile() const {
    return firstOf(documents(), &OpenedDocument::profile);
}
std::shared_ptr<TvOFXMessage> OpenedFile::message() const {
    return firstOf(documents(), &OpenedDocument::message);
}

OpenedFile openData(const Data& data, const OpenOptions& options) {
    if (data.size() > options.maximumSize)
        return FileState::unread(opening::tooLargeError(options.maximumSize));
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a formatter may replace them
    const OpenOptions held = options;
    const Data bytes = data.owned();
    return FileState::of(bytes, opening::openDocuments(bytes, held));
}

namespace {

OpenedFile openPath(const std::string& path, const OpenOptions& options) {
    opening::Source source = opening::readFile(path, options.maximumSize);
    if (source.error.code != OpenErrorCode::none) return FileState::unread(std::move(source.error));
    return openData(source.bytes, options);
}

}  // namespace

OpenedFile openFile(std::string_view pathOrURL, const OpenOptions& options) {
    opening::PathOrError path = opening::pathOf(pathOrURL);
    if (path.error.code != OpenErrorCode::none) return FileState::unread(std::move(path.error));
    OpenedFile file = openPath(path.path, options);
    const bool isFetchable =
        file.error().code == OpenErrorCode::notFound && opening::isURLOfOtherScheme(pathOrURL);
    return isFetchable ? FileState::unread(opening::otherSchemeError(pathOrURL)) : file;
}

OpenedFile openFile(const std::filesystem::path& path, const OpenOptions& options) {
    const std::u8string name = path.u8string();  // the system's own where its paths are bytes
    return openPath(std::string(name.begin(), name.end()), options);
}

}  // namespace brackwell
