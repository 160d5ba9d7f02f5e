// SPDX-License-Identifier: Apache-2.0
#include "text_page/account_list.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "accounts/account_names.h"
#include "accounts/listed_accounts.h"
#include "command_line/options.h"
#include "text/shown_values.h"
#include "text/visible_text.h"
#include "text_page/table.h"
#include "text_page/text_page.h"

namespace tool {
namespace {

using namespace brackwell;

std::string_view statusName(TvOFXServiceStatus status) noexcept {
    constexpr std::string_view names[] = {"", "available", "pending", "active"};
    return names[status];
}

/// What a block says of an account.
struct InfoBlock {
    OptionalText number;
    std::string_view type;
    OptionalText bank;
    TvOFXServiceStatus status = TvOFXServiceStatusNone;
};

InfoBlock blockOf(const TvOFXBankAccountInfo& info) {
    const TvOFXBankAccount* account = info.bankAcctFrom().get();
    if (account == nullptr) return {{}, {}, {}, info.serviceStatus()};
    return {account->accountID(), accountTypeName(account->accountType()), account->bankID(),
            info.serviceStatus()};
}

InfoBlock blockOf(const TvOFXCreditCardAccountInfo& info) {
    return {info.accountID(), "Credit card", {}, info.serviceStatus()};
}

InfoBlock blockOf(const TvOFXInvestmentAccountInfo& info) {
    const TvOFXInvestmentAccount* account = info.investmentAccount().get();
    if (account == nullptr) return {{}, "Investment", {}, info.serviceStatus()};
    return {account->accountID().text(), "Investment", account->brokerID().text(), info.serviceStatus()};
}

/// Of a record without a block there is still the description.
std::vector<InfoBlock> blocksOf(const ListedAccount& account) {
    std::vector<InfoBlock> blocks;
    if (account.bank) blocks.push_back(blockOf(*account.bank));
    if (account.card) blocks.push_back(blockOf(*account.card));
    if (account.investment) blocks.push_back(blockOf(*account.investment));
    if (blocks.empty()) blocks.emplace_back();
    return blocks;
}

using Rows = std::vector<Table::Row>;

void addRows(Rows& rows, const ListedAccount& account, bool isFull) {
    for (const InfoBlock& block : blocksOf(account)) {
        const auto status =
            block.status != TvOFXServiceStatusNone ? block.status : account.record->serviceStatus();
        rows.push_back({
            visibleText(account.record->accountDescription().value_or("")),
            visibleText(shownNumber(block.number, isFull)),
            std::string(block.type),
            visibleText(block.bank.value_or("")),
            std::string(statusName(status)),
            visibleText(account.record->accountPhone().value_or("")),
        });
    }
}

void showInfoRows(TextPage& page, const Rows& rows) {
    Table table({{"Description", Column::Kind::text, 8, 5},
                 {"Number", Column::Kind::text, 8, 9},
                 {"Type", Column::Kind::text, 8, 4},
                 {"Bank", Column::Kind::text, 6, 3},
                 {"Status", Column::Kind::text, 6, 2},
                 {"Phone", Column::Kind::text, 6, 1}});
    for (const Table::Row& row : rows) table.measure(row);
    table.fit(page.width());
    table.writeTitles(page);
    for (const Table::Row& row : rows) {
        if (!page.isGood()) return;
        table.writeRow(page, row);
    }
}

}  // namespace

void showAccountInfo(TextPage& page, const TvOFXAccountInfoResponse& response, const ListedAccounts& listed,
                     const Options& options) {
    page.heading("Accounts at the institution");
    if (isTrouble(response.status().get())) page.fact("Status", shownStatus(*response.status()));
    page.fact("Changed", shownDate(response.lastUpdateDateTime()));
    Rows rows;
    for (const auto& record : response.accountInfos()) {
        const auto account = options.filter.chosenOf(listed.of(record));
        if (account) addRows(rows, *account, options.showsFullNumbers);
    }
    if (rows.empty()) return page.paragraph("No accounts.");
    showInfoRows(page, rows);
}

void showListedAccounts(TextPage& page, const std::vector<ListedAccount>& accounts, bool isFull) {
    Rows rows;
    std::set<Rows> met;
    for (const ListedAccount& account : accounts) {
        Rows whole;  // masked numbers of different accounts may look alike
        addRows(whole, account, true);
        if (met.insert(std::move(whole)).second) addRows(rows, account, isFull);
    }
    page.heading("Accounts of account lists");
    showInfoRows(page, rows);
}

}  // namespace tool
