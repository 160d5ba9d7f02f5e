// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>
#include <unistd.h>

#include "tool/commands.h"

using namespace brackwell::tests;

TEST_CASE("a folder stands for the documents in it and below it, in the order of names") {
    const TemporaryFolder folder;
    folder.file("in/july.ofx", paidTo("A"));
    folder.file("in/April.QFX", paidTo("B"));
    folder.file("in/2023/old", paidTo("C"));
    folder.file("in/2023/deep/er/x.txt", "Dear customer,\n" + paidTo("D"));
    for (const char* name : {"in", "in/", "./in"}) {
        CAPTURE(name);
        const Finished finished = toolIn(folder.path(), {"json", "--quiet", name});
        CHECK(finished.status == 0);
        CHECK(finished.error == "");
        const std::string front = std::string(name) + (std::string(name).ends_with('/') ? "" : "/");
        CHECK(filesIn(finished.output) == std::vector<std::string>{front + "2023/deep/er/x.txt",
                                                                   front + "2023/old", front + "April.QFX",
                                                                   front + "july.ofx"});
    }
}

TEST_CASE("every command of several files takes a folder") {
    const TemporaryFolder folder;
    folder.file("in/july.ofx", paidTo("Cafe"));
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        if (hasOption(command, "--into")) continue;
        const Finished finished = toolIn(folder.path(), {command, "in"});
        CHECK(finished.status == (takesSeveralFiles(command) ? 0 : 1));
        CHECK(finished.error ==
              (takesSeveralFiles(command) ? "" : "in: in is a folder.\n  Name a file in it.\n"));
        if (takesSeveralFiles(command) && showsPayees(command)) CHECK(contains(finished.output, "Cafe"));
    }
}

TEST_CASE("what a folder has besides documents is named, unless that is not asked for") {
    const TemporaryFolder folder;
    folder.file("in/july.ofx", paidTo("A"));
    folder.file("in/bill.pdf", "%PDF-1.4");
    const std::string one =
        "in: 1 file is passed over (hidden, a link to a folder, or no OFX document): bill.pdf.\n";
    CHECK(toolIn(folder.path(), {"json", "in"}).error == one);
    CHECK(toolIn(folder.path(), {"json", "--quiet", "in"}).error == "");
    CHECK(toolIn(folder.path(), {"json", "--strict", "in"}).status == 0);
    for (const char* name : {"in/.hidden.ofx", "in/sub/c.txt", "in/a.zip", "in/d.gz", "in/empty", "in/f.csv"})
        folder.file(name, "");
    folder.file("in/d.gz", "\x1F\x8B");
    CHECK(toolIn(folder.path(), {"json", "in"}).error ==
          "in: 7 files are passed over (hidden, a link to a folder, or no OFX document): .hidden.ofx, a.zip, "
          "bill.pdf, d.gz, empty and 2 "
          "more.\n");
}

TEST_CASE("a file with the name of a document is read, so that its error is said") {
    const TemporaryFolder folder;
    folder.file("in/july.ofx", paidTo("A"));
    folder.file("in/june.qfx", "<html><body>Please sign in</body></html>");
    const Finished finished = toolIn(folder.path(), {"json", "in"});
    CHECK(finished.status == 1);
    CHECK(finished.error.starts_with("in/june.qfx: not an OFX document"));
    CHECK(contains(finished.output, "in/july.ofx"));
}

TEST_CASE("a folder without a document is an error, and the other files are still done") {
    const TemporaryFolder folder;
    folder.file("july.ofx", paidTo("A"));
    folder.file("in/a.txt", "text");
    const std::string said =
        "in: There is no OFX document in this folder.\nin: 1 file is passed over (hidden, a link to a "
        "folder, or no OFX document): a.txt.\n";
    const Finished alone = toolIn(folder.path(), {"report", "in", "--output", "page.html"});
    CHECK(alone.status == 1);
    CHECK(alone.output == "");
    CHECK(alone.error == said);
    CHECK(folder.read("page.html") == "");
    const Finished both = toolIn(folder.path(), {"json", "in", "july.ofx"});
    CHECK(both.status == 1);
    CHECK(both.error == said);
    CHECK(filesIn(both.output) == std::vector<std::string>{"july.ofx"});
}

TEST_CASE("links to folders and pipes are not followed, links to files are") {
    const TemporaryFolder folder;
    folder.file("july.ofx", paidTo("A"));
    folder.file("in/sub/june.ofx", paidTo("B"));
    std::filesystem::create_symlink("..", folder.path("in/sub/up"));
    std::filesystem::create_symlink("../july.ofx", folder.path("in/link"));
    std::filesystem::create_symlink("nothing", folder.path("in/lost.ofx"));
    REQUIRE(::mkfifo(folder.path("in/pipe.ofx").c_str(), 0600) == 0);
    const Finished finished = toolIn(folder.path(), {"json", "in"});
    CHECK(finished.status == 0);
    CHECK(filesIn(finished.output) == std::vector<std::string>{"in/link", "in/sub/june.ofx"});
    CHECK(finished.error ==
          "in: 3 files are passed over (hidden, a link to a folder, or no OFX document): lost.ofx, pipe.ofx, "
          "sub/up.\n");
    std::filesystem::create_directory_symlink("in", folder.path("to"));
    CHECK(filesIn(toolIn(folder.path(), {"json", "--quiet", "to"}).output).size() == 2);
}

TEST_CASE("what may not be looked into is an error") {
    if (::geteuid() == 0) return;  // who may do everything
    const TemporaryFolder folder;
    folder.file("in/july.ofx", paidTo("A"));
    folder.file("in/closed/x.ofx", paidTo("B"));
    std::filesystem::permissions(folder.path("in/closed"), std::filesystem::perms::none);
    const Finished finished = toolIn(folder.path(), {"json", "in"});
    const Finished alone = toolIn(folder.path(), {"json", "in/closed"});
    const Finished page = toolIn(folder.path(), {"report", "in"});
    std::filesystem::permissions(folder.path("in/closed"), std::filesystem::perms::owner_all);
    CHECK(finished.status == 1);
    CHECK(contains(finished.error, "in/closed: The folder may not be looked into"));
    CHECK_FALSE(contains(alone.error, "no OFX document"));
    CHECK(contains(page.output, "<bdi>in/closed</bdi> could not be read"));
    CHECK(filesIn(finished.output) == std::vector<std::string>{"in/july.ofx"});
}

TEST_CASE("folders in folders are looked through, however deep") {
    const TemporaryFolder folder;
    folder.file("in/july.ofx", paidTo("A"));
    std::string name = folder.path("in/d");
    for (int depth = 0; depth < 300; ++depth) name += "/d";
    std::filesystem::create_directories(name);
    const Finished finished = toolIn(folder.path(), {"json", "in"});
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
}

TEST_CASE("names in a folder cannot drive a terminal, and none is hidden by another") {
    if (obstacleToTerminals() != "") return;
    const TemporaryFolder folder;
    folder.file("in/july.ofx", paidTo("A"));
    folder.file("in/\x1B[2J", "");
    const Finished finished = runOnTerminal(toolCommand({"check", folder.path("in")}), 80);
    CHECK(contains(finished.output, "1 file is passed over"));
    CHECK_FALSE(contains(finished.output, "\x1B[2J"));
}

TEST_CASE("an output in the folder that is read takes the place of no document") {
    const TemporaryFolder folder;
    folder.file("in/july", paidTo("A"));
    const Finished finished = toolIn(folder.path(), {"csv", "in", "--output", "in/july"});
    CHECK(finished.status == 2);
    CHECK(contains(finished.error, "is also an input file"));
    CHECK(toolIn(folder.path(), {"csv", "--quiet", "in", "--output", "in/year.csv"}).status == 0);
    CHECK(toolIn(folder.path(), {"json", "in", "--output", "in/year.json"}).status == 0);
    CHECK(toolIn(folder.path(), {"report", "in", "--output", "in/year.html"}).status == 0);
    CHECK(toolIn(folder.path(), {"check", "in"}).error ==
          "in: 3 files are passed over (hidden, a link to a folder, or no OFX document): year.csv, "
          "year.html, year.json.\n");
}

TEST_CASE("a file in the place of the command is shown") {
    const TemporaryFolder folder;
    folder.file("july.ofx", paidTo("Cafe"));
    folder.file("notes", paidTo("Cafe"));
    const std::string shown = toolIn(folder.path(), {"show", "july.ofx"}).output;
    CHECK(contains(shown, "Cafe"));
    struct Row {
        std::vector<std::string> arguments;
        std::string input;
    };
    for (const Row& row : std::vector<Row>{{{"july.ofx"}, ""},
                                           {{"notes"}, ""},
                                           {{"."}, ""},
                                           {{"--quiet", "july.ofx"}, ""},
                                           {{"--search", "cafe", "july.ofx"}, ""},
                                           {{"july.ofx", "--search", "cafe"}, ""},
                                           {{"-"}, paidTo("Cafe")}}) {
        const std::string arguments = Json(row.arguments).dump();
        CAPTURE(arguments);
        const Finished finished = toolIn(folder.path(), row.arguments, row.input);
        CHECK(finished.status == 0);
        CHECK(contains(finished.output, "Cafe"));
    }
    CHECK(toolIn(folder.path(), {"june.ofx"}).error == notFound("june.ofx"));
    CHECK(toolIn(folder.path(), {"june"}).error ==
          "unknown command \"june\"\nRun with --help for a list of the commands.\n");
    CHECK(toolIn(folder.path(), {"shwo", "july.ofx"}).error ==
          "unknown command \"shwo\"; \"show\" may be meant\nRun with --help for a list of the commands.\n");
    folder.file("json", paidTo("Cafe"));
    CHECK(toolIn(folder.path(), {"json"}).status == 2);
}

TEST_CASE("a name that begins with a hyphen is explained") {
    const TemporaryFolder folder;
    folder.file("-x", paidTo("A"));
    const auto advice = [](const std::string& name) {
        return "\"" + name + "\" was taken for an option, since it begins with a hyphen; write \"./" + name +
               "\" for the file\n";
    };
    struct Row {
        std::vector<std::string> arguments;
        std::string name;
    };
    for (const Row& row : std::vector<Row>{{{"show", "-x"}, "-x"},
                                           {{"-x"}, "-x"},
                                           {{"show", "-july.ofx"}, "-july.ofx"},
                                           {{"show", "--july.QFX"}, "--july.QFX"},
                                           {{"csv", "-quarter.ofx"}, "-quarter.ofx"}}) {
        const std::string arguments = Json(row.arguments).dump();
        CAPTURE(arguments);
        const Finished finished = toolIn(folder.path(), row.arguments);
        CHECK(finished.status == 2);
        CHECK(finished.error.starts_with(advice(row.name)));
    }
    CHECK_FALSE(contains(toolIn(folder.path(), {"show", "--nothing"}).error, "hyphen"));
    CHECK_FALSE(contains(toolIn(folder.path(), {"show", "--bad", "--", "-x"}).error, "hyphen"));
    CHECK(toolIn(folder.path(), {"show", "./-x"}).status == 0);
}
