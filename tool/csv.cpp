// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "run.h"
#include "text/characters.h"
#include "text/value_text.h"
#include "text/visible_text.h"

namespace tool {
namespace {

using brackwell::OptionalText;

constexpr std::string_view kHeader =
    "file,accountClass,bankID,branchID,accountID,accountType,defaultCurrency,transactionType,datePosted,"
    "dateUserInit,dateFundsAvailable,amount,fiTransactionID,checkOrReferenceNumber,referenceNumber,payeeName,"
    "memo\r\n";

/// True when a spreadsheet might take the text for a formula.
bool looksLikeFormula(std::string_view text) {
    if (text.empty() || std::string_view("=+-@\t\r").find(text.front()) == std::string_view::npos)
        return false;
    return !brackwell::DecimalNumberFormatter().numberFromString(text);
}

/// True when a field with this text stands in quotes.
bool needsQuotes(std::string_view text) noexcept {
    return std::ranges::any_of(text, [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n'; });
}

/// One row, field after field.
class Row {
public:
    void clear() { text_.clear(); }
    std::string_view text() const noexcept { return text_; }

    void add(OptionalText field) {
        separate();
        if (!field || field->empty()) return;
        std::string storage;
        const std::string_view text = asUTF8(*field, storage);
        const bool isQuoted = needsQuotes(text);
        if (isQuoted) text_ += '"';
        if (looksLikeFormula(text)) text_ += '\'';
        if (isQuoted)
            addQuoted(text);
        else
            text_.append(text);
    }
    void add(const std::optional<brackwell::Date>& date) {
        separate();
        if (date) text_.append(DateText(*date));
    }
    void add(const std::optional<brackwell::Decimal>& amount) {
        separate();
        if (amount) text_.append(amount->toString());
    }
    /// Fields that have been made before, each with its comma.
    void addMade(std::string_view fields) { text_.append(fields); }

private:
    void separate() {
        if (!text_.empty()) text_ += ',';
    }
    void addQuoted(std::string_view text) {
        for (const char c : text) {
            if (c == '"') text_ += '"';
            text_ += c;
        }
        text_ += '"';
    }

    std::string text_;
};

/// The fields that are the same in all rows of a statement.
void addStatement(Row& row, const std::string& file, const brackwell::TvOFXAccountStatement& statement) {
    using namespace brackwell;
    row.add(OptionalText(file));
    const auto* bank = dynamic_cast<const TvOFXStatementResponse*>(&statement);
    const auto* card = dynamic_cast<const TvOFXCCStatementResponse*>(&statement);
    if (bank != nullptr && bank->bankAccountFrom()) {
        const TvOFXBankAccount& account = *bank->bankAccountFrom();
        row.add(account.className());
        row.add(account.bankID());
        row.add(account.branchID());
        row.add(account.accountID());
        row.add(TvOFXBankAccount::accountTypeStringFromAccountType(account.accountType()));
    } else {
        const auto account = card != nullptr ? card->creditCardAccountFrom() : nullptr;
        row.add(account ? OptionalText(account->className()) : std::nullopt);
        row.addMade(",,");
        row.add(account ? account->accountID() : std::nullopt);
        row.addMade(",");
    }
    row.add(statement.defaultCurrency());
}

void addTransaction(Row& row, const brackwell::TvOFXStatementTransaction& transaction) {
    row.add(transaction.transactionType());
    row.add(transaction.datePosted());
    row.add(transaction.dateUserInit());
    row.add(transaction.dateFundsAvailable());
    row.add(transaction.amount());
    row.add(transaction.fiTransactionID());
    row.add(transaction.checkOrReferenceNumber());
    row.add(transaction.referenceNumber());
    row.add(transaction.payeeName());
    row.add(transaction.memo());
}

void writeRow(Output& output, std::string_view row) {
    if (output.isTerminal())
        output.write(visiblePart(row));
    else
        output.write(row);
    output.write("\r\n");
}

void writeStatement(Run& run, const std::string& file, const brackwell::TvOFXAccountStatement& statement) {
    Row common;
    addStatement(common, file, statement);
    Row row;
    for (const auto* transaction : run.options.filter.transactionsOf(statement)) {
        if (!run.output.isGood()) return;
        row.clear();
        row.addMade(common.text());
        addTransaction(row, *transaction);
        writeRow(run.output, row.text());
    }
}

}  // namespace

bool runCsv(Run& run) {
    run.output.write(kHeader);
    return forEachDocument(run, [&run](const Document& document) {
        const auto interpreter = interpretedForPerson(run, document);
        for (const auto& response : interpreter->allResponses())
            if (const auto* statement = dynamic_cast<const brackwell::TvOFXAccountStatement*>(response.get());
                statement != nullptr && run.options.filter.takes(*statement))
                writeStatement(run, document.name, *statement);
    });
}

}  // namespace tool
