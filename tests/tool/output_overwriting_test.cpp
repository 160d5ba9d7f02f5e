// SPDX-License-Identifier: Apache-2.0
#include "tool/output_files.h"

/// \file
/// Which files are replaced: no OFX document without --force.

using namespace brackwell::tests;

TEST_CASE("a file that begins like an OFX document is replaced with --force only") {
    const auto wide = [](const std::string& text, std::size_t width, bool isBigEndian) {
        std::string bytes;
        const std::string zeros(width - 1, '\0');
        for (const char c : text) bytes += isBigEndian ? zeros + c : c + zeros;
        return bytes;
    };
    using namespace std::string_literals;
    for (const std::string& bytes : std::vector<std::string>{kDocument,
                                                             kBrokenDocument,
                                                             "<OFX>",
                                                             "<ofx>\n",
                                                             "OFXHEADER:100",
                                                             "ofxheader:100\r\n",
                                                             "<?xml version=\"1.0\"?>",
                                                             "<?XML?>",
                                                             "<?OFX OFXHEADER=\"200\"?>",
                                                             "<?ofx ?>",
                                                             " \r\n\t\v\fOFXHEADER:100",
                                                             "\u00A0\u3000\u2003<OFX>",
                                                             "\xA0\x85<OFX>",
                                                             "\xEF\xBB\xBF<OFX>",
                                                             "\xEF\xBB\xBF \n<OFX>",
                                                             "\xBF\xBB\xBF<OFX>",
                                                             "\xFF\xFE<OFX>",
                                                             "\xFE\xFF" + wide("<OFX>", 2, true),
                                                             "\xFF\xFE" + wide("\n <ofx>", 2, false),
                                                             wide("OFXHEADER:100", 2, true),
                                                             wide("OFXHEADER:100", 2, false),
                                                             "\x00\x00\xFE\xFF"s + wide("<OFX>", 4, true),
                                                             "\xFF\xFE\x00\x00"s + wide("<OFX>", 4, false),
                                                             wide("<?xml", 4, true),
                                                             wide("<?xml", 4, false),
                                                             std::string(60'000, ' ') + "<OFX>",
                                                             std::string(65'530, ' ') + "OFXHEADER:100",
                                                             std::string(1'000'000, '\n') + "<OFX>"}) {
        const std::string beginning =
            Json(bytes.substr(0, 40)).dump(-1, ' ', true, Json::error_handler_t::replace);
        CAPTURE(beginning);
        const TemporaryFolder folder;
        folder.file("july", bytes);
        const Finished refused = toolIn(folder.path(), {"csv", "-", "-o", "july"}, kDocument);
        CHECK(refused.status == 2);
        CHECK(refused.output == "");
        CHECK(refused.error ==
              "--output: july may be an OFX document, which would be lost; choose another name, or replace "
              "the document with --force\nRun with --help for more information.\n");
        CHECK(folder.read("july") == bytes);
        CHECK(toolIn(folder.path(), {"csv", "-", "-o", "july", "--force"}, kDocument).status == 0);
        CHECK(contains(folder.read("july"), "Shop"));
        CHECK(namesIn(folder) == FileNames{"july"});
    }
}

TEST_CASE("a file in which a document stands after something else is replaced with --force only") {
    using namespace std::string_literals;
    const std::string body = kDocument.substr(kDocument.find("<OFX>"));
    const std::string inside = body.substr(5);
    const auto wide = [](const std::string& text) {
        std::string bytes;
        for (const char c : text) bytes += std::string{c, '\0'};
        return bytes;
    };
    struct Row {
        std::string why, bytes;
        bool isRead = true;  ///< by the reading commands
    };
    for (const Row& row : std::vector<Row>{
             {"a header of a mail", "Content-Type: application/x-ofx\r\n\r\n" + kDocument},
             {"a web page", "<html><body><pre>" + kDocument + "</pre></body></html>"},
             {"a web page around the body alone", "<html><body><pre>" + body},
             {"a NUL byte", "\0"s + kDocument},
             {"a document type", "<!DOCTYPE OFX>\n" + body},
             {"a comment", "<!-- x -->\n" + body},
             {"a header without its first line", kDocument.substr(kDocument.find("DATA:"))},
             {"a text", "Dear customer,\n<ofx>\n<signonmsgsrsv1></signonmsgsrsv1></ofx>"},
             {"attributes", "text <OFX xmlns=\"x\">" + inside},
             {"a prefix", "text <ofx:OFX xmlns:ofx=\"x\">" + inside, false},
             {"an instruction", "text <?OFX OFXHEADER=\"200\"?>" + body},
             {"no root", "text" + inside},
             {"no root and no set", "text\n<STMTTRN>\n<TRNAMT>1</STMTTRN>", false},
             {"a mark and a text in UTF-16", "\xFF\xFE" + wide("text " + body), false},
             {"OFC", "<OFC><DTD>2<CPAGE>1252</OFC>", false},
             {"OFC with an attribute", "<ofc version=\"2\">\n<DTD>2", false},
             {"gzip", "\x1F\x8B\x08\x00"s, false},
         }) {
        CAPTURE(row.why);
        const TemporaryFolder folder;
        folder.file("july", row.bytes);
        CHECK((toolIn(folder.path(), {"json", "july"}).status == 0) >= row.isRead);
        const Finished refused = toolIn(folder.path(), {"csv", "-", "-o", "july"}, kDocument);
        CHECK(refused.status == 2);
        CHECK(contains(refused.error, "july may be an OFX document"));
        CHECK(folder.read("july") == row.bytes);
        CHECK(toolIn(folder.path(), {"csv", "-", "-o", "july", "--force"}, kDocument).status == 0);
    }
}

TEST_CASE("a file with the name of a document is replaced with --force only, whatever is in it") {
    for (const std::string name :
         {"a.ofx", "a.OFX", "a.qfx", "a.Qbo", "a.ofc", "a.aso", ".ofx", "folder/b.qfx", "link.ofx", "link"}) {
        CAPTURE(name);
        const TemporaryFolder folder;
        std::filesystem::create_directory(folder.path("folder"));
        const bool isLink = name.starts_with("link");
        const std::string file = name == "link" ? "a.qfx" : isLink ? "text" : name;
        folder.file(file, kOld);
        if (isLink) std::filesystem::create_symlink(file, folder.path(name));
        const Finished refused = toolIn(folder.path(), {"csv", "-", "-o", name}, kDocument);
        CHECK(refused.status == 2);
        CHECK(contains(refused.error, "--output: " + name + " has the name of an OFX document"));
        CHECK(folder.read(file) == kOld);
        CHECK(toolIn(folder.path(), {"csv", "-", "-o", name, "--force"}, kDocument).status == 0);
    }
    const TemporaryFolder folder;
    CHECK(toolIn(folder.path(), {"repair", "-", "-o", "new.ofx"}, kDocument).status == 0);
    CHECK(folder.read("new.ofx") == kDocument);
}

TEST_CASE("a result of the tool that quotes a document is replaced by the next one") {
    const TemporaryFolder folder;
    folder.file("two.ofx", kDocument + "<OFX></A></OFX> OFXHEADER:100 <OFX><BANKMSGSRSV1><STMTTRNRS>");
    for (const std::string command : {"json", "tree", "report", "csv", "show", "accounts"}) {
        CAPTURE(command);
        const std::string line = "\"$TOOL\" -h >old; \"$TOOL\" " + command + " --as-is two.ofx -q -o old";
        CHECK(!contains(shell(folder, line).error, "--force"));
        const Finished again = shell(folder, line.substr(line.find(';') + 1));
        CHECK(!contains(again.error, "--force"));
        CHECK(again.status != 2);
    }
}

TEST_CASE("every example document is kept") {
    for (const auto& entry : std::filesystem::directory_iterator(examplePath(""))) {
        if (entry.path().extension() != ".ofx") continue;
        CAPTURE(entry.path().string());
        const TemporaryFolder folder;
        std::filesystem::copy_file(entry.path(), folder.path("july.ofx"));
        CHECK(toolIn(folder.path(), {"csv", "-", "-o", "july.ofx"}, kDocument).status == 2);
        CHECK(run({{"/usr/bin/cmp", entry.path(), folder.path("july.ofx")}}).status == 0);
    }
}

TEST_CASE("other files are replaced without --force") {
    using namespace std::string_literals;
    for (const std::string& bytes : std::vector<std::string>{
             "", " ", "O", "OFX", "<OFX", "<OF", "Dear customer,\n<OFX>", "{\"OFX\": {}}", "file,\"<OFX>\"",
             "<!DOCTYPE html>", "<html>", "OFXHEADER", "\xEF\xBB\xBF", "\xFF\xFE", "\x00<OFX>"s,
             std::string(1'000'000, 'x'), "\xFF\xFEO"}) {
        const std::string beginning =
            Json(bytes.substr(0, 40)).dump(-1, ' ', true, Json::error_handler_t::replace);
        CAPTURE(beginning);
        const TemporaryFolder folder;
        folder.file("old", bytes);
        CHECK(toolIn(folder.path(), {"csv", "-", "-o", "old"}, kDocument).status == 0);
        CHECK(contains(folder.read("old"), "Shop"));
    }
}

TEST_CASE("names that a shell puts after -o destroy nothing") {
    const TemporaryFolder folder;
    for (const char* name : {"april.ofx", "july.ofx", "june.ofx"}) folder.file(name, kDocument);
    for (const char* line :
         {"exec \"$TOOL\" csv -o *.ofx", "exec \"$TOOL\" csv --output *.ofx",
          "exec \"$TOOL\" csv -o april.ofx july.ofx -o june.ofx", "exec \"$TOOL\" csv july.ofx -o",
          "exec \"$TOOL\" csv july.ofx -o ''", "exec \"$TOOL\" csv july.ofx --output=a --output=b"}) {
        CAPTURE(line);
        const Finished finished = shell(folder, line);
        CHECK(finished.status == 2);
        CHECK(finished.output == "");
        CHECK(contains(finished.error, "output"));
        CHECK(namesIn(folder) == FileNames{"april.ofx", "july.ofx", "june.ofx"});
        for (const char* name : {"april.ofx", "july.ofx", "june.ofx"}) CHECK(folder.read(name) == kDocument);
    }
}

TEST_CASE("an input is never the output under another name, but where a repair is forced") {
    const TemporaryFolder folder;
    folder.file("a.ofx", kDocument);
    folder.file("text", "text before a document\n" + kBrokenDocument);
    std::filesystem::create_hard_link(folder.path("a.ofx"), folder.path("hard"));
    std::filesystem::create_symlink("a.ofx", folder.path("soft"));
    std::filesystem::create_directory_symlink(".", folder.path("here"));
    for (const std::string command : {"csv", "pretty", "repair"})
        for (const std::string arguments :
             {"a.ofx -o a.ofx", "a.ofx -o ./a.ofx", "a.ofx -o hard", "a.ofx -o soft", "soft -o a.ofx",
              "a.ofx -o here/a.ofx", "a.ofx -o \"$PWD/a.ofx\"", "- -o a.ofx <a.ofx",
              "/dev/stdin -o a.ofx <a.ofx", "/dev/fd/3 -o a.ofx 3<a.ofx", "a.ofx -o /dev/fd/3 3>>a.ofx",
              "text -o text"})
            for (const std::string force : {"", "--force "}) {
                if (command == "repair" && force != "") continue;
                const std::string line = "\"$TOOL\" " + command + " " + force + arguments;
                CAPTURE(line);
                const Finished finished = shell(folder, line);
                CHECK(finished.status == 2);
                CHECK(contains(finished.error, "is also an input file; choose another name"));
                CHECK(contains(finished.error, "--force") == (command == "repair"));
                CHECK(folder.read("a.ofx") == kDocument);
            }
}

TEST_CASE("repair --force puts a document right in its place") {
    const TemporaryFolder folder;
    const std::string broken = version1("<STMTTRN><NAME>x</STMTRN>");
    for (const char* input : {"a.ofx", "-"}) {
        CAPTURE(input);
        folder.file("a.ofx", broken);
        const Finished plain = toolIn(folder.path(), {"repair", "a.ofx"});
        CHECK(shell(folder, "\"$TOOL\" repair --force -o a.ofx " + std::string(input) + " <a.ofx").status ==
              0);
        CHECK(folder.read("a.ofx") == plain.output);
        CHECK(folder.read("a.ofx") != broken);
        CHECK(toolIn(folder.path(), {"show", "a.ofx"}).status == 0);
    }
    const std::string hopeless = "OFXHEADER:100\n\nDear customer, \xE9\x81";
    folder.file("b.ofx", hopeless);
    const Finished finished =
        toolIn(folder.path(), {"repair", "--encoding", "UTF-8", "--force", "-o", "b.ofx", "b.ofx"});
    CHECK(finished.status == 1);
    CHECK(folder.read("b.ofx") == hopeless);
    CHECK(namesIn(folder) == FileNames{"a.ofx", "b.ofx"});
}
