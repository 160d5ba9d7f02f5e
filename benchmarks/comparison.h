// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace brackwell::benchmarks {

/// Does something and returns how many seconds of processor time it took.
using Work = std::function<double()>;

/// Work in this thread, done often enough at a time that the clock's own cost vanishes; the seconds are
/// those of one run.
Work repeated(std::function<void()> run);

/// The same, each time in a new copy of this process (see inOwnProcess), after one run that is not timed.
Work apart(std::function<void()> run, std::size_t count);

/// Work of a program of its own, from its start to its end; what it prints goes nowhere. Ends this
/// program when it fails.
Work process(std::vector<std::string> command);

/// Where the memory that a reader asks for comes from. One measurement would change it for the next (see
/// keepMemory), so each is made in a process of its own.
enum class Memory {
    asUsual,  ///< the C library's settings as they are
    kept,     ///< nothing goes back to the system: it is there again for who asks next
};

/// Runs `work` in a copy of this process, which shares its output and ends with it. Ends this program when
/// the copy fails.
void inOwnProcess(Memory memory, const std::function<void()>& work);

/// Two works side by side: the medians of their times, and how the quotients of neighbours lie.
struct Comparison {
    double subject = 0;
    double reference = 0;
    double low = 0;     ///< the lower quartile of reference / subject
    double median = 0;  ///< above 1: the subject is the faster one
    double high = 0;
};

/// Runs the two in turn, the first to run changing from round to round, for about that many seconds, and
/// at least seven rounds. What slows the machine for a while slows both, and so the quotient of two
/// neighbours holds where their times do not.
Comparison compare(const Work& subject, const Work& reference, double seconds);

}  // namespace brackwell::benchmarks
