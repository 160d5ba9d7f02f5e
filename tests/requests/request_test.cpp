// SPDX-License-Identifier: Apache-2.0
#include <brackwell/requests.h>
#include <doctest/doctest.h>

#include <set>

#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

/// 8-4-4-4-12 upper-case hexadecimal digits, of version 4 and the usual variant.
bool isRandomUUID(std::string_view text) {
    if (text.size() != 36) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
        const bool digit = std::string_view("0123456789ABCDEF").find(text[i]) != std::string_view::npos;
        if (hyphen ? text[i] != '-' : !digit) return false;
    }
    return text[14] == '4' && std::string_view("89AB").find(text[19]) != std::string_view::npos;
}

}  // namespace

TEST_CASE("a transaction identifier is a random UUID in upper case") {
    for (int i = 0; i < 100; ++i) {
        const std::string uuid = TvOFXRequest::generateUUID();
        CAPTURE(uuid);
        CHECK(isRandomUUID(uuid));
    }
}

TEST_CASE("two requests never share a transaction identifier") {
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        seen.insert(shown(TvOFXRequest::initWithTransactionWrapperName("X")->transactionUID()));
        seen.insert(shown(TvOFXAccountInfoRequest::initWithUpdateDateTime()->transactionUID()));
        seen.insert(shown(TvOFXFIProfileRequest::initWithUpdateDateTime()->transactionUID()));
    }
    CHECK(seen.size() == 300);
}

TEST_CASE("a request keeps its wrapper's name and the identifier it was made with") {
    const auto request = TvOFXRequest::initWithTransactionWrapperName("ANYTRNRQ");
    CHECK(request->transactionWrapperName() == "ANYTRNRQ");
    const std::string first = shown(request->transactionUID());
    CHECK(isRandomUUID(first));
    request->setOfxVersion(211);
    CHECK(shown(request->transactionUID()) == first);
}

TEST_CASE("the base of requests says what it lacks") {
    const TvOFXRequest request;
    CHECK(request.requestIdentifier() == "request id missing");
    CHECK(request.humanReadableName() == "request name missing");
    CHECK(shown(request.transactionUID()) == "nothing");
    CHECK(shown(request.transactionWrapperName()) == "nothing");
    CHECK(request.className() == "TvOFXRequest");
}

TEST_CASE("the base of requests renders like any aggregate") {
    const auto request = TvOFXRequest::initWithTransactionWrapperName("ANYTRNRQ");
    CHECK(request->ofxString() == "");
    request->setOriginalParseData(ParseDictionary{{"A", "b"}});
    CHECK(request->ofxString() == "<A>b\n");
    CHECK(request->description() == "<A>b\n");
}

TEST_CASE("each kind of request has its names") {
    struct Row {
        std::shared_ptr<TvOFXRequest> request;
        std::string className;
        std::string identifier;
        std::string name;
        std::string wrapper;
    };
    const std::vector<Row> rows{
        {TvOFXAccountInfoRequest::initWithUpdateDateTime(), "TvOFXAccountInfoRequest", "ACCTINFORQ",
         "Account Info Request", "ACCTINFOTRNRQ"},
        {TvOFXFIProfileRequest::initWithUpdateDateTime(), "TvOFXFIProfileRequest", "PROFRQ",
         "FI Profile Request", "PROFTRNRQ"},
        {std::make_shared<TvOFXChallengeRequest>(), "TvOFXChallengeRequest", "CHALLENGERQ",
         "Challenge Request", "nothing"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.className);
        CHECK(row.request->className() == row.className);
        CHECK(row.request->requestIdentifier() == row.identifier);
        CHECK(row.request->humanReadableName() == row.name);
        CHECK(shown(row.request->transactionWrapperName()) == row.wrapper);
        CHECK(isRandomUUID(shown(row.request->transactionUID())) == (row.wrapper != "nothing"));
        CHECK(row.request->ofxVersion() == 0);
        CHECK_FALSE(row.request->originalParseData());
    }
}

TEST_CASE("what a request renders can be read again") {
    for (const std::uint64_t version : {102U, 211U}) {
        CAPTURE(version);
        const auto request = TvOFXFIProfileRequest::initWithUpdateDateTime("20240101");
        request->setOfxVersion(version);
        const ParseDictionary tree = parsed(request->ofxString());
        CHECK(shown(ParseValue(tree)["PROFTRNRQ"]["TRNUID"].text()) == shown(request->transactionUID()));
        CHECK(shown(ParseValue(tree)["PROFTRNRQ"]["PROFRQ"]["CLIENTROUTING"].text()) == "NONE");
        CHECK(shown(ParseValue(tree)["PROFTRNRQ"]["PROFRQ"]["DTPROFUP"].text()) == "20240101");
    }
}
