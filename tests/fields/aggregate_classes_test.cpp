// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <set>
#include <tuple>
#include <typeinfo>

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

/// A class of an application's own.
class Terms final : public AggregateClass<Terms, TvOFXResponse> {
public:
    std::string_view className() const noexcept override { return "Terms"; }
};
/// All classes; those that the others have left out are requests, which are new ones after an archive.
using All = decltype(std::tuple_cat(Plain(), Archived(), Written(),
                                    std::tuple<TvOFXAccountInfoRequest, TvOFXFIProfileRequest, Terms>()));

template <class Class>
concept HasNodeInitialiser = requires(std::optional<ParseDictionary> node) {
    Class::initWithParseDict(node);
};
template <class Class>
concept HasArchiveInitialiser = requires(const KeyedUnarchiver& coder) {
    Class::initWithCoder(coder);
};
template <class Class>
concept HasWrapperInitialiser = requires {
    Class::initWithTransactionWrapperName("A");
};

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

TEST_CASE_TEMPLATE_DEFINE("an aggregate that comes back from an archive is of its class", Aggregate,
                          comesBackAsItsClass) {
    Aggregate object;
    object.setOriginalParseData(kNode);
    const auto opened = KeyedUnarchiver::open(Data::copy(archiveOf(object)));
    REQUIRE(opened);
    const auto restored = Aggregate::initWithCoder(*opened);
    static_assert(std::is_same_v<decltype(restored), const std::shared_ptr<Aggregate>>);
    CHECK(restored->className() == object.className());
    const TvOFXAggregate& base = *restored;
    CHECK(typeid(base) == typeid(Aggregate));
    // An archive of the class's own need not hold the node; every other one does.
    if (opened->contains("originalPD")) CHECK(restored->originalParseData() == kNode);
    CHECK(archiveOf(*restored) == archiveOf(object));
    CHECK(restored->ofxVersion() == 0);
    CHECK(restored->helperObject() == nullptr);
}
TEST_CASE_TEMPLATE_APPLY(comesBackAsItsClass, All);

TEST_CASE_TEMPLATE_DEFINE("an aggregate that is made of a node is of its class", Aggregate,
                          isMadeAsItsClass) {
    const auto made = Aggregate::initWithParseDict(kNode);
    static_assert(std::is_same_v<decltype(made), const std::shared_ptr<Aggregate>>);
    CHECK(made->className() == Aggregate().className());
    CHECK(made->originalParseData() == kNode);
    CHECK_FALSE(Aggregate::initWithParseDict(std::nullopt)->originalParseData());
}
TEST_CASE_TEMPLATE_APPLY(isMadeAsItsClass, All);

TEST_CASE("the names of all classes are different") {
    std::set<std::string_view> names;
    std::apply([&](const auto&... objects) { (names.insert(objects.className()), ...); }, All());
    CHECK(names.size() == std::tuple_size_v<All>);
}

TEST_CASE("a class of which there are no objects has no initialisers") {
    CHECK_FALSE(HasNodeInitialiser<TvOFXAccountStatement>);
    CHECK_FALSE(HasArchiveInitialiser<TvOFXAccountStatement>);
    CHECK(HasNodeInitialiser<TvOFXStatementResponse>);
    CHECK(HasArchiveInitialiser<TvOFXStatementResponse>);
}

TEST_CASE("only a request that can be of any kind is made with the name of its wrapper") {
    CHECK(HasWrapperInitialiser<TvOFXRequest>);
    CHECK_FALSE(HasWrapperInitialiser<TvOFXAccountInfoRequest>);
    CHECK_FALSE(HasWrapperInitialiser<TvOFXFIProfileRequest>);
    CHECK_FALSE(HasWrapperInitialiser<TvOFXChallengeRequest>);
}

TEST_CASE("the fields of an archive that holds the node alone are read from the node") {
    const auto status = TvOFXStatus::initWithParseDict(ParseDictionary{{"CODE", "5"}, {"SEVERITY", "WARN"}});
    const auto opened = KeyedUnarchiver::open(Data::copy(archiveOf(*status)));
    REQUIRE(opened);
    const auto restored = TvOFXStatus::initWithCoder(*opened);
    CHECK(restored->code() == 0);
    CHECK(TvOFXStatus::initWithParseDict(restored->originalParseData())->code() == 5);
}

TEST_CASE("a request that comes back from an archive is a new one") {
    const auto request = TvOFXAccountInfoRequest::initWithUpdateDateTime("20240101");
    const auto opened = KeyedUnarchiver::open(Data::copy(archiveOf(*request)));
    REQUIRE(opened);
    const auto restored = TvOFXAccountInfoRequest::initWithCoder(*opened);
    CHECK(restored->dateTimeAccountUpdate() == "19900101");
    CHECK(restored->transactionWrapperName() == "ACCTINFOTRNRQ");
    CHECK(restored->transactionUID() != request->transactionUID());
}
