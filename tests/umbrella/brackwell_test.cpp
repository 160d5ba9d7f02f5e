// SPDX-License-Identifier: Apache-2.0
#include <brackwell/brackwell.h>
#include <doctest/doctest.h>

#include <cstring>
#include <string>
#include <type_traits>

using namespace brackwell;

TEST_CASE("the version symbols have their values") {
    static_assert(std::is_same_v<decltype(BrackwellVersionNumber), const double>);
    CHECK(BrackwellVersionNumber == 1.0);
    const char* text = reinterpret_cast<const char*>(BrackwellVersionString);
    CHECK(std::strcmp(text, "@(#)PROGRAM:Brackwell  PROJECT:TovanaCore-1\n") == 0);
}

TEST_CASE("the version is known to the preprocessor, and is that of the symbols") {
#if BRACKWELL_VERSION < 10000 || BRACKWELL_VERSION_MAJOR != BRACKWELL_VERSION / 10000
#error "the macros of the version do not agree"
#endif
    CHECK(BrackwellVersionNumber == BRACKWELL_VERSION_MAJOR);
    const std::string numbers = std::to_string(BRACKWELL_VERSION_MAJOR) + "." +
                                std::to_string(BRACKWELL_VERSION_MINOR) + "." +
                                std::to_string(BRACKWELL_VERSION_PATCH);
    CHECK(numbers == BRACKWELL_VERSION_STRING);
}

TEST_CASE("the umbrella header declares a class of every room") {
    CHECK(Data().isEmpty());
    CHECK(TvOFXParser::stringHasValidOfxHeaderPrefix("<OFX>"));
    CHECK(repairOFXText("<OFX>").changes.empty());
    CHECK(TvOFXHelper::defaultHelper());
    CHECK(TvOFXMessage().ofxVersion() == 0);
    CHECK(TvOFXChallengeRequest().requestIdentifier() == "CHALLENGERQ");
    CHECK_FALSE(TvOFXBankAccount().bankID());
    CHECK_FALSE(TvOFXStatementTransaction().amount());
    CHECK_FALSE(TvOFXSignOnResponse().status());
}
