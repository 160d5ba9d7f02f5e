// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

/// What the tool reads of a date and an amount with these options.
Json readWith(std::vector<std::string> options, const std::string& date, const std::string& amount) {
    options.insert(options.begin(), "json");
    const Json document = Json::parse(outputOf(
        options, transactionsWith("<STMTTRN><DTPOSTED>" + date + "<TRNAMT>" + amount + "</STMTTRN>")));
    Json transaction = document["responses"][0]["statementTransactions"][0];
    Json result = Json::array({transaction.value("datePosted", ""), transaction.value("amount", "")});
    return result;
}

}  // namespace

TEST_CASE("a date pattern is tried before the built-in formats") {
    CHECK(readWith({"--as-is"}, "31.12.2024", "1") == Json::array({"", "1"}));
    CHECK(readWith({}, "31.12.2024", "1") == Json::array({"2024-12-31T00:00:00.000Z", "1"}));
    CHECK(readWith({"--date-format", "dd.MM.yyyy"}, "31.12.2024", "1") ==
          Json::array({"2024-12-31T00:00:00.000Z", "1"}));
    CHECK(readWith({"--date-format", "dd.MM.yyyy"}, "20241230", "1") ==
          Json::array({"2024-12-30T00:00:00.000Z", "1"}));
    CHECK(readWith({"--date-format", "yyyyMMddHHmmss'['X':CET]'"}, "20240131120000[+01:CET]", "1") ==
          Json::array({"2024-01-31T11:00:00.000Z", "1"}));
}

TEST_CASE("separators make a number formatter, and one moves the other out of its way") {
    struct Row {
        std::vector<std::string> options;
        std::string text;
        std::string amount;
    };
    for (const Row& row : std::vector<Row>{
             {{"--as-is"}, "-1.234,56", ""},
             {{"--as-is"}, "-12,50", "-1250"},
             {{}, "-1.234,56", "-1234.56"},
             {{}, "-12,50", "-12.5"},
             {{"--as-is", "--decimal-separator", ","}, "-12,50", "-12.5"},
             {{"--decimal-separator", ","}, "-1.234,56", "-1234.56"},
             {{"--decimal-separator", ","}, "-12,50", "-12.5"},
             {{"--decimal-separator", ","}, "-12.5", "-12.5"},
             {{"--grouping-separator", "."}, "-1.234,56", "-1234.56"},
             {{"--decimal-separator", ",", "--grouping-separator", "."}, "-1.234,56", "-1234.56"},
             {{"--decimal-separator", "\u066B"}, "-12\u066B5", "-12.5"},
             {{"--grouping-separator", "_"}, "1_234.5", "1234.5"},
         }) {
        const std::string options = Json(row.options).dump();
        CAPTURE(options);
        CAPTURE(row.text);
        CHECK(readWith(row.options, "20240101", row.text) ==
              Json::array({"2024-01-01T00:00:00.000Z", row.amount}));
    }
}

TEST_CASE("the formatters are for statements, and no sign-on is read with them") {
    const Json document = Json::parse(
        outputOf({"json", "--date-format", "dd.MM.yyyy"},
                 version1("<SIGNONMSGSRSV1><SONRS><DTSERVER>31.12.2024<DTPROFUP>20240101</SONRS>"
                          "</SIGNONMSGSRSV1><BANKMSGSRSV1><STMTTRNRS><STMTRS><LEDGERBAL><DTASOF>31.12.2024"
                          "</LEDGERBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1>")));
    const Json signOn = document["responses"].at(0);
    CHECK_FALSE(signOn.contains("dateOfServer"));
    CHECK(signOn["dateOflastProfileInfoUpdate"] == "2024-01-01T00:00:00.000Z");
    CHECK(document["responses"].at(1)["ledgerBalanceDateTime"] == "2024-12-31T00:00:00.000Z");
}

TEST_CASE("the formatters hold for every command that shows amounts") {
    const std::string document = transactionsWith("<STMTTRN><DTPOSTED>31/12/2024<TRNAMT>-12,50</STMTTRN>");
    const std::vector<std::string> options{"--decimal-separator", ",", "--date-format", "dd/MM/yyyy"};
    for (const auto& row : std::map<std::string, std::string>{{"csv", ",2024-12-31T00:00:00.000Z,,,-12.5,"},
                                                              {"show", "2024-12-31  -12.50\n"}}) {
        CAPTURE(row.first);
        std::vector<std::string> arguments{row.first};
        arguments.insert(arguments.end(), options.begin(), options.end());
        CHECK(outputOf(arguments, document).find(row.second) != std::string::npos);
    }
}

namespace {

/// The findings of transactions with these texts of DTPOSTED and TRNAMT in turn; their places are all alike
/// but for the column.
Json findingsOf(std::vector<std::string> options, const std::vector<std::string>& texts) {
    std::string transactions;
    for (std::size_t i = 0; i < texts.size(); i += 2)
        transactions += "<STMTTRN><DTPOSTED>" + texts[i] + "<TRNAMT>" + texts[i + 1] + "</STMTTRN>";
    options.insert(options.begin(), "json");
    return Json::parse(outputOf(options, transactionsWith(transactions)))["findings"];
}

struct Told {
    std::vector<std::string> texts;  ///< of DTPOSTED and TRNAMT in turn
    std::string kind;
    std::string severity;
    std::size_t count;
    std::string first;  ///< the text that is quoted
    std::string value;  ///< what is said of it ends so
};

void checkTold(const std::vector<std::string>& options, const Told& row) {
    CAPTURE(row.first);
    const Json findings = findingsOf(options, row.texts);
    REQUIRE(findings.size() == 1);
    CHECK(findings[0]["kind"] == row.kind);
    CHECK(findings[0]["severity"] == row.severity);
    CHECK(findings[0]["line"] == 11);
    CHECK(findings[0]["count"] == row.count);
    const std::string text = findings[0]["text"];
    CHECK(contains(text, "\"" + row.first + "\""));
    CHECK(text.ends_with(row.value + "."));
}

}  // namespace

TEST_CASE("amounts and dates that are read in the format of their document are reported") {
    for (const Told& row : std::vector<Told>{
             {{"20240101", "-0,99"}, "doubtfulValue", "note", 1, "-0,99", " is read as -0.99"},
             {{"20240101", "1.234,5", "20240101", "1,00", "20240101", "1.00"},
              "doubtfulValue",
              "note",
              2,
              "1.234,5",
              " as 1234.5"},
             {{"31.12.2024", "1"}, "doubtfulValue", "note", 1, "31.12.2024", " is read as 2024-12-31"},
             {{"01-31-2024", "1"}, "doubtfulValue", "note", 1, "01-31-2024", " is read as 2024-01-31"},
             {{"20240101", "1,234,56"}, "doubtfulValue", "warning", 1, "1,234,56", " is read as 123456"},
             {{"someday", "1", "soon", "1"}, "unreadableValue", "warning", 2, "someday", " left out"},
             {{"01/02/2024", "1"},
              "unreadableValue",
              "warning",
              1,
              "01/02/2024",
              " which, so it is left out"},
             {{"2024/12/31 noon", "1"}, "unreadableValue", "warning", 1, "2024/12/31 noon", " left out"},
         })
        checkTold({}, row);
    CHECK(findingsOf({}, {"20240101", "1,234", "20240101", "1,234.56"}).empty());
}

TEST_CASE("a person who wants the prescribed reading is told of what it misunderstands") {
    for (const Told& row : std::vector<Told>{
             {{"20240101", "-0,99"}, "doubtfulValue", "warning", 1, "-0,99", " probably means -0.99"},
             {{"31.12.2024", "1"}, "doubtfulValue", "warning", 1, "31.12.2024", " probably means 2024-12-31"},
         })
        checkTold({"--as-is"}, row);
}

TEST_CASE("a person is told of values that the options read otherwise than they are written") {
    checkTold({"--decimal-separator", ","},
              {{"20240101", "-12.50", "20240101", "1.250,00", "20240101", "7", "20240101", "12.5"},
               "doubtfulValue",
               "warning",
               1,
               "-12.50",
               " read as -1250, not as -12.5, because of the given number format"});
    checkTold({"--date-format", "ddMMyyyy"},
              {{"20120102", "1"},
               "doubtfulValue",
               "warning",
               1,
               "20120102",
               " read as 0102-12-20, not as 2012-01-02, because of the given date format"});
    CHECK(findingsOf({"--decimal-separator", "."}, {"20240101", "-12.50"}).empty());
    CHECK(findingsOf({"--decimal-separator", ","}, {"20240101", "-1.234,50"}).empty());
    CHECK(findingsOf({"--date-format", "MM/dd/yyyy"}, {"01/02/2024", "1"}).empty());
}
