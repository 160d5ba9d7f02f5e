// SPDX-License-Identifier: Apache-2.0
#include "support/effort.h"
#include "tool/commands.h"
#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

/// Runs of the tool in which the n-th allocation of the process is refused, or that one and all that
/// follow.
class RefusingTool {
public:
    explicit RefusingTool(std::vector<std::string> arguments, const std::string& output = {})
        : notWritten_(output + ": not written, since "), command_(toolCommand(std::move(arguments))) {
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
        const std::string ofDocument = document_ + ": There is not enough memory for this document.\n";
        std::string rest = withoutLineOf(notWritten_, finished.error);
        while (rest.starts_with(ofDocument)) rest.erase(0, ofDocument.size());
        const bool isSaid =
            finished.status == 1 && !finished.error.empty() && (rest.empty() || rest == ofTool);
        const bool isHarmless =
            finished.status == 0 && finished.error == expected_.error && finished.output == expected_.output;
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

    /// A text without the line that begins so.
    static std::string withoutLineOf(const std::string& beginning, std::string text) {
        const std::size_t begin = text.find(beginning);
        if (begin != text.npos) text.erase(begin, text.find('\n', begin) - begin + 1);
        return text;
    }

    static inline const std::string document_ = examplePath("card.ofx");
    TemporaryFolder folder_;
    std::string notWritten_;
    Command command_;
    Finished expected_;
    std::size_t count_ = 0;
};

bool canRefuse() {
    if (kSanitized) MESSAGE("skipped: sanitizers bring an allocator of their own");
    return !kSanitized;
}

/// Where commands begin to differ, more or less: they all understand the command line alike, and a request
/// does little more.
std::size_t understood() { return RefusingTool({"request", "accounts"}).count() - 40; }

}  // namespace

TEST_CASE("wherever memory ends before the command line is understood, the tool says so with status 1") {
    if (!canRefuse()) return;
    const RefusingTool tool({"pretty", RefusingTool::document()});
    const std::size_t end = understood();
    REQUIRE(tool.count() > end);
    // Here the first refusal ends the program, so what follows it does not matter.
    for (std::size_t n = 1; n < end; ++n) tool.survives(n, n % 2 == 0);
    MESSAGE("pretty: the first ", end - 1, " allocations, each refused once or from then on");
}

TEST_CASE("wherever memory ends in a command, the tool says so with status 1") {
    if (!canRefuse()) return;
    const std::size_t begin = understood();
    for (const std::string& name : readingCommands()) {
        CAPTURE(name);
        const RefusingTool tool({name, RefusingTool::document()});
        REQUIRE(tool.count() > begin);
        for (std::size_t n = begin; n <= tool.count(); ++n) {
            tool.survives(n, false);
            tool.survives(n, true);
        }
        MESSAGE(name, ": the last ", tool.count() - begin + 1, " of ", tool.count(),
                " allocations, each refused once and from then on");
    }
}

TEST_CASE("wherever memory ends, an output file is the old one or has whole documents, and is alone") {
    if (!canRefuse()) return;
    const std::size_t begin = understood();
    const TemporaryFolder folder;
    const std::string& document = RefusingTool::document();
    const RefusingTool tool({"json", document, document}, folder.path("out.json"));
    const std::string both = folder.read("out.json");
    const std::string one = both.substr(0, both.size() / 2);
    CHECK(both == one + one);
    for (std::size_t n = begin; n <= tool.count(); ++n)
        for (const bool andAllThatFollow : {false, true}) {
            CAPTURE(n);
            folder.file("out.json", "old");
            tool.survives(n, andAllThatFollow);
            const std::string content = folder.read("out.json");
            CHECK((content == "old" || content == one || content == both));
            const std::filesystem::directory_iterator files(folder.path());
            CHECK(std::distance(files, {}) == 1);
        }
}
