// SPDX-License-Identifier: Apache-2.0
#include <brackwell/convert.h>
#include <doctest/doctest.h>

#include "fields/archived_tree.h"
#include "support/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

/// Trees of a million levels: whatever is done with one must not recurse, or the stack runs out.

namespace {

constexpr std::size_t kLevels = 1000000;

std::string deepBody(std::string_view innermost = "1") {
    std::string body;
    body.reserve(kLevels * 3 + 10);
    for (std::size_t level = 0; level < kLevels; ++level) body += level % 2 == 0 ? "<A>" : "<b>";
    return body.append("<CODE>").append(innermost).append(" </CODE>");
}

ParseDictionary builtDeep() {
    ParseDictionaryBuilder builder;
    for (std::size_t level = 0; level < kLevels; ++level) builder.open(level % 2 == 0 ? "A" : "b");
    builder.leaf("CODE", "1");
    return builder.finish();
}

std::size_t depthOf(ParseDictionary tree) {
    std::size_t depth = 0;
    while (const std::optional<ParseDictionary> inner = (*tree.begin()).second.dictionary()) {
        tree = *inner;
        ++depth;
    }
    return depth;
}

}  // namespace

TEST_CASE("a million nested aggregates are parsed, walked and released") {
    const ParseDictionary tree = parsed(deepBody());
    CHECK(depthOf(tree) == kLevels);
}

TEST_CASE("a million nested aggregates may be closed again") {
    std::string body = deepBody();
    for (std::size_t level = kLevels; level-- > 0;) body += level % 2 == 0 ? "</A>" : "</b>";
    body += "<LAST>x";
    const ParseDictionary tree = parsed(body);
    CHECK(tree.size() == 2);
    CHECK(tree["LAST"].text() == "x");
    CHECK(depthOf(tree) == kLevels);
}

TEST_CASE("a million nested transactions each have their source text") {
    std::string body;
    for (std::size_t level = 0; level < kLevels; ++level) body += "<STMTTRN>";
    body += "<A>1</STMTTRN><B>2";
    ParseDictionary tree = parsed(body);
    const std::string_view text = tree["STMTTRN"]["TVOFX_ORIGINAL_STRING"].text().value();
    CHECK(text.size() == (kLevels - 1) * 9 + 4);
    CHECK(text.ends_with("<STMTTRN><A>1"));
}

TEST_CASE("deep trees are built, compared and copied") {
    const ParseDictionary tree = parsed(deepBody());
    const ParseDictionary built = builtDeep();
    CHECK((tree == built));
    CHECK_FALSE((tree == parsed(deepBody("2"))));
    const ParseDictionary copied{{"IN", tree}, {"X", "1"}};
    CHECK((copied["IN"] == ParseValue(built)));
}

TEST_CASE("a deep tree is written as text, which reads as the same tree") {
    const ParseDictionary tree = builtDeep();
    const std::string text = TvOFXHelper::ofxDictionaryToString(tree);
    CHECK(text.starts_with("<A>\n<b>\n<A>\n"));
    CHECK(text.ends_with("</A>\n</b>\n</A>\n"));
    CHECK((parsed(text) == tree));
}

TEST_CASE("a deep tree is archived and read back") {
    const ParseDictionary tree = builtDeep();
    KeyedArchiver coder;
    encodeTree(coder, "tree", tree);
    const std::optional<KeyedUnarchiver> archive = KeyedUnarchiver::open(coder.archivedData());
    REQUIRE(archive);
    const std::optional<ParseDictionary> back = decodeTree(*archive, "tree");
    REQUIRE(back);
    CHECK((*back == tree));
}

TEST_CASE("an unmatched close tag after a million open aggregates is one error") {
    Error error;
    CHECK_FALSE(TvOFXParser::parseOFXDataString(deepBody() + "</X>", &error));
    CHECK(error.description ==
          "Found close tag </X> without opening tag.\nMaybe there is a close tag missing for <b>");
}
