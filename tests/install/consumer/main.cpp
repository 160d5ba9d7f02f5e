// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include <iostream>

/// A program of somebody else: reads a document and says what was read. What it uses has to cross the
/// border of a shared library: functions, data, and the types behind objects.
int main(int argc, char** argv) {
    using namespace brackwell;
    if (argc != 2) return 2;
    Error error;
    const auto message = TovanaOFXController::importOFXFileFromURL(argv[1], &error);
    if (!message) return std::cerr << error.description << '\n', 1;

    const auto account = message->bankAccountsFound().at(0);
    const auto statement = message->statementsForBankAccount(account);
    if (!std::dynamic_pointer_cast<const TvOFXStatementResponse>(statement)) return 1;
    const auto& entries = statement->statementTransactions();
    std::cout << "version " << BrackwellVersionNumber << ", " << entries.size()
              << " transactions, the last of " << entries.back()->amount()->toString() << '\n';
}
