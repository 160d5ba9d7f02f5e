// SPDX-License-Identifier: Apache-2.0
#include "support/process.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace brackwell::tests {
namespace {

/// What the three standard descriptors of a program are to be; -1: closed.
struct Descriptors {
    int input;
    int output;
    int error;
};

/// Both ends of a pipe; none is handed down to programs but as a standard descriptor.
struct Pipe {
    int reading;
    int writing;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return {ends[0], ends[1]};
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

std::vector<std::string> environmentOf(const Command& command) {
    const char* path = std::getenv("PATH");
    std::map<std::string, std::string> variables = command.environment;
    variables.try_emplace("PATH", path != nullptr ? path : "");
    variables.try_emplace("TZ", "UTC");
    std::vector<std::string> texts;
    for (const auto& [name, value] : variables) texts.push_back(name + "=" + value);
    return texts;
}

/// Starts a program; the descriptors stay open here.
int start(const Command& command, const Descriptors& descriptors) {
    std::vector<std::string> arguments = command.arguments;
    std::vector<std::string> environment = environmentOf(command);
    const std::vector<char*> argumentPointers = pointers(arguments);
    const std::vector<char*> environmentPointers = pointers(environment);
    const pid_t process = ::fork();
    if (process != 0) return process;
    // What started the tests may ignore signals, as a shell does for what runs in the background.
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM})
        static_cast<void>(std::signal(signal, SIG_DFL));
    const std::array wanted{descriptors.input, descriptors.output, descriptors.error};
    for (int i = 0; i < 3; ++i) {
        const int descriptor = wanted[static_cast<std::size_t>(i)];
        if (descriptor < 0)
            ::close(i);
        else
            ::dup2(descriptor, i);
    }
    if (!command.directory.empty() && ::chdir(command.directory.c_str()) != 0) ::_exit(127);
    ::execve(argumentPointers[0], argumentPointers.data(), environmentPointers.data());
    ::_exit(127);
}

/// Waits for the end of a program and notes how it came.
void await(int process, Finished& finished) {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status)) finished.status = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) finished.signal = WTERMSIG(status);
}

/// Reads what is there; false at the end. A terminal whose program has ended gives an error instead.
bool readInto(std::string& text, int descriptor) {
    std::array<char, 4096> piece;
    const ssize_t count = ::read(descriptor, piece.data(), piece.size());
    if (count > 0) text.append(piece.data(), static_cast<std::size_t>(count));
    return count > 0;
}

/// A file without a name that holds the input, so that nothing has to be fed.
int inputFile(const std::string& input) {
    const int file = ::open("/tmp", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (file < 0 || ::write(file, input.data(), input.size()) != static_cast<ssize_t>(input.size()))
        throw std::runtime_error("no file for the input");
    ::lseek(file, 0, SEEK_SET);
    return file;
}

/// Reads two pipes to their ends.
void readBoth(int first, std::string& firstText, int second, std::string& secondText) {
    std::array<pollfd, 2> polled{{{first, POLLIN, 0}, {second, POLLIN, 0}}};
    while (polled[0].fd >= 0 || polled[1].fd >= 0) {
        ::poll(polled.data(), polled.size(), -1);
        if (polled[0].revents != 0 && !readInto(firstText, first)) polled[0].fd = -1;
        if (polled[1].revents != 0 && !readInto(secondText, second)) polled[1].fd = -1;
    }
}

/// Runs a program with an output of which nothing is read.
Finished runWith(const Command& command, int output) {
    const int input = inputFile(command.input);
    const Pipe error = makePipe();
    const int process = start(command, {input, output, error.writing});
    ::close(input);
    ::close(error.writing);
    Finished finished;
    while (readInto(finished.error, error.reading)) {
    }
    ::close(error.reading);
    await(process, finished);
    return finished;
}

/// A terminal: what is done on it, and the side on which that is seen.
struct Terminal {
    int inside;
    int outside;
};

Terminal makeTerminal(unsigned short columns) {
    Terminal terminal{};
    const winsize size{50, columns, 0, 0};
    if (::openpty(&terminal.outside, &terminal.inside, nullptr, nullptr, &size) != 0)
        throw std::runtime_error("no terminal");
    ::fcntl(terminal.outside, F_SETFD, FD_CLOEXEC);
    ::fcntl(terminal.inside, F_SETFD, FD_CLOEXEC);
    return terminal;
}

Command onTerminal(Command command) {
    command.environment.try_emplace("TERM", "xterm");
    command.environment.try_emplace("PAGER", "");  // a person would have to quit it
    return command;
}

}  // namespace

Finished run(const Command& command) {
    if (!command.outputFile.empty()) {
        const int file = ::open(command.outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        Finished finished = runWith(command, file);
        ::close(file);
        return finished;
    }
    const int input = inputFile(command.input);
    const Pipe output = makePipe();
    const Pipe error = makePipe();
    const int process = start(command, {input, output.writing, error.writing});
    for (const int descriptor : {input, output.writing, error.writing}) ::close(descriptor);
    Finished finished;
    readBoth(output.reading, finished.output, error.reading, finished.error);
    ::close(output.reading);
    ::close(error.reading);
    await(process, finished);
    return finished;
}

Finished runIntoClosedPipe(const Command& command) {
    const Pipe output = makePipe();
    ::close(output.reading);
    Finished finished = runWith(command, output.writing);
    ::close(output.writing);
    return finished;
}

Finished runWithoutOutput(const Command& command) { return runWith(command, -1); }

std::string obstacleToTerminals() {
    int outside = -1;
    int inside = -1;
    if (::openpty(&outside, &inside, nullptr, nullptr, nullptr) != 0) return std::strerror(errno);
    ::close(outside);
    ::close(inside);
    return {};
}

Finished runOnTerminal(const Command& command, unsigned short columns) {
    const Terminal terminal = makeTerminal(columns);
    const int input = inputFile(command.input);
    const int process = start(onTerminal(command), {input, terminal.inside, terminal.inside});
    ::close(input);
    ::close(terminal.inside);
    Finished finished;
    while (readInto(finished.output, terminal.outside)) {
    }
    ::close(terminal.outside);
    await(process, finished);
    return finished;
}

Waiting::Waiting(const Command& command) {
    const Pipe input = makePipe();
    const Pipe output = makePipe();
    const Pipe error = makePipe();
    process_ = start(command, {input.reading, output.writing, error.writing});
    for (const int descriptor : {input.reading, output.writing, error.writing}) ::close(descriptor);
    input_ = input.writing;
    output_ = output.reading;
    error_ = error.reading;
    if (::write(input_, command.input.data(), command.input.size()) !=
        static_cast<ssize_t>(command.input.size()))
        throw std::runtime_error("the program does not read");
}

Waiting::~Waiting() {
    if (process_ >= 0) finish();
}

void Waiting::send(int signal) { ::kill(process_, signal); }

Finished Waiting::finish() {
    ::close(input_);
    Finished finished;
    readBoth(output_, finished.output, error_, finished.error);
    ::close(output_);
    ::close(error_);
    await(process_, finished);
    process_ = -1;
    return finished;
}

Running::Running(const Command& command) {
    const Terminal terminal = makeTerminal(80);
    const Pipe input = makePipe();
    process_ = start(onTerminal(command), {input.reading, terminal.inside, terminal.inside});
    ::close(input.reading);
    ::close(terminal.inside);
    terminal_ = terminal.outside;
    input_ = input.writing;
}

Running::~Running() {
    if (process_ >= 0) finish();
}

bool Running::shows(const std::string& text) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (shown_.find(text) == std::string::npos) {
        pollfd polled{terminal_, POLLIN, 0};
        const bool isLate = std::chrono::steady_clock::now() >= end;
        if (isLate || ::poll(&polled, 1, 10'000) <= 0 || !readMore()) return false;
    }
    return true;
}

void Running::write(const std::string& input) {
    if (::write(input_, input.data(), input.size()) != static_cast<ssize_t>(input.size()))
        throw std::runtime_error("the program does not read");
}

Finished Running::finish() {
    ::close(input_);
    while (readMore()) {
    }
    ::close(terminal_);
    Finished finished{-1, shown_, {}};
    await(process_, finished);
    process_ = -1;
    return finished;
}

bool Running::readMore() { return readInto(shown_, terminal_); }

}  // namespace brackwell::tests
