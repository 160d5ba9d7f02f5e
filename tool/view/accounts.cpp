// SPDX-License-Identifier: Apache-2.0
#include "account_number.h"
#include "options.h"
#include "text/visible_text.h"
#include "view/account_names.h"
#include "view/page.h"
#include "view/sections.h"
#include "view/table.h"

namespace tool {
namespace {

std::string_view statusName(brackwell::TvOFXServiceStatus status) noexcept {
    constexpr std::string_view names[] = {"", "available", "pending", "active"};
    return names[status];
}

Table::Row rowOf(const brackwell::TvOFXAccountInfo& record, bool isFull) {
    const brackwell::TvOFXBankAccountInfo* block = record.bankAccountInfo().get();
    const brackwell::TvOFXBankAccount* account = block != nullptr ? block->bankAcctFrom().get() : nullptr;
    const auto status = block != nullptr && block->serviceStatus() != brackwell::TvOFXServiceStatusNone
                            ? block->serviceStatus()
                            : record.serviceStatus();
    return {
        visibleText(record.accountDescription().value_or("")),
        account != nullptr ? visibleText(shownNumber(account->accountID(), isFull)) : "",
        account != nullptr ? std::string(accountTypeName(account->accountType())) : "",
        account != nullptr ? visibleText(account->bankID().value_or("")) : "",
        std::string(statusName(status)),
        visibleText(record.accountPhone().value_or("")),
    };
}

}  // namespace

void showAccountInfo(Page& page, const brackwell::TvOFXAccountInfoResponse& response,
                     const Options& options) {
    page.heading("Accounts at the institution");
    if (isTrouble(response.status().get())) page.fact("Status", shownStatus(*response.status()));
    page.fact("Changed", shownDate(response.lastUpdateDateTime()));
    std::vector<const brackwell::TvOFXAccountInfo*> records;
    for (const auto& record : response.accountInfos())
        if (options.filter.takesAccount(accountNumber(*record))) records.push_back(record.get());
    if (records.empty()) return page.paragraph("No accounts.");
    Table table({{"Description", Column::Kind::text, 8, 5},
                 {"Number", Column::Kind::text, 8, 9},
                 {"Type", Column::Kind::text, 8, 4},
                 {"Bank", Column::Kind::text, 6, 3},
                 {"Status", Column::Kind::text, 6, 2},
                 {"Phone", Column::Kind::text, 6, 1}});
    for (const auto* record : records) table.measure(rowOf(*record, options.showsFullNumbers));
    table.fit(page.width());
    table.writeTitles(page);
    for (const auto* record : records) table.writeRow(page, rowOf(*record, options.showsFullNumbers));
}

}  // namespace tool
