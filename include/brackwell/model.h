// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The object model. TvOFXMessage is what an import returns; it holds responses, such as the
/// statements of statements.h, and lists the accounts that they speak of:
///
///     #include <brackwell/statements.h>
///     for (const auto& account : message->bankAccountsFound())
///         if (auto statement = message->statementsForBankAccount(account))
///             for (const auto& transaction : statement->statementTransactions()) ...
///
/// On the ground floor stand the bases TvOFXAggregate, TvOFXStatus and TvOFXResponse. Above them
/// TvOFXInterpreter turns a parse tree into responses, TvOFXMessage keeps them, TvOFXResult and
/// TvOFXFIMessage are a view of their results, and TvOFXAccount is a view of one account record.
///
/// Objects are shared by reference counting and not copied when handed out. A field that the
/// document does not fill is absent; nothing in a readable document is an error. While an object reads a
/// node, it asks the formatters of the application; these may replace the helper of the object, or the
/// formatters of the helper, but not read another node into the object.

#include <brackwell/convert.h>
#include <brackwell/internal/emptied_by_move.h>
#include <brackwell/internal/text_fields.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace brackwell {

class OpenedDocument;
class TvOFXAccountInfo;
class TvOFXBankAccount;
class TvOFXCCStatementResponse;
class TvOFXCreditCardAccount;
class TvOFXFIProfileRequest;
class TvOFXFIProfileResponse;
class TvOFXRequest;
class TvOFXSignOnResponse;
class TvOFXStatementResponse;
class TvOFXStatementTransaction;
enum TvOFXBankAccountType : std::uint64_t;
enum TvOFXServiceStatus : std::uint64_t;

// ---------------------------------------------------------------------------------------------
// Ground floor

/// An object that stands for one OFX aggregate: it keeps the node of the parse tree that it was read
/// from, the OFX version it renders for and the helper it converts with.
///
/// `initWithParseDict`, or `initWithParserDict` where a class has that, makes an object that has read a node.
/// With a helper of their own, statements and transactions read as well: the plain constructor,
/// setHelperObject, then parseDictionary.
class BRACKWELL_EXPORT TvOFXAggregate {
public:
    TvOFXAggregate() noexcept = default;
    /// Keeps the node; does not call parseDictionary.
    explicit TvOFXAggregate(const std::optional<ParseDictionary>& node) : originalParseData_(node) {}
    /// Restores the node from "originalPD".
    explicit TvOFXAggregate(const KeyedUnarchiver& coder);
    TvOFXAggregate(const TvOFXAggregate&) = delete;             ///< objects are shared, not copied
    TvOFXAggregate& operator=(const TvOFXAggregate&) = delete;  ///< the same
    virtual ~TvOFXAggregate();

    /// An object that keeps the node and reads nothing from it.
    static std::shared_ptr<TvOFXAggregate> initWithParseDict(const std::optional<ParseDictionary>& node);
    /// The reading hook. The base keeps the node as originalParseData and reads nothing; so do all classes
    /// but statements and transactions, TvOFXBankAccount among them.
    virtual void parseDictionary(const std::optional<ParseDictionary>& node);
    /// Debugging text. The base renders originalParseData like ofxString, or gives the class's name
    /// and the object's address when there is none.
    virtual std::string description() const;
    /// The object as OFX text. The base renders originalParseData; "" when there is none.
    virtual std::string ofxString() const;
    /// Reads an archive; ofxVersion and helperObject are not in it. Each class has its own, see
    /// AggregateClass.
    static std::shared_ptr<TvOFXAggregate> initWithCoder(const KeyedUnarchiver& coder);
    /// Writes originalParseData, when present, under "originalPD".
    virtual void encodeWithCoder(KeyedArchiver& coder) const;

    /// The name of the object's class, such as "TvOFXStatus".
    virtual std::string_view className() const noexcept;

    /// @{
    /// The node that the object was read from; absent for objects made in code. Another node changes what
    /// is rendered and archived, not the fields.
    const std::optional<ParseDictionary>& originalParseData() const noexcept { return originalParseData_; }
    void setOriginalParseData(std::optional<ParseDictionary> node) noexcept {
        originalParseData_ = std::move(node);
    }
    /// @}

    /// @{
    /// The OFX version to render for, as in a header's VERSION (102, 211): from 200 on leaves are
    /// closed. 0 when never set, which renders like version 1.
    std::uint64_t ofxVersion() const noexcept { return ofxVersion_; }
    void setOfxVersion(std::uint64_t version) noexcept { ofxVersion_ = version; }
    /// @}

    /// @{
    /// The converter of dates and amounts; null means the shared one.
    const std::shared_ptr<TvOFXHelper>& helperObject() const noexcept { return helperObject_; }
    void setHelperObject(std::shared_ptr<TvOFXHelper> helper) noexcept { helperObject_ = std::move(helper); }
    /// @}

private:
    std::optional<ParseDictionary> originalParseData_;
    std::uint64_t ofxVersion_ = 0;
    std::shared_ptr<TvOFXHelper> helperObject_;
};

/// The initialisers of a class of aggregates, which make objects of that very class. Every class has them in
/// this way, and one of an application's own gets them alike:
///
///     class Terms : public AggregateClass<Terms, TvOFXResponse> {};
///
/// Derived from TvOFXResponse itself, it would have the initialisers of TvOFXResponse, which make that. A
/// class that has an initialiser of its own, hides the one that it has from here.
template <class Class, class Base>
class BRACKWELL_EXPORT AggregateClass : public Base {
public:
    /// As the base is made.
    using Base::Base;

    /// Makes an object with the class's constructor that reads a node. For a class without one, as
    /// TvOFXAggregate does: keeps the node and reads nothing from it.
    static std::shared_ptr<Class> initWithParseDict(const std::optional<ParseDictionary>& node) requires(
        !std::is_abstract_v<Class>) {
        if constexpr (std::is_constructible_v<Class, const std::optional<ParseDictionary>&>) {
            return std::make_shared<Class>(node);
        } else {
            auto object = std::make_shared<Class>();
            object->setOriginalParseData(node);
            return object;
        }
    }
    /// Reads what encodeWithCoder wrote. The classes whose comments name keys of an archive get their fields
    /// back. Of the others an archive holds the node alone: their object is a new one with that node, and
    /// `initWithParseDict(object->originalParseData())` reads the fields from it.
    static std::shared_ptr<Class> initWithCoder(const KeyedUnarchiver& coder) requires(
        !std::is_abstract_v<Class>) {
        if constexpr (std::is_constructible_v<Class, const KeyedUnarchiver&>) {
            return std::make_shared<Class>(coder);
        } else {
            auto object = std::make_shared<Class>();
            object->setOriginalParseData(TvOFXAggregate(coder).originalParseData());
            return object;
        }
    }
};

/// A STATUS aggregate. Its fields stay empty unless it has both CODE and SEVERITY.
class BRACKWELL_EXPORT TvOFXStatus : public AggregateClass<TvOFXStatus, TvOFXAggregate> {
public:
    TvOFXStatus() noexcept = default;

    /// Reads a STATUS node.
    explicit TvOFXStatus(const std::optional<ParseDictionary>& node);
    /// "Status: 2000 [ERROR] - General error", without the parts that are absent or empty.
    std::string description() const override;
    /// The aggregate as OFX text. The code's line never has a close tag, whatever the version:
    /// intended. Nothing is escaped.
    std::string ofxString() const override;
    std::string_view className() const noexcept override;

    /// The status code; 0 is success, and also the value when none was read. A negative text
    /// wraps around.
    std::uint64_t code() const noexcept { return code_; }
    /// The severity word as received ("INFO", "WARN", "ERROR").
    OptionalText severity() const noexcept { return texts_.get(severity_); }
    /// The institution's free text.
    OptionalText message() const noexcept { return texts_.get(message_); }

private:
    enum Text : std::size_t { severity_, message_, textCount };
    std::uint64_t code_ = 0;
    internal::TextFields<textCount> texts_;
};

/// The base of every response: what its transaction wrapper says of it. An object of this very class
/// stands for a response whose aggregate has no class of its own.
class BRACKWELL_EXPORT TvOFXResponse : public AggregateClass<TvOFXResponse, TvOFXAggregate> {
public:
    TvOFXResponse() noexcept = default;

    /// Reads STATUS. Where the node holds a wrapper (a name that ends in "TRNRS"), reads that name and the
    /// node's TRNUID as well; and when the node has no STATUS, that of the response which the wrapper is for
    /// (STMTRS for STMTTRNRS), when it stands in the same node.
    explicit TvOFXResponse(const std::optional<ParseDictionary>& node);
    /// "Generic TvOFXResponse.", whatever the object holds.
    std::string description() const override;
    std::string_view className() const noexcept override;

    /// @{
    /// Whether the server could answer (STATUS); null when the document does not say. A response with an
    /// error is an object like any other, mostly without content.
    const std::shared_ptr<TvOFXStatus>& status() const noexcept { return status_; }
    void setStatus(std::shared_ptr<TvOFXStatus> status) noexcept { status_ = std::move(status); }
    /// @}
    /// @{
    /// The client's transaction identifier (TRNUID).
    OptionalText transactionUID() const noexcept { return texts_.get(transactionUID_); }
    void setTransactionUID(TextArgument uid) { texts_.set(transactionUID_, uid); }
    /// @}
    /// @{
    /// The name of the response's element after interpretation ("STMTRS").
    OptionalText transactionWrapperName() const noexcept { return texts_.get(transactionWrapperName_); }
    void setTransactionWrapperName(TextArgument name) { texts_.set(transactionWrapperName_, name); }
    /// @}

private:
    enum Text : std::size_t { transactionUID_, transactionWrapperName_, textCount };
    std::shared_ptr<TvOFXStatus> status_;
    internal::TextFields<textCount> texts_;
};

// ---------------------------------------------------------------------------------------------
// Upper floor

/// Responses, in the order in which they were built.
using TvOFXResponseList = std::vector<std::shared_ptr<TvOFXResponse>>;

/// Values by text, looked up without making a string.
template <class Value>
using TextMap = std::map<std::string, Value, std::less<>>;

/// Turns a parse tree into responses. Made for one parser result; interpret reads the whole tree.
class BRACKWELL_EXPORT TvOFXInterpreter {
public:
    /// @{
    /// Keeps the tree of the result; nothing is interpreted yet.
    static std::shared_ptr<TvOFXInterpreter> initWithParseResult(const TvOFXParserResult& parserResult);
    explicit TvOFXInterpreter(const TvOFXParserResult& parserResult) : parserDict_(parserResult.ofxData) {}
    /// @}

    /// The root of the tree; absent when the document was not OFX.
    const std::optional<ParseDictionary>& parserDict() const noexcept { return parserDict_; }

    /// @{
    /// The helper that statements convert with; the other responses always use the shared one.
    const std::shared_ptr<TvOFXHelper>& helperObject() const noexcept { return helperObject_; }
    void setHelperObject(std::shared_ptr<TvOFXHelper> helper) noexcept { helperObject_ = std::move(helper); }
    /// @}

    /// Forgets earlier results and reads the tree. False when the tree has no "OFX" with children. Of a
    /// message set that stands twice in "OFX" neither is read, and nothing of two "OFX": intended.
    bool interpret();
    /// Forgets all results; the tree and the helper stay.
    void reset() noexcept;

    /// Builds one response from a wrapper (a key that ends in "TRNRS") or a bare response, gives it its
    /// STATUS and TRNUID, and files it in all indexes but the message-set lists.
    std::shared_ptr<TvOFXResponse> interpretResponseDict(const std::optional<ParseDictionary>& node,
                                                         std::string_view withMessageSetKey);
    /// An object of the class that stands for an aggregate of this name. It is filed nowhere, but a SONRS is
    /// signOnResponse from then on, and a PROFRS fiProfileResponse.
    std::shared_ptr<TvOFXResponse> createResponseObjectForKey(
        std::string_view name, const std::optional<ParseDictionary>& andResponseDict);
    /// Appends to the list of the message set; does nothing unless it is one of the ten known ones, or when
    /// there is no response.
    void addResponse(const std::shared_ptr<TvOFXResponse>& response, std::string_view toMessageSet);

    /// @{
    /// The last SONRS and PROFRS; null when there was none.
    const std::shared_ptr<TvOFXSignOnResponse>& signOnResponse() const noexcept { return signOnResponse_; }
    const std::shared_ptr<TvOFXFIProfileResponse>& fiProfileResponse() const noexcept {
        return fiProfileResponse_;
    }
    /// @}

    /// Every response, in the order built: those of a message set together, and in it those of one name
    /// together, where the first of them stands. Among those of one name it is document order; the order in
    /// which unlike names alternate is not kept.
    const TvOFXResponseList& allResponses() const noexcept { return responseObjects_; }
    /// @{
    /// The responses by their TRNUID, and by the name of their aggregate ("STMTRS").
    const TextMap<TvOFXResponseList>& allResponsesWithTransactionUID() const noexcept {
        return responseObjectsPerTranUID_;
    }
    const TextMap<TvOFXResponseList>& responseObjectsPerSGMLKey() const noexcept {
        return responseObjectsPerSGMLKey_;
    }
    /// @}
    /// The status of each response that has one and a transaction UID; the last one for each UID.
    const TextMap<std::shared_ptr<TvOFXStatus>>& allStatusObjects() const noexcept { return statusObjects_; }
    /// @{
    /// The responses of one aggregate's name ("STMTRS"), or of one transaction UID; null when there are
    /// none. Valid until the next interpret or reset.
    const TvOFXResponseList* responsesForKey(std::string_view name) const;
    const TvOFXResponseList* responsesForTransactionUID(std::string_view uid) const;
    /// @}

    /// @{
    /// The responses of each message set, whatever its version digit. The spelling of two of the names
    /// is that of the system.
    const TvOFXResponseList& signonMsgSetResponses() const noexcept { return messageSets_[signOn]; }
    const TvOFXResponseList& signupMsgSetResponses() const noexcept { return messageSets_[signUp]; }
    const TvOFXResponseList& bankingMsgSetResponses() const noexcept { return messageSets_[banking]; }
    const TvOFXResponseList& creditCardMsgSetResponses() const noexcept { return messageSets_[creditCard]; }
    const TvOFXResponseList& investmentMgsSetResponses() const noexcept { return messageSets_[investment]; }
    const TvOFXResponseList& interbankFundsMsgSetResponses() const noexcept {
        return messageSets_[interbankTransfers];
    }
    const TvOFXResponseList& wireFundsMsgSetResponses() const noexcept { return messageSets_[wireTransfers]; }
    const TvOFXResponseList& billPaymentMsgSetResponses() const noexcept { return messageSets_[billPayment]; }
    const TvOFXResponseList& emailMsgSetReponses() const noexcept { return messageSets_[email]; }
    const TvOFXResponseList& investmentSecListMsgSetResponses() const noexcept {
        return messageSets_[securities];
    }
    /// @}

private:
    enum MessageSet : std::size_t {
        signOn,
        signUp,
        banking,
        creditCard,
        investment,
        interbankTransfers,
        wireTransfers,
        billPayment,
        email,
        securities,
        messageSetCount
    };
    BRACKWELL_INTERNAL void file(const std::shared_ptr<TvOFXResponse>& response, std::string_view name);

    internal::EmptiedByMove<std::optional<ParseDictionary>> parserDict_;
    std::shared_ptr<TvOFXHelper> helperObject_;
    std::shared_ptr<TvOFXSignOnResponse> signOnResponse_;
    std::shared_ptr<TvOFXFIProfileResponse> fiProfileResponse_;
    TvOFXResponseList responseObjects_;
    TextMap<TvOFXResponseList> responseObjectsPerTranUID_;
    TextMap<TvOFXResponseList> responseObjectsPerSGMLKey_;
    TextMap<std::shared_ptr<TvOFXStatus>> statusObjects_;
    std::array<TvOFXResponseList, messageSetCount> messageSets_;
};

/// Settings for a message that an application builds; without content today.
struct TvOFXUserSettings {};

/// What a message has found in the text that it was made of.
enum class MessageContent : std::uint8_t {
    notOFX,  ///< nothing yet, or only text that does not begin like OFX
    /// OFX without a response that could be read: only a header, names in small letters, or XML that is no
    /// OFX
    noResponses,
    responses,  ///< at least one response, also one that the message does not keep, as to a sign-on
};

/// One OFX document: its header fields, the responses of its message sets, and, for a document that
/// an application builds, its requests.
class BRACKWELL_EXPORT TvOFXMessage {
public:
    TvOFXMessage() = default;
    /// A message with the header defaults of a document to be written. The settings are not used.
    static std::shared_ptr<TvOFXMessage> initWithUserSettings(const TvOFXUserSettings& settings = {});

    /// Takes over a parser result: the header fields are overwritten, responses are appended to the
    /// lists. Either formatter may be null; with at least one, statements convert with a helper of
    /// their own, otherwise with the shared one.
    void processParserResult(const TvOFXParserResult& parserResult,
                             std::shared_ptr<const NumberFormatter> numberFormatter = nullptr,
                             std::shared_ptr<const DateFormatter> dateFormatter = nullptr);
    /// Adds a request, which gets the message's OFX version.
    void addRequest(const std::shared_ptr<TvOFXRequest>& request);

    /// @{
    /// Header fields: OFXHEADER and VERSION as numbers; SECURITY, DATA, ENCODING, CHARSET, OLDFILEUID,
    /// NEWFILEUID and COMPRESSION as texts, valid until the next processParserResult. A header that lacks a
    /// number leaves it as it was, at first 0; one that lacks a text takes it away. What ENCODING and CHARSET
    /// say was not used to decode the document.
    std::uint64_t headerVersion() const noexcept { return headerVersion_; }
    std::uint64_t ofxVersion() const noexcept { return ofxVersion_; }
    OptionalText ofxSecurity() const noexcept { return texts_.get(ofxSecurity_); }
    OptionalText headerData() const noexcept { return texts_.get(headerData_); }
    OptionalText encoding() const noexcept { return texts_.get(encoding_); }
    OptionalText charset() const noexcept { return texts_.get(charset_); }
    OptionalText oldFileUID() const noexcept { return texts_.get(oldFileUID_); }
    OptionalText nuFileUID() const noexcept { return texts_.get(nuFileUID_); }
    OptionalText compression() const noexcept { return texts_.get(compression_); }
    /// @}

    /// The requests in the order added; absent until the first one.
    const std::optional<std::vector<std::shared_ptr<TvOFXRequest>>>& allRequests() const noexcept {
        return allRequests_;
    }
    /// The responses of the banking message set.
    const TvOFXResponseList& bankingMsgSet() const noexcept { return bankingMsgSet_; }
    /// Whether the text was OFX, and held something: neither is an error of the import. Of several parser
    /// results, it is the one with most.
    MessageContent content() const noexcept { return content_; }
    /// Always absent: a message keeps no bytes of its document; an application that needs them keeps them.
    const std::optional<Data>& data() const noexcept { return data_; }

    /// The bank accounts followed by the card accounts. Made on the first call and kept: later calls
    /// return the same list, whatever was added since. The first call changes the message, so it is for
    /// one thread.
    const std::vector<std::shared_ptr<TvOFXAggregate>>& accountsFound();
    /// The same list without keeping it: what the first call kept, or, before that, what it would keep.
    std::vector<std::shared_ptr<TvOFXAggregate>> accountsFound() const;
    /// @{
    /// The accounts of the statements, in the order of TvOFXInterpreter::allResponses; not those of account
    /// information, which a message does not hold: intended. Each is the very object that its statement
    /// holds; nothing is merged, so an account with two statements stands here twice.
    std::vector<std::shared_ptr<TvOFXBankAccount>> bankAccountsFound() const;
    std::vector<std::shared_ptr<TvOFXCreditCardAccount>> creditCardAccountsFound() const;
    /// @}

    /// @{
    /// The first statement whose account is this very object, so only accounts that this message
    /// handed out find theirs; null otherwise. Takes the same time however many statements there are.
    std::shared_ptr<TvOFXStatementResponse> statementsForBankAccount(
        const std::shared_ptr<const TvOFXAggregate>& account) const;
    std::shared_ptr<TvOFXCCStatementResponse> statementsForCreditCardAccount(
        const std::shared_ptr<const TvOFXAggregate>& account) const;
    /// @}

private:
    enum Text : std::size_t {
        ofxSecurity_,
        headerData_,
        encoding_,
        charset_,
        oldFileUID_,
        nuFileUID_,
        compression_,
        textCount
    };
    friend class OpenedDocument;
    BRACKWELL_INTERNAL static internal::TextFields<textCount> headerTexts(const reading::NodeRef& header);
    BRACKWELL_INTERNAL void take(const std::optional<ParseDictionary>& header,
                                 const TvOFXInterpreter& interpreter);
    BRACKWELL_INTERNAL void takeResponses(const TvOFXInterpreter& interpreter);

    /// Where each response of a list stands in it.
    using Places = std::unordered_map<const TvOFXResponse*, std::size_t>;
    BRACKWELL_INTERNAL static Places placesOf(const TvOFXResponseList& more, std::size_t first);

    internal::EmptiedByMove<std::uint64_t> headerVersion_;
    internal::EmptiedByMove<std::uint64_t> ofxVersion_;
    internal::EmptiedByMove<MessageContent> content_;  ///< notOFX when it is new
    internal::TextFields<textCount> texts_;
    internal::EmptiedByMove<std::optional<std::vector<std::shared_ptr<TvOFXRequest>>>> allRequests_;
    internal::EmptiedByMove<std::optional<std::vector<std::shared_ptr<TvOFXAggregate>>>> accountsFound_;
    std::shared_ptr<TvOFXSignOnResponse> signonResponse_;
    std::vector<std::shared_ptr<TvOFXAggregate>> signupMsgSet_;
    TvOFXResponseList bankingMsgSet_;
    TvOFXResponseList creditCardMsgSet_;
    TvOFXResponseList investmentMsgSet_;
    TvOFXResponseList interbankFundsMsgSet_;
    TvOFXResponseList wireFundsMsgSet_;
    TvOFXResponseList billPaymentMsgSet_;
    TvOFXResponseList emailMsgSet_;
    TvOFXResponseList secListMsgSet_;
    Places bankingPlaces_;
    Places creditCardPlaces_;
    std::shared_ptr<TvOFXFIProfileRequest> profileRequest_;
    std::shared_ptr<TvOFXFIProfileResponse> profileResponse_;
    std::optional<Data> data_;
};

/// A message of the institution to the user, made from the status of a response.
class BRACKWELL_EXPORT TvOFXFIMessage {
public:
    /// @{
    /// Takes severity and message of the response's status, and the current time.
    static std::shared_ptr<TvOFXFIMessage> initWithOFXResponse(const TvOFXResponse& response);
    explicit TvOFXFIMessage(const TvOFXResponse& response);
    /// @}

    /// When this object was made.
    Date date() const noexcept { return date_; }
    /// "[INFO] Statement ready": the status's severity and message, each "(null)" when there is none.
    const std::string& message() const noexcept { return message_; }

private:
    Date date_;
    std::string message_;
};

/// A view of a list of responses: the statement with the balance, its transactions, and the
/// institution's messages.
class BRACKWELL_EXPORT TvOFXResult {
public:
    /// @{
    /// Keeps the responses and makes the institution's messages.
    static std::shared_ptr<TvOFXResult> initWithResultObjects(TvOFXResponseList responses);
    explicit TvOFXResult(TvOFXResponseList responses);
    /// @}

    /// @{
    /// The message that the responses came from, when the application sets it; not used here.
    const std::shared_ptr<TvOFXMessage>& originalMessage() const noexcept { return originalMessage_; }
    void setOriginalMessage(std::shared_ptr<TvOFXMessage> message) noexcept {
        originalMessage_ = std::move(message);
    }
    /// @}
    /// The responses that the result was made with.
    const TvOFXResponseList& allResponses() const noexcept { return ofxResponseObjects_; }
    /// One for each status that has a text and whose severity is not exactly "ERROR".
    const std::vector<std::shared_ptr<TvOFXFIMessage>>& allFIMessages() const noexcept {
        return allFIMessages_;
    }

    /// The first bank statement of the list; null when there is none. Card statements never count:
    /// intended.
    std::shared_ptr<TvOFXStatementResponse> balance() const;
    /// The transactions of balance(), as they stand there; null when there is none. Valid as long as
    /// the statement.
    const std::vector<std::shared_ptr<TvOFXStatementTransaction>>* transactions() const;
    /// Makes the institution's messages; runs once at construction, and appends them again when called.
    void createMessagesArrayFromStatusObjects();

private:
    std::shared_ptr<TvOFXMessage> originalMessage_;
    TvOFXResponseList ofxResponseObjects_;
    std::vector<std::shared_ptr<TvOFXFIMessage>> allFIMessages_;
};

/// A flat view of one account-information record (accounts.h). The banking properties come from the
/// record's bank block only; without it they are 0, false or nothing.
class BRACKWELL_EXPORT TvOFXAccount {
public:
    /// Null when there is no record.
    static std::shared_ptr<TvOFXAccount> initWithAccountInfos(
        std::shared_ptr<const TvOFXAccountInfo> accountInfo);

    /// "TvOFXAccount:" and, when there is one, the description, each on a line.
    std::string description() const;

    /// The record that is viewed; null only once the view was moved from, which then is as that of an empty
    /// record.
    const std::shared_ptr<const TvOFXAccountInfo>& ofxAccountInfo() const noexcept { return accountInfo_; }
    /// @{
    /// "USA" until one has been set: no document says which country an account is in.
    std::string_view country() const noexcept {
        return country_.get() ? std::string_view(*country_.get()) : "USA";
    }
    void setCountry(TextArgument country);
    /// @}

    /// @{
    /// The record's own SVCSTATUS, DESC and PHONE.
    TvOFXServiceStatus serviceStatus() const noexcept;
    OptionalText accountDescription() const noexcept;
    OptionalText accountPhone() const noexcept;
    /// @}
    /// @{
    /// The record's bank block: its account, what can be done with it, the account's fields, its SVCSTATUS
    /// and its type. Texts are valid as long as the record.
    std::shared_ptr<TvOFXBankAccount> bankAccount() const;
    TvOFXServiceStatus bankingServiceStatus() const noexcept;
    bool supportsTransactionDownload() const noexcept;
    bool isTransferSourceAccount() const noexcept;
    bool isTransferDestinationAccount() const noexcept;
    OptionalText bankingBankID() const noexcept;
    OptionalText bankingBranchID() const noexcept;
    OptionalText bankingAccountID() const noexcept;
    OptionalText bankingAcctKeyChecksum() const noexcept;
    TvOFXBankAccountType bankingAccountType() const noexcept;
    /// @}
    /// @{
    /// The SVCSTATUS of the other blocks; 0 for records that were read, as those blocks are not.
    TvOFXServiceStatus creditCardServiceStatus() const noexcept;
    TvOFXServiceStatus paymentsServiceStatus() const noexcept;
    TvOFXServiceStatus investmentServiceStatus() const noexcept;
    /// @}

private:
    explicit TvOFXAccount(std::shared_ptr<const TvOFXAccountInfo> accountInfo) noexcept
        : accountInfo_(std::move(accountInfo)) {}

    BRACKWELL_INTERNAL const TvOFXAccountInfo& record() const noexcept;

    std::shared_ptr<const TvOFXAccountInfo> accountInfo_;
    internal::EmptiedByMove<std::optional<std::string>> country_;
};

}  // namespace brackwell
