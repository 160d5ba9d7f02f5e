// SPDX-License-Identifier: Apache-2.0
#include <brackwell/open.h>

#include <cstdio>
#include <string>

/// \file
/// The least that an application does with a document: its transactions, balances, findings, or why it does
/// not read. Its size in WebAssembly is what the library adds to a page.

namespace {

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void print(const brackwell::TvOFXAccountStatement& statement) {
    for (const auto& transaction : statement.statementTransactions()) {
        const auto amount = transaction->amount();
        const std::string payee(transaction->payeeName().value_or("?"));
        print((amount ? amount->toString() : "?") + " " + payee + "\n");
    }
    if (const auto balance = statement.ledgerBalanceAmount()) print(balance->toString() + "\n");
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    const brackwell::OpenedFile file = brackwell::openFile(arguments[1]);
    for (const auto& finding : file.findings()) print(finding.text + "\n");
    for (const auto& statement : file.statements()) print(*statement);
    if (!file) print(file.error().description() + "\n");
    return file ? 0 : 1;
}
