// SPDX-License-Identifier: Apache-2.0
#include "fields/archived_tree.h"

#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/random_text.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;
using Item = ArchiveListItem;

namespace {

KeyedUnarchiver opened(const KeyedArchiver& coder) {
    std::optional<KeyedUnarchiver> archive = KeyedUnarchiver::open(coder.archivedData());
    REQUIRE(archive);
    return *archive;
}

std::optional<ParseDictionary> throughArchive(const ParseDictionary& tree) {
    KeyedArchiver coder;
    encodeTree(coder, "tree", tree);
    return decodeTree(opened(coder), "tree");
}

constexpr Item kEnd{Item::Kind::endList, {}, 0};

Item text(std::string_view text) { return {Item::Kind::text, text, 0}; }

Item list(std::size_t count) { return {Item::Kind::beginList, {}, count}; }

}  // namespace

TEST_CASE("a tree comes back from an archive in its order") {
    for (const std::string_view body :
         {"", "<A>1", "<A></A>", "<A>1<A>2<A>3", "<B>1<A>2<B>3<A><B>4</A>", "<A><B><C>1</C></B></A><D>2",
          "<OFX><STMTTRN><NAME>x &amp; y</STMTTRN><STMTTRN></STMTTRN></OFX>", "<\u00C4>\u20AC<own name>1",
          "<A>1<A></A><A><A>2</A>"}) {
        CAPTURE(std::string(body));
        const ParseDictionary tree = parsed(body);
        const std::optional<ParseDictionary> back = throughArchive(tree);
        REQUIRE(back);
        CHECK(treeText(*back) == treeText(tree));
    }
}

TEST_CASE("a dictionary made in code or taken out of a tree comes back from an archive") {
    const ParseDictionary tree = parsed("<X>0<A><B>1<C></C></A><A><B>2</A><Y>3");
    for (const ParseDictionary& dictionary :
         {ParseDictionary(), ParseDictionary{{"", ""}}, ParseDictionary{{"E", ""}},
          *tree["A"].elements()[0].dictionary(), *tree["A"].elements()[1].dictionary()}) {
        const std::optional<ParseDictionary> back = throughArchive(dictionary);
        REQUIRE(back);
        CHECK(treeText(*back) == treeText(dictionary));
    }
}

TEST_CASE("random trees come back from an archive") {
    const std::vector<std::string> pieces{"<A>",  "<B>", "<C>", "</A>", "</B>",
                                          "</C>", "x",   "y",   " ",    "<CODE>1"};
    RandomText random(12);
    std::size_t trees = 0;
    for (int i = 0; i < 5000; ++i) {
        const std::optional<ParseDictionary> tree =
            TvOFXParser::parseOFXDataString(random.soup(pieces, random.below(16)));
        if (!tree) continue;
        ++trees;
        const std::optional<ParseDictionary> back = throughArchive(*tree);
        REQUIRE(back);
        REQUIRE(treeText(*back) == treeText(*tree));
    }
    CHECK(trees > 500);
}

TEST_CASE("a tree is archived as names, each followed by its text or its entries") {
    KeyedArchiver coder;
    encodeTree(coder, "tree", parsed("<A>1<B><C>2<D></D></B><A>3"));
    const KeyedUnarchiver archive = opened(coder);
    const auto items = archive.decodeList("tree");
    REQUIRE(items);
    CHECK((*items == std::vector{text("A"), text("1"), text("B"), list(4), text("C"), text("2"), text("D"),
                                 list(0), kEnd, kEnd, text("A"), text("3")}));
}

TEST_CASE("a missing key or another value under it is no tree") {
    KeyedArchiver coder;
    coder.encodeText("text", "x");
    coder.encodeUnsigned("number", 1);
    coder.encodeObject("object", KeyedArchiver());
    const KeyedUnarchiver archive = opened(coder);
    for (const char* key : {"text", "number", "object", "missing", ""}) CHECK_FALSE(decodeTree(archive, key));
}

TEST_CASE("a list that is no tree is not read as one") {
    const std::vector<std::vector<Item>> lists{
        {text("A")},
        {text("A"), text("1"), text("B")},
        {list(0), kEnd},
        {text("A"), text("1"), list(0), kEnd},
        {text("A"), list(1), text("B"), kEnd},
        {text("A"), list(3), text("B"), text("1"), text("C"), kEnd},
        {text("A"), list(2), list(0), kEnd, text("x"), kEnd},
        {text("A"), list(2), text("B"), list(1), text("C"), kEnd, kEnd},
    };
    for (std::size_t i = 0; i < lists.size(); ++i) {
        CAPTURE(i);
        KeyedArchiver coder;
        coder.encodeList("tree", lists[i]);
        const KeyedUnarchiver archive = opened(coder);
        REQUIRE(archive.decodeList("tree"));
        CHECK_FALSE(decodeTree(archive, "tree"));
    }
}

TEST_CASE("an empty list is the empty tree") {
    KeyedArchiver coder;
    coder.encodeList("tree", {});
    const std::optional<ParseDictionary> tree = decodeTree(opened(coder), "tree");
    REQUIRE(tree);
    CHECK(tree->isEmpty());
}

TEST_CASE("a tree outlives the archive that it was read from") {
    std::optional<ParseDictionary> tree;
    {
        KeyedArchiver coder;
        encodeTree(coder, "tree", parsed("<NAME OF ITS OWN>a text of some length, to be sure"));
        tree = decodeTree(opened(coder), "tree");
    }
    REQUIRE(tree);
    CHECK((*tree)["NAME OF ITS OWN"].text() == "a text of some length, to be sure");
}
