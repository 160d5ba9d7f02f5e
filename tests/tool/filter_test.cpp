// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

using Texts = std::vector<std::string>;

std::string entry(const std::string& id, const std::string& elements) {
    return "<STMTTRN><FITID>" + id + elements + "</STMTTRN>";
}

std::string bankStatement(const std::string& number, const std::string& transactions) {
    return "<STMTTRNRS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1<ACCTID>" + number +
           "<ACCTTYPE>SAVINGS</BANKACCTFROM><BANKTRANLIST>" + transactions +
           "</BANKTRANLIST></STMTRS></STMTTRNRS>";
}

/// The FITIDs of the transactions in the rows of a table, in their order.
Texts idsIn(const std::string& csv) {
    Texts ids;
    for (const std::string& line : linesOf(csv)) {
        std::size_t start = 0;
        for (int comma = 0; comma < 12; ++comma) start = line.find(',', start) + 1;
        ids.push_back(line.substr(start, line.find(',', start) - start));
    }
    ids.erase(ids.begin());
    return ids;
}

/// The FITIDs of what a document has with these options.
Texts idsWith(Texts options, const std::string& document) {
    options.insert(options.begin(), "csv");
    return idsIn(outputOf(std::move(options), document));
}

const std::string kDated =
    transactionsWith(entry("evening", "<DTPOSTED>20240131235959.999") + entry("none", "<TRNAMT>1") +
                     entry("morning", "<DTPOSTED>20240131") + entry("odd", "<DTPOSTED>someday") +
                     entry("later", "<DTPOSTED>20240201000000") + entry("leap", "<DTPOSTED>20240229120000") +
                     entry("before", "<DTPOSTED>20231231235959"));

}  // namespace

TEST_CASE("days are inclusive, and what has no date is left out where days are asked for") {
    struct Row {
        Texts options;
        Texts ids;
    };
    for (const Row& row : std::vector<Row>{
             {{}, {"evening", "none", "morning", "odd", "later", "leap", "before"}},
             {{"--since", "2024-01-31"}, {"evening", "morning", "later", "leap"}},
             {{"--since", "2024-02-01"}, {"later", "leap"}},
             {{"--until", "2024-01-31"}, {"evening", "morning", "before"}},
             {{"--until", "2024-01-30"}, {"before"}},
             {{"--since", "2024-01-31", "--until", "2024-01-31"}, {"evening", "morning"}},
             {{"--since", "2024-02-29", "--until", "2024-02-29"}, {"leap"}},
             {{"--since", "0001-01-01", "--until", "9999-12-31"},
              {"evening", "morning", "later", "leap", "before"}},
             {{"--since", "2025-01-01"}, {}},
         }) {
        const std::string options = Json(row.options).dump();
        CAPTURE(options);
        CHECK(idsWith(row.options, kDated) == row.ids);
    }
}

TEST_CASE("options that choose transactions are wrong usage when they make no sense") {
    struct Row {
        Texts options;
        std::string reason;
    };
    for (const Row& row : std::vector<Row>{
             {{"--since", "2024-02-30"}, "not a date like 2024-01-31: \"2024-02-30\""},
             {{"--since", "2023-02-29"}, "not a date"},
             {{"--since", "20240230"}, "not a date"},
             {{"--since", "2024-1-31"}, "not a date"},
             {{"--since", "2024-01-31T00:00"}, "not a date"},
             {{"--since", "2024/01/31"}, "not a date"},
             {{"--since", " 2024-01-31"}, "not a date"},
             {{"--since", ""}, "not a date"},
             {{"--until", "2024-00-10"}, "not a date"},
             {{"--until", "2024-13-10"}, "not a date"},
             {{"--since", "2024-02-02", "--until", "2024-02-01"}, "2024-02-01 is before 2024-02-02"},
             {{"--account", ""}, "the number is empty"},
             {{"--search", ""}, "the search text is empty"},
             {{"--search", " \t\u00A0"}, "the search text is empty"},
             {{"--sort", "payee"}, "payee"},
             {{"--sort"}, "--sort"},
         }) {
        const std::string options = Json(row.options).dump();
        CAPTURE(options);
        for (const char* command : {"show", "csv", "json"}) {
            Texts arguments{command, examplePath("card.ofx")};
            arguments.insert(arguments.end(), row.options.begin(), row.options.end());
            const Finished finished = tool(arguments);
            CHECK(finished.status == 2);
            CHECK(finished.output == "");
            CHECK(finished.error.find(row.reason) != std::string::npos);
        }
    }
}

TEST_CASE("commands that have no transactions take no options that choose them") {
    for (const char* command : {"tree", "pretty", "repair", "check"})
        for (const char* option : {"--since", "--until", "--account", "--search", "--sort"}) {
            CAPTURE(command);
            CAPTURE(option);
            CHECK(tool({command, examplePath("card.ofx"), option, "2024-01-01"}).status == 2);
        }
}

TEST_CASE("an account is chosen by its number or the end of it, and several are") {
    const std::string document = version1(
        "<BANKMSGSRSV1>" + bankStatement("100234", entry("a", "")) + bankStatement("200234", entry("b", "")) +
        bankStatement("AB-9 é7", entry("c", "")) + "<STMTTRNRS><STMTRS><BANKTRANLIST>" + entry("d", "") +
        "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1>");
    struct Row {
        Texts options;
        Texts ids;
    };
    for (const Row& row : std::vector<Row>{
             {{}, {"a", "b", "c", "d"}},
             {{"--account", "100234"}, {"a"}},
             {{"--account", "0234"}, {"a", "b"}},
             {{"--account", "é7"}, {"c"}},
             {{"--account", "200234", "--account", "AB-9 é7"}, {"b", "c"}},
             {{"--account", "1002"}, {}},
             {{"--account", "0100234"}, {}},
             {{"--account", "[200234]"}, {}},
             {{"--account", "200234,100234"}, {}},
         }) {
        const std::string options = Json(row.options).dump();
        CAPTURE(options);
        CHECK(idsWith(row.options, document) == row.ids);
    }
}

TEST_CASE("a file after --account is a file") {
    const Finished finished = tool({"csv", "--account", "2290", examplePath("card.ofx")});
    CHECK(finished.status == 0);
    CHECK(linesOf(finished.output).size() == 1 + 8);
}

TEST_CASE("a search finds transactions in which every word stands, in whatever field and case") {
    const std::string document =
        transactionsWith(entry("ID-1", "<CHECKNUM>4711<REFNUM>R99<NAME>Bakery Müller<MEMO>card payment") +
                         entry("ID-2", "<SRVRTID>S55<PAYEEID>P66<PAYEE><NAME>ΟΔΟΣ Ltd</PAYEE><MEMO>CARD") +
                         entry("ID-3", "<CORRECTFITID>C77<NAME>Пекарня<MEMO>Paid\tin two lines") +
                         entry("ID-4", "<BANKACCTTO><BANKID>1<ACCTID>DE99 123</BANKACCTTO><NAME>B") +
                         entry("ID-5", "<CCACCTTO><ACCTID>5555</CCACCTTO><NAME>bakery"));
    struct Row {
        std::string text;
        Texts ids;
    };
    for (const Row& row : std::vector<Row>{{"bakery", {"ID-1", "ID-5"}},
                                           {"BAKERY card", {"ID-1"}},
                                           {"card bakery", {"ID-1"}},
                                           {"  card \t payment ", {"ID-1"}},
                                           {"MÜLLER", {"ID-1"}},
                                           {"muller", {"ID-1"}},
                                           {"οδος", {"ID-2"}},
                                           {"οδοσ", {"ID-2"}},
                                           {"пекАРНЯ", {"ID-3"}},
                                           {"id-", {"ID-1", "ID-2", "ID-3", "ID-4", "ID-5"}},
                                           {"4711", {"ID-1"}},
                                           {"r99", {"ID-1"}},
                                           {"s55 p66", {"ID-2"}},
                                           {"c77", {"ID-3"}},
                                           {"paid lines", {"ID-3"}},
                                           {"de99 123", {"ID-4"}},
                                           {"5555", {"ID-5"}},
                                           {"1card", {}},
                                           {"SAVINGS", {}},
                                           {"0012345678", {}}}) {
        CAPTURE(row.text);
        CHECK(idsWith({"--search", row.text}, document) == row.ids);
    }
}

TEST_CASE("letters are compared without case beyond ASCII") {
    for (const auto& [memo, search] : std::vector<std::pair<std::string, std::string>>{{"ÀÖØÞ", "àöøþ"},
                                                                                       {"ĀŐŸŽ", "āőÿž"},
                                                                                       {"ĹŇ", "ĺň"},
                                                                                       {"ȘȚ", "șț"},
                                                                                       {"ΆΈΌΎΏΩ", "άέόύώω"},
                                                                                       {"ЁЖЯ", "ёжя"},
                                                                                       {"Ґ", "ґ"},
                                                                                       {"ԱՖ", "աֆ"},
                                                                                       {"ẀẠỸ", "ẁạỹ"},
                                                                                       {"ＡＺ", "ａｚ"},
                                                                                       {"桜", "桜"}}) {
        const std::string text = memo + " " + search;
        CAPTURE(text);
        const std::string document = transactionsWith(entry("capital", "<MEMO>" + memo + "</MEMO>") +
                                                      entry("small", "<MEMO>" + search + "</MEMO>"));
        CHECK(idsWith({"--search", memo}, document) == Texts{"capital", "small"});
        CHECK(idsWith({"--search", search}, document) == Texts{"capital", "small"});
    }
    CHECK(idsWith({"--search", "×"}, transactionsWith(entry("a", "<MEMO>÷"))) == Texts{});
}

TEST_CASE("letters are compared without their marks") {
    for (const auto& [memo, search] :
         std::vector<std::pair<std::string, std::string>>{{"Café Lumière", "cafe lumiere"},
                                                          {"CAFE LUMIERE 0044", "café lumière"},
                                                          {"Cafe\u0301", "café"},
                                                          {"Łódź Zażółć", "lodz zazolc"},
                                                          {"Straße", "STRASSE"},
                                                          {"Œuvre Æon", "oeuvre aeon"},
                                                          {"Smørrebrød Đorđe", "smorrebrod dorde"},
                                                          {"Phở Hà Nội", "pho ha noi"},
                                                          {"İstanbul", "istanbul"},
                                                          {"Ȧ÷×", "a÷×"}}) {
        const std::string text = memo + " " + search;
        CAPTURE(text);
        CHECK(idsWith({"--search", search}, transactionsWith(entry("a", "<MEMO>" + memo))) == Texts{"a"});
    }
    CHECK(idsWith({"--search", "a"}, transactionsWith(entry("1", "<MEMO>\u0430"))) == Texts{});
}

TEST_CASE("sorting is stable, and puts last what has nothing to sort by") {
    CHECK(idsWith({"--sort", "date"}, kDated) ==
          Texts{"before", "morning", "evening", "later", "leap", "none", "odd"});
    const std::string amounts = transactionsWith(
        entry("a", "<TRNAMT>2") + entry("b", "") + entry("c", "<TRNAMT>-3.5") + entry("d", "<TRNAMT>10") +
        entry("e", "<TRNAMT>2.00") + entry("f", "<TRNAMT>x") + entry("g", "<TRNAMT>-1e30"));
    CHECK(idsWith({"--sort", "amount"}, amounts) == Texts{"g", "c", "a", "e", "d", "b", "f"});
}

TEST_CASE("sorting is within a statement") {
    const std::string document =
        version1("<BANKMSGSRSV1>" +
                 bankStatement("1", entry("a", "<DTPOSTED>20240103") + entry("b", "<DTPOSTED>20240102")) +
                 bankStatement("2", entry("c", "<DTPOSTED>20240101")) + "</BANKMSGSRSV1>");
    CHECK(idsWith({"--sort", "date"}, document) == Texts{"b", "a", "c"});
}

TEST_CASE("a table of transactions that were chosen has their total") {
    const std::string document = transactionsWith(entry("a", "<DTPOSTED>20240101<TRNAMT>5<NAME>Alpha") +
                                                  entry("b", "<DTPOSTED>20240102<TRNAMT>-2<NAME>Beta"));
    const std::string output = outputOf({"show", "--since", "2024-01-02"}, document);
    CHECK(output.find("Alpha") == std::string::npos);
    CHECK(output.find("Beta") != std::string::npos);
    CHECK(output.ends_with("Total             1 transaction: in 0.00, out -2.00, sum -2.00 USD\n"));
    CHECK(outputOf({"show", "--since", "2024-01-03"}, document)
              .ends_with("No transactions match the filter.\n"));
    CHECK(outputOf({"show", "--search", "gamma"}, document) == "Nothing matches the search.\n");
}

TEST_CASE("a search shows the files and accounts that have a match, and no others") {
    const TemporaryFolder folder;
    const std::string found = folder.file(
        "found.ofx", version1("<BANKMSGSRSV1>" + bankStatement("1111", entry("a", "<NAME>Alpha")) +
                              bankStatement("2222", entry("b", "<NAME>Beta")) + "</BANKMSGSRSV1>"));
    const std::string other = folder.file("other.ofx", transactionsWith(entry("c", "<NAME>Gamma")));
    const std::string output = tool({"show", "--full", "--search", "beta", found, other}).output;
    CHECK(contains(output, "== " + found));
    CHECK(contains(output, "Beta"));
    CHECK(contains(output, "2222"));
    CHECK_FALSE(contains(output, "1111"));
    CHECK_FALSE(contains(output, other));
    CHECK(tool({"show", "--search", "delta", found, other}).output == "Nothing matches the search.\n");
    CHECK_FALSE(contains(tool({"show", "--search", "beta", "--account", "1111", found}).output, "Beta"));
}

TEST_CASE("show leaves out the statements and records of accounts that were not chosen") {
    const std::string output =
        tool({"show", "--full", "--account", "0035", examplePath("household.ofx")}).output;
    CHECK(output.find("4410035") != std::string::npos);
    CHECK(output.find("4410027") == std::string::npos);
    CHECK(output.find("Credit card") == std::string::npos);
    const std::string records =
        tool({"show", "--account", "7742", examplePath("account_information.ofx")}).output;
    CHECK(records.find("Rainy day savings") != std::string::npos);
    CHECK(records.find("Everyday account") == std::string::npos);
    CHECK(records.find("Lantern card") == std::string::npos);
    const std::string card =
        tool({"show", "--account", "2222", examplePath("account_information.ofx")}).output;
    CHECK(card.find("Lantern card") != std::string::npos);
    CHECK(card.find("Everyday account") == std::string::npos);
}

TEST_CASE("of a record with several accounts only those are shown that were asked for") {
    const std::string document = version1(
        "<SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS><ACCTINFO><DESC>all<BANKACCTINFO><BANKACCTFROM>"
        "<ACCTID>100111</BANKACCTFROM></BANKACCTINFO><CCACCTINFO><CCACCTFROM><ACCTID>100222</CCACCTFROM>"
        "</CCACCTINFO><INVACCTINFO><INVACCTFROM><ACCTID>100333</INVACCTFROM></INVACCTINFO></ACCTINFO>"
        "</ACCTINFORS></ACCTINFOTRNRS></SIGNUPMSGSRSV1>");
    const std::vector<std::string> numbers{"111", "222", "333"};
    for (const std::string& wanted : numbers)
        for (const char* command : {"show", "json"}) {
            CAPTURE(wanted);
            CAPTURE(command);
            std::vector<std::string> arguments{command, "--account", wanted};
            if (arguments[0] == "show") arguments.emplace_back("--full");
            const std::string output = outputOf(arguments, document);
            for (const std::string& number : numbers)
                CHECK((output.find("100" + number) != std::string::npos) == (number == wanted));
        }
    CHECK(outputOf({"json", "--account", "999"}, document).find("\"accountInfos\":[]") != std::string::npos);
}

TEST_CASE("show says when no statement is of an account that was asked for") {
    const std::string sentence = "\nNo statement matches the accounts asked for.\n";
    CHECK(tool({"show", "--account", "9", examplePath("household.ofx")}).output.ends_with("\n" + sentence));
    for (const std::string name : {"household.ofx", "account_information.ofx"}) {
        CAPTURE(name);
        CHECK(tool({"show", "--account", "0035", examplePath(name)}).output.find(sentence) ==
              std::string::npos);
    }
}

TEST_CASE("in JSON the choice is made among transactions, statements and accounts") {
    const std::string document = version1(
        "<SIGNUPMSGSRSV1><ACCTINFOTRNRS><ACCTINFORS><ACCTINFO><DESC>one<BANKACCTINFO><BANKACCTFROM>"
        "<ACCTID>100234</BANKACCTFROM></BANKACCTINFO></ACCTINFO><ACCTINFO><DESC>two<BANKACCTINFO>"
        "<BANKACCTFROM><ACCTID>200235</BANKACCTFROM></BANKACCTINFO></ACCTINFO></ACCTINFORS></ACCTINFOTRNRS>"
        "</SIGNUPMSGSRSV1><BANKMSGSRSV1>" +
        bankStatement("100234", entry("a", "<TRNAMT>2") + entry("b", "<TRNAMT>1")) +
        bankStatement("200235", entry("c", "")) + "</BANKMSGSRSV1>");
    const Json chosen = Json::parse(outputOf({"json", "--account", "0234", "--sort", "amount"}, document));
    REQUIRE(chosen["accountsFound"].size() == 1);
    CHECK(chosen["accountsFound"][0]["accountID"] == "100234");
    REQUIRE(chosen["responses"].size() == 2);
    CHECK(chosen["responses"][0]["accountInfos"].size() == 1);
    CHECK(chosen["responses"][0]["accountInfos"][0]["accountDescription"] == "one");
    const Json& transactions = chosen["responses"][1]["statementTransactions"];
    REQUIRE(transactions.size() == 2);
    CHECK(transactions[0]["fiTransactionID"] == "b");
    CHECK(transactions[1]["fiTransactionID"] == "a");

    const Json none = Json::parse(outputOf({"json", "--search", "nobody"}, document));
    CHECK(none["accountsFound"].size() == 2);
    CHECK(none["responses"].size() == 3);
    CHECK(none["responses"][1]["statementTransactions"] == Json::array());
}

TEST_CASE("a choice of everything changes nothing") {
    for (const char* command : {"show", "json", "csv"}) {
        CAPTURE(command);
        const std::string path = examplePath("card.ofx");
        CHECK(tool({command, "--account", "5190000000002290", "--since", "2024-02-01", "--until",
                    "2024-02-29", path})
                  .output == tool({command, path}).output);
    }
}

TEST_CASE("a large statement is sorted and searched whole") {
    std::string transactions;
    for (int i = 0; i < 50'000; ++i)
        transactions +=
            entry(std::to_string(i), "<TRNAMT>" + std::to_string(i * 7919 % 50'000) + "<NAME>Shop");
    const std::string document = transactionsWith(transactions);
    const Texts ids = idsWith({"--sort", "amount", "--search", "shop"}, document);
    REQUIRE(ids.size() == 50'000);
    for (std::size_t i = 1; i < ids.size(); ++i)
        if (std::stol(ids[i - 1]) * 7919 % 50'000 > std::stol(ids[i]) * 7919 % 50'000) FAIL("not in order");
}
