// SPDX-License-Identifier: Apache-2.0
#include "account_number.h"
#include "filter/filter.h"
#include "json/fields.h"
#include "json/objects.h"

namespace tool {
namespace {

void writeBankAccountInfo(JsonWriter& json, const brackwell::TvOFXBankAccountInfo& block) {
    json.beginObject();
    writeField(json, "bankAcctFrom", block.bankAcctFrom(), writeBankAccount);
    writeField(json, "supportsTransactionDownload", block.supportsTransactionDownload());
    writeField(json, "isTransferSourceAccount", block.isTransferSourceAccount());
    writeField(json, "isTransferDestinationAccount", block.isTransferDestinationAccount());
    writeField(json, "serviceStatus", block.serviceStatus());
    json.endObject();
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

void writeAccountInfo(JsonWriter& json, const brackwell::TvOFXAccountInfo& record) {
    json.beginObject();
    writeField(json, "accountDescription", record.accountDescription());
    writeField(json, "accountPhone", record.accountPhone());
    writeField(json, "bankAccountInfo", record.bankAccountInfo(), writeBankAccountInfo);
    writeField(json, "serviceStatus", record.serviceStatus());
    json.endObject();
}

void writeAccountInfoFields(JsonWriter& json, const brackwell::TvOFXResponse& response,
                            const Filter& filter) {
    const auto& accounts = static_cast<const brackwell::TvOFXAccountInfoResponse&>(response);
    writeField(json, "lastUpdateDateTime", accounts.lastUpdateDateTime());
    writeList(json, "accountInfos", accounts.accountInfos(),
              [&filter](JsonWriter& writer, const brackwell::TvOFXAccountInfo& record) {
                  if (filter.takesAccount(accountNumber(record))) writeAccountInfo(writer, record);
              });
}

}  // namespace tool
