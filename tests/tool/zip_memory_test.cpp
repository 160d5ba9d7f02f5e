// SPDX-License-Identifier: Apache-2.0
#include "tool/refusing_tool.h"
#include "tool/zip_archive.h"

using namespace brackwell::tests;

TEST_CASE("wherever memory ends while an archive is read, the tool says so with status 1") {
    if (!canRefuse()) return;
    const TemporaryFolder folder;
    const std::string archive = folder.file("in.zip", zipOf({{"july.ofx", kDocument}, {"b", "text"}}));
    const RefusingTool tool({"check", "--quiet", archive}, {}, archive + "/july.ofx");
    const std::size_t begin = understood();
    REQUIRE(tool.count() > begin);
    for (std::size_t n = begin; n <= tool.count(); ++n) {
        tool.survives(n, false);
        tool.survives(n, true);
    }
    MESSAGE("check: the last ", tool.count() - begin + 1, " of ", tool.count(), " allocations");
}
