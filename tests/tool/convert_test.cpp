// SPDX-License-Identifier: Apache-2.0
#include "tool/accounting.h"

/// \file
/// The journals of `brackwell convert`, line by line. What the programs say of them is asked in
/// convert_programs_test.cpp.

using namespace brackwell::tests;

namespace {

using Lines = std::vector<std::string>;

std::string entry(const std::string& elements) {
    return "<STMTTRN><TRNTYPE>POS<DTPOSTED>20240305<TRNAMT>-3.20<FITID>7" + elements + "</STMTTRN>";
}

/// The entry of a journal, without the digests, which say nothing to a reader.
Lines entryOf(const std::string& format, const std::string& transaction, const std::string& text,
              const std::vector<std::string>& options = {}) {
    Lines lines = entryWith(journalOfDocument(format, transactionsWith(transaction), options), text);
    std::erase_if(lines, [](const std::string& line) { return contains(line, "ofx"); });
    return lines;
}

/// The account beside that of the statement.
std::string counterAccountOf(const std::string& transaction) {
    const Lines lines = entryOf("ledger", transaction, "2024-");
    REQUIRE(lines.size() > 2);
    const std::string& last = lines.back();
    return last.substr(4, last.find("  ", 4) - 4);
}

}  // namespace

TEST_CASE("each format has its own way of saying what a transaction is") {
    const std::string transaction = entry("<CHECKNUM>12<NAME>Cafe Lumiere<MEMO>two coffees");
    CHECK(entryOf("hledger", transaction, "Cafe") ==
          Lines{"2024-03-05 * (12) Cafe Lumiere | two coffees", "    ; transactionType: POS",
                "    Assets:Bank:0012345678  -3.20 USD", "    Expenses:Unknown  3.20 USD"});
    CHECK(entryOf("ledger", transaction, "Cafe") ==
          Lines{"2024-03-05 * (12) Cafe Lumiere", "    ; memo: two coffees", "    ; transactionType: POS",
                "    Assets:Bank:0012345678  -3.20 USD", "    Expenses:Unknown  3.20 USD"});
    CHECK(entryOf("beancount", transaction, "Cafe") ==
          Lines{"2024-03-05 * \"Cafe Lumiere\" \"two coffees\"", "  checkOrReferenceNumber: \"12\"",
                "  transactionType: \"POS\"", "  Assets:Bank:0012345678  -3.20 USD",
                "  Expenses:Unknown  3.20 USD"});
}

TEST_CASE("a journal begins with what its entries need, and is hledger's unless another is wanted") {
    const std::string journal = outputOf({"convert"}, transactionsWith(entry("<NAME>Cafe")));
    CHECK(
        journal.starts_with("; Made by brackwell from OFX documents.\ndecimal-mark .\n\ncommodity 1000.00 "
                            "USD\n\naccount Assets:Bank:0012345678\naccount Expenses:Unknown\n\n2024-"));
    const std::string ledger = journalOfDocument("ledger", transactionsWith(entry("<NAME>Cafe")));
    CHECK(ledger.starts_with("; Made by brackwell from OFX documents.\n\ncommodity USD\n\naccount Assets:"));
    const std::string beancount = journalOfDocument("beancount", transactionsWith(entry("<NAME>Cafe")));
    CHECK(contains(beancount, "\n1970-01-01 commodity USD\n\n1970-01-01 open Assets:Bank:0012345678\n"));
}

TEST_CASE("marks of a format are no marks in the texts of a document") {
    struct Row {
        const char* format;
        const char* payee;
        const char* memo;
        const char* head;
    };
    const Row rows[] = {
        {"hledger", "(a) ; b | c", "date:2024-99-99", "2024-03-05 * （a） ； b ｜ c | date:2024-99-99"},
        {"ledger", "(a) ; b | c", "x", "2024-03-05 * （a） ； b | c"},
        {"beancount", "a \"b\" \\ c", "; d", "2024-03-05 * \"a \\\"b\\\" \\\\ c\" \"; d\""},
        {"hledger", "a  b\tc", "x", "2024-03-05 * a b c | x"},
        {"hledger", "same", "same", "2024-03-05 * same"},
        {"hledger", "", "only a memo", "2024-03-05 * only a memo"},
        {"beancount", "", "only a memo", "2024-03-05 * \"only a memo\""},
        {"hledger", "", "", "2024-03-05 *"},
        {"beancount", "only a payee", "", "2024-03-05 * \"only a payee\" \"\""},
    };
    for (const Row& row : rows) {
        CAPTURE(row.head);
        const std::string texts = "<NAME>" + std::string(row.payee) + "</NAME><MEMO>" + row.memo + "</MEMO>";
        const Lines lines = entryOf(row.format, entry(texts), "2024-03-05 *");
        REQUIRE(!lines.empty());
        CHECK(lines.front() == row.head);
    }
    const std::string odd = entry("<REFNUM>a:b, date:2024-99-99 [2024/99/99] ofxid: 1<NAME>x");
    CHECK(contains(journalOfDocument("ledger", transactionsWith(odd)),
                   "    ; referenceNumber: a：b, date：2024-99-99 ［2024/99/99] ofxid： 1\n"));
    CHECK(contains(journalOfDocument("beancount", transactionsWith(odd)),
                   "  referenceNumber: \"a:b, date:2024-99-99 [2024/99/99] ofxid: 1\"\n"));
}

TEST_CASE("the other account follows from the map, the type, the other party or the sign") {
    struct Row {
        std::string transaction;
        std::string account;
    };
    const auto typed = [](const std::string& type, const std::string& amount, const std::string& more = "") {
        return "<STMTTRN><TRNTYPE>" + type + "<DTPOSTED>20240305<TRNAMT>" + amount + "<FITID>1" + more +
               "</STMTTRN>";
    };
    for (const Row& row : std::vector<Row>{
             {typed("POS", "-1"), "Expenses:Unknown"},
             {typed("POS", "1"), "Income:Unknown"},
             {typed("FEE", "-1"), "Expenses:Fees"},
             {typed("SRVCHG", "1"), "Expenses:Fees"},
             {typed("INT", "1"), "Income:Interest"},
             {typed("INT", "-1"), "Expenses:Interest"},
             {typed("DIV", "1"), "Income:Dividends"},
             {typed("XFER", "-1"), "Expenses:Unknown"},
             {typed("XFER", "-1", "<BANKACCTTO><BANKID>1<ACCTID>2<ACCTTYPE>SAVINGS</BANKACCTTO>"),
              "Equity:Transfers"},
             {typed("XFER", "-1", "<CCACCTTO><ACCTID>2</CCACCTTO>"), "Equity:Transfers"},
         }) {
        CAPTURE(row.transaction);
        CHECK(counterAccountOf(row.transaction) == row.account);
    }
}

TEST_CASE("everything that a transaction says is in the journal") {
    const std::string all =
        "<STMTTRN><TRNTYPE>CHECK<DTPOSTED>20240305<DTUSER>20240301<DTAVAIL>20240307<TRNAMT>-3.20<FITID>F 1"
        "<CORRECTFITID>F0<CORRECTACTION>REPLACE<SRVRTID>S1<CHECKNUM>C1<REFNUM>R1<SIC>5812<PAYEEID>P1"
        "<PAYEE><NAME>Jane<ADDR1>Street 1<ADDR2>Yard<CITY>Town<STATE>TX<POSTALCODE>7<COUNTRY>USA<PHONE>8"
        "</PAYEE><MEMO>Rent</STMTTRN>";
    for (const std::string& format : kBookFormats) {
        CAPTURE(format);
        const std::string journal = journalOfDocument(format, transactionsWith(all));
        for (const char* text : {"CHECK",    "2024-03-05", "2024-03-01", "2024-03-07", "3.20", "F 1", "F0",
                                 "REPLACE",  "S1",         "C1",         "R1",         "5812", "P1",  "Jane",
                                 "Street 1", "Yard",       "Town",       "TX",         "USA",  "Rent"}) {
            CAPTURE(text);
            CHECK(contains(journal, text));
        }
    }
    const TemporaryFolder folder;
    const Finished finished = tool({"convert", "--strict", folder.file("a.ofx", transactionsWith(all))});
    CHECK(finished.status == 3);
    CHECK(contains(finished.error,
                   "convert: 1 transaction corrects an earlier one (correctionFITID in the "
                   "journal), which stays as it is.\n"));
}

TEST_CASE("what has no amount or no day is a comment, unless its statement tells a day") {
    const std::string noAmount = "<STMTTRN><DTPOSTED>20240305<FITID>1<NAME>Cafe</STMTTRN>";
    const std::string noDay = "<STMTTRN><TRNAMT>-3.20<FITID>2<NAME>Kiosk</STMTTRN>";
    const std::string tooEarly = "<STMTTRN><DTPOSTED>12031105<TRNAMT>-3.20<FITID>3<NAME>Monk</STMTTRN>";
    for (const std::string& format : kBookFormats) {
        CAPTURE(format);
        const std::string journal = journalOfDocument(format, transactionsWith(noAmount + noDay + tooEarly));
        CHECK(entryWith(journal, "Cafe").front() == "; 2024-03-05 A transaction without an amount");
        CHECK(entryWith(journal, "Kiosk").front() == "; A transaction without a day");
        CHECK(entryWith(journal, "Monk").front() == "; 1203-11-05 A transaction without a day");
        CHECK(contains(journal, ";   amount: -3.2\n"));
        CHECK(countOf(journal, "ofxdigest") == 3);
    }
    const std::string dated =
        statementWith("<BANKTRANLIST><DTSTART>20240301<DTEND>20240331" + noDay + "</BANKTRANLIST>");
    const std::vector<std::string> lines = entryWith(journalOfDocument("hledger", dated), "Kiosk");
    REQUIRE(lines.size() > 1);
    CHECK(lines[0] == "2024-03-31 * Kiosk");
    CHECK(lines[1] == "    ; datePosted: none");
}

TEST_CASE("numbers that some program would round are comments") {
    struct Row {
        const char* amount;
        bool isBooked;
    };
    for (const Row& row : {Row{"-999999999999999.99", true}, Row{"-0.00000000000000000000001", true},
                           Row{"1000000000000000", false}, Row{"1.000000000000000000000001", false}}) {
        CAPTURE(row.amount);
        const std::string amount = row.amount;
        const std::string document =
            statementWith("<BANKTRANLIST><STMTTRN><DTPOSTED>20240305<TRNAMT>" + amount +
                          "<FITID>1<NAME>Cafe</STMTTRN></BANKTRANLIST>" + "<LEDGERBAL><BALAMT>" + amount +
                          "<DTASOF>20240305</LEDGERBAL>");
        for (const std::string& format : kBookFormats) {
            const std::string journal = journalOfDocument(format, document);
            CHECK(contains(journal, "; 2024-03-05 A transaction with more digits than journals have\n") !=
                  row.isBooked);
            CHECK(contains(journal, "; 2024-03-05 A balance with more digits than journals have\n") !=
                  row.isBooked);
            CHECK(contains(journal, amount));
            if (hasBookProgram(format)) CHECK(complaintsAbout(format, journal) == "");
        }
    }
}

TEST_CASE("amounts in another currency are converted, and their other end is what was paid") {
    const std::string rated = entry("<NAME>Cafe<CURRENCY><CURRATE>1.1111<CURSYM>CHF</CURRENCY>");
    CHECK(entryOf("hledger", rated, "Cafe") == Lines{"2024-03-05 * Cafe", "    ; transactionType: POS",
                                                     "    ; statedIn: CHF", "    ; currencyRate: 1.1111",
                                                     "    Assets:Bank:0012345678  -3.56 USD",
                                                     "    Expenses:Unknown  3.20 CHF @@ 3.56 USD"});
    const std::string unrated = entry("<NAME>Cafe<CURRENCY><CURSYM>CHF</CURRENCY>");
    CHECK(entryOf("hledger", unrated, "Cafe") ==
          Lines{"2024-03-05 * Cafe", "    ; transactionType: POS", "    ; statedIn: CHF",
                "    Assets:Bank:0012345678  -3.20 CHF", "    Expenses:Unknown  3.20 CHF"});
    const std::string converted = entry("<NAME>Cafe<ORIGCURRENCY><CURRATE>1.1<CURSYM>CHF</ORIGCURRENCY>");
    CHECK(entryOf("hledger", converted, "Cafe") ==
          Lines{"2024-03-05 * Cafe", "    ; transactionType: POS", "    ; convertedFrom: CHF",
                "    ; currencyRate: 1.1", "    Assets:Bank:0012345678  -3.20 USD",
                "    Expenses:Unknown  3.20 USD"});
}

TEST_CASE("currencies without decimals have none, and a currency that is none has a name of its own") {
    const auto journalIn = [](const std::string& currency) {
        std::string document = transactionsWith("<STMTTRN><DTPOSTED>20240305<TRNAMT>-320<FITID>1</STMTTRN>");
        document.replace(document.find("USD"), 3, currency);
        return journalOfDocument("hledger", document);
    };
    CHECK(contains(journalIn("JPY"), "  -320 JPY\n"));
    CHECK(contains(journalIn("JPY"), "\ncommodity 1000. JPY\n"));
    CHECK(contains(journalIn("KWD"), "  -320.000 KWD\n"));
    CHECK(contains(journalIn("eur"), ";   currency: eur\ncommodity 1000.00 EUR\n"));
    CHECK(contains(journalIn("$"), "  -320.00 XXX\n"));
}
