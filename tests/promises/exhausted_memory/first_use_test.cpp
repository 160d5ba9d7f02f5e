// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

#include "support/process.h"
#include "survival.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// What a function answers in a process of its own, in which it is the first that is called.
template <class Function>
std::string inFreshProcess(Function function) {
    std::array<int, 2> ends{};
    REQUIRE(::pipe(ends.data()) == 0);
    const pid_t process = ::fork();
    if (process == 0) {
        const std::string answer = function();
        const bool written = ::write(ends[1], answer.data(), answer.size()) == std::ssize(answer);
        ::_exit(written ? 0 : 1);
    }
    ::close(ends[1]);
    std::string answer;
    std::array<char, 4096> piece;
    for (ssize_t count = 0; (count = ::read(ends[0], piece.data(), piece.size())) > 0;)
        answer.append(piece.data(), static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(process, &status, 0);
    return status == 0 ? answer : "ended with " + std::to_string(status);
}

/// What a first use with an allocation refused comes to, followed by what a second one without gives.
template <class Use>
std::string firstAndSecond(const Use& use, const Point& point) {
    std::string first;
    auto operation = [&] { first = use(); };
    refuseAllocation(point.n, point.refusal);
    const Outcome outcome = outcomeOf(operation);
    const bool refused = stopRefusing();
    if (outcome == Outcome::otherException) first = "exception";
    if (outcome == Outcome::badAlloc && !refused) first = "std::bad_alloc without need";
    return (refused ? "refused:" : "granted:") + first + ":" + use();
}

/// Tries a first use with each of its allocations refused.
template <class Use>
void surviveFirstUse(Tally& tally, const Use& use) {
    const std::string expected = inFreshProcess(use);
    tally.add(surviveAll([&](const Point& point) {
        const std::string answer = inFreshProcess([&] { return firstAndSecond(use, point); });
        Attempt finding;
        finding.refused = answer != "granted:" + expected + ":" + expected;
        // The first is right, or nothing.
        finding.right = !finding.refused || answer == "refused::" + expected ||
                        answer == "refused:" + expected + ":" + expected;
        if (!finding.right) MESSAGE(answer);
        return finding;
    }));
}

std::string textOf(const std::optional<Data>& data) { return data ? std::string(data->bytes()) : "nothing"; }

}  // namespace

// In a process of its own, since any test before it would make it no first use; see below.
TEST_CASE("first uses" * doctest::skip()) {
    {
        Tally tally("first import");
        const Data data = exampleData("utf_16.ofx");
        surviveFirstUse(tally, [&] {
            const auto message = TovanaOFXController::importOFXFileFromData(data);
            return std::string(message->bankAccountsFound().front()->accountID().value());
        });
    }
    {
        Tally tally("first use of the shared helper");
        surviveFirstUse(tally, [] { return TvOFXHelper::defaultHelper()->ofxDateFormatter().pattern(); });
    }
    {
        Tally tally("first use of an encoding");
        for (const TextEncoding encoding : knownTextEncodings()) {
            CAPTURE(encoding);
            surviveFirstUse(tally, [&] { return textOf(encodeText("<NAME>Caf", encoding)); });
            surviveFirstUse(tally,
                            [&] { return textOf(decodeText(Data::view("\xC4\xE3\xBE\xA4"), encoding)); });
        }
    }
}

TEST_CASE("what is made on first use is made later when there was no memory for it") {
    const Finished finished = run({{"/proc/self/exe", "-tc=first uses", "--no-skip"}});
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(finished.output.find(" 1 passed") != std::string::npos);
    MESSAGE(finished.output);
}
