// SPDX-License-Identifier: Apache-2.0
#include "console/pager.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

#include "console/messages.h"

namespace tool {
namespace {

/// The statuses of a shell for a command that it did not find or could not run.
constexpr int kNotRunnable = 126;
constexpr int kNotFound = 127;

/// What a person types to interrupt, which is the pager's business while it runs.
constexpr std::array kPagersSignals = {SIGINT, SIGQUIT};

bool isInstalled(const std::string& program) {
    const char* path = std::getenv("PATH");
    std::string_view folders = path != nullptr ? path : "";
    while (!folders.empty()) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        if (::access(std::string(folders.substr(0, end)).append("/").append(program).c_str(), X_OK) == 0)
            return true;
        folders.remove_prefix(std::min(end + 1, folders.size()));
    }
    return false;
}

/// The variables of this program, and those of the usual pagers that are not set.
class PagerEnvironment {
public:
    PagerEnvironment() {
        for (char** variable = environ; *variable != nullptr; ++variable) variables_.push_back(*variable);
        if (std::getenv("LESS") == nullptr) variables_.push_back(less_.data());
        if (std::getenv("LV") == nullptr) variables_.push_back(lv_.data());
        variables_.push_back(nullptr);
    }
    PagerEnvironment(const PagerEnvironment&) = delete;
    PagerEnvironment& operator=(const PagerEnvironment&) = delete;

    char* const* variables() const noexcept { return variables_.data(); }

private:
    std::string less_ = "LESS=FRX";
    std::string lv_ = "LV=-c";
    std::vector<char*> variables_;
};

/// What a started program has of its own: standard input, and signals as they are by default.
class PagerStart {
public:
    explicit PagerStart(int input) noexcept {
        ::posix_spawn_file_actions_init(&files_);
        ::posix_spawn_file_actions_adddup2(&files_, input, STDIN_FILENO);
        ::posix_spawnattr_init(&attributes_);
        sigset_t defaults;
        ::sigemptyset(&defaults);
        for (const int signal : {SIGINT, SIGQUIT, SIGPIPE, SIGXFSZ}) ::sigaddset(&defaults, signal);
        ::posix_spawnattr_setsigdefault(&attributes_, &defaults);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    PagerStart(const PagerStart&) = delete;
    PagerStart& operator=(const PagerStart&) = delete;
    ~PagerStart() {
        ::posix_spawn_file_actions_destroy(&files_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    /// Runs a command in a shell; its process, or -1.
    pid_t run(const std::string& command) const {
        std::string words[] = {"sh", "-c", command};  // which the system's call takes as if it changed them
        const std::array<char*, 4> arguments = {words[0].data(), words[1].data(), words[2].data(), nullptr};
        const PagerEnvironment environment;
        pid_t process = -1;
        const int failure = ::posix_spawn(&process, "/bin/sh", &files_, &attributes_, arguments.data(),
                                          environment.variables());
        return failure == 0 ? process : -1;
    }

private:
    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

std::optional<std::string> wantedPager() {
    const char* terminal = std::getenv("TERM");
    if (terminal == nullptr || *terminal == '\0' || std::strcmp(terminal, "dumb") == 0) return std::nullopt;
    for (const char* variable : {"BRACKWELL_PAGER", "PAGER"}) {
        const char* value = std::getenv(variable);
        if (value == nullptr) continue;
        const std::string command = value;
        return command.empty() || command == "cat" ? std::nullopt : std::optional(command);
    }
    return isInstalled("less") ? std::optional<std::string>("less") : std::nullopt;
}

Pager::Pager(const std::string& command) {
    static_assert(std::tuple_size_v<decltype(actions_)> == kPagersSignals.size());
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
    process_ = PagerStart(ends[0]).run(command);
    ::close(ends[0]);
    if (process_ < 0) {
        ::close(ends[1]);
        return;
    }
    descriptor_ = ends[1];
    for (std::size_t i = 0; i < kPagersSignals.size(); ++i)
        actions_[i] = std::signal(kPagersSignals[i], SIG_IGN);
    holdMessages();
}

bool Pager::finish() {
    if (process_ < 0) return wasRun_;
    ::close(descriptor_);
    descriptor_ = -1;
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    for (std::size_t i = 0; i < kPagersSignals.size(); ++i) std::signal(kPagersSignals[i], actions_[i]);
    releaseMessages();
    const int exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    wasRun_ = exitStatus != kNotFound && exitStatus != kNotRunnable;
    return wasRun_;
}

}  // namespace tool
