// SPDX-License-Identifier: Apache-2.0
#include <sys/stat.h>

#include <filesystem>

#include "support/documents.h"
#include "tool/commands.h"

using namespace brackwell::tests;

namespace {

const std::string kRent = transactionsWith(
    "<STMTTRN><TRNTYPE>POS<DTPOSTED>20240228<TRNAMT>-88.31<FITID>4711081500<NAME>Jane Miller<MEMO>Rent"
    "</STMTTRN>");

bool saysWho(const std::string& text) {
    for (const char* part : {"Jane", "Miller", "4711081500", "88.31", "Rent"})
        if (contains(text, part)) return true;
    return false;
}

}  // namespace

TEST_CASE("anonymize writes a document of the same shape that does not say who") {
    const Finished finished = tool({"anonymize", "-"}, kRent);
    CHECK(finished.status == 0);
    CHECK(finished.output.size() == kRent.size());
    CHECK_FALSE(saysWho(finished.output));
    CHECK(contains(finished.output, "<TRNTYPE>POS<DTPOSTED>20240228<TRNAMT>-"));
    CHECK(finished.error == "");
    const Json before = Json::parse(tool({"json", "-"}, kRent).output);
    const Json after = Json::parse(tool({"json", "-"}, finished.output).output);
    CHECK(after["responses"].size() == before["responses"].size());
    CHECK(after["findings"].size() == before["findings"].size());
}

TEST_CASE("anonymize takes a file that cannot be read, and says that it cannot") {
    const std::string broken = "<OFX><NAME>Jane Miller</NAME></OFC></OFX>";
    for (const std::string& text : {broken, std::string("Jane Miller"), std::string("<html>Jane Miller")}) {
        CAPTURE(text);
        const Finished finished = tool({"anonymize", "-"}, text);
        CHECK(finished.status == 0);
        CHECK(finished.output.size() == text.size());
        CHECK_FALSE(saysWho(finished.output));
    }
    CHECK(contains(tool({"anonymize", "-"}, "Jane").error, "not an OFX document"));
    CHECK(tool({"anonymize", "-"}, "").status == 1);
    CHECK(tool({"anonymize", "/no such file"}).status == 1);
}

TEST_CASE("anonymize writes several files into a folder, under names that say nothing") {
    const TemporaryFolder folder;
    folder.file("in/Jane.ofx", kRent);
    folder.file("in/Miller.QFX", kRent);
    const std::string out = folder.path() + "/out/deep";
    const Finished finished = tool({"anonymize", folder.path() + "/in", "--into", out});
    CHECK(finished.status == 0);
    CHECK(finished.output == "");
    const std::string first = folder.read("out/deep/anonymous-1.ofx");
    CHECK(first.size() == kRent.size());
    CHECK_FALSE(saysWho(first));
    CHECK(folder.read("out/deep/anonymous-2.qfx") == first);
    struct stat status {};
    REQUIRE(::stat((out + "/anonymous-1.ofx").c_str(), &status) == 0);
    CHECK((status.st_mode & 0777) == 0600);

    const Finished again = tool({"anonymize", folder.path() + "/in", "--into", out});
    CHECK(again.status == 2);
    CHECK(contains(again.error,
                   "anonymous-1.ofx has the name of an OFX document, which would be lost; choose "
                   "another folder, or replace the document with --force"));
    CHECK(folder.read("out/deep/anonymous-1.ofx") == first);
    CHECK(tool({"anonymize", folder.path() + "/in", "--into", out, "--force"}).status == 0);
    CHECK(folder.read("out/deep/anonymous-1.ofx") != first);
}

TEST_CASE("anonymize replaces no file that it reads, in whatever order and under whatever name") {
    struct Row {
        const char* why;
        std::vector<std::string> arguments;
        const char* link;
        const char* replaced;
    };
    const Row rows[] = {
        {"a file that is read after",
         {"a.ofx", "anonymous-1.ofx", "--into", "."},
         nullptr,
         "anonymous-1.ofx"},
        {"a file that was read before",
         {"anonymous-2.ofx", "a.ofx", "--into", "."},
         nullptr,
         "anonymous-2.ofx"},
        {"itself", {"anonymous-1.ofx", "--into", "."}, nullptr, "anonymous-1.ofx"},
        {"what a link leads to", {"a.ofx", "b.ofx", "--into", "."}, "b.ofx", "anonymous-1.ofx"},
        {"another name of the folder", {"a.ofx", "anonymous-1.ofx", "--into", "../"}, nullptr, nullptr},
    };
    for (const Row& row : rows) {
        CAPTURE(row.why);
        const TemporaryFolder folder;
        const std::vector<std::string> names = {"a.ofx", "b.ofx", "anonymous-1.ofx", "anonymous-2.ofx"};
        for (const std::string& name : names)
            if (row.link == nullptr || name != row.replaced) folder.file("in/" + name, kRent + name);
        if (row.link != nullptr)
            std::filesystem::create_symlink(row.link, folder.path() + "/in/" + row.replaced);
        std::vector<std::string> arguments{"anonymize", "--force"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const Finished finished = toolIn(folder.path() + "/in", arguments);
        CHECK(finished.status == (row.replaced == nullptr ? 0 : 2));
        if (row.replaced != nullptr)
            CHECK(contains(finished.error,
                           std::string(row.replaced) + " is also an input file; choose another folder\n"));
        for (const std::string& name : names)
            if (row.link == nullptr || name != row.replaced) CHECK(folder.read("in/" + name) == kRent + name);
    }
}

TEST_CASE("anonymize does not read its own results again, and says which file became which") {
    const TemporaryFolder folder;
    folder.file("july.ofx", kRent);
    folder.file("old/june.qfx", kRent);
    folder.file("old/anon/anonymous-7.ofx", kRent);
    const std::vector<std::string> arguments{"anonymize", ".", "--into", "./old/../anon", "--force"};
    const std::string names =
        "./july.ofx -> ./old/../anon/anonymous-1.ofx\n"
        "./old/anon/anonymous-7.ofx -> ./old/../anon/anonymous-2.ofx\n"
        "./old/june.qfx -> ./old/../anon/anonymous-3.qfx\n";
    const Finished first = toolIn(folder.path(), arguments);
    CHECK(first.status == 0);
    CHECK(first.error == names);
    const Finished second = toolIn(folder.path(), arguments);
    CHECK(second.status == 0);
    CHECK(second.error == "./anon: This folder is not read, since the results go there.\n" + names);
    CHECK_FALSE(std::filesystem::exists(folder.path("anon/anonymous-4.ofx")));
    CHECK(toolIn(folder.path(), {"anonymize", ".", "--into", "anon", "--force", "-q"}).error == "");

    const Finished named = toolIn(folder.path(), {"anonymize", "anon", "--into", "anon", "--force"});
    CHECK(named.status == 2);
    CHECK(contains(named.error, "is also an input file"));
}

TEST_CASE("anonymize needs a folder for several files, and it is not the output") {
    const std::string document = examplePath("card.ofx");
    struct Row {
        std::vector<std::string> arguments;
        const char* reason;
    };
    const Row rows[] = {
        {{"anonymize", document, document}, "several files need --into FOLDER"},
        {{"anonymize", document, "--into", "x", "--output", "y"}, "--into: excludes --output"},
        {{"anonymize", document, "--shift-days", "some"},
         "--shift-days: not a number of days from -3652058 to 3652058, such as -41: \"some\"\n"},
        {{"anonymize", document, "--shift-days", "99999999"}, "to 3652058, such as -41: \"99999999\"\n"},
        {{"anonymize", document, "--shift-days", "1.5"}, "such as -41: \"1.5\"\n"},
        {{"anonymize", document, "--shift-days", "+-1"}, "such as -41: \"+-1\"\n"},
        {{"anonymize", document, "--shift-days", ""}, "--shift-days"},
        {{"anonymize", document, "--output", document, "--force"}, "is also an input file"},
        {{"anonymize"}, "FILE is required"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.reason);
        const Finished finished = tool(row.arguments);
        CHECK(finished.status == 2);
        CHECK(contains(finished.error, row.reason));
    }
    const TemporaryFolder folder;
    folder.file("taken", "");
    const Finished finished = tool({"anonymize", document, "--into", folder.path() + "/taken"});
    CHECK(finished.status == 1);
    CHECK(contains(finished.error, folder.path() + "/taken: "));
}

TEST_CASE("anonymize moves dates and replaces the institution when it is told to") {
    const std::string document = "<OFX><STMTTRN><DTPOSTED>20240228<ORG>Example<NAME>x</STMTTRN></OFX>";
    CHECK(contains(tool({"anonymize", "-"}, document).output, "<DTPOSTED>20240228<ORG>Example<"));
    CHECK(contains(tool({"anonymize", "-", "--shift-days", "2"}, document).output,
                   "<DTPOSTED>20240301<ORG>Example<"));
    CHECK(contains(tool({"anonymize", "-", "--shift-days", "-59"}, document).output, "<DTPOSTED>20231231<"));
    CHECK_FALSE(contains(tool({"anonymize", "-", "--institution"}, document).output, "Example"));
}

TEST_CASE("anonymize says how many dates it did not move") {
    const std::string document = "<OFX><DTPOSTED>240305<DTUSER>20240305<DTAVAIL>05.03.2024</OFX>";
    const Finished finished = tool({"anonymize", "-", "--shift-days", "+1"}, document);
    CHECK(finished.output == "<OFX><DTPOSTED>240305<DTUSER>20240306<DTAVAIL>05.03.2024</OFX>");
    CHECK(contains(finished.error,
                   "-: These dates are not moved, since their form or their place in time does "
                   "not allow it: 2.\n"));
    CHECK_FALSE(contains(tool({"anonymize", "-"}, document).error, "not moved"));
    CHECK_FALSE(contains(tool({"anonymize", "-", "-q", "--shift-days", "1"}, document).error, "not moved"));
}

TEST_CASE("anonymize says that the totals of investments do not add up any more") {
    const std::string path = examplePath("investments.ofx");
    const TemporaryFolder folder;
    const std::string result = folder.path("result.ofx");
    const auto totalsIn = [](const std::string& file) {
        std::size_t count = 0;
        const Json object = Json::parse(tool({"json", file}).output);
        for (const Json& finding : object["findings"])
            if (finding["kind"] == "doesNotAddUp") count += finding["count"].get<std::size_t>();
        return count;
    };
    const Finished finished = tool({"anonymize", path, "--output", result});
    CHECK(finished.status == 0);
    const std::string before = std::to_string(totalsIn(path));
    const std::string after = std::to_string(totalsIn(result));
    CHECK(after != before);
    CHECK(contains(finished.error, ": The anonymous form has other findings: doesNotAddUp (" + after +
                                       " instead of " + before +
                                       "). Each amount is replaced by itself, so totals of investments do "
                                       "not add up.\n"));
}

TEST_CASE("anonymize names the elements whose names it does not know") {
    const std::string document = "<OFX><X.JANE>1</X.JANE><NAME>x</NAME></OFX>";
    const std::string line =
        "-: The OFX standard does not have these elements, whose names stay: <X.JANE>.\n";
    CHECK(contains(tool({"anonymize", "-"}, document).error, line));
    CHECK(tool({"anonymize", "-", "--quiet"}, document).error == "");
}

TEST_CASE("anonymize says when a finding is lost with what was replaced") {
    const std::string document =
        transactionsWith("<STMTTRN><TRNAMT>1.00<DTPOSTED>21500101<FITID>1<NAME>x</STMTTRN>");
    const std::string other = "-: The anonymous form has other findings: doubtfulValue (0 instead of 1).\n";
    CHECK_FALSE(contains(tool({"anonymize", "-"}, document).error, "other findings"));
    CHECK(contains(tool({"anonymize", "-", "--shift-days", "-30000"}, document).error, other));
}
