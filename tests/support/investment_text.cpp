// SPDX-License-Identifier: Apache-2.0
#include "support/investment_text.h"

#include <brackwell/investments.h>

#include <type_traits>

namespace brackwell::tests {
namespace {

/// Writes what getters answer, a line each: "  units = 100". What is absent has no line.
class Lines {
public:
    explicit Lines(std::string_view element) { text_.append(element).append("\n"); }

    void add(std::string_view name, OptionalText value) {
        if (value) line(name, *value);
    }
    void add(std::string_view name, const std::optional<Decimal>& value) {
        if (value) line(name, value->toString());
    }
    void add(std::string_view name, std::optional<Date> value) {
        if (value) line(name, dateDescription(*value));
    }
    void add(std::string_view name, std::optional<bool> value) {
        if (value) line(name, *value ? "yes" : "no");
    }
    void add(std::string_view name, const std::optional<TransactionCurrency>& value) {
        if (!value) return;
        line(name, value->symbol + (value->isConverted ? " converted at " : " at ") +
                       (value->rate ? value->rate->toString() : "?"));
    }
    template <class Word>
    requires std::is_enum_v<Word>
    void add(std::string_view name, std::optional<Word> value) {
        if (value) line(name, std::to_string(static_cast<unsigned>(*value)));
    }
    void add(std::string_view name, const std::shared_ptr<TvOFXInvestmentAccount>& value) {
        if (value)
            line(name, std::string(value->brokerID().text().value_or("?")) + " " +
                           std::string(value->accountID().text().value_or("?")));
    }
    void add(std::string_view name, const std::shared_ptr<TvOFXStatus>& value) {
        if (value) line(name, value->description());
    }
    void add(std::string_view name, const std::shared_ptr<TvOFXStatementTransaction>& value) {
        if (!value) return;
        Lines transaction(value->className());
        transaction.add("fiTransactionID", value->fiTransactionID());
        transaction.add("datePosted", value->datePosted());
        transaction.add("amount", value->amount());
        transaction.add("payeeName", value->payeeName());
        transaction.add("currency", currencyOf(*value));
        line(name, transaction.take());
    }
    void add(std::string_view name, const SecurityIdentifier& value) {
        if (value.id) line(name, std::string(*value.id) + " " + std::string(value.idType.value_or("?")));
    }
    template <class Object>
    requires std::is_base_of_v<InvestmentRecord, Object>
    void add(std::string_view name, const std::optional<Object>& value) {
        if (value) line(name, textOf(*value));
    }
    template <class Object>
    void add(std::string_view name, const std::vector<Object>& values) {
        for (const Object& value : values) line(name, textOf(value));
    }
    template <class Object>
    void add(std::string_view name, const InvestmentList<Object>& values) {
        for (const Object& value : values) line(name, textOf(value));
    }

    std::string take() { return std::move(text_); }

private:
    void line(std::string_view name, std::string_view value) {
        if (value.ends_with('\n')) value.remove_suffix(1);
        text_.append("  ").append(name).append(" = ");
        for (const char c : value) text_.append(c == '\n' ? "\n  " : std::string_view(&c, 1));
        text_.append("\n");
    }
    std::string text_;
};

}  // namespace

std::string textOf(const InvestmentTransaction& object) {
    Lines lines(object.elementName());
    lines.add("fiTransactionID", object.fiTransactionID());
    lines.add("serverTransactionID", object.serverTransactionID());
    lines.add("tradeDate", object.tradeDate());
    lines.add("settleDate", object.settleDate());
    lines.add("memo", object.memo());
    lines.add("reversalFITID", object.reversalFITID());
    lines.add("securityID", object.securityID());
    lines.add("securityIDType", object.securityIDType());
    lines.add("tradeType", object.tradeType());
    lines.add("incomeType", object.incomeType());
    lines.add("optionAction", object.optionAction());
    lines.add("transferAction", object.transferAction());
    lines.add("positionType", object.positionType());
    lines.add("sellReason", object.sellReason());
    lines.add("units", object.units());
    lines.add("unitPrice", object.unitPrice());
    lines.add("total", object.total());
    lines.add("commission", object.commission());
    lines.add("fees", object.fees());
    lines.add("taxes", object.taxes());
    lines.add("load", object.load());
    lines.add("markup", object.markup());
    lines.add("markdown", object.markdown());
    lines.add("withholding", object.withholding());
    lines.add("stateWithholding", object.stateWithholding());
    lines.add("penalty", object.penalty());
    lines.add("accruedInterest", object.accruedInterest());
    lines.add("gain", object.gain());
    lines.add("averageCostBasis", object.averageCostBasis());
    lines.add("reversalFees", object.reversalFees());
    lines.add("isTaxExempt", object.isTaxExempt());
    lines.add("securitySubAccount", object.securitySubAccount());
    lines.add("fundSubAccount", object.fundSubAccount());
    lines.add("fromSubAccount", object.fromSubAccount());
    lines.add("toSubAccount", object.toSubAccount());
    lines.add("sharesPerContract", object.sharesPerContract());
    lines.add("secured", object.secured());
    lines.add("relatedFITID", object.relatedFITID());
    lines.add("relationType", object.relationType());
    lines.add("oldUnits", object.oldUnits());
    lines.add("newUnits", object.newUnits());
    lines.add("numerator", object.numerator());
    lines.add("denominator", object.denominator());
    lines.add("cashForFractions", object.cashForFractions());
    lines.add("purchaseDate", object.purchaseDate());
    lines.add("source401k", object.source401k());
    lines.add("loanID", object.loanID());
    lines.add("loanPrincipal", object.loanPrincipal());
    lines.add("loanInterest", object.loanInterest());
    lines.add("payrollDate", object.payrollDate());
    lines.add("isPriorYearContribution", object.isPriorYearContribution());
    lines.add("currency", object.currency());
    lines.add("transferAccount", object.transferAccount());
    lines.add("bankTransaction", object.bankTransaction());
    return lines.take();
}

std::string textOf(const Position& object) {
    Lines lines(object.elementName());
    lines.add("securityID", object.securityID());
    lines.add("securityIDType", object.securityIDType());
    lines.add("subAccount", object.subAccount());
    lines.add("positionType", object.positionType());
    lines.add("units", object.units());
    lines.add("unitPrice", object.unitPrice());
    lines.add("marketValue", object.marketValue());
    lines.add("priceDate", object.priceDate());
    lines.add("averageCostBasis", object.averageCostBasis());
    lines.add("memo", object.memo());
    lines.add("source401k", object.source401k());
    lines.add("secured", object.secured());
    lines.add("unitsStreet", object.unitsStreet());
    lines.add("unitsUser", object.unitsUser());
    lines.add("reinvestsDividends", object.reinvestsDividends());
    lines.add("reinvestsGains", object.reinvestsGains());
    lines.add("currency", object.currency());
    return lines.take();
}

std::string textOf(const ListedBalance& object) {
    Lines lines(object.elementName());
    lines.add("name", object.name());
    lines.add("explanation", object.explanation());
    lines.add("type", object.type());
    lines.add("value", object.value());
    lines.add("asOf", object.asOf());
    lines.add("currency", object.currency());
    return lines.take();
}

std::string textOf(const InvestmentBalance& object) {
    Lines lines(object.elementName());
    lines.add("cash", object.cash());
    lines.add("margin", object.margin());
    lines.add("shortBalance", object.shortBalance());
    lines.add("buyingPower", object.buyingPower());
    lines.add("listed", object.listed());
    return lines.take();
}

std::string textOf(const Amounts401k& object) {
    Lines lines(object.elementName());
    lines.add("cash", object.cash());
    lines.add("preTax", object.preTax());
    lines.add("afterTax", object.afterTax());
    lines.add("match", object.match());
    lines.add("profitSharing", object.profitSharing());
    lines.add("rollover", object.rollover());
    lines.add("otherVested", object.otherVested());
    lines.add("otherNonVested", object.otherNonVested());
    lines.add("total", object.total());
    lines.add("listed", object.listed());
    return lines.take();
}

std::string textOf(const Period401k& object) {
    Lines lines(object.elementName());
    lines.add("start", object.start());
    lines.add("end", object.end());
    lines.add("contributions", object.contributions());
    lines.add("withdrawals", object.withdrawals());
    lines.add("earnings", object.earnings());
    return lines.take();
}

std::string textOf(const Loan401k& object) {
    Lines lines(object.elementName());
    lines.add("loanID", object.loanID());
    lines.add("explanation", object.explanation());
    lines.add("initialBalance", object.initialBalance());
    lines.add("startDate", object.startDate());
    lines.add("currentBalance", object.currentBalance());
    lines.add("asOf", object.asOf());
    lines.add("rate", object.rate());
    lines.add("payment", object.payment());
    lines.add("frequency", object.frequency());
    lines.add("initialPayments", object.initialPayments());
    lines.add("remainingPayments", object.remainingPayments());
    lines.add("maturityDate", object.maturityDate());
    lines.add("projectedInterest", object.projectedInterest());
    lines.add("interestToDate", object.interestToDate());
    lines.add("nextPaymentDate", object.nextPaymentDate());
    return lines.take();
}

std::string textOf(const Plan401k& object) {
    Lines lines(object.elementName());
    lines.add("employerName", object.employerName());
    lines.add("planID", object.planID());
    lines.add("joinDate", object.joinDate());
    lines.add("employerContact", object.employerContact());
    lines.add("brokerContact", object.brokerContact());
    lines.add("preTaxDeferral", object.preTaxDeferral());
    lines.add("afterTaxDeferral", object.afterTaxDeferral());
    lines.add("matchPercent", object.matchPercent());
    lines.add("maximumMatchAmount", object.maximumMatchAmount());
    lines.add("maximumMatchPercent", object.maximumMatchPercent());
    lines.add("matchYearStart", object.matchYearStart());
    lines.add("baseMatchAmount", object.baseMatchAmount());
    lines.add("baseMatchPercent", object.baseMatchPercent());
    lines.add("vestedPercent", object.vestedPercent());
    lines.add("nextVestDate", object.nextVestDate());
    lines.add("nextVestedPercent", object.nextVestedPercent());
    lines.add("loans", object.loans());
    lines.add("periods", object.periods());
    return lines.take();
}

std::string textOf(const AssetPortion& object) {
    Lines lines(object.elementName());
    lines.add("assetClass", object.assetClass());
    lines.add("institutionAssetClass", object.institutionAssetClass());
    lines.add("percent", object.percent());
    return lines.take();
}

std::string textOf(const Security& object) {
    Lines lines(object.elementName());
    lines.add("id", object.id());
    lines.add("idType", object.idType());
    lines.add("name", object.name());
    lines.add("ticker", object.ticker());
    lines.add("institutionID", object.institutionID());
    lines.add("rating", object.rating());
    lines.add("unitPrice", object.unitPrice());
    lines.add("priceDate", object.priceDate());
    lines.add("memo", object.memo());
    lines.add("assetClass", object.assetClass());
    lines.add("institutionAssetClass", object.institutionAssetClass());
    lines.add("typeDescription", object.typeDescription());
    lines.add("optionType", object.optionType());
    lines.add("strikePrice", object.strikePrice());
    lines.add("expiryDate", object.expiryDate());
    lines.add("sharesPerContract", object.sharesPerContract());
    lines.add("parValue", object.parValue());
    lines.add("debtType", object.debtType());
    lines.add("debtClass", object.debtClass());
    lines.add("couponRate", object.couponRate());
    lines.add("couponDate", object.couponDate());
    lines.add("couponFrequency", object.couponFrequency());
    lines.add("callPrice", object.callPrice());
    lines.add("yieldToCall", object.yieldToCall());
    lines.add("callDate", object.callDate());
    lines.add("callType", object.callType());
    lines.add("yieldToMaturity", object.yieldToMaturity());
    lines.add("maturityDate", object.maturityDate());
    lines.add("fundType", object.fundType());
    lines.add("stockType", object.stockType());
    lines.add("yield", object.yield());
    lines.add("yieldDate", object.yieldDate());
    lines.add("currency", object.currency());
    lines.add("underlying", object.underlying());
    lines.add("assetPortions", object.assetPortions());
    return lines.take();
}

std::string textOf(const InvestmentStatement& object) {
    Lines lines(object.elementName());
    lines.add("transactionUID", object.transactionUID());
    lines.add("status", object.status());
    lines.add("account", object.account());
    lines.add("asOf", object.asOf());
    lines.add("currency", object.currency());
    lines.add("start", object.start());
    lines.add("end", object.end());
    lines.add("marketingInfo", object.marketingInfo());
    lines.add("transactions", object.transactions());
    lines.add("positions", object.positions());
    lines.add("balance", object.balance());
    lines.add("balance401k", object.balance401k());
    lines.add("plan401k", object.plan401k());
    return lines.take();
}

std::string investmentTextOf(const std::optional<ParseDictionary>& document,
                             const std::shared_ptr<TvOFXHelper>& helper) {
    std::string text;
    for (const InvestmentStatement& statement : investmentStatements(document, helper))
        text.append(textOf(statement));
    for (const Security& security : securities(document, helper)) text.append(textOf(security));
    return text;
}

}  // namespace brackwell::tests
