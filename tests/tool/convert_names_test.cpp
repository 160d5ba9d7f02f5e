// SPDX-License-Identifier: Apache-2.0
#include "tool/accounting.h"

/// \file
/// Names of accounts and commodities in journals of `brackwell convert`, and the file of --accounts.

using namespace brackwell::tests;

namespace {

std::string paid(const std::string& payee, const std::string& memo = "") {
    return "<STMTTRN><TRNTYPE>POS<DTPOSTED>20240305<TRNAMT>-3.20<FITID>" + payee + memo + "<NAME>" + payee +
           (memo.empty() ? "" : "<MEMO>" + memo) + "</STMTTRN>";
}

/// A statement of a bank account.
std::string bankStatement(const std::string& bank, const std::string& number, const std::string& type,
                          const std::string& currency = "USD") {
    return "<STMTTRNRS><TRNUID>1<STMTRS><CURDEF>" + currency + "<BANKACCTFROM><BANKID>" + bank + "<ACCTID>" +
           number + "<ACCTTYPE>" + type + "</BANKACCTFROM><BANKTRANLIST>" + paid("Cafe") +
           "</BANKTRANLIST></STMTRS></STMTTRNRS>";
}

/// What a conversion with this file of names ends with.
Finished withMap(const std::string& map, const std::string& document, const std::string& format = "hledger") {
    const TemporaryFolder folder;
    folder.file("map.toml", map);
    folder.file("a.ofx", document);
    Command command = toolCommand({"convert", "--to", format, "--accounts", "map.toml", "a.ofx"});
    command.directory = folder.path();
    return run(command);
}

/// The accounts that a journal declares.
std::vector<std::string> accountsIn(const std::string& journal) {
    std::vector<std::string> accounts;
    for (const std::string& line : linesOf(journal))
        if (line.starts_with("account ")) accounts.push_back(line.substr(8));
    return accounts;
}

using AccountNames = std::vector<std::string>;

}  // namespace

TEST_CASE("accounts are called by kind and number where nobody names them") {
    struct Row {
        std::string document;
        const char* name;
    };
    const auto card = [](const std::string& number) {
        return version1("<CREDITCARDMSGSRSV1><CCSTMTTRNRS><CCSTMTRS><CURDEF>USD<CCACCTFROM><ACCTID>" +
                        number + "</CCACCTFROM><BANKTRANLIST>" + paid("Cafe") +
                        "</BANKTRANLIST></CCSTMTRS></CCSTMTTRNRS></CREDITCARDMSGSRSV1>");
    };
    for (const Row& row : std::vector<Row>{
             {bankDocument(bankStatement("1", "00123", "CHECKING")), "Assets:Bank:00123"},
             {bankDocument(bankStatement("1", "00123", "CREDITLINE")), "Liabilities:Credit-Line:00123"},
             {bankDocument(bankStatement("1", "xx 12:34;é", "SAVINGS")), "Assets:Bank:Xx-12-34"},
             {bankDocument(bankStatement("1", "--", "SAVINGS")), "Assets:Bank:Unnamed"},
             {card("4111"), "Liabilities:Card:4111"},
             {bankDocument(bankStatement("1", std::string(60, '7'), "SAVINGS")),
              "Assets:Bank:7777777777777777777777777777777777777777"},
         }) {
        CAPTURE(row.name);
        for (const std::string& format : kBookFormats) {
            const std::string journal = journalOfDocument(format, row.document);
            CHECK(contains(journal, row.name));
            if (hasBookProgram(format)) CHECK(complaintsAbout(format, journal) == "");
        }
    }
}

TEST_CASE("different accounts of one number are told apart, and that is said") {
    const std::string document =
        bankDocument(bankStatement("1", "5", "CHECKING") + bankStatement("1", "5", "SAVINGS"));
    const TemporaryFolder folder;
    const Finished finished = tool({"convert", folder.file("a.ofx", document)});
    const AccountNames names = accountsIn(finished.output);
    REQUIRE(names.size() == 3);
    CHECK(names[0].starts_with("Assets:Bank:5-"));
    CHECK(names[1].starts_with("Assets:Bank:5-"));
    CHECK(names[0] != names[1]);
    CHECK(finished.error ==
          "convert: 2 accounts have numbers that other accounts have, too; their names end in "
          "digests. An account map can give them others.\n");
    // One number with two currencies is one account that has both.
    const std::string currencies =
        bankDocument(bankStatement("1", "5", "CHECKING") + bankStatement("1", "5", "CHECKING", "EUR"));
    CHECK(accountsIn(journalOfDocument("hledger", currencies)) ==
          AccountNames{"Assets:Bank:5", "Expenses:Unknown"});
}

TEST_CASE("accounts have the names of the map, by number, by its end, or with the bank") {
    struct Row {
        const char* key;
        bool isMeant;
    };
    for (const Row& row : {Row{"121000248/0012345678", true}, Row{"0012345678", true}, Row{"5678", true},
                           Row{"9/0012345678", false}, Row{"567", false}, Row{"", false}}) {
        CAPTURE(row.key);
        const std::string map = "[accounts]\n\"" + std::string(row.key) + "\" = \"Assets:Mine\"\n";
        const Finished finished = withMap(map, transactionsWith(paid("Cafe")));
        CHECK(finished.status == 0);
        CHECK(contains(finished.output, "    Assets:Mine  -3.20 USD\n") == row.isMeant);
    }
    const std::string map =
        "[accounts]\n\"678\" = \"Assets:Short\"\n\"5678\" = \"Assets:Long\"\n\"1/5678\" = \"Assets:Other\"\n";
    CHECK(contains(withMap(map, transactionsWith(paid("Cafe"))).output, "    Assets:Long  -3.20 USD\n"));
}

TEST_CASE("payees have the account of the first pattern that fits") {
    const std::string map =
        "[payees]\n\"corner bakery\" = \"Expenses:Corner\"\n\"bakery\" = \"Expenses:Bakery\"\n"
        "\"LUMIERE\" = \"Expenses:Cafe\"\n\"gift\" = \"Expenses:Gifts\"\n";
    struct Row {
        const char* payee;
        const char* memo;
        const char* account;
    };
    for (const Row& row :
         {Row{"Bakery at the Corner", "", "Expenses:Corner"}, Row{"BAKERY", "", "Expenses:Bakery"},
          Row{"Bakery", "on the corner", "Expenses:Corner"}, Row{"Cafe Lumi\u00E8re", "", "Expenses:Cafe"},
          Row{"x", "a gift", "Expenses:Gifts"}, Row{"Kiosk", "", "Expenses:Unknown"}}) {
        CAPTURE(row.payee);
        const std::string document = version1(
            "<BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>USD<BANKACCTFROM><ACCTID>1</"
            "BANKACCTFROM><BANKTRANLIST>" +
                paid(row.payee, row.memo) + "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>",
            "UTF-8");
        CHECK(contains(withMap(map, document).output, "    " + std::string(row.account) + "  3.20 USD\n"));
    }
}

TEST_CASE("other accounts and commodities have the names of the map") {
    const std::string map =
        "[names]\nunknown-expense = \"Expenses:To do\"\nbank = \"Assets:My bank\"\n"
        "[commodities]\n\"USD\" = \"DOLLAR\"\n\"900000101\" = \"RAIL\"\n\"HBRL\" = \"HARBOUR\"\n";
    const Finished bank = withMap(map, transactionsWith(paid("Cafe")));
    CHECK(contains(bank.output, "    Assets:My bank:0012345678  -3.20 DOLLAR\n"));
    CHECK(contains(bank.output, "    Expenses:To do  3.20 DOLLAR\n"));
    std::ifstream stream(examplePath("investments.ofx"));
    const std::string investments{std::istreambuf_iterator<char>(stream), {}};
    const Finished held = withMap(map, investments);
    CHECK(contains(held.output, "100 RAIL @@ 4510.00 DOLLAR"));
    CHECK(contains(held.output, "45 HARBOUR\n"));
    CHECK_FALSE(contains(held.output, " ALDR @@"));
}

TEST_CASE("the names that the page shows are a file of names for every format") {
    std::ifstream page(std::string(BRACKWELL_SOURCE_DIR) + "/docs/bookkeeping.md");
    std::string map;
    for (std::string line; std::getline(page, line) && !contains(line, "Every table");)
        if (line.starts_with("    ") && !line.starts_with("    ;")) map += line.substr(4) + "\n";
    map.erase(0, map.find("[accounts]"));
    CHECK(contains(map, "[commodities]"));
    for (const std::string& format : kBookFormats) {
        CAPTURE(format);
        const Finished finished = withMap(map, transactionsWith(paid("Corner Bakery")), format);
        CHECK(finished.status == 0);
        CHECK(contains(finished.output, "  Assets:Checking  -3.20 USD\n"));
        CHECK(contains(finished.output, "  Expenses:Food  3.20 USD\n"));
    }
}

TEST_CASE("what is wrong with a file of names is said with its line, and nothing is written") {
    struct Row {
        const char* map;
        const char* format;
        const char* problem;
    };
    const Row rows[] = {
        {"[accounts]\n\"1\" = \"Food\"\n", "beancount",
         "line 2: The account name \"Food\" begins with none of Assets:, Liabilities:, Equity:, Income: and "
         "Expenses:."},
        {"[accounts]\n\"1\" = \"Assets:My bank\"\n", "beancount", "has a part that is not a capital letter"},
        {"[accounts]\n\"1\" = \"Assets\"\n", "beancount", "begins with none of"},
        {"[accounts]\n\"1\" = \"\"\n", "hledger", "The account name \"\" is empty."},
        {"[accounts]\n\"1\" = \"a  b\"\n", "hledger", "has blanks at an end or beside each other"},
        {"[accounts]\n\"1\" = \"(a)\"\n", "ledger", "begins with a mark of the format"},
        {"[accounts]\n\"1\" = \"a;b\"\n", "ledger", "has a semicolon"},
        {"[accounts]\n\"1\" = \"a: b\"\n", "ledger", "has an empty part, or one with a blank at an end"},
        {"[accounts]\n\n\"1\" = 5\n", "hledger", "line 3: \"1\" is not a text in quotes."},
        {"[payees]\n\" \" = \"a\"\n", "hledger", "A payee is empty."},
        {"[names]\nsomething = \"a\"\n", "hledger",
         "No account is called \"something\"; there are bank, card,"},
        {"[commodities]\nUSD = \"us dollar\"\n", "hledger", "The commodity \"us dollar\" is not 2 to 24"},
        {"[commodities]\nUSD = 1\n", "hledger", "\"USD\" is not a text in quotes."},
        {"[account]\n\"1\" = \"a\"\n", "hledger", "\"account\" is none of the tables"},
        {"accounts = 1\n", "hledger", "\"accounts\" is none of the tables"},
        {"[accounts\n", "hledger", "line 1: "},
    };
    for (const Row& row : rows) {
        CAPTURE(row.map);
        const Finished finished = withMap(row.map, transactionsWith(paid("Cafe")), row.format);
        CHECK(finished.status == 1);
        CHECK(finished.output == "");
        CHECK(finished.error.starts_with("map.toml: "));
        CHECK(contains(finished.error, row.problem));
    }
    const Finished missing = tool({"convert", "--accounts", "/no such file", examplePath("card.ofx")});
    CHECK(missing.status == 1);
    CHECK(missing.error == "/no such file: The file cannot be read.\n");
    CHECK(tool({"convert", "--accounts", "/", examplePath("card.ofx")}).status == 1);
}

TEST_CASE("names that Beancount cannot have are good for the others") {
    for (const char* format : {"hledger", "ledger"}) {
        CAPTURE(format);
        const Finished finished = withMap("[accounts]\n\"5678\" = \"assets:My b\u00E4nk (old)\"\n",
                                          transactionsWith(paid("Cafe")), format);
        CHECK(finished.status == 0);
        if (hasBookProgram(format)) CHECK(complaintsAbout(format, finished.output) == "");
    }
    const Finished beancount = withMap("[accounts]\n\"5678\" = \"Assets:B\u00E4nk-1\"\n",
                                       transactionsWith(paid("Cafe")), "beancount");
    CHECK(beancount.status == 0);
    if (hasBookProgram("beancount")) CHECK(complaintsAbout("beancount", beancount.output) == "");
}
