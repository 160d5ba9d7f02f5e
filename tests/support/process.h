// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

/// \file
/// Other programs, for tests of a program as its users see it.

namespace brackwell::tests {

/// A program to be run.
struct Command {
    std::vector<std::string> arguments;                   ///< the program first
    std::string input = {};                               ///< on standard input
    std::map<std::string, std::string> environment = {};  ///< besides PATH and TZ=UTC; nothing else is there
    std::string directory = {};                           ///< where it runs; here, when empty
    std::string outputFile = {};  ///< where standard output goes, instead of into Finished::output
};

/// What a program left behind.
struct Finished {
    int status = -1;     ///< the exit status; -1 when it did not exit by itself
    std::string output;  ///< standard output
    std::string error;   ///< standard error
    int signal = 0;      ///< the one that ended it; 0: none
};

/// Runs a program to its end.
Finished run(const Command& command);

/// Runs a program whose standard output nobody reads.
Finished runIntoClosedPipe(const Command& command);

/// Runs a program whose standard output is closed from the start.
Finished runWithoutOutput(const Command& command);

/// Why no terminal can be had for a program, as in a container without /dev/pts; "" where it can.
std::string obstacleToTerminals();

/// Runs a program on a terminal so many columns wide: what it shows there, of both outputs, is the output.
Finished runOnTerminal(const Command& command, unsigned short columns);

/// A program that waits for more on its standard input, a pipe that stays open after what the command says.
class Waiting {
public:
    explicit Waiting(const Command& command);
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting();

    void send(int signal);
    /// Ends the input and waits for the program.
    Finished finish();

private:
    int process_ = -1;
    int input_ = -1;
    int output_ = -1;
    int error_ = -1;
};

/// A program whose standard input stays open for as long as the caller likes, on a terminal.
class Running {
public:
    explicit Running(const Command& command);
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running();

    /// Waits until the terminal shows this text; false when it does not within ten seconds.
    bool shows(const std::string& text);
    void write(const std::string& input);
    /// Ends the input and waits for the program.
    Finished finish();

private:
    bool readMore();

    int process_ = -1;
    int terminal_ = -1;
    int input_ = -1;
    std::string shown_;
};

}  // namespace brackwell::tests
