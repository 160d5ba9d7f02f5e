// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <map>

#include "elements/structure.h"
#include "support/documents.h"
#include "support/effort.h"
#include "support/invalid_elements.h"
#include "support/random_text.h"
#include "support/tree_text.h"

/// What holds of a repair whatever goes in, over texts made by chance and over documents with chance
/// damage: the result reads, no value is lost, the changes tell the whole of it, what still stands where the
/// standard has no place for it is told, and a second repair changes nothing.

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// How often each leaf, its name and value, is there; and once more without its name.
using Leaves = std::map<std::pair<std::string, std::string>, int>;

struct Reading {
    std::optional<ParseDictionary> tree;
    std::string error;
};

Reading read(std::string_view text) {
    Error error;
    TvOFXParser parser(Data::view(text));
    parser.setStringEncoding(TextEncodingUTF8);
    const auto result = parser.parseWithError(&error);
    return {result ? result->ofxData : std::nullopt, error.description};
}

void addLeaves(Leaves& leaves, const std::string& name, const ParseValue& value) {
    if (const auto text = value.text()) {
        ++leaves[{name, std::string(*text)}];
        ++leaves[{"", std::string(*text)}];
    }
    for (const ParseValue& element : value.elements()) addLeaves(leaves, name, element);
    if (const auto dictionary = value.dictionary())
        for (const auto& [childName, child] : *dictionary) addLeaves(leaves, std::string(childName), child);
}

/// The text without comments; a CDATA section, and a comment that parts a tag, becomes what
/// begins no tag.
std::string withoutSections(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const bool isComment = text.starts_with("<!--");
        const bool isData = text.starts_with("<![CDATA[");
        const std::size_t end = isComment ? text.find("-->", 4) : isData ? text.find("]]>", 9) : text.npos;
        if (end == text.npos) {
            plain += text.front();
            text.remove_prefix(1);
        } else {
            const std::size_t bracket = plain.find_last_of("<>");
            if (isData || (bracket != plain.npos && plain[bracket] == '<')) plain += "<[";
            text.remove_prefix(end + 3);
        }
    }
    return plain;
}

std::string inCapitals(std::string_view name) {
    std::string capitals(name);
    for (char& c : capitals)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return capitals;
}

/// The name in a tag without any flaw that stands here, with its slash; "" when there is none.
std::string_view soundTag(std::string_view text, std::string_view letters) {
    const std::size_t begin = text.starts_with("</") ? 2 : 1;
    const std::size_t end = text.find_first_not_of(letters, begin);
    if (!text.starts_with('<') || end == text.npos || end == begin || text[end] != '>') return {};
    return text.substr(1, end - 1);
}

/// The leaves that stand between an open tag and another tag, both without flaw. Without their names when
/// that is the close tag of another: then it may be that the value's own open tag is missing.
Leaves soundLeaves(std::string_view document) {
    Leaves leaves;
    ParseDictionary header;
    if (document.starts_with("\xEF\xBB\xBF")) document.remove_prefix(3);
    document = trimWhiteSpace(document);
    if (document.starts_with("<?"))
        document = document.substr(TvOFXParser::parseXmlHeader(document, &header));
    const std::string plain = withoutSections(document);
    const std::string_view text = plain;
    std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ.";
    std::size_t begin = text.find("<OFX");
    if (begin == text.npos) {
        letters = "abcdefghijklmnopqrstuvwxyz.";
        begin = text.find("<ofx>");
    }
    for (std::size_t open = begin; open < text.size(); open = text.find('<', open + 1)) {
        const std::string_view name = soundTag(text.substr(open), letters);
        const std::size_t valueBegin = open + name.size() + 2;
        const std::size_t end = std::min(text.find('<', valueBegin), text.size());
        const std::string_view next = soundTag(text.substr(end), letters);
        if (name.empty() || name.front() == '/' || next.empty()) continue;
        // Without a ">" since the "<" before, the tag may be the second half of one.
        const std::size_t bracket = open == 0 ? text.npos : text.find_last_of("<>", open - 1);
        if (bracket != text.npos && text[bracket] == '<') continue;
        // After a text and a blank it may be a word of that text.
        const std::size_t before = open == 0 ? text.npos : text.find_last_not_of(' ', open - 1);
        if (before != text.npos && before + 1 < open && text[before] != '>' && text[before] != '\n') continue;
        const std::string_view trimmed = trimWhiteSpace(text.substr(valueBegin, end - valueBegin));
        // A ">" may be that of a tag without "<", and of a word in brackets the value goes on after it.
        if (trimmed.empty() || trimmed.find('>') != trimmed.npos || text[end - 1] == ' ') continue;
        const std::string value = *TvOFXParser::unescapeCharactersInOFXSGMLFormattedString(trimmed);
        ++leaves[{"", value}];
        // An aggregate with a value may have changed places with the tag before it.
        const bool isLeaf = !elements::isAggregate(elements::findElement(inCapitals(name)));
        if (isLeaf && (next.front() != '/' || next.substr(1) == name)) ++leaves[{inCapitals(name), value}];
    }
    return leaves;
}

/// The first leaf that is not there as often; "" when none is missing.
std::string missing(const Leaves& wanted, const Leaves& found) {
    for (const auto& [leaf, count] : wanted) {
        const auto place = found.find(leaf);
        if (place == found.end() || place->second < count) return leaf.first + ": " + leaf.second;
    }
    return {};
}

std::string replayed(const std::string& text, const RepairedText& repaired) {
    std::string result;
    std::size_t at = 0;
    for (const RepairChange& change : repaired.changes) {
        if (change.offset < at || text.substr(change.offset, change.was.size()) != change.was) return "?";
        result.append(text, at, change.offset - at).append(change.now);
        at = change.offset + change.was.size();
    }
    return result.append(text, at);
}

std::size_t documentBegin(const RepairedText& repaired) {
    if (repaired.changes.empty() || repaired.changes[0].kind != RepairKind::textBeforeDocument) return 0;
    return repaired.changes[0].was.size();
}

/// Checks one text; true when it did not read before.
bool check(const std::string& text, RepairScope scope = RepairScope::unread) {
    const RepairedText repaired = repairOFXText(text, scope);
    const Reading before = read(text);
    const Reading after = read(repaired.text);
    std::string problem = after.error.starts_with("Found close tag") ? after.error : "";
    const bool findsNothing = before.tree && (*before.tree)["OFX"].isNothing();
    const bool isOut = before.tree && !findsNothing && scope == RepairScope::unread;
    if (isOut && repaired.text != text) problem = "changed although it read";
    if (before.tree && !after.tree) problem = "does not read any more";
    if (repaired.changes.empty() != (repaired.text == text)) problem = "changes do not tell";
    if (replayed(text, repaired) != repaired.text) problem = "changes do not lead to the result";
    const RepairedText again = repairOFXText(repaired.text, scope);
    if (again.text != repaired.text) problem = "repaired twice";
    if (scope == RepairScope::structure && again.remaining != repaired.remaining) problem = "remarks differ";
    const bool isJudged = scope == RepairScope::structure || !repaired.changes.empty();
    if (isJudged && after.tree && problem.empty()) problem = untold(repaired);
    // What read before, or reads once nothing stands before it, is as the parser has it.
    if (repaired.changes.size() > (documentBegin(repaired) == 0 ? 0 : 1) && problem.empty()) {
        Leaves leaves;
        addLeaves(leaves, "", ParseValue(after.tree.value()));
        const std::string lost =
            missing(soundLeaves(std::string_view(text).substr(documentBegin(repaired))), leaves);
        if (!lost.empty()) problem = "lost " + lost;
    }
    if (!problem.empty()) {  // so that thousands of checks are not counted one by one
        CAPTURE(text);
        CAPTURE(repaired.text);
        CAPTURE(again.text);
        REQUIRE(problem == "");
    }
    return !before.tree;
}

/// Tags of elements that stand in each other, and with values.
const std::vector<std::string> kStructure{"<SIGNONMSGSRSV1>",
                                          "</SIGNONMSGSRSV1>",
                                          "<SONRS>",
                                          "</SONRS>",
                                          "<BANKMSGSRSV1>",
                                          "</BANKMSGSRSV1>",
                                          "<CREDITCARDMSGSRSV1>",
                                          "</CREDITCARDMSGSRSV1>",
                                          "<STMTTRNRS>",
                                          "</STMTTRNRS>",
                                          "<CCSTMTTRNRS>",
                                          "</CCSTMTTRNRS>",
                                          "<STMTRS>",
                                          "</STMTRS>",
                                          "<CCSTMTRS>",
                                          "</CCSTMTRS>",
                                          "<STATUS>",
                                          "</STATUS>",
                                          "<BANKACCTFROM>",
                                          "</BANKACCTFROM>",
                                          "<CCACCTFROM>",
                                          "<BANKTRANLIST>",
                                          "</BANKTRANLIST>",
                                          "<STMTTRN>",
                                          "</STMTTRN>",
                                          "<LEDGERBAL>",
                                          "</LEDGERBAL>",
                                          "<INVSTMTRS>",
                                          "<INVTRANLIST>",
                                          "</INVTRANLIST>",
                                          "<BUYSTOCK>",
                                          "</BUYSTOCK>",
                                          "<INVBUY>",
                                          "<SECLIST>",
                                          "</SECLIST>",
                                          "<OFX>",
                                          "</OFX>",
                                          "<X.LIST>",
                                          "</X.LIST>",
                                          "<X.NOTE>n",
                                          "<CODE>0",
                                          "<DTSERVER>1",
                                          "<CURDEF>USD",
                                          "<ACCTID>1",
                                          "<DTSTART>1",
                                          "<DTEND>2</DTEND>",
                                          "<TRNAMT>1",
                                          "<TRNAMT>2</TRNAMT>",
                                          "<NAME>a",
                                          "<MEMO>",
                                          "</MEMO>",
                                          "<BALAMT>3",
                                          "<DTASOF>4",
                                          "<TRNUID>5",
                                          "<UNITS>6",
                                          "<stmttrn>",
                                          "<name>",
                                          "x",
                                          "\n",
                                          "<CURRENCY>"};

const std::vector<std::string> kPieces{"<A>",        "<A>",
                                       "</A>",       "</A>",
                                       "<B>",        "</B>",
                                       "<STMTTRN>",  "</STMTTRN>",
                                       "<MEMO>",     "</MEMO>",
                                       "<NAME>",     "</NAME>",
                                       "<INTU.A>",   "</INTU.A>",
                                       "<INTU.B>",   "</MEM>",
                                       "</STMTRN>",  "x",
                                       "y",          "x y",
                                       "a &amp; b",  "&",
                                       " ",          "\n",
                                       "\u00A0",     ">",
                                       "<",          "< ",
                                       "/",          "<>",
                                       "</>",        "</ >",
                                       "<A/>",       "<A />",
                                       "<A >",       "< A>",
                                       "</ A >",     "<b>",
                                       "</b>",       "<A x=\"1\">",
                                       "<!--",       "-->",
                                       "<!-- c -->", "<![CDATA[",
                                       "]]>",        "<![CDATA[d & <e>]]>",
                                       "<?p?>",      "<!D>",
                                       "<MEMO",      "</A",
                                       "<b",         "<!",
                                       "<?",         "<?OFX",
                                       "=",          "<\u00A0A\u3000>"};

}  // namespace

TEST_CASE("whatever is in a body, its repair reads, keeps the values and is the last") {
    RandomText random(7);
    std::size_t damaged = 0;
    const std::size_t rounds = scaled(20000);
    for (std::size_t i = 0; i < rounds; ++i)
        if (check("<OFX>" + random.soup(kPieces, 1 + random.below(20)))) ++damaged;
    CHECK(damaged > rounds / 4);
    CHECK(damaged < rounds);
}

TEST_CASE("whatever is in a body in lower case, its repair reads, keeps the values and is the last") {
    RandomText random(11);
    std::vector<std::string> pieces = kPieces;
    for (std::string& piece : pieces)
        if (!piece.starts_with("<![")) piece = withTagsInLowerCase(piece);
    for (const char* header : {"", "OFXHEADER:100\n", "<?OFX?>"})
        for (std::size_t i = 0; i < scaled(8000); ++i)
            check(header + ("<ofx>" + random.soup(pieces, 1 + random.below(20))));
}

TEST_CASE("whatever stands around a document, its repair reads, keeps the values and is the last") {
    std::vector<std::string> pieces = kPieces;
    for (const char* piece :
         {"<OFX>", "</OFX>", "<OFX >", "<ofx>", "</ofx>", "OFXHEADER:100\n", "<?xml?>", "<?xml ", "?>",
          "<?OFX A=\"1\"?>", "\xEF\xBB\xBF", "\"", "\r\n", "<OFX a>", "<OFX/>"})
        for (int i = 0; i < 4; ++i) pieces.emplace_back(piece);
    RandomText random(8);
    std::size_t damaged = 0;
    const std::size_t rounds = scaled(20000);
    for (std::size_t i = 0; i < rounds; ++i)
        if (check(random.soup(pieces, random.below(16)))) ++damaged;
    CHECK(damaged > rounds / 4);
}

TEST_CASE("whatever bytes go in, the result has no close-tag error") {
    std::vector<std::string> pieces = kPieces;
    for (const char* piece : {"\x80", "\xC3", "\xFF", "\xE2\x80", "\xED\xA0\x80", "\xA0", "\xC2"})
        pieces.emplace_back(piece);
    pieces.emplace_back(1, '\0');
    RandomText random(9);
    for (std::size_t i = 0; i < scaled(20000); ++i)
        check((random.once(8) ? "" : "<OFX>") + random.soup(pieces, random.below(16)));
}

TEST_CASE("a sound document with chance damage is repaired and keeps the values") {
    std::vector<std::string> documents;
    for (const char* name : {"checking.ofx", "card.ofx", "quirks.ofx", "every_element.ofx", "profile.ofx"})
        documents.emplace_back(exampleData(name).bytes());
    documents.push_back(withTagsInLowerCase(documents.front()));
    for (const std::string& whole : documents) {
        CAPTURE(whole);
        RandomText random(10);
        std::size_t damaged = 0;
        for (std::size_t i = 0; i < scaled(600); ++i) {
            std::string text = whole;
            for (std::size_t changes = 1 + random.below(4); changes > 0 && !text.empty(); --changes) {
                const std::size_t at = random.below(text.size());
                switch (random.below(4)) {
                    case 0:
                        text.erase(at, 1 + random.below(12));
                        break;
                    case 1:
                        text.insert(at, random.oneOf(kPieces));
                        break;
                    case 2:
                        text.resize(at + 1);
                        break;
                    default:
                        text[at] = random.oneOf(std::string_view("<>/ &A\n"));
                }
            }
            if (check(text)) ++damaged;
        }
        CHECK(damaged > 0);
    }
}

TEST_CASE("a sound document that lacks any one of its tags is repaired and keeps the values") {
    const std::string whole(exampleData("card.ofx").bytes());
    std::size_t damaged = 0;
    for (std::size_t open = whole.find("<OFX>"); open < whole.size(); open = whole.find('<', open + 1)) {
        std::string text = whole;
        text.erase(open, whole.find('>', open) + 1 - open);
        if (check(text)) ++damaged;
    }
    CHECK(damaged > 5);
}

TEST_CASE("whatever elements stand in each other, their repair reads, keeps the values and is the last") {
    RandomText random(12);
    for (std::size_t i = 0; i < scaled(20000); ++i)
        check("<OFX>" + random.soup(kStructure, 1 + random.below(24)), RepairScope::structure);
    for (std::size_t i = 0; i < scaled(4000); ++i)
        check(random.soup(kStructure, 1 + random.below(24)), RepairScope::structure);
}

TEST_CASE("whatever is in a body, a repair of its structure reads, keeps the values and is the last") {
    std::vector<std::string> pieces = kPieces;
    pieces.insert(pieces.end(), kStructure.begin(), kStructure.end());
    RandomText random(13);
    for (std::size_t i = 0; i < scaled(20000); ++i)
        check("<OFX>" + random.soup(pieces, 1 + random.below(20)), RepairScope::structure);
}
