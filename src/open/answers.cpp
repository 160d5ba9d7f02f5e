// SPDX-License-Identifier: Apache-2.0
#include "open/answers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "open/shown_text.h"
#include "text/ascii_case.h"
#include "text/ascii_digit.h"
#include "tree/node_ref.h"

namespace brackwell::opening {
namespace {

struct KnownCode {
    std::uint64_t code;
    std::string_view meaning;
};

/// What the OFX standard says that a code means, for those that people meet.
constexpr KnownCode kCodes[] = {
    {1, "the data on this computer is up to date"},
    {2000, "a general error of the server"},
    {2001, "the account is not valid"},
    {2002, "a general error with the account"},
    {2003, "the account was not found"},
    {2004, "the account is closed"},
    {2005, "the account is not authorised for this"},
    {2006, "the source account was not found"},
    {2019, "the request was sent twice"},
    {2020, "the date is not valid"},
    {2027, "the date range is not valid"},
    {2028, "the requested element is unknown"},
    {6500, "the server refuses requests without an update"},
    {10500, "too many checks"},
    {13000, "the user's identifier and password will be sent by mail"},
    {13500, "the user cannot be enrolled"},
    {13501, "the user is enrolled already"},
    {15000, "the password must be changed"},
    {15500, "the user's identifier or password is wrong"},
    {15501, "the account is in use"},
    {15502, "the password is locked"},
    {15503, "the password could not be changed"},
    {15505, "the country system is not supported"},
    {15506, "the sign-on is empty and not supported"},
    {15510, "the client's identifier (CLIENTUID) is not registered"},
    {15511, "the institution asks to be called"},
    {15512, "an authentication token is required"},
};

std::string_view meaningOf(std::uint64_t code) noexcept {
    const auto* const known = std::ranges::find(kCodes, code, &KnownCode::code);
    return known != std::end(kCodes) ? known->meaning : std::string_view();
}

/// Whom an answer is for: the sign-on, a statement, or the element that the response has.
std::string subjectOf(const TvOFXResponse& response) {
    if (responseAs<TvOFXSignOnResponse>(response) != nullptr) return "the sign-on";
    if (statementIn(response) != nullptr) return "a statement";
    if (responseAs<TvOFXAccountInfoResponse>(response) != nullptr) return "the list of accounts";
    return "a request (<" + shownText(response.transactionWrapperName().value_or("?"), 40) + ">)";
}

/// What a status says of its answer.
enum class Verdict : std::uint8_t { accepted, unclear, warned, refused };

/// The text of the status code; nothing when there is none.
OptionalText codeTextOf(const TvOFXStatus& status) {
    if (!status.originalParseData()) return std::nullopt;
    const reading::NodeRef code = reading::NodeRef::of(*status.originalParseData())[reading::element("CODE")];
    if (!code.isText()) return std::nullopt;
    return trimWhiteSpace(code.text());
}

/// The code in the document; nothing when it is not a number. The class reads no code without a severity, so
/// it is read from the tree.
std::optional<std::uint64_t> codeOf(const TvOFXStatus& status) {
    const OptionalText text = codeTextOf(status);
    constexpr std::size_t mostDigits = 18;  // cannot overflow
    if (!text || text->empty() || text->size() > mostDigits) return std::nullopt;
    std::uint64_t code = 0;
    for (const char c : *text) {
        if (digitValue(c) > 9) return std::nullopt;
        code = code * 10 + digitValue(c);
    }
    return code;
}

bool hasContent(const TvOFXResponse& response) {
    const auto& node = response.originalParseData();
    return node && reading::NodeRef::of(*node);
}

/// The severity decides, unless it is not one of the standard, or is INFO without an answer. Then the code
/// does: 0 is success, and 1 says that there is nothing new.
Verdict verdictOf(const TvOFXResponse& response, const TvOFXStatus& status) {
    const std::string_view severity = trimWhiteSpace(status.severity().value_or(""));
    if (equalsIgnoringCase(severity, "ERROR")) return Verdict::refused;
    if (equalsIgnoringCase(severity, "WARN")) return Verdict::warned;
    const std::optional<std::uint64_t> code = codeOf(status);
    if (!code) return Verdict::unclear;
    if (*code == 0) return Verdict::accepted;
    if (!equalsIgnoringCase(severity, "INFO")) return Verdict::refused;
    return *code > 1 && !hasContent(response) ? Verdict::refused : Verdict::accepted;
}

std::string sentenceForUnclear(const TvOFXResponse& response, const TvOFXStatus& status) {
    const OptionalText code = codeTextOf(status);
    return "The status of " + subjectOf(response) +
           " does not say whether the server accepted it: its code " +
           (code ? "is " + quoted(*code) : std::string("is missing")) + ".";
}

std::string sentenceFor(const TvOFXResponse& response, const TvOFXStatus& status, Verdict verdict) {
    if (verdict == Verdict::unclear) return sentenceForUnclear(response, status);
    const std::uint64_t code = codeOf(status).value_or(status.code());
    std::string text = verdict == Verdict::refused ? "The server refused " : "The server warns about ";
    text.append(subjectOf(response)).append(" with code ").append(std::to_string(code));
    if (const std::string_view meaning = meaningOf(code); !meaning.empty())
        text.append(" (").append(meaning).append(")");
    if (const std::string_view message = trimWhiteSpace(status.message().value_or("")); !message.empty())
        text.append(": ").append(quoted(message, 200));
    return text.append(".");
}

/// True for an account that is there and has a number.
template <class Account>
bool hasNumber(const std::shared_ptr<Account>& account) {
    if (!account) return false;
    if constexpr (std::is_same_v<decltype(account->accountID()), OptionalText>)
        return !trimWhiteSpace(account->accountID().value_or("")).empty();
    else
        return account->accountID().text().has_value();
}

}  // namespace

void findRefusals(FindingList& findings, const TvOFXResponseList& responses, const TreePlaces& places) {
    for (const auto& response : responses) {
        const auto& status = response->status();
        if (!status) continue;
        const Verdict verdict = verdictOf(*response, *status);
        if (verdict == Verdict::accepted) continue;
        const FindingSeverity weight =
            verdict == Verdict::refused ? FindingSeverity::error : FindingSeverity::warning;
        std::string sentence;
        std::optional<std::size_t> place;
        if (findings.keeps(FindingKind::refused)) {
            sentence = sentenceFor(*response, *status, verdict);
            if (status->originalParseData())
                place = places.offsetOf(reading::NodeRef::of(*status->originalParseData()).index());
        }
        findings.add(FindingKind::refused, weight, std::move(sentence), 1, place);
    }
}

void findNamelessStatements(FindingList& findings, const KnownResponses& responses,
                            const std::vector<InvestmentStatement>& investmentStatements,
                            const TreePlaces& places) {
    std::size_t count = 0;
    std::optional<std::size_t> place;
    const auto add = [&](const ParseDictionary& statement) {
        if (count++ == 0) place = places.offsetOf(reading::NodeRef::of(statement).index());
    };
    for (const auto& statement : responses.statements) {
        const auto* const bank = responseAs<TvOFXStatementResponse>(*statement);
        const bool isNameless =
            bank != nullptr
                ? !hasNumber(bank->bankAccountFrom())
                : !hasNumber(
                      static_cast<const TvOFXCCStatementResponse&>(*statement).creditCardAccountFrom());
        // A statement that the server refused has no content; its status has been reported.
        if (isNameless && statement->originalParseData()) add(*statement->originalParseData());
    }
    for (const InvestmentStatement& statement : investmentStatements)
        if (!hasNumber(statement.account()) && statement.elementName() == "INVSTMTRS")
            add(statement.originalParseData());
    if (count != 0)
        findings.add(FindingKind::noAccount, FindingSeverity::warning,
                     counted(count, "statement does not say which account it is for",
                             "statements do not say which account they are for") +
                         ": <BANKACCTFROM>, <CCACCTFROM> or <INVACCTFROM> is missing or has no <ACCTID>.",
                     count, place);
}

}  // namespace brackwell::opening
