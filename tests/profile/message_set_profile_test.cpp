// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>
#include <doctest/doctest.h>

#include "profile/same_archive.h"
#include "support/documents.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

constexpr const char* kNode = "<MSGSETCORE><VER>2<URL>https://ofx.example</MSGSETCORE><CLOSINGAVAIL>Y";

const std::string kCoreText =
    "MessageSetCore: version:2 url:https://ofx.example security:NONE uses_transport_level_security:NO"
    " sync_mode:UNKNOWN supports_error_recovery:NO";

}  // namespace

TEST_CASE_TEMPLATE("every message set reads its core", Profile, TvOFXMessageSetProfile,
                   TvOFXMessageSetProfileBanking, TvOFXMessageSetProfileCreditCard,
                   TvOFXMessageSetProfileSignOn, TvOFXMessageSetProfileSignUp) {
    const auto profile = Profile::initWithParseDict(parsed(kNode));
    REQUIRE(profile->messageSetCore());
    CHECK(profile->messageSetCore()->version() == 2);
    CHECK(profile->originalParseData() == parsed(kNode));
    CHECK(profile->ofxString() == TvOFXHelper::ofxDictionaryToString(parsed(kNode)));
    CHECK(archivesLikeItsBase(*profile));
}

TEST_CASE_TEMPLATE("a core that is no aggregate counts as absent", Profile, TvOFXMessageSetProfile,
                   TvOFXMessageSetProfileBanking, TvOFXMessageSetProfileCreditCard,
                   TvOFXMessageSetProfileSignOn, TvOFXMessageSetProfileSignUp) {
    const ParseDictionary core{{"VER", "2"}};
    CHECK_FALSE(Profile::initWithParseDict(std::nullopt)->messageSetCore());
    CHECK_FALSE(Profile::initWithParseDict(ParseDictionary{})->messageSetCore());
    CHECK_FALSE(Profile::initWithParseDict(ParseDictionary{{"MSGSETCORE", "2"}})->messageSetCore());
    CHECK_FALSE(Profile::initWithParseDict(ParseDictionary{{"MSGSETCORE", ParseValue::array({core, core})}})
                    ->messageSetCore());
    CHECK(Profile::initWithParseDict(ParseDictionary{{"MSGSETCORE", ParseDictionary{}}})->messageSetCore());
}

TEST_CASE("message sets without a description of their own show their name and their core") {
    const auto describe = [](const std::shared_ptr<TvOFXMessageSetProfile>& profile) {
        return profile->description();
    };
    const ParseDictionary node = parsed(kNode);
    CHECK(describe(TvOFXMessageSetProfile::initWithParseDict(node)) ==
          "TvOFXMessageSetProfile:\n" + kCoreText);
    CHECK(describe(TvOFXMessageSetProfileCreditCard::initWithParseDict(node)) ==
          "TvOFXMessageSetProfileCreditCard:\n" + kCoreText);
    CHECK(describe(TvOFXMessageSetProfileSignOn::initWithParseDict(node)) ==
          "TvOFXMessageSetProfileSignOn:\n" + kCoreText);
    CHECK(describe(TvOFXMessageSetProfileSignUp::initWithParseDict(node)) ==
          "TvOFXMessageSetProfileSignUp:\n" + kCoreText);
}

TEST_CASE("a message set without a core shows its name alone") {
    CHECK(TvOFXMessageSetProfile().description() == "TvOFXMessageSetProfile:\n");
    CHECK(TvOFXMessageSetProfileCreditCard().description() == "TvOFXMessageSetProfileCreditCard:\n");
    CHECK(TvOFXMessageSetProfileSignOn().description() == "TvOFXMessageSetProfileSignOn:\n");
    CHECK(TvOFXMessageSetProfileSignUp().description() == "TvOFXMessageSetProfileSignUp:\n");
}

TEST_CASE("a message set's core can be set") {
    TvOFXMessageSetProfileSignOn profile;
    const auto core = std::make_shared<TvOFXMessageSetCore>();
    profile.setMessageSetCore(core);
    CHECK(profile.messageSetCore() == core);
    profile.setMessageSetCore(nullptr);
    CHECK_FALSE(profile.messageSetCore());
}
