// SPDX-License-Identifier: Apache-2.0
#include <random>

#include "support/effort.h"
#include "tool/tool.h"
#include "tool/zip_archive.h"

using namespace brackwell::tests;

namespace {

constexpr const char* kDownloadAgain = "  Download the archive again.\n";
constexpr const char* kLostList =
    "The ZIP archive is cut off or damaged: the list of what is in it cannot be read. Download it again.\n";

/// A member with what is wrong about it.
ZipMember wrong(const std::function<void(ZipMember&)>& change) {
    ZipMember member{"july.ofx", kDocument};
    change(member);
    return member;
}

/// The text with some bytes of it replaced, the last ones that are like that.
std::string patched(std::string bytes, const std::string& was, const std::string& now) {
    const std::size_t at = bytes.rfind(was);
    REQUIRE(at != bytes.npos);
    return bytes.replace(at, was.size(), now);
}

}  // namespace

TEST_CASE("a file in an archive that cannot be read is an error like any other") {
    const std::string damaged =
        "In the archive this file is damaged or cut off.\n" + std::string(kDownloadAgain);
    struct Row {
        std::string what;
        ZipMember member;
        std::string code, said;
    };
    for (const Row& row : std::vector<Row>{
             {"encrypted", wrong([](ZipMember& member) { member.flags = 1; }), "notPermitted",
              "In the archive this file is encrypted, and nobody is asked for a password.\n"
              "  Unpack the archive with its password, and name the file.\n"},
             {"another method", wrong([](ZipMember& member) { member.method = 12; }), "notReadable",
              "In the archive this file is packed by method 12, and only 0 (stored) and 8 (deflated) are "
              "read.\n"
              "  Unpack the archive, and name the file.\n"},
             {"another checksum", wrong([](ZipMember& member) { member.checksumError = 1; }), "notReadable",
              damaged},
             {"more than it says", wrong([](ZipMember& member) { member.sizeError = -1; }), "notReadable",
              damaged},
             {"less than it says", wrong([](ZipMember& member) { member.sizeError = 1; }), "notReadable",
              damaged},
             {"stored, and less than it says", wrong([](ZipMember& member) {
                  member.method = 0;
                  member.sizeError = 1;
              }),
              "notReadable", damaged},
             {"huge", wrong([](ZipMember& member) { member.sizeError = 300'000'000; }), "tooLarge",
              "Unpacked, this file has " + std::to_string(300'000'000 + kDocument.size()) +
                  " bytes, more than the 268435456 that are read from an archive.\n"
                  "  Unpack the archive if you trust who made it, and name the file.\n"},
         }) {
        CAPTURE(row.what);
        const TemporaryFolder folder;
        folder.file("in.zip", zipOf({{"a.ofx", kDocument}, row.member}));
        const Finished finished = toolIn(folder.path(), {"json", "in.zip"});
        CHECK(finished.status == 1);
        CHECK(finished.error == "in.zip/july.ofx: " + row.said);
        const std::vector<std::string> lines = linesOf(finished.output);
        REQUIRE(lines.size() == 2);
        CHECK(Json::parse(lines[0]).contains("responses"));
        CHECK(Json::parse(lines[1])["error"]["code"] == row.code);
        CHECK(toolIn(folder.path(), {"show", "in.zip/july.ofx"}).error == finished.error);
        CHECK(toolIn(folder.path(), {"anonymize", "in.zip/july.ofx"}).output == "");
        CHECK(contains(toolIn(folder.path(), {"report", "in.zip"}).output, "in.zip/july.ofx"));
    }
}

TEST_CASE("the page of errors has the messages about archives") {
    std::ifstream stream(std::string(BRACKWELL_SOURCE_DIR) + "/docs/errors.md");
    const std::string page{std::istreambuf_iterator<char>(stream), {}};
    for (const char* message :
         {"In the archive this file is encrypted, and nobody is asked for a password.",
          "In the archive this file is packed by method ", "In the archive this file is damaged or cut off.",
          "Unpacked, this file has ", " files were left out, since nobody can look into: ", " (encrypted)",
          " (damaged)", "The ZIP archive is cut off or damaged: the list of what is in it cannot be read.",
          "This is one part of a ZIP archive that was split.",
          "The ZIP archive has more members than are read.",
          "Unpacked, the ZIP archive would have more than 100 times its size (seen at ",
          "There is no OFX document in this file, a ZIP archive or an office document.",
          "This command reads one document, and there are ", "not looked into, as in an archive: ",
          "Archives are read as files only: save this one, and name it."}) {
        CAPTURE(message);
        CHECK(contains(page, message));
    }
}

TEST_CASE("what does not have the name of a document and cannot be looked into is named, and is an error") {
    const TemporaryFolder folder;
    std::vector<ZipMember> members{{"a.ofx", kDocument}};
    for (const char* name : {"b.txt", "c.jpg", "d.bin"}) members.push_back({name, std::string(100, 'x')});
    members[1].flags = 1;
    members[2].method = 99;
    members[3].checksumError = 1;
    folder.file("in.zip", zipOf(members));
    const Finished finished = toolIn(folder.path(), {"check", "in.zip"});
    CHECK(finished.status == 1);
    CHECK(finished.error ==
          "in.zip: 3 files were left out, since nobody can look into: b.txt (encrypted), c.jpg (packed in an "
          "unknown way), d.bin (damaged).\n");
}

TEST_CASE("an archive that is cut off or damaged is an error, wherever that is") {
    const std::string whole = zipOf({{"july.ofx", kDocument}, {"june.ofx", kDocument, 0}}, {.comment = "c"});
    for (std::size_t size = 4; size < whole.size(); ++size) {
        if (kSanitized && size % 16 != 0) continue;
        CAPTURE(size);
        const TemporaryFolder folder;
        folder.file("in.zip", whole.substr(0, size));
        const Finished finished = toolIn(folder.path(), {"check", "in.zip"});
        CHECK(finished.status == 1);
        CHECK(finished.error == std::string("in.zip: ") + kLostList);
    }
}

TEST_CASE("an archive whose end leads elsewhere is an error") {
    using namespace std::string_literals;
    const std::string whole = zipOf({{"july.ofx", kDocument}});
    const std::string large = zipOf({{"july.ofx", kDocument}}, {.isLong = true});
    struct Row {
        std::string what, bytes, said;
    };
    for (const Row& row : std::vector<Row>{
             {"fewer members", zipOf({{"july.ofx", kDocument}}, {.countError = 1}), kLostList},
             {"more members", zipOf({{"july.ofx", kDocument}}, {.countError = 0xFFFF}), kLostList},
             {"no list", patched(whole, "PK\x01\x02", "PK\x01\x03"), kLostList},
             {"no long end", patched(large, "PK\x06\x06", "PK\x06\x05"), kLostList},
             {"no way to the long end", patched(large, "PK\x06\x07", "PK\x06\x06"), kLostList},
             {"one of several parts", zipOf({{"july.ofx", kDocument}}, {.disk = 1}),
              "This is one part of a ZIP archive that was split. Put the parts together first.\n"},
         }) {
        CAPTURE(row.what);
        const TemporaryFolder folder;
        folder.file("in.zip", row.bytes);
        const Finished finished = toolIn(folder.path(), {"check", "in.zip"});
        CHECK(finished.status == 1);
        CHECK(finished.error == "in.zip: " + row.said);
    }
}

TEST_CASE("an archive of little that becomes much is left out before it does") {
    const std::string zeros(std::size_t{64} << 20U, '\0');
    struct Row {
        std::string what, bytes;
    };
    for (const Row& row : std::vector<Row>{
             {"a document", zipOf({{"a.ofx", zeros}})},
             {"one that begins like a document", zipOf({{"a", kDocument + zeros}})},
             {"many over one another", overlappingZip({"a.ofx", zeros.substr(0, 1 << 20U)}, 30'000)},
             {"many that are looked into, over one another",
              overlappingZip({"a", zeros.substr(0, 1 << 16U)}, 30'000)},
         }) {
        CAPTURE(row.what);
        const TemporaryFolder folder;
        folder.file("in.zip", row.bytes);
        folder.file("july.ofx", kDocument);
        const Finished finished = toolIn(folder.path(), {"csv", "in.zip", "july.ofx"});
        CHECK(finished.status == 1);
        CHECK(finished.error.starts_with(
            "in.zip: Unpacked, the ZIP archive would have more than 100 times its size (seen at a"));
        CHECK(contains(finished.output, "Shop"));
    }
}

TEST_CASE("a document that is packed well is read") {
    const TemporaryFolder folder;
    std::string transactions;
    for (std::size_t i = 0; i < scaled(20'000); ++i)
        transactions += "<STMTTRN><TRNTYPE>POS<DTPOSTED>20240301<TRNAMT>-1<FITID>" + std::to_string(i) +
                        "<NAME>Cafe</STMTTRN>\n";
    folder.file("in.zip", zipOf({{"july.ofx", transactionsWith(transactions)}}));
    CHECK(toolIn(folder.path(), {"check", "in.zip"}).status == 0);
}

TEST_CASE("the names in an archive lead nowhere, and stay apart") {
    const TemporaryFolder folder;
    folder.file("secret.ofx", transactionsWith("<STMTTRN><NAME>Secret</STMTTRN>"));
    folder.file("in/in.zip", zipOf({{"../../secret.ofx", kDocument},
                                    {"/etc/passwd.ofx", kDocument},
                                    {"", kDocument},
                                    {"a.ofx", kDocument},
                                    {"a.ofx", kDocument},
                                    {"a.ofx", "text", 8, 1},
                                    {"Caf\xE9.ofx", kDocument},
                                    {std::string("n\0l.ofx", 7), kDocument},
                                    {"new\nline.ofx", kDocument}}));
    const Finished finished = toolIn(folder.path("in"), {"json", "--quiet", "in.zip"});
    CHECK(finished.status == 1);
    CHECK(contains(finished.error, "in.zip/a (3).ofx: In the archive this file is encrypted"));
    CHECK_FALSE(contains(finished.output, "Secret"));
    std::vector<std::string> names;
    for (const std::string& line : linesOf(finished.output)) names.push_back(Json::parse(line)["file"]);
    CHECK(names == std::vector<std::string>{"in.zip/", "in.zip/../../secret.ofx", "in.zip//etc/passwd.ofx",
                                            "in.zip/Caf\uFFFD.ofx", "in.zip/a.ofx", "in.zip/a (2).ofx",
                                            "in.zip/a (3).ofx", std::string("in.zip/n\0l.ofx", 14),
                                            "in.zip/new\nline.ofx"});
    const std::filesystem::directory_iterator files(folder.path("in"));
    CHECK(std::distance(files, {}) == 1);
    if (!obstacleToTerminals().empty()) return;
    folder.file("in.zip", zipOf({{"a\x1B[2J\nb.ofx", "text"}, {"c\x1B[2J\nd", ""}}));
    const std::string shown = runOnTerminal(toolCommand({"check", folder.path("in.zip")}), 80).output;
    CHECK(contains(shown, "not an OFX document"));
    CHECK(contains(shown, "1 file is passed over"));
    for (const char* part : {"\x1B[2J", "\nb.ofx", "\nd"}) CHECK_FALSE(contains(shown, part));
}

TEST_CASE("a list of more than 256 MiB is not read") {
    const TemporaryFolder folder;
    const std::string path = folder.file("in.zip", "PK\x03\x04");
    // Holes take no room on a disk.
    constexpr std::uint32_t size = (1U << 28U) + 1;
    std::filesystem::resize_file(path, size + 4);
    std::string end = "PK\x05\x06";
    end.append(8, '\0');
    for (const std::uint32_t number : {size, 4U})
        for (unsigned i = 0; i < 4; ++i) end += static_cast<char>(number >> 8U * i & 0xFFU);
    std::ofstream(path, std::ios::binary | std::ios::app) << end.append(2, '\0');
    const Finished finished = toolIn(folder.path(), {"check", "in.zip"});
    CHECK(finished.status == 1);
    CHECK(finished.error == "in.zip: The ZIP archive has more members than are read. Unpack it first.\n");
}

TEST_CASE("many members take time in proportion to their number") {
    const TemporaryFolder folder;
    std::vector<ZipMember> members;
    for (std::size_t i = 0; i < scaled(100'000); ++i)
        members.push_back({"folder/" + std::to_string(i % 7 == 0 ? 0 : i), "", 0});
    members.push_back({"july.ofx", kDocument});
    folder.file("in.zip", zipOf(members, {.isLong = true}));
    const Finished finished = toolIn(folder.path(), {"check", "in.zip"});
    CHECK(finished.status == 0);
    CHECK(contains(finished.error, std::to_string(scaled(100'000)) + " files are passed over"));
}

TEST_CASE("an archive with any bytes changed is read, or its error is said") {
    const std::string whole =
        zipOf({{"july.ofx", kDocument}, {"june", kDocument, 0}, {"a/.b", "x"}, {"c", "x"}}, {.isLong = true});
    std::mt19937 random(7);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (std::size_t round = 0; round < scaled(2'000); ++round) {
        CAPTURE(round);
        std::string bytes = whole;
        for (std::size_t change = below(3) + 1; change > 0; --change) {
            const std::size_t at = below(4) == 0 ? below(bytes.size() - 4) : bytes.size() - 4 - below(400);
            bytes[at + 4] = static_cast<char>(below(3) == 0 ? 0xFF : below(256));
        }
        const TemporaryFolder folder;
        folder.file("in.zip", bytes);
        const Finished finished = toolIn(folder.path(), {"json", "in.zip"});
        CHECK((finished.status == 0 || finished.status == 1));
        CHECK((finished.status == 0 || !finished.error.empty()));
    }
}
