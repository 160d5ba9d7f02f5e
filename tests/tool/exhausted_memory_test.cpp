// SPDX-License-Identifier: Apache-2.0
#include "tool/commands.h"
#include "tool/refusing_tool.h"

using namespace brackwell::tests;

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
