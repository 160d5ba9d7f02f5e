// SPDX-License-Identifier: Apache-2.0
#include "investments/transaction.h"

#include <brackwell/investments.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "investments/currency.h"
#include "investments/getters.h"

namespace brackwell {
namespace investments {
namespace {

// A field that the standard has under several names lists them all; a transaction has only one of them. The
// long forms of memo and identifier are the exception: they count before the short ones.
// clang-format off
constexpr FieldRow kTransactionRows[] = {
    {"fiTransactionID", FieldRule::text, {"FITID"}},
    {"serverTransactionID", FieldRule::text, {"SRVRTID", "SRVRTID2"}},
    {"tradeDate", FieldRule::date, {"DTTRADE"}},
    {"settleDate", FieldRule::date, {"DTSETTLE"}},
    {"memo", FieldRule::text, {"MEMO", "MEMO2"}},
    {"reversalFITID", FieldRule::text, {"REVERSALFITID"}},
    {"securityID", FieldRule::text, {"UNIQUEID"}},
    {"securityIDType", FieldRule::text, {"UNIQUEIDTYPE"}},
    {"tradeType", FieldRule::word, {"BUYTYPE", "SELLTYPE", "OPTBUYTYPE", "OPTSELLTYPE"}},
    {"incomeType", FieldRule::word, {"INCOMETYPE"}},
    {"optionAction", FieldRule::word, {"OPTACTION"}},
    {"transferAction", FieldRule::word, {"TFERACTION"}},
    {"positionType", FieldRule::word, {"POSTYPE"}},
    {"sellReason", FieldRule::word, {"SELLREASON"}},
    {"units", FieldRule::amount, {"UNITS"}},
    {"unitPrice", FieldRule::amount, {"UNITPRICE"}},
    {"total", FieldRule::amount, {"TOTAL"}},
    {"commission", FieldRule::amount, {"COMMISSION"}},
    {"fees", FieldRule::amount, {"FEES"}},
    {"taxes", FieldRule::amount, {"TAXES"}},
    {"load", FieldRule::amount, {"LOAD"}},
    {"markup", FieldRule::amount, {"MARKUP"}},
    {"markdown", FieldRule::amount, {"MARKDOWN"}},
    {"withholding", FieldRule::amount, {"WITHHOLDING"}},
    {"stateWithholding", FieldRule::amount, {"STATEWITHHOLDING"}},
    {"penalty", FieldRule::amount, {"PENALTY"}},
    {"accruedInterest", FieldRule::amount, {"ACCRDINT"}},
    {"gain", FieldRule::amount, {"GAIN"}},
    {"averageCostBasis", FieldRule::amount, {"AVGCOSTBASIS"}},
    {"reversalFees", FieldRule::amount, {"REVERSALFEES"}},
    {"isTaxExempt", FieldRule::flag, {"TAXEXEMPT"}},
    {"securitySubAccount", FieldRule::word, {"SUBACCTSEC"}},
    {"fundSubAccount", FieldRule::word, {"SUBACCTFUND"}},
    {"fromSubAccount", FieldRule::word, {"SUBACCTFROM"}},
    {"toSubAccount", FieldRule::word, {"SUBACCTTO"}},
    {"sharesPerContract", FieldRule::amount, {"SHPERCTRCT"}},
    {"secured", FieldRule::word, {"SECURED"}},
    {"relatedFITID", FieldRule::text, {"RELFITID"}},
    {"relationType", FieldRule::word, {"RELTYPE"}},
    {"oldUnits", FieldRule::amount, {"OLDUNITS"}},
    {"newUnits", FieldRule::amount, {"NEWUNITS"}},
    {"numerator", FieldRule::amount, {"NUMERATOR"}},
    {"denominator", FieldRule::amount, {"DENOMINATOR"}},
    {"cashForFractions", FieldRule::amount, {"FRACCASH"}},
    {"purchaseDate", FieldRule::date, {"DTPURCHASE"}},
    {"source401k", FieldRule::word, {"INV401KSOURCE"}},
    {"loanID", FieldRule::text, {"LOANID"}},
    {"loanPrincipal", FieldRule::amount, {"LOANPRINCIPAL"}},
    {"loanInterest", FieldRule::amount, {"LOANINTEREST"}},
    {"payrollDate", FieldRule::date, {"DTPAYROLL"}},
    {"isPriorYearContribution", FieldRule::flag, {"PRIORYEARCONTRIB"}},
    {"transferAccount", FieldRule::object, {"INVACCTFROM"}},
    {"bankTransaction", FieldRule::object, {"STMTTRN"}},
    {"currency", FieldRule::currency, {"CURRENCY"}},
    {"originalCurrency", FieldRule::currency, {"ORIGCURRENCY"}},
    {"currencySymbol", FieldRule::part, {"CURSYM"}},
    {"currencyRate", FieldRule::rate, {"CURRATE"}},
};
constexpr PartRow kTransactionParts[] = {"INVTRAN", "INVBUY", "INVSELL", "SECID"};
// clang-format on

}  // namespace

constexpr FieldTable kTransactionFields(kTransactionRows, kTransactionParts);

}  // namespace investments

using namespace investments;

OptionalText InvestmentTransaction::fiTransactionID() const noexcept {
    return textOf(*this, kTransactionFields.text("fiTransactionID"));
}
OptionalText InvestmentTransaction::serverTransactionID() const noexcept {
    return textOf(*this, kTransactionFields.text("serverTransactionID"));
}
std::optional<Date> InvestmentTransaction::tradeDate() const noexcept {
    return dateOf(*this, kTransactionFields.date("tradeDate"));
}
std::optional<Date> InvestmentTransaction::settleDate() const noexcept {
    return dateOf(*this, kTransactionFields.date("settleDate"));
}
OptionalText InvestmentTransaction::memo() const noexcept {
    return textOf(*this, kTransactionFields.text("memo"));
}
OptionalText InvestmentTransaction::reversalFITID() const noexcept {
    return textOf(*this, kTransactionFields.text("reversalFITID"));
}
OptionalText InvestmentTransaction::securityID() const noexcept {
    return textOf(*this, kTransactionFields.text("securityID"));
}
OptionalText InvestmentTransaction::securityIDType() const noexcept {
    return textOf(*this, kTransactionFields.text("securityIDType"));
}
std::optional<TradeType> InvestmentTransaction::tradeType() const noexcept {
    return wordOf<TradeType>(*this, kTransactionFields.word("tradeType"));
}
std::optional<IncomeType> InvestmentTransaction::incomeType() const noexcept {
    return wordOf<IncomeType>(*this, kTransactionFields.word("incomeType"));
}
std::optional<OptionAction> InvestmentTransaction::optionAction() const noexcept {
    return wordOf<OptionAction>(*this, kTransactionFields.word("optionAction"));
}
std::optional<TransferAction> InvestmentTransaction::transferAction() const noexcept {
    return wordOf<TransferAction>(*this, kTransactionFields.word("transferAction"));
}
std::optional<PositionType> InvestmentTransaction::positionType() const noexcept {
    return wordOf<PositionType>(*this, kTransactionFields.word("positionType"));
}
std::optional<SellReason> InvestmentTransaction::sellReason() const noexcept {
    return wordOf<SellReason>(*this, kTransactionFields.word("sellReason"));
}
std::optional<Decimal> InvestmentTransaction::units() const noexcept {
    return amountOf(*this, kTransactionFields.amount("units"));
}
std::optional<Decimal> InvestmentTransaction::unitPrice() const noexcept {
    return amountOf(*this, kTransactionFields.amount("unitPrice"));
}
std::optional<Decimal> InvestmentTransaction::total() const noexcept {
    return amountOf(*this, kTransactionFields.amount("total"));
}
std::optional<Decimal> InvestmentTransaction::commission() const noexcept {
    return amountOf(*this, kTransactionFields.amount("commission"));
}
std::optional<Decimal> InvestmentTransaction::fees() const noexcept {
    return amountOf(*this, kTransactionFields.amount("fees"));
}
std::optional<Decimal> InvestmentTransaction::taxes() const noexcept {
    return amountOf(*this, kTransactionFields.amount("taxes"));
}
std::optional<Decimal> InvestmentTransaction::load() const noexcept {
    return amountOf(*this, kTransactionFields.amount("load"));
}
std::optional<Decimal> InvestmentTransaction::markup() const noexcept {
    return amountOf(*this, kTransactionFields.amount("markup"));
}
std::optional<Decimal> InvestmentTransaction::markdown() const noexcept {
    return amountOf(*this, kTransactionFields.amount("markdown"));
}
std::optional<Decimal> InvestmentTransaction::withholding() const noexcept {
    return amountOf(*this, kTransactionFields.amount("withholding"));
}
std::optional<Decimal> InvestmentTransaction::stateWithholding() const noexcept {
    return amountOf(*this, kTransactionFields.amount("stateWithholding"));
}
std::optional<Decimal> InvestmentTransaction::penalty() const noexcept {
    return amountOf(*this, kTransactionFields.amount("penalty"));
}
std::optional<Decimal> InvestmentTransaction::accruedInterest() const noexcept {
    return amountOf(*this, kTransactionFields.amount("accruedInterest"));
}
std::optional<Decimal> InvestmentTransaction::gain() const noexcept {
    return amountOf(*this, kTransactionFields.amount("gain"));
}
std::optional<Decimal> InvestmentTransaction::averageCostBasis() const noexcept {
    return amountOf(*this, kTransactionFields.amount("averageCostBasis"));
}
std::optional<Decimal> InvestmentTransaction::reversalFees() const noexcept {
    return amountOf(*this, kTransactionFields.amount("reversalFees"));
}
std::optional<bool> InvestmentTransaction::isTaxExempt() const noexcept {
    return flagOf(*this, kTransactionFields.flag("isTaxExempt"));
}
std::optional<SubAccount> InvestmentTransaction::securitySubAccount() const noexcept {
    return wordOf<SubAccount>(*this, kTransactionFields.word("securitySubAccount"));
}
std::optional<SubAccount> InvestmentTransaction::fundSubAccount() const noexcept {
    return wordOf<SubAccount>(*this, kTransactionFields.word("fundSubAccount"));
}
std::optional<SubAccount> InvestmentTransaction::fromSubAccount() const noexcept {
    return wordOf<SubAccount>(*this, kTransactionFields.word("fromSubAccount"));
}
std::optional<SubAccount> InvestmentTransaction::toSubAccount() const noexcept {
    return wordOf<SubAccount>(*this, kTransactionFields.word("toSubAccount"));
}
std::optional<Decimal> InvestmentTransaction::sharesPerContract() const noexcept {
    return amountOf(*this, kTransactionFields.amount("sharesPerContract"));
}
std::optional<OptionSecurity> InvestmentTransaction::secured() const noexcept {
    return wordOf<OptionSecurity>(*this, kTransactionFields.word("secured"));
}
OptionalText InvestmentTransaction::relatedFITID() const noexcept {
    return textOf(*this, kTransactionFields.text("relatedFITID"));
}
std::optional<RelationType> InvestmentTransaction::relationType() const noexcept {
    return wordOf<RelationType>(*this, kTransactionFields.word("relationType"));
}
std::optional<Decimal> InvestmentTransaction::oldUnits() const noexcept {
    return amountOf(*this, kTransactionFields.amount("oldUnits"));
}
std::optional<Decimal> InvestmentTransaction::newUnits() const noexcept {
    return amountOf(*this, kTransactionFields.amount("newUnits"));
}
std::optional<Decimal> InvestmentTransaction::numerator() const noexcept {
    return amountOf(*this, kTransactionFields.amount("numerator"));
}
std::optional<Decimal> InvestmentTransaction::denominator() const noexcept {
    return amountOf(*this, kTransactionFields.amount("denominator"));
}
std::optional<Decimal> InvestmentTransaction::cashForFractions() const noexcept {
    return amountOf(*this, kTransactionFields.amount("cashForFractions"));
}
std::optional<Date> InvestmentTransaction::purchaseDate() const noexcept {
    return dateOf(*this, kTransactionFields.date("purchaseDate"));
}
std::optional<Source401k> InvestmentTransaction::source401k() const noexcept {
    return wordOf<Source401k>(*this, kTransactionFields.word("source401k"));
}
OptionalText InvestmentTransaction::loanID() const noexcept {
    return textOf(*this, kTransactionFields.text("loanID"));
}
std::optional<Decimal> InvestmentTransaction::loanPrincipal() const noexcept {
    return amountOf(*this, kTransactionFields.amount("loanPrincipal"));
}
std::optional<Decimal> InvestmentTransaction::loanInterest() const noexcept {
    return amountOf(*this, kTransactionFields.amount("loanInterest"));
}
std::optional<Date> InvestmentTransaction::payrollDate() const noexcept {
    return dateOf(*this, kTransactionFields.date("payrollDate"));
}
std::optional<bool> InvestmentTransaction::isPriorYearContribution() const noexcept {
    return flagOf(*this, kTransactionFields.flag("isPriorYearContribution"));
}
std::optional<TransactionCurrency> InvestmentTransaction::currency() const {
    static constexpr CurrencyFields kCurrencyFields(kTransactionFields);
    return currencyOf(*this, kCurrencyFields);
}

std::shared_ptr<TvOFXInvestmentAccount> InvestmentTransaction::transferAccount() const {
    const auto node =
        recordsOf(*this).dictionary(recordOf(*this), kTransactionFields.object("transferAccount"));
    return node ? TvOFXInvestmentAccount::initWithParseDict(node) : nullptr;
}

std::shared_ptr<TvOFXStatementTransaction> InvestmentTransaction::bankTransaction() const noexcept {
    const std::uint32_t number = recordOf(*this).extra;  // counted from 1, so that 0 is none
    return number != 0 ? recordsOf(*this).bankTransactions[number - 1] : nullptr;
}

InvestmentTransactionKind InvestmentTransaction::kind() const noexcept {
    return static_cast<InvestmentTransactionKind>(recordOf(*this).kind);
}

namespace investments {

TradeAmounts tradeAmountsOf(const InvestmentTransaction& transaction) noexcept {
    const Records& records = recordsOf(transaction);
    const Record& record = recordOf(transaction);
    const auto amount = [&](std::size_t field) { return records.amountAt(record, field); };
    return {amount(kTransactionFields.amount("units")),
            amount(kTransactionFields.amount("unitPrice")),
            amount(kTransactionFields.amount("total")),
            {amount(kTransactionFields.amount("commission")), amount(kTransactionFields.amount("fees")),
             amount(kTransactionFields.amount("taxes")), amount(kTransactionFields.amount("load")),
             amount(kTransactionFields.amount("withholding")),
             amount(kTransactionFields.amount("stateWithholding")),
             amount(kTransactionFields.amount("penalty"))}};
}

}  // namespace investments
}  // namespace brackwell
