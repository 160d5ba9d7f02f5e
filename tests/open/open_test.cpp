// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>
#include <doctest/doctest.h>

#include <algorithm>

#include "support/documents.h"
#include "support/temporary_folder.h"

/// \file
/// Opening files and bytes: what comes back, in which encoding, in how many documents, and within which
/// limits.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::string statement(const std::string& account, const std::string& transactions) {
    return "<STMTTRNRS><TRNUID>1<STATUS><CODE>0<SEVERITY>INFO</"
           "STATUS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1"
           "<ACCTID>" +
           account + "<ACCTTYPE>CHECKING</BANKACCTFROM><BANKTRANLIST><DTSTART>20240101<DTEND>20240131" +
           transactions + "</BANKTRANLIST></STMTRS></STMTTRNRS>";
}

std::string document(const std::string& memo, const std::string& account = "1") {
    return "OFXHEADER:100\nDATA:OFXSGML\nCHARSET:1252\n\n<OFX><BANKMSGSRSV1>" +
           statement(account, "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240105<TRNAMT>-5.00<FITID>1<MEMO>" + memo +
                                  "</STMTTRN>") +
           "</BANKMSGSRSV1></OFX>\n";
}

OpenedFile opened(const std::string& bytes, const OpenOptions& options = {}) {
    return openData(Data::copy(bytes), options);
}

std::vector<std::string> memosOf(const OpenedFile& file) {
    std::vector<std::string> memos;
    for (const auto& statement : file.statements())
        for (const auto& transaction : statement->statementTransactions())
            memos.emplace_back(transaction->memo().value_or("?"));
    return memos;
}

bool has(const OpenedFile& file, FindingKind kind) {
    return std::ranges::any_of(file.findings(), [kind](const Finding& found) { return found.kind == kind; });
}

bool isInside(std::string_view part, std::string_view whole) {
    return std::less_equal<>()(whole.data(), part.data()) &&
           std::less_equal<>()(part.data() + part.size(), whole.data() + whole.size());
}

}  // namespace

TEST_CASE("an example opens with its statements, sign-on, message and no finding") {
    const OpenedFile file = openData(exampleData("checking.ofx"));
    REQUIRE(file);
    CHECK(file.error().code == OpenErrorCode::none);
    CHECK(file.findings().empty());
    REQUIRE(file.documents().size() == 1);
    const auto message = importedExample("checking.ofx");
    REQUIRE(file.statements().size() == message->bankAccountsFound().size());
    REQUIRE(file.statements().size() == 1);
    CHECK(file.statements()[0]->statementTransactions().size() ==
          message->statementsForBankAccount(message->bankAccountsFound()[0])->statementTransactions().size());
    CHECK(file.signOn() != nullptr);
    CHECK(file.profile() == nullptr);
    CHECK(file.responses().size() == 2);
    CHECK(file.message()->ofxVersion() == message->ofxVersion());
    CHECK(file.documents()[0].changes().empty());
    CHECK(file.documents()[0].text() == exampleData("checking.ofx"));
    CHECK(file.documents()[0].readText() == file.documents()[0].text());
}

TEST_CASE("the message of an opened document has the very responses of the document") {
    const OpenedFile file = openData(exampleData("checking.ofx"));
    const auto message = file.message();
    REQUIRE(message->bankAccountsFound().size() == 1);
    CHECK(message->statementsForBankAccount(message->bankAccountsFound()[0]) == file.statements()[0]);
    CHECK(message->bankingMsgSet() == file.documents()[0].interpreter()->bankingMsgSetResponses());
}

TEST_CASE("paths and file URLs are opened in every form, and the file outlives nothing") {
    const TemporaryFolder folder;
    const std::string path = folder.file("a b%.ofx", document("tea"));
    const std::string inURL = folder.path() + "a%20b%25.ofx";
    CHECK(memosOf(openFile(path)) == std::vector<std::string>{"tea"});
    CHECK(memosOf(openFile(path.c_str())) == std::vector<std::string>{"tea"});
    CHECK(memosOf(openFile(std::string_view(path))) == std::vector<std::string>{"tea"});
    CHECK(memosOf(openFile(std::filesystem::path(path))) == std::vector<std::string>{"tea"});
    for (const char* const begin : {"file:", "file://", "file://localhost", "FILE://LocalHost"}) {
        CAPTURE(begin);
        CHECK(memosOf(openFile(begin + inURL)) == std::vector<std::string>{"tea"});
    }
}

TEST_CASE("what cannot be opened has a code and says what it is") {
    const TemporaryFolder folder;
    struct Row {
        std::string name;
        OpenErrorCode code;
        std::string text;
    };
    const std::string missing = folder.path("none.ofx");
    for (const Row& row : std::vector<Row>{
             {missing, OpenErrorCode::notFound, "The file at " + missing + " was not found."},
             {folder.file("plain", "x") + "/x", OpenErrorCode::notFound, "was not found."},
             {std::string("a\0b", 3), OpenErrorCode::notFound, "was not found."},
             {folder.path(), OpenErrorCode::isFolder, folder.path() + " is a folder."},
             {"", OpenErrorCode::notFound, "The file at  was not found."},
             {folder.file("empty", ""), OpenErrorCode::empty, "no data to parse"},
             {"file://example.com/july.ofx", OpenErrorCode::otherComputer,
              "The URL names another computer: example.com."},
             {"file:july.ofx", OpenErrorCode::invalidURL, "The URL names no file: file:july.ofx"},
             {"file:///a%2", OpenErrorCode::invalidURL, "The URL names no file"},
             {"file:///a%zz", OpenErrorCode::invalidURL, "The URL names no file"},
             {"file:///a%00b", OpenErrorCode::invalidURL, "The URL names no file"},
             {"file://localhost", OpenErrorCode::invalidURL, "The URL names no file"},
         }) {
        CAPTURE(row.name);
        const OpenedFile file = openFile(row.name);
        CHECK_FALSE(file);
        CHECK(nameOf(file.error().code) == nameOf(row.code));
        CHECK(file.error().text.find(row.text) != std::string::npos);
        CHECK(file.statements().empty());
        CHECK(file.responses().empty());
        CHECK(file.message() == nullptr);
        CHECK(file.signOn() == nullptr);
        CHECK(file.findings().empty());
    }
    CHECK(openFile(static_cast<const char*>(nullptr)).error().code == OpenErrorCode::notFound);
}

TEST_CASE("bytes that are no OFX document are named as what they are") {
    struct Row {
        std::string bytes;
        OpenErrorCode code;
        std::string cause;
    };
    for (const Row& row : std::vector<Row>{
             {"<!doctype HTML><html><body>Sign in</body></html>", OpenErrorCode::html, "web page"},
             {"<HTML>Sign in", OpenErrorCode::html, "web page"},
             {"<!-- saved --><html>Sign in</html>", OpenErrorCode::html, "web page"},
             {"%PDF-1.4\n...", OpenErrorCode::otherFormat, "PDF"},
             {"PK\x03\x04\xFF", OpenErrorCode::otherFormat, "ZIP"},
             {"\x1F\x8B\x08", OpenErrorCode::otherFormat, "gzip"},
             {"\xD0\xCF\x11\xE0\xA1", OpenErrorCode::otherFormat, "office"},
             {"!Type:Bank\nD01/02/24\n", OpenErrorCode::otherFormat, "QIF"},
             {":20:STARTUMS\n", OpenErrorCode::otherFormat, "MT940"},
             {"{\"a\": 1}", OpenErrorCode::otherFormat, "JSON"},
             {"<OFC><DTD>2</OFC>", OpenErrorCode::ofc, "OFC"},
             {"Dear customer, nothing to see", OpenErrorCode::notOFX, "begins with \"Dear customer"},
             {" \n ", OpenErrorCode::notOFX, "nothing but white space"},
             {std::string("\xFF\xFF\x00\xD8", 4), OpenErrorCode::undecodable, ""},
         }) {
        CAPTURE(row.bytes);
        const OpenedFile file = opened(row.bytes);
        CHECK_FALSE(file);
        CHECK(nameOf(file.error().code) == nameOf(row.code));
        CHECK(file.error().cause.find(row.cause) != std::string::npos);
        CHECK(file.error().description().find(file.error().cause) != std::string::npos);
    }
}

TEST_CASE("an error is short and without control characters, whatever the document") {
    const std::string document = "<OFX><A>1</\x1B[31m" + std::string(10'000'000, 'X') + ">";
    const OpenedFile file = opened(document, OpenOptions::asIs());
    CHECK(file.error().code == OpenErrorCode::tagsDoNotMatch);
    CHECK(file.error().description().size() < 1000);
    CHECK(file.error().description().find('\x1B') == std::string::npos);
    CHECK(opened(std::string(100, '\x1B')).error().description().find('\x1B') == std::string::npos);
}

TEST_CASE("tags that do not match have both places, a cause and a remedy when repairs are not wanted") {
    const std::string document = "OFXHEADER:100\n\n<OFX>\n<STATUS>\n<CODE>0\n</STATUSS>\n</OFX>";
    const OpenedFile file = opened(document, OpenOptions::asIs());
    CHECK_FALSE(file);
    const OpenError& error = file.error();
    CHECK(error.code == OpenErrorCode::tagsDoNotMatch);
    CHECK(error.text ==
          "Found close tag </STATUSS> without opening tag. Maybe there is a close tag missing for <STATUS>.");
    CHECK(error.line == 6);
    CHECK(error.column == 1);
    CHECK(document.substr(error.offset, 10) == "</STATUSS>");
    REQUIRE(error.openedAt);
    CHECK(document.substr(*error.openedAt, 8) == "<STATUS>");
    CHECK(error.cause == "The close tag is misspelt, or belongs to another element than <STATUS>.");
    CHECK(error.isRepairable);
    REQUIRE(file.documents().size() == 1);
    CHECK(file.documents()[0].error().code == OpenErrorCode::tagsDoNotMatch);
    CHECK((*file.documents()[0].content().ofxHeader)["OFXHEADER"].text() == "100");
}

TEST_CASE("a secret in a tag is not quoted") {
    const OpenedFile file = opened("<OFX><USERPASS>a<b>c</USERPASS></OFX>", OpenOptions::asIs());
    CHECK(file.error().code == OpenErrorCode::tagsDoNotMatch);
    CHECK(file.error().description().find("<b>") == std::string::npos);
}

TEST_CASE("the encoding is found out, and said when it is a guess") {
    const OpenedFile windows = opened(document("Caf\xE9 \x80"));
    REQUIRE(windows);
    CHECK(memosOf(windows) == std::vector<std::string>{"Café €"});
    CHECK(windows.documents()[0].encoding() == TextEncodingWindows1252);
    REQUIRE(windows.findings().size() == 1);
    CHECK(windows.findings()[0].kind == FindingKind::encodingGuessed);
    CHECK(windows.findings()[0].text == "read as windows-1252");

    OpenOptions latin;
    latin.encoding = TextEncodingISOLatin1;
    const OpenedFile chosen = opened(document("Caf\xE9"), latin);
    CHECK(memosOf(chosen) == std::vector<std::string>{"Café"});
    CHECK(chosen.findings().empty());

    const OpenedFile marked = opened("\xEF\xBB\xBF" + document("tea"));
    CHECK(marked.documents()[0].mark() == "\xEF\xBB\xBF");
    CHECK(marked.findings().empty());
    CHECK(openData(exampleData("utf_16.ofx")).documents()[0].encoding() != TextEncodingUTF8);
}

TEST_CASE("a document that does not read is repaired, unless that is not wanted") {
    std::string broken = document("tea");
    broken.replace(broken.find("</STMTTRN>"), 10, "</STMTRN>");
    const OpenedFile repaired = opened(broken);
    REQUIRE(repaired);
    CHECK(memosOf(repaired) == std::vector<std::string>{"tea"});
    REQUIRE(has(repaired, FindingKind::repaired));
    const OpenedDocument& read = repaired.documents()[0];
    REQUIRE(read.changes().size() == 1);
    CHECK(read.text().bytes() == broken);
    CHECK(read.readText().bytes() == document("tea"));
    OpenOptions never;
    never.repair = OpenRepair::never;
    CHECK(opened(broken, never).error().code == OpenErrorCode::tagsDoNotMatch);
}

TEST_CASE("every document of a file is opened, each in its own encoding and with its own places") {
    const std::string first = document("Caf\xE9", "1");
    const std::string second = "\xEF\xBB\xBF" + document("Th\xC3\xA9", "2");
    std::string third = document("rum", "3");
    third.replace(third.find("-5.00"), 5, "-5.x0");
    const OpenedFile file = opened(first + second + "\n" + third);
    REQUIRE(file);
    REQUIRE(file.documents().size() == 3);
    CHECK(memosOf(file) == std::vector<std::string>{"Café", "Thé", "rum"});
    CHECK(file.documents()[0].encoding() == TextEncodingWindows1252);
    CHECK(file.documents()[1].encoding() == TextEncodingUTF8);
    CHECK(file.findings()[0].kind == FindingKind::severalDocuments);
    CHECK(file.findings()[0].count == 3);
    const auto odd = std::ranges::find(file.findings(), FindingKind::unreadableValue, &Finding::kind);
    REQUIRE(odd != file.findings().end());
    CHECK(odd->line == 16);
    CHECK(file.message()->bankAccountsFound().size() == 1);
}

TEST_CASE("several documents in UTF-16 are opened, too") {
    const std::string text = document("one") + document("two");
    const auto wide = encodeText(text, TextEncodingUTF16LittleEndian);
    REQUIRE(wide);
    const OpenedFile file = opened("\xFF\xFE" + std::string(wide->bytes()));
    CHECK(memosOf(file) == std::vector<std::string>{"one", "two"});
}

TEST_CASE("a document that was cut off does not swallow the next one") {
    std::string cut = document("one");
    cut.resize(cut.find("</STMTTRN>"));
    const OpenedFile file = opened(cut + "\n" + document("two"));
    CHECK(memosOf(file) == std::vector<std::string>{"one", "two"});
    CHECK(has(file, FindingKind::cutOff));
    CHECK(has(file, FindingKind::severalDocuments));
}

TEST_CASE("a document that does not read is a finding when another one of the file reads") {
    std::string broken = document("one");
    broken.replace(broken.find("</STMTTRN>"), 10, "</STMTRN>");
    const OpenedFile file = opened(document("two") + broken, OpenOptions::asIs());
    REQUIRE(file);
    CHECK(memosOf(file) == std::vector<std::string>{"two"});
    REQUIRE(has(file, FindingKind::unreadDocument));
    CHECK_FALSE(file.documents()[1]);
    CHECK(file.findings()[1].severity == FindingSeverity::error);
    CHECK(file.findings()[1].line == 10);
}

TEST_CASE("of many documents that are no text only the first ones name the encodings that read them") {
    std::string bytes;
    for (int i = 0; i < 6; ++i) bytes += "<OFX><A>\xFF\x81</OFX>\n";
    const OpenedFile file = opened(bytes);
    REQUIRE(file.documents().size() == 6);
    for (std::size_t i = 0; i < 6; ++i) {
        CAPTURE(i);
        const OpenError& error = file.documents()[i].error();
        CHECK(error.code == OpenErrorCode::undecodable);
        CHECK(error.remedy.starts_with(i < 4 ? "One of these encodings reads it: "
                                             : "Its encoding has to be told."));
    }
}

TEST_CASE("limits on size and depth are held") {
    OpenOptions limited;
    limited.maximumSize = 100;
    CHECK(opened(document("tea"), limited).error().code == OpenErrorCode::tooLarge);
    const TemporaryFolder folder;
    CHECK(openFile(folder.file("a", document("tea")), limited).error().code == OpenErrorCode::tooLarge);
    limited.maximumSize = 10'000;
    limited.maximumDepth = 6;  // OFX, message set, wrapper, statement, list, transaction
    CHECK(opened(document("tea"), limited));
    limited.maximumDepth = 5;
    const OpenedFile deep = opened(document("tea"), limited);
    CHECK(deep.error().code == OpenErrorCode::tooDeep);
    CHECK(deep.statements().empty());
}

TEST_CASE("the caller's formatters go before everything else") {
    OpenOptions options;
    options.numberFormatter = std::make_shared<DecimalNumberFormatter>(
        NumberFormat{.decimalSeparator = ",", .groupingSeparator = "."});
    options.dateFormatter = std::make_shared<PatternDateFormatter>("ddMMyyyy");
    std::string text = document("tea");
    text.replace(text.find("-5.00"), 5, "-5,25");
    text.replace(text.find("20240105"), 8, "05012024");
    const OpenedFile file = opened(text, options);
    const auto& transaction = *file.statements()[0]->statementTransactions()[0];
    CHECK(transaction.amount()->toString() == "-5.25");
    CHECK(dateDescription(*transaction.datePosted()) == "2024-01-05 00:00:00 +0000");
}

TEST_CASE("amounts and dates are read as they are written, unless that is not wanted") {
    std::string text = document("tea");
    text.replace(text.find("-5.00"), 5, "-0,99");
    text.replace(text.find("20240105"), 8, "30/06/2024");
    const OpenedFile file = opened(text);
    const auto& transaction = *file.statements()[0]->statementTransactions()[0];
    CHECK(transaction.amount()->toString() == "-0.99");
    CHECK(dateDescription(*transaction.datePosted()) == "2024-06-30 00:00:00 +0000");
    CHECK(has(file, FindingKind::doubtfulValue));
    const OpenedFile asIs = opened(text, OpenOptions::asIs());
    const auto& prescribed = *asIs.statements()[0]->statementTransactions()[0];
    CHECK(prescribed.amount()->toString() == "-99");
    CHECK_FALSE(prescribed.datePosted());
    CHECK(has(asIs, FindingKind::doubtfulValue));
}

TEST_CASE("an account list gives the blocks that its records leave out") {
    const OpenedFile file = opened(
        "<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><TRNUID>1<ACCTINFORS><DTACCTUP>20240101<ACCTINFO><DESC>Both"
        "<BANKACCTINFO><BANKACCTFROM><BANKID>1<ACCTID>11<ACCTTYPE>CHECKING</BANKACCTFROM><SUPTXDL>Y<XFERSRC>Y"
        "<XFERDEST>N<SVCSTATUS>ACTIVE</BANKACCTINFO><CCACCTINFO><CCACCTFROM><ACCTID>22</CCACCTFROM><SUPTXDL>Y"
        "<XFERSRC>N<XFERDEST>N<SVCSTATUS>ACTIVE</CCACCTINFO></ACCTINFO><ACCTINFO><INVACCTINFO><INVACCTFROM>"
        "<BROKERID>b<ACCTID>33</INVACCTFROM><USPRODUCTTYPE>OTHER<CHECKING>N<SVCSTATUS>ACTIVE</INVACCTINFO>"
        "</ACCTINFO></ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1></OFX>");
    const std::vector<ListedAccount> accounts = file.accounts();
    REQUIRE(accounts.size() == 2);
    CHECK(accounts[0].record->accountDescription() == "Both");
    CHECK(accounts[0].bank->bankAcctFrom()->accountID() == "11");
    CHECK(accounts[0].card->accountID() == "22");
    CHECK(accounts[0].investment == nullptr);
    CHECK(accounts[1].bank == nullptr);
    CHECK(accounts[1].card == nullptr);
    CHECK(accounts[1].investment->investmentAccount()->accountID() == "33");
    CHECK(file.findings().empty());
}

TEST_CASE("what was taken from a file stays when the file is gone") {
    std::vector<std::shared_ptr<TvOFXAccountStatement>> statements;
    {
        const OpenedFile file = opened(document("tea"));
        statements = file.statements();
    }
    CHECK(statements[0]->statementTransactions()[0]->memo() == "tea");
}

TEST_CASE("a detached transaction is equal, and refers to nothing of its document") {
    const OpenedFile file = openData(exampleData("checking.ofx"));
    const std::string_view text = file.documents()[0].text().bytes();
    for (const auto& transaction : file.statements()[0]->statementTransactions()) {
        const auto copy = detached(transaction);
        CHECK(copy->isEqualOFXStatementTransaction(transaction.get()));
        CHECK(copy->description() == transaction->description());
        CHECK(copy->originalDataString() == transaction->originalDataString());
        REQUIRE(copy->fiTransactionID());
        CHECK(isInside(*transaction->fiTransactionID(), text));
        CHECK_FALSE(isInside(*copy->fiTransactionID(), text));
        CHECK_FALSE(isInside(*copy->originalDataString(), text));
    }
    CHECK(detached(std::shared_ptr<const TvOFXStatementTransaction>()) == nullptr);
}

TEST_CASE("a detached transaction has what was set since it was read") {
    const OpenedFile file = opened(document("tea"));
    const auto& transaction = file.statements()[0]->statementTransactions()[0];
    transaction->setFiTransactionID("mine");
    transaction->setDatePosted(std::nullopt);
    const auto copy = detached(transaction);
    CHECK(copy->fiTransactionID() == "mine");
    CHECK_FALSE(copy->datePosted());
    // One that was not read from a document is copied, too.
    const auto archived = restored(*transaction);
    CHECK(detached(archived)->memo() == "tea");
}

TEST_CASE("a detached statement has account, balances, transactions and status of its own") {
    for (const char* const example : {"checking.ofx", "card.ofx"}) {
        CAPTURE(example);
        const OpenedFile file = openData(exampleData(example));
        const std::string_view text = file.documents()[0].text().bytes();
        REQUIRE_FALSE(file.statements().empty());
        const auto& statement = file.statements()[0];
        const auto copy = detached(statement);
        CHECK(copy->className() == statement->className());
        CHECK(copy->description() == statement->description());
        CHECK(copy->transactionUID() == statement->transactionUID());
        CHECK(copy->transactionWrapperName() == statement->transactionWrapperName());
        REQUIRE(statement->status());
        REQUIRE(copy->status());
        CHECK(copy->status()->code() == statement->status()->code());
        CHECK_FALSE(isInside(*copy->defaultCurrency(), text));
        CHECK_FALSE(isInside(*copy->status()->severity(), text));
        REQUIRE(copy->statementTransactions().size() == statement->statementTransactions().size());
        CHECK_FALSE(isInside(*copy->statementTransactions()[0]->transactionType(), text));
    }
    CHECK(detached(std::shared_ptr<const TvOFXAccountStatement>()) == nullptr);
}

TEST_CASE("a place counts lines of every kind and characters, not bytes") {
    const std::string_view text = "a\nb\r\nc\rdé€x";
    struct Row {
        std::size_t offset;
        TextPlace place;
    };
    for (const Row& row : {Row{0, {1, 1}}, Row{1, {1, 2}}, Row{2, {2, 1}}, Row{5, {3, 1}}, Row{7, {4, 1}},
                           Row{8, {4, 2}}, Row{10, {4, 3}}, Row{13, {4, 4}}, Row{99, {4, 5}}}) {
        CAPTURE(row.offset);
        CHECK(placeInText(text, row.offset).line == row.place.line);
        CHECK(placeInText(text, row.offset).column == row.place.column);
    }
}

TEST_CASE("every kind, severity and code has a name of its own") {
    std::vector<std::string_view> names;
    for (int kind = 0; kind <= static_cast<int>(FindingKind::repaired); ++kind)
        names.push_back(nameOf(static_cast<FindingKind>(kind)));
    for (int code = 0; code <= static_cast<int>(OpenErrorCode::tooDeep); ++code)
        names.push_back(nameOf(static_cast<OpenErrorCode>(code)));
    for (int severity = 0; severity <= static_cast<int>(FindingSeverity::error); ++severity)
        names.push_back(nameOf(static_cast<FindingSeverity>(severity)));
    for (const std::string_view name : names) CHECK_FALSE(name.empty());
    std::ranges::sort(names);
    CHECK(std::ranges::adjacent_find(names) == names.end());
}

TEST_CASE("a header whose fields share a line or stand in comments is read whole") {
    const std::string body = document("m").substr(document("m").find("<OFX>"));
    for (const std::string header :
         {"OFXHEADER:100 DATA:OFXSGML VERSION:102 SECURITY:NONE ",
          "OFXHEADER:100\nDATA:OFXSGML VERSION:102\n"
          "SECURITY:NONE\n",
          "OFXHEADER:100\n<!-- x -->DATA:OFXSGML\nVERSION:102\n<!-- y -->SECURITY:NONE\n",
          "OFXHEADER:100 <!-- x --> DATA:OFXSGML <!-- y --> VERSION:102 SECURITY:NONE\n",
          "OFXHEADER:100\nDATA:OFXSGML\n<!-- VERSION:102\nSECURITY:NONE\n"}) {
        CAPTURE(header);
        const OpenedFile file = opened(header + body);
        REQUIRE(file);
        const auto message = file.documents()[0].message();
        CHECK(message->headerVersion() == 100);
        CHECK(message->ofxVersion() == 102);
        CHECK(message->ofxSecurity() == "NONE");
        CHECK(memosOf(file) == std::vector<std::string>{"m"});
        CHECK(has(file, FindingKind::repaired));
        CHECK_FALSE(has(file, FindingKind::cutOff));
        OpenOptions asIs;
        asIs.repair = OpenRepair::never;
        CHECK(opened(header + body, asIs).documents()[0].changes().empty());
    }
}

TEST_CASE("parts of a profile and of an account list that are not read are mended or told") {
    const std::string profile(exampleData("profile.ofx").bytes());
    const auto part = [&profile](const std::string& name) {
        const std::size_t begin = profile.find("<" + name + ">");
        const std::string close = "</" + name + ">";
        return profile.substr(begin, profile.find(close, begin) + close.size() - begin);
    };
    const auto with = [&profile](const std::string& was, const std::string& now) {
        std::string text = profile;
        return text.replace(text.find(was), was.size(), now);
    };
    const std::string list = part("MSGSETLIST");
    const auto without = [](std::string text, const std::string& piece) {
        return text.erase(text.find(piece), piece.size());
    };
    const std::string sets = list.substr(12, list.size() - 25);
    struct Row {
        std::string name;
        std::string text;
        FindingKind kind;
    };
    const std::string accounts(exampleData("account_information.ofx").bytes());
    for (const Row& row : {Row{"two lists of message sets",
                               with(list, "<MSGSETLIST>" + part("SIGNONMSGSET") + "</MSGSETLIST>" +
                                              without(list, part("SIGNONMSGSET"))),
                               FindingKind::repaired},
                           {"two lists of realms",
                            with(part("SIGNONINFOLIST"), part("SIGNONINFOLIST") + part("SIGNONINFOLIST")),
                            FindingKind::repaired},
                           {"message sets without their list", with(list, sets), FindingKind::repaired},
                           {"two profiles of a message set",
                            with(part("SIGNONMSGSET"), part("SIGNONMSGSET") + part("SIGNONMSGSET")),
                            FindingKind::notDelivered}}) {
        CAPTURE(row.name);
        const OpenedFile file = opened(row.text);
        REQUIRE(file);
        CHECK(has(file, row.kind));
        REQUIRE(file.documents()[0].profile() != nullptr);
    }
    const OpenedFile bare = opened(
        "OFXHEADER:100\n\n<OFX><SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS><ACCTINFO><DESC>x<BANKACCTFROM>"
        "<BANKID>1<ACCTID>2</BANKACCTFROM></ACCTINFO></ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1></OFX>");
    CHECK(has(bare, FindingKind::notDelivered));
    CHECK_FALSE(has(openData(exampleData("profile.ofx")), FindingKind::notDelivered));
    CHECK_FALSE(has(openData(exampleData("every_element.ofx")), FindingKind::repaired));
    CHECK_FALSE(has(opened(accounts), FindingKind::notDelivered));
}
