// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "support/effort.h"
#include "tool/commands.h"
#include "tool/tool.h"

/// \file
/// The tool without memory.

namespace brackwell::tests {

/// Runs of the tool in which the n-th allocation of the process is refused, or that one and all that
/// follow.
class RefusingTool {
public:
    explicit RefusingTool(std::vector<std::string> arguments, const std::string& output = {},
                          const std::string& named = document())
        : notWritten_(output + ": not written, since "),
          ofDocument_(named + ": There is not enough memory for this document.\n"),
          command_(toolCommand(std::move(arguments))) {
        if (!output.empty()) command_.arguments.insert(command_.arguments.end(), {"--output", output});
        command_.environment["LD_PRELOAD"] = BRACKWELL_FAILING_ALLOCATOR;
        command_.environment["BRACKWELL_ALLOCATIONS"] = folder_.path("count");
        expected_ = with("1000000000");
        CHECK(expected_.status == 0);
        count_ = std::stoul(folder_.read("count"));
        command_.environment.erase("BRACKWELL_ALLOCATIONS");
    }

    /// How many allocations the process makes.
    std::size_t count() const { return count_; }

    /// True when the refusal is said with status 1, or does no harm.
    bool survives(std::size_t n, bool andAllThatFollow) const {
        const Finished finished = with(std::to_string(n) + (andAllThatFollow ? "+" : ""));
        const std::string ofTool = "brackwell: There is not enough memory.\n";
        std::string rest = withoutLineOf(notWritten_, finished.error);
        while (rest.starts_with(ofDocument_)) rest.erase(0, ofDocument_.size());
        const bool isSaid =
            finished.status == 1 && !finished.error.empty() && (rest.empty() || rest == ofTool);
        const bool isHarmless =
            finished.status == 0 && finished.error == expected_.error && isExpected(finished.output);
        CAPTURE(n);
        CAPTURE(andAllThatFollow);
        CAPTURE(finished.status);
        CAPTURE(finished.error);
        CHECK((isSaid || isHarmless));
        return isSaid || isHarmless;
    }

    static const std::string& document() { return document_; }

private:
    Finished with(const std::string& refused) const {
        Command command = command_;
        command.environment["BRACKWELL_REFUSE"] = refused;
        return run(command);
    }

    /// What is made by chance is as long as before.
    bool isExpected(const std::string& output) const {
        return isRepeatable(command_.arguments.at(1)) ? output == expected_.output
                                                      : output.size() == expected_.output.size();
    }

    /// A text without the line that begins so.
    static std::string withoutLineOf(const std::string& beginning, std::string text) {
        const std::size_t begin = text.find(beginning);
        if (begin != text.npos) text.erase(begin, text.find('\n', begin) - begin + 1);
        return text;
    }

    static inline const std::string document_ = examplePath("card.ofx");
    TemporaryFolder folder_;
    std::string notWritten_;
    std::string ofDocument_;
    Command command_;
    Finished expected_;
    std::size_t count_ = 0;
};

/// Where commands begin to differ, more or less: they all understand the command line alike, and a request
/// does little more.
inline std::size_t understood() { return RefusingTool({"request", "accounts"}).count() - 40; }

inline bool canRefuse() {
    if (kSanitized) MESSAGE("skipped: sanitizers bring an allocator of their own");
    return !kSanitized;
}

}  // namespace brackwell::tests
