// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// One call for applications: opens a file as it comes from an institution, finds its text encoding, repairs
/// it where that is needed, reads everything that it holds, and names what it could not deliver.
///
///     brackwell::OpenedFile july = brackwell::openFile("july.ofx");
///     if (!july) std::cerr << july.error().text << '\n';
///     for (const auto& statement : july.statements())
///         for (const auto& transaction : statement->statementTransactions())
///             std::cout << accountOf(*statement).accountID().value_or("?") << ": "
///                       << transaction->memo().value_or("") << '\n';
///     for (const auto& finding : july.findings()) std::cerr << finding.line << ": " << finding.text << '\n';
///
/// TovanaOFXController (reading.h) reads exactly what is prescribed and nothing else. This layer stands on
/// it and promises one thing more: nothing is lost in silence. What a file holds is delivered, or a finding
/// names it. A file may hold several documents; all of them are opened.
///
/// Everything here is a value that shares what it refers to: copies cost a reference count, and the objects
/// taken from a file stay valid when the OpenedFile is gone. What is handed out as a reference is valid as
/// long as the object that was asked or a copy of it; so give an OpenedFile a name before you walk through
/// its lists. A list of a temporary OpenedFile is handed out by value; what a document in that list hands out
/// is not, so `openFile(path).documents()[0].statements()` must not outlive its full expression. Opening is
/// linear in the size of the file and never recurses on a document's depth. Any number of threads may use one
/// OpenedFile.

#include <brackwell/investments.h>
#include <brackwell/profile.h>
#include <brackwell/repair.h>
#include <brackwell/statements.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brackwell {

namespace opening {
struct DocumentState;
struct FileState;
}  // namespace opening

// ---------------------------------------------------------------------------------------------
// Places

/// A place in a text as people count.
struct TextPlace {
    std::size_t line = 1;    ///< lines end with LF, CR, or both
    std::size_t column = 1;  ///< in characters, not bytes

    bool operator==(const TextPlace&) const = default;  ///< the same line and column
};

/// The place of a byte of a UTF-8 text. Takes time in proportion to the offset.
BRACKWELL_EXPORT TextPlace placeInText(std::string_view text, std::size_t offset) noexcept;

/// Bytes of a text, from `begin` to before `end`.
struct TextRange {
    std::size_t begin = 0;  ///< offset of the first byte
    std::size_t end = 0;    ///< offset after the last byte
};

/// Where passwords, keys and cookies stand in the text of a document: the values of the elements that hold
/// them. The document need not be one that reads. In the order of their places; no two overlap. For
/// applications that quote a document in a message or a log.
BRACKWELL_EXPORT std::vector<TextRange> secretsInOFXText(std::string_view text);

/// True when a part of a text overlaps one of the ranges, which stand in the order of their places.
BRACKWELL_EXPORT bool overlapsAny(const std::vector<TextRange>& ranges, TextRange part) noexcept;

// ---------------------------------------------------------------------------------------------
// Findings

/// What a finding is about.
enum class FindingKind : std::uint8_t {
    cutOff,              ///< the document ends before its end
    notDelivered,        ///< the document holds something that no delivered object represents
    treeOnly,            ///< elements and account types of the OFX standard that no class has
    unknownElement,      ///< elements under names that the OFX standard does not have
    brokenTag,           ///< text in angle brackets that is no tag, or a place where a tag is missing
    looseText,           ///< text between elements, which is in none of them
    missingValue,        ///< transactions without amount or date, balances without amount
    unreadableValue,     ///< an amount, a balance or a date whose text is not one
    doubtfulValue,       ///< a value that was read by evidence, or that is improbable
    severalDocuments,    ///< the file holds more than one document
    unreadDocument,      ///< one of several documents does not read
    textAround,          ///< text before or after the document, which is no part of it
    refused,             ///< the server answers with a warning or an error
    repeatedIdentifier,  ///< different transactions of one statement have the same FITID
    doesNotAddUp,        ///< the parts of an investment transaction or position do not make its total
    noAccount,           ///< a statement does not say of which account it is
    noContent,           ///< the document reads, and holds no response
    encodingGuessed,     ///< the text encoding is not the one that the document names, or it names none
    repaired,            ///< the document was changed so that it reads
};

/// How much a finding matters.
enum class FindingSeverity : std::uint8_t {
    note,     ///< nothing is missing
    warning,  ///< something is missing, or may be
    error,    ///< the institution refused, or a document does not read
};

/// What a document holds that is not delivered, or not surely.
struct Finding {
    FindingKind kind = FindingKind::notDelivered;         ///< what it is about
    FindingSeverity severity = FindingSeverity::warning;  ///< how much it matters
    std::size_t line = 0;    ///< of the first place in the text as it came; 0 when there is no one place
    std::size_t column = 0;  ///< in characters; 0 like the line
    std::size_t count = 1;   ///< how many things it stands for
    std::string text{};      ///< a sentence for a person, at most about 400 bytes, without control characters

    bool operator==(const Finding&) const = default;  ///< the same in all parts
};

/// @{
/// A name for programs, such as "cutOff" and "warning"; never destroyed.
BRACKWELL_EXPORT std::string_view nameOf(FindingKind kind) noexcept;
BRACKWELL_EXPORT std::string_view nameOf(FindingSeverity severity) noexcept;
/// @}

// ---------------------------------------------------------------------------------------------
// Errors

/// Why a file or a document was not read.
enum class OpenErrorCode : std::uint8_t {
    none,            ///< it was read
    notFound,        ///< there is no such file
    isFolder,        ///< the path is that of a folder
    notPermitted,    ///< the file may not be read
    notReadable,     ///< the system could not read it
    invalidURL,      ///< a "file:" URL that names no file
    otherComputer,   ///< a URL of another computer, or of another scheme than "file:"; nothing is fetched
    empty,           ///< there are no bytes
    undecodable,     ///< the bytes are no text in any encoding that was tried
    notOFX,          ///< a text that is no OFX document
    html,            ///< a web page, mostly that of a session that has ended
    otherFormat,     ///< a file of another format, which the cause names
    ofc,             ///< an OFC document, the forerunner of OFX
    tagsDoNotMatch,  ///< a close tag closes nothing that is open
    tooLarge,        ///< more bytes than OpenOptions::maximumSize
    tooDeep,         ///< more nested aggregates than OpenOptions::maximumDepth
};

/// A name for programs, such as "tagsDoNotMatch"; never destroyed.
BRACKWELL_EXPORT std::string_view nameOf(OpenErrorCode code) noexcept;

/// Why a file or a document was not read. No text holds a control character or a secret of the document,
/// and none is longer than about 400 bytes.
struct BRACKWELL_EXPORT OpenError {
    OpenErrorCode code = OpenErrorCode::none;  ///< for programs; none when it was read
    std::string text{};                        ///< what happened, for a person; empty when nothing did
    std::string cause{};                       ///< the likely cause, in a sentence; may be empty
    std::string remedy{};                      ///< what to do, in a sentence or two; empty when it was read
    std::size_t line = 0;                      ///< of the place where reading ended; 0: there is none
    std::size_t column = 0;                    ///< in characters; 0 like the line
    std::size_t offset = 0;                    ///< of that place, in the bytes of OpenedDocument::text
    std::optional<std::size_t> openedAt{};  ///< where the innermost open element begins, for tagsDoNotMatch
    bool isRepairable = false;  ///< true when a repair was not allowed and would read the document
    /// Those in which the bytes are a document, when they are no text in the one that was tried, or no OFX in
    /// the one that was chosen: a choice for OpenOptions::encoding, which the remedy names, too.
    std::vector<TextEncoding> readingEncodings{};

    /// Text, cause and remedy in one.
    std::string description() const;
};

// ---------------------------------------------------------------------------------------------
// Opening

/// Whether documents are repaired.
enum class OpenRepair : std::uint8_t {
    whenNeeded,  ///< where a document does not read, or is not delivered whole; a finding says so
    never,
};

/// How to open a file. The defaults are for an application that wants all that is in it.
struct OpenOptions {
    /// The text encoding; TextEncodingNone finds it out.
    TextEncoding encoding = TextEncodingNone;
    OpenRepair repair = OpenRepair::whenNeeded;  ///< whether documents are repaired
    /// Read amounts and dates as the document writes them ("-0,99", "30/06/2025") where that cannot mean
    /// anything else, or the document's other amounts or the file's other dates show what it means; each kind
    /// of such a value is a finding. False is the prescribed reading, in which "," groups digits.
    bool asWritten = true;
    std::shared_ptr<const NumberFormatter> numberFormatter{};  ///< tried before everything else; may be null
    std::shared_ptr<const DateFormatter> dateFormatter{};      ///< the same for dates
    /// @{
    /// Limits for those who take files from strangers: bytes of the file, and nested aggregates. Without them
    /// any size is read; time and memory are in proportion to it.
    std::size_t maximumSize = std::numeric_limits<std::size_t>::max();
    std::size_t maximumDepth = std::numeric_limits<std::size_t>::max();
    /// @}

    /// The prescribed reading and nothing else: no repair, and amounts and dates as the import reads them.
    /// The encoding is still found out.
    static OpenOptions asIs() {
        OpenOptions options;
        options.repair = OpenRepair::never;
        options.asWritten = false;
        return options;
    }
};

/// An account of an account list (ACCTINFO): the record, and its blocks, of which the record itself reads
/// only that of a bank account.
struct ListedAccount {
    std::shared_ptr<const TvOFXAccountInfo> record;                ///< description and telephone; never null
    std::shared_ptr<const TvOFXBankAccountInfo> bank;              ///< null: the record has none
    std::shared_ptr<const TvOFXCreditCardAccountInfo> card;        ///< null: the record has none
    std::shared_ptr<const TvOFXInvestmentAccountInfo> investment;  ///< null: the record has none
};

/// The account of a bank or card statement, as the document names it.
struct BRACKWELL_EXPORT StatementAccount {
    std::shared_ptr<const TvOFXBankAccount> bank{};        ///< null: it is no bank statement, or names none
    std::shared_ptr<const TvOFXCreditCardAccount> card{};  ///< null: it is no card statement, or names none

    /// The number of the account (ACCTID); nothing when the document names none. Valid as long as the
    /// account.
    OptionalText accountID() const noexcept;

    /// @{
    /// By what the accounts say, not by which objects they are; statements without an account come first,
    /// then cards. So it is a key for what belongs to one account:
    ///
    ///     std::map<StatementAccount, std::vector<std::shared_ptr<TvOFXAccountStatement>>> byAccount;
    ///
    /// An account that one document names with its bank and another without are two.
    bool operator==(const StatementAccount& other) const noexcept;
    std::strong_ordering operator<=>(const StatementAccount& other) const noexcept;
    /// @}
};

/// The account of a bank or card statement. The class of the statement says which of both it is: a
/// TvOFXStatementResponse or a TvOFXCCStatementResponse.
BRACKWELL_EXPORT StatementAccount accountOf(const TvOFXAccountStatement& statement) noexcept;

/// One document of a file, read as far as possible.
class BRACKWELL_EXPORT OpenedDocument {
public:
    /// @{
    /// A copy stands for the same document, and so does what was moved from.
    OpenedDocument(const OpenedDocument&) noexcept = default;
    OpenedDocument& operator=(const OpenedDocument&) noexcept = default;
    ~OpenedDocument() = default;
    /// @}
    /// True when the document was read.
    explicit operator bool() const noexcept;
    /// Why it was not read; its code is none when it was.
    const OpenError& error() const noexcept;

    /// The encoding that was used; TextEncodingNone when the bytes are no text.
    TextEncoding encoding() const noexcept;
    /// The bytes of the document in the file.
    const Data& bytes() const noexcept;
    /// The byte order mark that the bytes begin with; empty when they begin with none. Valid as long as the
    /// bytes.
    std::string_view mark() const noexcept;
    /// Its text in UTF-8, without a byte order mark and before a repair; empty when the bytes are no text.
    const Data& text() const noexcept;
    /// What was changed so that the document could be read, in the order of the places in `text`; empty when
    /// nothing was. Their offsets are those of `text`, their lines and columns those of the file.
    const std::vector<RepairChange>& changes() const noexcept;
    /// The text after these changes; `text` when there were none.
    const Data& readText() const noexcept;

    /// Header and tree as the parser gives them, for what has no class. The header is there also when the
    /// body was not read.
    const TvOFXParserResult& content() const noexcept;
    /// The responses with their indexes: by message set, identifier and name; null when the document was not
    /// read.
    std::shared_ptr<const TvOFXInterpreter> interpreter() const noexcept;
    /// The responses, in the order in which they were built. Empty when the document was not read.
    const TvOFXResponseList& responses() const noexcept;
    /// The bank and card statements in the order of `responses`, see TvOFXInterpreter::allResponses.
    const std::vector<std::shared_ptr<TvOFXAccountStatement>>& statements() const noexcept;
    /// @{
    /// The investment statements and the securities, in document order.
    const std::vector<InvestmentStatement>& investmentStatements() const noexcept;
    const std::vector<Security>& securities() const noexcept;
    /// @}
    /// @{
    /// The answer to the sign-on and the profile of the institution; null when there is none.
    const std::shared_ptr<TvOFXSignOnResponse>& signOn() const noexcept;
    const std::shared_ptr<TvOFXFIProfileResponse>& profile() const noexcept;
    /// @}
    /// The accounts of the account lists, in document order.
    const std::vector<ListedAccount>& accounts() const noexcept;
    /// The document as the import's message, made at each call, with the same responses; null when the
    /// document was not read.
    std::shared_ptr<TvOFXMessage> message() const;

private:
    friend class OpenedFile;
    friend struct opening::FileState;
    BRACKWELL_INTERNAL explicit OpenedDocument(std::shared_ptr<const opening::DocumentState> state) noexcept;
    std::shared_ptr<const opening::DocumentState> state_;
};

/// A file that was opened. Its lists are valid as long as a copy of it; those of a temporary are handed out
/// by value, so that `for (const auto& finding : openFile(path).findings())` is safe. What the documents hand
/// out is valid as long as the documents: keep the file, or a copy of the document.
class BRACKWELL_EXPORT OpenedFile {
public:
    /// @{
    /// A copy stands for the same file, and so does what was moved from.
    OpenedFile(const OpenedFile&) noexcept = default;
    OpenedFile& operator=(const OpenedFile&) noexcept = default;
    ~OpenedFile() = default;
    /// @}
    /// True when at least one document was read.
    explicit operator bool() const noexcept;
    /// Why nothing was read; its code is none when something was.
    const OpenError& error() const noexcept;
    /// @{
    /// What the file holds that is not delivered, or not surely, by document and then by severity. Of a kind
    /// there are twenty at most, and after them one that says how many more the file has.
    const std::vector<Finding>& findings() const& noexcept;
    std::vector<Finding> findings() && { return findings(); }
    /// @}
    /// @{
    /// All bytes of the file; empty when it could not be read.
    const Data& bytes() const& noexcept;
    Data bytes() && { return bytes(); }
    /// @}
    /// @{
    /// The documents in the file's order; empty when the file could not be read. A file without bytes, or
    /// with a text that is no OFX document, is one document that was not read.
    const std::vector<OpenedDocument>& documents() const& noexcept;
    std::vector<OpenedDocument> documents() && { return documents(); }
    /// @}

    /// @{
    /// The same questions over all documents of the file: lists run over all of them in order; of the
    /// sign-on, the profile and the message, it is the first one that there is.
    const TvOFXResponseList& responses() const& noexcept;
    TvOFXResponseList responses() && { return responses(); }
    const std::vector<std::shared_ptr<TvOFXAccountStatement>>& statements() const& noexcept;
    std::vector<std::shared_ptr<TvOFXAccountStatement>> statements() && { return statements(); }
    const std::vector<InvestmentStatement>& investmentStatements() const& noexcept;
    std::vector<InvestmentStatement> investmentStatements() && { return investmentStatements(); }
    const SecurityList& securities() const& noexcept;
    SecurityList securities() && { return securities(); }
    std::shared_ptr<TvOFXSignOnResponse> signOn() const;
    std::shared_ptr<TvOFXFIProfileResponse> profile() const;
    const std::vector<ListedAccount>& accounts() const& noexcept;
    std::vector<ListedAccount> accounts() && { return accounts(); }
    std::shared_ptr<TvOFXMessage> message() const;
    /// @}

private:
    friend struct opening::FileState;
    BRACKWELL_INTERNAL explicit OpenedFile(std::shared_ptr<const opening::FileState> state) noexcept;
    std::shared_ptr<const opening::FileState> state_;
};

/// @{
/// Opens a file. A text that begins with "file:" is a URL in one of the forms of RFC 8089, any other text is
/// a path, and a null pointer is an empty one; where there is no such file and the text has the form of
/// another URL ("https://..."), the error says so. A std::filesystem::path is never taken for a URL.
BRACKWELL_EXPORT OpenedFile openFile(std::string_view pathOrURL, const OpenOptions& options = {});
BRACKWELL_EXPORT OpenedFile openFile(const std::filesystem::path& path, const OpenOptions& options = {});
inline OpenedFile openFile(const char* pathOrURL, const OpenOptions& options = {}) {
    return openFile(std::string_view(pathOrURL != nullptr ? pathOrURL : ""), options);
}
inline OpenedFile openFile(const std::string& pathOrURL, const OpenOptions& options = {}) {
    return openFile(std::string_view(pathOrURL), options);
}
/// @}

/// Opens the bytes of a file. Bytes that are a view of the caller's are copied where they are kept.
BRACKWELL_EXPORT OpenedFile openData(const Data& data, const OpenOptions& options = {});

// ---------------------------------------------------------------------------------------------
// Keeping a part

/// @{
/// A copy that keeps nothing of its document alive: the fields, the node (originalParseData) and what hangs
/// on it are copied into a small tree of their own. For applications that keep single transactions or
/// statements of large documents. Null for null. The part of the document's text in which they stand is
/// copied with them, once; a transaction without a close tag reaches to the next one of a transaction, or to
/// the end of the document.
BRACKWELL_EXPORT std::shared_ptr<TvOFXStatementTransaction> detached(
    const std::shared_ptr<const TvOFXStatementTransaction>& transaction);
BRACKWELL_EXPORT std::shared_ptr<TvOFXAccountStatement> detached(
    const std::shared_ptr<const TvOFXAccountStatement>& statement);
/// @}

}  // namespace brackwell

/// \cond
// The hash that goes with the equality of the accounts of statements. (Doxygen knows no namespace std.)
template <>
struct std::hash<brackwell::StatementAccount> {
    std::size_t operator()(const brackwell::StatementAccount& account) const noexcept {
        // One of them at most is there.
        return brackwell::AccountHash()(account.bank) ^ brackwell::AccountHash()(account.card);
    }
};
/// \endcond
