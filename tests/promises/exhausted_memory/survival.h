// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <doctest/doctest.h>

#include <functional>
#include <iomanip>
#include <new>
#include <optional>
#include <sstream>
#include <string>

#include "failing_allocator.h"
#include "support/documents.h"
#include "support/transcript.h"

/// \file
/// Runs an operation with its first allocation refused, then with its second, and so on until it makes
/// none that is refused; each once with that allocation only and once with all that follow it.

namespace brackwell::tests {

/// How many refused allocations the operations of one kind survived; said when the object ends.
class Tally {
public:
    explicit Tally(std::string operation) : operation_(std::move(operation)) {}
    Tally(const Tally&) = delete;
    Tally& operator=(const Tally&) = delete;
    ~Tally() {
        std::ostringstream line;
        line << std::left << std::setw(48) << operation_ << std::right << std::setw(7) << points_
             << " allocations, each refused once and from then on";
        MESSAGE(line.str());
        CHECK(points_ > 0);
    }
    void add(std::size_t points) noexcept { points_ += points; }

private:
    std::string operation_;
    std::size_t points_ = 0;
};

/// What became of an operation.
enum class Outcome { done, badAlloc, otherException };

template <class Operation>
Outcome outcomeOf(Operation& operation) {
    try {
        operation();
        return Outcome::done;
    } catch (const std::bad_alloc&) {
        return Outcome::badAlloc;
    } catch (...) {
        return Outcome::otherException;
    }
}

/// An object that was there before. What it answers must stay the same.
class Witness {
public:
    bool answersAsBefore() { return transcriptOf(*message_) == before_; }

private:
    std::shared_ptr<TvOFXMessage> message_ = importedExample("checking.ofx");
    std::string before_ = transcriptOf(*message_);
};

/// One allocation that is refused: which, and for how long.
struct Point {
    std::size_t n;
    Refusal refusal;
};

/// What an attempt with one allocation refused came to.
struct Attempt {
    bool refused = false;
    bool right = false;  ///< all that must hold did
    std::ptrdiff_t leaked = 0;
};

/// Attempts one point after the other until nothing is refused, and returns how many there were. Now and
/// then a witness is asked.
inline std::size_t surviveAll(const std::function<Attempt(const Point&)>& attempt,
                              Witness* witness = nullptr) {
    std::size_t count = 0;
    for (const Refusal refusal : {Refusal::once, Refusal::fromThenOn}) {
        for (std::size_t n = 1;; ++n) {
            Attempt finding = attempt({n, refusal});
            // The C library keeps what it has loaded for another time, but does so once.
            if (finding.leaked != 0) finding.leaked = attempt({n, refusal}).leaked;
            CAPTURE(n);
            CAPTURE(refusal == Refusal::once);
            CHECK(finding.right);
            CHECK(finding.leaked <= 0);
            if (!finding.refused) break;
            if (witness != nullptr && n % 16 == 1) CHECK(witness->answersAsBefore());
            if (refusal == Refusal::once) ++count;
        }
    }
    return count;
}

/// Makes something of nothing: with an allocation refused, it is made as without, or std::bad_alloc is
/// thrown and every block released. `describe` turns what was made into a text to be compared.
template <class Make, class Describe>
void surviveMaking(Tally& tally, Make make, Describe describe) {
    const auto textOf = [&](const auto& made) { return std::string(describe(made)); };
    const std::string expected = textOf(make());
    Witness witness;
    const auto attempt = [&](const Point& point) {
        Attempt finding;
        const std::ptrdiff_t live = liveBlocks();
        {
            std::optional<decltype(make())> made;
            auto operation = [&] { made.emplace(make()); };
            refuseAllocation(point.n, point.refusal);
            const Outcome outcome = outcomeOf(operation);
            finding.refused = stopRefusing();
            finding.right = outcome == Outcome::done ? textOf(*made) == expected
                                                     : outcome == Outcome::badAlloc && finding.refused;
        }
        finding.leaked = liveBlocks() - live;
        return finding;
    };
    tally.add(surviveAll(attempt, &witness));
}

/// The same for a text.
template <class Make>
void surviveMaking(Tally& tally, Make make) {
    surviveMaking(tally, std::move(make), [](const std::string& made) { return made; });
}

/// Changes an object: with an allocation refused, it is changed as without, or std::bad_alloc is thrown,
/// the object answers as before, and can be changed then. `prepare` makes the object, a pointer to it.
template <class Prepare, class Change, class Describe>
void surviveChanging(Tally& tally, Prepare prepare, Change change, Describe describe) {
    const auto textOf = [&](bool isChanged) {
        const auto object = prepare();
        if (isChanged) change(*object);
        return std::string(describe(*object));
    };
    const std::string before = textOf(false);
    const std::string after = textOf(true);
    const auto isRight = [&](const Point& point, bool& refused) {
        const auto object = prepare();
        auto operation = [&] { change(*object); };
        refuseAllocation(point.n, point.refusal);
        const Outcome outcome = outcomeOf(operation);
        refused = stopRefusing();
        if (outcome == Outcome::done) return describe(*object) == after;
        if (outcome != Outcome::badAlloc || !refused || describe(*object) != before) return false;
        change(*object);
        return describe(*object) == after;
    };
    Witness witness;
    const auto attempt = [&](const Point& point) {
        Attempt finding;
        const std::ptrdiff_t live = liveBlocks();
        finding.right = isRight(point, finding.refused);
        finding.leaked = liveBlocks() - live;
        return finding;
    };
    tally.add(surviveAll(attempt, &witness));
}

}  // namespace brackwell::tests
