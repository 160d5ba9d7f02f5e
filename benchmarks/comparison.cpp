// SPDX-License-Identifier: Apache-2.0
#include "comparison.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "allocator.h"
#include "cpu_time.h"

namespace brackwell::benchmarks {
namespace {

constexpr double kShortestBatch = 0.004;  // seconds
constexpr std::size_t kFewestRounds = 7;

double timeOf(const std::function<void()>& run, std::size_t count) {
    const double start = cpuSeconds();
    for (std::size_t i = 0; i < count; ++i) run();
    return cpuSeconds() - start;
}

std::size_t batchSize(const std::function<void()>& run) {
    run();  // fills caches and the allocator's lists
    std::size_t count = 1;
    while (timeOf(run, count) < kShortestBatch) count *= 2;
    return count;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

double timeOfProcess(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failure = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (failure != 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
        std::cerr << command.front() << " failed\n";
        std::exit(1);
    }
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The value below which that part of the sorted values lies.
double quantile(const std::vector<double>& sorted, double part) {
    const double place = part * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (sorted[above] - sorted[below]) * (place - static_cast<double>(below));
}

}  // namespace

Work repeated(std::function<void()> run) {
    const std::size_t count = batchSize(run);
    return [run = std::move(run), count] { return timeOf(run, count) / static_cast<double>(count); };
}

Work apart(std::function<void()> run, std::size_t count) {
    void* const page =
        mmap(nullptr, sizeof(double), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED) std::exit(1);
    auto* const seconds = static_cast<double*>(page);  // the copy's answer; the mapping lasts to the end
    return [run = std::move(run), count, seconds] {
        inOwnProcess(Memory::asUsual, [&] {
            run();
            *seconds = timeOf(run, count);
        });
        return *seconds / static_cast<double>(count);
    };
}

Work process(std::vector<std::string> command) {
    return [command = std::move(command)] { return timeOfProcess(command); };
}

void inOwnProcess(Memory memory, const std::function<void()>& work) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        if (memory == Memory::kept) keepMemory();
        work();
        std::fflush(stdout);
        std::_Exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) std::exit(1);
}

Comparison compare(const Work& subject, const Work& reference, double seconds) {
    std::vector<double> subjects;
    std::vector<double> references;
    std::vector<double> ratios;
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    do {
        const bool isSubjectFirst = ratios.size() % 2 == 0;
        const double first = isSubjectFirst ? subject() : reference();
        const double second = isSubjectFirst ? reference() : subject();
        subjects.push_back(isSubjectFirst ? first : second);
        references.push_back(isSubjectFirst ? second : first);
        ratios.push_back(references.back() / subjects.back());
    } while (ratios.size() < kFewestRounds || std::chrono::steady_clock::now() < end);
    for (std::vector<double>* values : {&subjects, &references, &ratios})
        std::sort(values->begin(), values->end());
    return {quantile(subjects, 0.5), quantile(references, 0.5), quantile(ratios, 0.25), quantile(ratios, 0.5),
            quantile(ratios, 0.75)};
}

}  // namespace brackwell::benchmarks
