// SPDX-License-Identifier: Apache-2.0
#include "investments/facts.h"

#include <array>
#include <cstddef>
#include <optional>

#include "money/foreign_amount.h"

namespace tool {
namespace {

using namespace brackwell;

/// In the order of InvestmentTransactionKind.
constexpr std::array<std::string_view, 21> kTransactionKinds = {
    "Bought bond",      "Bought fund", "Bought option",     "Bought other", "Bought stock",
    "Option closed",    "Income",      "Expense",           "Cash moved",   "Security moved",
    "Margin interest",  "Reinvested",  "Return of capital", "Sold bond",    "Sold fund",
    "Sold option",      "Sold other",  "Sold stock",        "Split",        "Transferred",
    "Bank transaction",
};
static_assert(kTransactionKinds.size() ==
              static_cast<std::size_t>(InvestmentTransactionKind::bankTransaction) + 1);

/// In the order of PositionKind and of SecurityKind.
constexpr std::array<std::string_view, 5> kHoldingKinds = {"Bonds", "Funds", "Options", "Other", "Stocks"};
static_assert(kHoldingKinds.size() == static_cast<std::size_t>(PositionKind::stock) + 1);
static_assert(kHoldingKinds.size() == static_cast<std::size_t>(SecurityKind::stock) + 1);

/// In the order of IncomeType; the first for a word that is none of the list.
constexpr std::array<std::string_view, 6> kIncomeTypes = {
    "", "Long-term gain", "Short-term gain", "Dividend", "Interest", "Other income",
};

/// In the order of OptionAction.
constexpr std::array<std::string_view, 4> kOptionActions = {"", "Option assigned", "Option exercised",
                                                            "Option expired"};

/// In the order of TransferAction.
constexpr std::array<std::string_view, 3> kTransfers = {"", "Transferred in", "Transferred out"};

/// What a word of a closed list says more exactly than the kind; "" for none, and for unknown words.
template <class Words, class Word>
std::string_view wordOf(const Words& words, std::optional<Word> word) noexcept {
    return word ? words[static_cast<std::size_t>(*word)] : std::string_view();
}

std::string_view exactKind(const InvestmentTransaction& transaction) noexcept {
    switch (transaction.kind()) {
        case InvestmentTransactionKind::income:
        case InvestmentTransactionKind::reinvestment:
            return wordOf(kIncomeTypes, transaction.incomeType());
        case InvestmentTransactionKind::optionClosure:
            return wordOf(kOptionActions, transaction.optionAction());
        case InvestmentTransactionKind::transfer:
            return wordOf(kTransfers, transaction.transferAction());
        default:
            return {};
    }
}

bool isEmpty(OptionalText text) noexcept { return !text || text->empty(); }

}  // namespace

std::string kindInWords(const InvestmentTransaction& transaction) {
    const std::string_view exact = exactKind(transaction);
    if (exact.empty()) return std::string(kTransactionKinds[static_cast<std::size_t>(transaction.kind())]);
    std::string text(exact);
    if (transaction.kind() != InvestmentTransactionKind::reinvestment) return text;
    text.front() = static_cast<char>(text.front() - 'A' + 'a');
    return "Reinvested " + text;
}

std::string_view kindInWords(PositionKind kind) noexcept {
    return kHoldingKinds[static_cast<std::size_t>(kind)];
}

std::string_view kindInWords(SecurityKind kind) noexcept {
    return kHoldingKinds[static_cast<std::size_t>(kind)];
}

std::optional<Date> dateOf(const InvestmentTransaction& transaction) {
    if (const auto date = transaction.tradeDate()) return date;
    if (const auto date = transaction.settleDate()) return date;
    const auto bank = transaction.bankTransaction();
    return bank ? bank->datePosted() : std::nullopt;
}

std::optional<Decimal> amountOf(const InvestmentTransaction& transaction) {
    if (const auto bank = transaction.bankTransaction()) return bank->amount();
    return transaction.total();
}

OptionalText identifierOf(const InvestmentTransaction& transaction) {
    if (const auto bank = transaction.bankTransaction()) return bank->fiTransactionID();
    return transaction.fiTransactionID();
}

OptionalText memoOf(const InvestmentTransaction& transaction) {
    if (const auto bank = transaction.bankTransaction()) return bank->memo();
    return transaction.memo();
}

std::optional<TransactionCurrency> currencyOf(const InvestmentTransaction& transaction) {
    const auto bank = transaction.bankTransaction();
    return bank ? brackwell::currencyOf(*bank) : transaction.currency();
}

std::optional<Amount> valueOf(const Position& position, const InvestmentStatement& statement) {
    return inStatementCurrency(position.marketValue(), position.currency(), statement.currency());
}

std::optional<Amount> amountOf(const InvestmentTransaction& transaction,
                               const InvestmentStatement& statement) {
    return inStatementCurrency(amountOf(transaction), currencyOf(transaction), statement.currency());
}

Worth worthOf(const InvestmentStatement& statement) {
    Worth worth;
    for (const Position& position : statement.positions()) worth.add(valueOf(position, statement));
    return worth;
}

std::optional<Amount> totalWorthOf(const InvestmentStatement& statement) {
    const auto balance = statement.balance();
    const auto cash = balance ? balance->cash() : std::nullopt;
    if (statement.positions().isEmpty() && !cash) {
        const auto plan = statement.balance401k();
        const auto total = plan ? plan->total() : std::nullopt;
        return total ? std::optional<Amount>(*total) : std::nullopt;
    }
    Worth worth = worthOf(statement);
    if (worth.withoutValue > 0) return std::nullopt;
    if (cash) worth.positions.add(*cash);
    return worth.positions.amount();
}

std::string whyNoWorth(const InvestmentStatement& statement) {
    if (totalWorthOf(statement)) return {};
    const std::size_t count = statement.positions().size();
    if (count == 0) return "it states neither positions nor available cash";
    const std::size_t missing = worthOf(statement).withoutValue;
    if (missing == 0) return "the sum has too many digits";
    const std::string currency(statement.currency().value_or("the statement's currency"));
    return std::to_string(missing) + " of " + std::to_string(count) +
           (count == 1 ? " position" : " positions") + (missing == 1 ? " has" : " have") + " no value in " +
           currency;
}

std::string_view nameOf(const std::optional<Security>& security, OptionalText identifier) noexcept {
    if (security && !isEmpty(security->name())) return *security->name();
    if (security && !isEmpty(security->ticker())) return *security->ticker();
    return identifier.value_or("");
}

}  // namespace tool
