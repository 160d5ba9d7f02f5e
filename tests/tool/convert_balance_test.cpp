// SPDX-License-Identifier: Apache-2.0
#include "tool/accounting.h"

/// \file
/// Balances that `brackwell convert` asserts, what accounts begin with, and transfers.

using namespace brackwell::tests;

namespace {

using Lines = std::vector<std::string>;

std::string moved(const std::string& day, const std::string& amount, const std::string& id,
                  const std::string& more = "") {
    return "<STMTTRN><TRNTYPE>XFER<DTPOSTED>" + day + "<TRNAMT>" + amount + "<FITID>" + id + more +
           "</STMTTRN>";
}

/// A statement of an account with a period, transactions and a balance.
std::string checking(const std::string& number, const std::string& period, const std::string& transactions,
                     const std::string& balance, const std::string& currency = "USD") {
    const std::string ends =
        period.empty() ? "" : "<DTSTART>" + period.substr(0, 8) + "<DTEND>" + period.substr(9);
    const std::string stated = balance.empty() ? ""
                                               : "<LEDGERBAL><BALAMT>" + balance.substr(9) + "<DTASOF>" +
                                                     balance.substr(0, 8) + "</LEDGERBAL>";
    return "<STMTTRNRS><TRNUID>1<STMTRS><CURDEF>" + currency + "<BANKACCTFROM><BANKID>1<ACCTID>" + number +
           "<ACCTTYPE>CHECKING</BANKACCTFROM><BANKTRANLIST>" + ends + transactions + "</BANKTRANLIST>" +
           stated + "</STMTRS></STMTTRNRS>";
}

const std::string kJanuary = bankDocument(checking(
    "A1", "20240101 20240131", moved("20240110", "-10", "1") + moved("20240120", "30", "2"), "20240131 120"));
const std::string kFebruary =
    bankDocument(checking("A1", "20240201 20240229", moved("20240205", "-5", "3"), "20240229 115"));
const std::string kMarch =
    bankDocument(checking("A1", "20240301 20240331", moved("20240305", "-7", "4"), "20240331 108"));

/// A conversion of documents, in the order of their names.
Finished convert(const std::vector<std::string>& documents, const std::string& format = "hledger",
                 const std::vector<std::string>& options = {}) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments{"convert", "--to", format};
    arguments.insert(arguments.end(), options.begin(), options.end());
    for (std::size_t i = 0; i < documents.size(); ++i) {
        const std::string name = std::to_string(i) + ".ofx";
        folder.file(name, documents[i]);
        arguments.push_back(name);
    }
    Command command = toolCommand(arguments);
    command.directory = folder.path();
    return run(command);
}

}  // namespace

TEST_CASE("an account begins with what its balance asks for, and the balance is asserted") {
    const std::string journal = convert({kJanuary}).output;
    CHECK(entryWith(journal, "Opening balance") ==
          Lines{"2024-01-10 * Opening balance", "    Assets:Bank:A1  100.00 USD",
                "    ; ofxopening: 2024-01-10", "    Equity:Opening-Balances  -100.00 USD"});
    const Lines balance = entryWith(journal, "Balance of");
    REQUIRE(balance.size() == 3);
    CHECK(balance[0] == "2024-01-31 * Balance of the statement");
    CHECK(balance[1] == "    Assets:Bank:A1  0.00 USD = 120.00 USD");
    const std::string beancount = convert({kJanuary}, "beancount").output;
    CHECK(entryWith(beancount, " balance Assets").front() == "2024-02-01 balance Assets:Bank:A1 120.00 USD");
}

TEST_CASE("balances that agree are all asserted, in whatever order the files are given") {
    const Finished forward = convert({kJanuary, kFebruary, kMarch});
    CHECK(forward.error == "");
    CHECK(countOf(forward.output, " 0.00 USD = ") == 3);
    CHECK(countOf(forward.output, "Opening balance") == 1);
    CHECK(convert({kMarch, kJanuary, kFebruary}).output == forward.output);
    CHECK(convert({kFebruary, kMarch, kJanuary, kMarch}).output == forward.output);
}

TEST_CASE("a balance that transactions contradict is a comment, and said") {
    const Finished gap = convert({kJanuary, kMarch});
    CHECK(gap.error ==
          "1.ofx: The balance of 2024-03-31, 108 USD, is only a comment: with the other balances, "
          "the transactions come to 113.\n");
    CHECK(contains(gap.output,
                   "\n; 2024-03-31 balance Assets:Bank:A1 108.00 USD: with the other balances, the "
                   "transactions come to 113\n;   ofxdigest: "));
    CHECK(countOf(gap.output, " 0.00 USD = ") == 1);
    // Of three, the two that agree are right.
    std::string wrong = kJanuary;
    wrong.replace(wrong.find("<BALAMT>120"), 11, "<BALAMT>121");
    const Finished most = convert({wrong, kFebruary, kMarch});
    CHECK(most.error ==
          "0.ofx: The balance of 2024-01-31, 121 USD, is only a comment: with the other balances, "
          "the transactions come to 120.\n");
    CHECK(contains(most.output, "    Assets:Bank:A1  100.00 USD\n"));
}

TEST_CASE("a balance of a day that the documents do not cover is a comment, and said") {
    struct Row {
        const char* period;
        const char* balance;
        bool isAsserted;
    };
    const Row rows[] = {
        {"20240101 20240131", "20240131 120", true},
        {"20240101 20240131", "20240201 120", true},
        {"20240101 20240131", "20240202 120", false},
        {"20240101 20240131", "20240115 120", true},
        {"20240101 20240131", "20231231 120", true},
        {"20240101 20240131", "20231230 120", false},
        {"", "20240131 120", true},
    };
    for (const Row& row : rows) {
        CAPTURE(row.period);
        CAPTURE(row.balance);
        const Finished finished =
            convert({bankDocument(checking("A1", row.period, moved("20240110", "-10", "1"), row.balance))});
        CHECK(contains(finished.output, " 0.00 USD = 120.00 USD") == row.isAsserted);
        CHECK(contains(finished.output, "Opening balance") == row.isAsserted);
        CHECK(contains(finished.error,
                       "is only a comment: the documents do not have the transactions up to "
                       "this day.") == !row.isAsserted);
    }
    // Another statement has the rest of the days.
    std::string late = kJanuary;
    late.replace(late.find("<BALAMT>120<DTASOF>20240131"), 27, "<BALAMT>115<DTASOF>20240210");
    CHECK(convert({late, kFebruary}).error == "");
    CHECK(countOf(convert({late, kFebruary}).output, " 0.00 USD = 115.00 USD") == 2);
}

TEST_CASE("transactions that come after a balance of their day do not contradict it") {
    const std::string later =
        bankDocument(checking("A1", "20240131 20240229", moved("20240131", "-20", "9"), "20240229 100"));
    const Finished finished = convert({kJanuary, later});
    CHECK(finished.error == "");
    CHECK(contains(finished.output,
                   "; 2024-01-31 balance Assets:Bank:A1 120.00 USD: later statements have more "
                   "transactions of this day\n"));
    CHECK(contains(finished.output, " = 100.00 USD"));
    CHECK(contains(finished.output, "    Assets:Bank:A1  100.00 USD\n"));
}

TEST_CASE("balances and openings can be left away") {
    const std::string without = convert({kJanuary}, "hledger", {"--no-opening-balances"}).output;
    CHECK_FALSE(contains(without, "Opening"));
    CHECK(contains(without, " = 120.00 USD"));
    const Finished comments = convert({kJanuary}, "hledger", {"--no-assertions"});
    CHECK(contains(comments.output, "\n; 2024-01-31 balance Assets:Bank:A1 120.00 USD: not asserted\n"));
    CHECK(contains(comments.output, "Opening"));
    CHECK(comments.error == "");
}

TEST_CASE("an available balance is a fact, and one without a day a comment") {
    const std::string available = "<AVAILBAL><BALAMT>90<DTASOF>20240202</AVAILBAL>";
    std::string both = kJanuary;
    both.insert(both.find("</STMTRS>"), available);
    CHECK(entryWith(convert({both}).output, "Balance of").at(1) == "    ; availableBalance: 90.00 USD");
    CHECK(contains(convert({both}).output, "    ; availableBalanceDate: 2024-02-02\n"));
    const std::string alone = convert({statementWith(available)}).output;
    CHECK(contains(alone, "\n; An available balance\n;   availableBalance: 90.00 USD\n"));
    const std::string dayless = convert({statementWith("<LEDGERBAL><BALAMT>90</LEDGERBAL>")}).output;
    CHECK(contains(dayless, "\n; A balance without a day\n;   balance: 90.00 USD\n"));
}

// ---------------------------------------------------------------------------------------------
// Transfers

namespace {

const std::string kToB = "<BANKACCTTO><BANKID>1<ACCTID>B2<ACCTTYPE>SAVINGS</BANKACCTTO>";
const std::string kToA = "<BANKACCTTO><BANKID>1<ACCTID>A1<ACCTTYPE>CHECKING</BANKACCTTO>";

/// A document of two accounts with these transactions.
std::string twoAccounts(const std::string& ofA, const std::string& ofB) {
    return bankDocument(checking("A1", "", ofA, "") + checking("B2", "", ofB, ""));
}

}  // namespace

TEST_CASE("two transactions are one transfer when nothing else could be meant") {
    struct Row {
        const char* what;
        std::string ofA;
        std::string ofB;
        bool isJoined;
    };
    const std::string from = moved("20240110", "-10", "1", kToB);
    const std::vector<Row> rows = {
        {"one names the other", from, moved("20240110", "10", "2"), true},
        {"both name each other", from, moved("20240110", "10", "2", kToA), true},
        {"nobody names anybody", moved("20240110", "-10", "1"), moved("20240110", "10", "2"), false},
        {"another day", from, moved("20240111", "10", "2"), false},
        {"another amount", from, moved("20240110", "11", "2"), false},
        {"the same sign", from, moved("20240110", "-10", "2"), false},
        {"two could be meant", from, moved("20240110", "10", "2") + moved("20240110", "10", "3"), false},
        {"two mean one", from + moved("20240110", "-10", "4", kToB), moved("20240110", "10", "2"), false},
        {"the other end names a third account", from, moved("20240110", "10", "2", kToB), false},
        {"a card of that number", moved("20240110", "-10", "1", "<CCACCTTO><ACCTID>B2</CCACCTTO>"),
         moved("20240110", "10", "2"), true},
        {"a bank that is another",
         moved("20240110", "-10", "1", "<BANKACCTTO><BANKID>9<ACCTID>B2</BANKACCTTO>"),
         moved("20240110", "10", "2"), false},
        {"nothing is moved", moved("20240110", "0", "1", kToB), moved("20240110", "0", "2"), false},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        const std::string journal = convert({twoAccounts(row.ofA, row.ofB)}).output;
        const std::size_t entries = countOf(journal, "\n2024-");
        CHECK(entries == countOf(row.ofA + row.ofB, "</STMTTRN>") - (row.isJoined ? 1 : 0));
        CHECK(countOf(journal, "ofxdigest: ") == countOf(row.ofA + row.ofB, "</STMTTRN>"));
    }
}

TEST_CASE("a transfer keeps the texts of both ends") {
    const std::string journal =
        convert({twoAccounts(moved("20240110", "-10", "1", "<NAME>To savings<CHECKNUM>77" + kToB),
                             moved("20240110", "10", "2", "<NAME>From checking<MEMO>monthly<CHECKNUM>78"))})
            .output;
    Lines lines = entryWith(journal, "To savings");
    std::erase_if(lines, [](const std::string& line) { return contains(line, "ofx"); });
    CHECK(lines == Lines{"2024-01-10 * (77) To savings", "    ; transactionType: XFER",
                         "    ; bankAccountTo: B2", "    Assets:Bank:A1  -10.00 USD",
                         "    Assets:Bank:B2  10.00 USD", "    ; payeeName: From checking",
                         "    ; memo: monthly", "    ; checkOrReferenceNumber: 78",
                         "    ; transactionType: XFER"});
}

TEST_CASE(
    "where one end of a transfer is in the journal, the other one meets it in the account of transfers") {
    const TemporaryFolder folder;
    const std::string one =
        folder.file("a.ofx", bankDocument(checking("A1", "", moved("20240110", "-10", "1", kToB), "")));
    const std::string two =
        folder.file("b.ofx", bankDocument(checking("B2", "", moved("20240110", "10", "2"), "")));
    const std::string first = journalOf("hledger", {one});
    CHECK(contains(first, "    Equity:Transfers  10.00 USD\n"));
    const std::string journal = folder.file("main.journal", first);
    const std::string second = journalOf("hledger", {one, two, "--unless", journal});
    CHECK(countOf(second, "\n2024-") == 1);
    CHECK(contains(second, "    Assets:Bank:B2  10.00 USD\n"));
    CHECK(contains(second, "    Equity:Transfers  -10.00 USD\n"));
}
