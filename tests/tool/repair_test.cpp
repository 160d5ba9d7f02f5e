// SPDX-License-Identifier: Apache-2.0
#include "support/documents.h"
#include "tool/commands.h"

using namespace brackwell::tests;

namespace {

const std::string kToRepair =
    "OFXHEADER:100\nVERSION:102\n\n<OFX>\n<SIGNONMSGSRSV1><SONRS><STATUS>\n<CODE>0<!-- y "
    "-->\n<MESSAGE>\n</STATU>\n"
    "</SONRS></SIGNONMSGSRSV1></OFX>\n";
const std::string kRepaired =
    "OFXHEADER:100\nVERSION:102\n\n<OFX>\n<SIGNONMSGSRSV1><SONRS><STATUS>\n<CODE>0\n<MESSAGE></MESSAGE>\n</"
    "STATUS>\n"
    "</SONRS></SIGNONMSGSRSV1></OFX>\n";

/// Carries out a unified diff; "?..." when it does not fit. A line feed at the end counts for nothing.
std::string patched(const std::string& text, const std::string& diff) {
    const std::vector<std::string> lines = linesOf(text);
    std::vector<std::string> result;
    std::size_t at = 0;
    for (const std::string& line : linesOf(diff.substr(diff.find("@@")))) {
        if (line.starts_with("@@ -")) {
            while (at + 1 < std::stoul(line.substr(4))) result.push_back(lines[at++]);
            if (std::stoul(line.substr(line.find('+') + 1)) != result.size() + 1) return "?" + line;
        } else if (!line.starts_with('\\')) {
            if (line.front() != '+' && (at == lines.size() || lines[at++] != line.substr(1)))
                return "?" + line;
            if (line.front() != '-') result.push_back(line.substr(1));
        }
    }
    while (at < lines.size()) result.push_back(lines[at++]);
    std::string joined;
    for (const std::string& line : result) joined += line + "\n";
    return joined;
}

}  // namespace

TEST_CASE("repair writes the repaired document and lists the changes with their places") {
    const Finished finished = tool({"repair", "-"}, kToRepair);
    CHECK(finished.status == 0);
    CHECK(finished.output == kRepaired);
    CHECK(contains(
        finished.error,
        "-:6:8: Repaired in 3 places.\n"
        "-:8:1: wrong close tag: \"</STATU>\" becomes \"</STATUS>\"; <STATUS> is the element that ends here\n"
        "-:7:10: empty leaf without close tag: inserted \"</MESSAGE>\"; <MESSAGE> has neither a text "
        "nor a close tag\n"
        "-:6:8: comment: dropped \"<!-- y -->\"\n"));
}

TEST_CASE("repair puts changes that are alike into one line, those that matter most first") {
    const std::string leaves = "<TRNTYPE>DEBIT<DTPOSTED>20240101<TRNAMT>-1<FITID>";
    const std::string document = transactionsWith("<STMTTRN>" + leaves + "a<!-- 1 -->\n<STMTTRN>" + leaves +
                                                  "b<!-- 2 -->\n<STMTTRN>" + leaves + "c<!-- 3 -->\n");
    const Finished grouped = tool({"repair", "-"}, document);
    const std::vector<std::string> lines = linesOf(grouped.error);
    REQUIRE(lines.size() == 4);
    CHECK(lines[0].ends_with(": Repaired in 6 places."));
    CHECK(
        lines[1].ends_with(": 2 close tags inserted, the first \"</STMTTRN>\"; <STMTTRN> is not allowed in "
                           "<STMTTRN>, so the first ends before it"));
    CHECK(lines[2].find(": close tag missing: inserted \"</STMTTRN>\"; ") != std::string::npos);
    CHECK(lines[3].ends_with(": 3 comments dropped, the first \"<!-- 1 -->\""));
    const Finished single = tool({"repair", "--all", "-"}, document);
    CHECK(single.output == grouped.output);
    CHECK(linesOf(single.error).size() == 7);
    CHECK(contains(single.error, ": comment: dropped \"<!-- 2 -->\"\n"));
}

TEST_CASE("what repair moves is one change, and a secret in it is not shown at its new place") {
    const std::string moved = "<STMTTRN><FITID>a<USERKEY>Sesame</STMTTRN>";
    const std::string list = "<BANKTRANLIST><STMTTRN><FITID>b</STMTTRN></BANKTRANLIST>";
    const std::string balances =
        "<LEDGERBAL><BALAMT>1<DTASOF>20240131</LEDGERBAL><AVAILBAL><BALAMT>1<DTASOF>20240131</AVAILBAL>";
    for (const std::string option : {"--all", "--quiet"}) {
        CAPTURE(option);
        const Finished finished = tool({"repair", option, "-"}, statementWith(list + balances + moved));
        CHECK(contains(finished.output, moved + "</BANKTRANLIST>"));
        CHECK_FALSE(contains(finished.error, "Sesame"));
        CHECK(contains(finished.error,
                       ": hidden, since it contains a secret; <STMTTRN> is not allowed in <STMTRS>"));
        CHECK(contains(finished.error, "1 part of the document moved: ") == (option == "--quiet"));
    }
}

TEST_CASE("a document in lower case is read, and said to be empty with --as-is") {
    const std::string whole(exampleData("checking.ofx").bytes());
    const std::string lower = withTagsInLowerCase(whole);
    const Finished plain = tool({"csv", "--as-is", "-"}, lower);
    CHECK(plain.status == 0);
    CHECK(linesOf(plain.output).size() == 1);
    CHECK(contains(plain.error, "tags are in lower case, so nothing in it is read without a repair.\n"));
    const Finished mended = tool({"csv", "-"}, lower);
    CHECK(mended.status == 0);
    CHECK(mended.output == tool({"csv", "-"}, whole).output);
    CHECK(tool({"repair", "-"}, lower).output == whole);
    const std::string bare = lower.substr(lower.find("<ofx>"));
    CHECK(tool({"csv", "--as-is", "-"}, bare).status == 1);
    CHECK(tool({"csv", "-"}, bare).status == 0);
}

TEST_CASE("tags in lower case are one line") {
    const std::string document = "OFXHEADER:100\n\n<ofx>\n<name >x</name>\n<memo>\n</ofx>\n";
    CHECK(tool({"repair", "-"}, document)
              .error.ends_with(
                  "-:3:1: Repaired in 6 places.\n"
                  "-:5:7: empty leaf without close tag: inserted \"</MEMO>\"; <MEMO> has neither a "
                  "text nor a close tag\n"
                  "-:3:1: 5 tags in lower case changed to capitals, the first \"<ofx>\"\n"));
    CHECK(tool({"repair", "--diff", "-"}, document).error.find("\n+</OFX>\n") != std::string::npos);
}

TEST_CASE("a document that only its repair finds is read in UTF-8, windows-1252 or else ISO-8859-1") {
    const std::string hint = "A document begins at line 2, column 1, but the text before it hides it.\n";
    struct Row {
        std::string name;
        std::string accent;
    };
    for (const Row& row : {Row{"UTF-8", "\u00E9"}, Row{"windows-1252", "\xE9"}}) {
        CAPTURE(row.name);
        const std::string document = "Dear customer,\n<OFX><A>" + row.accent + "</A></OFX>";
        const Finished plain = tool({"tree", "--as-is", "-"}, document);
        CHECK(plain.status == 1);
        CHECK(plain.error.find(hint) != std::string::npos);
        const Finished mended = tool({"tree", "-"}, document);
        CHECK(mended.status == 0);
        CHECK(Json::parse(mended.output)["encoding"] == row.name);
        CHECK(Json::parse(mended.output)["data"]["OFX"]["A"] == "\u00E9");
        const bool isGuess = row.name != "UTF-8";
        CHECK(contains(mended.error, "-: The document does not name its text encoding; it is read as " +
                                         row.name + ".\n") == isGuess);
        CHECK(contains(mended.error, "-:1:1: Repaired in 1 place.\n"));
    }
    const Finished latin = tool({"tree", "-"}, "\x81\n<OFX><A>\xE9</A></OFX>");
    CHECK(contains(latin.error, "it is read as ISO-8859-1.\n-:1:1: Repaired in 1 place.\n"));
    CHECK(Json::parse(latin.output)["data"]["OFX"]["A"] == "\u00E9");
    CHECK(tool({"tree", "-"}, "Dear customer,\n\u00E9").status == 1);
}

TEST_CASE("a document without <OFX> is read, repaired and said to hold nothing") {
    const std::string nothing = "-: The document has no responses";
    const Finished plain = tool({"tree", "-"}, "OFXHEADER:100\n\n<A>1</A>");
    CHECK(plain.status == 0);
    CHECK(plain.error.starts_with(nothing));
    const Finished mended = tool({"tree", "-"}, "OFXHEADER:100\n\n<A>1</A></B>");
    CHECK(mended.status == 0);
    CHECK(contains(mended.error, nothing));
    CHECK(mended.error.ends_with("-:3:9: Repaired in 1 place.\n"));
    CHECK(Json::parse(mended.output)["data"] == Json::parse(plain.output)["data"]);
}

TEST_CASE("repair copies a document that reads, whatever its bytes") {
    for (const char* name : {"checking.ofx", "utf_16.ofx", "windows_1252.ofx", "quirks.ofx"}) {
        CAPTURE(name);
        const TemporaryFolder folder;
        const Finished finished = tool({"repair", examplePath(name), "--output", folder.path("out.ofx")});
        CHECK(finished.status == 0);
        CHECK(finished.error.find("epaired") == std::string::npos);
        CHECK(run({{"/usr/bin/cmp", examplePath(name), folder.path("out.ofx")}}).status == 0);
    }
}

TEST_CASE("repair --diff shows the changes as a diff") {
    const Finished finished = tool({"repair", "--diff", "-"}, kToRepair);
    CHECK(finished.status == 0);
    CHECK(finished.output == kRepaired);
    CHECK(finished.error.ends_with(
        "-:6:8: Repaired in 3 places.\n"
        "--- -\n+++ - (repaired)\n"
        "@@ -3,7 +3,7 @@\n \n <OFX>\n <SIGNONMSGSRSV1><SONRS><STATUS>\n"
        "-<CODE>0<!-- y -->\n-<MESSAGE>\n-</STATU>\n+<CODE>0\n+<MESSAGE></MESSAGE>\n+</STATUS>\n"
        " </SONRS></SIGNONMSGSRSV1></OFX>\n"));
}

TEST_CASE("the diff of changes near and far, at the end and over several lines leads to the same document") {
    std::string lines;
    for (int i = 0; i < 9; ++i) lines += "<CODE>" + std::to_string(i) + "\n";
    for (const std::string& text : std::vector<std::string>{
             "<OFX>\n<STATUS>\n" + lines + "<MEMO>\n" + lines + "<!--\n\n\n-->" + lines +
                 "<A/>\n<B/>\n</OFX>\n",
             "<OFX>\n<BANKTRANLIST><STMTTRN>\n" + lines + "</FOO>\n<MEMO>cut",
             "<OFX><STATUS>\n" + lines + "</OFX></B>", "text\n\n<OFX>\n" + lines + "</OFX>\n",
             "<OFX>\n" + lines + "</OFX>\n<!--\n-->\n</B>\n", "<OFX><!-- a\nb -->\n<!-- c\nd --></OFX>\n"}) {
        CAPTURE(text);
        const Finished finished = tool({"repair", "--diff", "-"}, text);
        CHECK(finished.status == 0);
        const std::string end = finished.output.ends_with('\n') ? "" : "\n";
        CHECK(patched(text, finished.error) == finished.output + end);
        CHECK((finished.error.find("\\ No newline") == std::string::npos) == text.ends_with('\n'));
    }
}

TEST_CASE("repair keeps the encoding and the mark of a document") {
    const auto utf16 = [](const std::string& text) {
        std::string bytes = "\xFE\xFF";
        for (const char c : text) bytes.append({'\0', c});
        return bytes;
    };
    struct Row {
        std::string before;
        std::string after;
    };
    for (const Row& row :
         std::vector<Row>{{utf16("<OFX><MEMO></OFX>"), utf16("<OFX><MEMO></MEMO></OFX>")},
                          {"\xEF\xBB\xBF<OFX><MEMO></OFX>", "\xEF\xBB\xBF<OFX><MEMO></MEMO></OFX>"},
                          {"<OFX><MEMO><NAME>caf\xE9</OFX>", "<OFX><MEMO></MEMO><NAME>caf\xE9</OFX>"},
                          {"\xEF\xBB\xBF<OFX><MEMO><NAME>caf\xE9</OFX>",
                           "\xEF\xBB\xBF<OFX><MEMO></MEMO><NAME>caf\xE9</OFX>"}}) {
        const Finished finished = tool({"repair", "-"}, row.before);
        CHECK(finished.status == 0);
        CHECK(finished.output == row.after);
    }
}

TEST_CASE("every reading command repairs unless it is told not to, and says so") {
    const std::string document = transactionsWith(
        "<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20240101<TRNAMT>-1<FITID>a<NAME>Bakery<MEMO></STMTTRN><!-- end "
        "-->");
    for (const std::string& command : commandsWith("--as-is")) {
        CAPTURE(command);
        const Finished without = tool({command, "--as-is", "-"}, document);
        CHECK(without.status == 1);
        CHECK(without.output.find("Bakery") == std::string::npos);
        const Finished with = tool({command, "-"}, document);
        CHECK(with.status == 0);
        CHECK(linesOf(with.error).size() == 1);
        CHECK(with.error.ends_with(": Repaired in 2 places.\n"));
        CHECK(contains(with.output, "Bakery") == showsPayees(command));
    }
}

TEST_CASE("a document that reads is not touched by a repair") {
    const std::string document = "<OFX><MEMO><NAME>x";
    CHECK(outputOf({"tree"}, document) == outputOf({"tree", "--as-is"}, document));
}

TEST_CASE("a repaired document keeps what is said of its encoding") {
    const Finished finished = tool({"tree", "-"}, "<OFX><NAME>caf\xE9<MEMO></OFX>");
    CHECK(finished.status == 0);
    CHECK(finished.error.ends_with("it is read as windows-1252.\n-:1:22: Repaired in 1 place.\n"));
    CHECK(Json::parse(finished.output)["encoding"] == "windows-1252");
}

TEST_CASE("what is no document cannot be repaired") {
    for (const char* text : {"Dear customer,", "", "\xFF\xFF\xFF"}) {
        CAPTURE(text);
        const Finished finished = tool({"repair", "-"}, text);
        CHECK(finished.status == 1);
        CHECK(finished.output == "");
        CHECK(finished.error != "");
    }
    CHECK(tool({"repair", "/nowhere"}).status == 1);
}

TEST_CASE("long parts of a document are cut in the list of changes") {
    const std::string comment = "<!-- \u00E9" + std::string(500, 'x') + " -->";
    const Finished finished = tool({"repair", "-"}, "<OFX><A>1" + comment + "</A></OFX>");
    CHECK(finished.output == "<OFX><A>1</A></OFX>");
    CHECK(finished.error.ends_with("-:1:10: Repaired in 1 place.\n-:1:10: comment: dropped \"<!-- \u00E9" +
                                   std::string(53, 'x') + "...\"\n"));
}
