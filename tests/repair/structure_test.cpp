// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/tree_text.h"

/// Documents with elements where they cannot stand, in the shapes that institutions send: what becomes of
/// them, and that all of their transactions and balances arrive.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

const std::string kHeader = "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\n\n";
const std::string kStatus = "<STATUS><CODE>0<SEVERITY>INFO</STATUS>";
const std::string kSignOn =
    "<SIGNONMSGSRSV1><SONRS>" + kStatus + "<DTSERVER>20240101<LANGUAGE>ENG</SONRS></SIGNONMSGSRSV1>";
const std::string kBankAccount = "<BANKACCTFROM><BANKID>1<ACCTID>2<ACCTTYPE>CHECKING</BANKACCTFROM>";
const std::string kCardAccount = "<CCACCTFROM><ACCTID>9</CCACCTFROM>";
const std::string kPeriod = "<DTSTART>20240101<DTEND>20240131";
const std::string kLedger = "<LEDGERBAL><BALAMT>5<DTASOF>20240131</LEDGERBAL>";
const std::string kAvailable = "<AVAILBAL><BALAMT>6<DTASOF>20240131</AVAILBAL>";

std::string in(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
}
std::string transaction(const std::string& id) {
    return in("STMTTRN", "<TRNTYPE>DEBIT<DTPOSTED>20240101<TRNAMT>-1<FITID>" + id);
}
std::string list(const std::string& transactions) { return in("BANKTRANLIST", kPeriod + transactions); }
std::string statement(const std::string& content) {
    return in("STMTRS", "<CURDEF>USD" + kBankAccount + content);
}
std::string cardStatement(const std::string& content) {
    return in("CCSTMTRS", "<CURDEF>USD" + kCardAccount + content);
}
std::string wrapped(const std::string& response) { return in("STMTTRNRS", "<TRNUID>1" + kStatus + response); }
std::string cardWrapped(const std::string& response) {
    return in("CCSTMTTRNRS", "<TRNUID>1" + kStatus + response);
}
std::string bank(const std::string& content) { return in("BANKMSGSRSV1", content); }
std::string card(const std::string& content) { return in("CREDITCARDMSGSRSV1", content); }
std::string ofx(const std::string& content) { return in("OFX", content); }
std::string inBank(const std::string& content) { return kHeader + ofx(bank(wrapped(statement(content)))); }
std::string inCards(const std::string& content) {
    return kHeader + ofx(card(cardWrapped(cardStatement(content))));
}
std::string inInvestments(const std::string& content) {
    return kHeader + ofx(in("INVSTMTMSGSRSV1", in("INVSTMTTRNRS", "<TRNUID>1" + kStatus + content)));
}
std::string signUp(const std::string& content) {
    return kHeader + ofx(in("SIGNUPMSGSRSV1", in("ACCTINFOTRNRS", "<TRNUID>1" + kStatus + content)));
}

std::string without(std::string text, std::string_view piece) {
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at))
        text.erase(at, piece.size());
    return text;
}
std::string withoutCloseTags(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        if (text.compare(at, 2, "</") == 0)
            at = text.find('>', at) + 1;
        else
            result += text[at++];
    }
    return result;
}

/// "bank 2: a b, ledger, available; card 9: ..." for all statements that a document has for its accounts.
std::string delivered(const std::string& text) {
    const auto message =
        TovanaOFXController::importOFXFileFromData(Data::view(text), TextEncodingUTF8, nullptr, nullptr);
    std::string result;
    if (!message) return result;
    const auto add = [&result](const TvOFXAccountStatement& statement, const std::string& account) {
        result += account + ":";
        for (const auto& transaction : statement.statementTransactions())
            result += " " + std::string(transaction->fiTransactionID().value_or("?"));
        if (statement.ledgerBalanceAmount()) result += " ledger";
        if (statement.availableBalanceAmount()) result += " available";
        if (statement.transactionStartDateTime()) result += " period";
        result += "; ";
    };
    for (const auto& response : message->bankingMsgSet())
        if (const auto* found = dynamic_cast<const TvOFXStatementResponse*>(response.get()))
            add(*found, found->bankAccountFrom() ? "bank" : "no account");
    for (const auto& account : message->creditCardAccountsFound())
        add(*message->statementsForCreditCardAccount(account), "card");
    return result;
}

struct Shape {
    std::string name;
    std::string text;
    std::string repaired;
    std::string delivers;
};

void checkShapes(const std::vector<Shape>& shapes) {
    for (const Shape& shape : shapes) {
        CAPTURE(shape.name);
        const RepairedText repaired = repairOFXText(shape.text, RepairScope::structure);
        CHECK(repaired.text == shape.repaired);
        CHECK(delivered(repaired.text) == shape.delivers);
        CHECK(repairOFXText(repaired.text, RepairScope::structure).changes.empty());
        for (const RepairChange& change : repaired.changes) {
            CAPTURE(change.offset);
            const bool isOfStructure =
                change.kind == RepairKind::misplaced || change.kind == RepairKind::repeated ||
                change.kind == RepairKind::wrongName || change.kind == RepairKind::missingOpen ||
                change.kind == RepairKind::missingClose;
            CHECK(change.reason.empty() != isOfStructure);
        }
    }
}

const std::string kA = transaction("a");
const std::string kB = transaction("b");

}  // namespace

TEST_CASE("a document that is wholly delivered stays as it is, byte for byte") {
    for (const std::string& text :
         {inBank(list(kA + kB) + kLedger + kAvailable), inCards(list(kA) + kLedger),
          kHeader + "<OFX><BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STMTRS><CURDEF>USD<X.NOTE>a<X.NOTE>b",
          inBank(list("<X.NOTE>n" + kA) + in("X.LIST", kA) + kLedger)}) {
        CAPTURE(text);
        const RepairedText repaired = repairOFXText(text, RepairScope::structure);
        CHECK(repaired.text == text);
        CHECK(repaired.changes.empty());
        CHECK(repaired.remaining.empty());
    }
    for (const char* name : {"checking.ofx", "card.ofx", "household.ofx", "every_element.ofx", "profile.ofx",
                             "extension_names.ofx", "account_information.ofx", "errors.ofx"}) {
        CAPTURE(name);
        const RepairedText repaired = repairOFXText(exampleData(name).bytes(), RepairScope::structure);
        CHECK(repaired.changes.empty());
    }
}

TEST_CASE("what is left where the standard has no place for it is told") {
    struct Row {
        std::string text;
        std::string reason;
    };
    for (const Row& row :
         {Row{inBank(list(in("STMTTRN", "<FITID>a<MEMO>b<MEMO>c"))),
              "a second <MEMO> is not allowed in <STMTTRN>"},
          {"<OFX>" + in("SIGNONMSGSRSV1", in("SONRS", "<DTSERVER>1") + in("SONRS", "<DTSERVER>2")),
           "a second <SONRS> is not allowed in <SIGNONMSGSRSV1>"},
          {"<OFX><STMTTRNX><STMTTRN><X.LIST><BANKTRANLIST>x",
           "<BANKTRANLIST> has text, which only a leaf may have"},
          {"<OFX><CURDEF>USD<X.LIST>", "<CURDEF> is not allowed in <OFX>"},
          {"<OFX><X.LIST><Memo>a", "<Memo> must be in capitals"}}) {
        CAPTURE(row.text);
        const RepairedText repaired = repairOFXText(row.text, RepairScope::structure);
        CHECK(repaired.text == row.text);
        REQUIRE(repaired.remaining.size() == 1);
        CHECK(repaired.remaining[0].reason == row.reason);
    }
}

TEST_CASE("the scope says whether a document that reads is repaired") {
    const std::string text = inBank(kA);
    CHECK(repairOFXText(text).changes.empty());
    CHECK(repairOFXText(text, RepairScope::unread).changes.empty());
    CHECK(repairOFXText(text, RepairScope::structure).changes.size() == 2);
}

TEST_CASE("a document without any close tag gets them all") {
    const std::string whole = ofx(kSignOn + bank(wrapped(statement(list(kA + kB) + kLedger + kAvailable))));
    const std::string cards = ofx(kSignOn + card(cardWrapped(cardStatement(list(kA + kB) + kLedger))));
    checkShapes({
        {"bank", kHeader + withoutCloseTags(whole), kHeader + whole, "bank: a b ledger available period; "},
        {"card", kHeader + withoutCloseTags(cards), kHeader + cards, "card: a b ledger period; "},
    });
    const std::string invested = inInvestments(
        in("INVSTMTRS",
           "<DTASOF>20240131<CURDEF>USD" + in("INVACCTFROM", "<BROKERID>b<ACCTID>2") +
               in("INVTRANLIST",
                  kPeriod +
                      in("BUYSTOCK", in("INVBUY", in("INVTRAN", "<FITID>1<DTTRADE>20240101") +
                                                      in("SECID", "<UNIQUEID>u<UNIQUEIDTYPE>CUSIP") +
                                                      "<UNITS>1<UNITPRICE>2<TOTAL>-2") +
                                         "<BUYTYPE>BUY") +
                      in("INVBANKTRAN", kA + "<SUBACCTFUND>CASH")) +
               in("INVPOSLIST", in("POSSTOCK", in("INVPOS", in("SECID", "<UNIQUEID>u<UNIQUEIDTYPE>CUSIP") +
                                                                "<HELDINACCT>CASH"))) +
               in("INVBAL", "<AVAILCASH>1<MARGINBALANCE>0<SHORTBALANCE>0")));
    CHECK(repairOFXText(withoutCloseTags(invested), RepairScope::structure).text == invested);
}

TEST_CASE("what stands twice where one may is delivered twice, or becomes one") {
    const std::string first = statement(list(kA) + kLedger);
    const std::string second = statement(list(kB) + kLedger);
    const std::string both = bank(wrapped(first) + wrapped(second));
    checkShapes({
        {"two STMTRS in one STMTTRNRS", kHeader + ofx(bank(wrapped(first + second))),
         kHeader + ofx(bank(wrapped(first) + in("STMTTRNRS", second))),
         "bank: a ledger period; bank: b ledger period; "},
        {"each with its TRNUID",
         kHeader + ofx(bank(in("STMTTRNRS", "<TRNUID>1" + kStatus + first + "<TRNUID>1" + kStatus + second))),
         kHeader + ofx(both), "bank: a ledger period; bank: b ledger period; "},
        {"two BANKTRANLIST", inBank(list(kA) + in("BANKTRANLIST", kB) + kLedger),
         inBank(list(kA + kB) + kLedger), "bank: a b ledger period; "},
        {"two with a period", inBank(list(kA) + list(kB) + kLedger),
         inBank(list(kA + kB) + kPeriod + kLedger), "bank: a b ledger period; "},
        {"two apart", inBank(list(kA) + kLedger + in("BANKTRANLIST", kB)), inBank(list(kA + kB) + kLedger),
         "bank: a b ledger period; "},
        {"two in a card's statement", inCards(list(kA) + in("BANKTRANLIST", kB)), inCards(list(kA + kB)),
         "card: a b period; "},
        {"two BANKMSGSRSV1", kHeader + ofx(bank(wrapped(first)) + bank(wrapped(second))), kHeader + ofx(both),
         "bank: a ledger period; bank: b ledger period; "},
        {"two BANKMSGSRSV1 without a root", kHeader + bank(wrapped(first)) + bank(wrapped(second)),
         kHeader + ofx(both), "bank: a ledger period; bank: b ledger period; "},
        {"two SIGNONMSGSRSV1 without a root", kHeader + kSignOn + kSignOn + bank(wrapped(first)),
         kHeader + ofx(in("SIGNONMSGSRSV1",
                          kSignOn.substr(16, kSignOn.size() - 33) + kSignOn.substr(16, kSignOn.size() - 33)) +
                       bank(wrapped(first))),
         "bank: a ledger period; "},
        {"two <OFX>", kHeader + ofx(bank(wrapped(first))) + ofx(bank(wrapped(second))), kHeader + ofx(both),
         "bank: a ledger period; bank: b ledger period; "},
        {"two whole documents",
         kHeader + ofx(kSignOn + bank(wrapped(first))) + "\n" + kHeader +
             ofx(kSignOn + bank(wrapped(second))),
         kHeader +
             ofx(in("SIGNONMSGSRSV1",
                    kSignOn.substr(16, kSignOn.size() - 33) + kSignOn.substr(16, kSignOn.size() - 33)) +
                 both) +
             "",
         "bank: a ledger period; bank: b ledger period; "},
        {"two INVPOSLIST",
         inInvestments(in("INVSTMTRS", "<DTASOF>1" + in("INVPOSLIST", in("POSMF", in("INVPOS", "<UNITS>1"))) +
                                           in("INVPOSLIST", in("POSMF", in("INVPOS", "<UNITS>2"))))),
         inInvestments(
             in("INVSTMTRS", "<DTASOF>1" + in("INVPOSLIST", in("POSMF", in("INVPOS", "<UNITS>1")) +
                                                                in("POSMF", in("INVPOS", "<UNITS>2"))))),
         ""},
        {"two INVSTMTRS", inInvestments(in("INVSTMTRS", "<DTASOF>1") + in("INVSTMTRS", "<DTASOF>2")),
         kHeader + ofx(in("INVSTMTMSGSRSV1",
                          in("INVSTMTTRNRS", "<TRNUID>1" + kStatus + in("INVSTMTRS", "<DTASOF>1")) +
                              in("INVSTMTTRNRS", in("INVSTMTRS", "<DTASOF>2")))),
         ""},
        {"two ACCTINFORS", signUp(in("ACCTINFORS", "<DTACCTUP>1") + in("ACCTINFORS", "<DTACCTUP>2")),
         kHeader + ofx(in("SIGNUPMSGSRSV1",
                          in("ACCTINFOTRNRS", "<TRNUID>1" + kStatus + in("ACCTINFORS", "<DTACCTUP>1")) +
                              in("ACCTINFOTRNRS", in("ACCTINFORS", "<DTACCTUP>2")))),
         ""},
    });
}

TEST_CASE("leaves that two lists both have stay beside the one that comes of them, and are told") {
    const RepairedText repaired = repairOFXText(inBank(list(kA) + list(kB)), RepairScope::structure);
    REQUIRE(repaired.remaining.size() == 2);
    CHECK(repaired.remaining[0].reason == "<DTSTART> is not allowed in <STMTRS>");
    CHECK(repaired.text.substr(repaired.remaining[0].offset).starts_with("<DTSTART>"));
    CHECK(repaired.remaining[0].line == 5);
    CHECK(repaired.remaining[0].column == repaired.remaining[0].offset - kHeader.size() + 1);
}

TEST_CASE("what is missing around an element is put in") {
    const std::string list2 = list(kA + kB);
    checkShapes({
        {"STMTTRN in STMTRS", inBank(kA + kB + kLedger), inBank(in("BANKTRANLIST", kA + kB) + kLedger),
         "bank: a b ledger; "},
        {"STMTTRN in CCSTMTRS", inCards(kA + kB + kLedger), inCards(in("BANKTRANLIST", kA + kB) + kLedger),
         "card: a b ledger; "},
        {"with a period", inBank(kPeriod + kA + kLedger), inBank(list(kA) + kLedger),
         "bank: a ledger period; "},
        {"STMTTRN after its list", inBank(list(kA) + kB + kLedger), inBank(list2 + kLedger),
         "bank: a b ledger period; "},
        {"STMTTRN after the balance", inBank(list(kA) + kLedger + kB), inBank(list2 + kLedger),
         "bank: a b ledger period; "},
        {"STMTTRN before its list", inBank(kA + list(kB)), inBank(in("BANKTRANLIST", kA + kPeriod + kB)),
         "bank: a b period; "},
        {"leaves of a transaction in the list",
         inBank(in("BANKTRANLIST", "<TRNAMT>1<FITID>a<TRNAMT>2<FITID>b")),
         inBank(in("BANKTRANLIST", in("STMTTRN", "<TRNAMT>1<FITID>a") + in("STMTTRN", "<TRNAMT>2<FITID>b"))),
         "bank: a b; "},
        {"BANKTRANLIST as the root", kHeader + list2,
         kHeader + ofx(bank(in("STMTTRNRS", in("STMTRS", list2)))), "no account: a b period; "},
        {"without a header", list2, ofx(bank(in("STMTTRNRS", in("STMTRS", list2)))),
         "no account: a b period; "},
        {"STMTRS as the root", statement(list2), ofx(bank(in("STMTTRNRS", statement(list2)))),
         "bank: a b period; "},
        {"CCSTMTRS as the root", cardStatement(list2), ofx(card(in("CCSTMTTRNRS", cardStatement(list2)))),
         "card: a b period; "},
        {"message sets before an <OFX> that comes last", kSignOn + bank(wrapped(statement(list2))) + "<OFX>",
         ofx(kSignOn + bank(wrapped(statement(list2)))), "bank: a b period; "},
        {"after a header", kHeader + kSignOn + bank(wrapped(statement(list2))) + "<OFX></OFX>",
         kHeader + ofx(kSignOn + bank(wrapped(statement(list2)))), "bank: a b period; "},
        {"BUYSTOCK in INVSTMTRS",
         inInvestments(in("INVSTMTRS", "<DTASOF>1" + in("BUYSTOCK", "<BUYTYPE>BUY"))),
         inInvestments(in("INVSTMTRS", "<DTASOF>1" + in("INVTRANLIST", in("BUYSTOCK", "<BUYTYPE>BUY")))), ""},
        {"STMTTRN in INVTRANLIST", inInvestments(in("INVSTMTRS", in("INVTRANLIST", kPeriod + kA))),
         inInvestments(in("INVSTMTRS", in("INVTRANLIST", kPeriod + in("INVBANKTRAN", kA)))), ""},
        {"MFINFO in SECLISTMSGSRSV1", kHeader + ofx(in("SECLISTMSGSRSV1", in("MFINFO", "<YIELD>1"))),
         kHeader + ofx(in("SECLISTMSGSRSV1", in("SECLIST", in("MFINFO", "<YIELD>1")))), ""},
        {"SECLIST as the root", in("SECLIST", in("MFINFO", "<YIELD>1")),
         ofx(in("SECLISTMSGSRSV1", in("SECLIST", in("MFINFO", "<YIELD>1")))), ""},
        {"ACCTINFO in its wrapper", signUp(in("ACCTINFO", "<DESC>x")),
         signUp(in("ACCTINFORS", in("ACCTINFO", "<DESC>x"))), ""},
        {"BANKACCTINFO in ACCTINFORS", signUp(in("ACCTINFORS", in("BANKACCTINFO", kBankAccount))),
         signUp(in("ACCTINFORS", in("ACCTINFO", in("BANKACCTINFO", kBankAccount)))), ""},
    });
}

TEST_CASE("statements among those of the other kind are delivered with their account") {
    const std::string banks = statement(list(kA));
    const std::string cards = cardStatement(list(kB));
    const std::string cardsAsBanks = in("STMTRS", "<CURDEF>USD" + kCardAccount + list(kB));
    const std::string wanted = kHeader + ofx(card(cardWrapped(cards)));
    checkShapes({
        {"CCSTMTTRNRS in BANKMSGSRSV1", kHeader + ofx(bank(cardWrapped(cards))), wanted, "card: b period; "},
        {"CCSTMTRS in STMTTRNRS", kHeader + ofx(bank(wrapped(cards))), wanted, "card: b period; "},
        {"CCACCTFROM in STMTRS", kHeader + ofx(bank(wrapped(cardsAsBanks))), wanted, "card: b period; "},
        {"STMTTRNRS in CREDITCARDMSGSRSV1", kHeader + ofx(card(wrapped(banks))),
         kHeader + ofx(bank(wrapped(banks))), "bank: a period; "},
        {"both in BANKMSGSRSV1", kHeader + ofx(bank(wrapped(banks) + cardWrapped(cards))),
         kHeader + ofx(bank(wrapped(banks)) + card(cardWrapped(cards))), "bank: a period; card: b period; "},
        {"the bank's last", kHeader + ofx(bank(cardWrapped(cards) + wrapped(banks))),
         kHeader + ofx(bank(wrapped(banks)) + card(cardWrapped(cards))), "bank: a period; card: b period; "},
        {"CCSTMTRS directly in BANKMSGSRSV1", kHeader + ofx(bank(cards)),
         kHeader + ofx(card(in("CCSTMTTRNRS", cards))), "card: b period; "},
    });
}

TEST_CASE("what of an investment statement stands in another statement gets none of its own") {
    const std::string position = in("INVPOSLIST", in("POSSTOCK", in("INVPOS", "<UNITS>1")));
    for (const std::string& content :
         {in("INVBAL", "<AVAILCASH>9<MARGINBALANCE>0<SHORTBALANCE>0"),
          in("CASHBAL", "<BALAMT>9<DTASOF>20240131"), position, in("POSSTOCK", in("INVPOS", "<UNITS>1")),
          in("INVTRANLIST", kPeriod)}) {
        for (const std::string& text : {inBank(list(kA) + kLedger + content), inBank(content + list(kA)),
                                        inCards(list(kA) + kLedger + content)}) {
            CAPTURE(text);
            CHECK(repairOFXText(text, RepairScope::structure).text == text);
        }
    }
    const std::string inList = inBank(list(kA + in("BUYSTOCK", "<BUYTYPE>BUY")) + kLedger);
    CHECK(repairOFXText(inList, RepairScope::structure).text == inList);
}

TEST_CASE("an aggregate ends before what cannot stand in it") {
    const std::string whole = inBank(list(kA) + kLedger + kAvailable);
    checkShapes({
        {"</BANKTRANLIST> missing", without(whole, "</BANKTRANLIST>"), whole,
         "bank: a ledger available period; "},
        {"</BANKACCTFROM> missing", without(whole, "</BANKACCTFROM>"), whole,
         "bank: a ledger available period; "},
        {"</STATUS> missing", without(whole, "</STATUS>"), whole, "bank: a ledger available period; "},
        {"the balance before </BANKTRANLIST>", inBank(in("BANKTRANLIST", kPeriod + kA + kLedger)),
         inBank(list(kA) + kLedger), "bank: a ledger period; "},
        {"and between transactions", inBank(in("BANKTRANLIST", kPeriod + kA + kLedger + kB)),
         inBank(list(kA + kB) + kLedger), "bank: a b ledger period; "},
        {"leaves at the end",
         kHeader + ofx(in("SIGNONMSGSRSV1", in("SONRS", in("STATUS", "<CODE>0<DTSERVER>1<LANGUAGE>ENG")))),
         kHeader +
             ofx(in("SIGNONMSGSRSV1", in("SONRS", in("STATUS", "<CODE>0") + "<DTSERVER>1<LANGUAGE>ENG"))),
         ""},
        {"a second SECID",
         "<OFX><SECLISTMSGSRSV1><SECLIST><OPTINFO><SECINFO><SECID><UNIQUEID>a</SECID><SECNAME>n"
         "<SECID><UNIQUEID>b</SECID></OPTINFO></SECLIST></SECLISTMSGSRSV1></OFX>",
         "<OFX><SECLISTMSGSRSV1><SECLIST><OPTINFO><SECINFO><SECID><UNIQUEID>a</SECID><SECNAME>n</SECINFO>"
         "<SECID><UNIQUEID>b</SECID></OPTINFO></SECLIST></SECLISTMSGSRSV1></OFX>",
         ""},
        {"an empty aggregate is no empty leaf",
         inInvestments(in("INVSTMTRS", "<INV401K><INV401KSUMMARY><YEARTODATE>" + kPeriod +
                                           in("CONTRIBUTIONS", "<PRETAX>1") + "</INV401KSUMMARY></INV401K>")),
         inInvestments(in("INVSTMTRS",
                          in("INV401K", in("INV401KSUMMARY",
                                           in("YEARTODATE", kPeriod + in("CONTRIBUTIONS", "<PRETAX>1")))))),
         ""},
    });
}

TEST_CASE("elements that the standard does not know go with those around them, and end nothing") {
    checkShapes({
        {"in a moved statement", kHeader + ofx(bank(cardWrapped(in("X.A", "<X.B>1") + cardStatement("")))),
         kHeader + ofx(card(cardWrapped(in("X.A", "<X.B>1") + cardStatement("")))), "card:; "},
        {"where they stand", inBank(in("BANKTRANLIST", kA + "<X.NOTE>n" + kLedger)),
         inBank(in("BANKTRANLIST", kA + "<X.NOTE>n") + kLedger), "bank: a ledger; "},
    });
}

TEST_CASE("a header is completed") {
    const std::string body = ofx(bank(wrapped(statement(list(kA)))));
    const std::string all = "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\nCHARSET:1252";
    struct Row {
        const char* name;
        std::string before;
        std::string after;
    };
    for (const Row& row :
         {Row{"without its first line", "DATA:OFXSGML\n", "OFXHEADER:100\nDATA:OFXSGML\n"},
          {"in a comment", "<!--\nOFXHEADER:100\nDATA:OFXSGML\n-->\n", "OFXHEADER:100\nDATA:OFXSGML\n\n"},
          {"part of it in a comment", "x <!-- DATA:OFXSGML --> ", "OFXHEADER:100\nDATA:OFXSGML  "},
          {"after a comment", "<!-- made by a bank -->OFXHEADER:100\n", "OFXHEADER:100\n"},
          {"in one line", "OFXHEADER:100 DATA:OFXSGML  VERSION:102\tCHARSET:1252\n", all + "\n"},
          {"without any blank", "OFXHEADER:100DATA:OFXSGMLVERSION:102CHARSET:1252", all},
          {"XML without the instruction", "<?xml version=\"1.0\"?>\n",
           "<?xml version=\"1.0\"?><?OFX OFXHEADER=\"200\"?>\n"},
          {"XML without an end", "<?xml ", "<?xml ?><?OFX OFXHEADER=\"200\"?>"},
          {"XML in an envelope", "<?xml version=\"1.0\"?>\n<s:Envelope><s:Body id=\"1\">\n",
           "<?xml version=\"1.0\"?><?OFX OFXHEADER=\"200\"?>"},
          {"XML after a comment", "<?xml version=\"1.0\"?><!-- 1 < 2 -->",
           "<?xml version=\"1.0\"?><?OFX OFXHEADER=\"200\"?>"},
          {"after other text", "Dear customer\nDATA:OFXSGML\n", "OFXHEADER:100\nDATA:OFXSGML\n"}}) {
        CAPTURE(row.name);
        const RepairedText repaired = repairOFXText(row.before + body, RepairScope::structure);
        CHECK(repaired.text == row.after + body);
        CHECK(delivered(repaired.text) == "bank: a period; ");
        CHECK(repairOFXText(repaired.text, RepairScope::structure).changes.empty());
    }
}

TEST_CASE("a document in mixed case that is cut off inside a transaction is read as far as it goes") {
    const std::string text =
        "<OFX >" + bank(wrapped(statement("<BANKTRANLIST><stmttrn><TRNTYPE>DEBIT<trnamt>-1<FITID>a<nam")));
    const RepairedText repaired = repairOFXText(text.substr(0, text.find("<nam") + 4), RepairScope::unread);
    CHECK(delivered(repaired.text) == "bank: a; ");
}

TEST_CASE("neighbouring tags that have changed places change them back") {
    const std::string whole = inBank(list(kA + kB) + kLedger);
    struct Row {
        const char* is;
        const char* was;
    };
    for (const Row& row : {Row{"</STMTTRN><STMTTRN>", "<STMTTRN></STMTTRN>"},
                           {"</BANKACCTFROM><BANKTRANLIST>", "<BANKTRANLIST></BANKACCTFROM>"},
                           {"<STMTTRN><TRNTYPE>", "<TRNTYPE><STMTTRN>"},
                           {"</STMTTRN></BANKTRANLIST>", "</BANKTRANLIST></STMTTRN>"},
                           {"<BANKMSGSRSV1><STMTTRNRS>", "<STMTTRNRS><BANKMSGSRSV1>"},
                           {"</LEDGERBAL></STMTRS>", "</STMTRS></LEDGERBAL>"}}) {
        CAPTURE(row.is);
        std::string text = whole;
        const std::size_t at = text.find(row.is);
        REQUIRE(at != std::string::npos);
        text.replace(at, std::string_view(row.is).size(), row.was);
        CHECK(repairOFXText(text, RepairScope::structure).text == whole);
    }
    const std::string abroad =
        inBank(list(in("STMTTRN", "<FITID>a<MEMO>m</MEMO>" + in("CURRENCY", "<CURRATE>1.00<CURSYM>USD") +
                                      "<INV401KSOURCE>ROLLOVER")));
    for (const Row& row :
         {Row{"<CURRENCY><CURRATE>", "<CURRATE><CURRENCY>"}, {"</MEMO><CURRENCY>", "<CURRENCY></MEMO>"}}) {
        CAPTURE(row.is);
        std::string text = abroad;
        text.replace(text.find(row.is), std::string_view(row.is).size(), row.was);
        CHECK(repairOFXText(text, RepairScope::structure).text == abroad);
    }
    const std::string leaf = inBank(list(in("STMTTRN", "<FITID>a<MEMO>m<CURRENCY></MEMO>USD<NAME>n")));
    CHECK(repairOFXText(leaf, RepairScope::structure).text ==
          inBank(list(in("STMTTRN", "<FITID>a<MEMO>m</MEMO><CURRENCY>USD<NAME>n"))));
    CHECK(repairOFXText("<OFX><STMTTRN><FITID>1<NAME></FITID>Shop</NAME></STMTTRN></OFX></A>").text ==
          repairOFXText("<OFX><STMTTRN><FITID>1</FITID><NAME>Shop</NAME></STMTTRN></OFX></A>").text);
}

TEST_CASE("an open tag that stands twice in a row is dropped once") {
    const std::string whole = inBank(list(kA + kB) + kLedger + kAvailable);
    for (const std::string tag : {"<STATUS>", "<BANKMSGSRSV1>", "<STMTTRNRS>", "<STMTRS>", "<BANKACCTFROM>",
                                  "<BANKTRANLIST>", "<STMTTRN>", "<LEDGERBAL>", "<AVAILBAL>"}) {
        CAPTURE(tag);
        std::string text = whole;
        text.insert(text.find(tag), tag + "\n");
        const RepairedText repaired = repairOFXText(text, RepairScope::structure);
        REQUIRE(repaired.changes.size() == 1);
        CHECK(repaired.changes[0].was == tag);
        CHECK(repaired.changes[0].now.empty());
        CHECK(repaired.changes[0].reason == tag + " is opened twice in a row but closed once");
        CHECK(delivered(repaired.text) == delivered(whole));
        CHECK(repaired.remaining.empty());
        text.insert(text.find(tag), tag);
        CHECK(repairOFXText(text, RepairScope::structure).changes.size() == 2);
    }
}

TEST_CASE("of a currency that is opened twice in a row, one open tag is dropped") {
    const std::string whole =
        inBank(list(in("STMTTRN", "<FITID>a" + in("CURRENCY", "<CURRATE>1<CURSYM>USD"))));
    std::string text = whole;
    text.insert(text.find("<CURRENCY>"), "<CURRENCY>");
    CHECK(repairOFXText(text, RepairScope::structure).text == whole);
}

TEST_CASE("a close tag without its slash makes no second, empty element") {
    const std::string whole =
        kHeader + ofx(kSignOn + bank(wrapped(statement(list(kA + kB) + kLedger + kAvailable))));
    for (const std::string name : {"STATUS", "SONRS", "STMTTRNRS", "STMTRS", "BANKACCTFROM", "BANKTRANLIST",
                                   "STMTTRN", "LEDGERBAL", "AVAILBAL"}) {
        CAPTURE(name);
        for (std::size_t at = whole.find("</" + name + ">"); at != std::string::npos;
             at = whole.find("</" + name + ">", at + 1)) {
            CAPTURE(at);
            const RepairedText repaired =
                repairOFXText(std::string(whole).erase(at + 1, 1), RepairScope::structure);
            CHECK(repaired.text == whole);
            REQUIRE(repaired.changes.size() == 1);
            CHECK(repaired.changes[0].kind == RepairKind::wrongClose);
            CHECK(repaired.changes[0].offset == at);
            CHECK(repaired.changes[0].reason ==
                  "<" + name + "> is already open, and what follows does not belong in a second one");
        }
    }
}

TEST_CASE("a reason says why") {
    const auto reasons = [](const std::string& text) {
        std::string all;
        for (const RepairChange& change : repairOFXText(text, RepairScope::structure).changes)
            all += change.reason + "\n";
        return all;
    };
    CHECK(reasons(without(inBank(list(kA) + kLedger), "</BANKTRANLIST>")) ==
          "<LEDGERBAL> is not allowed in <BANKTRANLIST>, so <BANKTRANLIST> ends before it\n");
    CHECK(reasons(inBank(kA)) ==
          "<STMTTRN> is not allowed in <STMTRS>; it belongs in <BANKTRANLIST>\n"
          "<STMTTRN> is not allowed in <STMTRS>; it belongs in <BANKTRANLIST>\n");
    CHECK(reasons(kHeader + ofx(bank(cardWrapped("")))) ==
          "<CCSTMTTRNRS> is not allowed in <BANKMSGSRSV1>, and everything in <BANKMSGSRSV1> belongs in "
          "<CREDITCARDMSGSRSV1>\n"
          "<CCSTMTTRNRS> is not allowed in <BANKMSGSRSV1>, and everything in <BANKMSGSRSV1> belongs in "
          "<CREDITCARDMSGSRSV1>\n");
    CHECK(reasons(inBank(list(kA) + in("BANKTRANLIST", kB))) ==
          "a second <BANKTRANLIST> is not allowed in <STMTRS>, so the two are merged\n");
}

TEST_CASE("a summary has a line for each kind of change and reason, those of the structure first") {
    std::vector<RepairChange> changes(6);
    changes[1].kind = RepairKind::misplaced;
    changes[1].was = "<A>1";
    changes[3].kind = RepairKind::misplaced;
    changes[3].now = "<A>1";
    changes[4].kind = RepairKind::missingClose;
    changes[5].kind = RepairKind::missingClose;
    changes[5].reason = "it ends here";
    const std::vector<RepairGroup> groups = summaryOf(changes);
    REQUIRE(groups.size() == 4);
    CHECK(groups[0].text == "1 part of the document moved");
    CHECK(groups[0].count == 2);
    CHECK(groups[0].first == 1);
    CHECK(groups[1].text == "1 close tag inserted");
    CHECK(groups[1].reason.empty());
    CHECK(groups[2].text == "1 close tag inserted");
    CHECK(groups[2].reason == "it ends here");
    CHECK(groups[3].text == "2 comments dropped");
    CHECK(groups[3].first == 0);
    CHECK(summaryOf({}).empty());
}

TEST_CASE("a document of the forerunner is recognised, and stays as it is") {
    const std::string ofc =
        "<OFC><DTD>2<ACCTSTMT><STMTRS><STMTTRN><TRNTYPE>1</STMTTRN></STMTRS></ACCTSTMT></OFC>";
    for (const std::string& text : {ofc, "\n" + ofc, "<?xml?><!-- c -->" + ofc, std::string("<ofc >x")}) {
        CAPTURE(text);
        CHECK(isOFCText(text));
        CHECK(repairOFXText(text, RepairScope::structure).changes.empty());
    }
    for (const char* text : {"", "<", "<OFX><OFC>", "<OFCX>", "<OFC", "OFC"}) {
        CAPTURE(text);
        CHECK_FALSE(isOFCText(text));
    }
}
