// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    brackwell::Error error;
    auto message = brackwell::TovanaOFXController::importOFXFileFromURL(argv[1], &error);
    if (!message) return std::cerr << error.description << '\n', 1;

    const brackwell::PatternDateFormatter day("yyyy-MM-dd");
    for (const auto& account : message->bankAccountsFound())
        if (auto statement = message->statementsForBankAccount(account))
            for (const auto& entry : statement->statementTransactions())
                if (entry->datePosted() && entry->amount())
                    std::cout << day.stringFromDate(*entry->datePosted()) << "  "
                              << entry->amount()->toString() << "  " << entry->payeeName().value_or("")
                              << '\n';
}
