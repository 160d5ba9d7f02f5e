// SPDX-License-Identifier: Apache-2.0
#include "tool/investment_documents.h"

using namespace brackwell::tests;

namespace {

/// The rows of a table without quoted fields, as name and field.
std::vector<std::map<std::string, std::string>> tableOf(const std::string& csv) {
    const auto split = [](std::string line) {
        if (line.ends_with('\r')) line.pop_back();
        Cells cells(1);
        for (const char c : line) c == ',' ? void(cells.emplace_back()) : cells.back().push_back(c);
        return cells;
    };
    const std::vector<std::string> lines = linesOf(csv);
    const Cells names = split(lines.at(0));
    std::vector<std::map<std::string, std::string>> rows;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const Cells cells = split(lines[i]);
        REQUIRE(cells.size() == names.size());
        rows.emplace_back();
        for (std::size_t k = 0; k < cells.size(); ++k) rows.back().emplace(names[k], cells[k]);
    }
    return rows;
}

std::string commas(std::string text) {
    for (std::size_t at; (at = text.find("Harbour, Lines")) != text.npos;) text.erase(at + 7, 1);
    return text;
}

/// A table of the sample, in which no field needs quotes.
std::vector<std::map<std::string, std::string>> sampleTable(std::vector<std::string> options) {
    options.insert(options.begin(), "csv");
    return tableOf(outputOf(options, commas(sample())));
}

}  // namespace

TEST_CASE("a table of bank transactions says what of investments it does not have") {
    struct Row {
        std::string document;
        std::string text;
    };
    const std::string bought = purchase("T1", "20240110", "100", "-7");
    for (const Row& row : std::vector<Row>{
             {sample(),
              "-: 2 investment transactions, 2 positions and 3 securities are not in this table; use --kind "
              "investments, positions or securities.\n"},
             {version1(held("1234567", bought, "")),
              "-: 1 investment transaction is not in this table; use --kind investments.\n"},
             {version1(held("1234567", bought + bought, "")),
              "-: 2 investment transactions are not in this table; use --kind investments.\n"},
             {version1(held("1234567", "", position("1", "10")) + securityList(security("1", "A", "B"))),
              "-: 1 position and 1 security are not in this table; use --kind positions or securities.\n"},
             {transactionsWith(transaction("20240101", "1")), ""}}) {
        CAPTURE(row.text);
        CAPTURE(tool({"csv", "-"}, row.document).error);
        const Finished finished = tool({"csv", "-"}, row.document);
        CHECK(finished.status == 0);
        CHECK((row.text.empty() ? !contains(finished.error, "in this table")
                                : contains(finished.error, row.text)));
        CHECK_FALSE(contains(tool({"csv", "--quiet", "-"}, row.document).error, "table"));
        CHECK(tool({"csv", "--kind", "investments", "-"}, row.document).error.find("table") ==
              std::string::npos);
    }
    CHECK(tool({"csv", "--strict", "--quiet", "-"}, sample()).status == 3);
}

TEST_CASE("only what was asked for is missed in a table of bank transactions") {
    CHECK_FALSE(contains(tool({"csv", "--account", "5678", "-"}, sample()).error, "table"));
    CHECK(contains(tool({"csv", "--account", "1122", "--search", "alder", "-"}, sample()).error,
                   "-: 1 investment transaction, 1 position and 1 security are not in this table"));
    CHECK(contains(tool({"csv", "--until", "2024-01-05", "--search", "salary", "-"}, sample()).error,
                   "-: 1 investment transaction is not in this table"));
}

TEST_CASE("a table of investments has the bank transactions of the account, too") {
    const auto rows = sampleTable({"--kind", "investments"});
    REQUIRE(rows.size() == 2);
    CHECK(rows[0].at("kind") == "BUYSTOCK");
    CHECK(rows[0].at("brokerID") == "broker");
    CHECK(rows[0].at("accountID") == "778899001122");
    CHECK(rows[0].at("currency") == "USD");
    CHECK(rows[0].at("fiTransactionID") == "T1");
    CHECK(rows[0].at("tradeDate") == "2024-01-10T00:00:00.000Z");
    CHECK(rows[0].at("securityID") == "100");
    CHECK(rows[0].at("securityIDType") == "CUSIP");
    CHECK(rows[0].at("securityName") == "Alder Railways");
    CHECK(rows[0].at("ticker") == "ALDR");
    CHECK(rows[0].at("units") == "2");
    CHECK(rows[0].at("unitPrice") == "3");
    CHECK(rows[0].at("commission") == "1");
    CHECK(rows[0].at("total") == "-7");
    CHECK(rows[0].at("tradeType") == "BUY");
    CHECK(rows[1].at("kind") == "INVBANKTRAN");
    CHECK(rows[1].at("fiTransactionID") == "B1");
    CHECK(rows[1].at("tradeDate") == "2024-01-05T00:00:00.000Z");
    CHECK(rows[1].at("total") == "50");
    CHECK(rows[1].at("transactionType") == "CREDIT");
    CHECK(rows[1].at("payeeName") == "Payroll");
    CHECK(rows[1].at("memo") == "Salary");
    CHECK(rows[1].at("fundSubAccount") == "CASH");
}

TEST_CASE("tables of positions and securities have a row for each") {
    const auto positions = sampleTable({"--kind", "positions"});
    REQUIRE(positions.size() == 2);
    CHECK(positions[1].at("securityName") == "Harbour Lines");
    CHECK(positions[1].at("asOf") == "2024-06-30T00:00:00.000Z");
    CHECK(positions[1].at("units") == "2.5");
    CHECK(positions[1].at("marketValue") == "30");
    const auto securities = sampleTable({"--kind", "securities"});
    REQUIRE(securities.size() == 3);
    CHECK(securities[2].at("id") == "300");
    CHECK(securities[2].at("ticker") == "NBDY");
    CHECK(securities[2].at("unitPrice") == "4");
}

TEST_CASE("the filter chooses rows of all tables") {
    struct Row {
        std::vector<std::string> options;
        std::vector<std::size_t> counts;  ///< transactions, positions, securities
    };
    for (const Row& row : std::vector<Row>{{{"--search", "aldr"}, {1, 1, 1}},
                                           {{"--search", "PAYROLL"}, {1, 0, 0}},
                                           {{"--since", "2024-01-06"}, {1, 2, 3}},
                                           {{"--until", "2024-01-06"}, {1, 2, 3}},
                                           {{"--account", "1122"}, {2, 2, 3}},
                                           {{"--account", "9"}, {0, 0, 0}}}) {
        CAPTURE(row.options);
        std::vector<std::size_t> counts;
        for (const char* kind : {"investments", "positions", "securities"}) {
            std::vector<std::string> options = row.options;
            options.insert(options.end(), {"--kind", kind});
            counts.push_back(sampleTable(options).size());
        }
        CHECK(counts == row.counts);
    }
    CHECK(sampleTable({"--kind", "investments", "--sort", "date"}).at(0).at("fiTransactionID") == "B1");
    CHECK(sampleTable({"--kind", "investments", "--sort", "amount"}).at(0).at("fiTransactionID") == "T1");
    CHECK(sampleTable({"--kind", "positions", "--sort", "amount"}).at(0).at("securityID") == "100");
}

TEST_CASE("a security that only another file describes is found there") {
    const TemporaryFolder folder;
    const std::string bare = folder.file("bare.ofx", version1(held("1234567", "", position("100", "10"))));
    const std::string lists = folder.file(
        "lists.ofx",
        version1(held("1234567", "", position("200", "10")) +
                 securityList(security("100", "Alder", "ALDR") + security("200", "Harbour", "HBRL"))));
    const auto rows = tableOf(tool({"csv", "--quiet", "--kind", "positions", bare, lists}).output);
    REQUIRE(rows.size() == 2);
    CHECK(rows[0].at("file") == bare);
    CHECK(rows[0].at("securityName") == "Alder");
    CHECK(rows[1].at("securityName") == "Harbour");
    CHECK(contains(tool({"show", "--quiet", bare, lists}).output, "\nAlder    ALDR"));
    CHECK(contains(tool({"show", "--quiet", bare}).output, "\n100 "));
}

TEST_CASE("a table of investments has no columns that only accounts of banks have") {
    for (const char* kind : {"investments", "positions", "securities"}) {
        CAPTURE(kind);
        const std::string header = linesOf(outputOf({"csv", "--kind", kind}, sample())).at(0) + ",";
        for (const char* column : {"accountClass", "bankID", "branchID", "accountType", "dateUserInit",
                                   "dateFundsAvailable", "datePosted"}) {
            CAPTURE(column);
            CHECK_FALSE(contains(header, std::string(column) + ","));
        }
    }
}

TEST_CASE("totals can have the decimals of the document, those of bank transactions, too") {
    const std::string document =
        version1(held("1234567", purchase("T1", "20240110", "100", "-7.50") + moneyIn("T2", "5.00"), ""));
    CHECK(outputOf({"csv", "--kind", "investments", "--decimals", "--columns", "total"}, document) ==
          "total\r\n-7.50\r\n5.00\r\n");
    CHECK(outputOf({"csv", "--kind", "investments", "--columns", "total"}, document) ==
          "total\r\n-7.5\r\n5\r\n");
}
