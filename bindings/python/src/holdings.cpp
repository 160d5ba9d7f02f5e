// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <vector>

#include "currency_columns.h"
#include "document.h"
#include "enumeration.h"
#include "investment_record.h"
#include "list.h"

namespace brackwell::python {

template <>
const std::vector<Field<Position>>& fieldsOf<Position>() {
    using It = Position;
    static const auto* fields = [] {
        auto* made = new std::vector<Field<It>>{
            field<It>("kind", &It::kind, "What it is, by the name of its aggregate."),
            field<It>("securityID", &It::securityID, "UNIQUEID; see Securities.find."),
            field<It>("securityIDType", &It::securityIDType, "UNIQUEIDTYPE: CUSIP, ISIN and others."),
            field<It>("subAccount", &It::subAccount, "HELDINACCT."),
            field<It>("positionType", &It::positionType, "POSTYPE."),
            field<It>("units", &It::units, "UNITS: shares, contracts, or face value."),
            field<It>("unitPrice", &It::unitPrice, "UNITPRICE; of debts for 100 of face value."),
            field<It>("marketValue", &It::marketValue, "MKTVAL."),
            field<It>("priceDate", &It::priceDate, "DTPRICEASOF."),
            field<It>("averageCostBasis", &It::averageCostBasis, "AVGCOSTBASIS."),
            field<It>("memo", &It::memo, "MEMO2, else MEMO."),
            field<It>("source401k", &It::source401k, "INV401KSOURCE."),
            field<It>("secured", &It::secured, "SECURED."),
            field<It>("unitsStreet", &It::unitsStreet, "UNITSSTREET: held by the institution."),
            field<It>("unitsUser", &It::unitsUser, "UNITSUSER: held by the user."),
            field<It>("reinvestsDividends", &It::reinvestsDividends, "REINVDIV: \"Y\" or \"N\"."),
            field<It>("reinvestsGains", &It::reinvestsGains, "REINVCG: \"Y\" or \"N\"."),
        };
        addCurrency<It>(
            *made, [](const It& object) { return object.currency(); },
            "The currency of the amounts, when it is not the account's (CURRENCY).");
        return made;
    }();
    return *fields;
}

template <>
const std::vector<Field<ListedBalance>>& fieldsOf<ListedBalance>() {
    using It = ListedBalance;
    static const auto* fields = [] {
        auto* made = new std::vector<Field<It>>{
            field<It>("name", &It::name, "NAME."),    field<It>("explanation", &It::explanation, "DESC."),
            field<It>("type", &It::type, "BALTYPE."), field<It>("value", &It::value, "VALUE."),
            field<It>("asOf", &It::asOf, "DTASOF."),
        };
        addCurrency<It>(
            *made, [](const It& object) { return object.currency(); },
            "The currency of the value, when it is not the account's (CURRENCY).");
        return made;
    }();
    return *fields;
}

template <>
const std::vector<Field<InvestmentBalance>>& fieldsOf<InvestmentBalance>() {
    using It = InvestmentBalance;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("cash", &It::cash, "AVAILCASH, in all sub-accounts."),
        field<It>("margin", &It::margin, "MARGINBALANCE; positive is what the user has."),
        field<It>("shortBalance", &It::shortBalance, "SHORTBALANCE: market value of short positions."),
        field<It>("buyingPower", &It::buyingPower, "BUYPOWER."),
        field<It>("listed", &It::listed, "BAL, in document order."),
    };
    return *fields;
}

void bindHoldings(nb::module_& module) {
    bindEnumeration<PositionKind>(module, "What is held, by the name of its aggregate.");
    bindEnumeration<BalanceType>(module, "BALTYPE");
    bindInvestment<Position>(module, "A security that is held.");
    bindInvestment<ListedBalance>(module, "A balance that an institution adds (BAL).");
    bindInvestment<InvestmentBalance>(module, "The balances of an investment account (INVBAL).");
    bindList<Position>(module, "Positions in the order of the document.");
}

}  // namespace brackwell::python
