// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include <algorithm>
#include <ranges>
#include <thread>

#include "support/documents.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

static_assert(std::is_nothrow_default_constructible_v<ParseDictionary>);
static_assert(std::is_nothrow_move_constructible_v<ParseDictionary>);
static_assert(std::is_copy_assignable_v<ParseDictionary>);
static_assert(std::input_iterator<ParseDictionary::Iterator>);
static_assert(std::sentinel_for<ParseDictionary::Iterator, ParseDictionary::Iterator>);
static_assert(std::ranges::input_range<ParseDictionary::DocumentOrder>);

namespace {

ParseDictionary makeStatus() { return {{"CODE", "0"}, {"SEVERITY", "INFO"}}; }

/// The elements in document order: BUY={"A": "1"} SELL="2".
std::string inOrder(const ParseDictionary& tree) {
    std::string walked;
    for (const auto& [name, value] : tree.inDocumentOrder())
        walked.append(walked.empty() ? "" : " ").append(name).append("=").append(treeText(value));
    return walked;
}

}  // namespace

TEST_CASE("a dictionary is written as one expression") {
    const ParseDictionary status{{"CODE", "0"}, {"SEVERITY", "INFO"}};
    const ParseDictionary node{{"STATUS", status}, {"NAME", ParseValue::array({"A", "B"})}};
    CHECK(treeText(node) == R"({"STATUS": {"CODE": "0", "SEVERITY": "INFO"}, "NAME": ["A", "B"]})");
    CHECK(treeText(ParseDictionary{{"A", ParseDictionary{{"B", ParseDictionary{{"C", "1"}}}}}}) ==
          R"({"A": {"B": {"C": "1"}}})");
}

TEST_CASE("a dictionary written in code equals the one that is read from a document") {
    const ParseDictionary read = parsed("<OFX><S><CODE>0<TEXT>a &amp; b</S><N>1<N>2<E></E></OFX>");
    const ParseDictionary written{
        {"OFX", ParseDictionary{{"S", ParseDictionary{{"CODE", "0"}, {"TEXT", "a & b"}}},
                                {"N", ParseValue::array({"1", "2"})},
                                {"E", ParseDictionary()}}}};
    CHECK(read == written);
    CHECK(written == read);
    CHECK(treeText(read) == treeText(written));
}

TEST_CASE("a name given twice becomes an array, and an entry of nothing is left out") {
    CHECK(treeText(ParseDictionary{{"A", "1"}, {"B", "x"}, {"A", "2"}, {"A", "3"}}) ==
          R"({"A": ["1", "2", "3"], "B": "x"})");
    CHECK(treeText(ParseDictionary{{"A", ParseValue::array({"1", "2"})}, {"A", "3"}}) ==
          R"({"A": ["1", "2", "3"]})");
    CHECK(treeText(ParseDictionary{{"A", ParseValue()}, {"B", "1"}}) == R"({"B": "1"})");
    CHECK(ParseDictionary{{"A", ParseValue()}}.isEmpty());
}

TEST_CASE("the entries are copied, so the texts that they came from may go") {
    ParseDictionary dictionary;
    {
        const std::string name = "a name of thirty bytes and more";
        const std::string text = "a text of thirty bytes and more";
        dictionary = ParseDictionary{{name, text}, {"OFX", ParseDictionary{{name, text}}}};
    }
    CHECK(dictionary["a name of thirty bytes and more"].text() == "a text of thirty bytes and more");
    CHECK(dictionary["OFX"]["a name of thirty bytes and more"].text() == "a text of thirty bytes and more");
}

TEST_CASE("size counts names, not values") {
    CHECK(ParseDictionary().size() == 0);
    CHECK(ParseDictionary().isEmpty());
    CHECK(ParseDictionary{{"A", "1"}, {"B", "2"}}.size() == 2);
    CHECK(parsed("<A>1<A>2<B><C>3<D>4</B>").size() == 2);
    CHECK_FALSE(parsed("<A>1").isEmpty());
}

TEST_CASE("names are compared exactly") {
    const ParseDictionary tree{{"NAME", "a"}, {"name", "b"}, {"", "c"}, {"NAME ", "d"}, {"\u00C4", "e"}};
    CHECK(tree["NAME"].text() == "a");
    CHECK(tree["name"].text() == "b");
    CHECK(tree[""].text() == "c");
    CHECK(tree["NAME "].text() == "d");
    CHECK(tree["\u00C4"].text() == "e");
    CHECK(tree["Name"].isNothing());
    CHECK(tree["NAM"].isNothing());
    CHECK(ParseDictionary()[""].isNothing());
}

TEST_CASE("a look-up does not see into the aggregates of the dictionary") {
    const ParseDictionary tree = parsed("<A><B>1</B></A><C>2");
    CHECK(tree["B"].isNothing());
    CHECK(tree["C"].text() == "2");
    CHECK(tree["A"]["C"].isNothing());
}

TEST_CASE("walking gives each name once, with all its values, in the order of first appearance") {
    const ParseDictionary tree = parsed("<B>1<A>2<B>3<C><B>4</B><A>5</C><A>6<B>7<D>8");
    std::string walked;
    for (const auto& [name, value] : tree)
        walked.append(name).append("=").append(treeText(value)).append(" ");
    CHECK(walked == R"(B=["1", "3", "7"] A=["2", "6"] C={"B": "4", "A": "5"} D="8" )");
    CHECK(static_cast<std::size_t>(std::distance(tree.begin(), tree.end())) == tree.size());
}

TEST_CASE("walking in document order gives each element by itself, where it stands") {
    struct Row {
        std::string_view body, elements;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"<BUY>1<SELL>2<BUY>3", R"(BUY="1" SELL="2" BUY="3")"},
             {"<A><B>1<B>2</A><C>3<A><B>4</A><A></A>", R"(A={"B": ["1", "2"]} C="3" A={"B": "4"} A={})"},
             {"<A>1<A><A>2</A><A>3", R"(A="1" A={"A": "2"} A="3")"},
             {"<X1>1<X2>2<X1>a &amp; b", R"(X1="1" X2="2" X1="a & b")"},
             {"<STMTTRN><NAME>x</STMTTRN>", R"(STMTTRN={"TVOFX_ORIGINAL_STRING": "<NAME>x", "NAME": "x"})"},
             {"<A>1", R"(A="1")"},
             {"<A></A>", "A={}"},
             {"", ""},
         }) {
        CAPTURE(row.body);
        CHECK(inOrder(parsed(row.body)) == row.elements);
    }
}

TEST_CASE("document order ends with its aggregate") {
    const ParseDictionary tree = parsed("<A><B>1<C>2<B>3</A><B>4");
    CHECK(inOrder(*tree["A"].dictionary()) == R"(B="1" C="2" B="3")");
}

TEST_CASE("the document order of a tree built in code is that in which it was added") {
    ParseDictionaryBuilder builder;
    builder.leaf("BUY", "1");
    builder.open("SELL");
    builder.leaf("UNITS", "2");
    builder.close();
    builder.leaf("BUY", "3");
    builder.value("SELL", ParseValue::array({"4", "5"}));
    builder.leaf("BUY", "6");
    const std::string wanted = R"(BUY="1" SELL={"UNITS": "2"} BUY="3" SELL="4" SELL="5" BUY="6")";
    const ParseDictionary built = builder.finish();
    CHECK(inOrder(built) == wanted);
    CHECK(inOrder(*ParseDictionary{{"IN", built}}["IN"].dictionary()) == wanted);
    CHECK(inOrder({{"A", "1"}, {"B", "2"}, {"A", "3"}}) == R"(A="1" B="2" A="3")");
    CHECK(inOrder({}) == "");
    CHECK(inOrder(*ParseValue(ParseDictionary()).dictionary()) == "");
}

TEST_CASE("a dictionary may be walked in document order that nothing else holds") {
    std::string walked;
    for (auto [name, value] : makeStatus().inDocumentOrder()) walked.append(name).append(*value.text());
    CHECK(walked == "CODE0SEVERITYINFO");
    auto second = ++makeStatus().inDocumentOrder().begin();
    CHECK((*second).first == "SEVERITY");
    const auto before = second++;
    CHECK((*before).second.text() == "INFO");
    CHECK(second == makeStatus().inDocumentOrder().end());
}

TEST_CASE("walking an empty dictionary gives nothing") {
    for (const ParseDictionary& empty :
         {ParseDictionary(), parsed(""), ParseDictionary{}, *parsed("<E></E>")["E"].dictionary()}) {
        CHECK(empty.begin() == empty.end());
        for (const auto& entry : empty) FAIL(entry.first);
    }
}

TEST_CASE("a dictionary may be walked that nothing else holds") {
    std::string walked;
    for (auto [name, value] : makeStatus()) walked.append(name).append(value.text().value());
    CHECK(walked == "CODE0SEVERITYINFO");
    auto second = ++makeStatus().begin();
    CHECK((*second).first == "SEVERITY");
    CHECK((*second).second.text() == "INFO");
    const auto before = second++;
    CHECK((*before).first == "SEVERITY");
    CHECK(second == makeStatus().end());
}

TEST_CASE("the entries of a dictionary make a container") {
    const ParseDictionary status = makeStatus();
    const std::vector<ParseDictionary::Entry> entries(status.begin(), status.end());
    REQUIRE(entries.size() == 2);
    CHECK(entries[1].first == "SEVERITY");
    const auto found = std::find_if(status.begin(), status.end(),
                                    [](const auto& entry) { return entry.second.text() == "INFO"; });
    REQUIRE(found != status.end());
    CHECK((*found).first == "SEVERITY");
}

TEST_CASE("a copy shares the document and outlives what it was copied from") {
    ParseDictionary copy;
    std::string_view text;
    {
        const ParseDictionary tree = parsed("<A>1<B>two</B>");
        copy = tree;
        CHECK(copy["B"].text()->data() == tree["B"].text()->data());
        text = *tree["B"].text();
    }
    CHECK(text == "two");
    CHECK(copy["B"].text()->data() == text.data());
}

TEST_CASE("a tree is used after the parser and the bytes that it came from are gone") {
    std::optional<ParseDictionary> tree;
    {
        std::string bytes = "<OFX><NAME>plain</NAME><MEMO>a &amp; b</MEMO><OWN NAME>x</OFX>";
        TvOFXParser parser(Data::view(bytes));
        Error error;
        tree = parser.parseWithError(&error)->ofxData;
        bytes.assign(bytes.size(), '#');
    }
    REQUIRE(tree);
    CHECK(treeText(*tree) == R"({"OFX": {"NAME": "plain", "MEMO": "a & b", "OWN NAME": "x"}})");
}

TEST_CASE("a part of a tree put into another is a copy that needs the first no more") {
    ParseDictionary outer;
    {
        const ParseDictionary tree = parsed("<A><B>1<UNKNOWN>x &lt; y<B>2<C></C></A>");
        outer = ParseDictionary{{"IN", tree["A"]}, {"B", tree["A"]["B"]}};
    }
    CHECK(treeText(outer) == R"({"IN": {"B": ["1", "2"], "UNKNOWN": "x < y", "C": {}}, "B": ["1", "2"]})");
}

TEST_CASE("many threads may read one tree") {
    const ParseDictionary tree = parsed("<OFX><A>1<B>2<C><D>3</C></OFX>");
    const std::string wanted = treeText(tree);
    std::array<std::string, 4> texts;
    std::vector<std::thread> threads;
    for (std::string& text : texts)
        threads.emplace_back([&text, &tree] {
            for (int i = 0; i < 200; ++i) text = treeText(ParseDictionary(tree));
        });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& text : texts) CHECK(text == wanted);
}
