// SPDX-License-Identifier: Apache-2.0
// Compares two downloads of an account: which transactions of the second are not in the first? Archives
// those, and reads them back, as an application would in its next run.
#include <brackwell/brackwell.h>

#include <algorithm>
#include <iostream>

using Transactions = std::vector<std::shared_ptr<brackwell::TvOFXStatementTransaction>>;

/// The transactions of all bank statements of a document.
static Transactions transactionsOf(const char* path) {
    brackwell::Error error;
    const auto message = brackwell::TovanaOFXController::importOFXFileFromURL(path, &error);
    if (!message) std::cerr << error.description << '\n';
    Transactions all;
    if (message)
        for (const auto& account : message->bankAccountsFound())
            if (const auto statement = message->statementsForBankAccount(account))
                all.insert(all.end(), statement->statementTransactions().begin(),
                           statement->statementTransactions().end());
    return all;
}

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const Transactions known = transactionsOf(argv[1]);
    const Transactions downloaded = transactionsOf(argv[2]);

    std::vector<brackwell::Data> archive;
    for (const auto& transaction : downloaded) {
        const bool isKnown = std::any_of(known.begin(), known.end(), [&](const auto& other) {
            return transaction->isEqualOFXStatementTransaction(other.get());
        });
        if (isKnown) continue;
        brackwell::KeyedArchiver coder;
        transaction->encodeWithCoder(coder);
        archive.push_back(coder.archivedData());
    }
    std::cout << downloaded.size() - archive.size() << " known, " << archive.size() << " new\n";

    for (const brackwell::Data& bytes : archive)
        if (const auto coder = brackwell::KeyedUnarchiver::open(bytes)) {
            const auto restored = brackwell::TvOFXStatementTransaction::initWithCoder(*coder);
            std::cout << (restored->amount() ? restored->amount()->toString() : "?") << "  "
                      << restored->payeeName().value_or("") << '\n';
        }
}
