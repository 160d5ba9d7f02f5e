// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

#include "../in_threads.h"

/// \file
/// Several threads that use the library at once before anything in the process has. Each round is a process
/// of its own, made by one that has not used the library either; the last must find what the first found.

namespace {

using namespace brackwell;

constexpr std::size_t kThreads = 8;
constexpr int kRounds = 40;

struct Found {
    const TvOFXHelper* helper = nullptr;
    std::optional<Date> date;
    std::string text;

    bool operator==(const Found&) const = default;
};

/// Half of the threads come to the shared helper by an import, the others ask for it.
Found use(std::size_t thread) {
    constexpr std::string_view document =
        "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST><STMTTRN><DTPOSTED>20240131<TRNAMT>1,234.5"
        "</STMTTRN></BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>";
    Found found;
    if (thread % 2 == 0) found.helper = TvOFXHelper::defaultHelper().get();
    const auto message = TovanaOFXController::importOFXFileFromData(Data::view(document));
    found.helper = TvOFXHelper::defaultHelper().get();
    const TvOFXResult result(message->bankingMsgSet());
    if (result.transactions() == nullptr || result.transactions()->size() != 1) return {};
    const TvOFXStatementTransaction& transaction = *result.transactions()->front();
    found.date = transaction.datePosted();
    found.text = transaction.amount().value_or(Decimal()).toString() +
                 TvOFXHelper::ofxDateTimeStringFromDate(found.date.value_or(Date()));
    return found;
}

bool threadsAgree() {
    const std::vector<Found> found = brackwell::tests::inThreads(kThreads, use);
    for (const Found& each : found)
        if (each != found.front() || !each.date || !each.text.starts_with("1234.5")) return false;
    return true;
}

}  // namespace

int main() {
    for (int round = 1; round <= kRounds; ++round) {
        const pid_t process = ::fork();
        if (process == 0) ::_exit(threadsAgree() ? 0 : 1);
        int status = 0;
        ::waitpid(process, &status, 0);
        if (status != 0) {
            std::printf("round %d ended with %d\n", round, status);
            return 1;
        }
    }
    std::printf("%d processes, in each %zu threads at once\n", kRounds, kThreads);
    return 0;
}
