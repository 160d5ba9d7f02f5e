// SPDX-License-Identifier: Apache-2.0
#include <brackwell/profile.h>
#include <doctest/doctest.h>

#include "profile/same_archive.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

std::shared_ptr<TvOFXFinancialInstitutionIdentification> identificationIn(
    const std::optional<ParseDictionary>& node) {
    return TvOFXFinancialInstitutionIdentification::initWithParseDict(node);
}

}  // namespace

TEST_CASE("an institution has the name and the identifier of its aggregate") {
    const auto fi = identificationIn(parsed("<ORG>Big Bank<FID>1001"));
    CHECK(shown(fi->organization()) == "Big Bank");
    CHECK(shown(fi->fid()) == "1001");
    CHECK(fi->className() == "TvOFXFinancialInstitutionIdentification");
    CHECK(fi->originalParseData() == parsed("<ORG>Big Bank<FID>1001"));
}

TEST_CASE("an institution's identifier is read only after a name with at least one character") {
    struct Row {
        ParseDictionary node;
        const char* organization;
        const char* fid;
    };
    const ParseDictionary empty;
    const std::vector<Row> rows{
        {{{"FID", "1001"}}, "nothing", "nothing"},
        {{{"ORG", ""}, {"FID", "1001"}}, "nothing", "nothing"},
        {{{"ORG", empty}, {"FID", "1001"}}, "nothing", "nothing"},
        {{{"ORG", ParseValue::array({"A", "B"})}, {"FID", "1001"}}, "nothing", "nothing"},
        {{{"ORG", "Big Bank"}}, "Big Bank", "nothing"},
        {{{"ORG", "Big Bank"}, {"FID", ""}}, "Big Bank", "nothing"},
        {{{"ORG", "Big Bank"}, {"FID", empty}}, "Big Bank", "nothing"},
        {{{"FID", "1001"}, {"ORG", "Big Bank"}}, "Big Bank", "1001"},
        {{{"org", "Big Bank"}, {"fid", "1001"}}, "nothing", "nothing"},
    };
    for (const Row& row : rows) {
        CAPTURE(TvOFXHelper::ofxDictionaryToString(row.node));
        const auto fi = identificationIn(row.node);
        CHECK(shown(fi->organization()) == row.organization);
        CHECK(shown(fi->fid()) == row.fid);
    }
}

TEST_CASE("an institution without a node is empty") {
    const auto fi = identificationIn(std::nullopt);
    REQUIRE(fi);
    CHECK_FALSE(fi->organization());
    CHECK_FALSE(fi->fid());
    CHECK_FALSE(fi->originalParseData());
}

TEST_CASE("an institution's text closes its leaves from version 200 on, and itself always") {
    struct Row {
        std::uint64_t version;
        const char* text;
    };
    const auto fi = identificationIn(parsed("<ORG>Big Bank<FID>1001"));
    for (const Row& row : {Row{0, "<FI>\n<ORG>Big Bank\n<FID>1001\n</FI>\n"},
                           Row{102, "<FI>\n<ORG>Big Bank\n<FID>1001\n</FI>\n"},
                           Row{199, "<FI>\n<ORG>Big Bank\n<FID>1001\n</FI>\n"},
                           Row{200, "<FI>\n<ORG>Big Bank</ORG>\n<FID>1001</FID>\n</FI>\n"},
                           Row{211, "<FI>\n<ORG>Big Bank</ORG>\n<FID>1001</FID>\n</FI>\n"}}) {
        CAPTURE(row.version);
        fi->setOfxVersion(row.version);
        CHECK(fi->ofxString() == row.text);
    }
}

TEST_CASE("an institution's text leaves out what is absent or empty") {
    TvOFXFinancialInstitutionIdentification fi;
    CHECK(fi.ofxString() == "<FI>\n</FI>\n");
    fi.setOrganization("");
    fi.setFid("");
    CHECK(fi.ofxString() == "<FI>\n</FI>\n");
    fi.setFid("1001");
    CHECK(fi.ofxString() == "<FI>\n<FID>1001\n</FI>\n");
}

TEST_CASE("an institution describes itself with its identifier before its name") {
    TvOFXFinancialInstitutionIdentification fi;
    CHECK(fi.description() == "TvOFXFinancialInstitutionIdentification = (null)/(null)");
    fi.setOrganization("Big Bank");
    fi.setFid("1001");
    CHECK(fi.description() == "TvOFXFinancialInstitutionIdentification = 1001/Big Bank");
    fi.setOrganization(std::nullopt);
    CHECK(fi.description() == "TvOFXFinancialInstitutionIdentification = 1001/(null)");
}

TEST_CASE("an institution archives what an aggregate does") {
    CHECK(archivesLikeItsBase(*identificationIn(parsed("<ORG>Big Bank<FID>1001"))));
}
