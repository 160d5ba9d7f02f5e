// SPDX-License-Identifier: Apache-2.0
#include "tool/commands.h"

using namespace brackwell::tests;

namespace {

std::string entry(const std::string& date, const std::string& amount, const std::string& elements) {
    return "<STMTTRN><TRNTYPE>POS<DTPOSTED>" + date + "<TRNAMT>" + amount + elements + "</STMTTRN>";
}

/// The lines of the page, each with single blanks between its words.
std::vector<std::string> pageOf(std::vector<std::string> options, const std::string& transactions) {
    options.insert(options.begin(), "payees");
    std::vector<std::string> lines = linesOf(outputOf(options, transactionsWith(transactions)));
    for (std::string& line : lines) {
        const auto isBlankAgain = [](char a, char b) { return a == ' ' && b == ' '; };
        line.erase(std::unique(line.begin(), line.end(), isBlankAgain), line.end());
    }
    return lines;
}

using Lines = std::vector<std::string>;

const std::string kTransactions = entry("20240305", "-3.20", "<FITID>1<NAME>Cafe Lumiere") +
                                  entry("20240307", "2500", "<FITID>2<NAME>Salary") +
                                  entry("20240402", "-4.10", "<FITID>3<NAME>CAFÉ LUMIÈRE") +
                                  entry("20240403", "1.10", "<FITID>4<NAME>Café Lumière") +
                                  entry("20240301", "-900", "<FITID>5<PAYEE><NAME>Landlord</PAYEE>");

}  // namespace

TEST_CASE("payees are listed by what they got, with their months where there are several") {
    CHECK(pageOf({}, kTransactions) == Lines{"USD", "Payee Month Count In Out",
                                             "Landlord 2024-03 1 0.00 -900.00", "Cafe Lumiere 3 1.10 -7.30",
                                             " 2024-03 1 0.00 -3.20", " 2024-04 2 1.10 -4.10",
                                             "Salary 2024-03 1 2500.00 0.00"});
}

TEST_CASE("payees have the order that is wanted") {
    struct Row {
        std::string order;
        Lines names;
    };
    for (const Row& row : std::vector<Row>{{"date", {"Landlord", "Cafe", "Salary"}},
                                           {"amount", {"Landlord", "CAFÉ", "Salary"}}}) {
        CAPTURE(row.order);
        Lines names;
        for (const std::string& line : pageOf({"--sort", row.order}, kTransactions))
            if (!line.starts_with(' ') && line != "USD" && !line.starts_with("Payee"))
                names.push_back(line.substr(0, line.find(' ')));
        CHECK(names == row.names);
    }
    const std::string two = entry("20240302", "-5", "<NAME>B") + entry("20240301", "9", "<NAME>A") +
                            entry("20240303", "-7", "<NAME>B") + entry("20240304", "-1", "<NAME>C");
    CHECK(pageOf({"--sort", "date"}, two).at(2).starts_with("A "));
    CHECK(pageOf({"--sort", "amount"}, two).at(2).starts_with("B "));
}

TEST_CASE("payees are of the transactions that are wanted") {
    CHECK(pageOf({"--since", "2024-04-01"}, kTransactions) ==
          Lines{"USD", "Payee Month Count In Out", "CAFÉ LUMIÈRE 2024-04 2 1.10 -4.10"});
    CHECK(pageOf({"--search", "landlord"}, kTransactions).size() == 3);
    CHECK(pageOf({"--search", "nobody"}, kTransactions) ==
          Lines{"There are no such transactions in bank and card statements."});
}

TEST_CASE("what has no name or no date is listed, too") {
    CHECK(pageOf({}, entry("20240301", "-1", "") + "<STMTTRN><TRNAMT>-2</STMTTRN>") ==
          Lines{"USD", "Payee Month Count In Out", "(no payee) 2 0.00 -3.00", " no date 1 0.00 -2.00",
                " 2024-03 1 0.00 -1.00"});
}

TEST_CASE("a memo is the payee of a transaction that names none") {
    CHECK(pageOf({}, entry("20240301", "-1", "<MEMO>Bakery") + entry("20240302", "-2", "<NAME>BAKERY") +
                         entry("20240303", "-7", "<NAME>Landlord<MEMO>Rent") +
                         entry("20240304", "-0.5", "")) ==
          Lines{"USD", "Payee Month Count In Out", "Landlord 2024-03 1 0.00 -7.00",
                "Bakery 2024-03 2 0.00 -3.00", "(no payee) 2024-03 1 0.00 -0.50"});
}

TEST_CASE("amounts in different currencies are not added, and a transaction counts once") {
    const TemporaryFolder folder;
    std::string euros = transactionsWith(entry("20240301", "-2", "<FITID>1<NAME>Cafe"));
    euros.replace(euros.find("USD"), 3, "EUR");
    folder.file("a.ofx", transactionsWith(entry("20240301", "-1", "<FITID>1<NAME>Cafe")));
    folder.file("b.ofx", euros);
    const Finished finished = tool({"payees", folder.path(), folder.path("a.ofx")});
    CHECK(finished.status == 0);
    const std::vector<std::string> lines = linesOf(finished.output);
    REQUIRE(lines.size() == 7);
    CHECK(lines[0] == "EUR");
    CHECK(lines[2].ends_with("-2.00"));
    CHECK(lines[4] == "USD");
    CHECK(lines[6].ends_with("-1.00"));
}

TEST_CASE("amounts in another currency than the account's are counted and left out of the sums") {
    const std::string foreign = "<NAME>Cafe<CURRENCY><CURSYM>CHF</CURRENCY>";
    const Lines lines = pageOf({}, entry("20240301", "-1", foreign) + entry("20240302", "-2", "<NAME>Cafe"));
    REQUIRE(lines.size() == 4);
    CHECK(lines[2] == "Cafe 2024-03 2 0.00 -2.00");
    CHECK(lines[3] == "Left out 1 amount in another currency");
}
