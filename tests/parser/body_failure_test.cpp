// SPDX-License-Identifier: Apache-2.0
#include <doctest/doctest.h>

#include "parser/body_parser.h"
#include "parser/document_reader.h"
#include "support/random_text.h"

using namespace brackwell;
using namespace brackwell::tests;
using reading::BodyFailure;
using reading::TagPlace;

namespace {

std::optional<BodyFailure> failureOf(const std::string& body) {
    BodyFailure failure;
    if (reading::parseBody(Data::view(body), body, &failure)) return std::nullopt;
    return failure;
}

std::string textAt(const std::string& body, const TagPlace& place) {
    REQUIRE(place.begin < place.end);
    REQUIRE(place.end <= body.size());
    return body.substr(place.begin, place.end - place.begin);
}

/// What stands in a tag, which may be the last of a body and have no ">".
std::string insideOf(std::string tag) {
    REQUIRE(tag.starts_with('<'));
    if (tag.ends_with('>')) tag.pop_back();
    return std::string(trimWhiteSpace(std::string_view(tag).substr(1)));
}

}  // namespace

TEST_CASE("a failure tells where the close tag and the innermost open aggregate stand") {
    struct Row {
        std::string before, open, between, close, after;
    };
    for (const Row& row : std::vector<Row>{
             {"<A>1</A>", "<B>", "<C>1</C>", "</D>", "<E>1</E></B>"},
             {"<A><B>1</B>", "<A>", "<B><C>1</C></B><C>2</C>", "</B>", "</A></A>"},
             {"<A><B><C>1</C></B>", "<B>", "<C>1", "</A>", ""},
             {"<A>\n", "< B >", "\n<C>1", "< /D >", "</B>"},
             {"<A>\n",
              "<\u00A0"
              "B x=\"1\">",
              "\n<C>1", "</B>", "</A>"},
             {"<A>", "<<B>", "<C>1</C>", "</B>", "</A>"},
             {"<STMTTRN><MEMO>x</MEMO>", "<NAME>", "\n<FITID>1</FITID>\n", "</STMTTRN>", "\n"},
             {"", "<STMTTRN>", "<MEMO>x</MEMO><FITID>1</FITID>\n", "</STMTTRNRS>", "<MEMO>x</MEMO>"},
             {"<A>", "<B>", "\n<>\n<C>1</C>", "</A>", ""},
             {"<A>", "<INTU.B>", "<C>1</C>", "</BB>", "</A>"},
             {"<A>", "<B>", "<C>1</C>", "</D", ""},
             {"<A>", "<A.NAME.OF.MORE.THAN.SIXTEEN.BYTES>", "<C>1</C>", "</A.NAME>", ""},
         }) {
        const std::string body = row.before + row.open + row.between + row.close + row.after;
        CAPTURE(body);
        const std::optional<BodyFailure> failure = failureOf(body);
        REQUIRE(failure);
        CHECK(textAt(body, failure->close) == row.close);
        CHECK(failure->close.begin == body.size() - row.after.size() - row.close.size());
        REQUIRE(failure->open);
        CHECK(textAt(body, *failure->open) == row.open);
        CHECK(failure->open->begin == row.before.size());
    }
}

TEST_CASE("a failure has no open aggregate where none is open") {
    struct Row {
        std::string before, close, after;
    };
    for (const Row& row : std::vector<Row>{
             {"", "</A>", ""},
             {"<A>1", "</B>", "<C>"},
             {"<A><B>1</B></A>\n", "</A>", "\n"},
             {"<A>1", "</", ""},
             {"<A>1", "</\u3000>", "<B>"},
         }) {
        const std::string body = row.before + row.close + row.after;
        CAPTURE(body);
        const std::optional<BodyFailure> failure = failureOf(body);
        REQUIRE(failure);
        CHECK(textAt(body, failure->close) == row.close);
        CHECK(failure->close.begin == row.before.size());
        CHECK_FALSE(failure->open);
    }
}

TEST_CASE("the places of a failure hold the tags that its sentence names") {
    const std::vector<std::string> pieces{
        "<A>",     "<A>", "</A>", "<B>",  "</B>", "<INTU.A>", "</INTU.A>", "<STMTTRN>", "</STMTTRN>",
        "<CODE>1", "x",   "\n",   "< A>", "</ >", "<>",       "<<A>",      "<",         ">"};
    RandomText random(1);
    std::size_t failures = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string body = random.soup(pieces, 1 + random.below(20));
        CAPTURE(body);
        const std::optional<BodyFailure> failure = failureOf(body);
        if (!failure) continue;
        ++failures;
        std::string sentence =
            "Found close tag <" + insideOf(textAt(body, failure->close)) + "> without opening tag.";
        if (failure->open)
            sentence +=
                "\nMaybe there is a close tag missing for <" + insideOf(textAt(body, *failure->open)) + ">";
        CHECK(failure->text == sentence);
        CHECK_FALSE(failureOf(body.substr(0, failure->close.begin)));
        if (failure->open) CHECK(failure->open->end <= failure->close.begin);
    }
    CHECK(failures > 1000);
}

TEST_CASE("the places of a document's failure count from the beginning of its text") {
    for (const std::string header :
         {"", "\n\n  ", "OFXHEADER:100\nDATA:OFXSGML\n\n", "<?OFX VERSION=\"211\"?>\n",
          " <?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?OFX OFXHEADER=\"200\" VERSION=\"211\"?>\n"}) {
        const std::string text = header + "<OFX><A><B>1</B></C></OFX>";
        CAPTURE(text);
        TvOFXParserResult result;
        BodyFailure failure;
        REQUIRE(reading::readDocument(Data::view(text), result, failure) ==
                reading::DocumentReading::malformed);
        CHECK(failure.close.begin == text.find("</C>"));
        CHECK(textAt(text, failure.close) == "</C>");
        REQUIRE(failure.open);
        CHECK(failure.open->begin == text.find("<A>"));
        CHECK(textAt(text, *failure.open) == "<A>");
        CHECK_FALSE(result.ofxData);
        CHECK(result.ofxHeader.has_value() == (trimWhiteSpace(header) != ""));
    }
}
