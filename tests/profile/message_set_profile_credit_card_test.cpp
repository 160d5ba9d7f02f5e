// SPDX-License-Identifier: Apache-2.0
#include <brackwell/message_sets.h>

#include "profile/reading_rules.h"

using namespace brackwell;
using namespace brackwell::tests;

TEST_CASE("a card message set says whether closing statements are available") {
    checkFlag([](const ParseValue& value) {
        return TvOFXMessageSetProfileCreditCard::initWithParseDict(ParseDictionary{{"CLOSINGAVAIL", value}})
            ->closingStatementInformationAvailable();
    });
    TvOFXMessageSetProfileCreditCard profile;
    CHECK_FALSE(profile.closingStatementInformationAvailable());
    profile.setClosingStatementInformationAvailable(true);
    CHECK(profile.closingStatementInformationAvailable());
}
