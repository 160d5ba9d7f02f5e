// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>

#include <algorithm>

#include "tool/commands.h"
#include "tool/output_files.h"

/// \file
/// What arrives in an output file.

using namespace brackwell::tests;

namespace {

unsigned modeOf(const std::string& path) {
    struct stat status = {};
    REQUIRE(::stat(path.c_str(), &status) == 0);
    return status.st_mode & 07777U;
}

}  // namespace

TEST_CASE("an output file is readable by its owner only, whatever it replaces") {
    for (const char* mask : {"000", "022", "077"}) {
        CAPTURE(mask);
        const TemporaryFolder folder;
        folder.file("in.ofx", kDocument);
        ::chmod(folder.file("old.csv", kOld).c_str(), 0666);
        for (const char* name : {"new.csv", "old.csv"}) {
            CAPTURE(name);
            const Finished finished =
                shell(folder, "umask " + std::string(mask) + "; \"$TOOL\" csv in.ofx -o " + name);
            CHECK(finished.status == 0);
            CHECK(finished.error == "");
            CHECK(modeOf(folder.path(name)) == 0600);
            CHECK(folder.read(name) == toolIn(folder.path(), {"csv", "in.ofx"}).output);
        }
    }
}

TEST_CASE("a symbolic link stays a link, and what it leads to is replaced") {
    const TemporaryFolder folder;
    const TemporaryFolder other;
    folder.file("in.ofx", kDocument);
    other.file("target", kOld);
    std::filesystem::create_symlink(other.path("target"), folder.path("first"));
    std::filesystem::create_symlink("first", folder.path("second"));
    std::filesystem::create_symlink(other.path("none yet"), folder.path("dangling"));
    struct Row {
        std::string link, target;
    };
    for (const Row& row : {Row{"second", "target"}, Row{"dangling", "none yet"}}) {
        CAPTURE(row.link);
        CHECK(toolIn(folder.path(), {"json", "in.ofx", "-o", row.link}).status == 0);
        CHECK(std::filesystem::is_symlink(folder.path(row.link)));
        CHECK(std::filesystem::is_symlink(folder.path("first")));
        CHECK(Json::parse(other.read(row.target)).contains("responses"));
    }
    CHECK(namesIn(other) == FileNames{"target", "none yet"});
    std::filesystem::create_symlink("circle", folder.path("circle"));
    CHECK(toolIn(folder.path(), {"json", "in.ofx", "-o", "circle"}).error ==
          "circle: Too many levels of symbolic links\n");
}

TEST_CASE("a hard link to the old file keeps the old file") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    std::filesystem::create_hard_link(folder.file("old.json", kOld), folder.path("kept.json"));
    CHECK(toolIn(folder.path(), {"json", "in.ofx", "-o", "old.json"}).status == 0);
    CHECK(folder.read("kept.json") == kOld);
    CHECK(Json::parse(folder.read("old.json")).contains("responses"));
}

TEST_CASE("devices, pipes and open descriptors are written directly") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    const std::string csv = toolIn(folder.path(), {"csv", "in.ofx"}).output;
    REQUIRE(::mkfifo(folder.path("pipe").c_str(), 0600) == 0);
    struct Row {
        std::string line, output;
    };
    for (const Row& row : std::vector<Row>{
             {"\"$TOOL\" csv in.ofx -o /dev/null && test -c /dev/null", ""},
             {"\"$TOOL\" csv in.ofx -o pipe & cat pipe", csv},
             {"\"$TOOL\" csv in.ofx -o /dev/stdout | cat", csv},
             {"echo a; \"$TOOL\" csv in.ofx -o /dev/stdout; echo z", "a\n" + csv + "z\n"},
             {"{ echo a; \"$TOOL\" csv in.ofx -o /dev/stdout; echo z; } >out; cat out; rm out",
              "a\n" + csv + "z\n"},
             {"echo a >out; \"$TOOL\" csv in.ofx -o /dev/stdout >>out; cat out; rm out", "a\n" + csv},
             {"{ echo a >&3; \"$TOOL\" csv in.ofx -o /dev/fd/3; echo z >&3; } 3>out; cat out; rm out",
              "a\n" + csv + "z\n"},
         }) {
        CAPTURE(row.line);
        const Finished finished = shell(folder, row.line);
        CHECK(finished.output == row.output);
        CHECK(finished.error == "");
        CHECK(namesIn(folder) == FileNames{"in.ofx", "pipe"});
    }
}

TEST_CASE("a descriptor of another process is only added to") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    const Finished finished = shell(
        folder, "exec 3>out; echo a >&3; sh -c '\"$TOOL\" csv in.ofx -o /proc/'$$'/fd/3 3>&-'; cat out");
    CHECK(finished.output == "a\n" + toolIn(folder.path(), {"csv", "in.ofx"}).output);
    CHECK(finished.error == "");
}

TEST_CASE("every command that writes has --output and --force") {
    for (const std::string& command : commandsWith("--output")) {
        CAPTURE(command);
        const TemporaryFolder folder;
        folder.file("old", kDocument);
        std::vector<std::string> arguments{command, command == "request" ? "accounts" : "-", "-o", "old"};
        CHECK(toolIn(folder.path(), arguments, kDocument).status == 2);
        CHECK(folder.read("old") == kDocument);
        arguments.emplace_back("--force");
        const Finished finished = toolIn(folder.path(), arguments, kDocument);
        CHECK(finished.status == 0);
        CHECK(finished.output == "");
        CHECK(finished.error == "");
        CHECK(namesIn(folder) == FileNames{"old"});
        CHECK((folder.read("old") == kDocument) == (command == "repair"));
    }
}

TEST_CASE("help goes to standard output, whatever --output says") {
    const TemporaryFolder folder;
    folder.file("old", kOld);
    const Finished finished = toolIn(folder.path(), {"csv", "-o", "old", "--help"});
    CHECK(finished.status == 0);
    CHECK(contains(finished.output, "--output"));
    CHECK(folder.read("old") == kOld);
}

TEST_CASE("a hyphen is standard output, as it is standard input") {
    const TemporaryFolder folder;
    folder.file("a.ofx", kDocument);
    const std::string output = toolIn(folder.path(), {"csv", "a.ofx"}).output;
    for (const char* option : {"-o-", "--output=-"}) {
        CAPTURE(option);
        const Finished finished = toolIn(folder.path(), {"csv", "a.ofx", option});
        CHECK(finished.status == 0);
        CHECK(finished.output == output);
        CHECK(toolIn(folder.path(), {"csv", option, "-"}, kDocument).status == 0);
    }
    CHECK(namesIn(folder) == FileNames{"a.ofx"});
    CHECK(toolIn(folder.path(), {"csv", "a.ofx", "-o", "./-"}).status == 0);
    CHECK(namesIn(folder) == FileNames{"-", "a.ofx"});
    Command command = toolCommand({"csv", "-", "-o", "-"});
    command.input = kDocument;
    command.outputFile = "/dev/full";
    CHECK(run(command).error == "standard output: No space left on device\n");
}
