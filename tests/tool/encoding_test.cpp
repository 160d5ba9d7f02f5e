// SPDX-License-Identifier: Apache-2.0
#include <bit>

#include "tool/tool.h"

using namespace brackwell::tests;

namespace {

const std::string kAccent = "<MEMO>Caf\xE9 \x80";  // in windows-1252: é and the Euro sign

std::string xml(const std::string& declaration) {
    return declaration + "\n<?OFX OFXHEADER=\"200\" VERSION=\"211\" ENCODING=\"UTF-16\"?>\n<OFX>" + kAccent +
           "</MEMO></OFX>";
}

}  // namespace

TEST_CASE("bytes that are no text of the library's encodings are read again in another one") {
    struct Row {
        std::string why;
        std::string bytes;
        std::string encoding;
        std::string memo;
        std::string said;  ///< before how it is read; empty: the header names that encoding
    };
    const auto named = [](const std::string& name) {
        return "The document names the text encoding \"" + name +
               "\", but its bytes are not in that encoding; it is ";
    };
    const std::string nameless = "The document does not name its text encoding; it is ";
    const std::string windows = "Café €";
    const std::string latin = "Café \u0080";
    const std::vector<Row> rows{
        {"CHARSET is a number", version1(kAccent), "windows-1252", windows, ""},
        {"CHARSET in lower case", version1(kAccent, "cp1252"), "windows-1252", windows, ""},
        {"CHARSET is another encoding", version1(kAccent, "8859-1"), "ISO-8859-1", latin, ""},
        {"CHARSET by its long name", version1(kAccent, "iso-8859-1"), "ISO-8859-1", latin, ""},
        {"CHARSET is none", version1(kAccent, "NONE"), "windows-1252", windows, named("USASCII")},
        {"CHARSET is not known", version1(kAccent, "936"), "windows-1252", windows,
         "The document names the text encoding \"936\", which is not supported; it is "},
        {"CHARSET fails, too", version1(kAccent, "UTF-8"), "windows-1252", windows, named("UTF-8")},
        {"CHARSET fails as ASCII", version1(kAccent, "US-ASCII"), "windows-1252", windows, named("US-ASCII")},
        {"there is no header", "<OFX>" + kAccent + "</OFX>", "windows-1252", windows, nameless},
        {"blank lines stand before the header", "\r\n\xA0\n" + version1(kAccent, "LATIN1"), "ISO-8859-1",
         latin, ""},
        {"the declaration names it", xml("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"), "ISO-8859-1",
         latin, ""},
        {"the declaration fails", xml("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"), "windows-1252", windows,
         named("UTF-8")},
        {"single quotes name nothing", xml("<?xml version='1.0' encoding='ISO-8859-1'?>"), "windows-1252",
         windows, nameless},
        {"an upper-case declaration names nothing", xml("<?XML VERSION=\"1.0\" encoding=\"ISO-8859-1\"?>"),
         "windows-1252", windows, nameless},
        {"an instruction names nothing", xml(""), "windows-1252", windows, nameless},
    };
    for (const Row& row : rows) {
        CAPTURE(row.why);
        const Finished finished = tool({"tree", "-"}, row.bytes);
        CHECK(finished.status == 0);
        const bool isUnsure = contains(row.said, "not supported");
        const std::string said = "-: " + row.said + "read as " + row.encoding +
                                 (isUnsure ? ", so letters beyond ASCII may be wrong." : ".");
        CHECK(contains(finished.error, said + "\n") == !row.said.empty());
        CHECK(contains(finished.error, "read as") == !row.said.empty());
        const Json tree = Json::parse(finished.output);
        CHECK(tree["encoding"] == row.encoding);
        CHECK(tree["data"]["OFX"]["MEMO"] == row.memo);
    }
}

TEST_CASE("a mark before bytes that are read again is no part of their text") {
    // Bytes of these sizes are no text in the encoding that the mark stands for.
    for (const std::string& mark :
         {std::string("\xEF\xBB\xBF"), std::string("\xBF\xBB\xBF"), std::string("\xFE\xFF"),
          std::string("\xFF\xFE"), std::string("\x00\x00\xFE\xFF", 4)}) {
        CAPTURE(mark.size());
        std::string document = version1(kAccent + "</MEMO>");
        if (document.size() % 2 == 0) document += '\n';
        const Finished finished = tool({"tree", "-"}, mark + document);
        CHECK(finished.status == 0);
        CHECK_FALSE(contains(finished.error, "read as"));  // the header names it
        const Json tree = Json::parse(finished.output);
        CHECK(tree["encoding"] == "windows-1252");
        CHECK(tree["header"]["OFXHEADER"] == "100");
        CHECK(tree["data"]["OFX"]["MEMO"] == "Café €");
    }
}

TEST_CASE("bytes that do not begin like OFX are not read again") {
    for (const std::string& bytes :
         {"Dear customer,\n" + version1(kAccent), "OFXHEADER;100\n<OFX>" + kAccent + "</OFX>",
          "<ofx>" + kAccent + "</ofx>"}) {
        CAPTURE(bytes.size());
        const Finished finished = tool({"tree", "--as-is", "-"}, bytes);
        CHECK(finished.status == 1);
        CHECK(contains(finished.error, ": Data is not OFX or unknown character encoding.\n  Likely cause: "));
    }
}

TEST_CASE("text that the library decodes is not read again, whatever its header says") {
    const std::string document = version1("<MEMO>Café", "ISO-8859-1");
    const Json tree = jsonOf("tree", document);
    CHECK(tree["encoding"] == "UTF-8");
    CHECK(tree["data"]["OFX"]["MEMO"] == "Café");
    CHECK(contains(tool({"tree", "-"}, document).error,
                   "-: The document names the text encoding \"ISO-8859-1\", but its bytes are not in that "
                   "encoding; it is "
                   "read as UTF-8.\n"));
}

TEST_CASE("bytes that no encoding reads end in the library's error, without a note") {
    const Finished finished = tool({"json", "-"}, version1("<MEMO>\x81"));
    CHECK(finished.status == 1);
    CHECK(finished.error.starts_with("-: Data is not OFX or unknown character encoding.\n  "));
}

TEST_CASE("an encoding that is given is the only one that is tried") {
    struct Row {
        std::string name;
        std::string memo;
    };
    for (const Row& row : std::vector<Row>{{"windows-1252", "Café €"},
                                           {"Windows-1252", "Café €"},
                                           {"1252", "Café €"},
                                           {"CP1252", "Café €"},
                                           {"latin-1", "Café \u0080"},
                                           {"8859-1", "Café \u0080"},
                                           {"ISO-8859-1", "Café \u0080"},
                                           {"iso8859-1", "Café \u0080"},
                                           {"Latin1", "Café \u0080"}}) {
        CAPTURE(row.name);
        const Finished finished = tool({"tree", "--encoding", row.name, "-"}, version1(kAccent));
        CHECK(finished.status == 0);
        CHECK_FALSE(contains(finished.error, "read as"));
        CHECK(Json::parse(finished.output)["data"]["OFX"]["MEMO"] == row.memo);
    }
    for (const char* name : {"UTF-8", "utf8", "ASCII", "US-ASCII", "UsAscii"}) {
        CAPTURE(name);
        const Finished finished = tool({"json", "--encoding", name, "-"}, version1(kAccent));
        CHECK(finished.status == 1);
        CHECK(finished.error.starts_with("-: Data is not OFX or unknown character encoding.\n  "));
    }
}

TEST_CASE("auto is the encoding when none is given") {
    const Finished finished = tool({"tree", "--encoding", "AUTO", "-"}, version1(kAccent, "NONE"));
    CHECK(finished.status == 0);
    CHECK(contains(finished.error, "; it is read as windows-1252.\n"));
}

TEST_CASE("a document that is read again keeps its other errors") {
    const Finished finished = tool({"json", "--as-is", "-"}, version1(kAccent + "</B>", "NONE"));
    CHECK(finished.status == 1);
    CHECK(linesOf(finished.error).front().ends_with("; it is read as windows-1252."));
    CHECK(linesOf(finished.error).at(1).starts_with("-:11:18: Found close tag </B> without opening tag."));
}

TEST_CASE("a document that is read again keeps its header when its body does not parse") {
    const Finished finished = tool({"tree", "--as-is", "-"}, version1(kAccent + "</B>", "8859-1"));
    CHECK(finished.status == 1);
    CHECK(linesOf(finished.error).front().starts_with("-:11:18: Found close tag </B>"));
    const Json tree = Json::parse(finished.output);
    CHECK(tree["encoding"] == "ISO-8859-1");
    CHECK(tree["header"]["CHARSET"] == "8859-1");
    CHECK(tree["data"].is_null());
}

TEST_CASE("an encoding of wide characters is known by its names") {
    struct Row {
        std::vector<std::string> names;
        std::string encoding;
        std::size_t size;
        bool isBigEndian;
    };
    const bool hostIsBigEndian = std::endian::native == std::endian::big;
    for (const Row& row : std::vector<Row>{{{"UTF-16", "utf16"}, "UTF-16", 2, hostIsBigEndian},
                                           {{"UTF-16BE", "utf-16be"}, "UTF-16BE", 2, true},
                                           {{"UTF-16LE", "Utf-16Le"}, "UTF-16LE", 2, false},
                                           {{"UTF-32BE", "utf-32be"}, "UTF-32BE", 4, true}}) {
        std::string bytes;
        for (const char c : std::string("<OFX><A>x</A></OFX>")) {
            const std::string padding(row.size - 1, '\0');
            bytes += row.isBigEndian ? padding + c : c + padding;
        }
        for (const std::string& name : row.names) {
            CAPTURE(name);
            CHECK(outputOf({"tree", "--encoding", name}, bytes) ==
                  "{\"encoding\":\"" + row.encoding + R"(","header":null,"data":{"OFX":{"A":"x"}}})" + "\n");
        }
    }
}

TEST_CASE("the encoding of each kind of document has a name") {
    struct Row {
        std::string example;
        std::string encoding;
    };
    for (const Row& row : std::vector<Row>{
             {"card.ofx", "UTF-8"}, {"utf_16.ofx", "UTF-16LE"}, {"windows_1252.ofx", "windows-1252"}}) {
        CAPTURE(row.example);
        CHECK(Json::parse(tool({"tree", examplePath(row.example)}).output)["encoding"] == row.encoding);
    }
}
