// SPDX-License-Identifier: Apache-2.0
#include "tool/investment_documents.h"

using namespace brackwell::tests;

TEST_CASE("the filter chooses the same in all commands") {
    struct Row {
        std::vector<std::string> options;
        std::vector<std::size_t> counts;  ///< statements, transactions, positions, securities
    };
    for (const Row& row : std::vector<Row>{{{}, {1, 2, 2, 3}},
                                           {{"--search", "alder rail"}, {1, 1, 1, 1}},
                                           {{"--search", "NBDY"}, {1, 0, 0, 1}},
                                           {{"--search", "payroll"}, {1, 1, 0, 0}},
                                           {{"--since", "2024-01-06"}, {1, 1, 2, 3}},
                                           {{"--until", "2024-01-06"}, {1, 1, 2, 3}},
                                           {{"--account", "1122"}, {1, 2, 2, 3}},
                                           {{"--account", "9"}, {0, 0, 0, 0}}}) {
        CAPTURE(row.options);
        std::vector<std::string> options = row.options;
        options.insert(options.begin(), "json");
        const Json json = Json::parse(outputOf(options, sample()));
        const Json& statements = json["investmentStatements"];
        std::size_t transactions = 0;
        std::size_t positions = 0;
        for (const Json& held : statements) {
            transactions += held["transactions"].size();
            positions += held["positions"].size();
        }
        CHECK(std::vector<std::size_t>{statements.size(), transactions, positions,
                                       json["securities"].size()} == row.counts);
        const MarkupPage page = reportOf(sample(), row.options);
        CHECK(page.rows("transactions").size() == row.counts.at(1));
        CHECK(page.rows("holdings").size() == row.counts.at(2));
        options.front() = "show";
        const bool showsNobody = contains(outputOf(options, sample()), "Nobody Holds");
        CHECK(showsNobody == (page.rows("securities").size() == 1));
    }
}

TEST_CASE("in JSON, too, investments are sorted, and names are looked for in the other files") {
    const auto ids = [](const Json& json) {
        Cells texts;
        for (const Json& transaction : json["investmentStatements"][0]["transactions"])
            texts.push_back(transaction.contains("fiTransactionID")
                                ? transaction["fiTransactionID"].get<std::string>()
                                : transaction["transaction"]["fiTransactionID"].get<std::string>());
        return texts;
    };
    CHECK(ids(Json::parse(outputOf({"json"}, sample()))) == Cells{"T1", "B1"});
    CHECK(ids(Json::parse(outputOf({"json", "--sort", "date"}, sample()))) == Cells{"B1", "T1"});
    const TemporaryFolder folder;
    const std::string bare =
        folder.file("bare.ofx", version1(held("1234567", purchase("T1", "20240110", "100", "-7"), "")));
    const std::string list =
        folder.file("list.ofx", version1(securityList(security("100", "Alder", "ALDR"))));
    const auto lines = linesOf(tool({"json", "--quiet", "--search", "aldr", bare, list}).output);
    REQUIRE(lines.size() == 2);
    CHECK(ids(Json::parse(lines.at(0))) == Cells{"T1"});
    CHECK(Json::parse(lines.at(0))["file"] == bare);
}
