// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "document.h"
#include "enumeration.h"
#include "list.h"
#include "list_field.h"
#include "record.h"

/// \file
/// Statements of bank and card accounts, what identifies accounts, and the accounts of account lists.

namespace brackwell::python {
namespace {

using Account = TvOFXAccountStatement;
using Transaction = TvOFXStatementTransaction;

std::optional<TvOFXBankAccountType> typeOfAccount(const Account& statement) {
    const auto bank = accountOf(statement).bank;
    return bank ? std::optional(bank->accountType()) : std::nullopt;
}
OptionalText numberOfAccount(const Account& statement) { return accountOf(statement).accountID(); }
OptionalText bankOfAccount(const Account& statement) {
    const auto bank = accountOf(statement).bank;
    return bank ? bank->bankID() : std::nullopt;
}
bool isCard(const Account& statement) {
    return dynamic_cast<const TvOFXCCStatementResponse*>(&statement) != nullptr;
}

/// The broker and the number are kept as the document has them, which may be no text.
template <const ParseValue& (TvOFXInvestmentAccount::*Get)() const noexcept>
OptionalText textOf(const TvOFXInvestmentAccount& account) {
    return (account.*Get)().text();
}

template <class Block>
std::shared_ptr<const Block> blockOf(const ListedAccount& account) {
    if constexpr (std::is_same_v<Block, TvOFXBankAccountInfo>) return account.bank;
    if constexpr (std::is_same_v<Block, TvOFXCreditCardAccountInfo>) return account.card;
    if constexpr (std::is_same_v<Block, TvOFXInvestmentAccountInfo>) return account.investment;
}

/// A field of one of the blocks of a record; absent where the record has no such block.
template <class Block, class Getter>
Field<ListedAccount> blockField(const char* prefix, const char* name, Getter get, const char* doc) {
    using Value = std::remove_cvref_t<std::invoke_result_t<Getter, const Block&>>;
    constexpr bool isAbsent = kIsOptional<Value> || ObjectOf<Value>::isOptional;
    using Result = std::conditional_t<isAbsent, Value, std::optional<Value>>;
    auto made = field<ListedAccount>(
        name,
        [get](const ListedAccount& account) -> Result {
            const auto block = blockOf<Block>(account);
            return block ? Result(std::invoke(get, *block)) : Result();
        },
        doc);
    return std::move(made).as(std::string(prefix) + snakeCase(name));
}

std::vector<Field<Account>> accountFields() {
    return {
        field<Account>("number", numberOfAccount, "The number of the account (ACCTID)."),
        field<Account>("type", typeOfAccount, "What kind of bank account (ACCTTYPE); None for a card."),
        field<Account>("isCard", isCard, "True for the statement of a card."),
        field<Account>("bankID", bankOfAccount, "The bank of the account (BANKID)."),
        field<Account>("defaultCurrency", &Account::defaultCurrency, "The currency (CURDEF).").as("currency"),
        field<Account>("transactionStartDateTime", &Account::transactionStartDateTime,
                       "Where the period of the transactions begins (DTSTART).")
            .as("start"),
        field<Account>("transactionEndDateTime", &Account::transactionEndDateTime, "Where it ends (DTEND).")
            .as("end"),
        field<Account>("ledgerBalanceAmount", &Account::ledgerBalanceAmount, "What is booked (LEDGERBAL).")
            .as("balance"),
        field<Account>("ledgerBalanceDateTime", &Account::ledgerBalanceDateTime, "The moment of balance.")
            .as("balance_date"),
        field<Account>("availableBalanceAmount", &Account::availableBalanceAmount,
                       "What can be spent (AVAILBAL).")
            .as("available_balance"),
        field<Account>("availableBalanceDateTime", &Account::availableBalanceDateTime,
                       "The moment of available_balance.")
            .as("available_balance_date"),
        field<Account>("transactionUID", &Account::transactionUID,
                       "The client's identifier of the request (TRNUID)."),
        field<Account>("status", &Account::status, "Whether the server could answer (STATUS)."),
        field<Account>(
            "bankAccount", [](const Account& object) { return accountOf(object).bank; },
            "All that identifies the account of a bank (BANKACCTFROM)."),
        field<Account>(
            "creditCardAccount", [](const Account& object) { return accountOf(object).card; },
            "All that identifies a card (CCACCTFROM)."),
        listField<Transaction, Account>("transactions", "In the order of the document.",
                                        [](const AccountHandle& account) { return transactionsOf(account); }),
    };
}

const std::vector<SharedColumn> sharedColumns(std::function<const Account&(std::size_t)> statement) {
    const auto column = [&](const char* name, const Field<Account>& field) {
        return SharedColumn{{name, field.kind},
                            [statement, &field](std::size_t part) { return field.cell(statement(part)); }};
    };
    const std::vector<Field<Account>>& fields = fieldsOf<Account>();
    const auto named = [&](std::string_view name) -> const Field<Account>& {
        return *std::find_if(fields.begin(), fields.end(),
                             [&](const auto& each) { return each.name == name; });
    };
    return {column("account_number", named("number")), column("account_type", named("type")),
            column("bank_id", named("bank_id")), column("account_currency", named("currency"))};
}

}  // namespace

List<Account> accountsOf(const std::shared_ptr<Document>& document) {
    return listOfDocument<Account>(document, "accounts", document->file.statements().size(),
                                   [document](std::size_t, std::size_t index) {
                                       return AccountHandle{document, index};
                                   });
}

List<Transaction> transactionsOf(const std::shared_ptr<Document>& document) {
    List<Transaction> list;
    std::size_t end = 0;
    for (const auto& statement : document->file.statements())
        list.ends.push_back(end += statement->statementTransactions().size());
    list.at = [document](std::size_t part, std::size_t index) {
        return document->file.statements()[part]->statementTransactions()[index];
    };
    list.shared = sharedColumns(
        [document](std::size_t part) -> const Account& { return *document->file.statements()[part]; });
    list.owner = [document] { return nb::cast(document); };
    list.attribute = "transactions";
    return list;
}

List<Transaction> transactionsOf(const AccountHandle& account) {
    const auto& statement = account.document->file.statements()[account.index];
    List<Transaction> list;
    list.ends = {statement->statementTransactions().size()};
    list.at = [statement](std::size_t, std::size_t index) {
        return statement->statementTransactions()[index];
    };
    list.shared = sharedColumns([statement](std::size_t) -> const Account& { return *statement; });
    list.owner = [account] { return nb::cast(Record<Account>{account, nb::object()}); };
    list.attribute = "transactions";
    return list;
}

// ---------------------------------------------------------------------------------------------
// Fields

template <>
const std::vector<Field<Account>>& fieldsOf<Account>() {
    static const auto* fields = new std::vector<Field<Account>>(accountFields());
    return *fields;
}

template <>
const std::vector<Field<TvOFXPayee>>& fieldsOf<TvOFXPayee>() {
    using Payee = TvOFXPayee;
    static const auto* fields = new std::vector<Field<Payee>>{
        field<Payee>("name", &Payee::name, "NAME"),
        field<Payee>("address", &Payee::address, "ADDR1 to ADDR3, a line each; empty when there are none."),
        field<Payee>("city", &Payee::city, "CITY"),
        field<Payee>("state", &Payee::state, "STATE"),
        field<Payee>("zipCode", &Payee::zipCode, "POSTALCODE"),
        field<Payee>("country", &Payee::country, "COUNTRY"),
        field<Payee>("phoneNumber", &Payee::phoneNumber, "PHONENUMBER"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXBankAccount>>& fieldsOf<TvOFXBankAccount>() {
    using Bank = TvOFXBankAccount;
    static const auto* fields = new std::vector<Field<Bank>>{
        field<Bank>("accountID", &Bank::accountID, "The number of the account (ACCTID).").as("number"),
        field<Bank>("accountType", &Bank::accountType, "The kind of account (ACCTTYPE).").as("type"),
        field<Bank>("bankID", &Bank::bankID,
                    "The bank, in many countries a sort or routing number (BANKID)."),
        field<Bank>("branchID", &Bank::branchID, "The branch (BRANCHID)."),
        field<Bank>("acctKeyChecksum", &Bank::acctKeyChecksum, "The checksum (ACCTKEY).").as("key"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXCreditCardAccount>>& fieldsOf<TvOFXCreditCardAccount>() {
    using Card = TvOFXCreditCardAccount;
    static const auto* fields = new std::vector<Field<Card>>{
        field<Card>("accountID", &Card::accountID, "The number of the card (ACCTID).").as("number"),
        field<Card>("acctKeyChecksum", &Card::acctKeyChecksum, "The checksum (ACCTKEY).").as("key"),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXInvestmentAccount>>& fieldsOf<TvOFXInvestmentAccount>() {
    using Broker = TvOFXInvestmentAccount;
    static const auto* fields = new std::vector<Field<Broker>>{
        field<Broker>("accountID", textOf<&Broker::accountID>, "The number of the account (ACCTID).")
            .as("number"),
        field<Broker>("brokerID", textOf<&Broker::brokerID>, "The broker (BROKERID)."),
    };
    return *fields;
}

template <>
const std::vector<Field<TvOFXStatus>>& fieldsOf<TvOFXStatus>() {
    using Status = TvOFXStatus;
    static const auto* fields = new std::vector<Field<Status>>{
        field<Status>("code", &Status::code, "0 is success."),
        field<Status>("severity", &Status::severity, "INFO, WARN or ERROR, as received."),
        field<Status>("message", &Status::message, "What the institution says."),
    };
    return *fields;
}

template <>
const std::vector<Field<ListedAccount>>& fieldsOf<ListedAccount>() {
    using Bank = TvOFXBankAccountInfo;
    using Card = TvOFXCreditCardAccountInfo;
    using Broker = TvOFXInvestmentAccountInfo;
    static const auto* fields = new std::vector<Field<ListedAccount>>{
        field<ListedAccount>(
            "description", [](const ListedAccount& object) { return object.record->accountDescription(); },
            "What the institution calls the account (DESC)."),
        field<ListedAccount>(
            "phone", [](const ListedAccount& object) { return object.record->accountPhone(); },
            "Whom to telephone about it (PHONE)."),
        field<ListedAccount>(
            "serviceStatus", [](const ListedAccount& object) { return object.record->serviceStatus(); },
            "SVCSTATUS where it stands in no block."),
        blockField<Bank>("bank_", "account", &Bank::bankAcctFrom, "The account of a bank (BANKACCTFROM)."),
        blockField<Bank>("bank_", "supportsTransactionDownload", &Bank::supportsTransactionDownload,
                         "SUPTXDL"),
        blockField<Bank>("bank_", "isTransferSourceAccount", &Bank::isTransferSourceAccount, "XFERSRC"),
        blockField<Bank>("bank_", "isTransferDestinationAccount", &Bank::isTransferDestinationAccount,
                         "XFERDEST"),
        blockField<Bank>("bank_", "serviceStatus", &Bank::serviceStatus, "SVCSTATUS of the bank account"),
        blockField<Card>("card_", "account", &Card::creditCardAccountFrom, "The card (CCACCTFROM)."),
        blockField<Card>("card_", "supportsTransactionDownload", &Card::supportsTransactionDownload,
                         "SUPTXDL"),
        blockField<Card>("card_", "isTransferSourceAccount", &Card::isTransferSourceAccount, "XFERSRC"),
        blockField<Card>("card_", "isTransferDestinationAccount", &Card::isTransferDestinationAccount,
                         "XFERDEST"),
        blockField<Card>("card_", "serviceStatus", &Card::serviceStatus, "SVCSTATUS of the card"),
        blockField<Broker>("investment_", "account", &Broker::investmentAccount, "INVACCTFROM"),
        blockField<Broker>("investment_", "usproductType", &Broker::usproductType, "USPRODUCTTYPE")
            .as("investment_us_product_type"),
        blockField<Broker>("investment_", "hasCheckWritingPrivileges", &Broker::hasCheckWritingPrivileges,
                           "CHECKING"),
        blockField<Broker>("investment_", "accountType", &Broker::accountType, "INVACCTTYPE"),
        blockField<Broker>("investment_", "optionLevel", &Broker::optionLevel, "OPTIONLEVEL"),
        blockField<Broker>("investment_", "serviceStatus", &Broker::serviceStatus,
                           "SVCSTATUS of the investments"),
    };
    return *fields;
}

void bindAccounts(nb::module_& module) {
    bindEnumeration<TvOFXBankAccountType>(module,
                                          "The kind of a bank account; UNKNOWN for every other text.");
    bindEnumeration<TvOFXServiceStatus>(module, "The status of a service.");
    bindEnumeration<TvOFXInvestmentAccountType>(module, "Who holds an investment account.");
    bindValue<TvOFXStatus>(module, "Whether a server could answer.");
    bindValue<TvOFXPayee>(module, "The other party of a transaction, with its address.");
    bindValue<TvOFXBankAccount>(module, "What identifies the account of a bank.");
    bindValue<TvOFXCreditCardAccount>(module, "What identifies a card.");
    bindValue<TvOFXInvestmentAccount>(module, "What identifies an investment account.");
    bindValue<ListedAccount>(module, "An account of an account list.");
    auto account =
        bindRecord<Account>(module,
                            "The statement of a bank account or a card. An account with two statements in "
                            "a document is there twice.");
    account
        .def(
            "__reduce__",
            [](const Record<Account>& self) {
                return nb::make_tuple(nb::module_::import_("operator").attr("getitem"),
                                      nb::make_tuple(accountsOf(self.live->document), self.live->index));
            },
            nb::sig("def __reduce__(self, /) -> tuple[typing.Any, ...]"))
        .def(
            "to_pandas",
            [](const Record<Account>& self) {
                return nb::cast(transactionsOf(*self.live)).attr("to_pandas")();
            },
            nb::sig("def to_pandas(self, /) -> pandas.DataFrame"), "The transactions as a pandas.DataFrame.");
    bindList<Transaction>(module, "Transactions in the order of the document.");
    bindList<Account>(module, "The statements of bank accounts and cards in the order of the document.");
}

}  // namespace brackwell::python
