// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tool/report.h"

using namespace brackwell::tests;

namespace {

std::string security(const std::string& id, const std::string& name, const std::string& ticker) {
    return "<STOCKINFO><SECINFO><SECID><UNIQUEID>" + id + "<UNIQUEIDTYPE>CUSIP</SECID><SECNAME>" + name +
           "<TICKER>" + ticker + "<UNITPRICE>4</SECINFO></STOCKINFO>";
}

std::string securityList(const std::string& securities) {
    return "<SECLISTMSGSRSV1><SECLIST>" + securities + "</SECLIST></SECLISTMSGSRSV1>";
}

std::string position(const std::string& id, const std::string& value, const std::string& rest = "") {
    return "<POSSTOCK><INVPOS><SECID><UNIQUEID>" + id +
           "<UNIQUEIDTYPE>CUSIP</SECID><UNITS>2.5<UNITPRICE>4<MKTVAL>" + value + "<DTPRICEASOF>20240630" +
           rest + "</INVPOS></POSSTOCK>";
}

std::string purchase(const std::string& number, const std::string& date, const std::string& id,
                     const std::string& total) {
    return "<BUYSTOCK><INVBUY><INVTRAN><FITID>" + number + "<DTTRADE>" + date +
           "</INVTRAN><SECID><UNIQUEID>" + id +
           "<UNIQUEIDTYPE>CUSIP</SECID><UNITS>2<UNITPRICE>3<COMMISSION>1<TOTAL>" + total +
           "</INVBUY><BUYTYPE>BUY</BUYSTOCK>";
}

std::string moneyIn(const std::string& number, const std::string& amount) {
    return "<INVBANKTRAN><STMTTRN><TRNTYPE>CREDIT<DTPOSTED>20240105<TRNAMT>" + amount + "<FITID>" + number +
           "<NAME>Payroll<MEMO>Salary</STMTTRN><SUBACCTFUND>CASH</INVBANKTRAN>";
}

/// The statement of an investment account.
std::string held(const std::string& account, const std::string& transactions, const std::string& positions,
                 const std::string& rest = "<INVBAL><AVAILCASH>5.5</INVBAL>") {
    return "<INVSTMTMSGSRSV1><INVSTMTTRNRS><TRNUID>1<INVSTMTRS><DTASOF>20240630<CURDEF>USD<INVACCTFROM>"
           "<BROKERID>broker<ACCTID>" +
           account + "</INVACCTFROM><INVTRANLIST>" + transactions + "</INVTRANLIST><INVPOSLIST>" + positions +
           "</INVPOSLIST>" + rest + "</INVSTMTRS></INVSTMTTRNRS></INVSTMTMSGSRSV1>";
}

/// An account with two transactions and two positions, and three securities.
std::string sample() {
    return version1(held("778899001122", purchase("T1", "20240110", "100", "-7") + moneyIn("B1", "50"),
                         position("100", "10") + position("200", "30")) +
                    securityList(security("100", "Alder Railways", "ALDR") +
                                 security("200", "Harbour, Lines", "HBRL") +
                                 security("300", "Nobody Holds", "NBDY")));
}

using Cells = std::vector<std::string>;

/// The rows of a table without quoted fields, as name and field.
std::vector<std::map<std::string, std::string>> tableOf(const std::string& csv) {
    const auto split = [](std::string line) {
        if (line.ends_with('\r')) line.pop_back();
        Cells cells(1);
        for (const char c : line) c == ',' ? void(cells.emplace_back()) : cells.back().push_back(c);
        return cells;
    };
    const std::vector<std::string> lines = linesOf(csv);
    const Cells names = split(lines.at(0));
    std::vector<std::map<std::string, std::string>> rows;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const Cells cells = split(lines[i]);
        REQUIRE(cells.size() == names.size());
        rows.emplace_back();
        for (std::size_t k = 0; k < cells.size(); ++k) rows.back().emplace(names[k], cells[k]);
    }
    return rows;
}

std::string commas(std::string text) {
    for (std::size_t at; (at = text.find("Harbour, Lines")) != text.npos;) text.erase(at + 7, 1);
    return text;
}

/// A table of the sample, in which no field needs quotes.
std::vector<std::map<std::string, std::string>> sampleTable(std::vector<std::string> options) {
    options.insert(options.begin(), "csv");
    return tableOf(outputOf(options, commas(sample())));
}

}  // namespace

TEST_CASE("a table of bank transactions says what of investments it does not have") {
    struct Row {
        std::string document;
        std::string text;
    };
    const std::string bought = purchase("T1", "20240110", "100", "-7");
    for (const Row& row : std::vector<Row>{
             {sample(),
              "-: 2 investment transactions, 2 positions and 3 securities are not in this table; --kind "
              "investments, positions or securities writes them.\n"},
             {version1(held("1234567", bought, "")),
              "-: 1 investment transaction is not in this table; --kind investments writes it.\n"},
             {version1(held("1234567", bought + bought, "")),
              "-: 2 investment transactions are not in this table; --kind investments writes them.\n"},
             {version1(held("1234567", "", position("1", "10")) + securityList(security("1", "A", "B"))),
              "-: 1 position and 1 security are not in this table; --kind positions or securities writes "
              "them.\n"},
             {transactionsWith(transaction("20240101", "1")), ""}}) {
        CAPTURE(row.text);
        CAPTURE(tool({"csv", "-"}, row.document).error);
        const Finished finished = tool({"csv", "-"}, row.document);
        CHECK(finished.status == 0);
        CHECK((row.text.empty() ? !contains(finished.error, "in this table")
                                : contains(finished.error, row.text)));
        CHECK_FALSE(contains(tool({"csv", "--quiet", "-"}, row.document).error, "table"));
        CHECK(tool({"csv", "--kind", "investments", "-"}, row.document).error.find("table") ==
              std::string::npos);
    }
    CHECK(tool({"csv", "--strict", "--quiet", "-"}, sample()).status == 3);
}

TEST_CASE("only what was asked for is missed in a table of bank transactions") {
    CHECK_FALSE(contains(tool({"csv", "--account", "5678", "-"}, sample()).error, "table"));
    CHECK(contains(tool({"csv", "--account", "1122", "--search", "alder", "-"}, sample()).error,
                   "-: 1 investment transaction, 1 position and 1 security are not in this table"));
    CHECK(contains(tool({"csv", "--until", "2024-01-05", "--search", "salary", "-"}, sample()).error,
                   "-: 1 investment transaction is not in this table"));
}

TEST_CASE("a table of investments has the bank transactions of the account, too") {
    const auto rows = sampleTable({"--kind", "investments"});
    REQUIRE(rows.size() == 2);
    CHECK(rows[0].at("kind") == "BUYSTOCK");
    CHECK(rows[0].at("brokerID") == "broker");
    CHECK(rows[0].at("accountID") == "778899001122");
    CHECK(rows[0].at("currency") == "USD");
    CHECK(rows[0].at("fiTransactionID") == "T1");
    CHECK(rows[0].at("tradeDate") == "2024-01-10T00:00:00.000Z");
    CHECK(rows[0].at("securityID") == "100");
    CHECK(rows[0].at("securityIDType") == "CUSIP");
    CHECK(rows[0].at("securityName") == "Alder Railways");
    CHECK(rows[0].at("ticker") == "ALDR");
    CHECK(rows[0].at("units") == "2");
    CHECK(rows[0].at("unitPrice") == "3");
    CHECK(rows[0].at("commission") == "1");
    CHECK(rows[0].at("total") == "-7");
    CHECK(rows[0].at("tradeType") == "BUY");
    CHECK(rows[1].at("kind") == "INVBANKTRAN");
    CHECK(rows[1].at("fiTransactionID") == "B1");
    CHECK(rows[1].at("tradeDate") == "2024-01-05T00:00:00.000Z");
    CHECK(rows[1].at("total") == "50");
    CHECK(rows[1].at("transactionType") == "CREDIT");
    CHECK(rows[1].at("payeeName") == "Payroll");
    CHECK(rows[1].at("memo") == "Salary");
    CHECK(rows[1].at("fundSubAccount") == "CASH");
}

TEST_CASE("tables of positions and securities have a row for each") {
    const auto positions = sampleTable({"--kind", "positions"});
    REQUIRE(positions.size() == 2);
    CHECK(positions[1].at("securityName") == "Harbour Lines");
    CHECK(positions[1].at("asOf") == "2024-06-30T00:00:00.000Z");
    CHECK(positions[1].at("units") == "2.5");
    CHECK(positions[1].at("marketValue") == "30");
    const auto securities = sampleTable({"--kind", "securities"});
    REQUIRE(securities.size() == 3);
    CHECK(securities[2].at("id") == "300");
    CHECK(securities[2].at("ticker") == "NBDY");
    CHECK(securities[2].at("unitPrice") == "4");
}

TEST_CASE("the filter chooses rows of all tables") {
    struct Row {
        std::vector<std::string> options;
        std::vector<std::size_t> counts;  ///< transactions, positions, securities
    };
    for (const Row& row : std::vector<Row>{{{"--search", "aldr"}, {1, 1, 1}},
                                           {{"--search", "PAYROLL"}, {1, 0, 0}},
                                           {{"--since", "2024-01-06"}, {1, 2, 3}},
                                           {{"--until", "2024-01-06"}, {1, 2, 3}},
                                           {{"--account", "1122"}, {2, 2, 3}},
                                           {{"--account", "9"}, {0, 0, 0}}}) {
        CAPTURE(row.options);
        std::vector<std::size_t> counts;
        for (const char* kind : {"investments", "positions", "securities"}) {
            std::vector<std::string> options = row.options;
            options.insert(options.end(), {"--kind", kind});
            counts.push_back(sampleTable(options).size());
        }
        CHECK(counts == row.counts);
    }
    CHECK(sampleTable({"--kind", "investments", "--sort", "date"}).at(0).at("fiTransactionID") == "B1");
    CHECK(sampleTable({"--kind", "investments", "--sort", "amount"}).at(0).at("fiTransactionID") == "T1");
    CHECK(sampleTable({"--kind", "positions", "--sort", "amount"}).at(0).at("securityID") == "100");
}

TEST_CASE("a security that only another file describes is found there") {
    const TemporaryFolder folder;
    const std::string bare = folder.file("bare.ofx", version1(held("1234567", "", position("100", "10"))));
    const std::string lists = folder.file(
        "lists.ofx",
        version1(held("1234567", "", position("200", "10")) +
                 securityList(security("100", "Alder", "ALDR") + security("200", "Harbour", "HBRL"))));
    const auto rows = tableOf(tool({"csv", "--quiet", "--kind", "positions", bare, lists}).output);
    REQUIRE(rows.size() == 2);
    CHECK(rows[0].at("file") == bare);
    CHECK(rows[0].at("securityName") == "Alder");
    CHECK(rows[1].at("securityName") == "Harbour");
    CHECK(contains(tool({"show", "--quiet", bare, lists}).output, "\nAlder    ALDR"));
    CHECK(contains(tool({"show", "--quiet", bare}).output, "\n100 "));
}

TEST_CASE("an investment account is shown with balances, holdings and transactions") {
    const std::string output = "\n" + outputOf({"show"}, sample());
    for (const char* line : {"\nInvestment account ****1122\n", "\nBroker            broker\n",
                             "\nAs of             2024-06-30\n", "\nCash              5.50\n",
                             "\nHolding         Ticker  Units  Price  Value  As of\n",
                             "\nAlder Railways  ALDR      2.5      4  10.00  2024-06-30\n",
                             "\nTotal             2 positions: worth 40.00 USD\n",
                             "\n2024-01-10  Bought stock      Alder Railways      2      3  -7.00\n",
                             "\n2024-01-05  Bank transaction  Payroll                       50.00  Salary\n",
                             "\nTotal             2 transactions: in 50.00, out -7.00, sum 43.00 USD\n",
                             "\nSecurities that no holding or transaction names\n", "\nNobody Holds  NBDY"}) {
        CAPTURE(line);
        CAPTURE(output);
        CHECK(contains(output, line));
    }
    CHECK_FALSE(contains(output, "not shown"));
    CHECK_FALSE(contains(output, "778899001122"));
    CHECK(contains(outputOf({"show", "--full"}, sample()), "Investment account 778899001122"));
}

TEST_CASE("the filter chooses what is shown of an investment account") {
    const std::string found = outputOf({"show", "--search", "hbrl"}, sample());
    CHECK(contains(found, "Harbour, Lines"));
    CHECK_FALSE(contains(found, "Alder"));
    CHECK(contains(found, "No transactions."));
    CHECK(contains(outputOf({"show", "--search", "salary"}, sample()), "No holdings that were asked for."));
    const std::string other = outputOf({"show", "--account", "5678"}, sample());
    CHECK(contains(other, "No statement is of an account that was asked for."));
    CHECK_FALSE(contains(other, "Investment account"));
}

TEST_CASE("amounts in another currency are summed up by their rate") {
    const std::string foreign = position("1", "10", "<CURRENCY><CURRATE>1.1<CURSYM>EUR</CURRENCY>");
    CHECK(contains(outputOf({"show"}, version1(held("1234567", "", foreign + position("2", "5")))),
                   "2 positions: worth 16.00 USD\n"));
    const std::string unknown = position("1", "10", "<CURRENCY><CURSYM>EUR</CURRENCY>");
    CHECK(contains(outputOf({"show"}, version1(held("1234567", "", unknown + position("2", "5")))),
                   "2 positions: worth 5.00 USD (1 without a value)\n"));
}

TEST_CASE("an investment account is a row with what it is worth") {
    const std::string output = outputOf({"accounts"}, sample());
    CAPTURE(output);
    CHECK(contains(output, "Investment  ****1122    45.50  USD  2024-06-30  2"));
    CHECK_FALSE(contains(output, "no bank"));
    const std::string unknown = "<POSSTOCK><INVPOS><SECID><UNIQUEID>1</SECID></INVPOS></POSSTOCK>";
    CHECK_FALSE(contains(outputOf({"accounts"}, version1(held("1234567", "", unknown + position("2", "5")))),
                         "10.50"));
    const std::string no =
        outputOf({"accounts"}, version1(held("1234567", "", unknown + position("2", "5"))));
    CHECK(contains(no, "\nNo balance of ****4567: 1 of 2 positions has no value in USD.\n"));
    CHECK(contains(outputOf({"accounts"}, version1(held("1234567", "", unknown + unknown))),
                   "\nNo balance of ****4567: 2 of 2 positions have no value in USD.\n"));
    CHECK(contains(outputOf({"accounts", "--full"}, version1(held("1234567", "", "", ""))),
                   "\nNo balance of 1234567: it states neither positions nor available cash.\n"));
    CHECK_FALSE(contains(output, "No balance"));
    CHECK(contains(
        outputOf({"accounts"}, version1(held("1234567", "", "", "<INV401KBAL><TOTAL>77.25</INV401KBAL>"))),
        "77.25"));
    CHECK(outputOf({"accounts"}, version1("")) ==
          "The documents have no bank, card or investment statements.\n");
}

TEST_CASE("an investment account of several files is one row, with the latest value") {
    const TemporaryFolder folder;
    const std::string bought = purchase("T1", "20240110", "100", "-7");
    const std::string early = folder.file("1.ofx", version1(held("1234567", bought, position("1", "10"))));
    std::string later = version1(held("1234567", bought + moneyIn("B1", "5"), position("1", "20")));
    later.replace(later.find("<DTASOF>20240630"), 16, "<DTASOF>20240731");
    const std::string late = folder.file("2.ofx", later);
    const std::string output = tool({"accounts", "--quiet", late, early}).output;
    CAPTURE(output);
    CHECK(linesOf(output).size() == 2);
    CHECK(contains(output, "25.50  USD  2024-07-31  2"));
}

TEST_CASE("an investment transaction that stands in two statements is found by its identifier") {
    const TemporaryFolder folder;
    const std::string twice = purchase("T1", "20240110", "100", "-7");
    const std::string first =
        folder.file("1.ofx", version1(held("1234567", twice + twice + moneyIn("B1", "5"), "")));
    const std::string second =
        folder.file("2.ofx", version1(held("1234567", twice + moneyIn("B1", "6") + moneyIn("B2", "5"), "")));
    const std::string output = tool({"duplicates", "--quiet", first, second}).output;
    CAPTURE(output);
    CHECK(contains(output, "Investment account ****4567\n"));
    CHECK(contains(output, "Bought stock 100"));
    CHECK(contains(output, "in " + first.substr(0, 4)));
    CHECK_FALSE(contains(output, "B1"));  // of different amounts
    const std::string list = securityList(security("100", "Alder", "ALDR"));
    const std::string third =
        folder.file("3.ofx", version1(held("1234567", twice + moneyIn("B9", "5"), "") + list));
    const std::string fourth =
        folder.file("4.ofx", version1(held("1234567", twice + moneyIn("B9", "5"), "")));
    const std::string named = tool({"duplicates", "--quiet", fourth, third}).output;
    CHECK(contains(named, "Bought stock Alder  "));
    CHECK(contains(named, "Payroll  "));
    CHECK(tool({"duplicates", "--quiet", first}).output == "No transaction stands in two statements.\n");
}

namespace {

std::string income(const std::string& kind, const std::string& number, const std::string& date,
                   const std::string& total, const std::string& rest = "") {
    return "<" + kind + "><INVTRAN><FITID>" + number + (date.empty() ? "" : "<DTTRADE>" + date) +
           "</INVTRAN><SECID><UNIQUEID>100<UNIQUEIDTYPE>CUSIP</SECID><INCOMETYPE>DIV<TOTAL>" + total + rest +
           "</" + kind + ">";
}

std::string checking(const std::string& transactions) {
    return "<BANKMSGSRSV1>" +
           statement("55667788", "USD", transactions, "<LEDGERBAL><BALAMT>100<DTASOF>20240630</LEDGERBAL>") +
           "</BANKMSGSRSV1>";
}

}  // namespace

TEST_CASE("a report has a section for an investment account") {
    const MarkupPage page =
        reportOf(version1(held("778899001122", purchase("T1", "20240110", "100", "-7"),
                               position("100", "10") + position("200", "30")) +
                          securityList(security("100", "Alder &amp; Sons &lt;b>", "ALDR"))));
    CHECK(page.texts("h2").at(0) == "Investment account \u2022\u2022 1122");
    CHECK(page.texts("p", "balance").at(0) == "45.50 USDHoldings and cash 2024-06-30");
    CHECK(page.texts("h3").at(0) == "Holdings");
    const auto holdings = page.rows("holdings");
    REQUIRE(holdings.size() == 2);
    CHECK(holdings.at(0) == Cells{"Alder & Sons <b>ALDR", "2.5", "4", "10.00", "25.0 %", "2024-06-30"});
    CHECK(holdings.at(1).at(4) == "75.0 %");
    CHECK(page.all("svg", "share").size() == 3);
    CHECK(page.texts("tfoot") == std::vector<std::string>{"\nSum40.00\n"});
    CHECK(page.rows("kinds").at(0) == Cells{"Stocks", "40.00", "100.0 %"});
    CHECK(page.texts("p", "note").empty());
    CHECK(contains(page.texts("h1").at(0), "Account report"));
    CHECK(
        contains(page.texts("header", "title").at(0), "1 account, 1 transaction, 2024-01-10 to 2024-01-10"));
}

TEST_CASE("what a holding is worth is as much as is known of it") {
    struct Row {
        const char* text;
        std::string position;
        Cells cells;  ///< value, share
    };
    for (const Row& row : std::vector<Row>{
             {"nothing",
              "<POSSTOCK><INVPOS><SECID><UNIQUEID>1</SECID></INVPOS></POSSTOCK>",
              {"not known", "\u2013"}},
             {"no rate", position("1", "9", "<CURRENCY><CURSYM>EUR</CURRENCY>"), {"9.00 EUR", "\u2013"}},
             {"rate", position("1", "9", "<CURRENCY><CURRATE>5<CURSYM>EUR</CURRENCY>"), {"45.00", "90.0 %"}},
             {"owed", position("1", "-5"), {"\u22125.00", "50.0 %"}}}) {
        CAPTURE(row.text);
        const MarkupPage page = reportOf(version1(held("1234567", "", row.position + position("2", "5"))));
        const auto cells = page.rows("holdings").at(0);
        CHECK(Cells{cells.at(3), cells.at(4)} == row.cells);
        CHECK((page.texts("p", "balance").at(0) ==
               "What it is worth is not stated: 1 of 2 positions has no value in USD") ==
              (row.cells.at(1) == "\u2013"));
    }
    const MarkupPage page = reportOf(version1(held("1", "", position("1", "-5"))));
    CHECK(page.all("rect", "out").size() == 2);
    const std::string unknown = "<POSSTOCK><INVPOS><SECID><UNIQUEID>1</SECID></INVPOS></POSSTOCK>";
    CHECK(reportOf(version1(held("1", "", unknown))).rows("kinds").at(0).at(0) == "Stocks1 without a value");
}

TEST_CASE("what an account is worth is said to be without its margin balance") {
    const auto balanceOf = [](const std::string& margin) {
        const std::string rest = "<INVBAL><AVAILCASH>5.5<MARGINBALANCE>" + margin + "</INVBAL>";
        return reportOf(version1(held("1234567", "", position("1", "10"), rest))).texts("p", "balance").at(0);
    };
    CHECK(balanceOf("-200") ==
          "15.50 USDHoldings and cash, without the margin balance of \u2212200.00, 2024-06-30");
    CHECK(balanceOf("0") == "15.50 USDHoldings and cash 2024-06-30");
}

TEST_CASE("units and prices of a report have groups of digits and a sign of minus") {
    std::string many = position("1", "-10");
    many.replace(many.find("<UNITS>2.5<UNITPRICE>4"), 22, "<UNITS>-4000.5<UNITPRICE>12345.678");
    const Cells cells = reportOf(version1(held("1234567", "", many))).rows("holdings").at(0);
    CHECK(cells.at(1) == "\u22124,000.5");
    CHECK(cells.at(2) == "12,345.678");
}

TEST_CASE("a report draws the income of each month, with what was reinvested") {
    const MarkupPage page = reportOf(version1(
        held("778899001122",
             income("INCOME", "D1", "20240215", "3.25") + income("REINVEST", "R1", "20240220", "-1.75") +
                 income("INCOME", "D2", "20240415", "2") + income("INCOME", "D3", "", "7") +
                 income("INCOME", "D4", "20240415", "9", "<CURRENCY><CURSYM>EUR</CURRENCY>"),
             "")));
    CHECK(page.rows("income") ==
          std::vector<Cells>{{"2024-02", "5.00"}, {"2024-04", "2.00"}, {"no date", "7.00"}});
    CHECK(page.texts("tfoot") == std::vector<std::string>{"\nSum14.00\n"});
    std::vector<std::string> titles;
    for (const MarkupElement& element : page.all("title")) titles.push_back(element.text);
    CHECK(std::ranges::count(titles, "Income of Investment account \u2022\u2022 1122 by month") == 1);
    CHECK(std::ranges::count(titles, "Feb 2024: 5.00") == 1);
    CHECK(contains(page.texts("desc").at(0), "Most came in in Feb 2024: 5.00 USD."));
    CHECK(page.texts("p", "note") ==
          std::vector<std::string>{"No holdings.",
                                   "Income without an amount in USD, which is not counted: 1."});
}

TEST_CASE("transactions of investment accounts stand in the table of all") {
    const std::string split =
        "<SPLIT><INVTRAN><FITID>S1<DTTRADE>20240301</INVTRAN><SECID><UNIQUEID>100<UNIQUEIDTYPE>CUSIP</SECID>"
        "<OLDUNITS>60<NEWUNITS>120</SPLIT>";
    std::string foreign = purchase("T2", "20240302", "100", "-7");
    foreign.insert(foreign.find("</INVBUY>"), "<CURRENCY><CURSYM>EUR</CURRENCY>");
    const MarkupPage page = reportOf(
        version1(checking(transaction("20240102", "-3", "<NAME>Grocer")) +
                 held("778899001122",
                      purchase("T1", "20240110", "100", "-7") + moneyIn("B1", "50") + split + foreign, "") +
                 securityList(security("100", "Alder", "ALDR"))));
    const std::string account = "Investment account \u2022\u2022 1122";
    CHECK(
        page.rows("transactions") ==
        std::vector<Cells>{{"2024-03-02", "Alder2 at 3", "Bought stock", account, "\u22127.00 EUR"},
                           {"2024-03-01", "Alder60 became 120 units", "Split", account, "\u2013"},
                           {"2024-01-10", "Alder2 at 3", "Bought stock", account, "\u22127.00"},
                           {"2024-01-05", "PayrollSalary", "Bank transaction", account, "+50.00"},
                           {"2024-01-02", "Grocer", "", "Checking account \u2022\u2022 7788", "\u22123.00"}});
    CHECK(page.texts("td", "trade") == std::vector<std::string>{"\u22127.00"});
    CHECK(page.texts("td", "in").back() == "+50.00");
    CHECK(page.texts("option") == std::vector<std::string>{"All", "Checking account \u2022\u2022 7788",
                                                           account, "In and out", "In", "Out",
                                                           "Bought, sold, moved"});
}

TEST_CASE("investment accounts are listed and summed up with the others") {
    const MarkupPage page =
        reportOf(version1(checking(transaction("20240102", "-3")) +
                          held("778899001122", purchase("T1", "20240110", "100", "-7") + moneyIn("B1", "50"),
                               position("100", "10"))));
    const auto rows = page.rows("overview");
    REQUIRE(rows.size() == 2);
    CHECK(rows.at(1) == Cells{"Investment account \u2022\u2022 1122", "15.50 USD2024-06-30", "\u2013",
                              "+50.00", "0.00", "2"});
    CHECK(contains(page.texts("tfoot").at(0), "Sum in USD2 accounts115.50 USD+50.00\u22123.003"));
    CHECK(page.texts("p", "balance").at(0) == "115.50 USDSum of the balances and holdings");
    CHECK(contains(page.texts("section").at(1), "what buys or sells securities counts as neither"));
    std::vector<std::string> addresses;
    for (const MarkupElement& link : page.all("a")) addresses.push_back(link.attribute("href"));
    CHECK(addresses == std::vector<std::string>{"#account-1", "#investment-1"});
    const std::string unknown = "<POSSTOCK><INVPOS><SECID><UNIQUEID>1</SECID></INVPOS></POSSTOCK>";
    CHECK(contains(reportOf(version1(checking("") + held("1234567", "", unknown))).texts("tfoot").at(0),
                   "2 accounts\u2013"));
}

TEST_CASE("a report lists the securities that no file names, each once") {
    const TemporaryFolder folder;
    const std::string list =
        securityList(security("100", "Alder", "ALDR") + security("300", "Nobody", "NBDY"));
    const std::string first = folder.file("1.ofx", version1(held("1234567", "", "") + list));
    const std::string second =
        folder.file("2.ofx", version1(held("7654321", "", position("100", "1")) + list));
    const MarkupPage page(tool({"report", "--quiet", first, second}).output);
    CHECK(page.rows("securities") == std::vector<Cells>{{"NobodyNBDY", "Stocks", "4 ", ""}});
    const MarkupPage other(tool({"report", "--quiet", "--account", "4567", first, second}).output);
    CHECK(other.rows("securities").size() == 1);
    CHECK(reportOf(sample(), {"--search", "hbrl"}).rows("securities").empty());
}

TEST_CASE("a security is first looked for in the document that names it") {
    const TemporaryFolder folder;
    const auto document = [](const std::string& account, const std::string& name) {
        return version1(held(account, purchase("T1", "20240110", "1", "-7"), position("1", "10")) +
                        securityList(security("1", name, "")));
    };
    const std::string first = folder.file("a.ofx", document("1111111", "Bond Fund"));
    const std::string second = folder.file("b.ofx", document("2222222", "Stock Fund"));
    const MarkupPage page(tool({"report", "--quiet", first, second}).output);
    CHECK(page.rows("holdings").at(0).at(0) == "Bond Fund");
    CHECK(page.rows("holdings").at(1).at(0) == "Stock Fund");
    const MarkupPage found(tool({"report", "--quiet", "--search", "stock fund", first, second}).output);
    REQUIRE(found.rows("transactions").size() == 1);
    CHECK(contains(found.rows("transactions").at(0).at(1), "Stock Fund"));
}

TEST_CASE("balances of a report have the unit and the currency that they are in") {
    const auto listed = [](const std::string& name, const std::string& rest) {
        return "<BAL><NAME>" + name + "<DESC>d" + rest + "</BAL>";
    };
    const MarkupPage page = reportOf(version1(
        held("1234567", "", "",
             "<INVBAL><AVAILCASH>5.5<BALLIST>" +
                 listed("Sweep", "<BALTYPE>DOLLAR<VALUE>8<CURRENCY><CURRATE>2<CURSYM>EUR</CURRENCY>") +
                 listed("Yield", "<BALTYPE>PERCENT<VALUE>4.9") + listed("Funds", "<BALTYPE>NUMBER<VALUE>3") +
                 listed("Odd", "<BALTYPE>DOLLAR<VALUE>many") + "</BALLIST></INVBAL>")));
    const auto facts = factsOf(page);
    CHECK(facts.at("Cash") == "5.50");
    CHECK(facts.at("Sweep") == "8.00 EUR");
    CHECK(facts.at("Yield") == "4.9 %");
    CHECK(facts.at("Funds") == "3");
    CHECK(facts.at("Odd") == "many");
}

TEST_CASE("all that is known of a retirement plan is shown") {
    const std::string plan =
        "<INV401K><EMPLOYERNAME>Quarry<PLANID>P1<MATCHINFO><MATCHPCT>50<MAXMATCHAMT>1200.5</MATCHINFO>"
        "<LOANINFO><LOANID>L1<CURRENTLOANBAL>640.25<LOANRATE>4.5</LOANINFO>"
        "<INV401KSUMMARY><YEARTODATE><DTSTART>20240101<DTEND>20240630"
        "<CONTRIBUTIONS><PRETAX>100<TOTAL>100</CONTRIBUTIONS><EARNINGS><TOTAL>7.5</EARNINGS></YEARTODATE>"
        "</INV401KSUMMARY></INV401K><INV401KBAL><PRETAX>90<TOTAL>90</INV401KBAL>";
    const std::string output = outputOf({"show"}, version1(held("1234567", "", "", plan)));
    CAPTURE(output);
    const auto has = [&output](std::string_view label, std::string_view value) {
        for (std::string line : linesOf(output)) {
            if (!line.starts_with(std::string(label) + "  ")) continue;
            line.erase(0, line.find_first_not_of(' ', label.size()));
            const std::size_t gap = line.find("  ");
            if (gap == line.npos) continue;
            line.erase(gap, line.find_first_not_of(' ', gap) - gap - 2);
            if (line == value) return true;
        }
        return false;
    };
    CHECK(has("Plan", "employer name  Quarry"));
    CHECK(has("Plan", "plan ID  P1"));
    CHECK(has("Plan", "match percent  50 %"));
    CHECK(has("Plan", "maximum match amount  1200.5"));
    CHECK(has("Loan", "current balance  640.25"));
    CHECK(has("Loan", "rate  4.5"));
    CHECK(has("Year to date", "end  2024-06-30"));
    CHECK(has("Year to date, contributions", "pre tax  100.00"));
    CHECK(has("Year to date, earnings", "total  7.50"));
    CHECK(has("Balance", "pre tax  90.00"));
}

TEST_CASE("the filter chooses the same in all commands") {
    struct Row {
        std::vector<std::string> options;
        std::vector<std::size_t> counts;  ///< statements, transactions, positions, securities
    };
    for (const Row& row : std::vector<Row>{{{}, {1, 2, 2, 3}},
                                           {{"--search", "alder rail"}, {1, 1, 1, 1}},
                                           {{"--search", "NBDY"}, {1, 0, 0, 1}},
                                           {{"--search", "payroll"}, {1, 1, 0, 0}},
                                           {{"--since", "2024-01-06"}, {1, 1, 2, 3}},
                                           {{"--until", "2024-01-06"}, {1, 1, 2, 3}},
                                           {{"--account", "1122"}, {1, 2, 2, 3}},
                                           {{"--account", "9"}, {0, 0, 0, 0}}}) {
        CAPTURE(row.options);
        std::vector<std::string> options = row.options;
        options.insert(options.begin(), "json");
        const Json json = Json::parse(outputOf(options, sample()));
        const Json& statements = json["investmentStatements"];
        std::size_t transactions = 0;
        std::size_t positions = 0;
        for (const Json& held : statements) {
            transactions += held["transactions"].size();
            positions += held["positions"].size();
        }
        CHECK(std::vector<std::size_t>{statements.size(), transactions, positions,
                                       json["securities"].size()} == row.counts);
        const MarkupPage page = reportOf(sample(), row.options);
        CHECK(page.rows("transactions").size() == row.counts.at(1));
        CHECK(page.rows("holdings").size() == row.counts.at(2));
        options.front() = "show";
        const bool showsNobody = contains(outputOf(options, sample()), "Nobody Holds");
        CHECK(showsNobody == (page.rows("securities").size() == 1));
    }
}

TEST_CASE("in JSON, too, investments are sorted, and names are looked for in the other files") {
    const auto ids = [](const Json& json) {
        Cells texts;
        for (const Json& transaction : json["investmentStatements"][0]["transactions"])
            texts.push_back(transaction.contains("fiTransactionID")
                                ? transaction["fiTransactionID"].get<std::string>()
                                : transaction["transaction"]["fiTransactionID"].get<std::string>());
        return texts;
    };
    CHECK(ids(Json::parse(outputOf({"json"}, sample()))) == Cells{"T1", "B1"});
    CHECK(ids(Json::parse(outputOf({"json", "--sort", "date"}, sample()))) == Cells{"B1", "T1"});
    const TemporaryFolder folder;
    const std::string bare =
        folder.file("bare.ofx", version1(held("1234567", purchase("T1", "20240110", "100", "-7"), "")));
    const std::string list =
        folder.file("list.ofx", version1(securityList(security("100", "Alder", "ALDR"))));
    const auto lines = linesOf(tool({"json", "--quiet", "--search", "aldr", bare, list}).output);
    REQUIRE(lines.size() == 2);
    CHECK(ids(Json::parse(lines.at(0))) == Cells{"T1"});
    CHECK(Json::parse(lines.at(0))["file"] == bare);
}

TEST_CASE("a table of investments has no columns that only accounts of banks have") {
    for (const char* kind : {"investments", "positions", "securities"}) {
        CAPTURE(kind);
        const std::string header = linesOf(outputOf({"csv", "--kind", kind}, sample())).at(0) + ",";
        for (const char* column : {"accountClass", "bankID", "branchID", "accountType", "dateUserInit",
                                   "dateFundsAvailable", "datePosted"}) {
            CAPTURE(column);
            CHECK_FALSE(contains(header, std::string(column) + ","));
        }
    }
}

TEST_CASE("the order that is wanted is that of a report's investments, too") {
    CHECK(reportOf(sample(), {"--sort", "date"}).rows("transactions").at(0).at(0) == "2024-01-05");
    CHECK(reportOf(sample(), {"--sort", "amount"}).rows("transactions").at(0).at(0) == "2024-01-10");
    CHECK(reportOf(sample()).rows("transactions").at(0).at(0) == "2024-01-10");
}
