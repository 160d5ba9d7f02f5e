// SPDX-License-Identifier: Apache-2.0
#include "tool/tool.h"

using namespace brackwell::tests;

TEST_CASE("a build that reads no archives says so, and what the file is") {
    const TemporaryFolder folder;
    folder.file("in/july.ofx", kDocument);
    folder.file("in/a.zip", "PK\x03\x04\xFF");
    const Finished finished = toolIn(folder.path(), {"check", "in/a.zip"});
    CHECK(finished.status == 1);
    CHECK(finished.error ==
          "in/a.zip: This build of brackwell reads no ZIP archives.\n"
          "in/a.zip: not an OFX document\n"
          "  Likely cause: It is a ZIP archive or an office document.\n"
          "  Unpack it first.\n");
    CHECK(toolIn(folder.path(), {"check", "in"}).error ==
          "in: 1 file is passed over (hidden, a link to a folder, or no OFX document): a.zip.\n");
}
