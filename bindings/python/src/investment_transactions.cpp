// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <chrono>
#include <optional>
#include <vector>

#include "currency_columns.h"
#include "document.h"
#include "enumeration.h"
#include "investment_record.h"
#include "list.h"

namespace brackwell::python {

namespace {

std::optional<std::chrono::year_month_day> dayOfTrade(const InvestmentTransaction& transaction) {
    return dayOf(transaction.tradeDate());
}

}  // namespace

template <>
const std::vector<Field<InvestmentTransaction>>& fieldsOf<InvestmentTransaction>() {
    using It = InvestmentTransaction;
    static const auto* fields = [] {
        auto* made = new std::vector<Field<It>>{
            field<It>("date", dayOfTrade, "The day of trade_date, in UTC.").with(Use::derived),
            field<It>("kind", &It::kind, "What it is, by the name of its aggregate."),
            field<It>("fiTransactionID", &It::fiTransactionID, "FITID: the institution's identifier.")
                .as("id"),
            field<It>("serverTransactionID", &It::serverTransactionID, "SRVRTID2, else SRVRTID.")
                .as("server_id"),
            field<It>("tradeDate", &It::tradeDate, "DTTRADE."),
            field<It>("settleDate", &It::settleDate, "DTSETTLE."),
            field<It>("memo", &It::memo, "MEMO2, else MEMO."),
            field<It>("reversalFITID", &It::reversalFITID, "REVERSALFITID: of what this one reverses.")
                .as("reversal_id"),
            field<It>("securityID", &It::securityID, "UNIQUEID; see Securities.find."),
            field<It>("securityIDType", &It::securityIDType, "UNIQUEIDTYPE: CUSIP, ISIN and others."),
            field<It>("tradeType", &It::tradeType, "BUYTYPE, SELLTYPE, OPTBUYTYPE, OPTSELLTYPE."),
            field<It>("incomeType", &It::incomeType, "INCOMETYPE."),
            field<It>("optionAction", &It::optionAction, "OPTACTION."),
            field<It>("transferAction", &It::transferAction, "TFERACTION."),
            field<It>("positionType", &It::positionType, "POSTYPE."),
            field<It>("sellReason", &It::sellReason, "SELLREASON."),
            field<It>("units", &It::units, "UNITS: shares, contracts, or face value."),
            field<It>("unitPrice", &It::unitPrice, "UNITPRICE; of debts for 100 of face value."),
            field<It>("total", &It::total, "TOTAL: what went into or out of the account."),
            field<It>("commission", &It::commission, "COMMISSION."),
            field<It>("fees", &It::fees, "FEES."),
            field<It>("taxes", &It::taxes, "TAXES."),
            field<It>("load", &It::load, "LOAD: what a fund charges."),
            field<It>("markup", &It::markup, "MARKUP: part of the unit price."),
            field<It>("markdown", &It::markdown, "MARKDOWN: part of the unit price."),
            field<It>("withholding", &It::withholding, "WITHHOLDING: of federal taxes."),
            field<It>("stateWithholding", &It::stateWithholding, "STATEWITHHOLDING."),
            field<It>("penalty", &It::penalty, "PENALTY."),
            field<It>("accruedInterest", &It::accruedInterest, "ACCRDINT: not in the total."),
            field<It>("gain", &It::gain, "GAIN."),
            field<It>("averageCostBasis", &It::averageCostBasis, "AVGCOSTBASIS."),
            field<It>("reversalFees", &It::reversalFees, "REVERSALFEES."),
            field<It>("isTaxExempt", &It::isTaxExempt, "TAXEXEMPT: \"Y\" or \"N\"."),
            field<It>("securitySubAccount", &It::securitySubAccount, "SUBACCTSEC."),
            field<It>("fundSubAccount", &It::fundSubAccount, "SUBACCTFUND."),
            field<It>("fromSubAccount", &It::fromSubAccount, "SUBACCTFROM."),
            field<It>("toSubAccount", &It::toSubAccount, "SUBACCTTO."),
            field<It>("sharesPerContract", &It::sharesPerContract, "SHPERCTRCT."),
            field<It>("secured", &It::secured, "SECURED."),
            field<It>("relatedFITID", &It::relatedFITID, "RELFITID: of a transaction that belongs to it.")
                .as("related_id"),
            field<It>("relationType", &It::relationType, "RELTYPE."),
            field<It>("oldUnits", &It::oldUnits, "OLDUNITS: before a split."),
            field<It>("newUnits", &It::newUnits, "NEWUNITS: after it."),
            field<It>("numerator", &It::numerator, "NUMERATOR of the split's ratio."),
            field<It>("denominator", &It::denominator, "DENOMINATOR of the split's ratio."),
            field<It>("cashForFractions", &It::cashForFractions, "FRACCASH."),
            field<It>("purchaseDate", &It::purchaseDate, "DTPURCHASE."),
            field<It>("source401k", &It::source401k, "INV401KSOURCE."),
            field<It>("loanID", &It::loanID, "LOANID: the plan's loan that is repaid."),
            field<It>("loanPrincipal", &It::loanPrincipal, "LOANPRINCIPAL: the part that repays it."),
            field<It>("loanInterest", &It::loanInterest, "LOANINTEREST: the part that is interest."),
            field<It>("payrollDate", &It::payrollDate, "DTPAYROLL."),
            field<It>("isPriorYearContribution", &It::isPriorYearContribution,
                      "PRIORYEARCONTRIB: \"Y\" or \"N\"."),
            field<It>("transferAccount", &It::transferAccount,
                      "The other account of a transfer (INVACCTFROM)."),
            field<It>("bankTransaction", &It::bankTransaction,
                      "Of a BANK_TRANSACTION the transaction itself (STMTTRN).")
                .as("transaction"),
        };
        addCurrency<It>(
            *made, [](const It& object) { return object.currency(); },
            "The currency of the amounts, or the one that they were converted from (CURRENCY, ORIGCURRENCY); "
            "None when the account's is the only one.");
        return made;
    }();
    return *fields;
}

void bindInvestmentTransactions(nb::module_& module) {
    bindEnumeration<InvestmentTransactionKind>(
        module, "What an investment transaction is, by the name of its aggregate.");
    bindEnumeration<IncomeType>(module,
                                "INCOMETYPE; UNKNOWN for a word that the OFX standard does not have.");
    bindEnumeration<TradeType>(module, "BUYTYPE, SELLTYPE, OPTBUYTYPE and OPTSELLTYPE.");
    bindEnumeration<OptionAction>(module, "OPTACTION");
    bindEnumeration<TransferAction>(module, "TFERACTION");
    bindEnumeration<PositionType>(module, "POSTYPE");
    bindEnumeration<SubAccount>(module, "SUBACCTSEC, SUBACCTFUND, SUBACCTTO, SUBACCTFROM and HELDINACCT.");
    bindEnumeration<Source401k>(module, "INV401KSOURCE: where the money of a retirement plan came from.");
    bindEnumeration<RelationType>(module, "RELTYPE");
    bindEnumeration<OptionSecurity>(module, "SECURED");
    bindEnumeration<SellReason>(module, "SELLREASON");
    bindInvestment<InvestmentTransaction>(module,
                                          "A transaction of an investment account, whatever its kind. A "
                                          "total is negative when money leaves the "
                                          "account, units when a security does.");
    bindList<InvestmentTransaction>(module, "Investment transactions in the order of the document.");
}

}  // namespace brackwell::python
