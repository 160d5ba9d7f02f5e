// SPDX-License-Identifier: Apache-2.0
#include <brackwell/accounts.h>
#include <brackwell/profile.h>
#include <doctest/doctest.h>

#include "support/documents.h"
#include "support/shown.h"
#include "support/tree_text.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

const ParseDictionary kFirst{{"CODE", "1"}, {"SEVERITY", "INFO"}};
const ParseDictionary kSecond{{"CODE", "2"}, {"SEVERITY", "ERROR"}};

/// A response's code, severity word and all, or "nothing".
std::string statusOf(const TvOFXResponse& response) {
    return response.status() ? response.status()->description() : "nothing";
}

}  // namespace

TEST_CASE("a new response holds nothing") {
    const TvOFXResponse response;
    CHECK(response.status() == nullptr);
    CHECK_FALSE(response.transactionUID());
    CHECK_FALSE(response.transactionWrapperName());
    CHECK_FALSE(response.originalParseData());
    CHECK(response.className() == "TvOFXResponse");
    const auto none = TvOFXResponse::initWithParseDict(std::nullopt);
    CHECK(none->status() == nullptr);
    CHECK_FALSE(none->originalParseData());
}

TEST_CASE("a response describes itself by a fixed text, whatever it holds") {
    CHECK(TvOFXResponse().description() == "Generic TvOFXResponse.");
    const auto response = TvOFXResponse::initWithParseDict(ParseDictionary{{"STATUS", kFirst}});
    CHECK(response->status());
    CHECK(response->description() == "Generic TvOFXResponse.");
}

TEST_CASE("a response walks its node for a wrapper, its identifier and a status") {
    struct Row {
        ParseDictionary node;
        std::string_view wrapper;
        std::string_view uid;
        std::string_view status;
    };
    const ParseDictionary inner{{"STATUS", kSecond}};
    for (const Row& row : std::initializer_list<Row>{
             // Without a wrapper the identifier is not looked for.
             {{{"TRNUID", "7"}}, "nothing", "nothing", "nothing"},
             {{{"STATUS", kFirst}, {"TRNUID", "7"}}, "nothing", "nothing", "Status: 1 [INFO]"},
             // The identifier stands beside the wrapper, not inside it.
             {{{"STMTTRNRS", ParseDictionary()}, {"TRNUID", "7"}}, "STMTTRNRS", "7", "nothing"},
             {{{"TRNUID", "7"}, {"STMTTRNRS", "text"}}, "STMTTRNRS", "7", "nothing"},
             {{{"STMTTRNRS", ParseDictionary{{"TRNUID", "7"}}}}, "STMTTRNRS", "nothing", "nothing"},
             {{{"STMTTRNRS", ""}, {"TRNUID", ""}}, "STMTTRNRS", "", "nothing"},
             {{{"STMTTRNRS", ""}, {"TRNUID", ParseDictionary()}}, "STMTTRNRS", "nothing", "nothing"},
             {{{"STMTTRNRS", ""}, {"TRNUID", ParseValue::array({"7", "8"})}},
              "STMTTRNRS",
              "nothing",
              "nothing"},
             // The inner response stands beside the wrapper, too, and has the second word on the status.
             {{{"STMTTRNRS", ""}, {"STMTRS", inner}}, "STMTTRNRS", "nothing", "Status: 2 [ERROR]"},
             {{{"STMTRS", inner}, {"STMTTRNRS", ""}}, "STMTTRNRS", "nothing", "Status: 2 [ERROR]"},
             {{{"STMTTRNRS", ""}, {"STMTRS", inner}, {"STATUS", kFirst}},
              "STMTTRNRS",
              "nothing",
              "Status: 1 [INFO]"},
             {{{"ACCTINFOTRNRS", ""}, {"ACCTINFORS", inner}},
              "ACCTINFOTRNRS",
              "nothing",
              "Status: 2 [ERROR]"},
             {{{"STMTTRNRS", inner}}, "STMTTRNRS", "nothing", "nothing"},
             {{{"STMTTRNRS", ""}, {"STMTRS", "text"}}, "STMTTRNRS", "nothing", "nothing"},
             {{{"STMTTRNRS", ""}, {"STMTRS", ParseValue::array({inner, inner})}},
              "STMTTRNRS",
              "nothing",
              "nothing"},
             {{{"STMTTRNRS", ""}, {"STMTRS", ParseDictionary{{"STATUS", "text"}}}},
              "STMTTRNRS",
              "nothing",
              "nothing"},
             {{{"STMTRS", inner}}, "nothing", "nothing", "nothing"},
             // The last wrapper decides, also when the response that it names is absent.
             {{{"STMTTRNRS", ""}, {"STMTRS", inner}, {"CCSTMTTRNRS", ""}},
              "CCSTMTTRNRS",
              "nothing",
              "nothing"},
             {{{"CCSTMTTRNRS", ""}, {"STMTRS", inner}, {"STMTTRNRS", ""}},
              "STMTTRNRS",
              "nothing",
              "Status: 2 [ERROR]"},
             // What ends in the five letters is a wrapper.
             {{{"TRNRS", ""}, {"RS", inner}}, "TRNRS", "nothing", "Status: 2 [ERROR]"},
             {{{"XTRNRS", ""}, {"XRS", inner}}, "XTRNRS", "nothing", "Status: 2 [ERROR]"},
             {{{"STMTTRNRSX", ""}, {"stmttrnrs", ""}, {"NRS", ""}}, "nothing", "nothing", "nothing"},
             // A status of another kind is passed over.
             {{{"STATUS", "text"}}, "nothing", "nothing", "nothing"},
             {{{"STATUS", ParseValue::array({kFirst, kSecond})}}, "nothing", "nothing", "nothing"},
             {{{"STATUS", ParseDictionary()}}, "nothing", "nothing", "Status: 0"},
             {{{"STATUS", ParseDictionary()}, {"STMTTRNRS", ""}, {"STMTRS", inner}},
              "STMTTRNRS",
              "nothing",
              "Status: 0"},
             {{{"STATUS", "text"}, {"STMTTRNRS", ""}, {"STMTRS", inner}},
              "STMTTRNRS",
              "nothing",
              "Status: 2 [ERROR]"},
             {{}, "nothing", "nothing", "nothing"},
         }) {
        CAPTURE(row.node);
        const auto response = TvOFXResponse::initWithParseDict(row.node);
        CHECK(shown(response->transactionWrapperName()) == row.wrapper);
        CHECK(shown(response->transactionUID()) == row.uid);
        CHECK(statusOf(*response) == row.status);
        CHECK(response->originalParseData() == row.node);
    }
}

TEST_CASE_TEMPLATE("sign-on, profile and account information are walked like any response", Response,
                   TvOFXSignOnResponse, TvOFXFIProfileResponse, TvOFXAccountInfoResponse) {
    const auto response = Response::initWithParseDict(ParseDictionary{
        {"STMTTRNRS", ""}, {"STMTRS", ParseDictionary{{"STATUS", kSecond}}}, {"TRNUID", "7"}});
    CHECK(shown(response->transactionWrapperName()) == "STMTTRNRS");
    CHECK(shown(response->transactionUID()) == "7");
    CHECK(statusOf(*response) == "Status: 2 [ERROR]");
    CHECK(statusOf(*Response::initWithParseDict(ParseDictionary{{"STATUS", kFirst}})) == "Status: 1 [INFO]");
}

TEST_CASE("the fields of a response are set and read") {
    TvOFXResponse response;
    const auto status = TvOFXStatus::initWithParseDict(kFirst);
    response.setStatus(status);
    response.setTransactionUID("7");
    response.setTransactionWrapperName("STMTRS");
    CHECK(response.status() == status);
    CHECK(response.transactionUID() == "7");
    CHECK(response.transactionWrapperName() == "STMTRS");
    response.setStatus(nullptr);
    response.setTransactionUID(std::nullopt);
    response.setTransactionWrapperName(std::nullopt);
    CHECK(response.status() == nullptr);
    CHECK_FALSE(response.transactionUID());
    CHECK_FALSE(response.transactionWrapperName());
}

TEST_CASE("what is set on a response replaces what its walk found") {
    const auto response = TvOFXResponse::initWithParseDict(
        ParseDictionary{{"STMTTRNRS", ""}, {"TRNUID", "7"}, {"STATUS", kFirst}});
    response->setTransactionUID("8");
    response->setTransactionWrapperName("STMTRS");
    response->setStatus(TvOFXStatus::initWithParseDict(kSecond));
    CHECK(response->transactionUID() == "8");
    CHECK(response->transactionWrapperName() == "STMTRS");
    CHECK(statusOf(*response) == "Status: 2 [ERROR]");
}

TEST_CASE("a response is written as its node") {
    const auto response = TvOFXResponse::initWithParseDict(ParseDictionary{{"A", "1"}, {"STATUS", kFirst}});
    response->setOfxVersion(211);
    CHECK(response->ofxString() == "<A>1\n<STATUS>\n<CODE>1\n<SEVERITY>INFO\n</STATUS>\n");
    CHECK(TvOFXResponse().ofxString().empty());
}

TEST_CASE("a response is archived as its node alone") {
    const auto response =
        TvOFXResponse::initWithParseDict(ParseDictionary{{"STMTTRNRS", ""}, {"TRNUID", "7"}});
    response->setTransactionUID("8");
    KeyedArchiver coder;
    response->encodeWithCoder(coder);
    KeyedArchiver base;
    TvOFXAggregate(response->originalParseData()).encodeWithCoder(base);
    CHECK(coder.archivedData() == base.archivedData());
}
