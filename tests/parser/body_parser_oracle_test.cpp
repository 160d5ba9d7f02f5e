// SPDX-License-Identifier: Apache-2.0
#include <brackwell/reading.h>
#include <doctest/doctest.h>

#include "support/naive_body_parser.h"
#include "support/random_text.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

/// The parser is compared with the plain one of the test support over bodies made by chance, from soups
/// of tags to documents that are sound but for a few places.

namespace {

const std::vector<std::string> kNames{"A",
                                      "B",
                                      "STMTTRN",
                                      "STMTTRNRS",
                                      "CODE",
                                      "NAME",
                                      "MEMO",
                                      "INTU.A",
                                      "INTU.B",
                                      "INTU.CODE",
                                      "INTU.INTU.A",
                                      "INTU.",
                                      "INTU.STMTTRN",
                                      "a",
                                      "\u00C4",
                                      "TVOFX_ORIGINAL_STRING",
                                      "ABCDEFGHIJKLMNOP",
                                      "ABCDEFGHIJKLMNOPQ",
                                      "ABCDEFGHIJKLMNOPR",
                                      "INTU.ABCDEFGHIJKLMNOPQ",
                                      "INTU.ABCDEFGHIJK"};

const std::vector<std::string> kBlanks{"",   " ",  "\n",     "\r\n",   "\t",     "\n\n  ",
                                       "\v", "\f", "\u00A0", "\u3000", "\u2028", "\u0085"};

const std::vector<std::string> kTexts{
    "0",      "text",     "a b",
    "&amp;",  "x &lt; y", "&amp;gt;",
    "&",      "&quot;",   ">",
    "a>b",    "-12.50",   "\u20AC",
    "\u200B", "/",        "a long text that reaches over many blocks of the scanner, and on"};

/// What a document should not hold, but may.
const std::vector<std::string> kOddities{
    "<>", "</>", "< >",       "</ >",       "<",    ">",   "<<",    ">>",    "/",     "&",
    "<A", "</A", "</STMTTRN", "</STMTTRN>", "<A/>", "<?>", "</ A>", "< A >", "</A >", "<\u00A0A\u3000>"};

void compare(const std::string& body, std::size_t& accepted) {
    const NaiveResult wanted = parseNaively(body);
    Error error;
    const std::optional<ParseDictionary> tree = TvOFXParser::parseOFXDataString(body, &error);
    if (wanted.root) ++accepted;
    const std::string found = tree ? treeText(*tree) : error.description;
    const std::string expected = wanted.root ? treeText(*wanted.root) : wanted.failure;
    if (found == expected) return;  // so that thousands of checks are not counted one by one
    CAPTURE(body);
    REQUIRE(found == expected);
}

/// Random children of an aggregate: leaves with and without close tags and aggregates, now and then
/// with something odd.
class BodyMaker {
public:
    using Names = std::vector<std::string>;
    BodyMaker(unsigned seed, std::size_t oddity, const Names& aggregates, const Names& leaves)
        : random_(seed), oddity_(oddity), aggregates_(aggregates), leaves_(leaves) {}

    std::string make(std::size_t elements) {
        body_ = random_.oneOf(kBlanks);
        left_ = elements;
        while (left_ > 0) addElement(0);
        return body_;
    }

private:
    void addElement(int depth) {
        --left_;
        addOddity();
        const bool isAggregate = depth < 8 && random_.once(3);
        const std::string& name = random_.oneOf(isAggregate ? aggregates_ : leaves_);
        body_ += "<" + name + ">" + random_.oneOf(kBlanks);
        if (isAggregate) {
            for (std::size_t i = random_.below(5); i > 0 && left_ > 0; --i) addElement(depth + 1);
            addClose(name);
        } else {
            body_ += random_.oneOf(kTexts) + random_.oneOf(kBlanks);
            if (!random_.once(3)) addClose(name);
        }
        body_ += random_.oneOf(kBlanks);
    }
    void addOddity() {
        if (random_.once(oddity_)) body_ += random_.oneOf(kOddities);
    }
    void addClose(const std::string& name) {
        addOddity();
        const bool shortened = name.starts_with("INTU.") && random_.once(2);
        body_ += "</" + (shortened ? name.substr(5) : name) + ">";
    }

    RandomText random_;
    std::size_t oddity_;
    const Names& aggregates_;
    const Names& leaves_;
    std::size_t left_ = 0;
    std::string body_;
};

}  // namespace

TEST_CASE("the parser gives what the plain one gives for soups of a few tags") {
    std::vector<std::string> pieces = kOddities;
    for (const char* name : {"A", "B", "INTU.A", "STMTTRN", "CODE", "INTU.CODE"})
        for (const char* begin : {"<", "<", "</"}) pieces.push_back(begin + std::string(name) + ">");
    for (const char* text : {"x", "&amp;", " ", "\n", "\u00A0", "\u3000"}) pieces.emplace_back(text);
    RandomText random(1);
    std::size_t accepted = 0;
    constexpr std::size_t rounds = 30000;
    for (std::size_t i = 0; i < rounds; ++i) compare(random.soup(pieces, 1 + random.below(12)), accepted);
    CHECK(accepted > rounds / 10);
    CHECK(accepted < rounds);
}

TEST_CASE("the parser gives what the plain one gives for short bodies of every make") {
    // All texts of up to six of these pieces.
    const std::vector<std::string> pieces{"<", ">", "/", "A", "<A>", "</A>", " "};
    std::size_t accepted = 0;
    for (std::size_t length = 0; length <= 6; ++length) {
        std::vector<std::size_t> digits(length, 0);
        for (bool more = true; more;) {
            std::string body;
            for (const std::size_t digit : digits) body += pieces[digit];
            compare(body, accepted);
            more = false;
            for (std::size_t& digit : digits) {
                digit = (digit + 1) % pieces.size();
                more = digit != 0;
                if (more) break;
            }
        }
    }
    CHECK(accepted > 1000);
}

TEST_CASE("the parser gives what the plain one gives for documents with a few odd places") {
    std::size_t accepted = 0;
    constexpr unsigned rounds = 8000;
    for (unsigned seed = 0; seed < rounds; ++seed)
        compare(BodyMaker(seed, 5 + seed % 100, kNames, kNames).make(1 + seed % 40), accepted);
    CHECK(accepted > rounds / 10);
    CHECK(accepted < rounds);
}

TEST_CASE("the parser gives what the plain one gives for documents of many blocks") {
    // A leaf that is called like its aggregate would close it, and such a document fails early.
    const std::vector<std::string> aggregates{"STMTTRN", "STATUS", "INTU.PAYEE", "AN.AGGREGATE.OF.ITS.OWN"};
    const std::vector<std::string> leaves{"A", "CODE", "NAME", "INTU.BID", "A.LEAF.OF.ITS.OWN"};
    std::size_t accepted = 0;
    constexpr unsigned rounds = 200;
    for (unsigned seed = 0; seed < rounds; ++seed)
        compare(BodyMaker(seed, 100 + seed * 100, aggregates, leaves).make(600), accepted);
    CHECK(accepted > rounds / 4);
    CHECK(accepted < rounds);
}

TEST_CASE("the parser gives what the plain one gives for closed leaves with any two changed bytes") {
    const std::string whole =
        "<CODE>0</CODE><SEVERITY>INFO</SEVERITY><INTU.CODE>\n<CODE>1</CODE><NAME>x</NAME><MEMO>y</MEMO>";
    const std::string_view bytes = "<>/ A&\n";
    RandomText random(2);
    std::size_t accepted = 0;
    for (std::size_t i = 0; i < 10000; ++i) {
        std::string body = whole;
        for (std::size_t changes = 1 + random.below(2); changes > 0; --changes)
            body[random.below(body.size())] = random.oneOf(bytes);
        compare(body, accepted);
    }
    CHECK(accepted > 100);
}
