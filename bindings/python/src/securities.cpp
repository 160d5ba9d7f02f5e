// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "currency_columns.h"
#include "document.h"
#include "enumeration.h"
#include "investment_record.h"
#include "list.h"

namespace brackwell::python {

template <>
const std::vector<Field<AssetPortion>>& fieldsOf<AssetPortion>() {
    using It = AssetPortion;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("assetClass", &It::assetClass, "ASSETCLASS."),
        field<It>("institutionAssetClass", &It::institutionAssetClass, "FIASSETCLASS."),
        field<It>("percent", &It::percent, "PERCENT."),
    };
    return *fields;
}

template <>
const std::vector<Field<Security>>& fieldsOf<Security>() {
    using It = Security;
    static const auto* fields = [] {
        auto* made = new std::vector<Field<It>>{
            field<It>("kind", &It::kind, "What it is, by the name of its aggregate."),
            field<It>("id", &It::id, "UNIQUEID."),
            field<It>("idType", &It::idType, "UNIQUEIDTYPE: CUSIP, ISIN and others."),
            field<It>("name", &It::name, "SECNAME."),
            field<It>("ticker", &It::ticker, "TICKER."),
            field<It>("institutionID", &It::institutionID, "FIID: the institution's own name of it."),
            field<It>("rating", &It::rating, "RATING."),
            field<It>("unitPrice", &It::unitPrice, "UNITPRICE; of debts for 100 of face value."),
            field<It>("priceDate", &It::priceDate, "DTASOF."),
            field<It>("memo", &It::memo, "MEMO2, else MEMO."),
            field<It>("assetClass", &It::assetClass, "ASSETCLASS; of a fund see asset_portions."),
            field<It>("institutionAssetClass", &It::institutionAssetClass, "FIASSETCLASS."),
            field<It>("typeDescription", &It::typeDescription, "TYPEDESC: what an OTHERINFO is."),
            field<It>("optionType", &It::optionType, "OPTTYPE."),
            field<It>("strikePrice", &It::strikePrice, "STRIKEPRICE."),
            field<It>("expiryDate", &It::expiryDate, "DTEXPIRE."),
            field<It>("sharesPerContract", &It::sharesPerContract, "SHPERCTRCT."),
            field<It>("parValue", &It::parValue, "PARVALUE."),
            field<It>("debtType", &It::debtType, "DEBTTYPE."),
            field<It>("debtClass", &It::debtClass, "DEBTCLASS."),
            field<It>("couponRate", &It::couponRate, "COUPONRT: percent a year."),
            field<It>("couponDate", &It::couponDate, "DTCOUPON: of the next one."),
            field<It>("couponFrequency", &It::couponFrequency, "COUPONFREQ."),
            field<It>("callPrice", &It::callPrice, "CALLPRICE."),
            field<It>("yieldToCall", &It::yieldToCall, "YIELDTOCALL."),
            field<It>("callDate", &It::callDate, "DTCALL: of the next one."),
            field<It>("callType", &It::callType, "CALLTYPE."),
            field<It>("yieldToMaturity", &It::yieldToMaturity, "YIELDTOMAT."),
            field<It>("maturityDate", &It::maturityDate, "DTMAT."),
            field<It>("fundType", &It::fundType, "MFTYPE."),
            field<It>("stockType", &It::stockType, "STOCKTYPE."),
            field<It>("yield", &It::yield, "YIELD, YLD: of the dividends, percent.").as("dividend_yield"),
            field<It>("yieldDate", &It::yieldDate, "DTYIELDASOF."),
            field<It>(
                "underlyingID", [](const It& object) { return object.underlying().id; },
                "UNIQUEID of what an option is on."),
            field<It>(
                "underlyingIDType", [](const It& object) { return object.underlying().idType; },
                "UNIQUEIDTYPE of what an option is on."),
            field<It>("assetPortions", &It::assetPortions,
                      "What a fund is made of (MFASSETCLASS and FIMFASSETCLASS), in document order."),
        };
        addCurrency<It>(
            *made, [](const It& object) { return object.currency(); },
            "The currency of the price, when it is not the document's (CURRENCY).");
        return made;
    }();
    return *fields;
}

List<Security> securitiesOf(const std::shared_ptr<Document>& document) {
    const auto& all = document->file.securities().all();
    return listOfDocument<Security>(
        document, "securities", all.size(),
        [document](std::size_t, std::size_t index) { return document->file.securities().all()[index]; });
}

void bindSecurities(nb::module_& module) {
    bindEnumeration<SecurityKind>(module, "What a security is, by the name of its aggregate.");
    bindEnumeration<DebtType>(module, "DEBTTYPE");
    bindEnumeration<DebtClass>(module, "DEBTCLASS");
    bindEnumeration<CouponFrequency>(module, "COUPONFREQ");
    bindEnumeration<CallType>(module, "CALLTYPE");
    bindEnumeration<OptionType>(module, "OPTTYPE");
    bindEnumeration<FundType>(module, "MFTYPE");
    bindEnumeration<StockType>(module, "STOCKTYPE");
    bindEnumeration<AssetClass>(module, "ASSETCLASS");
    bindInvestment<AssetPortion>(module, "How much of a fund is in one class of assets.");
    bindInvestment<Security>(module, "A security of the list that a document brings along.");
    bindList<Security>(module, "Securities in the order of the document.");
}

}  // namespace brackwell::python
