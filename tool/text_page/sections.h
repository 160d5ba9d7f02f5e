// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The sections of what `brackwell show` shows of a document.

#include <brackwell/open.h>

#include <string>
#include <vector>

namespace tool {

class ListedAccounts;
class TextPage;
class SecurityLookup;
struct Options;

/// A number of an account, masked but for its last four characters, whatever script they are of, unless it
/// is to be shown in full. Of a number that has no more than four, nothing is shown.
std::string shownNumber(brackwell::OptionalText number, bool isFull);
/// "2024-01-31", or "2024-01-31 17:05" when it is not midnight; "" for nothing.
std::string shownDate(std::optional<brackwell::Date> date);
/// "-12.50": at least two decimals.
std::string shownAmount(const brackwell::Decimal& amount);
/// "0.125": of units and prices, as exact as they are.
std::string shownUnits(const std::optional<brackwell::Decimal>& units);
/// "2003 [ERROR] Account not found".
std::string shownStatus(const brackwell::TvOFXStatus& status);
/// True when the institution did not do what it was asked, or said so only by a code.
bool isTrouble(const brackwell::TvOFXStatus* status);

void showSignOn(TextPage& page, const brackwell::TvOFXSignOnResponse& signOn);
void showAccountInfo(TextPage& page, const brackwell::TvOFXAccountInfoResponse& response,
                     const ListedAccounts& listed, const Options& options);
/// The accounts of all account lists; what several of them say alike once.
void showListedAccounts(TextPage& page, const std::vector<brackwell::ListedAccount>& accounts, bool isFull);
void showProfile(TextPage& page, const brackwell::TvOFXFIProfileResponse& profile);
/// Nothing for the statement of an account that is not wanted.
void showStatement(TextPage& page, const brackwell::TvOFXAccountStatement& statement, const Options& options);
/// The same of an investment account: balances, holdings and transactions.
void showInvestments(TextPage& page, const brackwell::InvestmentStatement& statement,
                     const SecurityLookup& securities, const Options& options);
/// A balance of a list as its kind asks for: "4.9 %", "800.10 EUR", with the currency when it is not the
/// statement's.
std::string shownBalance(const brackwell::ListedBalance& balance, brackwell::OptionalText statementCurrency);
/// What a statement says of a retirement plan; nothing when it does not.
void showPlan(TextPage& page, const brackwell::InvestmentStatement& statement);
/// The securities of a document that none of its positions and transactions names.
void showOtherSecurities(TextPage& page, const brackwell::OpenedDocument& document, const Options& options);

}  // namespace tool
