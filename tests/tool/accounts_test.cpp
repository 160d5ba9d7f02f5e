// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

/// A statement of an account with these elements after it, of an institution.
std::string statementOf(const std::string& account, const std::string& elements,
                        const std::string& institution = "<FI><ORG>Bank</FI>") {
    return version1("<SIGNONMSGSRSV1><SONRS>" + institution +
                    "</SONRS></SIGNONMSGSRSV1><BANKMSGSRSV1><STMTTRNRS>"
                    "<STMTRS><CURDEF>EUR<BANKACCTFROM>" +
                    account + "</BANKACCTFROM>" + elements + "</STMTRS></STMTTRNRS></BANKMSGSRSV1>");
}

std::string balance(const std::string& amount, const std::string& date) {
    return "<LEDGERBAL><BALAMT>" + amount + (date.empty() ? "" : "<DTASOF>" + date) + "</LEDGERBAL>";
}

const std::string kAccount = "<BANKID>1<ACCTID>0012345678<ACCTTYPE>SAVINGS";

}  // namespace

TEST_CASE("an account of several files is one row, with its latest balance and the days of all") {
    const TemporaryFolder folder;
    const std::string july = folder.file(
        "july", statementOf(kAccount,
                            "<BANKTRANLIST><DTSTART>20240701<DTEND>20240731<STMTTRN><DTPOSTED>20240702"
                            "<TRNAMT>1<FITID>a</STMTTRN><STMTTRN><DTPOSTED>20240730<TRNAMT>1<FITID>b"
                            "</STMTTRN></BANKTRANLIST>" +
                                balance("11.5", "20240731")));
    const std::string august = folder.file(
        "august", statementOf(kAccount,
                              "<BANKTRANLIST><DTSTART>20240730<DTEND>20240831<STMTTRN><DTPOSTED>"
                              "20240730<TRNAMT>1<FITID>b</STMTTRN><STMTTRN><DTPOSTED>20240805<TRNAMT>-2"
                              "<FITID>c</STMTTRN></BANKTRANLIST>" +
                                  balance("-12.25", "20240831")));
    const std::string row =
        "Bank         Savings  ****5678   -12.25  EUR  2024-08-31  3      2024-07-01  2024-08-31\n";
    const std::string titles =
        "Institution  Account  Number    Balance       On          Count  From        To\n";
    for (const auto& files : {std::vector{july, august}, std::vector{august, july}}) {
        std::vector<std::string> arguments{"accounts"};
        arguments.insert(arguments.end(), files.begin(), files.end());
        const Finished finished = tool(arguments, "", {{"COLUMNS", "120"}});
        CHECK(finished.status == 0);
        CHECK(finished.error == "");
        CHECK(finished.output == titles + row);
    }
    CHECK(contains(tool({"accounts", "--full", july, august}).output, "0012345678"));
}

TEST_CASE("an account's institution is called as the last file that names one has it") {
    const TemporaryFolder folder;
    const std::vector<std::string> files{
        folder.file("a", statementOf(kAccount, "", "<FI><ORG>Former name</FI>")),
        folder.file("b", statementOf(kAccount, "", "<FI><ORG>Newer name</FI>")),
        folder.file("c", statementOf(kAccount, "", "<LANGUAGE>ENG")),
    };
    for (const char* command : {"accounts", "report"}) {
        CAPTURE(command);
        const std::string output = tool({command, files[0], files[1], files[2]}).output;
        CHECK(contains(output, "Newer name"));
        CHECK_FALSE(contains(output, "Former name"));
    }
}

TEST_CASE("accounts that differ in what both name, in number or in currency are rows of their own") {
    struct Row {
        std::string account;
        std::size_t rows;
    };
    for (const Row& row : std::vector<Row>{
             {kAccount, 1},
             {"<ACCTID>0012345678<ACCTTYPE>SAVINGS", 1},
             {"<BANKID>1<BRANCHID>9<ACCTID>0012345678<ACCTTYPE>SAVINGS", 1},
             {"<BANKID>2<ACCTID>0012345678<ACCTTYPE>SAVINGS", 2},
             {"<BANKID>1<ACCTID>0012345678<ACCTTYPE>CHECKING", 2},
             {"<BANKID>1<ACCTID>12345678<ACCTTYPE>SAVINGS", 2},
             {"<BANKID>1<ACCTTYPE>SAVINGS", 2},
         }) {
        CAPTURE(row.account);
        const TemporaryFolder folder;
        const Finished finished = tool({"accounts", folder.file("a", statementOf(kAccount, "")),
                                        folder.file("b", statementOf(row.account, ""))});
        CHECK(linesOf(finished.output).size() == 1 + row.rows);
    }
}

TEST_CASE(
    "an account without dates of its list covers its transactions, and one without a balance has none") {
    const std::string output = outputOf(
        {"accounts"}, statementOf(kAccount,
                                  "<BANKTRANLIST><STMTTRN><DTPOSTED>20240805</STMTTRN><STMTTRN><DTPOSTED>"
                                  "20240701</STMTTRN><STMTTRN><DTPOSTED>soon</STMTTRN></BANKTRANLIST>"));
    CHECK(linesOf(output).at(1).ends_with("  EUR  3      2024-07-01  2024-08-05"));
    CHECK_FALSE(contains(output, "Balance"));
}

TEST_CASE("statements without an account are counted, and documents without statements say so") {
    CHECK(outputOf({"accounts"}, version1("")) ==
          "The documents have neither statements nor lists of accounts.\n");
    CHECK(outputOf({"accounts"}, version1("<BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>EUR</STMTRS></STMTTRNRS>"
                                          "</BANKMSGSRSV1>")) == "Statements that name no account: 1\n");
    const Finished finished = tool({"accounts", "/nowhere", examplePath("card.ofx")});
    CHECK(finished.status == 1);
    CHECK(contains(finished.output, "****2290"));
    CHECK(contains(finished.error, "/nowhere: "));
}

TEST_CASE("the accounts of account lists stand in a table of their own, each once") {
    const std::string path = examplePath("account_information.ofx");
    const std::string cards =
        "Accounts of account lists\n"
        "Description        Number    Type              Bank    Status   Phone\n"
        "Everyday account   ****7734  Checking account  400515  active   +44 20 5550 0100\n"
        "Rainy day savings  ****7742  Savings account   400515  pending\n"
        "Lantern card       ****2222  Credit card               active   +44 20 5550 0102\n";
    CHECK(tool({"accounts", path, path}).output == cards);
    const std::string held =
        "<ACCTINFO><DESC>Nest egg<INVACCTINFO><INVACCTFROM><BROKERID>broker<ACCTID>9911</INVACCTFROM>"
        "<USPRODUCTTYPE>IRA<CHECKING>N<SVCSTATUS>PEND</INVACCTINFO></ACCTINFO>";
    std::string other = held;
    other.replace(other.find("9911"), 4, "8811");
    const std::string list =
        version1("<SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS>" + held + other + held +
                 "<ACCTINFO><DESC>Nameless<SVCSTATUS>AVAIL</ACCTINFO><ACCTINFO><INVACCTINFO>"
                 "<CHECKING>N</INVACCTINFO></ACCTINFO></ACCTINFORS></ACCTINFOTRNRS>"
                 "</SIGNUPMSGSRSV1>");
    CHECK(outputOf({"accounts"}, list) ==
          "Accounts of account lists\n"
          "Description  Number  Type        Bank    Status\n"
          "Nest egg     ****    Investment  broker  pending\n"
          "Nest egg     ****    Investment  broker  pending\n"
          "Nameless                                 available\n"
          "                     Investment\n");
    CHECK(contains(outputOf({"accounts", "--full"}, list), "Nest egg     8811    Investment  broker"));
    CHECK(contains(tool({"accounts", examplePath("card.ofx"), path}).output,
                   "2024-02-29\n\nAccounts of account lists\n"));
}

TEST_CASE("the table of accounts fits into narrow terminals, and nothing in it is a command") {
    const std::string output =
        tool({"accounts", "-"}, statementOf("<ACCTID>\x1b[31m1234567", balance("1", "20240101")),
             {{"COLUMNS", "20"}})
            .output;
    CHECK_FALSE(contains(output, "\x1b"));
    for (const std::string& line : linesOf(output)) CHECK(line.size() <= 20);
    CHECK(contains(output, "****4567"));
}

// ---------------------------------------------------------------------------------------------
// Duplicates

namespace {

std::string list(const std::string& transactions) {
    return statementOf(kAccount, "<BANKTRANLIST>" + transactions + "</BANKTRANLIST>");
}

const std::string kFrancs = "<CURRENCY><CURRATE>2<CURSYM>CHF</CURRENCY>";

std::string bought(const std::string& amount, const std::string& elements) {
    return "<STMTTRN><DTPOSTED>20240702<TRNAMT>" + amount + elements + "</STMTTRN>";
}

}  // namespace

TEST_CASE("transactions that stand in several files are listed with their files") {
    const TemporaryFolder folder;
    folder.file("a.ofx", list(bought("-1.5", "<FITID>x<NAME>Shop") + bought("-2", "<FITID>y<NAME>Once")));
    folder.file("b.ofx", list(bought("-1.50", "<FITID>x<NAME>Shop again")));
    folder.file("c.ofx", list(bought("-1.5", "<FITID>x<NAME>Shop")));
    Command command = toolCommand({"duplicates", "a.ofx", "b.ofx", "c.ofx", "b.ofx"});
    command.directory = folder.path();
    const Finished finished = run(command);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(finished.output ==
          "Savings account ****5678\n"
          "Date        Payee  ID  Times  Amount\n"
          "2024-07-02  Shop   x   4       -1.50\n"
          "                  in a.ofx, b.ofx, c.ofx, b.ofx\n");
    CHECK_FALSE(contains(finished.output, "Once"));
}

TEST_CASE(
    "two transactions are one when nothing differs that both have, and amount and identifier or date agree") {
    struct Row {
        std::string first;
        std::string second;
        bool isSame;
    };
    for (const Row& row : std::vector<Row>{
             {bought("1", "<FITID>x<NAME>A"), bought("1", "<FITID>x<NAME>B"), true},
             {bought("1", "<FITID>x<NAME>A"), bought("1", "<FITID>y<NAME>A"), false},
             {bought("1", "<FITID>x<NAME>A"), bought("2", "<FITID>x<NAME>A"), false},
             {bought("1", "<FITID>x<NAME>A"), bought("1", "<NAME>A"), true},
             {bought("1", "<NAME>A"), bought("1", "<NAME>A<MEMO>more"), true},
             {bought("1", "<NAME>A"), bought("1", "<NAME>B"), false},
             {"<STMTTRN><TRNAMT>1<NAME>A</STMTTRN>", bought("1", "<NAME>A"), false},
             {bought("1", "<FITID>x" + kFrancs), bought("1", "<FITID>x"), false},
             {bought("1", "<FITID>x" + kFrancs),
              bought("1", "<FITID>x<CURRENCY><CURRATE>3<CURSYM>CHF</CURRENCY>"), true},
             {bought("1", "<FITID>x" + kFrancs),
              bought("1", "<FITID>x<CURRENCY><CURRATE>2<CURSYM>GBP</CURRENCY>"), false},
             {bought("1", "<FITID>x<ORIGCURRENCY><CURRATE>2<CURSYM>CHF</ORIGCURRENCY>"),
              bought("1", "<FITID>x"), true},
             {"<STMTTRN><MEMO>A</STMTTRN>", "<STMTTRN><NAME>B</STMTTRN>", true},
             {"<STMTTRN><MEMO>A</STMTTRN>", bought("1", "<NAME>B"), false},
         }) {
        CAPTURE(row.first);
        CAPTURE(row.second);
        const TemporaryFolder folder;
        const Finished finished =
            tool({"duplicates", folder.file("a", list(row.first)), folder.file("b", list(row.second))});
        CHECK(finished.status == 0);
        CHECK((finished.output == "No transaction occurs in two statements.\n") == !row.isSame);
    }
}

TEST_CASE("the amount of a duplicate has its currency, where that is not the account's") {
    const std::string paid = list(bought("-1.5", "<FITID>x<NAME>Shop" + kFrancs));
    const TemporaryFolder folder;
    CHECK(contains(tool({"duplicates", folder.file("a", paid), folder.file("b", paid)}).output,
                   "Date        Payee  ID  Times  Amount\n"
                   "2024-07-02  Shop   x   2       -1.50  CHF\n"));
}

TEST_CASE("a duplicate without a name, or with an empty one, is shown with that of its payee") {
    const TemporaryFolder folder;
    for (const char* const name : {"", "<NAME></NAME>"}) {
        CAPTURE(name);
        const std::string paid =
            list(bought("-1.5", name + std::string("<FITID>x<PAYEE><NAME>Shop</PAYEE>")));
        CHECK(contains(tool({"duplicates", folder.file("a", paid), folder.file("b", paid)}).output,
                       "2024-07-02  Shop   x   2       -1.50\n"));
    }
}

TEST_CASE("equal transactions of one statement, and of different accounts, are no duplicates") {
    const std::string none = "No transaction occurs in two statements.\n";
    CHECK(outputOf({"duplicates"}, list(bought("1", "<FITID>x") + bought("1", "<FITID>x"))) == none);
    const TemporaryFolder folder;
    const std::string other = statementOf("<ACCTID>7<ACCTTYPE>SAVINGS",
                                          "<BANKTRANLIST>" + bought("1", "<FITID>x") + "</BANKTRANLIST>");
    CHECK(tool({"duplicates", folder.file("a", list(bought("1", "<FITID>x"))), folder.file("b", other)})
              .output == none);
}

TEST_CASE("duplicates are found in time, however many transactions look alike") {
    const TemporaryFolder folder;
    std::string same;
    std::string different;
    for (int i = 0; i < 30'000; ++i) {
        same += bought("1", "");
        different += bought("1", "<NAME>" + std::to_string(i));
    }
    const std::string a = folder.file("a", list(same));
    const std::string b = folder.file("b", list(different));
    for (const auto& [first, second] : {std::pair(a, a), std::pair(a, b), std::pair(b, b)}) {
        const Finished finished = tool({"duplicates", first, second});
        CHECK(finished.status == 0);
        CHECK(linesOf(finished.output).size() > 60);
    }
}
