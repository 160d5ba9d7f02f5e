// SPDX-License-Identifier: Apache-2.0
#include "investments/words.h"

#include <doctest/doctest.h>

#include <set>

#include "investments/documents.h"

using namespace brackwell;
using namespace brackwell::tests;
using namespace brackwell::investments;

namespace {

/// Each word has a value of its own, and every enumerator from 1 on has a word.
template <class Value>
void checkWords(std::size_t count) {
    std::set<unsigned> values;
    for (const Word<Value>& word : wordsOf(Value())) {
        CAPTURE(std::string(word.text));
        CHECK(valueOfWord<Value>(word.text) == word.value);
        CHECK(word.value != Value::unknown);
        values.insert(static_cast<unsigned>(word.value));
    }
    CHECK(values.size() == count);
    CHECK(*values.rbegin() == count);
    CHECK(valueOfWord<Value>("ELSE") == Value::unknown);
    CHECK(valueOfWord<Value>("") == Value::unknown);
    CHECK_FALSE(valueOfWord<Value>(std::nullopt));
}

}  // namespace

TEST_CASE("every word of the closed lists has its enumerator, and every other text is unknown") {
    checkWords<IncomeType>(5);
    checkWords<TradeType>(8);
    checkWords<OptionAction>(3);
    checkWords<TransferAction>(2);
    checkWords<PositionType>(2);
    checkWords<SubAccount>(4);
    checkWords<Source401k>(7);
    checkWords<RelationType>(4);
    checkWords<OptionSecurity>(2);
    checkWords<SellReason>(3);
    checkWords<BalanceType>(3);
    checkWords<DebtType>(2);
    checkWords<DebtClass>(4);
    checkWords<CouponFrequency>(5);
    checkWords<CallType>(4);
    checkWords<OptionType>(2);
    checkWords<FundType>(3);
    checkWords<StockType>(4);
    checkWords<AssetClass>(7);
    checkWords<LoanPaymentFrequency>(10);
}

TEST_CASE("words stand for what the OFX standard says") {
    CHECK(valueOfWord<IncomeType>("CGLONG") == IncomeType::longTermGain);
    CHECK(valueOfWord<IncomeType>("DIV") == IncomeType::dividend);
    CHECK(valueOfWord<TradeType>("BUYTOCOVER") == TradeType::buyToCover);
    CHECK(valueOfWord<TradeType>("SELLTOCLOSE") == TradeType::sellToClose);
    CHECK(valueOfWord<PositionType>("SHORT") == PositionType::shortPosition);
    CHECK(valueOfWord<SubAccount>("MARGIN") == SubAccount::margin);
    CHECK(valueOfWord<Source401k>("OTHERNONVEST") == Source401k::otherNonVested);
    CHECK(valueOfWord<OptionSecurity>("NAKED") == OptionSecurity::naked);
    CHECK(valueOfWord<CouponFrequency>("SEMIANNUAL") == CouponFrequency::semiannual);
    CHECK(valueOfWord<OptionType>("PUT") == OptionType::put);
    CHECK(valueOfWord<AssetClass>("INTLSTOCK") == AssetClass::internationalStock);
    CHECK(valueOfWord<LoanPaymentFrequency>("BIMONTHLY") == LoanPaymentFrequency::bimonthly);
}

TEST_CASE("an unknown word keeps its text, and a flag that is neither Y nor N is absent with it") {
    const auto transaction =
        transactionWith("<INCOME><INCOMETYPE>ROYALTY<TAXEXEMPT>MAYBE<SUBACCTSEC>CASH</INCOME>");
    CHECK(transaction.incomeType() == IncomeType::unknown);
    CHECK(transaction.text("incomeType") == "ROYALTY");
    CHECK_FALSE(transaction.isTaxExempt());
    CHECK(transaction.text("isTaxExempt") == "MAYBE");
    CHECK(transaction.securitySubAccount() == SubAccount::cash);
    CHECK_FALSE(transaction.text("no such field"));
    CHECK_FALSE(transaction.text("units"));
}
