// SPDX-License-Identifier: Apache-2.0
#include <brackwell/model.h>
#include <doctest/doctest.h>

#include <sstream>

#include "support/documents.h"
#include "support/shown.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

static_assert(!std::is_copy_constructible_v<TvOFXAggregate>);
static_assert(std::has_virtual_destructor_v<TvOFXAggregate>);

namespace {

/// What a description without a parse dictionary looks like.
std::string genericText(const TvOFXAggregate& aggregate) {
    std::ostringstream text;
    text << '<' << aggregate.className() << ": " << static_cast<const void*>(&aggregate) << '>';
    return text.str();
}

/// Counts the calls of the reading hook.
class Probe final : public TvOFXAggregate {
public:
    using TvOFXAggregate::TvOFXAggregate;
    void parseDictionary(const std::optional<ParseDictionary>& node) override {
        TvOFXAggregate::parseDictionary(node);
        ++calls;
    }
    std::string_view className() const noexcept override { return "Probe"; }
    int calls = 0;
};

}  // namespace

TEST_CASE("a new aggregate holds nothing") {
    const TvOFXAggregate aggregate;
    CHECK_FALSE(aggregate.originalParseData());
    CHECK(aggregate.ofxVersion() == 0);
    CHECK(aggregate.helperObject() == nullptr);
    CHECK(aggregate.className() == "TvOFXAggregate");
}

TEST_CASE("an aggregate without a node renders as nothing and describes itself by class and address") {
    const TvOFXAggregate aggregate;
    CHECK(aggregate.ofxString().empty());
    CHECK(aggregate.description() == genericText(aggregate));
    CHECK(aggregate.description().starts_with("<TvOFXAggregate: 0x"));
    const Probe probe;
    CHECK(probe.description().starts_with("<Probe: 0x"));
    const TvOFXAggregate other;
    CHECK(other.description() != aggregate.description());
}

TEST_CASE("an aggregate keeps the node that it is made from, an empty one as well") {
    const ParseDictionary node{{"ORG", "x"}};
    CHECK(TvOFXAggregate::initWithParseDict(node)->originalParseData() == node);
    const auto empty = TvOFXAggregate::initWithParseDict(ParseDictionary());
    REQUIRE(empty->originalParseData());
    CHECK(empty->originalParseData()->isEmpty());
    CHECK_FALSE(TvOFXAggregate::initWithParseDict(std::nullopt)->originalParseData());
}

TEST_CASE("an aggregate renders and describes itself as its node is written") {
    const auto aggregate =
        TvOFXAggregate::initWithParseDict(ParseDictionary{{"A", ParseDictionary{{"B", "1"}}}, {"C", "2"}});
    CHECK(aggregate->ofxString() == "<A>\n<B>1\n</A>\n<C>2\n");
    CHECK(aggregate->description() == aggregate->ofxString());
    const auto empty = TvOFXAggregate::initWithParseDict(ParseDictionary());
    CHECK(empty->ofxString().empty());
    CHECK(empty->description().empty());
}

TEST_CASE("the version does not change how the base renders") {
    const auto aggregate = TvOFXAggregate::initWithParseDict(ParseDictionary{{"A", "1"}});
    aggregate->setOfxVersion(211);
    CHECK(aggregate->ofxVersion() == 211);
    CHECK(aggregate->ofxString() == "<A>1\n");
}

TEST_CASE("making an aggregate from a node does not call the reading hook") {
    const Probe probe(std::optional(ParseDictionary{{"A", "1"}}));
    CHECK(probe.calls == 0);
    CHECK(probe.originalParseData());
}

TEST_CASE("the reading hook stores its node and leaves the rest alone") {
    const auto helper = std::make_shared<TvOFXHelper>();
    Probe probe;
    probe.setHelperObject(helper);
    probe.setOfxVersion(103);
    probe.parseDictionary(ParseDictionary{{"A", "1"}});
    CHECK(probe.calls == 1);
    CHECK(probe.originalParseData() == ParseDictionary{{"A", "1"}});
    CHECK(probe.helperObject() == helper);
    CHECK(probe.ofxVersion() == 103);
    probe.parseDictionary(std::nullopt);
    CHECK_FALSE(probe.originalParseData());
}

TEST_CASE("node, version and helper are set and read") {
    TvOFXAggregate aggregate;
    aggregate.setOriginalParseData(ParseDictionary{{"A", "1"}});
    CHECK(aggregate.ofxString() == "<A>1\n");
    aggregate.setOriginalParseData(std::nullopt);
    CHECK(aggregate.ofxString().empty());
    aggregate.setOfxVersion(~std::uint64_t{0});
    CHECK(aggregate.ofxVersion() == ~std::uint64_t{0});
    aggregate.setHelperObject(TvOFXHelper::defaultHelper());
    CHECK(aggregate.helperObject() == TvOFXHelper::defaultHelper());
    aggregate.setHelperObject(nullptr);
    CHECK(aggregate.helperObject() == nullptr);
}

TEST_CASE("an archive holds the node alone, under originalPD") {
    const auto aggregate = TvOFXAggregate::initWithParseDict(
        parsed("<A>1<B><C>2<C>3<D></D></B><A>4<E>\u00C4 &amp; more<STMTTRN><F>5</STMTTRN>"));
    aggregate->setOfxVersion(211);
    aggregate->setHelperObject(std::make_shared<TvOFXHelper>());
    CHECK(archived(*aggregate)->contains("originalPD"));
    const auto back = restored(*aggregate);
    REQUIRE(back);
    REQUIRE(back->originalParseData());
    CHECK(treeText(*back->originalParseData()) == treeText(*aggregate->originalParseData()));
    CHECK(back->ofxVersion() == 0);
    CHECK(back->helperObject() == nullptr);

    KeyedArchiver nodeAlone;
    TvOFXAggregate(aggregate->originalParseData()).encodeWithCoder(nodeAlone);
    KeyedArchiver all;
    aggregate->encodeWithCoder(all);
    CHECK(all.archivedData() == nodeAlone.archivedData());
}

TEST_CASE("an archive of an aggregate without a node has no key, and gives one without a node") {
    TvOFXAggregate aggregate;
    aggregate.setOfxVersion(211);
    KeyedArchiver coder;
    aggregate.encodeWithCoder(coder);
    CHECK(coder.archivedData() == KeyedArchiver().archivedData());
    const auto back = restored(aggregate);
    REQUIRE(back);
    CHECK_FALSE(back->originalParseData());
    CHECK(back->ofxVersion() == 0);
}

TEST_CASE("an empty node is archived as one") {
    const auto back = restored(*TvOFXAggregate::initWithParseDict(ParseDictionary()));
    REQUIRE(back);
    REQUIRE(back->originalParseData());
    CHECK(back->originalParseData()->isEmpty());
}

TEST_CASE("an aggregate outlives the archive that it was read from") {
    std::shared_ptr<TvOFXAggregate> back;
    {
        KeyedArchiver coder;
        TvOFXAggregate::initWithParseDict(ParseDictionary{{"A", "a text of some length, to be sure"}})
            ->encodeWithCoder(coder);
        const auto archive = KeyedUnarchiver::open(coder.archivedData());
        REQUIRE(archive);
        back = TvOFXAggregate::initWithCoder(*archive);
    }
    CHECK((*back->originalParseData())["A"].text() == "a text of some length, to be sure");
}

TEST_CASE("an archive that holds something else under the key gives no node") {
    KeyedArchiver coder;
    coder.encodeText("originalPD", "text");
    const auto archive = KeyedUnarchiver::open(coder.archivedData());
    REQUIRE(archive);
    CHECK_FALSE(TvOFXAggregate::initWithCoder(*archive)->originalParseData());
}
