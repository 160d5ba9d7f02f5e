// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <vector>

#include "document.h"
#include "enumeration.h"
#include "investment_record.h"

namespace brackwell::python {

template <>
const std::vector<Field<Amounts401k>>& fieldsOf<Amounts401k>() {
    using It = Amounts401k;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("cash", &It::cash, "CASHBAL; of a balance only."),
        field<It>("preTax", &It::preTax, "PRETAX."),
        field<It>("afterTax", &It::afterTax, "AFTERTAX."),
        field<It>("match", &It::match, "MATCH: of the employer."),
        field<It>("profitSharing", &It::profitSharing, "PROFITSHARING."),
        field<It>("rollover", &It::rollover, "ROLLOVER."),
        field<It>("otherVested", &It::otherVested, "OTHERVEST."),
        field<It>("otherNonVested", &It::otherNonVested, "OTHERNONVEST."),
        field<It>("total", &It::total, "TOTAL."),
        field<It>("listed", &It::listed, "BAL, in document order; of a balance only."),
    };
    return *fields;
}

template <>
const std::vector<Field<Period401k>>& fieldsOf<Period401k>() {
    using It = Period401k;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("start", &It::start, "DTSTART."),
        field<It>("end", &It::end, "DTEND."),
        field<It>("contributions", &It::contributions, "CONTRIBUTIONS."),
        field<It>("withdrawals", &It::withdrawals, "WITHDRAWALS."),
        field<It>("earnings", &It::earnings, "EARNINGS."),
    };
    return *fields;
}

template <>
const std::vector<Field<Loan401k>>& fieldsOf<Loan401k>() {
    using It = Loan401k;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("loanID", &It::loanID, "LOANID."),
        field<It>("explanation", &It::explanation, "LOANDESC."),
        field<It>("initialBalance", &It::initialBalance, "INITIALLOANBAL."),
        field<It>("startDate", &It::startDate, "LOANSTARTDATE."),
        field<It>("currentBalance", &It::currentBalance, "CURRENTLOANBAL."),
        field<It>("asOf", &It::asOf, "DTASOF."),
        field<It>("rate", &It::rate, "LOANRATE: percent a year."),
        field<It>("payment", &It::payment, "LOANPMTAMT."),
        field<It>("frequency", &It::frequency, "LOANPMTFREQ."),
        field<It>("initialPayments", &It::initialPayments, "LOANPMTSINITIAL: how many."),
        field<It>("remainingPayments", &It::remainingPayments, "LOANPMTSREMAINING: how many."),
        field<It>("maturityDate", &It::maturityDate, "LOANMATURITYDATE."),
        field<It>("projectedInterest", &It::projectedInterest, "LOANTOTALPROJINTEREST."),
        field<It>("interestToDate", &It::interestToDate, "LOANINTERESTTODATE."),
        field<It>("nextPaymentDate", &It::nextPaymentDate, "LOANNEXTPMTDATE."),
    };
    return *fields;
}

template <>
const std::vector<Field<Plan401k>>& fieldsOf<Plan401k>() {
    using It = Plan401k;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("employerName", &It::employerName, "EMPLOYERNAME."),
        field<It>("planID", &It::planID, "PLANID."),
        field<It>("joinDate", &It::joinDate, "PLANJOINDATE."),
        field<It>("employerContact", &It::employerContact, "EMPLOYERCONTACTINFO."),
        field<It>("brokerContact", &It::brokerContact, "BROKERCONTACTINFO."),
        field<It>("preTaxDeferral", &It::preTaxDeferral, "DEFERPCTPRETAX: percent of pay."),
        field<It>("afterTaxDeferral", &It::afterTaxDeferral, "DEFERPCTAFTERTAX: percent of pay."),
        field<It>("matchPercent", &It::matchPercent, "MATCHPCT."),
        field<It>("maximumMatchAmount", &It::maximumMatchAmount, "MAXMATCHAMT."),
        field<It>("maximumMatchPercent", &It::maximumMatchPercent, "MAXMATCHPCT."),
        field<It>("matchYearStart", &It::matchYearStart, "STARTOFYEAR."),
        field<It>("baseMatchAmount", &It::baseMatchAmount, "BASEMATCHAMT."),
        field<It>("baseMatchPercent", &It::baseMatchPercent, "BASEMATCHPCT."),
        field<It>("vestedPercent", &It::vestedPercent, "CURRENTVESTPCT."),
        field<It>("nextVestDate", &It::nextVestDate, "VESTDATE."),
        field<It>("nextVestedPercent", &It::nextVestedPercent, "VESTPCT, from that date on."),
        field<It>("loans", &It::loans, "LOANINFO, in document order."),
        field<It>("periods", &It::periods, "of INV401KSUMMARY, in document order."),
    };
    return *fields;
}

void bindPlans(nb::module_& module) {
    bindEnumeration<LoanPaymentFrequency>(module, "LOANPMTFREQ");
    bindInvestment<Amounts401k>(module, "Money of a retirement plan by its source.");
    bindInvestment<Period401k>(module, "What was paid in, taken out and earned in a period.");
    bindInvestment<Loan401k>(module, "A loan that a plan gave to its member.");
    bindInvestment<Plan401k>(module, "A retirement plan (INV401K).");
}

}  // namespace brackwell::python
