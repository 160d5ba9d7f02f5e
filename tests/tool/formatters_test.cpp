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
    CHECK(readWith({}, "31.12.2024", "1") == Json::array({"", "1"}));
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
             {{}, "-1.234,56", ""},
             {{}, "-12,50", "-1250"},
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

TEST_CASE("a person is told of amounts and dates that are not read as they are meant") {
    const std::string amountNote = "which is read wrongly without --decimal-separator ,\n";
    const std::string dateNote = "not understood; --date-format says the form, such as ";
    struct Row {
        std::vector<std::string> texts;  ///< of DTPOSTED and TRNAMT in turn
        std::string error;
    };
    for (const Row& row : std::vector<Row>{
             {{"20240101", "-0,99"}, "-: 1 amount: \"-0,99\" has a decimal comma, " + amountNote},
             {{"20240101", "1.234,5", "20240101", "1,00", "20240101", "1.00"},
              "-: 2 amounts such as \"1.234,5\" have a decimal comma, " + amountNote},
             {{"20240101", "1,234", "20240101", "1,234.56", "20240101", "1,234,56", "20240101", "1,"}, ""},
             {{"31.12.2024", "1"}, "-: 1 date: \"31.12.2024\" is " + dateNote + "dd.MM.yyyy\n"},
             {{"01/02/2024", "1", "soon", "1"}, "-: 1 date: \"01/02/2024\" is " + dateNote + "dd/MM/yyyy\n"},
             {{"01-31-2024", "1", "1.2.3", "1"},
              "-: 2 dates such as \"01-31-2024\" are " + dateNote + "MM-dd-yyyy\n"},
             {{"2024/12/31 noon", "1"}, "-: 1 date: \"2024/12/31 noon\" is " + dateNote + "dd.MM.yyyy\n"},
         }) {
        std::string transactions;
        for (std::size_t i = 0; i < row.texts.size(); i += 2)
            transactions +=
                "<STMTTRN><DTPOSTED>" + row.texts[i] + "<TRNAMT>" + row.texts[i + 1] + "</STMTTRN>";
        const std::string document = transactionsWith(transactions);
        CAPTURE(document);
        for (const char* command : {"show", "csv", "accounts", "report"})
            CHECK(tool({command, "-"}, document).error == row.error);
        const std::string error =
            tool({"show", "--decimal-separator", ",", "--date-format", "dd.MM.yyyy", "-"}, document).error;
        CHECK(error.find("comma") == std::string::npos);
        CHECK(error.find("not understood") == std::string::npos);
        CHECK(tool({"json", "-"}, document).error == "");
    }
}

TEST_CASE("a person is told of decimal points that are read wrongly with the separators given") {
    const std::string document = transactionsWith(
        "<STMTTRN><TRNAMT>-12.50</STMTTRN><STMTTRN><TRNAMT>1.250,00</STMTTRN><STMTTRN><TRNAMT>7</STMTTRN>"
        "<STMTTRN><TRNAMT>12.5</STMTTRN>");
    CHECK(tool({"show", "--decimal-separator", ",", "-"}, document).error ==
          "-: 1 amount: \"-12.50\" has a decimal point, which is read wrongly with the separators that are "
          "given\n");
    CHECK(tool({"show", "--decimal-separator", ".", "-"}, document).error.find("wrongly with") ==
          std::string::npos);
}
