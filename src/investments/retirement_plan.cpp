// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <string_view>

#include "investments/getters.h"

namespace brackwell {
namespace investments {
namespace {

// clang-format off
constexpr FieldRow kAmountsRows[] = {
    {"cash", FieldRule::amount, {"CASHBAL"}},
    {"preTax", FieldRule::amount, {"PRETAX"}},
    {"afterTax", FieldRule::amount, {"AFTERTAX"}},
    {"match", FieldRule::amount, {"MATCH"}},
    {"profitSharing", FieldRule::amount, {"PROFITSHARING"}},
    {"rollover", FieldRule::amount, {"ROLLOVER"}},
    {"otherVested", FieldRule::amount, {"OTHERVEST"}},
    {"otherNonVested", FieldRule::amount, {"OTHERNONVEST"}},
    {"total", FieldRule::amount, {"TOTAL"}},
};

constexpr FieldRow kPeriodRows[] = {
    {"start", FieldRule::date, {"DTSTART"}},
    {"end", FieldRule::date, {"DTEND"}},
};

constexpr FieldRow kLoanRows[] = {
    {"loanID", FieldRule::text, {"LOANID"}},
    {"explanation", FieldRule::text, {"LOANDESC"}},
    {"initialBalance", FieldRule::amount, {"INITIALLOANBAL"}},
    {"startDate", FieldRule::date, {"LOANSTARTDATE"}},
    {"currentBalance", FieldRule::amount, {"CURRENTLOANBAL"}},
    {"asOf", FieldRule::date, {"DTASOF"}},
    {"rate", FieldRule::amount, {"LOANRATE"}},
    {"payment", FieldRule::amount, {"LOANPMTAMT"}},
    {"frequency", FieldRule::word, {"LOANPMTFREQ"}},
    {"initialPayments", FieldRule::amount, {"LOANPMTSINITIAL"}},
    {"remainingPayments", FieldRule::amount, {"LOANPMTSREMAINING"}},
    {"maturityDate", FieldRule::date, {"LOANMATURITYDATE"}},
    {"projectedInterest", FieldRule::amount, {"LOANTOTALPROJINTEREST"}},
    {"interestToDate", FieldRule::amount, {"LOANINTERESTTODATE"}},
    {"nextPaymentDate", FieldRule::date, {"LOANNEXTPMTDATE"}},
};

constexpr FieldRow kPlanRows[] = {
    {"employerName", FieldRule::text, {"EMPLOYERNAME"}},
    {"planID", FieldRule::text, {"PLANID"}},
    {"joinDate", FieldRule::date, {"PLANJOINDATE"}},
    {"employerContact", FieldRule::text, {"EMPLOYERCONTACTINFO"}},
    {"brokerContact", FieldRule::text, {"BROKERCONTACTINFO"}},
    {"preTaxDeferral", FieldRule::amount, {"DEFERPCTPRETAX"}},
    {"afterTaxDeferral", FieldRule::amount, {"DEFERPCTAFTERTAX"}},
    {"matchPercent", FieldRule::amount, {"MATCHPCT"}},
    {"maximumMatchAmount", FieldRule::amount, {"MAXMATCHAMT"}},
    {"maximumMatchPercent", FieldRule::amount, {"MAXMATCHPCT"}},
    {"matchYearStart", FieldRule::date, {"STARTOFYEAR"}},
    {"baseMatchAmount", FieldRule::amount, {"BASEMATCHAMT"}},
    {"baseMatchPercent", FieldRule::amount, {"BASEMATCHPCT"}},
    {"vestedPercent", FieldRule::amount, {"CURRENTVESTPCT"}},
    {"nextVestDate", FieldRule::date, {"VESTDATE"}},
    {"nextVestedPercent", FieldRule::amount, {"VESTPCT"}},
};
constexpr PartRow kPlanParts[] = {"MATCHINFO", "VESTINFO"};
// clang-format on

}  // namespace

constexpr FieldTable kAmountsFields(kAmountsRows);
constexpr FieldTable kPeriodFields(kPeriodRows);
constexpr FieldTable kLoanFields(kLoanRows);
constexpr FieldTable kPlanFields(kPlanRows, kPlanParts);

}  // namespace investments

using namespace investments;

namespace {

/// The first amounts in a period with this name.
std::optional<Amounts401k> amountsNamed(const Period401k& period, std::string_view name) {
    for (const Amounts401k& amounts : innerObjects<Amounts401k>(period, RecordType::amounts))
        if (amounts.elementName() == name) return amounts;
    return std::nullopt;
}

}  // namespace

std::optional<Decimal> Amounts401k::cash() const noexcept {
    return amountOf(*this, kAmountsFields.amount("cash"));
}
std::optional<Decimal> Amounts401k::preTax() const noexcept {
    return amountOf(*this, kAmountsFields.amount("preTax"));
}
std::optional<Decimal> Amounts401k::afterTax() const noexcept {
    return amountOf(*this, kAmountsFields.amount("afterTax"));
}
std::optional<Decimal> Amounts401k::match() const noexcept {
    return amountOf(*this, kAmountsFields.amount("match"));
}
std::optional<Decimal> Amounts401k::profitSharing() const noexcept {
    return amountOf(*this, kAmountsFields.amount("profitSharing"));
}
std::optional<Decimal> Amounts401k::rollover() const noexcept {
    return amountOf(*this, kAmountsFields.amount("rollover"));
}
std::optional<Decimal> Amounts401k::otherVested() const noexcept {
    return amountOf(*this, kAmountsFields.amount("otherVested"));
}
std::optional<Decimal> Amounts401k::otherNonVested() const noexcept {
    return amountOf(*this, kAmountsFields.amount("otherNonVested"));
}
std::optional<Decimal> Amounts401k::total() const noexcept {
    return amountOf(*this, kAmountsFields.amount("total"));
}

std::vector<ListedBalance> Amounts401k::listed() const {
    return innerObjects<ListedBalance>(*this, RecordType::listedBalance);
}

std::optional<Date> Period401k::start() const noexcept { return dateOf(*this, kPeriodFields.date("start")); }
std::optional<Date> Period401k::end() const noexcept { return dateOf(*this, kPeriodFields.date("end")); }

std::optional<Amounts401k> Period401k::contributions() const { return amountsNamed(*this, "CONTRIBUTIONS"); }
std::optional<Amounts401k> Period401k::withdrawals() const { return amountsNamed(*this, "WITHDRAWALS"); }
std::optional<Amounts401k> Period401k::earnings() const { return amountsNamed(*this, "EARNINGS"); }

OptionalText Loan401k::loanID() const noexcept { return textOf(*this, kLoanFields.text("loanID")); }
OptionalText Loan401k::explanation() const noexcept { return textOf(*this, kLoanFields.text("explanation")); }
std::optional<Decimal> Loan401k::initialBalance() const noexcept {
    return amountOf(*this, kLoanFields.amount("initialBalance"));
}
std::optional<Date> Loan401k::startDate() const noexcept {
    return dateOf(*this, kLoanFields.date("startDate"));
}
std::optional<Decimal> Loan401k::currentBalance() const noexcept {
    return amountOf(*this, kLoanFields.amount("currentBalance"));
}
std::optional<Date> Loan401k::asOf() const noexcept { return dateOf(*this, kLoanFields.date("asOf")); }
std::optional<Decimal> Loan401k::rate() const noexcept { return amountOf(*this, kLoanFields.amount("rate")); }
std::optional<Decimal> Loan401k::payment() const noexcept {
    return amountOf(*this, kLoanFields.amount("payment"));
}
std::optional<LoanPaymentFrequency> Loan401k::frequency() const noexcept {
    return wordOf<LoanPaymentFrequency>(*this, kLoanFields.word("frequency"));
}
std::optional<Decimal> Loan401k::initialPayments() const noexcept {
    return amountOf(*this, kLoanFields.amount("initialPayments"));
}
std::optional<Decimal> Loan401k::remainingPayments() const noexcept {
    return amountOf(*this, kLoanFields.amount("remainingPayments"));
}
std::optional<Date> Loan401k::maturityDate() const noexcept {
    return dateOf(*this, kLoanFields.date("maturityDate"));
}
std::optional<Decimal> Loan401k::projectedInterest() const noexcept {
    return amountOf(*this, kLoanFields.amount("projectedInterest"));
}
std::optional<Decimal> Loan401k::interestToDate() const noexcept {
    return amountOf(*this, kLoanFields.amount("interestToDate"));
}
std::optional<Date> Loan401k::nextPaymentDate() const noexcept {
    return dateOf(*this, kLoanFields.date("nextPaymentDate"));
}

OptionalText Plan401k::employerName() const noexcept {
    return textOf(*this, kPlanFields.text("employerName"));
}
OptionalText Plan401k::planID() const noexcept { return textOf(*this, kPlanFields.text("planID")); }
std::optional<Date> Plan401k::joinDate() const noexcept {
    return dateOf(*this, kPlanFields.date("joinDate"));
}
OptionalText Plan401k::employerContact() const noexcept {
    return textOf(*this, kPlanFields.text("employerContact"));
}
OptionalText Plan401k::brokerContact() const noexcept {
    return textOf(*this, kPlanFields.text("brokerContact"));
}
std::optional<Decimal> Plan401k::preTaxDeferral() const noexcept {
    return amountOf(*this, kPlanFields.amount("preTaxDeferral"));
}
std::optional<Decimal> Plan401k::afterTaxDeferral() const noexcept {
    return amountOf(*this, kPlanFields.amount("afterTaxDeferral"));
}
std::optional<Decimal> Plan401k::matchPercent() const noexcept {
    return amountOf(*this, kPlanFields.amount("matchPercent"));
}
std::optional<Decimal> Plan401k::maximumMatchAmount() const noexcept {
    return amountOf(*this, kPlanFields.amount("maximumMatchAmount"));
}
std::optional<Decimal> Plan401k::maximumMatchPercent() const noexcept {
    return amountOf(*this, kPlanFields.amount("maximumMatchPercent"));
}
std::optional<Date> Plan401k::matchYearStart() const noexcept {
    return dateOf(*this, kPlanFields.date("matchYearStart"));
}
std::optional<Decimal> Plan401k::baseMatchAmount() const noexcept {
    return amountOf(*this, kPlanFields.amount("baseMatchAmount"));
}
std::optional<Decimal> Plan401k::baseMatchPercent() const noexcept {
    return amountOf(*this, kPlanFields.amount("baseMatchPercent"));
}
std::optional<Decimal> Plan401k::vestedPercent() const noexcept {
    return amountOf(*this, kPlanFields.amount("vestedPercent"));
}
std::optional<Date> Plan401k::nextVestDate() const noexcept {
    return dateOf(*this, kPlanFields.date("nextVestDate"));
}
std::optional<Decimal> Plan401k::nextVestedPercent() const noexcept {
    return amountOf(*this, kPlanFields.amount("nextVestedPercent"));
}

std::vector<Loan401k> Plan401k::loans() const { return innerObjects<Loan401k>(*this, RecordType::loan); }
std::vector<Period401k> Plan401k::periods() const {
    return innerObjects<Period401k>(*this, RecordType::period);
}

}  // namespace brackwell
