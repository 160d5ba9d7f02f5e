// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include "investments/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::string textOf(const std::optional<Decimal>& number) { return number ? number->toString() : "agrees"; }

struct PositionRow {
    const char* what;
    std::string kind;
    std::string fields;
    std::string result;
};

struct TotalRow {
    const char* what;
    std::string kind;
    std::string fields;
    std::string result;
};

std::string held(const std::string& units, const std::string& price, const std::string& value) {
    return "<UNITS>" + units + "<UNITPRICE>" + price + "<MKTVAL>" + value;
}

}  // namespace

TEST_CASE("a position whose units and price make another value than its own is told") {
    const std::vector<PositionRow> rows{
        {"equal", "POSSTOCK", held("10", "2.50", "25.00"), "agrees"},
        {"not equal", "POSSTOCK", held("10", "2.50", "26.00"), "25"},
        {"a price rounded to cents", "POSMF", held("1000.123", "10.12", "10118.90"), "agrees"},
        {"more than that", "POSMF", held("1000.123", "10.12", "10140.00"), "10121.24476"},
        {"a price with more places is more exact", "POSMF", held("1000", "10.1234", "10124.00"), "10123.4"},
        {"a value in whole units", "POSSTOCK", held("3", "1.33", "4"), "agrees"},
        {"signs are not compared", "POSSTOCK", held("-10", "2.50", "25.00"), "agrees"},
        {"nor those of values", "POSOTHER", held("10", "2.50", "-25.00"), "agrees"},
        {"a debt for 100", "POSDEBT", held("5000", "98.5", "4925.00"), "agrees"},
        {"a debt for 1", "POSDEBT", held("5000", "0.985", "4925.00"), "agrees"},
        {"a debt that is neither", "POSDEBT", held("5000", "98.5", "5925.00"), "4925"},
        {"an option's shares are not known", "POSOPT", held("2", "1.50", "300.00"), "agrees"},
        {"half a cent of the price", "POSSTOCK", held("1000", "5.00", "5005.01"), "agrees"},
        {"more than half a cent", "POSSTOCK", held("1000", "5.00", "5006.00"), "5000"},
        {"half of the last place of units", "POSMF", held("10.123", "1000.00", "10123.50"), "agrees"},
        {"whole units are exact", "POSSTOCK", held("1", "50000", "50050"), "50000"},
        {"no price", "POSSTOCK", "<UNITS>10<MKTVAL>25.00", "agrees"},
        {"no value", "POSSTOCK", "<UNITS>10<UNITPRICE>2.50", "agrees"},
        {"no units", "POSSTOCK", "<UNITPRICE>2.50<MKTVAL>25.00", "agrees"},
        {"too many digits to multiply", "POSSTOCK",
         held("12345678901234567891.1", "98765432109876543211.1", "5"), "agrees"},
    };
    for (const PositionRow& row : rows) {
        CAPTURE(row.what);
        const auto position =
            positionWith("<" + row.kind + "><INVPOS>" + row.fields + "</INVPOS></" + row.kind + ">");
        CHECK(textOf(contradictingMarketValue(position)) == row.result);
    }
}

TEST_CASE("an option's value is that of all shares of its contracts") {
    const auto found = securitiesWith("<OPTINFO><SHPERCTRCT>100</OPTINFO>");
    const auto check = [&](const std::string& value) {
        const auto position = positionWith("<POSOPT>" + held("2", "1.50", value) + "</POSOPT>");
        // Fields may stand outside of INVPOS, too.
        return textOf(contradictingMarketValue(position, &found[0]));
    };
    CHECK(check("300.00") == "agrees");
    CHECK(check("3.00") == "agrees");
    CHECK(check("400.00") == "300");
}

TEST_CASE("bonds may be counted by number instead of by their face value") {
    const auto found = securitiesWith("<DEBTINFO><PARVALUE>500</DEBTINFO><DEBTINFO></DEBTINFO>");
    const auto position = positionWith("<POSDEBT>" + held("10", "99.5", "4975.00") + "</POSDEBT>");
    CHECK(textOf(contradictingMarketValue(position, &found[0])) == "agrees");
    CHECK(textOf(contradictingMarketValue(position, &found[1])) == "9.95");
    CHECK(textOf(contradictingMarketValue(position)) == "9.95");
    const auto usual = positionWith("<POSDEBT>" + held("10", "99.5", "9950.00") + "</POSDEBT>");
    CHECK(textOf(contradictingMarketValue(usual)) == "agrees");
    CHECK(textOf(contradictingMarketValue(usual, &found[0])) == "9.95");
    const auto transaction = transactionWith("<BUYDEBT><UNITS>10<UNITPRICE>99.5<TOTAL>-4975.00</BUYDEBT>");
    CHECK(textOf(contradictingTotal(transaction, &found[0])) == "agrees");
    CHECK(textOf(contradictingTotal(transaction)) == "9.95");
    const auto inParts = transactionWith("<SELLDEBT><UNITS>10<UNITPRICE>0.995<TOTAL>4975.00</SELLDEBT>");
    CHECK(textOf(contradictingTotal(inParts, &found[0])) == "agrees");
}

TEST_CASE("a transaction whose total is not its parts is told") {
    const std::string ten = "<UNITS>10<UNITPRICE>20.00";
    const std::string costs = "<COMMISSION>1<FEES>2<TAXES>3<LOAD>4";
    const std::vector<TotalRow> rows{
        {"a purchase", "BUYSTOCK", ten + costs + "<TOTAL>-210.00", "agrees"},
        {"a purchase without its costs", "BUYSTOCK", ten + costs + "<TOTAL>-200.00", "210"},
        {"a sale", "SELLSTOCK", "<UNITS>-10<UNITPRICE>20.00" + costs + "<TOTAL>190.00", "agrees"},
        {"a sale with costs added", "SELLMF", ten + costs + "<TOTAL>210.00", "190"},
        {"a sale with withholdings", "SELLMF",
         ten + "<WITHHOLDING>5<STATEWITHHOLDING>6<PENALTY>7<TOTAL>182.00", "agrees"},
        {"a reinvestment", "REINVEST", ten + "<FEES>1<TOTAL>-201.00", "agrees"},
        {"markup beside the price", "BUYOTHER", ten + "<MARKUP>0.50<TOTAL>-205.00", "agrees"},
        {"markup in the price", "BUYOTHER", ten + "<MARKUP>0.50<TOTAL>-200.00", "agrees"},
        {"markdown beside the price", "SELLOTHER", ten + "<MARKDOWN>0.50<TOTAL>195.00", "agrees"},
        {"a debt", "BUYDEBT", "<UNITS>1000<UNITPRICE>99.00<TOTAL>-990.00", "agrees"},
        {"a debt with accrued interest", "SELLDEBT", "<UNITS>1000<UNITPRICE>99.00<ACCRDINT>5<TOTAL>995.00",
         "agrees"},
        {"a debt that is neither", "BUYDEBT", "<UNITS>1000<UNITPRICE>99.00<TOTAL>-900.00", "990"},
        {"an option", "BUYOPT", "<UNITS>1<UNITPRICE>2.00<SHPERCTRCT>100<TOTAL>-200.00", "agrees"},
        {"an option that is not", "SELLOPT", "<UNITS>1<UNITPRICE>2.00<SHPERCTRCT>100<TOTAL>250.00", "200"},
        {"an option of unknown size", "SELLOPT", "<UNITS>1<UNITPRICE>2.00<TOTAL>250.00", "agrees"},
        {"costs as negative amounts", "BUYSTOCK", ten + "<COMMISSION>-9.95<FEES>-1<TOTAL>-210.95", "agrees"},
        {"of a sale", "SELLSTOCK", ten + "<COMMISSION>-9.95<TOTAL>190.05", "agrees"},
        {"a rebate", "BUYSTOCK", ten + "<COMMISSION>-9.95<TOTAL>-190.05", "agrees"},
        {"neither", "BUYSTOCK", ten + "<COMMISSION>-9.95<TOTAL>-200.00", "190.05"},
        {"one at a high price", "BUYSTOCK", "<UNITS>1<UNITPRICE>50000<TOTAL>-50050", "50000"},
        {"many at a low price", "BUYSTOCK", "<UNITS>1000<UNITPRICE>5.00<TOTAL>-5010", "5000"},
        {"a cent more", "BUYSTOCK", ten + "<TOTAL>-200.01", "agrees"},
        {"two cents more by rounding of the price", "BUYSTOCK", ten + "<TOTAL>-200.02", "agrees"},
        {"numbers of many digits", "BUYSTOCK",
         "<UNITS>123456789.123456789<UNITPRICE>9876543.21<TOTAL>-1219326312345679.00", "agrees"},
        {"a total of many digits", "BUYSTOCK", ten + "<TOTAL>-12345678901234567890.12", "200"},
        {"a cost of many places", "BUYSTOCK", ten + "<FEES>0.00000000000000001<TOTAL>-200.00", "agrees"},
        {"no total", "BUYSTOCK", ten, "agrees"},
        {"no units", "BUYSTOCK", "<UNITPRICE>20.00<TOTAL>-1", "agrees"},
        {"no purchase and no sale", "INCOME", ten + "<TOTAL>5.00", "agrees"},
        {"a transfer", "TRANSFER", ten + "<TOTAL>5.00", "agrees"},
    };
    for (const TotalRow& row : rows) {
        CAPTURE(row.what);
        const auto transaction = transactionWith("<" + row.kind + ">" + row.fields + "</" + row.kind + ">");
        CHECK(textOf(contradictingTotal(transaction)) == row.result);
    }
}
