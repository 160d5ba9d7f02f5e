// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"
#include "support/transcript.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

template <class... Classes>
constexpr bool kCanBeCopiedAndMoved = ((std::is_copy_constructible_v<Classes> &&
                                        std::is_copy_assignable_v<Classes> &&
                                        std::is_move_constructible_v<Classes> &&
                                        std::is_move_assignable_v<Classes>)&&...);

static_assert(
    kCanBeCopiedAndMoved<Data, Decimal, TimeZone, DecimalNumberFormatter, PatternDateFormatter, KeyedArchiver,
                         KeyedUnarchiver, ParseValue, ParseDictionary, ParseDictionary::DocumentOrder,
                         TvOFXParser, TvOFXParserResult, TvOFXHelper>);
static_assert(kCanBeCopiedAndMoved<TvOFXInterpreter, TvOFXMessage, TvOFXFIMessage, TvOFXResult, TvOFXAccount,
                                   TvOFXBankAccountInfo, TvOFXCreditCardAccountInfo, TvOFXPaymentsAccountInfo,
                                   TvOFXAccountInfo, TvOFXUserAccountInfo, TvOFXFIProfile>);
static_assert(kCanBeCopiedAndMoved<OpenedFile, OpenedDocument, OpenOptions, OpenError, Finding, RepairedText,
                                   InvestmentStatement, InvestmentTransaction, Position, InvestmentBalance,
                                   Security, SecurityList, InvestmentList<Position>>);
// What stands for an aggregate is shared by a pointer and neither copied nor moved.
static_assert(!std::is_copy_constructible_v<TvOFXStatus> && !std::is_move_constructible_v<TvOFXStatus> &&
              !std::is_copy_assignable_v<TvOFXStatus> && !std::is_move_assignable_v<TvOFXStatus>);

constexpr std::string_view kStatement =
    "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\nSECURITY:NONE\nENCODING:USASCII\nCHARSET:1252\n"
    "COMPRESSION:NONE\nOLDFILEUID:NONE\nNEWFILEUID:NONE\n\n"
    "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STATUS><CODE>0<SEVERITY>INFO<MESSAGE>Fine</STATUS><STMTRS>"
    "<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM><BANKTRANLIST><STMTTRN>"
    "<DTPOSTED>20240131<TRNAMT>-5.00<FITID>1</STMTTRN></BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>"
    "</OFX>";
constexpr std::string_view kRecord =
    "<DESC>Checking<PHONE>555<SVCSTATUS>PEND<BANKACCTINFO><BANKACCTFROM><BANKID>1<BRANCHID>2<ACCTID>3"
    "<ACCTTYPE>SAVINGS<ACCTKEY>4</BANKACCTFROM><SUPTXDL>Y<XFERSRC>Y<XFERDEST>Y<SVCSTATUS>ACTIVE</"
    "BANKACCTINFO>";

std::string joined(std::initializer_list<std::string> answers) {
    std::string all;
    for (const std::string& answer : answers) all.append(answer).append("|");
    return all;
}
std::string number(std::uint64_t value) { return std::to_string(value); }

/// @{
/// What an object answers to all questions, as one text.
std::string answersOf(const Data& data) {
    return joined({std::string(data.bytes()), number(data.size()), number(data.isEmpty()),
                   number(data.isView()), std::string(data.owned().bytes())});
}
std::string answersOf(const TimeZone& zone) {
    const TimeZone::Offset offset = zone.offsetAt(utc(2024, 7, 1));
    return joined({std::to_string(offset.fromUTC.count()), offset.abbreviation,
                   shown(zone.fromLocal(std::chrono::local_days(std::chrono::year(2024) / 7 / 1)))});
}
std::string answersOf(const DecimalNumberFormatter& formatter) {
    return joined({formatter.stringFromNumber(*Decimal::fromString("-1234.5")).value_or("nothing"),
                   shown(formatter.numberFromString("1.234,5")), formatter.format().decimalSeparator});
}
std::string answersOf(const PatternDateFormatter& formatter) {
    return joined({formatter.pattern(), formatter.locale(), formatter.stringFromDate(utc(2024, 7, 1))});
}
std::string answersOf(const ParseValue& value) {
    return joined({number(static_cast<std::uint64_t>(value.kind())), shown(value.text()),
                   number(value.elements().size()), number(value.dictionary().has_value()),
                   number(value["A"].isNothing()), number(value == ParseValue())});
}
std::string answersOf(const ParseDictionary& dictionary) {
    std::uint64_t elements = 0;
    for ([[maybe_unused]] const auto& entry : dictionary.inDocumentOrder()) ++elements;
    return joined({indentedOFXText(dictionary), number(dictionary.size()), shown(dictionary["A"].text()),
                   number(elements), number(dictionary == ParseDictionary())});
}
std::string answersOf(const KeyedArchiver& coder) { return std::string(coder.archivedData().bytes()); }
std::string answersOf(const KeyedUnarchiver& coder) {
    return joined(
        {shown(coder.decodeText("text")), number(coder.contains("date")), shown(coder.decodeDate("date"))});
}
std::string answersOf(const TvOFXHelper& helper) {
    return joined({shown(helper.dateFromOFXDateString("31.01.2024")),
                   shown(helper.dateFromOFXDateString("20240131")),
                   shown(helper.decimalNumberFromOFXAmountString("1.234,5")),
                   helper.ofxAmountStringFromDecimalNumber(Decimal::fromInteger(1234)).value_or("nothing"),
                   answersOf(helper.ofxDateFormatter5()), number(helper.dateFormatter() != nullptr)});
}
std::string answersOf(const TvOFXInterpreter& interpreter) {
    return joined({transcriptOf(interpreter), number(interpreter.parserDict().has_value()),
                   number(interpreter.allResponses().size()), number(interpreter.allStatusObjects().size()),
                   number(interpreter.responsesForKey("STMTRS") != nullptr),
                   number(interpreter.responsesForTransactionUID("1") != nullptr),
                   number(interpreter.bankingMsgSetResponses().size()),
                   number(interpreter.helperObject() != nullptr)});
}
std::string answersOf(const TvOFXMessage& message) {
    TvOFXMessage copy = message;  // accountsFound changes what it asks
    return joined({transcriptOf(copy), number(message.headerVersion()), number(message.ofxVersion()),
                   shown(message.ofxSecurity()), shown(message.charset()), shown(message.nuFileUID()),
                   number(message.allRequests().has_value()), number(message.bankingMsgSet().size()),
                   number(copy.accountsFound().size()), number(message.bankAccountsFound().size())});
}
std::string answersOf(const TvOFXResult& result) {
    return joined({number(result.allResponses().size()), number(result.allFIMessages().size()),
                   number(result.balance() != nullptr), number(result.transactions() != nullptr)});
}
std::string answersOf(const TvOFXBankAccountInfo& block) {
    return joined({shown(block.bankID()), shown(block.branchID()), shown(block.accountID()),
                   shown(block.acctKeyChecksum()), number(block.accountType()),
                   number(block.supportsTransactionDownload()), number(block.isTransferSourceAccount()),
                   number(block.isTransferDestinationAccount()), number(block.serviceStatus())});
}
std::string answersOf(const TvOFXCreditCardAccountInfo& block) {
    return joined({shown(block.accountID()), shown(block.acctKeyChecksum()),
                   number(block.supportsTransactionDownload()), number(block.isTransferSourceAccount()),
                   number(block.isTransferDestinationAccount()), number(block.serviceStatus())});
}
std::string answersOf(const TvOFXAccountInfo& record) {
    return joined({shown(record.accountDescription()), shown(record.accountPhone()),
                   number(record.serviceStatus()), number(record.bankAccountInfo() != nullptr)});
}
std::string answersOf(const TvOFXAccount& account) {
    return joined({account.description(), std::string(account.country()), number(account.serviceStatus()),
                   shown(account.accountDescription()), shown(account.accountPhone()),
                   number(account.bankAccount() != nullptr), number(account.bankingServiceStatus()),
                   number(account.supportsTransactionDownload()), number(account.isTransferSourceAccount()),
                   number(account.isTransferDestinationAccount()), shown(account.bankingBankID()),
                   shown(account.bankingBranchID()), shown(account.bankingAccountID()),
                   shown(account.bankingAcctKeyChecksum()), number(account.bankingAccountType()),
                   number(account.creditCardServiceStatus()), number(account.paymentsServiceStatus()),
                   number(account.investmentServiceStatus())});
}
std::string answersOf(const TvOFXUserAccountInfo& info) {
    return joined({number(info.data().has_value()), number(info.allAccounts().size()),
                   number(info.allAccountInfos() != nullptr)});
}
std::string answersOf(const TvOFXFIProfile& profile) {
    return joined({profile.description(), number(profile.data().has_value()), shown(profile.fiName()),
                   number(profile.profileForMessageSet(TvOFXMessageSetTypeBanking) != nullptr)});
}
std::string answersOf(const SecurityList& list) {
    return joined({number(list.all().size()), number(list.find("1", "CUSIP").has_value())});
}
std::string answersOf(const InvestmentList<Position>& list) {
    std::string all = number(list.isEmpty());
    for (const Position& position : list) all.append(position.elementName());
    return all;
}
std::string answersOf(const OpenedDocument& document) {
    return joined({number(bool(document)), document.error().description(),
                   std::string(document.text().bytes()), std::string(document.mark()),
                   number(document.responses().size()), number(document.statements().size()),
                   number(document.signOn() != nullptr), number(document.message() != nullptr),
                   number(document.content().ofxData.has_value())});
}
std::string answersOf(const OpenedFile& file) {
    return joined({number(bool(file)), file.error().description(), number(file.documents().size()),
                   number(file.findings().size()), number(file.statements().size()),
                   number(file.message() != nullptr), number(file.securities().all().size())});
}
/// @}

/// A copy of an object answers like it, and so do those that it is moved to; what it was moved from answers
/// as `left` does, and can be assigned to.
template <class Object>
void checkMoves(const Object& object, const Object& left) {
    const std::string whole = answersOf(object);
    const std::string leftOver = answersOf(left);
    Object copy = object;
    CHECK(answersOf(copy) == whole);
    Object constructed = std::move(copy);
    CHECK(answersOf(constructed) == whole);
    CHECK(answersOf(copy) == leftOver);  // NOLINT(bugprone-use-after-move): what is tested
    Object assigned = left;
    assigned = std::move(constructed);
    CHECK(answersOf(assigned) == whole);
    CHECK(answersOf(constructed) == leftOver);  // NOLINT(bugprone-use-after-move): what is tested
    constructed = assigned;
    CHECK(answersOf(constructed) == whole);
    CHECK(answersOf(assigned) == whole);
}

TvOFXParserResult resultOf(std::string_view document) {
    return *TvOFXParser(Data::copy(document)).parseWithError();
}

}  // namespace

TEST_CASE("values of the platform are empty after a move") {
    checkMoves(Data::copy("bytes"), Data());
    checkMoves(Data::view("bytes"), Data());
    checkMoves(*TimeZone::named("Europe/Berlin"), TimeZone());
    checkMoves(TimeZone::fixed(std::chrono::hours(3)), TimeZone());
    KeyedArchiver archiver;
    archiver.encodeText("text", "a text that is longer than what a string holds in itself");
    archiver.encodeDate("date", utc(2024, 1, 31));
    checkMoves(archiver, KeyedArchiver());
    checkMoves(*KeyedUnarchiver::open(archiver.archivedData()),
               *KeyedUnarchiver::open(KeyedArchiver().archivedData()));
}

TEST_CASE("a move of a formatter is a copy") {
    const DecimalNumberFormatter german({.decimalSeparator = ",", .groupingSeparator = "."});
    checkMoves(german, german);
    const PatternDateFormatter date("dd.MM.yyyy");
    checkMoves(date, date);
}

TEST_CASE("a helper that was moved from has no formatters but its own") {
    TvOFXHelper helper;
    helper.setDateFormatter(std::make_shared<PatternDateFormatter>("dd.MM.yyyy"));
    helper.setAmountNumberFormatter(std::make_shared<DecimalNumberFormatter>(
        NumberFormat{.decimalSeparator = ",", .groupingSeparator = "."}));
    checkMoves(helper, TvOFXHelper());
}

TEST_CASE("parts of a tree are empty after a move") {
    const ParseDictionary tree{{"A", "1"}, {"B", ParseValue::array({"2", "3"})}};
    checkMoves(tree, ParseDictionary());
    checkMoves(ParseValue(tree), ParseValue());
    checkMoves(tree["A"], ParseValue());
    checkMoves(tree["B"], ParseValue());
}

TEST_CASE("a parser that was moved from has nothing to parse") {
    TvOFXParser parser(Data::copy(kStatement));
    TvOFXParser taken = std::move(parser);
    CHECK(taken.parseWithError()->ofxData.has_value());
    Error error;
    CHECK(parser.parseWithError(&error) == nullptr);  // NOLINT(bugprone-use-after-move): what is tested
    CHECK(error.description == "no data to parse");
    parser = TvOFXParser(Data::copy(kStatement));
    CHECK(parser.parseWithError()->ofxData.has_value());
}

TEST_CASE("an interpreter and a message are as new after a move") {
    TvOFXInterpreter interpreter(resultOf(kStatement));
    interpreter.setHelperObject(std::make_shared<TvOFXHelper>());
    REQUIRE(interpreter.interpret());
    checkMoves(interpreter, TvOFXInterpreter(TvOFXParserResult()));
    checkMoves(*imported(kStatement), TvOFXMessage());
    const TvOFXResult result(imported(kStatement)->bankingMsgSet());
    checkMoves(result, TvOFXResult(TvOFXResponseList()));
    TvOFXFIMessage message = *result.allFIMessages().at(0);
    const TvOFXFIMessage taken = std::move(message);
    CHECK(taken.message() == "[INFO] Fine");
    CHECK(message.message().empty());  // NOLINT(bugprone-use-after-move): what is tested
}

TEST_CASE("a message that was moved to itself has no statement of an account that it had") {
    const auto message = imported(kStatement);
    const auto account = message->bankAccountsFound().at(0);
    REQUIRE(message->statementsForBankAccount(account));
    TvOFXMessage& same = *message;
    *message = std::move(same);
    const auto statement = message->statementsForBankAccount(account);
    CHECK((statement == nullptr || statement->bankAccountFrom() == account));
}

TEST_CASE("a message that was moved from can be filled again") {
    TvOFXMessage message;
    message.processParserResult(resultOf(kStatement));
    message.addRequest(TvOFXFIProfileRequest::initWithUpdateDateTime());
    REQUIRE(message.accountsFound().size() == 1);
    const TvOFXMessage taken = std::move(message);
    CHECK(taken.allRequests()->size() == 1);
    // NOLINTBEGIN(bugprone-use-after-move): what is tested
    CHECK_FALSE(message.allRequests());
    message.processParserResult(resultOf(kStatement));
    CHECK(answersOf(message) == answersOf(*imported(kStatement)));
    CHECK(message.accountsFound().size() == 1);
    // NOLINTEND(bugprone-use-after-move)
}

TEST_CASE("records of an account list are empty after a move") {
    const auto record = TvOFXAccountInfo::initWithParserDict(parsed(kRecord));
    checkMoves(*record, TvOFXAccountInfo());
    checkMoves(*record->bankAccountInfo(), TvOFXBankAccountInfo());
    checkMoves(*TvOFXCreditCardAccountInfo::initWithParserDict(
                   parsed("<CCACCTFROM><ACCTID>1<ACCTKEY>2</CCACCTFROM><SUPTXDL>Y<XFERSRC>Y<XFERDEST>Y"
                          "<SVCSTATUS>AVAIL")),
               TvOFXCreditCardAccountInfo());
    const auto account = TvOFXAccount::initWithAccountInfos(record);
    account->setCountry("DEU");
    checkMoves(*account, *TvOFXAccount::initWithAccountInfos(std::make_shared<TvOFXAccountInfo>()));
    const auto response = TvOFXAccountInfoResponse::initWithParseDict(
        parsed("<ACCTINFO>" + std::string(kRecord) + "</ACCTINFO>"));
    checkMoves(*TvOFXUserAccountInfo::initWithAccountInfoResponse(response), TvOFXUserAccountInfo());
}

TEST_CASE("a profile is empty after a move") {
    const auto response = TvOFXFIProfileResponse::initWithParseDict(parsed("<FINAME>Bank<CITY>Town"));
    checkMoves(*TvOFXFIProfile::initWithProfileResponse(response), TvOFXFIProfile());
}

TEST_CASE("lists of investments are empty after a move, and their objects unchanged") {
    const ParseDictionary tree = parsed(
        "<INVSTMTRS><INVPOSLIST><POSSTOCK><INVPOS><SECID><UNIQUEID>1<UNIQUEIDTYPE>CUSIP</SECID>"
        "</INVPOS></POSSTOCK></INVPOSLIST></INVSTMTRS><SECLIST><STOCKINFO><SECINFO><SECID><UNIQUEID>1"
        "<UNIQUEIDTYPE>CUSIP</SECID></SECINFO></STOCKINFO></SECLIST>");
    const auto statements = investmentStatements(tree);
    REQUIRE(statements.size() == 1);
    auto positions = statements[0].positions();
    const std::string whole = answersOf(positions);
    CHECK(whole == "0POSSTOCK");
    const auto taken = std::move(positions);
    CHECK(answersOf(taken) == whole);
    CHECK(answersOf(positions) == "1");  // NOLINT(bugprone-use-after-move): what is tested
    checkMoves(SecurityList(securities(tree)), SecurityList());
    auto statement = statements[0];
    const auto takenStatement = std::move(statement);
    CHECK(takenStatement.positions().size() == 1);
    CHECK(statement.positions().size() == 1);  // NOLINT(bugprone-use-after-move): what is tested
}

TEST_CASE("a move of an opened file, or of a document of it, is a copy") {
    const OpenedFile file = openData(Data::copy(kStatement));
    REQUIRE(file);
    checkMoves(file, file);
    checkMoves(file.documents()[0], file.documents()[0]);
    const OpenedFile unread = openData(Data());
    checkMoves(unread, unread);
}
