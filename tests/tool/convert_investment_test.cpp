// SPDX-License-Identifier: Apache-2.0
#include "tool/accounting.h"

/// \file
/// Investment accounts in journals of `brackwell convert`.

using namespace brackwell::tests;

namespace {

using Lines = std::vector<std::string>;

const std::string kSecurity = "<SECID><UNIQUEID>S1<UNIQUEIDTYPE>CUSIP</SECID>";

/// A document of an investment statement with these transactions, and what stands after them.
std::string investing(const std::string& transactions, const std::string& rest = "",
                      const std::string& period = "<DTSTART>20240101<DTEND>20240331") {
    return version1(
        "<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>1<INVSTMTRS><DTASOF>20240331<CURDEF>USD<INVACCTFROM><"
        "BROKERID>b"
        "<ACCTID>D1</INVACCTFROM><INVTRANLIST>" +
        period + transactions + "</INVTRANLIST>" + rest +
        "</INVSTMTRS></INVSTMTTRNRS></INVSTMTMSGSRSV1><SECLISTMSGSRSV1><SECLIST><STOCKINFO><SECINFO>" +
        kSecurity + "<SECNAME>Alder Railways<TICKER>ALDR</SECINFO></STOCKINFO></SECLIST></SECLISTMSGSRSV1>");
}

std::string inTransaction(const std::string& id = "1") {
    return "<INVTRAN><FITID>" + id + "<DTTRADE>20240215<MEMO>note</INVTRAN>";
}

std::string bought(const std::string& values) {
    return "<BUYSTOCK><INVBUY>" + inTransaction() + kSecurity + values + "</INVBUY><BUYTYPE>BUY</BUYSTOCK>";
}
std::string sold(const std::string& values) {
    return "<SELLSTOCK><INVSELL>" + inTransaction() + kSecurity + values +
           "</INVSELL><SELLTYPE>SELL</SELLSTOCK>";
}

/// The postings of the only entry, without their account's beginning.
Lines postingsOf(const std::string& transaction) {
    const std::string journal =
        journalOfDocument("hledger", investing(transaction), {"--no-opening-balances"});
    CHECK(countOf(journal, "\n2024-") == 1);
    Lines postings;
    for (const std::string& line : entryWith(journal, "2024-02-15"))
        if (line.starts_with("    ") && !line.starts_with("    ;")) postings.push_back(line.substr(4));
    for (std::string& posting : postings)
        if (posting.starts_with("Assets:Investments:D1:")) posting.erase(0, 22);
    return postings;
}

}  // namespace

TEST_CASE("trades have what was paid for the units, and the costs beside it") {
    struct Row {
        const char* what;
        std::string transaction;
        Lines postings;
    };
    const std::vector<Row> rows = {
        {"a purchase",
         bought("<UNITS>100<UNITPRICE>45.1<COMMISSION>4.95<FEES>1.30<TAXES>0.25<TOTAL>-4516.50"),
         {"Securities  100 ALDR @@ 4510.00 USD", "Cash  -4516.50 USD", "Expenses:Commissions  4.95 USD",
          "Expenses:Fees  1.30 USD", "Expenses:Taxes  0.25 USD"}},
        {"a sale",
         sold("<UNITS>-40<UNITPRICE>48<COMMISSION>5<LOAD>1<WITHHOLDING>10<PENALTY>2<STATEWITHHOLDING>1"
              "<TOTAL>1901"),
         {"Securities  -40 ALDR @@ 1920.00 USD", "Cash  1901.00 USD", "Expenses:Commissions  5.00 USD",
          "Expenses:Commissions  1.00 USD", "Expenses:Taxes  10.00 USD", "Expenses:Taxes  1.00 USD",
          "Expenses:Fees  2.00 USD"}},
        {"a sale with positive units",
         sold("<UNITS>40<UNITPRICE>48<TOTAL>1920"),
         {"Securities  -40 ALDR @@ 1920.00 USD", "Cash  1920.00 USD"}},
        {"a purchase with a positive total",
         bought("<UNITS>40<TOTAL>1920"),
         {"Securities  40 ALDR @@ 1920.00 USD", "Cash  -1920.00 USD"}},
        {"a purchase that is taken back",
         bought("<UNITS>-40<FEES>2<TOTAL>1922"),
         {"Securities  -40 ALDR @@ 1920.00 USD", "Cash  1922.00 USD", "Expenses:Fees  -2.00 USD"}},
        {"costs that are negative",
         bought("<UNITS>10<FEES>-2<TOTAL>-102"),
         {"Securities  10 ALDR @@ 100.00 USD", "Cash  -102.00 USD", "Expenses:Fees  2.00 USD"}},
        {"costs above the total",
         bought("<UNITS>10<FEES>200<TOTAL>-102"),
         {"Securities  10 ALDR @@ 102.00 USD", "Cash  -102.00 USD"}},
        {"nothing but costs",
         bought("<UNITS>10<FEES>2<TOTAL>-2"),
         {"Securities  10 ALDR", "Equity:Securities  -10 ALDR", "Cash  -2.00 USD",
          "Expenses:Fees  2.00 USD"}},
        {"no total", bought("<UNITS>10"), {"Securities  10 ALDR", "Equity:Securities  -10 ALDR"}},
        {"no units", bought("<TOTAL>-10"), {"Cash  -10.00 USD", "Equity:Securities  10.00 USD"}},
        {"another currency",
         bought("<UNITS>10<FEES>2<TOTAL>-102<CURRENCY><CURRATE>1.5<CURSYM>EUR</CURRENCY>"),
         {"Securities  10 ALDR @@ 150.00 USD", "Cash  -153.00 USD", "Expenses:Fees  3.00 USD"}},
        {"another currency without a rate",
         bought("<UNITS>10<TOTAL>-102<CURRENCY><CURSYM>EUR</CURRENCY>"),
         {"Securities  10 ALDR @@ 102.00 EUR", "Cash  -102.00 EUR"}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(postingsOf(row.transaction) == row.postings);
    }
}

TEST_CASE("each other kind of investment transaction has its accounts") {
    struct Row {
        std::string transaction;
        Lines postings;
    };
    const auto income = [](const std::string& type) {
        return "<INCOME>" + inTransaction() + kSecurity + "<INCOMETYPE>" + type + "<TOTAL>35</INCOME>";
    };
    const std::vector<Row> rows = {
        {income("DIV"), {"Cash  35.00 USD", "Income:Dividends  -35.00 USD"}},
        {income("INTEREST"), {"Cash  35.00 USD", "Income:Interest  -35.00 USD"}},
        {income("CGLONG"), {"Cash  35.00 USD", "Income:Capital-Gains  -35.00 USD"}},
        {income("MISC"), {"Cash  35.00 USD", "Income:Investments  -35.00 USD"}},
        {income("ODD"), {"Cash  35.00 USD", "Income:Investments  -35.00 USD"}},
        {"<INVEXPENSE>" + inTransaction() + kSecurity + "<TOTAL>-3</INVEXPENSE>",
         {"Cash  -3.00 USD", "Expenses:Fees  3.00 USD"}},
        {"<MARGININTEREST>" + inTransaction() + "<TOTAL>-7</MARGININTEREST>",
         {"Cash  -7.00 USD", "Expenses:Interest  7.00 USD"}},
        {"<REINVEST>" + inTransaction() + kSecurity + "<INCOMETYPE>DIV<TOTAL>-41<UNITS>2<FEES>1</REINVEST>",
         {"Securities  2 ALDR @@ 40.00 USD", "Income:Dividends  -41.00 USD", "Expenses:Fees  1.00 USD"}},
        {"<RETOFCAP>" + inTransaction() + kSecurity + "<TOTAL>15</RETOFCAP>",
         {"Cash  15.00 USD", "Equity:Securities  -15.00 USD"}},
        {"<SPLIT>" + inTransaction() + kSecurity + "<OLDUNITS>30<NEWUNITS>45<FRACCASH>1.10</SPLIT>",
         {"Securities  15 ALDR", "Equity:Securities  -15 ALDR", "Cash  1.10 USD",
          "Income:Capital-Gains  -1.10 USD"}},
        {"<TRANSFER>" + inTransaction() + kSecurity + "<UNITS>45<TFERACTION>IN</TRANSFER>",
         {"Securities  45 ALDR", "Equity:Securities  -45 ALDR"}},
        {"<TRANSFER>" + inTransaction() + kSecurity + "<UNITS>45<TFERACTION>OUT</TRANSFER>",
         {"Securities  -45 ALDR", "Equity:Securities  45 ALDR"}},
        {"<CLOSUREOPT>" + inTransaction() + kSecurity + "<OPTACTION>EXPIRE<UNITS>-1</CLOSUREOPT>",
         {"Securities  -1 ALDR", "Equity:Securities  1 ALDR"}},
        {"<JRNLFUND>" + inTransaction() + "<SUBACCTTO>MARGIN<SUBACCTFROM>CASH<TOTAL>500</JRNLFUND>",
         {"Cash  500.00 USD", "Cash  -500.00 USD"}},
        {"<JRNLSEC>" + inTransaction() + kSecurity + "<SUBACCTTO>MARGIN<SUBACCTFROM>CASH<UNITS>10</JRNLSEC>",
         {"Securities  10 ALDR", "Securities  -10 ALDR"}},
        {"<INVBANKTRAN><STMTTRN><TRNTYPE>CREDIT<DTPOSTED>20240215<TRNAMT>1000<FITID>B1<NAME>In</STMTTRN>"
         "<SUBACCTFUND>CASH</INVBANKTRAN>",
         {"Cash  1000.00 USD", "Income:Unknown  -1000.00 USD"}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.transaction);
        CHECK(postingsOf(row.transaction) == row.postings);
    }
}

TEST_CASE("an investment transaction that moves nothing, or on no day, is a comment") {
    const std::vector<std::string> transactions = {
        "<INCOME>" + inTransaction() + kSecurity + "<INCOMETYPE>DIV</INCOME>",
        "<TRANSFER>" + inTransaction() + kSecurity + "</TRANSFER>",
        "<SPLIT>" + inTransaction() + kSecurity + "<OLDUNITS>30</SPLIT>",
        "<JRNLSEC>" + inTransaction() + "<UNITS>5</JRNLSEC>",
        "<CLOSUREOPT>" + inTransaction() + kSecurity + "</CLOSUREOPT>",
    };
    for (const std::string& transaction : transactions)
        for (const std::string& format : kBookFormats) {
            CAPTURE(transaction);
            const std::string journal = journalOfDocument(format, investing(transaction));
            CHECK(contains(journal, "\n; 2024-02-15 "));
            CHECK(contains(journal,
                           ", without a day, or without units and money that journals can have\n;   "
                           "fiTransactionID: 1\n"));
            CHECK(contains(journal, ";   memo: note\n"));
        }
    const std::string dayless = "<INCOME><INVTRAN><FITID>1</INVTRAN><INCOMETYPE>DIV<TOTAL>5</INCOME>";
    CHECK(contains(journalOfDocument("hledger", investing(dayless)),
                   "\n2024-03-31 * Dividend\n    ; incomeType: "));
}

TEST_CASE("positions are asserted units and prices, and cash is an asserted balance") {
    const auto position = [](const std::string& kind, const std::string& values) {
        return "<" + kind + "><INVPOS>" + kSecurity + values + "</INVPOS></" + kind + ">";
    };
    const std::string rest =
        "<INVPOSLIST>" +
        position("POSSTOCK",
                 "<HELDINACCT>CASH<POSTYPE>LONG<UNITS>60<UNITPRICE>49<MKTVAL>2940<DTPRICEASOF>20240328") +
        position("POSSTOCK", "<HELDINACCT>SHORT<POSTYPE>SHORT<UNITS>10<UNITPRICE>49<MKTVAL>490") +
        "</INVPOSLIST><INVBAL><AVAILCASH>12.5<MARGINBALANCE>-2<SHORTBALANCE>0<BALLIST><BAL><NAME>Sweep<DESC>d"
        "<BALTYPE>DOLLAR<VALUE>8</BAL></BALLIST></INVBAL><INV401KBAL><TOTAL>285</INV401KBAL>";
    const std::string document = investing(bought("<UNITS>100<TOTAL>-4510"), rest);
    const std::string journal = journalOfDocument("hledger", document);
    CHECK(contains(journal, "    Assets:Investments:D1:Securities  0 ALDR = 50 ALDR\n"));
    CHECK(contains(journal,
                   "    Assets:Investments:D1:Securities  -50 ALDR\n    ; ofxopening: 2024-02-15\n"
                   "    Equity:Opening-Balances  50 ALDR\n"));
    CHECK(contains(journal, "    Assets:Investments:D1:Cash  0.00 USD = 12.50 USD\n"));
    CHECK(contains(journal, "    Assets:Investments:D1:Cash  4522.50 USD\n"));
    CHECK(contains(journal, "\nP 2024-03-28 ALDR 49.00 USD\n"));
    for (const char* fact : {"margin: -2", "name: Sweep", "value: 8", "total: 285", "marketValue: 2940"}) {
        CAPTURE(fact);
        CHECK(contains(journal, fact));
    }
    const std::string beancount = journalOfDocument("beancount", document);
    CHECK(contains(beancount, "\n2024-04-01 balance Assets:Investments:D1:Securities 50 ALDR\n"));
    CHECK(contains(beancount, "\n2024-03-28 price ALDR 49.00 USD\n"));
    for (const std::string& format : kBookFormats)
        if (hasBookProgram(format)) CHECK(complaintsAbout(format, journalOfDocument(format, document)) == "");
}

TEST_CASE("a price is for one unit, whatever the document counts in") {
    struct Row {
        const char* position;
        const char* price;
    };
    for (const Row& row : {
             Row{"<POSDEBT><INVPOS>%<UNITS>4000<UNITPRICE>99.50<MKTVAL>3980</INVPOS></POSDEBT>", "0.995"},
             Row{"<POSDEBT><INVPOS>%<UNITS>4000<UNITPRICE>0.995<MKTVAL>3980</INVPOS></POSDEBT>", "0.995"},
             Row{"<POSOPT><INVPOS>%<UNITS>-1<UNITPRICE>2.15<MKTVAL>-215</INVPOS></POSOPT>", "215.00"},
             Row{"<POSMF><INVPOS>%<UNITS>12<UNITPRICE>20.80<MKTVAL>249.60</INVPOS></POSMF>", "20.80"},
             Row{"<POSMF><INVPOS>%<UNITS>12<UNITPRICE>20.80</INVPOS></POSMF>", "20.80"},
             Row{"<POSMF><INVPOS>%<UNITS>12<UNITPRICE>20.80<MKTVAL>9999</INVPOS></POSMF>", ""},
             Row{"<POSDEBT><INVPOS>%<UNITS>12<UNITPRICE>99.5</INVPOS></POSDEBT>", ""},
             Row{"<POSMF><INVPOS>%<UNITS>12<MKTVAL>9999</INVPOS></POSMF>", ""},
         }) {
        CAPTURE(row.position);
        std::string position = row.position;
        position.replace(position.find('%'), 1, kSecurity);
        const std::string journal =
            journalOfDocument("ledger", investing("", "<INVPOSLIST>" + position + "</INVPOSLIST>"));
        CHECK(countOf(journal, "\nP ") == (*row.price == '\0' ? 0 : 1));
        if (*row.price != '\0')
            CHECK(contains(journal, "\nP 2024-03-31 ALDR " + std::string(row.price) + " USD\n"));
        CHECK(contains(journal, " ALDR = "));
    }
}

TEST_CASE("securities are called by ticker or identifier, and no two alike") {
    struct Row {
        const char* ticker;
        const char* name;
    };
    for (const Row& row : {Row{"<TICKER>BRK.B", "\"BRK.B\""}, Row{"<TICKER>T", "\"TICKER.T\""},
                           Row{"<TICKER>0700.HK", "\"CUSIP.S1\""}, Row{"", "\"CUSIP.S1\""},
                           Row{"<TICKER>aldr c50 / x", "\"ALDR-C50-X\""}, Row{"<TICKER>;", "\"CUSIP.S1\""},
                           Row{"<TICKER>ALDRALDRALDRALDRALDRALDRALDR", "\"ALDRALDRALDRALDRA-"},
                           Row{"<TICKER>USD", "\"USD."}}) {
        CAPTURE(row.ticker);
        std::string document = investing(bought("<UNITS>1<TOTAL>-10"));
        document.replace(document.find("<TICKER>ALDR"), 12, row.ticker);
        for (const std::string& format : kBookFormats) {
            const std::string journal = journalOfDocument(format, document);
            if (format != "beancount") CHECK(contains(journal, "Securities  1 " + std::string(row.name)));
            if (hasBookProgram(format)) CHECK(complaintsAbout(format, journal) == "");
        }
    }
}

TEST_CASE("an investment account that stands in several files counts once") {
    const TemporaryFolder folder;
    const std::string one = folder.file("a.ofx", investing(bought("<UNITS>1<TOTAL>-10")));
    const std::string two =
        folder.file("b.ofx", investing(bought("<UNITS>1<TOTAL>-10") + "<INCOME>" + inTransaction("2") +
                                       kSecurity + "<INCOMETYPE>DIV<TOTAL>5</INCOME>"));
    for (const std::string& format : kBookFormats) {
        CAPTURE(format);
        const std::string both = journalOf(format, {one, two});
        CHECK(both == journalOf(format, {two, one}));
        CHECK(countOf(both, "ofxid") == 2);
        const std::string journal = folder.file("main", journalOf(format, {one}));
        CHECK(countOf(journalOf(format, {one, two, "--unless", journal}), "ofxid") == 1);
    }
}
