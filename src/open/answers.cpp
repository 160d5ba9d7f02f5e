// SPDX-License-Identifier: Apache-2.0
#include "open/answers.h"

#include <algorithm>

#include "open/shown_text.h"
#include "platform/ascii_case.h"
#include "reading/node_ref.h"

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
    {15512, "an authentication token is asked for"},
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

std::string sentenceFor(const TvOFXResponse& response, const TvOFXStatus& status, bool isError) {
    std::string text = isError ? "The server refused " : "The server warns about ";
    text.append(subjectOf(response)).append(" with code ").append(std::to_string(status.code()));
    if (const std::string_view meaning = meaningOf(status.code()); !meaning.empty())
        text.append(" (").append(meaning).append(")");
    if (const std::string_view message = trimWhiteSpace(status.message().value_or("")); !message.empty())
        text.append(": ").append(quoted(message, 200));
    return text.append(".");
}

}  // namespace

void findRefusals(FindingList& findings, const TvOFXResponseList& responses, const TreePlaces& places) {
    for (const auto& response : responses) {
        const auto& status = response->status();
        if (!status) continue;
        const std::string_view severity = trimWhiteSpace(status->severity().value_or(""));
        const bool isError = equalsIgnoringCase(severity, "ERROR");
        if (!isError && !equalsIgnoringCase(severity, "WARN")) continue;
        const FindingSeverity weight = isError ? FindingSeverity::error : FindingSeverity::warning;
        std::string sentence;
        std::optional<std::size_t> place;
        if (findings.keeps(FindingKind::refused)) {
            sentence = sentenceFor(*response, *status, isError);
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
                ? !bank->bankAccountFrom()
                : !static_cast<const TvOFXCCStatementResponse&>(*statement).creditCardAccountFrom();
        // A statement that the server refused has no content, which its status says.
        if (isNameless && statement->originalParseData()) add(*statement->originalParseData());
    }
    for (const InvestmentStatement& statement : investmentStatements)
        if (!statement.account() && statement.elementName() == "INVSTMTRS")
            add(statement.originalParseData());
    if (count != 0)
        findings.add(
            FindingKind::noAccount, FindingSeverity::warning,
            counted(count, "statement does", "statements do") +
                " not say of which account: <BANKACCTFROM>, <CCACCTFROM> or <INVACCTFROM> is missing.",
            count, place);
}

}  // namespace brackwell::opening
