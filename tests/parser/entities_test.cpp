// SPDX-License-Identifier: Apache-2.0
#include "parser/entities.h"

#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/random_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::string replaced(std::string text, std::string_view wanted, std::string_view by) {
    for (std::size_t at = 0; (at = text.find(wanted, at)) != std::string::npos; at += by.size())
        text.replace(at, wanted.size(), by);
    return text;
}

}  // namespace

TEST_CASE("three entities are replaced, each wherever it stands") {
    struct Row {
        std::string_view text;
        std::string_view plain;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"", ""},
             {"plain", "plain"},
             {"&lt;", "<"},
             {"&gt;", ">"},
             {"&amp;", "&"},
             {"A &amp; B", "A & B"},
             {"&lt;&lt;&gt;&gt;&amp;&amp;", "<<>>&&"},
             {"a&lt;b&gt;c&amp;d", "a<b>c&d"},
             {"&amp;amp;", "&amp;"},
             {"&amp;lt;", "&lt;"},
             {"&&lt;gt;", "&<gt;"},
             {"&am&gt;p;", "&am>p;"},
         }) {
        CAPTURE(std::string(row.text));
        CHECK(TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(row.text) == std::string(row.plain));
    }
}

TEST_CASE("no other entity is known") {
    for (const std::string text : {"&quot;", "&apos;", "&nbsp;", "&#38;", "&#x26;", "&LT;", "&lt", "&", "&;",
                                   "& lt;", "&l", "&am", "&euro;", "&&&", "lt;gt;amp;"}) {
        CAPTURE(text);
        CHECK(TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(text) == text);
    }
}

TEST_CASE("nothing unescapes to nothing") {
    CHECK_FALSE(TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(std::nullopt));
    CHECK(TvOFXParser::unescapeCharactersInOFXSGMLFormattedString("") == std::string());
}

TEST_CASE("replacing in one pass gives what replacing one entity after the other gives") {
    const std::vector<std::string> pieces{"&", "a", "m",    "p",    ";",     "l",
                                          "t", "g", "&lt;", "&gt;", "&amp;", "x"};
    RandomText random(3);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = random.soup(pieces, random.below(12));
        CAPTURE(text);
        const std::string wanted = replaced(replaced(replaced(text, "&lt;", "<"), "&gt;", ">"), "&amp;", "&");
        REQUIRE(TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(text) == wanted);
    }
}

TEST_CASE("unescaping writes no more bytes than the text has") {
    const std::string text = "&amp;&lt;x&gt;";
    std::string out(text.size() + 1, '#');
    CHECK(reading::unescape(text, out.data()) == 4);
    CHECK(out.substr(0, 4) == "&<x>");
    CHECK(out.substr(4) == std::string(text.size() - 3, '#'));
}
