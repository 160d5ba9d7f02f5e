// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tool/investment_documents.h"

using namespace brackwell::tests;

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
               "The value is not known: 1 of 2 positions has no value in USD") ==
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
    CHECK(contains(page.texts("desc").at(0), "The most came in during Feb 2024: 5.00 USD."));
    CHECK(page.texts("p", "note") ==
          std::vector<std::string>{"No holdings.", "Income in USD without an amount, not counted: 1."});
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
    CHECK(page.rows("transactions") ==
          std::vector<Cells>{
              {"2024-03-02", "Alder2 at 3, costs 1.00", "Bought stock", account, "\u22127.00 EUR"},
              {"2024-03-01", "Alder60 became 120 units", "Split", account, "\u2013"},
              {"2024-01-10", "Alder2 at 3, costs 1.00", "Bought stock", account, "\u22127.00"},
              {"2024-01-05", "PayrollSalary", "Bank transaction", account, "+50.00"},
              {"2024-01-02", "Grocer", "", "Checking account \u2022\u2022 7788", "\u22123.00"}});
    CHECK(page.all("table", "trades").size() == 1);
    CHECK(page.texts("td", "trade") == std::vector<std::string>{"\u22127.00"});
    CHECK(page.texts("td", "in").back() == "+50.00");
    CHECK(page.texts("option") == std::vector<std::string>{"All", "Checking account \u2022\u2022 7788",
                                                           account, "In and out", "In", "Out",
                                                           "Bought, sold, moved", "As listed"});
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
    CHECK(contains(page.texts("section").at(1), "purchases and sales of securities count as neither"));
    std::vector<std::string> addresses;
    for (const MarkupElement& link : page.all("a"))
        if (const std::string address = link.attribute("href"); contains(address, "-"))
            addresses.push_back(address);
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

TEST_CASE("the order that is wanted is that of a report's investments, too") {
    CHECK(reportOf(sample(), {"--sort", "date"}).rows("transactions").at(0).at(0) == "2024-01-05");
    CHECK(reportOf(sample(), {"--sort", "amount"}).rows("transactions").at(0).at(0) == "2024-01-10");
    CHECK(reportOf(sample()).rows("transactions").at(0).at(0) == "2024-01-10");
}

TEST_CASE("money that moves within an account, or without a security, is described") {
    const std::string moved =
        "<JRNLFUND><INVTRAN><FITID>1<DTTRADE>20240302</INVTRAN><SUBACCTTO>MARGIN<SUBACCTFROM>CASH<TOTAL>5"
        "</JRNLFUND><MARGININTEREST><INVTRAN><FITID>2<DTTRADE>20240301</INVTRAN><TOTAL>-7</MARGININTEREST>";
    const MarkupPage page = reportOf(version1(held("1", moved, "")));
    CHECK(page.rows("transactions") ==
          std::vector<Cells>{{"2024-03-02", "CASH to MARGIN", "Cash moved", "+5.00"},
                             {"2024-03-01", "Margin interest", "Margin interest", "\u22127.00"}});
}

TEST_CASE("what a rate has converted is added up exactly and shown with the decimals of the currency") {
    struct Row {
        std::string currency;
        Cells cells;   ///< of both holdings and of the sum
        Cells income;  ///< of the month and of the sum
    };
    const std::string rate = "<CURRENCY><CURRATE>1.23456<CURSYM>XYZ</CURRENCY>";
    for (const Row& row : std::vector<Row>{{"USD", {"12.35", "12.35", "24.69"}, {"24.69", "24.69"}},
                                           {"JPY", {"12", "12", "25"}, {"25", "25"}},
                                           {"KWD", {"12.346", "12.346", "24.691"}, {"24.691", "24.691"}}}) {
        CAPTURE(row.currency);
        std::string document = version1(held(
            "1",
            income("INCOME", "1", "20240101", "10", rate) + income("INCOME", "2", "20240102", "10", rate),
            position("1", "10", rate) + position("2", "10", rate), ""));
        document.replace(document.find("USD"), 3, row.currency);
        const MarkupPage page = reportOf(document);
        const auto holdings = page.rows("holdings");
        CHECK(Cells{holdings.at(0).at(3), holdings.at(1).at(3)} == Cells{row.cells[0], row.cells[1]});
        CHECK(page.texts("p", "balance").at(0) ==
              row.cells[2] + " " + row.currency + "Holdings and cash 2024-06-30");
        CHECK(page.texts("tfoot") ==
              std::vector<std::string>{"\nSum" + row.income[1] + "\n", "\nSum" + row.cells[2] + "\n"});
        CHECK(page.rows("income").at(0).at(1) == row.income[0]);
        CHECK(page.rows("transactions").at(0).back() == "+" + row.cells[0]);
        CHECK(contains(outputOf({"show"}, document), "2 positions: worth " + row.cells[2]));
        CHECK(contains(outputOf({"accounts"}, document), row.cells[2] + "  " + row.currency));
    }
    const MarkupPage asWritten = reportOf(version1(held("1", "", position("1", "10.12345"), "")));
    CHECK(asWritten.rows("holdings").at(0).at(3) == "10.12345");
}

TEST_CASE("a balance is followed through amounts as an institution books what it has converted") {
    const std::string paid = "<CURRENCY><CURRATE>1.0789<CURSYM>EUR</CURRENCY>";
    const std::string earlier =
        "<BANKMSGSRSV1>" + statement("55667788", "USD", "", ledger("100", "20240101")) + "</BANKMSGSRSV1>";
    const std::string later =
        "<BANKMSGSRSV1>" +
        statement("55667788", "USD",
                  transaction("20240102", "-10.01", paid) + transaction("20240103", "-10.01", paid),
                  ledger("78.40", "20240104")) +
        "</BANKMSGSRSV1>";
    const TemporaryFolder folder;
    const MarkupPage page(
        tool({"report", folder.file("a.ofx", version1(earlier)), folder.file("b.ofx", version1(later))})
            .output);
    CHECK(page.all("ul", "notes").empty());
    CHECK(factsOf(page).at("Out") == "\u221221.60");
}
