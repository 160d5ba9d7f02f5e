// SPDX-License-Identifier: Apache-2.0
#include "tool/investment_documents.h"

using namespace brackwell::tests;

TEST_CASE("an investment account is shown with balances, holdings and transactions") {
    const std::string output = "\n" + outputOf({"show"}, sample());
    for (const char* line : {"\nInvestment account ****1122\n", "\nBroker            broker\n",
                             "\nAs of             2024-06-30\n", "\nCash              5.50\n",
                             "\nHolding         Ticker  Units  Price  Value  As of\n",
                             "\nAlder Railways  ALDR      2.5      4  10.00  2024-06-30\n",
                             "\nTotal             2 positions: worth 40.00 USD\n",
                             "\n2024-01-10  Bought stock      Alder Railways      2      3  -7.00\n",
                             "\n2024-01-05  Bank transaction  Payroll                       50.00  Salary\n",
                             "\nTotal             2 transactions: in 50.00, out -7.00, sum 43.00 USD\n",
                             "\nSecurities that no holding or transaction uses\n", "\nNobody Holds  NBDY"}) {
        CAPTURE(line);
        CAPTURE(output);
        CHECK(contains(output, line));
    }
    CHECK_FALSE(contains(output, "not shown"));
    CHECK_FALSE(contains(output, "778899001122"));
    CHECK(contains(outputOf({"show", "--full"}, sample()), "Investment account 778899001122"));
}

TEST_CASE("the filter chooses what is shown of an investment account") {
    const std::string found = outputOf({"show", "--search", "hbrl"}, sample());
    CHECK(contains(found, "Harbour, Lines"));
    CHECK_FALSE(contains(found, "Alder"));
    CHECK(contains(found, "No transactions match the filter."));
    CHECK(contains(outputOf({"show", "--search", "salary"}, sample()), "No holdings match the filter."));
    CHECK(outputOf({"show", "--search", "nothing of it"}, sample()) == "Nothing matches the search.\n");
    CHECK(contains(outputOf({"show", "--search", "nobody"}, sample()), "Nobody Holds"));
    const std::string other = outputOf({"show", "--account", "5678"}, sample());
    CHECK(contains(other, "No statement matches the accounts asked for."));
    CHECK_FALSE(contains(other, "Investment account"));
}

TEST_CASE("amounts in another currency are summed up by their rate") {
    const std::string foreign = position("1", "10", "<CURRENCY><CURRATE>1.1<CURSYM>EUR</CURRENCY>");
    CHECK(contains(outputOf({"show"}, version1(held("1234567", "", foreign + position("2", "5")))),
                   "2 positions: worth 16.00 USD\n"));
    const std::string unknown = position("1", "10", "<CURRENCY><CURSYM>EUR</CURRENCY>");
    CHECK(contains(outputOf({"show"}, version1(held("1234567", "", unknown + position("2", "5")))),
                   "2 positions: worth 5.00 USD (1 without a value)\n"));
}

TEST_CASE("all that is known of a retirement plan is shown") {
    const std::string plan =
        "<INV401K><EMPLOYERNAME>Quarry<PLANID>P1<MATCHINFO><MATCHPCT>50<MAXMATCHAMT>1200.5</MATCHINFO>"
        "<LOANINFO><LOANID>L1<CURRENTLOANBAL>640.25<LOANRATE>4.5<LOANPMTSINITIAL>60</LOANINFO>"
        "<INV401KSUMMARY><YEARTODATE><DTSTART>20240101<DTEND>20240630"
        "<CONTRIBUTIONS><PRETAX>100<TOTAL>100</CONTRIBUTIONS><EARNINGS><TOTAL>7.5</EARNINGS></YEARTODATE>"
        "</INV401KSUMMARY></INV401K><INV401KBAL><PRETAX>90<TOTAL>90</INV401KBAL>";
    const std::string output = outputOf({"show"}, version1(held("1234567", "", "", plan)));
    CAPTURE(output);
    const auto has = [&output](std::string_view label, std::string_view value) {
        for (std::string line : linesOf(output)) {
            if (!line.starts_with(std::string(label) + "  ")) continue;
            line.erase(0, line.find_first_not_of(' ', label.size()));
            const std::size_t gap = line.find("  ");
            if (gap == line.npos) continue;
            line.erase(gap, line.find_first_not_of(' ', gap) - gap - 2);
            if (line == value) return true;
        }
        return false;
    };
    CHECK(has("Plan", "employer name  Quarry"));
    CHECK(has("Plan", "plan ID  P1"));
    CHECK(has("Plan", "match percent  50 %"));
    CHECK(has("Plan", "maximum match amount  1200.50"));
    CHECK(has("Loan", "current balance  640.25"));
    CHECK(has("Loan", "rate  4.5 %"));
    CHECK(has("Loan", "initial payments  60"));
    CHECK(has("Year to date", "end  2024-06-30"));
    CHECK(has("Year to date, contributions", "pre tax  100.00"));
    CHECK(has("Year to date, earnings", "total  7.50"));
    CHECK(has("Balance", "pre tax  90.00"));
}
