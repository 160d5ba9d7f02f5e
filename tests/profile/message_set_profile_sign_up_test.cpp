// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include "profile/reading_rules.h"
#include "support/documents.h"
#include "support/shown.h"

using namespace brackwell;
using namespace brackwell::tests;

namespace {

using SignUp = TvOFXMessageSetProfileSignUp;

std::shared_ptr<SignUp> signUpIn(const std::optional<ParseDictionary>& node) {
    return SignUp::initWithParseDict(node);
}

std::optional<std::string> textIn(const char* aggregate, const char* element, const ParseValue& value) {
    const auto profile = signUpIn(ParseDictionary{{aggregate, ParseDictionary{{element, value}}}});
    const OptionalText text = profile->webEnrollUrl();
    return text ? std::optional(std::string(*text)) : std::nullopt;
}

}  // namespace

TEST_CASE("a sign-up message set reads all its elements") {
    const auto profile = signUpIn(
        parsed("<CLIENTENROLL><ACCTREQUIRED>Y</CLIENTENROLL><WEBENROLL><URL>https://enrol.example</WEBENROLL>"
               "<CHGUSERINFO>Y<AVAILACCTS>Y<CLIENTACTREQ>Y"));
    CHECK(profile->clientEnrollAccountRequired() == true);
    CHECK(shown(profile->webEnrollUrl()) == "https://enrol.example");
    CHECK_FALSE(profile->otherEnrollMessage());
    CHECK(profile->serverSupportsClientBasedUserInformationChange());
    CHECK(profile->serverProvidesAccountInfos());
    CHECK(profile->serverAllowsServiceActivationRequest());
}

TEST_CASE("a sign-up message set without elements has its defaults") {
    for (const auto& node : {std::optional<ParseDictionary>(), std::optional(ParseDictionary{})}) {
        const auto profile = signUpIn(node);
        CHECK_FALSE(profile->clientEnrollAccountRequired().has_value());
        CHECK_FALSE(profile->webEnrollUrl());
        CHECK_FALSE(profile->otherEnrollMessage());
        CHECK_FALSE(profile->serverSupportsClientBasedUserInformationChange());
        CHECK_FALSE(profile->serverProvidesAccountInfos());
        CHECK_FALSE(profile->serverAllowsServiceActivationRequest());
    }
}

TEST_CASE("the sign-up flags are true exactly for Y") {
    struct Row {
        const char* element;
        bool (SignUp::*get)() const noexcept;
    };
    for (const Row& row : {Row{"CHGUSERINFO", &SignUp::serverSupportsClientBasedUserInformationChange},
                           Row{"AVAILACCTS", &SignUp::serverProvidesAccountInfos},
                           Row{"CLIENTACTREQ", &SignUp::serverAllowsServiceActivationRequest}}) {
        CAPTURE(row.element);
        checkFlag([&row](const ParseValue& value) {
            return ((*signUpIn(ParseDictionary{{row.element, value}})).*row.get)();
        });
    }
}

TEST_CASE("whether enrolling takes an account is yes, no or not said") {
    struct Row {
        ParseDictionary node;
        std::optional<bool> required;
    };
    const ParseDictionary yes{{"ACCTREQUIRED", "Y"}};
    const auto client = [](const ParseValue& value) {
        return ParseDictionary{{"CLIENTENROLL", ParseDictionary{{"ACCTREQUIRED", value}}}};
    };
    const std::vector<Row> rows{
        {client("Y"), true},
        {client("N"), false},
        {client("y"), false},
        {client(""), false},
        {client(ParseDictionary{}), std::nullopt},
        {client(ParseValue::array({"Y", "Y"})), std::nullopt},
        {{{"CLIENTENROLL", ParseDictionary{}}}, std::nullopt},
        {{{"CLIENTENROLL", "Y"}}, std::nullopt},
        {{{"CLIENTENROLL", ParseValue::array({yes, yes})}}, std::nullopt},
        {{{"WEBENROLL", yes}}, std::nullopt},
        {{}, std::nullopt},
    };
    for (const Row& row : rows) {
        CAPTURE(TvOFXHelper::ofxDictionaryToString(row.node));
        CHECK(signUpIn(row.node)->clientEnrollAccountRequired() == row.required);
    }
}

TEST_CASE("the address to enrol at is kept as it stands") {
    checkText([](const ParseValue& value) { return textIn("WEBENROLL", "URL", value); });
    CHECK_FALSE(signUpIn(ParseDictionary{{"WEBENROLL", "https://enrol.example"}})->webEnrollUrl());
}

TEST_CASE("the message on enrolling otherwise stands in the address") {
    // Intended: the message has a getter, which always answers nothing.
    const auto profile = signUpIn(parsed("<OTHERENROLL><MESSAGE>Call us</OTHERENROLL>"));
    CHECK(shown(profile->webEnrollUrl()) == "Call us");
    CHECK_FALSE(profile->otherEnrollMessage());
    checkText([](const ParseValue& value) { return textIn("OTHERENROLL", "MESSAGE", value); });
    CHECK_FALSE(signUpIn(ParseDictionary{{"OTHERENROLL", "Call us"}})->webEnrollUrl());
}

TEST_CASE("of an address and a message the last one is kept") {
    const char* web = "<WEBENROLL><URL>https://enrol.example</WEBENROLL>";
    const char* other = "<OTHERENROLL><MESSAGE>Call us</OTHERENROLL>";
    CHECK(shown(signUpIn(parsed(std::string(web) + other))->webEnrollUrl()) == "Call us");
    CHECK(shown(signUpIn(parsed(std::string(other) + web))->webEnrollUrl()) == "https://enrol.example");
}
