// SPDX-License-Identifier: Apache-2.0
#include "csv/investment_columns.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "csv/row.h"
#include "investments/facts.h"
#include "investments/security_lookup.h"
#include "text/transaction_text.h"

namespace tool {
namespace {

using namespace brackwell;

/// What a row is made from: the object, and what is asked of it more than once.
template <class Object>
struct Source {
    const Item<Object>& item;
    std::vector<InvestmentField> fields;
    std::optional<Security> security;
    std::optional<TransactionCurrency> currency;
    std::shared_ptr<TvOFXStatementTransaction> bank;  ///< of a transaction that is one
};

/// A column, and how its field is made; null: it is the object's field of this name.
template <class Object>
struct FieldColumn {
    std::string_view name;
    void (*add)(Row&, const Source<Object>&) = nullptr;
};

void addField(Row& row, const std::vector<InvestmentField>& fields, std::string_view name) {
    const auto field = std::ranges::find(fields, name, &InvestmentField::name);
    if (field == fields.end()) return row.add(OptionalText());
    switch (field->kind) {
        case InvestmentField::Kind::amount:
            return row.add(field->amount, field->text);
        case InvestmentField::Kind::date:
            return row.add(field->date);
        default:
            return row.add(OptionalText(field->text));
    }
}

// ---------------------------------------------------------------------------------------------
// Fields that are more than the object's own

template <class Object>
void addFile(Row& row, const Source<Object>& source) {
    row.add(OptionalText(source.item.file));
}

template <class Object>
void addBroker(Row& row, const Source<Object>& source) {
    const auto account = source.item.statement->account();
    row.add(account ? account->brokerID().text() : std::nullopt);
}

template <class Object>
void addAccount(Row& row, const Source<Object>& source) {
    const auto account = source.item.statement->account();
    row.add(account ? account->accountID().text() : std::nullopt);
}

template <class Object>
void addStatementCurrency(Row& row, const Source<Object>& source) {
    row.add(source.item.statement->currency());
}

template <class Object>
void addAsOf(Row& row, const Source<Object>& source) {
    row.add(source.item.statement->asOf());
}

template <class Object>
void addKind(Row& row, const Source<Object>& source) {
    row.add(OptionalText(source.item.object.elementName()));
}

template <class Object>
void addName(Row& row, const Source<Object>& source) {
    row.add(source.security ? source.security->name() : std::nullopt);
}

template <class Object>
void addTicker(Row& row, const Source<Object>& source) {
    row.add(source.security ? source.security->ticker() : std::nullopt);
}

template <class Object>
void addSymbol(Row& row, const Source<Object>& source) {
    row.add(source.currency ? OptionalText(source.currency->symbol) : std::nullopt);
}

template <class Object>
void addRate(Row& row, const Source<Object>& source) {
    row.add(source.currency ? source.currency->rate : std::nullopt);
}

template <class Object>
void addIsConverted(Row& row, const Source<Object>& source) {
    row.add(source.currency ? OptionalText(source.currency->isConverted ? "Y" : "N") : std::nullopt);
}

// ---------------------------------------------------------------------------------------------
// Transactions: those of a bank stand in the columns of the others where there is one for them

using TransactionSource = Source<InvestmentTransaction>;

/// One that stands without its INVBANKTRAN is called like the others.
void addTransactionKind(Row& row, const TransactionSource& source) {
    if (source.item.object.kind() == InvestmentTransactionKind::bankTransaction)
        return row.add(OptionalText("INVBANKTRAN"));
    addKind(row, source);
}

void addTradeDate(Row& row, const TransactionSource& source) {
    row.add(source.bank ? source.bank->datePosted() : source.item.object.tradeDate());
}
void addTotal(Row& row, const TransactionSource& source) {
    row.add(amountOf(source.item.object),
            source.bank ? writtenAmountOf(*source.bank) : source.item.object.text("total"));
}
void addIdentifier(Row& row, const TransactionSource& source) { row.add(identifierOf(source.item.object)); }
void addMemo(Row& row, const TransactionSource& source) { row.add(memoOf(source.item.object)); }

/// A text that only a bank transaction has.
template <OptionalText (TvOFXStatementTransaction::*get)() const noexcept>
void addBankText(Row& row, const TransactionSource& source) {
    row.add(source.bank ? (source.bank.get()->*get)() : std::nullopt);
}

void addTransferBroker(Row& row, const TransactionSource& source) {
    const auto account = source.item.object.transferAccount();
    row.add(account ? account->brokerID().text() : std::nullopt);
}
void addTransferAccount(Row& row, const TransactionSource& source) {
    const auto account = source.item.object.transferAccount();
    row.add(account ? account->accountID().text() : std::nullopt);
}

void addUnderlying(Row& row, const Source<Security>& source) { row.add(source.item.object.underlying().id); }
void addUnderlyingType(Row& row, const Source<Security>& source) {
    row.add(source.item.object.underlying().idType);
}

// ---------------------------------------------------------------------------------------------
// Columns

constexpr FieldColumn<InvestmentTransaction> kTransactionColumns[] = {
    {"file", addFile},
    {"brokerID", addBroker},
    {"accountID", addAccount},
    {"currency", addStatementCurrency},
    {"kind", addTransactionKind},
    {"fiTransactionID", addIdentifier},
    {"serverTransactionID"},
    {"tradeDate", addTradeDate},
    {"settleDate"},
    {"securityID"},
    {"securityIDType"},
    {"securityName", addName},
    {"ticker", addTicker},
    {"units"},
    {"unitPrice"},
    {"total", addTotal},
    {"commission"},
    {"fees"},
    {"taxes"},
    {"load"},
    {"markup"},
    {"markdown"},
    {"withholding"},
    {"stateWithholding"},
    {"penalty"},
    {"accruedInterest"},
    {"gain"},
    {"averageCostBasis"},
    {"transactionCurrency", addSymbol},
    {"currencyRate", addRate},
    {"isConverted", addIsConverted},
    {"tradeType"},
    {"incomeType"},
    {"optionAction"},
    {"transferAction"},
    {"positionType"},
    {"sellReason"},
    {"securitySubAccount"},
    {"fundSubAccount"},
    {"fromSubAccount"},
    {"toSubAccount"},
    {"isTaxExempt"},
    {"sharesPerContract"},
    {"secured"},
    {"relatedFITID"},
    {"relationType"},
    {"reversalFITID"},
    {"reversalFees"},
    {"oldUnits"},
    {"newUnits"},
    {"numerator"},
    {"denominator"},
    {"cashForFractions"},
    {"purchaseDate"},
    {"transferBrokerID", addTransferBroker},
    {"transferAccountID", addTransferAccount},
    {"source401k"},
    {"loanID"},
    {"loanPrincipal"},
    {"loanInterest"},
    {"payrollDate"},
    {"isPriorYearContribution"},
    {"transactionType", addBankText<&TvOFXStatementTransaction::transactionType>},
    {"payeeName", addBankText<&TvOFXStatementTransaction::payeeName>},
    {"checkOrReferenceNumber", addBankText<&TvOFXStatementTransaction::checkOrReferenceNumber>},
    {"referenceNumber", addBankText<&TvOFXStatementTransaction::referenceNumber>},
    {"memo", addMemo},
};

constexpr FieldColumn<Position> kPositionColumns[] = {
    {"file", addFile},
    {"brokerID", addBroker},
    {"accountID", addAccount},
    {"currency", addStatementCurrency},
    {"asOf", addAsOf},
    {"kind", addKind},
    {"securityID"},
    {"securityIDType"},
    {"securityName", addName},
    {"ticker", addTicker},
    {"subAccount"},
    {"positionType"},
    {"units"},
    {"unitPrice"},
    {"marketValue"},
    {"priceDate"},
    {"averageCostBasis"},
    {"positionCurrency", addSymbol},
    {"currencyRate", addRate},
    {"source401k"},
    {"secured"},
    {"unitsStreet"},
    {"unitsUser"},
    {"reinvestsDividends"},
    {"reinvestsGains"},
    {"memo"},
};

constexpr FieldColumn<Security> kSecurityColumns[] = {
    {"file", addFile},
    {"kind", addKind},
    {"id"},
    {"idType"},
    {"name"},
    {"ticker"},
    {"institutionID"},
    {"rating"},
    {"unitPrice"},
    {"priceDate"},
    {"priceCurrency", addSymbol},
    {"currencyRate", addRate},
    {"assetClass"},
    {"institutionAssetClass"},
    {"typeDescription"},
    {"stockType"},
    {"fundType"},
    {"yield"},
    {"yieldDate"},
    {"optionType"},
    {"strikePrice"},
    {"expiryDate"},
    {"sharesPerContract"},
    {"underlyingID", addUnderlying},
    {"underlyingIDType", addUnderlyingType},
    {"parValue"},
    {"debtType"},
    {"debtClass"},
    {"couponRate"},
    {"couponDate"},
    {"couponFrequency"},
    {"callPrice"},
    {"yieldToCall"},
    {"callDate"},
    {"callType"},
    {"yieldToMaturity"},
    {"maturityDate"},
    {"memo"},
};

std::span<const FieldColumn<InvestmentTransaction>> columnsFor(const InvestmentTransaction*) noexcept {
    return kTransactionColumns;
}
std::span<const FieldColumn<Position>> columnsFor(const Position*) noexcept { return kPositionColumns; }
std::span<const FieldColumn<Security>> columnsFor(const Security*) noexcept { return kSecurityColumns; }

template <class Object>
std::span<const FieldColumn<Object>> columnsOf() noexcept {
    return columnsFor(static_cast<const Object*>(nullptr));
}

/// What the lists of securities say of an object, and the bank transaction in it.
void complete(TransactionSource& source) {
    source.security = source.item.securities.find(source.item.object);
    source.bank = source.item.object.bankTransaction();
    if (source.bank && !source.currency) source.currency = currencyOf(*source.bank);
}
void complete(Source<Position>& source) { source.security = source.item.securities.find(source.item.object); }
void complete(const Source<Security>&) {}

}  // namespace

template <class Object>
std::vector<std::string_view> columnNames() {
    std::vector<std::string_view> names;
    for (const FieldColumn<Object>& column : columnsOf<Object>()) names.push_back(column.name);
    return names;
}

template <class Object>
void addFields(Row& row, const Item<Object>& item) {
    Source<Object> source{item, item.object.fields(), {}, item.object.currency(), {}};
    complete(source);
    for (const FieldColumn<Object>& column : columnsOf<Object>()) {
        if (column.add != nullptr)
            column.add(row, source);
        else
            addField(row, source.fields, column.name);
    }
}

template std::vector<std::string_view> columnNames<InvestmentTransaction>();
template std::vector<std::string_view> columnNames<Position>();
template std::vector<std::string_view> columnNames<Security>();
template void addFields(Row&, const Item<InvestmentTransaction>&);
template void addFields(Row&, const Item<Position>&);
template void addFields(Row&, const Item<Security>&);

}  // namespace tool
