// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tool/report.h"

using namespace brackwell::tests;

namespace {

using Rows = std::vector<std::vector<std::string>>;

/// The description of the balance's drawing; "" when there is none.
std::string balanceOf(const MarkupPage& page) {
    for (const MarkupElement& element : page.all("desc"))
        if (element.attribute("id").starts_with("balance-")) return element.text;
    return "";
}

/// A report of several files.
MarkupPage reportOfFiles(const std::vector<std::string>& documents) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments{"report", "--quiet"};
    for (const std::string& document : documents)
        arguments.push_back(folder.file("document" + std::to_string(arguments.size()), document));
    const Finished finished = tool(arguments);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    return MarkupPage(finished.output);
}

/// How many numbers the line of the balance has.
std::size_t stepsOf(const MarkupPage& page) {
    return countOf(page.all("path", "line").at(0).attribute("d"), "H");
}

}  // namespace

TEST_CASE("the balance over time comes from the ledger balance, backwards and forwards") {
    struct Row {
        const char* name;
        std::string transactions;
        std::string balance;
        const char* course;
    };
    const std::string three =
        transaction("20240110", "10") + transaction("20240120", "-30.5") + transaction("20240130", "5");
    for (const Row& row : std::vector<Row>{
             {"after all", three, ledger("100", "20240215"),
              "From 115.50 USD on 2024-01-09 to 100.00 USD on 2024-02-15; lowest 95.00 USD on 2024-01-20, "
              "highest 125.50 USD on 2024-01-10."},
             {"between", three, ledger("100", "20240125"),
              "From 120.50 USD on 2024-01-09 to 105.00 USD on 2024-01-30; lowest 100.00 USD on 2024-01-20, "
              "highest 130.50 USD on 2024-01-10."},
             {"before all", three, ledger("100", "20240101"),
              "From 100.00 USD on 2024-01-09 to 84.50 USD on 2024-01-30; lowest 79.50 USD on 2024-01-20, "
              "highest 110.00 USD on 2024-01-10."},
             {"at the hour before one of its day", transaction("20240110120000", "10"),
              ledger("100", "20240110"),
              "From 90.00 USD on 2024-01-09 to 100.00 USD on 2024-01-10; lowest 90.00 USD on 2024-01-09, "
              "highest 100.00 USD on 2024-01-10."},
             {"at the last moment of one", transaction("20240110235959.999", "10"), ledger("100", "20240110"),
              "From 90.00 USD on 2024-01-09 to 100.00 USD on 2024-01-10; lowest 90.00 USD on 2024-01-09, "
              "highest 100.00 USD on 2024-01-10."},
             {"on one day", transaction("20240110", "1") + transaction("20240110", "-2"),
              ledger("0", "20240110"),
              "From 1.00 USD on 2024-01-09 to 0.00 USD on 2024-01-10; lowest 0.00 USD on 2024-01-10, highest "
              "1.00 USD on 2024-01-09."},
             {"out of order", transaction("20240120", "2") + transaction("20240110", "1"),
              ledger("9", "20240120"),
              "From 6.00 USD on 2024-01-09 to 9.00 USD on 2024-01-20; lowest 6.00 USD on 2024-01-09, highest "
              "9.00 USD on 2024-01-20."},
             {"without a date or amount in one",
              three + "<STMTTRN><TRNAMT>50</STMTTRN><STMTTRN><DTPOSTED>20240111</STMTTRN>",
              ledger("100", "20240125"),
              "From 120.50 USD on 2024-01-09 to 105.00 USD on 2024-01-30; lowest 100.00 USD on 2024-01-20, "
              "highest 130.50 USD on 2024-01-10."},
             {"exact", transaction("20240110", "0.1") + transaction("20240111", "0.2"),
              ledger("0.3", "20240111"),
              "From 0.00 USD on 2024-01-09 to 0.30 USD on 2024-01-11; lowest 0.00 USD on 2024-01-09, highest "
              "0.30 USD on 2024-01-11."}}) {
        CAPTURE(row.name);
        CHECK(balanceOf(reportOf(bankDocument(statement("1", "USD", row.transactions, row.balance)))) ==
              row.course);
    }
}

TEST_CASE("where the balance over time is not known, the page says why") {
    struct Row {
        std::string transactions;
        std::string balance;
        const char* why;
    };
    const std::string one = transaction("20240110", "10");
    for (const Row& row : std::vector<Row>{
             {one, "", "The document states no ledger balance, so the balance over time is not known."},
             {one, "<LEDGERBAL><BALAMT>7</LEDGERBAL>",
              "The ledger balance has no date, so the balance over time is not known."},
             {"<STMTTRN><TRNAMT>3</STMTTRN>", ledger("1", "20240101"),
              "There are no transactions with a date and an amount."},
             {"", ledger("1", "20240101"), "No transactions."},
             {transaction("20240110", "0.00000000000000000000000000001"),
              ledger("10000000000000000000000000000", "20240110"),
              "The balance takes more digits than can be represented."}}) {
        CAPTURE(row.why);
        const MarkupPage page = reportOf(bankDocument(statement("1", "USD", row.transactions, row.balance)));
        CHECK(balanceOf(page) == "");
        CHECK(page.texts("p", "note") == std::vector<std::string>{row.why});
    }
}

TEST_CASE("of several ledger balances the last one counts, and the others are checked against it") {
    const std::string march =
        bankDocument(statement("1", "EUR", transaction("20240301", "10") + transaction("20240320", "20"),
                               ledger("130", "20240331")));
    const std::string april =
        bankDocument(statement("1", "EUR", transaction("20240410", "-5"), ledger("125", "20240430")));
    const std::string june =
        bankDocument(statement("1", "EUR", transaction("20240610", "1"), ledger("200", "20240630")));

    const MarkupPage whole = reportOfFiles({april, march});
    CHECK(contains(whole.texts("p", "balance").at(0), "125.00 EUR"));
    CHECK(whole.all("circle").size() == 2);
    CHECK(whole.all("li").empty());

    const MarkupPage withGap = reportOfFiles({march, june, april});
    CHECK(withGap.all("circle").size() == 1);
    const auto notes = withGap.texts("li");
    REQUIRE(notes.size() == 2);
    CHECK(notes.at(0).starts_with(
        "The balance stated for 2024-03-31 is 130.00 EUR, but the transactions after it imply 204.00"));
    CHECK(contains(notes.at(1), "2024-04-30 is 125.00 EUR"));
}

TEST_CASE("months are those of UTC, and sums are exact") {
    const MarkupPage page = reportOf(
        bankDocument(statement("1", "USD",
                               transaction("20240131235959.999", "0.1") + transaction("20240131", "0.2") +
                                   transaction("20240201", "-4") + transaction("20240301000000.000", "8") +
                                   transaction("20231231", "16") + "<STMTTRN><TRNAMT>32</STMTTRN>")));
    CHECK(page.rows("months") == Rows{{"2023-12", "+16.00", "0.00", "+16.00"},
                                      {"2024-01", "+0.30", "0.00", "+0.30"},
                                      {"2024-02", "0.00", "\u22124.00", "\u22124.00"},
                                      {"2024-03", "+8.00", "0.00", "+8.00"}});
    CHECK(factsOf(page).at("In") == "+56.30");
    CHECK(factsOf(page).at("Out") == "\u22124.00");
    CHECK(factsOf(page).at("Net") == "+52.30");
}

TEST_CASE("bars stand for longer times where there are many months") {
    struct Row {
        const char* last;
        const char* unit;
    };
    for (const Row& row : {Row{"20080401", "month"},
                           {"20080501", "year"},
                           {"20990101", "year"},
                           {"21010101", "decade"},
                           {"99990101", "century"}}) {
        CAPTURE(row.last);
        const MarkupPage page = reportOf(
            bankDocument(statement("1", "USD", transaction("20000101", "1") + transaction(row.last, "2"))));
        CHECK(page.texts("title").at(1) ==
              "Money in and out of Checking account \u2022\u2022 by " + std::string(row.unit));
        CHECK(page.all("rect").size() == 2);
    }
}

TEST_CASE("an axis ends at a round value when there is one near") {
    struct Row {
        const char* in;
        const char* out;
        const char* labels;
    };
    for (const Row& row :
         {Row{"3700", "-2100", "-2,000 0 2,000 4,000 "}, Row{"3900", "-1", "0 1,000 2,000 3,000 4,000 "},
          Row{"2500", "-3300", "-4,000 -2,000 0 2,000 "},
          Row{"0.09", "-0.001", "0 0.02 0.04 0.06 0.08 0.10 "}}) {
        CAPTURE(row.in);
        const std::string transactions = transaction("20240101", row.in) + transaction("20240102", row.out);
        const MarkupPage page(outputOf({"report"}, bankDocument(statement("1", "EUR", transactions))));
        std::string labels;
        for (const MarkupElement& element : page.all("text", "last"))
            if (element.attribute("x") == "40") labels += element.text + " ";
        for (std::size_t at = labels.find("\u2212"); at != labels.npos; at = labels.find("\u2212"))
            labels.replace(at, std::string("\u2212").size(), "-");
        CHECK(labels == row.labels);
    }
}

TEST_CASE("a long course is thinned, and keeps its lowest and highest balance") {
    std::string transactions;
    for (int year = 2000; year < 2020; ++year)
        for (int month = 1; month <= 12; ++month)
            for (int day = 10; day <= 28; ++day)
                transactions += transaction(std::to_string(year) + (month < 10 ? "0" : "") +
                                                std::to_string(month) + std::to_string(day),
                                            day % 2 == 0 ? "9" : "-9");
    const MarkupPage page =
        reportOf(bankDocument(statement("1", "USD", transactions, ledger("-2160", "20191231"))));
    CHECK(stepsOf(page) > 200);
    CHECK(stepsOf(page) <= 480);
    const std::string line = page.all("path", "line").at(0).attribute("d");
    CHECK(line.starts_with("M0.0 "));
    CHECK(contains(line, "H1000.0"));
}

TEST_CASE("an account that stands in several files is one, in each of its currencies") {
    const std::string one =
        bankDocument(statement("1234567", "EUR", transaction("20240101", "1", "<FITID>1")));
    const std::string two =
        bankDocument(statement("1234567", "EUR", transaction("20240102", "2", "<FITID>2")));
    const std::string dollars =
        bankDocument(statement("1234567", "USD", transaction("20240101", "1", "<FITID>1")));
    const std::string other =
        bankDocument(statement("1234568", "EUR", transaction("20240101", "1", "<FITID>1")));
    CHECK(reportOfFiles({one, two}).all("dl").size() == 1);
    CHECK(reportOfFiles({one, two}).rows("transactions").size() == 2);
    CHECK(reportOfFiles({one, dollars}).all("dl").size() == 2);
    CHECK(reportOfFiles({one, other}).all("dl").size() == 2);
    CHECK(reportOfFiles({one, dollars, other}).all("li").empty());
}

TEST_CASE("statements that name no account are not taken for one") {
    const std::string nameless =
        version1("<BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST>" + transaction("20240101", "1") +
                 "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>");
    const MarkupPage page = reportOfFiles({nameless, nameless});
    CHECK(page.all("dl").size() == 2);
    CHECK(page.rows("transactions").size() == 2);
}

TEST_CASE("a transaction that stands in several files counts once") {
    struct Row {
        const char* name;
        std::string first;
        std::string second;
        std::size_t transactions;
    };
    const auto with = [](const std::string& rest) { return transaction("20240101", "-3", rest); };
    const std::string coffee = with("<NAME>Coffee");
    for (const Row& row : std::vector<Row>{
             {"same identifier", with("<FITID>1<NAME>a"), with("<FITID>1<NAME>b"), 1},
             {"other identifier", with("<FITID>1<NAME>a"), with("<FITID>2<NAME>a"), 2},
             {"same identifier, other amount", with("<FITID>1"), transaction("20240101", "-4", "<FITID>1"),
              2},
             {"same identifier, other date", with("<FITID>1"), transaction("20240102", "-3", "<FITID>1"), 1},
             {"no identifiers", coffee, coffee, 1},
             {"no identifiers, other name", coffee, with("<NAME>Tea"), 2},
             {"no identifiers, other date", coffee, transaction("20240102", "-3", "<NAME>Coffee"), 2},
             {"one identifier", coffee, with("<FITID>1<NAME>Coffee"), 1},
             {"the other identifier", with("<FITID>1<NAME>Coffee"), coffee, 1},
             {"more texts", with("<NAME>Coffee<MEMO>Pier 9"), coffee, 1},
             {"two each", coffee + coffee, coffee + coffee, 2},
             {"one more", coffee, coffee + coffee, 2},
             {"one less", coffee + coffee, coffee, 2},
             {"only dates in common", with(""), with(""), 1},
             {"neither date nor amount", "<STMTTRN><NAME>a</STMTTRN>", "<STMTTRN><MEMO>b</STMTTRN>", 1},
             {"date in one only", coffee, "<STMTTRN><TRNAMT>-3<NAME>Coffee</STMTTRN>", 2},
             {"amount in one only", coffee, "<STMTTRN><DTPOSTED>20240101<NAME>Coffee</STMTTRN>", 2},
             {"in another order", with("<NAME>a") + with("<NAME>b"), with("<NAME>b") + with("<NAME>a"), 2}}) {
        CAPTURE(row.name);
        const MarkupPage page = reportOfFiles({bankDocument(statement("1", "EUR", row.first)),
                                               bankDocument(statement("1", "EUR", row.second))});
        CHECK(page.rows("transactions").size() == row.transactions);
        const std::size_t given = countOf(row.first + row.second, "</STMTTRN>");
        const auto notes = page.texts("li");
        const std::size_t left = given - row.transactions;
        const std::string note = std::to_string(left) +
                                 (left == 1 ? " transaction was" : " transactions were") +
                                 " in more than one statement and counted once.";
        CHECK(std::ranges::count(notes, note) == (left > 0 ? 1 : 0));
    }
}

TEST_CASE("a transaction is matched once in each further file") {
    const std::string coffee =
        bankDocument(statement("1", "EUR", transaction("20240101", "-3", "<NAME>Coffee")));
    const MarkupPage page = reportOfFiles({coffee, coffee, coffee});
    CHECK(page.rows("transactions").size() == 1);
    CHECK(contains(page.texts("li").at(0), "2 transactions were"));
}

TEST_CASE("many transactions that are alike are told apart in little time") {
    std::string alike;
    std::string others;
    for (int i = 0; i < 40'000; ++i) {
        alike += transaction("20240101", "-3", "<NAME>Coffee");
        others += transaction("20240101", "-3", "<NAME>Coffee " + std::to_string(i));
    }
    const MarkupPage page = reportOfFiles({bankDocument(statement("1", "EUR", alike)),
                                           bankDocument(statement("1", "EUR", others)),
                                           bankDocument(statement("1", "EUR", alike + others))});
    CHECK(page.rows("transactions").size() == 80'000);
}

TEST_CASE("an amount in another currency counts at its rate, and is on the page as it is written") {
    const MarkupPage page = reportOf(bankDocument(
        statement("12345678", "USD",
                  transaction("20240103", "-4", "<CURRENCY><CURRATE>1.25<CURSYM>CHF</CURRENCY>") +
                      transaction("20240102", "-6", "<CURRENCY><CURSYM>SEK</CURRENCY>") +
                      transaction("20240101", "-3", "<ORIGCURRENCY><CURRATE>1.1<CURSYM>GBP</ORIGCURRENCY>"),
                  ledger("100", "20240131"))));
    const auto rows = page.rows("transactions");
    REQUIRE(rows.size() == 3);
    CHECK(rows[0].back() == "\u22125.00");
    CHECK(contains(rows[0].at(1), "\u22124.00 CHF"));
    CHECK(rows[1].back() == "\u22126.00 SEK");
    CHECK_FALSE(contains(rows[1].at(1), "SEK"));
    CHECK(rows[2].back() == "\u22123.00");
    CHECK_FALSE(contains(rows[2].at(1), "GBP"));
    CHECK(factsOf(page).at("Out") == "\u22128.00");
    CHECK(balanceOf(page).starts_with("From 108.00 USD on 2023-12-31 to 100.00 USD"));
    const auto notes = page.texts("li");
    CHECK(std::ranges::count(
              notes, "1 transaction is in another currency without an exchange rate; not counted.") == 1);
}
