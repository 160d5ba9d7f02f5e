// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

using namespace brackwell;

/// \file
/// What holds for every class that stands for an aggregate: on what it is built, and which of the base's
/// operations it leaves as they are.

namespace {

/// Aggregates that are written and archived by the base.
using Plain =
    std::tuple<TvOFXAggregate, TvOFXResponse, TvOFXFIProfileResponse, TvOFXAccountInfoResponse,
               TvOFXStatementResponse, TvOFXCCStatementResponse, TvOFXRequest, TvOFXChallengeRequest,
               TvOFXMessageSetProfile, TvOFXMessageSetProfileBanking, TvOFXMessageSetProfileCreditCard,
               TvOFXMessageSetProfileSignOn, TvOFXMessageSetProfileSignUp, TvOFXInvestmentAccount,
               TvOFXInvestmentAccountInfo, TvOFXMessageSetCore, TvOFXSignOnInfo>;
/// Aggregates with an archive of their own.
using Archived = std::tuple<TvOFXBankAccount, TvOFXCreditCardAccount, TvOFXStatementTransaction, TvOFXPayee>;
/// Aggregates with a text of their own that can be made of nothing.
using Written = std::tuple<TvOFXStatus, TvOFXSignOnResponse, TvOFXFinancialInstitutionIdentification>;

template <class Base, class... Classes>
constexpr bool kIsBaseOfAll = (std::is_base_of_v<Base, Classes> && ...);

template <class Base, class... Classes>
constexpr bool kIsBaseOfNone = !(std::is_base_of_v<Base, Classes> || ...);

const ParseDictionary kNode{{"A", ParseDictionary{{"B", "1"}}}, {"C", "2"}};
constexpr std::string_view kNodeText = "<A>\n<B>1\n</A>\n<C>2\n";

std::string archiveOf(const TvOFXAggregate& object) {
    KeyedArchiver coder;
    object.encodeWithCoder(coder);
    return std::string(coder.archivedData().bytes());
}

/// A text of a class's own does not change when the object gets a node.
void checkWritesItself(TvOFXAggregate& object) {
    const std::string text = object.ofxString();
    CHECK_FALSE(text.empty());
    object.setOriginalParseData(kNode);
    CHECK(object.ofxString() == text);
}

}  // namespace

TEST_CASE("responses, requests and message sets are families of aggregates") {
    CHECK(kIsBaseOfAll<TvOFXResponse, TvOFXSignOnResponse, TvOFXFIProfileResponse, TvOFXAccountInfoResponse,
                       TvOFXStatementResponse, TvOFXCCStatementResponse>);
    CHECK(kIsBaseOfAll<TvOFXRequest, TvOFXAccountInfoRequest, TvOFXFIProfileRequest, TvOFXChallengeRequest>);
    CHECK(
        kIsBaseOfAll<TvOFXMessageSetProfile, TvOFXMessageSetProfileBanking, TvOFXMessageSetProfileCreditCard,
                     TvOFXMessageSetProfileSignOn, TvOFXMessageSetProfileSignUp>);
    CHECK(kIsBaseOfAll<TvOFXAggregate, TvOFXResponse, TvOFXRequest, TvOFXMessageSetProfile>);
    CHECK(kIsBaseOfNone<TvOFXResponse, TvOFXRequest, TvOFXMessageSetProfile>);
    CHECK(kIsBaseOfNone<TvOFXRequest, TvOFXResponse, TvOFXMessageSetProfile>);
    // A card statement is not a bank statement.
    CHECK(kIsBaseOfNone<TvOFXStatementResponse, TvOFXCCStatementResponse>);
    CHECK(kIsBaseOfNone<TvOFXCCStatementResponse, TvOFXStatementResponse>);
}

TEST_CASE_TEMPLATE("an aggregate of no family stands on the base alone", Aggregate, TvOFXStatus,
                   TvOFXBankAccount, TvOFXCreditCardAccount, TvOFXInvestmentAccount,
                   TvOFXInvestmentAccountInfo, TvOFXStatementTransaction, TvOFXPayee,
                   TvOFXFinancialInstitutionIdentification, TvOFXMessageSetCore, TvOFXSignOnInfo) {
    CHECK(std::is_base_of_v<TvOFXAggregate, Aggregate>);
    CHECK_FALSE(std::is_base_of_v<TvOFXResponse, Aggregate>);
    CHECK_FALSE(std::is_base_of_v<TvOFXRequest, Aggregate>);
    CHECK_FALSE(std::is_base_of_v<TvOFXMessageSetProfile, Aggregate>);
}

TEST_CASE("records, views and what ties the model together are no aggregates") {
    CHECK(kIsBaseOfNone<TvOFXAggregate, TvOFXAccountInfo, TvOFXBankAccountInfo, TvOFXCreditCardAccountInfo,
                        TvOFXPaymentsAccountInfo, TvOFXUserAccountInfo>);
    CHECK(kIsBaseOfNone<TvOFXAggregate, TvOFXFIProfile, TvOFXInterpreter, TvOFXMessage, TvOFXResult,
                        TvOFXFIMessage, TvOFXAccount>);
}

TEST_CASE_TEMPLATE_DEFINE("an aggregate without a text of its own is written as its node", Aggregate,
                          writesItsNode) {
    Aggregate object;
    CHECK(object.ofxString().empty());
    object.setOriginalParseData(kNode);
    for (const std::uint64_t version : {0U, 102U, 211U}) {
        object.setOfxVersion(version);
        CHECK(object.ofxString() == kNodeText);
    }
}
TEST_CASE_TEMPLATE_APPLY(writesItsNode, Plain);
TEST_CASE_TEMPLATE_APPLY(writesItsNode, Archived);

TEST_CASE_TEMPLATE_DEFINE("an aggregate with a text of its own does not write its node", Aggregate,
                          writesItself) {
    Aggregate object;
    checkWritesItself(object);
}
TEST_CASE_TEMPLATE_APPLY(writesItself, Written);

TEST_CASE("a request with a text of its own does not write its node") {
    checkWritesItself(*TvOFXAccountInfoRequest::initWithUpdateDateTime());
    checkWritesItself(*TvOFXFIProfileRequest::initWithUpdateDateTime());
}

TEST_CASE_TEMPLATE_DEFINE("an aggregate without an archive of its own is archived as its node alone",
                          Aggregate, archivesItsNode) {
    Aggregate object;
    object.setOfxVersion(211);
    object.setHelperObject(TvOFXHelper::defaultHelper());
    CHECK(archiveOf(object) == archiveOf(TvOFXAggregate()));
    object.setOriginalParseData(kNode);
    CHECK(archiveOf(object) == archiveOf(TvOFXAggregate(kNode)));
}
TEST_CASE_TEMPLATE_APPLY(archivesItsNode, Plain);
TEST_CASE_TEMPLATE_APPLY(archivesItsNode, Written);

TEST_CASE_TEMPLATE_DEFINE("an archive of its own keeps neither version nor helper", Aggregate,
                          archivesItself) {
    Aggregate object;
    const std::string archive = archiveOf(object);
    object.setOfxVersion(211);
    object.setHelperObject(TvOFXHelper::defaultHelper());
    CHECK(archiveOf(object) == archive);
    const auto opened = KeyedUnarchiver::open(Data::copy(archive));
    REQUIRE(opened);
    CHECK(Aggregate::initWithCoder(*opened)->ofxVersion() == 0);
    CHECK(Aggregate::initWithCoder(*opened)->helperObject() == nullptr);
}
TEST_CASE_TEMPLATE_APPLY(archivesItself, Archived);
