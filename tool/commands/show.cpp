// SPDX-License-Identifier: Apache-2.0
#include "commands/commands.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "accounts/listed_accounts.h"
#include "input/run.h"
#include "investments/security_lookup.h"
#include "text/shown_values.h"
#include "text_page/account_list.h"
#include "text_page/investment_section.h"
#include "text_page/profile_section.h"
#include "text_page/security_section.h"
#include "text_page/statement_section.h"
#include "text_page/text_page.h"

namespace tool {
namespace {

using namespace brackwell;

/// What the institution says besides errors, each message once.
void showMessages(TextPage& page, const TvOFXResponseList& responses) {
    std::set<std::string> shown;
    const TvOFXResult result(responses);
    for (const auto& message : result.allFIMessages())
        if (shown.insert(message->message()).second) page.fact("Message", message->message());
}

/// Responses that hold nothing but what is shown as investments.
constexpr std::array<std::string_view, 3> kShownAsInvestments = {"INVSTMTRS", "SECLISTRS", "SECLIST"};

/// True for a response that nothing on the page stands for.
bool isOther(const TvOFXResponse& response) {
    return response.className() == "TvOFXResponse" &&
           std::ranges::find(kShownAsInvestments, response.transactionWrapperName().value_or("")) ==
               kShownAsInvestments.end();
}

/// Lists of securities that could not be given.
void showTrouble(TextPage& page, const TvOFXResponseList& responses) {
    for (const auto& response : responses)
        if (response->transactionWrapperName() == "SECLISTRS" && isTrouble(response->status().get()))
            page.fact("Securities", shownStatus(*response->status()));
}

/// The kinds of responses that the library does not take apart, with their number and their errors.
void showOthers(TextPage& page, const TvOFXResponseList& responses) {
    std::vector<std::pair<std::string_view, std::size_t>> kinds;
    std::map<std::string_view, std::size_t> places;
    for (const auto& response : responses) {
        if (!isOther(*response)) continue;
        const std::string_view name = response->transactionWrapperName().value_or("");
        const auto [place, isNew] = places.try_emplace(name, kinds.size());
        if (isNew) kinds.emplace_back(name, 0);
        ++kinds[place->second].second;
    }
    if (kinds.empty()) return;
    page.heading("Other responses (not shown)");
    for (const auto& [name, count] : kinds) page.fact(name, std::to_string(count));
    for (const auto& response : responses)
        if (isOther(*response) && isTrouble(response->status().get()))
            page.fact(response->transactionWrapperName().value_or(""), shownStatus(*response->status()));
}

void showResponse(TextPage& page, const TvOFXResponse& response, const ListedAccounts& listed,
                  const Options& options) {
    if (const auto* statement = dynamic_cast<const TvOFXAccountStatement*>(&response))
        showStatement(page, *statement, options);
    else if (const auto* accounts = dynamic_cast<const TvOFXAccountInfoResponse*>(&response))
        showAccountInfo(page, *accounts, listed, options);
    else if (const auto* profile = dynamic_cast<const TvOFXFIProfileResponse*>(&response))
        showProfile(page, *profile);
}

/// True when there are statements, and none of an account that was asked for.
bool hidesAllStatements(const OpenedDocument& document, const Filter& filter) {
    const auto isHidden = [&filter](const auto& statement) { return !filter.takes(statement); };
    if (document.statements().empty() && document.investmentStatements().empty()) return false;
    return std::ranges::all_of(document.statements(),
                               [&](const auto& statement) { return isHidden(*statement); }) &&
           std::ranges::all_of(document.investmentStatements(), isHidden);
}

/// The lists of accounts and the profile, then the statements.
void showResponses(TextPage& page, const OpenedDocument& document, const Options& options) {
    const auto isStatement = [](const TvOFXResponse& response) {
        return dynamic_cast<const TvOFXAccountStatement*>(&response) != nullptr;
    };
    const ListedAccounts listed(document.accounts());
    for (const bool areStatements : {false, true})
        for (const auto& response : document.responses())
            if (isStatement(*response) == areStatements) showResponse(page, *response, listed, options);
}

void showAllInvestments(TextPage& page, const OpenedDocument& document, const SecurityList& others,
                        const Options& options) {
    const SecurityList own(document.securities());
    const SecurityLookup securities(own, others);
    for (const InvestmentStatement& statement : document.investmentStatements())
        showInvestments(page, statement, securities, options);
    showOtherSecurities(page, document, options);
}

/// What is shown of the whole document, then its parts.
void showDocument(TextPage& page, const OpenedDocument& document, const SecurityList& others,
                  const Options& options) {
    const TvOFXResponseList& responses = document.responses();
    const bool hasInvestments = !document.investmentStatements().empty() || !document.securities().empty();
    if (responses.empty() && !hasInvestments) return page.paragraph("The document has no responses.");
    if (document.signOn()) showSignOn(page, *document.signOn());
    showMessages(page, responses);
    showTrouble(page, responses);
    showResponses(page, document, options);
    showAllInvestments(page, document, others, options);
    if (hidesAllStatements(document, options.filter)) {
        page.emptyLine();
        page.paragraph("No statement matches the accounts asked for.");
    }
    showOthers(page, responses);
}

/// The documents of a file; where words are looked for, only those that have them.
std::vector<OpenedDocument> shownOf(const InputFile& input, const SecurityList& others,
                                    const Filter& filter) {
    std::vector<OpenedDocument> shown;
    for (const OpenedDocument& document : input.file.documents())
        if (document && (filter.words.empty() || filter.findsAny(document, others)))
            shown.push_back(document);
    return shown;
}

bool runShow(Run& run) {
    TextPage page(run.output);
    const Filter& filter = run.options.filter;
    bool isAnyShown = filter.words.empty();
    const bool areAllRead =
        forEachFileWithSecurities(run, [&](const InputFile& input, const SecurityList& others) {
            const std::vector<OpenedDocument> shown = shownOf(input, others, filter);
            if (shown.empty() && !filter.words.empty()) return;
            isAnyShown = true;
            if (run.options.named.files.size() > 1) page.heading("== " + input.name);
            for (const OpenedDocument& document : shown) showDocument(page, document, others, run.options);
        });
    if (!isAnyShown) page.paragraph("Nothing matches the search.");
    return areAllRead;
}

constexpr const char* kShowHelp =
    "Account numbers are masked but for their last four characters, unless --full is given.\n"
    "The width is that of the terminal, or COLUMNS; negative amounts are red on a terminal\n"
    "unless NO_COLOR is set or --color says otherwise. A terminal gets the page through the pager that\n"
    "BRACKWELL_PAGER or PAGER names, or through less. Totals are those of the transactions that are\n"
    "shown. With --search, files and accounts without a match are left out.\n\n"
    "Examples:\n"
    "  brackwell show july.ofx\n"
    "  brackwell show --full *.ofx | less\n"
    "  brackwell show --since 2024-01-01 --until 2024-03-31 --search \"card payment\" *.ofx\n";

}  // namespace

constexpr Command commands::kShow({
    .name = "show",
    .summary = "A person's view: institution, accounts, balances and transactions",
    .traits = kSeveralFiles | kReading | kFilter | kNumbers | kOutput | kPage,
    .help = kShowHelp,
    .run = runShow,
});

}  // namespace tool
