// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>
#include <brackwell/statements.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "currency_columns.h"
#include "document.h"
#include "record.h"

namespace brackwell::python {
namespace {

using Transaction = TvOFXStatementTransaction;

/// What a field of a transaction is called here and what it says. Which fields there are, and of what kind,
/// the library tells.
struct TransactionRow {
    std::string_view library;
    const char* name;
    const char* doc;
    Use use = Use::everything;
};

constexpr auto kTransactionRows = std::to_array<TransactionRow>({
    {"transactionType", "type", "What kind of movement (TRNTYPE): DEBIT, CREDIT, FEE and others."},
    {"datePosted", "date_posted",
     "When it was booked (DTPOSTED), taken for UTC whatever zone the text names."},
    {"dateUserInit", "date_user_init", "When the user began it (DTUSER)."},
    {"dateFundsAvailable", "date_funds_available", "From when on the money can be used (DTAVAIL)."},
    {"amount", "amount", "The amount (TRNAMT), negative when money leaves the account."},
    {"fiTransactionID", "id", "The institution's own identifier of the transaction (FITID)."},
    {"correctionFITID", "correction_id",
     "The identifier of what this one replaces or deletes (CORRECTFITID)."},
    {"correctionAction", "correction_action", "Whether it replaces or deletes (CORRECTACTION)."},
    {"serverTransactionID", "server_id", "The server's identifier (SRVRTID)."},
    {"checkOrReferenceNumber", "check_number", "The number of the check (CHECKNUM)."},
    {"referenceNumber", "reference_number", "Another number that it goes by (REFNUM)."},
    {"standardIndustrialCode", "standard_industrial_code", "The payee's branch of trade (SIC)."},
    {"payeeID", "payee_id", "The payee in the user's list of payees (PAYEEID)."},
    {"payeeName", "payee_name", "The other party's name where it stands alone (NAME)."},
    {"payee", "payee_details", "The other party with its address (PAYEE)."},
    {"bankAccountTo", "bank_account_to", "The other account of a transfer (BANKACCTTO)."},
    {"creditCardAccountTo", "credit_card_account_to", "The other account of a transfer (CCACCTTO)."},
    {"memo", "memo", "Further text (MEMO)."},
    {"currency", "currency_text", "What stands in CURRENCY where that is a text; see currency."},
    {"origCurrency", "original_currency_text", "The same for ORIGCURRENCY."},
    {"originalDataString", "source_text", "The text of the transaction in the document.", Use::source},
    {"originalDatePostedString", "date_posted_text", "The text of DTPOSTED, also when it is not a date.",
     Use::source},
});

Field<Transaction> fieldOf(const Transaction::Field& given) {
    const auto* row = std::find_if(kTransactionRows.begin(), kTransactionRows.end(),
                                   [&](const TransactionRow& each) { return each.library == given.name; });
    if (row == kTransactionRows.end())
        throw std::logic_error("no name for the field " + std::string(given.name));
    return std::visit(
        [&](auto get) {
            return field<Transaction>(std::string(given.name), get, row->doc).as(row->name).with(row->use);
        },
        given.get);
}

/// The name of the other party, wherever the document has it.
OptionalText nameOfPayee(const Transaction& transaction) {
    if (const OptionalText name = transaction.payeeName()) return name;
    const auto payee = transaction.payee();
    return payee ? payee->name() : std::nullopt;
}

std::vector<Field<Transaction>> transactionFields() {
    std::vector<Field<Transaction>> fields;
    fields.push_back(field<Transaction>(
                         "date", [](const Transaction& object) { return dayOf(object.datePosted()); },
                         "The day on which it was booked, that of date_posted.")
                         .with(Use::derived));
    for (const Transaction::Field& each : Transaction::fields()) fields.push_back(fieldOf(each));
    fields.push_back(field<Transaction>("payee", nameOfPayee,
                                        "The other party's name: payee_name, or that of payee_details.")
                         .with(Use::derived));
    addCurrency<Transaction>(
        fields, [](const Transaction& object) { return currencyOf(object); },
        "The currency of the amount, or the one that it was converted from (CURRENCY, "
        "ORIGCURRENCY); None when the account's is the only one.");
    // What people look for first.
    constexpr auto first = std::to_array<std::string_view>({"date", "amount", "payee", "memo", "type", "id"});
    auto place = fields.begin();
    for (const std::string_view name : first) {
        const auto found =
            std::find_if(place, fields.end(), [&](const auto& each) { return each.name == name; });
        std::rotate(place, found, found + 1);
        ++place;
    }
    return fields;
}

}  // namespace

template <>
const std::vector<Field<Transaction>>& fieldsOf<Transaction>() {
    static const auto* fields = new std::vector<Field<Transaction>>(transactionFields());
    return *fields;
}

template <>
const std::vector<Field<TransactionCurrency>>& fieldsOf<TransactionCurrency>() {
    using It = TransactionCurrency;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("symbol", &It::symbol, "Three letters of ISO 4217, as given; may be empty (CURSYM)."),
        field<It>("rate", &It::rate, "What one unit of it is worth in the account's currency (CURRATE)."),
        field<It>(
            "isConverted", &It::isConverted,
            "False: the amounts are in this currency. True: they were converted from it into the account's."),
    };
    return *fields;
}

void bindTransactions(nb::module_& module) {
    bindValue<TransactionCurrency>(module, "The currency of amounts when it is not the account's.");
    bindValue<Transaction>(
        module,
        "One booked or pending movement of money. Every field of the library is an attribute; date, "
        "amount, payee, memo, type and id are those that one mostly wants.");
}

}  // namespace brackwell::python
