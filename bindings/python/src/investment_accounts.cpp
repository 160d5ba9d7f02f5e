// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "document.h"
#include "investment_record.h"
#include "list.h"
#include "list_field.h"

namespace brackwell::python {
namespace {

OptionalText numberOf(const InvestmentStatement& statement) {
    const auto account = statement.account();
    return account ? account->accountID().text() : std::nullopt;
}
OptionalText brokerOf(const InvestmentStatement& statement) {
    const auto account = statement.account();
    return account ? account->brokerID().text() : std::nullopt;
}

using StatementOfPart = std::function<const InvestmentStatement&(std::size_t)>;

std::vector<SharedColumn> sharedColumns(const StatementOfPart& statement) {
    const auto column = [&](const char* name, OptionalText (*text)(const InvestmentStatement&)) {
        return SharedColumn{{name, Kind::text}, [statement, text](std::size_t part) {
                                return CellOf<OptionalText>::cell(text(statement(part)));
                            }};
    };
    return {column("account_number", numberOf), column("broker_id", brokerOf),
            column("account_currency", [](const InvestmentStatement& it) { return it.currency(); })};
}

/// The objects of one list of each statement of a document.
template <class Item>
List<Item> listOfAll(const std::shared_ptr<Document>& document, const char* attribute,
                     InvestmentList<Item> (InvestmentStatement::*get)() const noexcept) {
    const auto& statements = document->file.investmentStatements();
    List<Item> list;
    std::size_t end = 0;
    for (const InvestmentStatement& statement : statements)
        list.ends.push_back(end += (statement.*get)().size());
    list.at = [&statements, document, get](std::size_t part, std::size_t index) {
        return (statements[part].*get)()[index];
    };
    list.shared = sharedColumns(
        [&statements, document](std::size_t part) -> const InvestmentStatement& { return statements[part]; });
    list.owner = [document] { return nb::cast(document); };
    list.attribute = attribute;
    return list;
}

template <class Item>
List<Item> listOfOne(const InvestmentHandle& account, const char* attribute,
                     InvestmentList<Item> (InvestmentStatement::*get)() const noexcept) {
    const InvestmentStatement& statement = HandleOf<InvestmentStatement>::object(account);
    const InvestmentList<Item> items = (statement.*get)();
    List<Item> list;
    list.ends = {items.size()};
    list.at = [items](std::size_t, std::size_t index) { return items[index]; };
    list.shared =
        sharedColumns([&statement, account](std::size_t) -> const InvestmentStatement& { return statement; });
    list.owner = [account] { return nb::cast(Record<InvestmentStatement>{account, nb::object()}); };
    list.attribute = attribute;
    return list;
}

}  // namespace

List<InvestmentStatement> investmentAccountsOf(const std::shared_ptr<Document>& document) {
    return listOfDocument<InvestmentStatement>(document, "investments",
                                               document->file.investmentStatements().size(),
                                               [document](std::size_t, std::size_t index) {
                                                   return InvestmentHandle{document, index};
                                               });
}

List<InvestmentTransaction> investmentTransactionsOf(const std::shared_ptr<Document>& document) {
    return listOfAll(document, "investment_transactions", &InvestmentStatement::transactions);
}
List<InvestmentTransaction> investmentTransactionsOf(const InvestmentHandle& account) {
    return listOfOne(account, "transactions", &InvestmentStatement::transactions);
}
List<Position> positionsOf(const std::shared_ptr<Document>& document) {
    return listOfAll(document, "positions", &InvestmentStatement::positions);
}
List<Position> positionsOf(const InvestmentHandle& account) {
    return listOfOne(account, "positions", &InvestmentStatement::positions);
}

template <>
const std::vector<Field<InvestmentStatement>>& fieldsOf<InvestmentStatement>() {
    using It = InvestmentStatement;
    static const auto* fields = new std::vector<Field<It>>{
        field<It>("number", numberOf, "The number of the account (ACCTID)."),
        field<It>("brokerID", brokerOf, "The broker (BROKERID)."),
        field<It>("transactionUID", &It::transactionUID, "The client's transaction identifier (TRNUID)."),
        field<It>("status", &It::status, "Whether the server could answer (STATUS)."),
        field<It>("account", &It::account, "The account (INVACCTFROM).").as("broker_account"),
        field<It>("asOf", &It::asOf, "DTASOF."),
        field<It>("currency", &It::currency, "CURDEF, as given."),
        field<It>("start", &It::start, "DTSTART: of the period of the transactions."),
        field<It>("end", &It::end, "DTEND."),
        field<It>("marketingInfo", &It::marketingInfo, "MKTGINFO."),
        listField<InvestmentTransaction, It>(
            "transactions", "Of all kinds, in the order of the document.",
            [](const InvestmentHandle& handle) { return investmentTransactionsOf(handle); }),
        listField<Position, It>("positions", "Of all kinds, in the order of the document.",
                                [](const InvestmentHandle& handle) { return positionsOf(handle); }),
        field<It>("balance", &It::balance, "INVBAL; of several the first."),
        field<It>("balance401k", &It::balance401k, "INV401KBAL; of several the first."),
        field<It>("plan401k", &It::plan401k, "INV401K; of several the first."),
    };
    return *fields;
}

void bindInvestmentAccounts(nb::module_& module) {
    auto account = bindInvestmentBase<InvestmentStatement>(module, "The statement of an investment account.");
    account.def(
        "__reduce__",
        [](const Record<InvestmentStatement>& self) {
            return nb::make_tuple(
                nb::module_::import_("operator").attr("getitem"),
                nb::make_tuple(investmentAccountsOf(self.live->document), self.live->index));
        },
        nb::sig("def __reduce__(self, /) -> tuple[typing.Any, ...]"));
    bindList<InvestmentStatement>(module,
                                  "The statements of investment accounts in the order of the document.");
}

}  // namespace brackwell::python
