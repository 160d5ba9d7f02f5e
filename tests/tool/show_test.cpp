// SPDX-License-Identifier: Apache-2.0
#include <sstream>

#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

/// The columns of a text whose only wide characters are those that the rows here use.
std::size_t columnsOf(const std::string& text) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) == 0x80) continue;
        const bool isMark = text.compare(i, 2, "\u0301") == 0 || text.compare(i, 3, "\u200D") == 0;
        const bool isWide = byte >= 0xE3 && !isMark;  // U+3000 and up: here only East Asian texts and emoji
        columns += isMark ? 0 : isWide ? 2 : 1;
    }
    return columns;
}

std::string shown(const std::string& document, std::map<std::string, std::string> environment = {}) {
    const Finished finished = tool({"show", "--quiet", "-"}, document, std::move(environment));
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    return finished.output;
}

/// The line that has this text in it.
std::string paid(const std::string& name, const std::string& memo, const std::string& amount) {
    return "<STMTTRN><TRNTYPE>POS<DTPOSTED>20240102<TRNAMT>" + amount + "<NAME>" + name + "</NAME><MEMO>" +
           memo + "</STMTTRN>";
}

}  // namespace

TEST_CASE("a statement shows its account, its period, its balances, its transactions and their totals") {
    const Finished finished = tool({"show", examplePath("card.ofx")});
    CHECK(finished.status == 0);
    CHECK(finished.output ==
          "Institution       Tamarack Card Union (88120)\n"
          "Answered          2024-03-01 12:00\n"
          "Message           [INFO] Welcome back\n"
          "\n"
          "Credit card ****2290\n"
          "Currency          USD\n"
          "Period            2024-02-01 to 2024-02-29 23:59\n"
          "Balance           -1513.54 on 2024-02-29\n"
          "Available         3486.46 on 2024-03-01\n"
          "\n"
          "Date        Type     Payee                      Amount\n"
          "2024-02-02  DEBIT    Quillfeather Stationers    -38.20\n"
          "2024-02-05  DEBIT    Bluebird Air              -112.75\n"
          "2024-02-09  DEBIT    Papercut Streaming         -19.99\n"
          "2024-02-14  DEBIT    Ristorante Almadoro        -86.40\n"
          "2024-02-16  CREDIT   Bluebird Air               112.75\n"
          "2024-02-20  PAYMENT  Payment received           450.00\n"
          "2024-02-26  FEE      Foreign purchase fee        -3.11\n"
          "2024-02-27  DEBIT    Oriel Furniture & Sons   -1204.00\n"
          "\n"
          "Total             8 transactions: in 562.75, out -1464.45, sum -901.70 USD\n");
}

TEST_CASE("an account number is masked but for its last four characters, unless it is asked for") {
    struct Row {
        std::string number;
        std::string masked;
    };
    for (const Row& row :
         std::vector<Row>{{"0012345678", "****5678"},
                          {"12345", "****2345"},
                          {"1234", "****"},
                          {"7", "****"},
                          {"桜桜桜", "****"},
                          {"桜桜桜桜桜", "****桜桜桜桜"},
                          {"\U0001F4DA\U0001F4DA\u0301\u0301x", "****\U0001F4DA\u0301\u0301x"},
                          {"12é4ö6", "****é4ö6"}}) {
        CAPTURE(row.number);
        const std::string document =
            version1("<CREDITCARDMSGSRSV1><CCSTMTTRNRS><CCSTMTRS><CCACCTFROM><ACCTID>" + row.number +
                     "</CCACCTFROM></CCSTMTRS></CCSTMTTRNRS></CREDITCARDMSGSRSV1>");
        CHECK(linesOf(shown(document)).at(0) == "Credit card " + row.masked);
        CHECK(linesOf(outputOf({"show", "--full"}, document)).at(0) == "Credit card " + row.number);
    }
}

TEST_CASE("each type of account has its name") {
    struct Row {
        std::string type;
        std::string name;
    };
    for (const Row& row : std::vector<Row>{{"CHECKING", "Checking account"},
                                           {"SAVINGS", "Savings account"},
                                           {"MONEYMARKT", "Account"},
                                           {"MONEYMARKET", "Money market account"},
                                           {"CREDITLINE", "Credit line"},
                                           {"CD", "Account"}}) {
        CAPTURE(row.type);
        const std::string document =
            version1("<BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKACCTFROM><ACCTID>12<ACCTTYPE>" + row.type +
                     "</BANKACCTFROM></STMTRS></STMTTRNRS></BANKMSGSRSV1>");
        CHECK(linesOf(shown(document)).at(0) == row.name + " ****");
    }
}

TEST_CASE("columns are aligned for characters of every width") {
    const std::string output =
        shown(transactionsWith(paid("plain", "a memo", "-1.5") + paid("桜ヌードルハウス", "ランチ", "10") +
                               paid("📚 books", "e\u0301lan", "-1234.567") + paid("", "한국어 メモ", "0.25")));
    const std::vector<std::string> lines = linesOf(output);
    std::size_t memos = 0;
    std::size_t points = 0;
    for (const std::string& line : lines) {
        for (const char* memo : {"a memo", "ランチ", "e\u0301lan", "한국어 メモ"}) {
            const std::size_t found = line.find(memo);
            if (found == std::string::npos) continue;
            CAPTURE(line);
            CHECK(columnsOf(line.substr(0, found)) == 10 + 2 + 4 + 2 + 16 + 2);
            CHECK(columnsOf(line.substr(0, line.find_last_of('.'))) == 36 + 11 + 2 + 5);
            ++memos;
            ++points;
        }
    }
    CHECK(memos == 4);
    CHECK(points == 4);
}

TEST_CASE("totals are exact, count what has no amount, and say when they do not fit") {
    struct Row {
        std::string amounts;
        std::string total;
    };
    const auto nines = std::string(38, '9');
    for (const Row& row : std::vector<Row>{
             {"0.1 0.2 -0.3", "3 transactions: in 0.30, out -0.30, sum 0.00 USD"},
             {"1", "1 transaction: in 1.00, out 0.00, sum 1.00 USD"},
             {"5 x -1", "3 transactions: in 5.00, out -1.00, sum 4.00 USD (1 without an amount)"},
             {"1e100 1", "2 transactions: in not representable, out 0.00, sum not representable USD"},
             {nines + " -1",
              "2 transactions: in " + nines + ".00, out -1.00, sum " + std::string(37, '9') + "8.00 USD"},
         }) {
        CAPTURE(row.amounts);
        std::string transactions;
        for (std::istringstream amounts(row.amounts); amounts;) {
            std::string amount;
            if (amounts >> amount) transactions += "<STMTTRN><TRNAMT>" + amount + "</STMTTRN>";
        }
        const std::string output = shown(transactionsWith(transactions), {{"COLUMNS", "400"}});
        CHECK(lineWith(output, "Total") == "Total             " + row.total);
    }
}

TEST_CASE("amounts in another currency stand with it, and are summed up by their rate") {
    const std::string chf =
        "<STMTTRN><NAME>Inn<TRNAMT>-4<CURRENCY><CURRATE>1.25<CURSYM>CHF</CURRENCY></STMTTRN>";
    const std::string sek = "<STMTTRN><NAME>Ferry<TRNAMT>-6<CURRENCY>SEK</STMTTRN>";
    const std::string own =
        "<STMTTRN><NAME>Shop<TRNAMT>-3<ORIGCURRENCY><CURRATE>1.1<CURSYM>GBP</ORIGCURRENCY></STMTTRN>";
    const std::string output = shown(
        version1("<BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>USD<BANKTRANLIST>" + chf + sek + own +
                 "<STMTTRN><NAME>Bus<TRNAMT>-1<CURRENCY>USD</STMTTRN></BANKTRANLIST></STMTRS></STMTTRNRS>"
                 "</BANKMSGSRSV1>"));
    CHECK(lineWith(output, "Inn").ends_with(" -4.00  CHF"));
    CHECK(lineWith(output, "Ferry").ends_with(" -6.00  SEK"));
    CHECK(lineWith(output, "Shop").ends_with(" -3.00"));
    CHECK(lineWith(output, "Bus").ends_with(" -1.00"));
    CHECK(lineWith(output, "Total") ==
          "Total             4 transactions: in 0.00, out -9.00, sum -9.00 USD (1 in another currency)");
}

TEST_CASE("a statement that was refused shows why") {
    const std::string output =
        shown(version1("<BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STATUS><CODE>2003<SEVERITY>ERROR<MESSAGE>Account "
                       "not found</STATUS>"
                       "</STMTTRNRS></BANKMSGSRSV1>"));
    CHECK(output ==
          "Bank statement without an account\n"
          "Status            2003 [ERROR] Account not found\n"
          "No transactions.\n");
}

TEST_CASE("a sign-on that failed says so") {
    const std::string output = tool({"show", examplePath("sign_on_failure.ofx")}).output;
    CHECK(contains(output, "Institution       Lantern Savings Bank (7001)\n"));
    CHECK(contains(output, "Sign-on failed    15500 [ERROR] User name or password do not match\n"));
}

TEST_CASE("a message of the institution is shown once") {
    const std::string status = "<STATUS><CODE>0<SEVERITY>INFO<MESSAGE>All is well</STATUS>";
    const std::string output =
        shown(version1("<BANKMSGSRSV1><STMTTRNRS>" + status + "</STMTTRNRS><STMTTRNRS>" + status +
                       "</STMTTRNRS></BANKMSGSRSV1>"));
    CHECK(output.find("Message           [INFO] All is well\n") == 0);
    CHECK(output.find("All is well", 40) == std::string::npos);
}

TEST_CASE("keys and cookies of a sign-on are not shown") {
    const std::string output = shown(
        version1("<SIGNONMSGSRSV1><SONRS><DTSERVER>20240102<USERKEY>hush1<SESSCOOKIE>hush2<ACCESSKEY>hush3"
                 "</SONRS></SIGNONMSGSRSV1>"));
    CHECK(output == "Answered          2024-01-02\n");
}

TEST_CASE("account information is a list of accounts") {
    const std::string output = tool({"show", examplePath("account_information.ofx")}).output;
    CHECK(contains(output,
                   "Accounts at the institution\n"
                   "Changed           2024-05-30 12:00\n"
                   "Description        Number    Type              Bank    Status   Phone\n"
                   "Everyday account   ****7734  Checking account  400515  active   +44 20 5550 0100\n"
                   "Rainy day savings  ****7742  Savings account   400515  pending\n"
                   "Lantern card       ****2222  Credit card               active   +44 20 5550 0102\n"));
    const Finished full = tool({"show", "--full", examplePath("account_information.ofx")});
    CHECK(contains(full.output, "  20117734  "));
}

TEST_CASE("a profile shows the institution, its message sets and its realms") {
    const std::string output = tool({"show", examplePath("profile.ofx")}, "", {{"COLUMNS", "1000"}}).output;
    for (const char* line : {
             "\nProfile of Lantern Savings Bank\n",
             "\nAddress           12 Wharf Lane, Floor 3, Port Ellery NA PE1 2LS, GBR\n",
             "\nSign-on           version 1; at https://ofx.lantern.example/signon; provider Lantern Data "
             "Services; realm Personal; languages ENG, CYM; transport security; lite synchronisation\n",
             "; no processing on SATURDAY, SUNDAY; processing ends at 170000;",
             "\nRealm Cards       password of 4 to 6 characters; numeric; case does not count\n",
         }) {
        CAPTURE(line);
        CHECK(contains(output, line));
    }
}

TEST_CASE("responses that are not shown are counted, and their errors are shown") {
    const std::string output = shown(
        version1("<BANKMSGSRSV1><INTRATRNRS><TRNUID>1</INTRATRNRS><INTRATRNRS><TRNUID>2<STATUS><CODE>2000"
                 "<SEVERITY>ERROR</STATUS></INTRATRNRS></BANKMSGSRSV1>"));
    CHECK(output ==
          "Other responses (not shown)\n"
          "INTRARS           2\n"
          "INTRARS           2000 [ERROR]\n");
}

TEST_CASE("a document without responses says so") {
    CHECK(shown(version1("")) == "The document has no responses.\n");
    const std::string xml = "<?xml version=\"1.0\"?><OFX><A>1</A></OFX>";
    CHECK(shown(xml) == "The document has no responses.\n");
    CHECK(contains(tool({"show", "--as-is", "-"}, xml).error, "instruction <?OFX ...?>"));
    CHECK(shown("<?xml version=\"1.0\"?><?OFX VERSION=\"211\"?>") == "The document has no responses.\n");
}

TEST_CASE("a transaction without a name shows its payee's, and one without a check number its reference") {
    const std::string output = shown(transactionsWith(
        "<STMTTRN><DTPOSTED>20240102<PAYEE><NAME>Payee</PAYEE><REFNUM>R9</STMTTRN>"
        "<STMTTRN><DTPOSTED>someday<NAME>Name<PAYEE><NAME>Payee</PAYEE><CHECKNUM>41<REFNUM>R9</STMTTRN>"));
    CHECK(contains(output, "2024-01-02  Payee  R9\n"));
    CHECK(contains(output, "someday     Name   41\n"));
}

TEST_CASE("each document of a file is shown") {
    const std::string two = transactionsWith("<STMTTRN><TRNAMT>1<NAME>Bakery</STMTTRN>") +
                            transactionsWith("<STMTTRN><TRNAMT>2<NAME>Tailor</STMTTRN>");
    const std::string output = shown(two);
    CHECK(contains(output, "Bakery"));
    CHECK(contains(output, "Tailor"));
    CHECK(contains(tool({"show", "-"}, two).error, "-: The file holds 2 documents"));
}

TEST_CASE("several files are shown one after the other, each under its name") {
    const Finished finished =
        tool({"show", examplePath("card.ofx"), "/nowhere", examplePath("sign_on_failure.ofx")});
    CHECK(finished.status == 1);
    CHECK(finished.output.starts_with("== " + examplePath("card.ofx") + "\nInstitution  "));
    CHECK(contains(finished.output, "\n\n== " + examplePath("sign_on_failure.ofx") + "\nInstitution  "));
    const std::vector<std::string> messages = linesOf(finished.error);
    REQUIRE(messages.size() == 3);
    CHECK(messages[0] == "/nowhere: The file at /nowhere was not found.");
    CHECK(messages[2].starts_with(examplePath("sign_on_failure.ofx") +
                                  ":6:7: The server refused the sign-on "));
}

// ---------------------------------------------------------------------------------------------
// Width

TEST_CASE("no line is wider than it may be, however narrow that is") {
    const std::string names = "A very long name of somebody who sells things 桜ヌードルハウス 📚📚📚";
    const std::string memo = "https://example.example/a/path/without/any/blank/that/goes/on/and/on/and/on";
    const std::string document = transactionsWith(paid(names, memo, "-1.50") + paid("B", "C", "22"));
    struct Row {
        std::string columns;
        std::size_t width;
    };
    for (const Row& row : std::vector<Row>{{"", 100},
                                           {"0", 100},
                                           {"wide", 100},
                                           {"200", 200},
                                           {"80", 80},
                                           {"61", 61},
                                           {"40", 40},
                                           {"25", 25},
                                           {"20", 20},
                                           {"7", 20}}) {
        CAPTURE(row.columns);
        for (const std::string& text :
             {shown(document, {{"COLUMNS", row.columns}}),
              tool({"show", examplePath("profile.ofx")}, "", {{"COLUMNS", row.columns}}).output,
              tool({"show", examplePath("account_information.ofx")}, "", {{"COLUMNS", row.columns}})
                  .output}) {
            for (const std::string& line : linesOf(text)) {
                CAPTURE(line);
                CHECK(columnsOf(line) <= row.width);
            }
        }
    }
}

TEST_CASE("a table says which columns it has no room for") {
    const std::string document = transactionsWith(paid("Somebody", std::string(300, 'm'), "-123456789.01"));
    const std::string narrow = shown(document, {{"COLUMNS", "25"}});
    CAPTURE(narrow);
    CHECK(contains(narrow, "\nToo narrow for: Type,\nPayee, Memo. A wider\n"));
    CHECK_FALSE(contains(shown(document), "Too narrow"));
}

TEST_CASE("the days that an account's statements cover stand at 80 columns") {
    const std::string titles =
        lineWith(tool({"accounts", examplePath("household.ofx")}, "", {{"COLUMNS", "80"}}).output, "Number");
    CHECK(contains(titles, "From"));
    CHECK(titles.ends_with("To"));
}

TEST_CASE("amounts have the decimals of their currency, and more where the document has more") {
    struct Row {
        const char* currency;
        const char* written;
        const char* shown;
    };
    for (const Row& row : std::vector<Row>{{"JPY", "-1480", "-1480"},
                                           {"JPY", "-1480.00", "-1480"},
                                           {"JPY", "-1480.5", "-1480.5"},
                                           {"KWD", "-1480", "-1480.000"},
                                           {"KWD", "-1480.12345", "-1480.12345"},
                                           {"EUR", "-1480.5", "-1480.50"},
                                           {"XYZ", "-1480", "-1480.00"}}) {
        CAPTURE(row.currency);
        CAPTURE(row.written);
        std::string document =
            transactionsWith("<STMTTRN><DTPOSTED>20240101<TRNAMT>" + std::string(row.written) + "</STMTTRN>");
        document.replace(document.find("</BANKTRANLIST>"), 15,
                         "</BANKTRANLIST><LEDGERBAL><BALAMT>" + std::string(row.written) +
                             "<DTASOF>20240131</LEDGERBAL><AVAILBAL><BALAMT>" + row.written + "</AVAILBAL>");
        document.replace(document.find("USD"), 3, row.currency);
        const std::string page = outputOf({"show"}, document);
        const std::string shown = row.shown;
        CHECK(contains(page, "\nBalance           " + shown + " on 2024-01-31\n"));
        CHECK(contains(page, "\nAvailable         " + shown + "\n"));
        CHECK(lineWith(page, "2024-01-01").ends_with(" " + shown));
        CHECK(contains(page, ", out " + shown + ", sum " + shown + " " + row.currency + "\n"));
        CHECK(contains(outputOf({"payees"}, document), " " + shown + "\n"));
        CHECK(contains(outputOf({"accounts"}, document), "  " + shown + "  " + row.currency + "  "));
    }
}

TEST_CASE("an amount in another currency has the decimals of that") {
    const std::string page = outputOf(
        {"show"},
        transactionsWith("<STMTTRN><DTPOSTED>20240101<TRNAMT>-1480<CURRENCY><CURSYM>JPY<CURRATE>0.0065"
                         "</CURRENCY></STMTTRN><STMTTRN><DTPOSTED>20240102<TRNAMT>7</STMTTRN>"));
    CHECK(contains(page, "\n2024-01-01  -1480     JPY\n"));
    CHECK(lineWith(page, "2024-01-02").ends_with(" 7.00"));
    CHECK(contains(page, "in 7.00, out -9.62, sum -2.62 USD\n"));
}

TEST_CASE("long texts are cut with an ellipsis, amounts and dates never") {
    const std::string document = transactionsWith(paid("Somebody", std::string(300, 'm'), "-123456789.01"));
    const std::string wide = lineWith(shown(document), "2024-01-02");
    CHECK(columnsOf(wide) == 100);
    CHECK(contains(wide, "mmm…  -123456789.01"));
    const std::string narrow = lineWith(shown(document, {{"COLUMNS", "20"}}), "2024-01-02");
    CHECK(narrow == "2024-01-02  -123456789.01");
}

// ---------------------------------------------------------------------------------------------
// What a terminal might obey

TEST_CASE("control characters of a document become visible") {
    struct Row {
        std::string memo;
        std::string cell;
    };
    for (const Row& row : std::vector<Row>{
             {"a\x1b[31mred", "a␛[31mred"},
             {"bell\x07 and\x08 back\x7F", "bell␇ and␈ back␡"},
             {"c1 \u009b31m", "c1 \uFFFD31m"},
             {"abc \u202Edlrow", "abc \uFFFDdlrow"},
             {"a\u2066b\u2069c\u200Fd", "a\uFFFDb\uFFFDc\uFFFDd"},
             {"tab\tline\nbreak\u2028end", "tab line break end"},
             {"many    blanks", "many blanks"},
             {"e\u0301\u200D", "e\u0301\u200D"},
         }) {
        CAPTURE(row.cell);
        const std::string output = shown(transactionsWith(paid("N", row.memo, "1")));
        const std::string line = lineWith(output, "2024-01-02");
        CHECK(line.starts_with("2024-01-02  POS   N      " + row.cell + "  "));
        CHECK(line.ends_with("  1.00"));
    }
}

TEST_CASE("control characters in the facts of a document become visible, too") {
    const std::string output =
        shown(version1("<SIGNONMSGSRSV1><SONRS><FI><ORG>Bank\x1b]0;x\x07</FI></SONRS></"
                       "SIGNONMSGSRSV1><BANKMSGSRSV1><STMTTRNRS>"
                       "<STATUS><CODE>1<SEVERITY>ERROR<MESSAGE>\x1b[2J</STATUS><STMTRS><CURDEF>\x1b"
                       "c<BANKACCTFROM><BANKID>\u009b"
                       "</BANKACCTFROM></STMTRS></STMTTRNRS></BANKMSGSRSV1>"));
    CHECK_FALSE(contains(output, "\x1b"));
    CHECK(contains(output, "Institution       Bank␛]0;x␇\n"));
    CHECK(contains(output, "Status            1 [ERROR] ␛[2J\n"));
    CHECK(contains(output, "Currency          ␛c\n"));
    CHECK(contains(output, "Bank              \uFFFD\n"));
}
