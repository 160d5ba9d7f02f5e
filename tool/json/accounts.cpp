// SPDX-License-Identifier: Apache-2.0
#include "json/accounts.h"

#include <string_view>

#include "accounts/listed_accounts.h"
#include "filter/filter.h"
#include "json/fields.h"
#include "json/parse_tree.h"

namespace tool {
namespace {

/// What bank and card accounts can be used for.
template <class Block>
void writeServices(JsonWriter& json, const Block& block) {
    writeField(json, "supportsTransactionDownload", block.supportsTransactionDownload());
    writeField(json, "isTransferSourceAccount", block.isTransferSourceAccount());
    writeField(json, "isTransferDestinationAccount", block.isTransferDestinationAccount());
    writeField(json, "serviceStatus", block.serviceStatus());
}

void writeBankAccountInfo(JsonWriter& json, const brackwell::TvOFXBankAccountInfo& block) {
    json.beginObject();
    writeField(json, "bankAcctFrom", block.bankAcctFrom(), writeBankAccount);
    writeServices(json, block);
    json.endObject();
}

void writeCreditCardAccountInfo(JsonWriter& json, const brackwell::TvOFXCreditCardAccountInfo& block) {
    json.beginObject();
    writeField(json, "creditCardAccountFrom", block.creditCardAccountFrom(), writeCreditCardAccount);
    writeServices(json, block);
    json.endObject();
}

void writeInvestmentAccountInfo(JsonWriter& json, const brackwell::TvOFXInvestmentAccountInfo& block) {
    json.beginObject();
    writeField(json, "investmentAccount", block.investmentAccount(), writeInvestmentAccount);
    writeField(json, "usproductType", block.usproductType());
    writeField(json, "hasCheckWritingPrivileges", block.hasCheckWritingPrivileges());
    writeField(json, "accountType", block.accountType());
    writeField(json, "optionLevel", block.optionLevel());
    writeField(json, "serviceStatus", block.serviceStatus());
    json.endObject();
}

void writeIdentifier(JsonWriter& json, std::string_view name, const brackwell::ParseValue& value) {
    if (value.isNothing()) return;
    json.field(name);
    writeParseValue(json, value, OriginalStrings::leftOut);
}

}  // namespace

void writeAccount(JsonWriter& json, const brackwell::TvOFXAggregate& account) {
    if (const auto* bank = dynamic_cast<const brackwell::TvOFXBankAccount*>(&account))
        writeBankAccount(json, *bank);
    else if (const auto* card = dynamic_cast<const brackwell::TvOFXCreditCardAccount*>(&account))
        writeCreditCardAccount(json, *card);
}

void writeBankAccount(JsonWriter& json, const brackwell::TvOFXBankAccount& account) {
    json.beginObject();
    writeField(json, "class", account.className());
    writeField(json, "bankID", account.bankID());
    writeField(json, "branchID", account.branchID());
    writeField(json, "accountID", account.accountID());
    writeField(json, "accountType", account.accountType());
    writeField(json, "acctKeyChecksum", account.acctKeyChecksum());
    json.endObject();
}

void writeCreditCardAccount(JsonWriter& json, const brackwell::TvOFXCreditCardAccount& account) {
    json.beginObject();
    writeField(json, "class", account.className());
    writeField(json, "accountID", account.accountID());
    writeField(json, "acctKeyChecksum", account.acctKeyChecksum());
    json.endObject();
}

void writeInvestmentAccount(JsonWriter& json, const brackwell::TvOFXInvestmentAccount& account) {
    json.beginObject();
    writeField(json, "class", brackwell::OptionalText(account.className()));
    writeIdentifier(json, "brokerID", account.brokerID());
    writeIdentifier(json, "accountID", account.accountID());
    json.endObject();
}

void writeAccountInfo(JsonWriter& json, const brackwell::ListedAccount& account) {
    json.beginObject();
    writeField(json, "accountDescription", account.record->accountDescription());
    writeField(json, "accountPhone", account.record->accountPhone());
    writeField(json, "bankAccountInfo", account.bank, writeBankAccountInfo);
    writeField(json, "creditCardAccountInfo", account.card, writeCreditCardAccountInfo);
    writeField(json, "investmentAccountInfo", account.investment, writeInvestmentAccountInfo);
    writeField(json, "serviceStatus", account.record->serviceStatus());
    json.endObject();
}

void writeAccountInfoFields(JsonWriter& json, const brackwell::TvOFXResponse& response,
                            const Choice& choice) {
    const auto& accounts = static_cast<const brackwell::TvOFXAccountInfoResponse&>(response);
    writeField(json, "lastUpdateDateTime", accounts.lastUpdateDateTime());
    json.field("accountInfos");
    json.beginArray();
    for (const auto& record : accounts.accountInfos()) {
        if (!json.isGood()) break;
        const auto account = choice.filter.chosenOf(choice.listed.of(record));
        if (account) writeAccountInfo(json, *account);
    }
    json.endArray();
}

}  // namespace tool
