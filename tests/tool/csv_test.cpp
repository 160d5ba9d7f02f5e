// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

const std::string kHeader =
    "file,accountClass,bankID,branchID,accountID,accountType,defaultCurrency,transactionType,datePosted,"
    "dateUserInit,dateFundsAvailable,amount,fiTransactionID,checkOrReferenceNumber,referenceNumber,payeeName,"
    "memo\r\n";

/// Takes a table of RFC 4180 apart.
std::vector<std::vector<std::string>> rowsOf(const std::string& csv) {
    std::vector<std::vector<std::string>> rows(1, {""});
    bool isQuoted = false;
    for (std::size_t i = 0; i < csv.size(); ++i) {
        std::string& field = rows.back().back();
        if (isQuoted && csv.compare(i, 2, "\"\"") == 0) {
            field += csv[i++];
        } else if (csv[i] == '"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && csv[i] == ',') {
            rows.back().emplace_back();
        } else if (!isQuoted && csv.compare(i, 2, "\r\n") == 0) {
            rows.push_back({""});
            ++i;
        } else {
            field += csv[i];
        }
    }
    rows.pop_back();
    return rows;
}

}  // namespace

TEST_CASE("a table begins with its header, also when it has no rows") {
    CHECK(outputOf({"csv"}, version1("")) == kHeader);
    CHECK(tool({"csv", "/nowhere"}).output == kHeader);
}

TEST_CASE("a row has the fields of its account and its transaction") {
    CHECK(outputOf({"csv"},
                   version1("<BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1<BRANCHID>2"
                            "<ACCTID>3<ACCTTYPE>SAVINGS</BANKACCTFROM><BANKTRANLIST><STMTTRN><TRNTYPE>DEBIT"
                            "<DTPOSTED>20240131170509.250<DTUSER>20240130<DTAVAIL>20240201<TRNAMT>-1,234.50"
                            "<FITID>4<CHECKNUM>5<REFNUM>6<NAME>7<MEMO>8</STMTTRN></BANKTRANLIST></STMTRS>"
                            "</STMTTRNRS></BANKMSGSRSV1>")) ==
          kHeader +
              "'-,TvOFXBankAccount,1,2,3,SAVINGS,EUR,DEBIT,2024-01-31T17:05:09.250Z,2024-01-30T00:00:00.000Z,"
              "2024-02-01T00:00:00.000Z,-1234.5,4,5,6,7,8\r\n");
}

TEST_CASE("fields that are absent are empty") {
    CHECK(outputOf({"csv"},
                   version1("<CREDITCARDMSGSRSV1><CCSTMTTRNRS><CCSTMTRS><CCACCTFROM><ACCTID>3</CCACCTFROM>"
                            "<BANKTRANLIST><STMTTRN><MEMO>8</STMTTRN></BANKTRANLIST></CCSTMTRS>"
                            "</CCSTMTTRNRS></CREDITCARDMSGSRSV1>")) ==
          kHeader + "'-,TvOFXCreditCardAccount,,,3,,,,,,,,,,,,8\r\n");
    CHECK(
        outputOf({"csv"}, version1("<BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST><STMTTRN><MEMO>8</STMTTRN>"
                                   "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>")) ==
        kHeader + "'-,,,,,,,,,,,,,,,,8\r\n");
    CHECK(outputOf({"csv"},
                   version1("<CREDITCARDMSGSRSV1><CCSTMTTRNRS><CCSTMTRS><BANKTRANLIST><STMTTRN><MEMO>8"
                            "</STMTTRN></BANKTRANLIST></CCSTMTRS></CCSTMTTRNRS></CREDITCARDMSGSRSV1>")) ==
          kHeader + "'-,,,,,,,,,,,,,,,,8\r\n");
}

TEST_CASE("an account's type is its OFX text, and none when it is not known") {
    for (const auto& [text, field] : std::map<std::string, std::string>{{"CHECKING", "CHECKING"},
                                                                        {"SAVINGS", "SAVINGS"},
                                                                        {"MONEYMARKET", "MONEYMARKET"},
                                                                        {"CREDITLINE", "CREDITLINE"},
                                                                        {"MONEYMRKT", ""},
                                                                        {"checking", ""}}) {
        const std::string type = text;
        CAPTURE(type);
        const auto rows =
            rowsOf(outputOf({"csv"}, version1("<BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKACCTFROM><ACCTID>3"
                                              "<ACCTTYPE>" +
                                              text +
                                              "</BANKACCTFROM><BANKTRANLIST><STMTTRN><MEMO>8</STMTTRN>"
                                              "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>")));
        CHECK(rows.at(1).at(5) == field);
    }
}

TEST_CASE("texts are quoted where they must be, and nothing is lost") {
    struct Row {
        std::string memo;
        std::string field;
    };
    for (const Row& row : std::vector<Row>{{"plain", "plain"},
                                           {"a, b", "\"a, b\""},
                                           {"say \"no\"", "\"say \"\"no\"\"\""},
                                           {"two\nlines", "\"two\nlines\""},
                                           {"two\r\nlines", "\"two\r\nlines\""},
                                           {"semi; colon", "semi; colon"},
                                           {"桜ヌードル", "桜ヌードル"}}) {
        CAPTURE(row.memo);
        const std::string output =
            outputOf({"csv"}, transactionsWith("<STMTTRN><MEMO>" + row.memo + "</STMTTRN>"));
        CHECK(output.ends_with(",,,," + row.field + "\r\n"));
        CHECK(rowsOf(output).at(1).at(16) == row.memo);
    }
}

TEST_CASE("a text that a spreadsheet would run begins with an apostrophe, a number does not") {
    struct Row {
        std::string memo;
        std::string field;
    };
    for (const Row& row : std::vector<Row>{{"=1+1", "'=1+1"},
                                           {"=HYPERLINK(\"x\",\"y\")", "'=HYPERLINK(\"x\",\"y\")"},
                                           {"+cmd", "'+cmd"},
                                           {"-cmd", "'-cmd"},
                                           {"-1+1", "'-1+1"},
                                           {"@SUM(A1)", "'@SUM(A1)"},
                                           {"-", "'-"},
                                           {"+", "'+"},
                                           {"=5", "'=5"},
                                           {"-12.50", "-12.50"},
                                           {"+12", "+12"},
                                           {"-1,234.56", "-1,234.56"},
                                           {"+1e3", "+1e3"},
                                           {"-12,5", "'-12,5"},
                                           {"5-3", "5-3"},
                                           {"'quoted", "'quoted"}}) {
        CAPTURE(row.memo);
        const std::string output =
            outputOf({"csv"}, transactionsWith("<STMTTRN><MEMO>" + row.memo + "</STMTTRN>"));
        CHECK(rowsOf(output).at(1).at(16) == row.field);
    }
}

TEST_CASE("a file name or an entity that begins like a formula is made harmless, too") {
    const TemporaryFolder folder;
    for (const char* name : {"=now", "\tnow", "\rnow", "@now"}) {
        CAPTURE(name);
        folder.file(name, transactionsWith("<STMTTRN><MEMO>1</STMTTRN>"));
        Command command = toolCommand({"csv", name});
        command.directory = folder.path();
        CHECK(rowsOf(run(command).output).at(1).at(0) == "'" + std::string(name));
    }
}

TEST_CASE("several files share one header and keep the order of statements and transactions") {
    const Finished finished = tool({"csv", examplePath("household.ofx"), examplePath("card.ofx")});
    CHECK(finished.status == 0);
    const auto rows = rowsOf(finished.output);
    REQUIRE(rows.size() == 1 + 6 + 8);
    std::vector<std::string> accounts;
    for (const auto& row : rows) {
        CHECK(row.size() == 17);
        if (accounts.empty() || accounts.back() != row.at(4)) accounts.push_back(row.at(4));
    }
    CHECK(accounts.size() == 5);
    CHECK(accounts.at(0) == "accountID");
    CHECK(accounts.at(4) == "5190000000002290");
    CHECK(rows.at(14).at(15) == "Oriel Furniture & Sons");
}

TEST_CASE("a large table arrives whole") {
    std::string transactions;
    for (int i = 0; i < 20'000; ++i)
        transactions += "<STMTTRN><TRNAMT>1.01<FITID>" + std::to_string(i) + "</STMTTRN>";
    const auto rows = rowsOf(outputOf({"csv"}, transactionsWith(transactions)));
    REQUIRE(rows.size() == 20'001);
    CHECK(rows.at(20'000).at(12) == "19999");
}

TEST_CASE("a table has the currency of amounts where that is asked for") {
    const std::string document = transactionsWith(
        "<STMTTRN><TRNAMT>-4<CURRENCY><CURRATE>1.25<CURSYM>CHF</CURRENCY></STMTTRN>"
        "<STMTTRN><TRNAMT>-3<ORIGCURRENCY><CURSYM>GBP</ORIGCURRENCY></STMTTRN><STMTTRN><TRNAMT>-2</STMTTRN>");
    const auto rows = rowsOf(outputOf({"csv", "--currencies"}, document));
    REQUIRE(rows.size() == 4);
    const auto lastOf = [&rows](std::size_t row) {
        return std::vector<std::string>(rows[row].end() - 4, rows[row].end());
    };
    CHECK(lastOf(0) ==
          std::vector<std::string>{"memo", "transactionCurrency", "currencyRate", "isConverted"});
    CHECK(lastOf(1) == std::vector<std::string>{"", "CHF", "1.25", "N"});
    CHECK(lastOf(2) == std::vector<std::string>{"", "GBP", "", "Y"});
    CHECK(lastOf(3) == std::vector<std::string>{"", "", "", ""});
    CHECK(rows[1].size() == rows[3].size());
}

TEST_CASE("a table without currencies says how many amounts are in another one") {
    const std::string one = "<STMTTRN><TRNAMT>-4<CURRENCY>CHF</STMTTRN><STMTTRN><CURRENCY>EUR</STMTTRN>";
    const std::string said = "in a currency other than the account's; add --currencies to see which.\n";
    CHECK(contains(tool({"csv", "-"}, transactionsWith(one)).error, "-: 1 amount is " + said));
    CHECK(contains(tool({"csv", "-"}, transactionsWith(one + one)).error, "-: 2 amounts are " + said));
    CHECK(tool({"csv", "--strict", "-"}, transactionsWith(one)).status == 3);
    CHECK_FALSE(contains(tool({"csv", "--quiet", "-"}, transactionsWith(one)).error, "another currency"));
    CHECK_FALSE(
        contains(tool({"csv", "--currencies", "-"}, transactionsWith(one)).error, "another currency"));
    CHECK_FALSE(contains(tool({"csv", "-"}, transactionsWith("<STMTTRN><CURRENCY>EUR</STMTTRN>")).error,
                         "another currency"));
}
