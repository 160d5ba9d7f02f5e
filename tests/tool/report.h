// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tool/markup_reader.h"
#include "tool/tool.h"

/// \file
/// Reports as they are read, and documents for them.

namespace brackwell::tests {

/// The report of a document that is read without a word.
inline MarkupPage reportOf(const std::string& document, std::vector<std::string> options = {}) {
    options.insert(options.begin(), "report");
    return MarkupPage(outputOf(std::move(options), document));
}

/// The statement of a checking account in a currency, with transactions and what follows them.
inline std::string statement(const std::string& number, const std::string& currency,
                             const std::string& transactions, const std::string& balances = "") {
    return "<STMTTRNRS><STMTRS>" + (currency.empty() ? "" : "<CURDEF>" + currency) +
           "<BANKACCTFROM><BANKID>1<ACCTID>" + number + "<ACCTTYPE>CHECKING</BANKACCTFROM><BANKTRANLIST>" +
           transactions + "</BANKTRANLIST>" + balances + "</STMTRS></STMTTRNRS>";
}

inline std::string transaction(const std::string& date, const std::string& amount,
                               const std::string& rest = "") {
    return "<STMTTRN><DTPOSTED>" + date + "<TRNAMT>" + amount + rest + "</STMTTRN>";
}

inline std::string ledger(const std::string& amount, const std::string& date) {
    return "<LEDGERBAL><BALAMT>" + amount + "<DTASOF>" + date + "</LEDGERBAL>";
}

inline std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
    return count;
}

/// The facts of the first account: label and value.
inline std::map<std::string, std::string> factsOf(const MarkupPage& page) {
    std::map<std::string, std::string> facts;
    const auto labels = page.texts("dt");
    const auto values = page.texts("dd");
    for (std::size_t i = 0; i < labels.size(); ++i) facts.emplace(labels.at(i), values.at(i));
    return facts;
}

}  // namespace brackwell::tests
