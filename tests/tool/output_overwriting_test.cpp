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
                                                             kBroken,
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
        const Finished refused = toolIn(folder, {"csv", "-", "-o", "july"}, kDocument);
        CHECK(refused.status == 2);
        CHECK(refused.output == "");
        CHECK(
            refused.error ==
            "--output: july begins like an OFX document, which would be lost; give --output another name, or "
            "replace the document with --force\nRun with --help for more information.\n");
        CHECK(folder.read("july") == bytes);
        CHECK(toolIn(folder, {"csv", "-", "-o", "july", "--force"}, kDocument).status == 0);
        CHECK(contains(folder.read("july"), "Shop"));
        CHECK(namesIn(folder) == Names{"july"});
    }
}

TEST_CASE("every example document is kept") {
    for (const auto& entry : std::filesystem::directory_iterator(examplePath(""))) {
        if (entry.path().extension() != ".ofx") continue;
        CAPTURE(entry.path().string());
        const TemporaryFolder folder;
        std::filesystem::copy_file(entry.path(), folder.path("july.ofx"));
        CHECK(toolIn(folder, {"csv", "-", "-o", "july.ofx"}, kDocument).status == 2);
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
        CHECK(toolIn(folder, {"csv", "-", "-o", "old"}, kDocument).status == 0);
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
        CHECK(namesIn(folder) == Names{"april.ofx", "july.ofx", "june.ofx"});
        for (const char* name : {"april.ofx", "july.ofx", "june.ofx"}) CHECK(folder.read(name) == kDocument);
    }
}

TEST_CASE("an input is never the output under another name, but where a repair is forced") {
    const TemporaryFolder folder;
    folder.file("a.ofx", kDocument);
    folder.file("text", "text before a document\n" + kBroken);
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
                CHECK(contains(finished.error, "is also a file to be read; give --output another name"));
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
        const Finished plain = toolIn(folder, {"repair", "a.ofx"});
        CHECK(shell(folder, "\"$TOOL\" repair --force -o a.ofx " + std::string(input) + " <a.ofx").status ==
              0);
        CHECK(folder.read("a.ofx") == plain.output);
        CHECK(folder.read("a.ofx") != broken);
        CHECK(toolIn(folder, {"show", "a.ofx"}).status == 0);
    }
    const std::string hopeless = "OFXHEADER:100\n\nDear customer, \xE9\x81";
    folder.file("b.ofx", hopeless);
    const Finished finished =
        toolIn(folder, {"repair", "--encoding", "UTF-8", "--force", "-o", "b.ofx", "b.ofx"});
    CHECK(finished.status == 1);
    CHECK(folder.read("b.ofx") == hopeless);
    CHECK(namesIn(folder) == Names{"a.ofx", "b.ofx"});
}
