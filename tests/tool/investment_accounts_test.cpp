// SPDX-License-Identifier: Apache-2.0
#include "tool/investment_documents.h"

using namespace brackwell::tests;

TEST_CASE("an investment account is a row with what it is worth") {
    const std::string output = outputOf({"accounts"}, sample());
    CAPTURE(output);
    CHECK(contains(output, "Investment  ****1122    45.50  USD  2024-06-30  2"));
    CHECK_FALSE(contains(output, "no bank"));
    const std::string unknown = "<POSSTOCK><INVPOS><SECID><UNIQUEID>1</SECID></INVPOS></POSSTOCK>";
    CHECK_FALSE(contains(outputOf({"accounts"}, version1(held("1234567", "", unknown + position("2", "5")))),
                         "10.50"));
    const std::string no =
        outputOf({"accounts"}, version1(held("1234567", "", unknown + position("2", "5"))));
    CHECK(contains(no, "\nNo balance of ****4567: 1 of 2 positions has no value in USD.\n"));
    CHECK(contains(outputOf({"accounts"}, version1(held("1234567", "", unknown + unknown))),
                   "\nNo balance of ****4567: 2 of 2 positions have no value in USD.\n"));
    CHECK(contains(outputOf({"accounts", "--full"}, version1(held("1234567", "", "", ""))),
                   "\nNo balance of 1234567: it states neither positions nor available cash.\n"));
    CHECK_FALSE(contains(output, "No balance"));
    CHECK(contains(
        outputOf({"accounts"}, version1(held("1234567", "", "", "<INV401KBAL><TOTAL>77.25</INV401KBAL>"))),
        "77.25"));
    CHECK(outputOf({"accounts"}, version1("")) ==
          "The documents have neither statements nor lists of accounts.\n");
}

TEST_CASE("an investment account of several files is one row, with the latest value") {
    const TemporaryFolder folder;
    const std::string bought = purchase("T1", "20240110", "100", "-7");
    const std::string early = folder.file("1.ofx", version1(held("1234567", bought, position("1", "10"))));
    std::string later = version1(held("1234567", bought + moneyIn("B1", "5"), position("1", "20")));
    later.replace(later.find("<DTASOF>20240630"), 16, "<DTASOF>20240731");
    const std::string late = folder.file("2.ofx", later);
    const std::string output = tool({"accounts", "--quiet", late, early}).output;
    CAPTURE(output);
    CHECK(linesOf(output).size() == 2);
    CHECK(contains(output, "25.50  USD  2024-07-31  2"));
}

TEST_CASE("an investment transaction that stands in two statements is found by its identifier") {
    const TemporaryFolder folder;
    const std::string twice = purchase("T1", "20240110", "100", "-7");
    const std::string first =
        folder.file("1.ofx", version1(held("1234567", twice + twice + moneyIn("B1", "5"), "")));
    const std::string second =
        folder.file("2.ofx", version1(held("1234567", twice + moneyIn("B1", "6") + moneyIn("B2", "5"), "")));
    const std::string output = tool({"duplicates", "--quiet", first, second}).output;
    CAPTURE(output);
    CHECK(contains(output, "Investment account ****4567\n"));
    CHECK(contains(output, "Bought stock 100"));
    CHECK(contains(output, "in " + first.substr(0, 4)));
    CHECK_FALSE(contains(output, "B1"));  // of different amounts
    const std::string list = securityList(security("100", "Alder", "ALDR"));
    const std::string third =
        folder.file("3.ofx", version1(held("1234567", twice + moneyIn("B9", "5"), "") + list));
    const std::string fourth =
        folder.file("4.ofx", version1(held("1234567", twice + moneyIn("B9", "5"), "")));
    const std::string named = tool({"duplicates", "--quiet", fourth, third}).output;
    CHECK(contains(named, "Bought stock Alder  "));
    CHECK(contains(named, "Payroll  "));
    CHECK(tool({"duplicates", "--quiet", first}).output == "No transaction occurs in two statements.\n");
}

TEST_CASE("investment transactions in different currencies are not the same") {
    std::string bought = purchase("T1", "20240110", "100", "-7");
    bought.insert(bought.find("</INVBUY>"), "<CURRENCY><CURRATE>2<CURSYM>EUR</CURRENCY>");
    std::string paid = moneyIn("B1", "5");
    paid.insert(paid.find("</STMTTRN>"), "<CURRENCY><CURRATE>2<CURSYM>CHF</CURRENCY>");
    const TemporaryFolder folder;
    const std::string plain = folder.file(
        "1.ofx", version1(held("1234567", purchase("T1", "20240110", "100", "-7") + moneyIn("B1", "5"), "")));
    const std::string foreign = folder.file("2.ofx", version1(held("1234567", bought + paid, "")));
    const std::string again = folder.file("3.ofx", version1(held("1234567", bought + paid, "")));
    CHECK(tool({"duplicates", "--quiet", plain, foreign}).output ==
          "No transaction occurs in two statements.\n");
    const std::string output = tool({"duplicates", "--quiet", foreign, again}).output;
    CHECK(contains(output, "T1  2       -7.00  EUR\n"));
    CHECK(contains(output, "B1  2        5.00  CHF\n"));
}
