// SPDX-License-Identifier: Apache-2.0
#include <brackwell/statements.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using Payee = std::shared_ptr<TvOFXPayee>;

Payee payee(const ParseDictionary& node) { return TvOFXPayee::initWithParseDict(node); }

/// A text with a getter of its own: its element and archive key.
struct TextRow {
    std::string element;
    std::string key;
    OptionalText (TvOFXPayee::*get)() const noexcept;
};
const std::array<TextRow, 6> kTexts{{{"NAME", "name", &TvOFXPayee::name},
                                     {"CITY", "city", &TvOFXPayee::city},
                                     {"STATE", "state", &TvOFXPayee::state},
                                     {"POSTALCODE", "pC", &TvOFXPayee::zipCode},
                                     {"COUNTRY", "country", &TvOFXPayee::country},
                                     {"PHONENUMBER", "pN", &TvOFXPayee::phoneNumber}}};
const std::array<std::string, 3> kLines{"ADDR1", "ADDR2", "ADDR3"};
const std::array<std::string, 3> kLineKeys{"addr1", "addr2", "addr3"};

ParseDictionary fullNode() {
    return {{"NAME", "Juniper & Co"}, {"ADDR1", "1 Mill Lane"}, {"ADDR2", "Unit 4"},
            {"ADDR3", "Rear yard"},   {"CITY", "Fenwick"},      {"STATE", "FW"},
            {"POSTALCODE", "F1 2AB"}, {"COUNTRY", "GBR"},       {"PHONENUMBER", "555 0100"}};
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text.append("[").append(line).append("]");
    return text;
}

}  // namespace

TEST_CASE("each text of a payee is read from its element") {
    for (const TextRow& row : kTexts) {
        CAPTURE(row.element);
        const Payee read = payee({{row.element, " as is "}});
        for (const TextRow& other : kTexts)
            CHECK(shown((read.get()->*other.get)()) == (&row == &other ? " as is " : "nothing"));
        CHECK(read->address() == "");
    }
}

TEST_CASE("a payee's telephone number is not read from PHONE") {
    CHECK(shown(payee({{"PHONE", "555"}})->phoneNumber()) == "nothing");
    CHECK(shown(payee({{"PHONE", "555"}, {"PHONENUMBER", "556"}})->phoneNumber()) == "556");
}

TEST_CASE("a payee without country has none") {
    CHECK(shown(payee({{"NAME", "x"}})->country()) == "nothing");
}

TEST_CASE("a value of another kind leaves a field of a payee empty") {
    const ParseDictionary aggregate{{"X", "1"}};
    for (const ParseValue& value :
         {ParseValue::array({"a", "b"}), ParseValue(aggregate), ParseValue(ParseDictionary())}) {
        for (const TextRow& row : kTexts) {
            CAPTURE(row.element);
            CHECK(shown((payee({{row.element, value}}).get()->*row.get)()) == "nothing");
        }
        for (const std::string& line : kLines) {
            CAPTURE(line);
            CHECK(payee({{line, value}})->address() == "");
            CHECK(payee({{line, value}})->addressLines().empty());
        }
    }
}

TEST_CASE("names of payee elements are compared exactly") {
    const Payee read =
        payee({{"name", "1"}, {"ADDR", "2"}, {"ADDR4", "3"}, {"ZIP", "4"}, {"INTU.CITY", "5"}});
    for (const TextRow& row : kTexts) CHECK(shown((read.get()->*row.get)()) == "nothing");
    CHECK(read->address() == "");
}

TEST_CASE("no node makes an empty payee") {
    const Payee read = TvOFXPayee::initWithParseDict(std::nullopt);
    REQUIRE(read);
    for (const TextRow& row : kTexts) CHECK(shown((read.get()->*row.get)()) == "nothing");
    CHECK(read->address() == "");
    CHECK(read->addressLines().empty());
    CHECK_FALSE(read->originalParseData());
}

TEST_CASE("the address has all lines that are there, and the list of lines the second twice") {
    struct Row {
        ParseDictionary node;
        std::string address;
        std::string lines;
    };
    const std::vector<Row> rows{
        {{}, "", ""},
        {{{"ADDR1", "a"}}, "a", "[a]"},
        {{{"ADDR2", "b"}}, "\nb", "[b][b]"},
        {{{"ADDR3", "c"}}, "\nc", ""},
        {{{"ADDR1", "a"}, {"ADDR2", "b"}}, "a\nb", "[a][b][b]"},
        {{{"ADDR1", "a"}, {"ADDR3", "c"}}, "a\nc", "[a]"},
        {{{"ADDR2", "b"}, {"ADDR3", "c"}}, "\nb\nc", "[b][b]"},
        {{{"ADDR1", "a"}, {"ADDR2", "b"}, {"ADDR3", "c"}}, "a\nb\nc", "[a][b][b]"},
        {{{"ADDR3", "c"}, {"ADDR2", "b"}, {"ADDR1", "a"}}, "a\nb\nc", "[a][b][b]"},
        {{{"ADDR1", ""}, {"ADDR2", "b"}}, "\nb", "[][b][b]"},
        {{{"ADDR1", "a"}, {"ADDR2", ""}, {"ADDR3", ""}}, "a\n\n", "[a][][]"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.address);
        CHECK(payee(row.node)->address() == row.address);
        CHECK(joined(payee(row.node)->addressLines()) == row.lines);
    }
}

TEST_CASE("no payee is equal to none") {
    CHECK_FALSE(payee(fullNode())->isEqualToOFXPayee(nullptr));
    CHECK_FALSE(payee({})->isEqualToOFXPayee(nullptr));
}

TEST_CASE("a payee's text that differs makes payees unequal, one that is missing does not") {
    for (const TextRow& row : kTexts) {
        CAPTURE(row.element);
        const Payee a = payee({{row.element, "a"}, {"ADDR1", "same"}});
        const Payee b = payee({{row.element, "b"}, {"ADDR1", "same"}});
        const Payee none = payee({{"ADDR1", "same"}});
        CHECK_FALSE(a->isEqualToOFXPayee(b.get()));
        CHECK_FALSE(b->isEqualToOFXPayee(a.get()));
        CHECK(a->isEqualToOFXPayee(none.get()));
        CHECK(none->isEqualToOFXPayee(a.get()));
        CHECK(a->isEqualToOFXPayee(a.get()));
    }
}

TEST_CASE("payees with different addresses are unequal, also when one has none") {
    struct Row {
        std::string what;
        ParseDictionary a;
        ParseDictionary b;
        bool equal;
    };
    const std::vector<Row> rows{
        {"nothing at all", {}, {}, true},
        {"name alone", {{"NAME", "n"}}, {{"NAME", "n"}}, true},
        {"one line and none", {{"NAME", "n"}, {"ADDR1", "a"}}, {{"NAME", "n"}}, false},
        {"a second line more", {{"ADDR1", "a"}, {"ADDR2", "b"}}, {{"ADDR1", "a"}}, false},
        {"a third line more", {{"ADDR1", "a"}, {"ADDR3", "c"}}, {{"ADDR1", "a"}}, false},
        {"the same line as second and as third", {{"ADDR2", "b"}}, {{"ADDR3", "b"}}, true},
        {"the same lines, one without city",
         {{"ADDR1", "a"}, {"ADDR2", "b"}, {"CITY", "c"}},
         {{"ADDR1", "a"}, {"ADDR2", "b"}},
         true},
        {"an empty line and none", {{"ADDR1", ""}}, {}, true},
        {"an empty second line and none", {{"ADDR2", ""}}, {}, false},
        {"an empty name and another", {{"NAME", ""}}, {{"NAME", "n"}}, false},
        {"case differs", {{"ADDR1", "a"}}, {{"ADDR1", "A"}}, false},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        CHECK(payee(row.a)->isEqualToOFXPayee(payee(row.b).get()) == row.equal);
        CHECK(payee(row.b)->isEqualToOFXPayee(payee(row.a).get()) == row.equal);
    }
}

TEST_CASE("the archive of a payee holds its parse data and its nine texts") {
    const auto archive = archived(*payee(fullNode()));
    REQUIRE(archive);
    CHECK(archive->contains("originalPD"));
    for (const TextRow& row : kTexts) {
        CAPTURE(row.key);
        CHECK(shown(archive->decodeText(row.key)) == shown(fullNode()[row.element].text()));
    }
    for (std::size_t i = 0; i < kLines.size(); ++i) {
        CAPTURE(kLines[i]);
        CHECK(shown(archive->decodeText(kLineKeys[i])) == shown(fullNode()[kLines[i]].text()));
    }
}

TEST_CASE("a payee archives only what is there") {
    KeyedArchiver empty;
    TvOFXPayee().encodeWithCoder(empty);
    CHECK(empty.archivedData() == KeyedArchiver().archivedData());

    const auto archive = archived(*payee({{"CITY", "c"}}));
    REQUIRE(archive);
    for (const TextRow& row : kTexts)
        CHECK(archive->contains(row.key) == (std::string_view(row.key) == "city"));
    for (const std::string& key : kLineKeys) CHECK_FALSE(archive->contains(key));
}

TEST_CASE("a payee comes back from its archive with all texts and its parse data") {
    const Payee before = payee(fullNode());
    const Payee back = restored(*before);
    REQUIRE(back);
    for (const TextRow& row : kTexts) {
        CAPTURE(row.element);
        CHECK(shown((back.get()->*row.get)()) == shown((before.get()->*row.get)()));
    }
    CHECK(back->address() == "1 Mill Lane\nUnit 4\nRear yard");
    REQUIRE(back->originalParseData());
    CHECK(*back->originalParseData() == fullNode());
    CHECK(back->isEqualToOFXPayee(before.get()));
    CHECK(back->ofxVersion() == 0);
}

TEST_CASE("an empty text of a payee comes back empty, not absent") {
    for (const TextRow& row : kTexts) {
        CAPTURE(row.element);
        const Payee back = restored(*payee({{row.element, ""}}));
        REQUIRE(back);
        CHECK(shown((back.get()->*row.get)()) == "");
    }
    CHECK(restored(*payee({{"ADDR2", ""}}))->address() == "\n");
}

TEST_CASE("a payee's archive without keys brings back an empty payee") {
    const auto archive = KeyedUnarchiver::open(KeyedArchiver().archivedData());
    REQUIRE(archive);
    const Payee back = TvOFXPayee::initWithCoder(*archive);
    for (const TextRow& row : kTexts) CHECK(shown((back.get()->*row.get)()) == "nothing");
    CHECK_FALSE(back->originalParseData());
}

TEST_CASE("a payee renders its parse data") {
    const Payee read = payee({{"NAME", "n"}, {"PHONE", "555"}});
    CHECK(read->ofxString() == "<NAME>n\n<PHONE>555\n");
    CHECK(read->description() == read->ofxString());
    CHECK(read->className() == "TvOFXPayee");
}
