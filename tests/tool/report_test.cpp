// SPDX-License-Identifier: Apache-2.0
#include "tool/report.h"

#include <brackwell/platform.h>

#include <set>
#include <sstream>

using namespace brackwell::tests;

TEST_CASE("a report of every example is well-formed and lists every transaction once") {
    struct Row {
        const char* file;
        std::size_t accounts;
        std::size_t transactions;
    };
    for (const Row& row : {Row{"checking.ofx", 1, 26},
                           {"household.ofx", 3, 6},
                           {"card.ofx", 1, 8},
                           {"windows_1252.ofx", 1, 2},
                           {"utf_16.ofx", 1, 2},
                           {"profile.ofx", 0, 0},
                           {"sign_on_failure.ofx", 0, 0}}) {
        CAPTURE(row.file);
        const Finished finished = tool({"report", examplePath(row.file)});
        CHECK(finished.status == 0);
        const MarkupPage page(finished.output);
        CHECK(page.rows("transactions").size() == row.transactions);
        CHECK(page.all("dl", "facts").size() == row.accounts);
    }
}

TEST_CASE("a page says which account it is about, and masks its number") {
    const MarkupPage page =
        reportOf(statementWith("<BANKTRANLIST></BANKTRANLIST>" + ledger("-12.5", "20240131") +
                               "<AVAILBAL><BALAMT>1234567.891<DTASOF>20240201</AVAILBAL>"));
    CHECK(page.texts("h2").at(0) == "Checking account \u2022\u2022 5678");
    CHECK(page.texts("p", "balance").at(0) == "\u221212.50 USDLedger balance on 2024-01-31");
    const auto facts = factsOf(page);
    CHECK(facts.at("Bank") == "121000248");
    CHECK(facts.at("Currency") == "USD");
    CHECK(facts.at("Available") == "1,234,567.891 2024-02-01");
    CHECK(facts.at("Transactions") == "0");
    CHECK(page.texts("p", "note").at(0) == "No transactions.");
}

TEST_CASE("an account of which no transactions are wanted does not say that it has none") {
    const std::string document = bankDocument(
        statement("1", "USD", transaction("20240101", "1", "<NAME>Shop"), ledger("7", "20240101")) +
        statement("2", "USD", "", ledger("7", "20240101")));
    const auto notes = [&](const std::vector<std::string>& options) {
        return reportOf(document, options).texts("p", "note");
    };
    CHECK(notes({"--search", "shop"}) == std::vector<std::string>{"No transactions match the filter."});
    CHECK(notes({"--account", "2"}) == std::vector<std::string>{"No transactions."});
}

TEST_CASE("a page's amounts have the decimals of their currencies") {
    struct Row {
        const char* currency;
        const char* shown;
    };
    for (const Row& row : std::vector<Row>{{"JPY", "1,480"}, {"KWD", "1,480.000"}, {"EUR", "1,480.00"}}) {
        CAPTURE(row.currency);
        const std::string shown = row.shown;
        const std::string negative = "\u2212" + shown;
        const MarkupPage page = reportOf(
            bankDocument(statement("1", row.currency, transaction("20240105", "-1480", "<NAME>Shop"),
                                   ledger("1480", "20240131") + "<AVAILBAL><BALAMT>1480</AVAILBAL>") +
                         statement("2", row.currency, "", ledger("0", "20240131"))));
        const auto facts = factsOf(page);
        CHECK(facts.at("Available") == shown + " ");
        CHECK(facts.at("Out") == negative);
        CHECK(facts.at("Net") == negative);
        CHECK(page.texts("p", "balance").at(0) == shown + " " + row.currency + "Sum of the ledger balances");
        CHECK(page.texts("p", "balance").at(1) ==
              shown + " " + row.currency + "Ledger balance on 2024-01-31");
        CHECK(page.rows("overview").at(0).at(1) == shown + " " + row.currency + "2024-01-31");
        CHECK(page.rows("overview").at(0).at(4) == negative);
        CHECK(page.rows("months").at(0).at(2) == negative);
        CHECK(page.rows("payees").at(0).at(3) == negative);
        CHECK(page.rows("transactions").at(0).back() == negative);
    }
}

TEST_CASE("a number stands in full only where that is asked for") {
    const std::string document = bankDocument(statement("0012345678", "USD", transaction("20240101", "1")) +
                                              statement("0087654321", "USD", transaction("20240101", "1")));
    CHECK_FALSE(contains(outputOf({"report"}, document), "0012345678"));
    CHECK_FALSE(contains(outputOf({"report"}, document), "00123"));
    CHECK(reportOf(document, {"--full"}).texts("h2").at(0) == "Accounts");
    CHECK(contains(outputOf({"report", "--full"}, document), "Checking account 0012345678"));
}

TEST_CASE("no two accounts have the same name") {
    struct Row {
        const char* about;
        std::string document;
        std::vector<std::string> names;
    };
    const std::string day = transaction("20240101", "1");
    const std::string listed =
        "<SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS><ACCTINFO><DESC>Everyday 0011112222<BANKACCTINFO>"
        "<BANKACCTFROM><BANKID>1<ACCTID>0011112222<ACCTTYPE>CHECKING</BANKACCTFROM></BANKACCTINFO></ACCTINFO>"
        "</ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1>";
    for (const Row& row : std::vector<Row>{
             {"other numbers",
              bankDocument(statement("0011112222", "EUR", day) + statement("0011113333", "EUR", day)),
              {"Checking account \u2022\u2022 2222", "Checking account \u2022\u2022 3333"}},
             {"other currencies",
              bankDocument(statement("0011112222", "EUR", day) + statement("0011112222", "USD", day)),
              {"Checking account \u2022\u2022 2222, EUR", "Checking account \u2022\u2022 2222, USD"}},
             {"the same end",
              bankDocument(statement("0011112222", "EUR", day) + statement("9911112222", "EUR", day)),
              {"Checking account \u2022\u2022 2222, no. 1", "Checking account \u2022\u2022 2222, no. 2"}},
             {"a title in an account list",
              version1(listed + "<BANKMSGSRSV1>" + statement("0011112222", "EUR", day) +
                       statement("9911112222", "EUR", day) + "</BANKMSGSRSV1>"),
              {"Everyday \u2022\u2022 2222", "Checking account \u2022\u2022 2222"}}}) {
        CAPTURE(row.about);
        const auto rows = reportOf(row.document).rows("overview");
        std::vector<std::string> names;
        for (const auto& cells : rows) names.push_back(cells.at(0));
        CHECK(names == row.names);
    }
}

TEST_CASE("accounts of two institutions with one name have their institutions in it") {
    const auto document = [](const std::string& institution) {
        return version1("<SIGNONMSGSRSV1><SONRS><FI><ORG>" + institution +
                        "</FI></SONRS></SIGNONMSGSRSV1><BANKMSGSRSV1>" +
                        statement(institution + "2222", "EUR", transaction("20240101", "1")) +
                        "</BANKMSGSRSV1>");
    };
    const TemporaryFolder folder;
    const Finished finished = tool({"report", "-q", folder.file("a.ofx", document("Larkmoor")),
                                    folder.file("b.ofx", document("Tamarack"))});
    const auto rows = MarkupPage(finished.output).rows("overview");
    REQUIRE(rows.size() == 2);
    CHECK(rows.at(0).at(0) == "Checking account \u2022\u2022 2222, LarkmoorLarkmoor");
    CHECK(rows.at(1).at(0) == "Checking account \u2022\u2022 2222, TamarackTamarack");
}

TEST_CASE("several accounts are listed, and summed up by currency") {
    const std::string document = bankDocument(
        statement("1111", "EUR", transaction("20240101", "10.10") + transaction("20240102", "-3"),
                  ledger("100", "20240103")) +
        statement("2222", "EUR", transaction("20240101", "0.05"), ledger("-20.5", "20240103")) +
        statement("3333", "USD", transaction("20240101", "7"), ledger("5", "20240103")));
    const MarkupPage page = reportOf(document);
    CHECK(page.rows("overview").size() == 3);
    const std::string sums = page.texts("tfoot").at(0);
    CHECK(contains(sums, "Sum in EUR2 accounts79.50 EUR+10.15\u22123.003"));
    CHECK_FALSE(contains(sums, "USD"));
    CHECK(page.texts("h2").at(1) == "All accounts in EUR");
    // With several currencies every amount has its own beside it.
    CHECK(page.rows("transactions").at(0).back() == "\u22123.00 EUR");
    CHECK(page.rows("transactions").at(3).back() == "+7.00 USD");
}

TEST_CASE("no sum is made of accounts without currency or balance") {
    CHECK(reportOf(bankDocument(statement("1111", "", transaction("20240101", "1")) +
                                statement("2222", "", transaction("20240101", "1"))))
              .all("tfoot")
              .empty());
    const MarkupPage page = reportOf(
        bankDocument(statement("1111", "EUR", transaction("20240101", "1"), ledger("1", "20240101")) +
                     statement("2222", "EUR", transaction("20240101", "1"))));
    CHECK(page.texts("tfoot").at(0) == "\nSum in EUR2 accounts\u2013+2.000.002\n");
}

TEST_CASE("a transaction's row has its date, texts and amount") {
    const MarkupPage page = reportOf(transactionsWith(
        transaction("20240131", "-1234.5", "<TRNTYPE>DEBIT<CHECKNUM>17<NAME>Bakery<MEMO>Rolls")));
    const auto rows = page.rows("transactions");
    REQUIRE(rows.size() == 1);
    CHECK(rows.at(0) ==
          std::vector<std::string>{"2024-01-31", "BakeryRolls", "DEBIT", "17", "\u22121,234.50"});
    CHECK(page.texts("th", "number") == std::vector<std::string>{"Number"});
}

TEST_CASE("a memo stands in the place of a payee that is not given") {
    const std::string page =
        outputOf({"report"}, transactionsWith(transaction("20240131", "1", "<MEMO>Rolls")));
    CHECK(contains(page, "<th scope=\"row\">Rolls</th>"));
}

TEST_CASE("every row has its line of the table that csv writes") {
    struct Row {
        const char* example;
        std::vector<std::string> csv;
        const char* attribute;
    };
    for (const Row& row : {Row{"checking.ofx", {"csv", "--currencies"}, "data-bank"},
                           Row{"every_element.ofx", {"csv", "--currencies"}, "data-bank"},
                           Row{"investments.ofx", {"csv", "--kind", "investments"}, "data-investments"}}) {
        CAPTURE(row.example);
        std::vector<std::string> arguments = row.csv;
        arguments.insert(arguments.end(), {"-q", examplePath(row.example)});
        std::string table = tool(arguments).output;
        const MarkupPage page(tool({"report", "-q", "--full", examplePath(row.example)}).output);
        std::string columns;
        for (const MarkupElement& button : page.all("button"))
            if ("data-" + button.attribute("data-table") == row.attribute)
                columns = button.attribute("data-columns");
        CHECK(table.starts_with(columns + "\r\n"));
        std::size_t count = 0;
        for (const MarkupElement& element : page.all("tr")) {
            const std::string line = element.attribute(row.attribute);
            if (line.empty()) continue;
            CAPTURE(line);
            CHECK(contains(table, "\r\n" + line + "\r\n"));
            ++count;
        }
        CHECK(count > 0);
    }
}

TEST_CASE("the lines of CSV have no whole number of an account, whatever it stands in") {
    const TemporaryFolder folder;
    const std::string path =
        folder.file("export-0012345678.ofx",
                    transactionsWith(transaction("20240101", "1",
                                                 "<FITID>0012345678/17<MEMO>to 0012345678\nsecond line")));
    const Finished masked = tool({"report", path});
    const auto lineOf = [](const std::string& page) {
        for (const MarkupElement& row : MarkupPage(page).all("tr"))
            if (const std::string line = row.attribute("data-bank"); !line.empty()) return line;
        return std::string();
    };
    CHECK(contains(lineOf(masked.output), ",121000248,,\u2022\u2022 5678,CHECKING,USD,"));
    CHECK(contains(lineOf(masked.output), "/export-\u2022\u2022 5678.ofx,"));
    CHECK(contains(lineOf(masked.output), ",\u2022\u2022 5678/17,"));
    CHECK(contains(lineOf(masked.output), ",\"to \u2022\u2022 5678\nsecond line\","));
    CHECK(contains(lineOf(tool({"report", "--full", path}).output), ",0012345678/17,"));
}

TEST_CASE("payees are added up, those who got most first, and the others folded away") {
    std::string transactions = transaction("20240101", "-5", "<NAME>Bakery") +
                               transaction("20240102", "-7.5", "<NAME>BAKERY") +
                               transaction("20240103", "3", "<NAME>Bakery");
    CHECK(reportOf(transactionsWith(transactions)).rows("payees") ==
          std::vector<std::vector<std::string>>{{"Bakery", "3", "+3.00", "\u221212.50"}});
    for (int i = 0; i < 13; ++i)
        transactions +=
            transaction("20240104", "-1." + std::to_string(10 + i), "<NAME>Shop " + std::to_string(i));
    const MarkupPage page = reportOf(transactionsWith(transactions));
    CHECK(page.all("table", "payees").size() == 2);
    CHECK(page.rows("payees").size() == 14);
    CHECK(page.texts("summary").back() == "2 more payees");
    CHECK(reportOf(transactionsWith(transaction("20240101", "1"))).all("table", "payees").empty());
    CHECK(reportOf(transactionsWith(transaction("20240101", "1", "<MEMO>Bakery"))).rows("payees") ==
          std::vector<std::vector<std::string>>{{"Bakery", "1", "+1.00", "\u2013"}});
}

TEST_CASE("every section of a page leads back to its top") {
    const MarkupPage page =
        reportOf(bankDocument(statement("1111", "EUR", transaction("20240101", "1", "<NAME>x")) +
                              statement("2222", "USD", transaction("20240101", "1"))));
    std::size_t tops = 0;
    for (const MarkupElement& link : page.all("a"))
        if (link.attribute("href") == "#top") ++tops;
    CHECK(tops == 4);
    CHECK(page.all("header", "title").at(0).attribute("id") == "top");
}

TEST_CASE("the newest transactions come first unless another order is asked for") {
    const std::string document = transactionsWith(
        transaction("20240102", "3", "<NAME>b") + "<STMTTRN><TRNAMT>2<NAME>undated</STMTTRN>" +
        transaction("20240103", "1", "<NAME>c") + transaction("20240102", "4", "<NAME>B") +
        transaction("20240101", "5", "<NAME>a"));
    const auto namesOf = [&document](const std::vector<std::string>& options) {
        std::string names;
        for (const auto& row : reportOf(document, options).rows("transactions")) names += row.at(1) + " ";
        return names;
    };
    CHECK(namesOf({}) == "c b B a undated ");
    CHECK(namesOf({"--sort", "date"}) == "a b B c undated ");
    CHECK(namesOf({"--sort", "amount"}) == "c undated b B a ");
}

TEST_CASE("transactions without date or amount are listed and counted") {
    const MarkupPage page = reportOf(
        transactionsWith(transaction("20240101", "1") + "<STMTTRN><DTPOSTED>soon<TRNAMT>2</STMTTRN>" +
                         "<STMTTRN><TRNAMT>4</STMTTRN><STMTTRN><DTPOSTED>20240101<TRNAMT>much</STMTTRN>"));
    const auto rows = page.rows("transactions");
    REQUIRE(rows.size() == 4);
    CHECK(rows.at(1).back() == "no amount");
    CHECK(rows.at(2).front() == "soon");
    CHECK(rows.at(3).front() == "no date");
    const auto notes = page.texts("li");
    REQUIRE(notes.size() == 9);
    CHECK(notes.at(0).ends_with(": 3 warnings."));
    CHECK(notes.at(1).starts_with("2 transactions have no date"));
    CHECK(notes.at(2).starts_with("1 transaction has no amount"));
    // In the section of the account, and once more with all others.
    for (const std::size_t first : {3U, 6U}) {
        CHECK(contains(notes.at(first), "line 11: The date \"soon\" "));
        CHECK(contains(notes.at(first + 1), "line 11: 1 transaction has no date: "));
        CHECK(contains(notes.at(first + 2), "line 11: The amount \"much\" "));
    }
    CHECK(factsOf(page).at("In") == "+7.00");
}

TEST_CASE("a finding stands at the account and the transaction that it is about, and with all others") {
    const std::string bank =
        bankDocument(statement("11110001", "EUR", transaction("20240101", "1", "<NAME>fine")) +
                     statement("22220002", "EUR",
                               transaction("20240102", "2", "<NAME>fine, too") +
                                   transaction("20240103", "much", "<NAME>\u00E9t\u00E9"),
                               "<LEDGERBAL><DTASOF>20240101</LEDGERBAL>"));
    const MarkupPage page = reportOf(bank);
    const auto has = [](const std::string& text, const char* part) { return contains(text, part); };
    const auto sections = page.texts("section", "account");
    REQUIRE(sections.size() == 3);  // the first is that of the currency
    CHECK_FALSE(has(sections.at(1), "cannot be read"));
    CHECK(has(sections.at(2), "The amount \"much\" cannot be read"));
    CHECK(has(sections.at(2), "1 balance has no amount"));
    CHECK(page.texts("small", "found").size() == 1);
    const auto rows = page.rows("transactions");
    CHECK(rows.at(0).at(1).starts_with("\u00E9t\u00E9The amount \"much\" cannot be read"));
    CHECK(rows.at(1).at(1) == "fine, too");
    const std::string all = page.texts("ul", "findings").back();
    CHECK(has(all, "\"much\""));
    CHECK(has(all, "1 balance has no amount"));
}

TEST_CASE("a finding of a repaired document, and of investments, has its owner, too") {
    // The close tag of the first list is missing, so that all places after it are others in what is read.
    const MarkupPage repaired = reportOf(version1(
        "<BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1<ACCTID>11110001<ACCTTYPE>"
        "CHECKING"
        "</BANKACCTFROM><BANKTRANLIST>" +
        transaction("20240101", "1") + "</STMTRS></STMTTRNRS>" +
        statement("22220002", "EUR", transaction("20240103", "much", "<NAME>odd")) + "</BANKMSGSRSV1>"));
    CHECK(repaired.texts("small", "found").size() == 1);
    const auto cells = repaired.rows("transactions").at(0);
    CHECK(contains(cells.at(1), "oddThe amount \"much\" cannot be read"));

    const MarkupPage investments(tool({"report", "-q", examplePath("investments.ofx")}).output);
    const auto section = investments.texts("section", "investment");
    CHECK(contains(section.at(0), "1 element is available only in the parse tree"));
    CHECK_FALSE(contains(section.at(0), "The server refused"));
}

TEST_CASE("findings of a file with several documents are listed, with no account") {
    const std::string one = transactionsWith(transaction("20240101", "much"));
    const MarkupPage page = reportOf(one + one);
    CHECK(page.texts("small", "found").empty());
    CHECK(contains(page.texts("ul", "findings").back(), "\"much\""));
}

TEST_CASE("only what is asked for is shown, and the page says so") {
    const TemporaryFolder folder;
    const std::string path = folder.file(
        "two.ofx", bankDocument(statement("1111", "EUR",
                                          transaction("20240101", "1", "<NAME>Coffee") +
                                              transaction("20240201", "2", "<NAME>Coffee") +
                                              transaction("20240202", "4", "<NAME>Tea"),
                                          ledger("107", "20240301")) +
                                statement("2222", "EUR", transaction("20240101", "8", "<NAME>Coffee"))));
    const Finished finished =
        tool({"report", "--account", "1111", "--since", "2024-02-01", "--search", "coffee", path});
    CHECK(finished.status == 0);
    const MarkupPage page(finished.output);
    CHECK(page.rows("transactions").size() == 1);
    CHECK(contains(page.texts("header").at(0),
                   "Only transactions from 2024-02-01 that contain coffee; balances follow from all"));
    // The balance before the time that is asked for comes from the transactions that are not shown.
    CHECK(contains(page.texts("desc").at(0), "From 101.00 EUR on 2024-01-31 to 107.00 EUR on 2024-03-01"));
}

TEST_CASE("a file that cannot be read is named, and the others are in the report") {
    const Finished finished = tool({"report", "/no<where>", examplePath("card.ofx")});
    CHECK(finished.status == 1);
    CHECK(contains(finished.error, "/no<where>: The file at /no<where> was not found."));
    const MarkupPage page(finished.output);
    CHECK(page.texts("li").at(0) == "/no<where> could not be read, or not as a whole.");
    CHECK(page.rows("transactions").size() == 8);
}

TEST_CASE("a document without statements makes a page that says so") {
    const MarkupPage page = reportOf(version1(""));
    CHECK(page.texts("p", "note").at(0) == "There are no statements of accounts.");
    CHECK(page.texts("header").at(0) == "\nAccount report\n0 accounts, 0 transactions\n");
    CHECK(page.all("table").empty());
}

TEST_CASE("texts of strangers stay texts") {
    struct Row {
        const char* given;
        const char* shown;
    };
    const std::string page =
        outputOf({"report"}, transactionsWith(transaction("20240101", "1", "<NAME>plain")));
    for (const Row& row :
         std::vector<Row>{{"&lt;script&gt;alert(1)&lt;/script&gt;", "<script>alert(1)</script>"},
                          {"&lt;/script&gt;&lt;!--", "</script><!--"},
                          {"]]&gt;&lt;![CDATA[", "]]><![CDATA["},
                          {"a\" onload=\"x", "a\" onload=\"x"},
                          {"a' b", "a' b"},
                          {"&amp;lt;b&amp;gt;", "&lt;b&gt;"},
                          {"{} {0} %s", "{} {0} %s"},
                          {"left\xE2\x80\xAEright", "left\uFFFDright"},
                          {"\xE2\x81\xA6isolated", "\uFFFDisolated"},
                          {"bell\x07", "bell\u2407"},
                          {"\x1B[31mred", "\u241B[31mred"},
                          {"none\xEF\xBF\xBE", "none\uFFFD"},
                          {"none\xEF\xBF\xBFnone", "none\uFFFDnone"},
                          {"two\nlines", "two lines"},
                          {"\xD7\xA9\xD7\x9C", "\u05E9\u05DC"}}) {
        CAPTURE(row.given);
        const std::string given = row.given;
        const std::string everywhere =
            "<SIGNONMSGSRSV1><SONRS><FI><ORG>" + given +
            "</FI></SONRS></SIGNONMSGSRSV1><BANKMSGSRSV1><STMTTRNRS>"
            "<STMTRS><CURDEF>" +
            given + "<BANKACCTFROM><BANKID>" + given + "<ACCTID>" + given +
            "<ACCTTYPE>CHECKING</BANKACCTFROM><BANKTRANLIST><STMTTRN><TRNTYPE>" + given +
            "<DTPOSTED>20240101<TRNAMT>1"
            "<CHECKNUM>" +
            given + "<NAME>" + given + "<MEMO>" + given + "</STMTTRN><STMTTRN><DTPOSTED>" + given +
            "</STMTTRN></BANKTRANLIST><LEDGERBAL><BALAMT>1<DTASOF>20240101</LEDGERBAL></STMTRS></STMTTRNRS>"
            "</BANKMSGSRSV1>";
        const std::string output = outputOf({"report", "--full"}, version1(everywhere, "NONE"));
        const MarkupPage read(output);
        const auto cells = read.rows("transactions");
        REQUIRE(cells.size() == 2);
        CHECK(cells.at(0).at(1) == std::string(row.shown) + row.shown);
        CHECK(cells.at(0).at(3) == row.shown);
        CHECK(cells.at(1).at(0) == row.shown);
        CHECK(contains(read.texts("title").at(1), std::string("Balance of Checking account ") + row.shown));
        CHECK(factsOf(read).at("Bank") == row.shown);
        CHECK(read.all("table", "transactions").at(0).attribute("data-currency") == row.shown);
        // There is no element or attribute that is not there with plain texts, too.
        CHECK(countOf(output, "<script") == countOf(page, "<script"));
        CHECK(countOf(output, "<!") == countOf(page, "<!"));
        for (const MarkupElement& element : read.elements())
            for (const auto& [name, value] : element.attributes) CHECK_FALSE(name.starts_with("on"));
    }
}

TEST_CASE("bytes that are no text in the document's encoding do not reach the page") {
    // A lone surrogate, and half a character; the tool reads such a document as windows-1252.
    const Finished finished = tool(
        {"report", "-"},
        bankDocument(statement("1111", "EUR", transaction("20240101", "1", "<NAME>a\xED\xA0\x80z\xC3"))));
    CHECK(finished.status == 0);
    CHECK(brackwell::isValidUTF8(finished.output));
    CHECK(MarkupPage(finished.output).rows("transactions").size() == 1);
    const std::string document = transactionsWith(transaction("20240101", "1", "<NAME>a&#xD800;b&#0;c"));
    const Finished entities = tool({"report", "-"}, document);
    CHECK(brackwell::isValidUTF8(entities.output));
    CHECK_FALSE(contains(entities.output, std::string(1, '\0')));
    CHECK(MarkupPage(entities.output).rows("transactions").size() == 1);
}

TEST_CASE("a page fetches, sends and runs nothing but what it holds") {
    const std::string page = outputOf({"report"}, transactionsWith(transaction("20240101", "1")));
    for (const char* reference :
         {"http:", "https:", "src=", "@import", "url(", "//cdn", "<link", "<img", "<iframe", "<base",
          "style=", "javascript:", "xlink", "fetch(", "XMLHttp", "import("}) {
        CAPTURE(reference);
        CHECK_FALSE(contains(page, reference));
    }
    const MarkupPage read(page);
    std::string policy;
    for (const MarkupElement& meta : read.all("meta"))
        if (meta.attribute("http-equiv") == "Content-Security-Policy") policy = meta.attribute("content");
    CHECK(policy.starts_with("default-src 'none'; style-src 'sha256-"));
    CHECK(countOf(policy, "'sha256-") == 2);
    CHECK_FALSE(contains(policy, "unsafe"));
    for (const MarkupElement& link : read.all("a")) CHECK(link.attribute("href").starts_with("#"));
}

TEST_CASE("without its script a page is complete") {
    const MarkupPage page =
        reportOf(transactionsWith(transaction("20240101", "1") + transaction("20240102", "2")));
    CHECK(page.all("form").at(0).attribute("hidden") == "hidden");
    for (const MarkupElement& row : page.all("tr")) CHECK(row.attribute("hidden") == "");
    CHECK(page.rows("transactions").size() == 2);
}

TEST_CASE("drawings and tables can be understood without being seen") {
    const MarkupPage page =
        reportOf(transactionsWith(transaction("20240101", "1") + transaction("20240202", "-2")));
    std::set<std::string> ids;
    for (const MarkupElement& element : page.elements())
        if (const std::string id = element.attribute("id"); !id.empty()) CHECK(ids.insert(id).second);
    for (const MarkupElement& element : page.elements()) {
        std::istringstream names(element.attribute("aria-labelledby"));
        for (std::string id; names >> id;) CHECK(ids.contains(id));
        if (element.name == "th")
            CHECK((element.attribute("scope") == "col" || element.attribute("scope") == "row"));
        if (element.name == "svg" && element.parent != MarkupElement::npos)
            CHECK((element.attribute("role") == "img" || element.attribute("aria-hidden") == "true" ||
                   page.elements().at(element.parent).name == "svg"));
    }
    CHECK(page.texts("desc").at(0) ==
          "From Jan 2024 to Feb 2024. The most came in during Jan 2024: 1.00 USD. The most went out during "
          "Feb 2024: "
          "\u22122.00 USD.");
}

TEST_CASE("a report goes into the file that is named") {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/report.html";
    const Finished finished = tool({"report", examplePath("card.ofx"), "--output", path});
    CHECK(finished.status == 0);
    CHECK(finished.output == "");
    CHECK(tool({"report", examplePath("card.ofx")}).output == folder.read("report.html"));
}
