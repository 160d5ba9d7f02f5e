// SPDX-License-Identifier: Apache-2.0
#include "bookkeeping/identity.h"

#include <algorithm>

#include "history/history.h"
#include "investments/facts.h"
#include "text/value_text.h"

namespace tool {
namespace {

using namespace brackwell;

std::string_view trimmedOr(OptionalText text) noexcept { return trimWhiteSpace(text.value_or("")); }

std::string decimalText(const std::optional<Decimal>& amount) { return amount ? amount->toString() : ""; }

/// An identifier with "%41" for what is no letter, digit, hyphen or underscore, so that every format takes it
/// and it ends where it is seen to end.
std::string escapedIdentifier(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                             c == '-' || c == '_';
        if (isPlain)
            escaped += c;
        else
            (escaped += '%').append(1, digits[byte >> 4]).append(1, digits[byte & 0xF]);
    }
    return escaped;
}

/// The longest identifier that is written out; a longer one is told by its digest.
constexpr std::size_t kLongestIdentifier = 64;

}  // namespace

std::string identityOf(const AccountHistory& account) {
    Digest digest;
    if (const auto& bank = account.bankAccount) {
        digest.add("bank").add(trimmedOr(bank->bankID())).add(trimmedOr(bank->branchID()));
        digest.add(std::to_string(bank->accountType()));
    } else {
        digest.add(account.isCard ? "card" : "unnamed");
    }
    return digest.add(trimmedOr(account.number())).add(account.currency).text();
}

std::string identityOf(const InvestmentAccount& account) {
    Digest digest;
    digest.add("investment").add(trimWhiteSpace(account.broker)).add(trimWhiteSpace(account.number));
    return digest.add(account.currency).text();
}

void Identities::meet(std::uint32_t statement, OptionalText identifier,
                      const std::optional<Decimal>& amount) {
    if (trimmedOr(identifier).empty()) return;
    if (std::exchange(statement_, statement) != statement) finishStatement();
    met_.push_back(keyOf(trimmedOr(identifier), amount));
}

void Identities::finish() {
    finishStatement();
    met_ = {};
    std::ranges::sort(repeated_);
}

void Identities::finishStatement() {
    std::ranges::sort(met_);
    auto rest = met_.cbegin();
    while ((rest = std::adjacent_find(rest, met_.cend())) != met_.cend()) {
        repeated_.push_back(*rest);
        rest = std::upper_bound(rest, met_.cend(), *rest);
    }
    met_.clear();
}

bool Identities::isRepeated(OptionalText identifier, const std::optional<Decimal>& amount) const {
    return !repeated_.empty() && !trimmedOr(identifier).empty() &&
           std::ranges::binary_search(repeated_, keyOf(trimmedOr(identifier), amount));
}

std::uint64_t Identities::digestOf(const TvOFXStatementTransaction& transaction) const {
    Digest digest;
    digest.add(account_).add(trimmedOr(transaction.fiTransactionID()));
    digest.add(dayText(transaction.datePosted())).add(decimalText(transaction.amount()));
    for (const OptionalText text :
         {transaction.transactionType(), transaction.checkOrReferenceNumber(), transaction.referenceNumber(),
          transaction.payeeName(), transaction.memo()})
        digest.add(trimmedOr(text));
    if (const auto payee = transaction.payee()) digest.add(trimmedOr(payee->name()));
    return digest.value();
}

std::uint64_t Identities::digestOf(const InvestmentTransaction& transaction) const {
    Digest digest;
    digest.add(account_).add(transaction.elementName());
    for (const InvestmentField& field : transaction.fields())
        digest.add(field.name).add(trimWhiteSpace(field.text));
    if (const auto bank = transaction.bankTransaction()) digest.add(digestText(digestOf(*bank)));
    return digest.value();
}

BookIdentity Identities::of(const TvOFXStatementTransaction& transaction) const {
    return {identifierOf(transaction.fiTransactionID(), transaction.amount()),
            digestText(digestOf(transaction))};
}

BookIdentity Identities::of(const InvestmentTransaction& transaction) const {
    return {identifierOf(tool::identifierOf(transaction), amountOf(transaction)),
            digestText(digestOf(transaction))};
}

BookIdentity Identities::of(std::string_view what, const BookBalance& balance) const {
    Digest digest;
    digest.add(account_).add(what).add(balance.day).add(balance.amount.toString()).add(balance.commodity);
    return {"", digest.text()};
}

std::uint64_t Identities::keyOf(std::string_view identifier, const std::optional<Decimal>& amount) const {
    return Digest().add(account_).add(identifier).add(decimalText(amount)).value();
}

std::string Identities::identifierOf(OptionalText identifier, const std::optional<Decimal>& amount) const {
    const std::string_view text = trimmedOr(identifier);
    if (text.empty()) return {};
    const std::uint64_t key = keyOf(text, amount);
    if (std::ranges::binary_search(repeated_, key)) return {};
    return escapedIdentifier(text.substr(0, kLongestIdentifier)) + "." + digestText(key);
}

bool StatedBefore::has(std::uint64_t digest, std::uint32_t statement) {
    Equal& equal = equals_[digest];
    if (std::exchange(equal.statement, statement) != statement) equal.met = 0;
    if (++equal.met <= equal.count) return true;
    ++equal.count;
    return false;
}

}  // namespace tool
