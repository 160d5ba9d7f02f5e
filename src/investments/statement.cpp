// SPDX-License-Identifier: Apache-2.0
#include <brackwell/investments.h>

#include "investments/getters.h"

namespace brackwell {
namespace investments {
namespace {

// clang-format off
constexpr FieldRow kStatementRows[] = {
    {"transactionUID", FieldRule::text, {"TRNUID"}},
    {"asOf", FieldRule::date, {"DTASOF"}},
    {"currency", FieldRule::text, {"CURDEF"}},
    {"start", FieldRule::date, {"DTSTART"}},
    {"end", FieldRule::date, {"DTEND"}},
    {"marketingInfo", FieldRule::text, {"MKTGINFO"}},
    {"status", FieldRule::object, {"STATUS"}},
    {"account", FieldRule::object, {"INVACCTFROM"}},
};
constexpr PartRow kStatementParts[] = {"INVTRANLIST"};
// clang-format on

}  // namespace

constexpr FieldTable kStatementFields(kStatementRows, kStatementParts);

}  // namespace investments

using namespace investments;

namespace {

const StatementParts& partsOf(const InvestmentStatement& statement) noexcept {
    return recordsOf(statement).statements[recordOf(statement).extra];
}

}  // namespace

OptionalText InvestmentStatement::transactionUID() const noexcept {
    return textOf(*this, kStatementFields.text("transactionUID"));
}
std::optional<Date> InvestmentStatement::asOf() const noexcept {
    return dateOf(*this, kStatementFields.date("asOf"));
}
OptionalText InvestmentStatement::currency() const noexcept {
    return textOf(*this, kStatementFields.text("currency"));
}
std::optional<Date> InvestmentStatement::start() const noexcept {
    return dateOf(*this, kStatementFields.date("start"));
}
std::optional<Date> InvestmentStatement::end() const noexcept {
    return dateOf(*this, kStatementFields.date("end"));
}
OptionalText InvestmentStatement::marketingInfo() const noexcept {
    return textOf(*this, kStatementFields.text("marketingInfo"));
}

std::shared_ptr<TvOFXStatus> InvestmentStatement::status() const noexcept { return partsOf(*this).status; }

std::shared_ptr<TvOFXInvestmentAccount> InvestmentStatement::account() const noexcept {
    return partsOf(*this).account;
}

InvestmentList<InvestmentTransaction> InvestmentStatement::transactions() const noexcept {
    return listOf<InvestmentTransaction>(*this, RecordType::transaction);
}

InvestmentList<Position> InvestmentStatement::positions() const noexcept {
    return listOf<Position>(*this, RecordType::position);
}

std::optional<InvestmentBalance> InvestmentStatement::balance() const {
    return firstOf<InvestmentBalance>(*this, RecordType::balance);
}

std::optional<Amounts401k> InvestmentStatement::balance401k() const {
    // Other aggregates of such amounts are parts of a period.
    for (const Amounts401k& amounts : listOf<Amounts401k>(*this, RecordType::amounts))
        if (amounts.elementName() == "INV401KBAL") return amounts;
    return std::nullopt;
}

std::optional<Plan401k> InvestmentStatement::plan401k() const {
    return firstOf<Plan401k>(*this, RecordType::plan);
}

}  // namespace brackwell
