// SPDX-License-Identifier: Apache-2.0
#include "tool/commands.h"
#include "tool/zip_archive.h"

using namespace brackwell::tests;

namespace {

std::string replacedAll(std::string text, const std::string& was, const std::string& now) {
    for (std::size_t at = text.find(was); at != text.npos; at = text.find(was, at + now.size()))
        text.replace(at, was.size(), now);
    return text;
}

}  // namespace

TEST_CASE("an archive stands for the documents in it, in the order of names") {
    const TemporaryFolder folder;
    folder.file("in.zip", zipOf({{"july.ofx", paidTo("A")},
                                 {"2023/", "", 0},
                                 {"April.QFX", paidTo("B"), 0},
                                 {"2023/old", paidTo("C")},
                                 {"2023/deep/er/x.txt", "Dear customer,\n" + paidTo("D")}}));
    const Finished finished = toolIn(folder.path(), {"json", "--quiet", "in.zip"});
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(filesIn(finished.output) == std::vector<std::string>{"in.zip/2023/deep/er/x.txt", "in.zip/2023/old",
                                                               "in.zip/April.QFX", "in.zip/july.ofx"});
    CHECK(contains(finished.output, "\"payeeName\":\"B\""));
    CHECK(contains(toolIn(folder.path(), {"in.zip"}).output, "== in.zip/july.ofx"));
}

TEST_CASE("the forms that large archives have are read in small ones, too") {
    const TemporaryFolder folder;
    const std::string document = paidTo("A");
    ZipMember longMember{"july.ofx", document};
    longMember.isLong = true;
    ZipMember later{"july.ofx", document};
    later.flags = 8;  // its sizes stand behind it as well
    for (const std::string& bytes :
         {zipOf({longMember}), zipOf({later}), zipOf({{"july.ofx", document}}, {.isLong = true}),
          zipOf({longMember}, {.comment = "PK\x05\x06 of a bank", .isLong = true}),
          zipOf({{"july.ofx", document}}, {.comment = std::string(65535, 'x')})}) {
        folder.file("in.zip", bytes);
        const Finished finished = toolIn(folder.path(), {"json", "in.zip"});
        CHECK(finished.error == "");
        CHECK(filesIn(finished.output) == std::vector<std::string>{"in.zip/july.ofx"});
    }
}

TEST_CASE("what is read of an archive is what is read of the files in it") {
    const TemporaryFolder folder;
    std::vector<ZipMember> members;
    for (const auto& file : std::filesystem::directory_iterator(BRACKWELL_EXAMPLES_DIR)) {
        std::ifstream stream(file.path(), std::ios::binary);
        const std::string name = file.path().filename().string();
        members.push_back({name, {std::istreambuf_iterator<char>(stream), {}}});
        folder.file("in/" + name, members.back().bytes);
    }
    REQUIRE(members.size() > 5);
    folder.file("in.zip", zipOf(members));
    for (const std::string& command : readingCommands()) {
        if (!takesSeveralFiles(command)) continue;
        CAPTURE(command);
        const Finished files = toolIn(folder.path(), {command, "in"});
        const Finished archive = toolIn(folder.path(), {command, "in.zip"});
        CHECK(archive.status == files.status);
        CHECK(archive.error == replacedAll(files.error, "in/", "in.zip/"));
        CHECK(archive.output == replacedAll(files.output, "in/", "in.zip/"));
    }
}

TEST_CASE("every command takes an archive of one document, and one in an archive by its name") {
    const TemporaryFolder folder;
    folder.file("one.zip", zipOf({{"july.ofx", paidTo("Cafe")}, {"bill.pdf", "%PDF"}}));
    folder.file("two.zip", zipOf({{"a/june.ofx", paidTo("Shop")}, {"a/july.ofx", paidTo("Cafe")}}));
    for (const std::string& command : readingCommands()) {
        CAPTURE(command);
        for (const char* name : {"one.zip", "one.zip/july.ofx", "./two.zip/a/july.ofx"}) {
            CAPTURE(name);
            const Finished finished = toolIn(folder.path(), {command, "--quiet", name});
            CHECK(finished.status == 0);
            CHECK(finished.error == "");
            if (showsPayees(command)) CHECK(contains(finished.output, "Cafe"));
        }
        if (takesSeveralFiles(command) || hasOption(command, "--into")) continue;
        const Finished finished = toolIn(folder.path(), {command, "two.zip"});
        CHECK(finished.status == 1);
        CHECK(finished.output == "");
        CHECK(finished.error ==
              "two.zip: This command reads one document, and there are 2 in this archive. Name one: "
              "two.zip/a/july.ofx.\n");
    }
    CHECK(toolIn(folder.path(), {"show", "two.zip/july.ofx"}).error == notFound("two.zip/july.ofx"));
    CHECK(toolIn(folder.path(), {"two.zip/a/july.ofx"}).status == 0);
}

TEST_CASE("what is named in an archive is read, whatever its name and its bytes are") {
    const TemporaryFolder folder;
    folder.file("in.zip",
                zipOf({{".hidden", paidTo("A")}, {"late", std::string(1 << 17, 'x') + paidTo("B")}}));
    for (const char* name : {"in.zip/.hidden", "in.zip/late"})
        CHECK(toolIn(folder.path(), {"check", name}).status == 0);
    CHECK(
        toolIn(folder.path(), {"check", "in.zip"}).error ==
        "in.zip: There is no OFX document in this file, a ZIP archive or an office document.\n"
        "in.zip: 2 files are passed over (hidden, a link to a folder, or no OFX document): .hidden, late.\n");
}

TEST_CASE("what an archive has besides documents is named, unless that is not asked for") {
    const TemporaryFolder folder;
    const ZipMember document{"july.ofx", paidTo("A")};
    ZipMember link{"link.ofx", "july.ofx", 0};
    link.attributes = 0120777U << 16U;
    folder.file("in.zip", zipOf({document, {"bill.pdf", "%PDF-1.4"}}));
    const std::string one =
        "in.zip: 1 file is passed over (hidden, a link to a folder, or no OFX document): bill.pdf.\n";
    CHECK(toolIn(folder.path(), {"json", "in.zip"}).error == one);
    CHECK(toolIn(folder.path(), {"json", "--strict", "in.zip"}).status == 0);
    CHECK(toolIn(folder.path(), {"json", "--quiet", "in.zip"}).error == "");
    folder.file("in.zip", zipOf({document,
                                 {".git/a.ofx", paidTo("B")},
                                 {".git/b.ofx", paidTo("B")},
                                 {".git-x/b.ofx", paidTo("B")},
                                 {"__MACOSX/._july.ofx", "x"},
                                 {"a/.b/c/d.ofx", paidTo("B")},
                                 link,
                                 {"c.gz", "\x1F\x8B"}}));
    CHECK(toolIn(folder.path(), {"json", "in.zip"}).error ==
          "in.zip: 6 files are passed over (hidden, a link to a folder, or no OFX document): .git, .git-x, "
          "__MACOSX, a/.b, c.gz and 1 more.\n");
    folder.file("in.zip", zipOf({document, {"2023.ZIP", zipOf({document})}}));
    const Finished nested = toolIn(folder.path(), {"json", "in.zip"});
    CHECK(nested.status == 0);
    CHECK(nested.error ==
          "in.zip: 1 archive is not looked into, as in an archive: 2023.ZIP. Unpack this one first.\n");
}

TEST_CASE("an archive without a document is an error, and the other files are still done") {
    const TemporaryFolder folder;
    folder.file("july.ofx", paidTo("A"));
    const std::string none =
        "in.zip: There is no OFX document in this file, a ZIP archive or an office document.\n";
    folder.file("in.zip", zipOf({}));
    CHECK(toolIn(folder.path(), {"json", "in.zip"}).error == none);
    folder.file("in.zip", zipOf({{"a.txt", "text"}, {"empty", ""}}));
    const Finished finished = toolIn(folder.path(), {"json", "in.zip", "july.ofx"});
    CHECK(finished.status == 1);
    CHECK(finished.error == none +
                                "in.zip: 2 files are passed over (hidden, a link to a folder, or no OFX "
                                "document): a.txt, empty.\n");
    CHECK(filesIn(finished.output) == std::vector<std::string>{"july.ofx"});
}

TEST_CASE("archives in a folder are read, in the order of names with the other files") {
    const TemporaryFolder folder;
    folder.file("in/a.ofx", paidTo("A"));
    folder.file("in/b.zip", zipOf({{"x.ofx", paidTo("B")}, {"y.txt", "text"}}));
    folder.file("in/c.ofx", paidTo("C"));
    folder.file("in/d.ofx", zipOf({{"z.ofx", paidTo("D")}}));
    folder.file("in/letter.docx", zipOf({{"x.ofx", paidTo("E")}}));
    folder.file("in/photos.zip", zipOf({{"1.jpg", "JPEG"}, {"2.jpg", "JPEG"}}));
    folder.file("in/text.zip", "text");
    const Finished finished = toolIn(folder.path(), {"json", "in"});
    CHECK(finished.status == 0);
    CHECK(filesIn(finished.output) ==
          std::vector<std::string>{"in/a.ofx", "in/b.zip/x.ofx", "in/c.ofx", "in/d.ofx/z.ofx"});
    CHECK(finished.error ==
          "in/b.zip: 1 file is passed over (hidden, a link to a folder, or no OFX document): y.txt.\n"
          "in: 3 files are passed over (hidden, a link to a folder, or no OFX document): letter.docx, "
          "photos.zip, text.zip.\n");
}

TEST_CASE("an archive in a folder that cannot be read is an error") {
    const TemporaryFolder folder;
    folder.file("in/a.ofx", paidTo("A"));
    const std::string whole = zipOf({{"x.ofx", paidTo("B")}});
    folder.file("in/b.zip", whole.substr(0, whole.size() / 2));
    const Finished finished = toolIn(folder.path(), {"json", "in"});
    CHECK(finished.status == 1);
    CHECK(finished.error.starts_with("in/b.zip: The ZIP archive is cut off or damaged"));
    CHECK(filesIn(finished.output) == std::vector<std::string>{"in/a.ofx"});
}

TEST_CASE("an archive by standard input is refused, with what to do") {
    const std::string bytes = zipOf({{"july.ofx", paidTo("A"), 0}});
    const Finished finished = tool({"show", "-"}, bytes);
    CHECK(finished.status == 1);
    CHECK(finished.error ==
          "-: not an OFX document\n"
          "  Likely cause: It is a ZIP archive or an office document.\n"
          "  Archives are read as files only: save this one, and name it.\n");
    CHECK(Json::parse(tool({"json", "-"}, bytes).output)["error"]["code"] == "otherFormat");
}

TEST_CASE("no output takes the place of an archive") {
    const TemporaryFolder folder;
    const std::string bytes = zipOf({{"july.ofx", paidTo("A")}});
    folder.file("in.zip", bytes);
    folder.file("other.zip", bytes);
    struct Row {
        std::vector<std::string> arguments;
        std::string text;
    };
    for (const Row& row : std::vector<Row>{
             {{"csv", "in.zip", "-o", "in.zip"}, "in.zip is also an input file; choose another name\n"},
             {{"csv", "in.zip", "-o", "in.zip", "--force"},
              "in.zip is also an input file; choose another name\n"},
             {{"repair", "in.zip", "-o", "in.zip", "--force"},
              "in.zip is also an input file; choose another name\n"},
             {{"repair", "in.zip/july.ofx", "-o", "./in.zip", "--force"}, "./in.zip is also an input file"},
             {{"csv", ".", "-o", "in.zip", "--force"}, "in.zip is also an input file; choose another name\n"},
             {{"csv", "in.zip", "-o", "other.zip"},
              "other.zip may be an OFX document, which would be lost"}}) {
        const std::string arguments = Json(row.arguments).dump();
        CAPTURE(arguments);
        const Finished finished = toolIn(folder.path(), row.arguments);
        CHECK(finished.status == 2);
        CHECK(contains(finished.error, row.text));
        CHECK(folder.read("in.zip") == bytes);
        CHECK(folder.read("other.zip") == bytes);
    }
    CHECK(toolIn(folder.path(), {"repair", "in.zip", "-o", "july.ofx"}).status == 0);
    CHECK(folder.read("july.ofx") == paidTo("A"));
}

TEST_CASE("the documents of an archive are made anonymous one by one") {
    const TemporaryFolder folder;
    folder.file("in.zip", zipOf({{"a.qfx", paidTo("Cafe")}, {"b.ofx", paidTo("Shop")}}));
    const Finished refused = toolIn(folder.path(), {"anonymize", "in.zip"});
    CHECK(refused.status == 2);
    CHECK(contains(refused.error, "several files need --into FOLDER"));
    CHECK(toolIn(folder.path(), {"anonymize", "in.zip", "--into", "out"}).status == 0);
    for (const char* name : {"out/anonymous-1.qfx", "out/anonymous-2.ofx"}) {
        CHECK(contains(folder.read(name), "<TRNTYPE>POS"));
        CHECK_FALSE(contains(folder.read(name), "Cafe"));
    }
}
