// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "tool/commands.h"
#include "tool/output_files.h"

/// \file
/// What stays of an old file when the new one does not become whole.

using namespace brackwell::tests;

namespace {

/// A program that makes a command the command of somebody with no more rights than others. Empty for tests
/// that have no more themselves.
std::optional<std::vector<std::string>> withoutPrivileges() {
    if (::geteuid() != 0) return std::vector<std::string>{};
    const std::vector<std::string> prefix{"/usr/bin/setpriv", "--reuid=65534", "--regid=65534",
                                          "--clear-groups"};
    std::vector<std::string> trial = prefix;
    trial.insert(trial.end(), {BRACKWELL_TOOL, "--version"});
    if (run({trial}).status == 0) return prefix;
    MESSAGE("skipped: root may write everywhere, and nobody else may run the tool here");
    return std::nullopt;
}

}  // namespace

TEST_CASE("what was there before stays when no document could be read") {
    for (const std::string& command : writingCommands()) {
        if (!needsDocument(command)) continue;
        std::vector<std::vector<std::string>> inputs{{"missing.ofx"}, {"bytes"}};
        if (command != "repair") inputs.push_back({"broken.ofx"});
        if (takesSeveralFiles(command)) inputs.push_back({"missing.ofx", "broken.ofx"});
        for (const auto& files : inputs)
            for (const std::string name : {"old", "new"}) {
                const TemporaryFolder folder;
                folder.file("broken.ofx", kBrokenDocument);
                folder.file("bytes", "\xFF\xFE<");
                folder.file("old", kOld);
                std::vector<std::string> arguments{command, "-o", name};
                if (command != "repair") arguments.emplace_back("--as-is");
                arguments.insert(arguments.end(), files.begin(), files.end());
                const std::string line = Json(arguments).dump();
                CAPTURE(line);
                const Finished finished = toolIn(folder.path(), arguments);
                CHECK(finished.status == 1);
                CHECK(finished.output == "");
                CHECK(finished.error.ends_with("\n" + name + ": not written, since no document was read\n"));
                CHECK(folder.read("old") == kOld);
                CHECK(namesIn(folder) == FileNames{"broken.ofx", "bytes", "old"});
            }
    }
}

TEST_CASE("what could be read is written, with status 1 for the rest") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    folder.file("old.csv", kOld);
    const Finished finished = toolIn(folder.path(), {"csv", "missing.ofx", "in.ofx", "-o", "old.csv"});
    CHECK(finished.status == 1);
    CHECK(finished.error == notFound("missing.ofx"));
    CHECK(folder.read("old.csv") == toolIn(folder.path(), {"csv", "in.ofx"}).output);
}

TEST_CASE("a tree is written when it tells something of a document that does not parse") {
    const TemporaryFolder folder;
    folder.file("header.ofx", "OFXHEADER:100\n\n" + kBrokenDocument);
    folder.file("no.ofx", "Dear customer,");
    CHECK(toolIn(folder.path(), {"tree", "--as-is", "header.ofx", "-o", "header.json"}).status == 1);
    CHECK(Json::parse(folder.read("header.json"))["header"]["OFXHEADER"] == "100");
    CHECK(toolIn(folder.path(), {"tree", "no.ofx", "-o", "no.json"}).status == 0);
    CHECK(Json::parse(folder.read("no.json"))["data"].is_null());
}

TEST_CASE("a file that may not become larger is not written, and the old one stays") {
    const TemporaryFolder folder;
    folder.file("in.ofx", largeDocument());
    folder.file("old.csv", kOld);
    const Finished finished = shell(folder, "ulimit -f 8; exec \"$TOOL\" csv in.ofx -o old.csv");
    CHECK(finished.status == 1);
    CHECK(finished.error == "old.csv: File too large\n");
    CHECK(folder.read("old.csv") == kOld);
    CHECK(namesIn(folder) == FileNames{"in.ofx", "old.csv"});
}

TEST_CASE("a full disk leaves the old file, and nothing else") {
    const TemporaryFolder folder;
    folder.file("in.ofx", largeDocument());
    std::filesystem::create_directory(folder.path("disk"));
    const std::string mount = "mount -t tmpfs -o size=128k none disk";
    const std::vector<std::string> program{"/usr/bin/unshare", "--user",  "--map-root-user",
                                           "--mount",          "/bin/sh", "-c"};
    const auto onSmallDisk = [&](const std::string& line) {
        std::vector<std::string> arguments = program;
        arguments.push_back(mount + " && " + line);
        return run({arguments, "", {{"TOOL", BRACKWELL_TOOL}}, folder.path()});
    };
    if (!std::filesystem::exists(program.front()) || onSmallDisk("true").status != 0) {
        MESSAGE("skipped: no small disk can be mounted here");
        return;
    }
    const Finished full = onSmallDisk(
        "echo before >disk/old; \"$TOOL\" csv in.ofx -o disk/old; echo $?; cat disk/old; ls -A disk");
    CHECK(full.output == "1\nbefore\nold\n");
    CHECK(full.error == "disk/old: No space left on device\n");
    // A result that fits is written where the old file alone fills half of the disk.
    const Finished fits = onSmallDisk(
        "head -c 60000 in.ofx >disk/old; \"$TOOL\" accounts in.ofx -o disk/old --force; echo $?; ls -A disk");
    CHECK(fits.output == "0\nold\n");
    CHECK(fits.error == "");
}

TEST_CASE("a device that is full is status 1, and stays a device") {
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    std::filesystem::create_symlink("/dev/full", folder.path("full"));
    const Finished finished = toolIn(folder.path(), {"csv", "in.ofx", "-o", "full"});
    CHECK(finished.status == 1);
    CHECK(finished.error == "full: No space left on device\n");
    CHECK(std::filesystem::is_symlink(folder.path("full")));
    CHECK(namesIn(folder) == FileNames{"full", "in.ofx"});
}

TEST_CASE("memory that does not suffice for a document leaves the others to be written") {
    // The shell limits the memory, so that the first document fits and the second does not.
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    folder.file("old.csv", kOld);
    const Finished finished =
        shell(folder, "ulimit -v 1000000; exec \"$TOOL\" csv in.ofx /dev/zero -o old.csv");
    if (contains(finished.error, "Sanitizer")) {
        MESSAGE("skipped: sanitizers reserve more memory than this test allows, and do not start");
        return;
    }
    CHECK(finished.status == 1);
    CHECK(finished.error == "/dev/zero: There is not enough memory for this document.\n");
    CHECK(folder.read("old.csv") == toolIn(folder.path(), {"csv", "in.ofx"}).output);
}

TEST_CASE("a folder that may not be written, and a file that is protected, stay as they are") {
    const auto prefix = withoutPrivileges();
    if (!prefix) return;
    const TemporaryFolder folder;
    folder.file("in.ofx", kDocument);
    for (const char* name : {"old.csv", "protected.csv"}) {
        folder.file(name, kOld);
        if (::geteuid() == 0) CHECK(::chown(folder.path(name).c_str(), 65534, 65534) == 0);
    }
    ::chmod(folder.path("in.ofx").c_str(), 0644);
    ::chmod(folder.path("protected.csv").c_str(), 0400);
    struct Row {
        std::string name, error;
        unsigned folderMode;
    };
    const std::string inFolder = "cannot create a file in its folder: Permission denied\n";
    for (const Row& row : std::vector<Row>{{"old.csv", "old.csv: " + inFolder, 0555},
                                           {"new.csv", "new.csv: " + inFolder, 0555},
                                           {"protected.csv", "protected.csv: Permission denied\n", 0777}}) {
        CAPTURE(row.name);
        ::chmod(folder.path().c_str(), row.folderMode);
        std::vector<std::string> arguments = *prefix;
        arguments.insert(arguments.end(), {BRACKWELL_TOOL, "csv", "in.ofx", "-o", row.name});
        const Finished finished = run({arguments, "", {}, folder.path()});
        CHECK(finished.status == 1);
        CHECK(finished.error == row.error);
    }
    ::chmod(folder.path().c_str(), 0700);
    CHECK(namesIn(folder) == FileNames{"in.ofx", "old.csv", "protected.csv"});
    CHECK(folder.read("old.csv") == kOld);
    CHECK(folder.read("protected.csv") == kOld);
}

// ---------------------------------------------------------------------------------------------
// Interruption

TEST_CASE("a signal that ends the tool leaves the old file, and nothing else") {
    for (const int signal :
         {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGUSR1, SIGUSR2, SIGALRM, SIGVTALRM, SIGPROF, SIGKILL})
        for (const bool hasWritten : {false, true}) {
            CAPTURE(signal);
            CAPTURE(hasWritten);
            const TemporaryFolder folder;
            folder.file("in.ofx", largeDocument());
            folder.file("old.csv", kOld);
            Command command = toolCommand({"csv", "-o", "old.csv"});
            if (hasWritten) command.arguments.emplace_back("in.ofx");
            command.arguments.emplace_back("-");
            command.directory = folder.path();
            Waiting waiting(command);
            CHECK(becomesTrue([&] {
                return unfinishedSize(folder).value_or(0) >= (hasWritten ? 65536 : 0) &&
                       unfinishedSize(folder).has_value();
            }));
            waiting.send(signal);
            const Finished finished = waiting.finish();
            CHECK(finished.signal == signal);
            CHECK(folder.read("old.csv") == kOld);
            // What cannot be caught leaves the file under its own name.
            CHECK(unfinishedSize(folder).has_value() == (signal == SIGKILL));
        }
}

TEST_CASE("a signal that the tool was started to ignore does not end it") {
    const TemporaryFolder folder;
    folder.file("old.csv", kOld);
    Command command{{"/bin/sh", "-c", "trap '' HUP; exec \"$0\" csv - -o old.csv", BRACKWELL_TOOL}};
    command.directory = folder.path();
    command.input = kDocument;
    Waiting waiting(command);
    CHECK(becomesTrue([&] { return unfinishedSize(folder).has_value(); }));
    waiting.send(SIGHUP);
    CHECK(waiting.finish().status == 0);
    CHECK(contains(folder.read("old.csv"), "Shop"));
    CHECK(namesIn(folder) == FileNames{"old.csv"});
}

TEST_CASE("a document that comes into being while the tool reads is not replaced") {
    for (const bool isForced : {false, true}) {
        CAPTURE(isForced);
        const TemporaryFolder folder;
        Command command = toolCommand({"csv", "-", "-o", "new"});
        if (isForced) command.arguments.emplace_back("--force");
        command.directory = folder.path();
        command.input = kDocument;
        Waiting waiting(command);
        CHECK(becomesTrue([&] { return unfinishedSize(folder).has_value(); }));
        folder.file("new", kDocument);
        const Finished finished = waiting.finish();
        CHECK(finished.status == (isForced ? 0 : 1));
        CHECK(contains(finished.error, "new: may be an OFX document") != isForced);
        CHECK((folder.read("new") == kDocument) != isForced);
        CHECK(namesIn(folder) == FileNames{"new"});
    }
}
